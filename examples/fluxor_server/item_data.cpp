// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "item_data.h"

namespace fluxor {
namespace {

template <class Body>
void for_each_variable(const ComPtr<_CItem>& item, Body body) {
  const auto variables = get(item, &_CItem::get_Variables);
  const long count = get(variables, &_CVariables::get_Count);
  for (long i = 1; i <= count; ++i) body(get(variables, &_CVariables::get_Item, _variant_t(i)));
}

bool is_integer(short type) {
  switch (type) {
    case edtBit:
    case edtByte:
    case edtInteger:
    case edtRecAnalog:
    case edtRecError:
    case edtRecAlarm:
      return true;
    default:
      return false;
  }
}

std::wstring encode_value(short type, const _variant_t& value, const ComUtility& codes) {
  if (type == edtFloat) return codes.hex_of_real(value);
  if (is_integer(type)) return codes.hex(value, room_of(type));
  return codes.padded(text_of(value), room_of(type));
}

_variant_t decode_value(short type, const std::wstring& text, const ComUtility& codes) {
  if (type == edtFloat) return _variant_t(codes.real(text));
  if (is_integer(type)) {
    const long number = codes.number(text);
    return _variant_t(type == edtInteger ? static_cast<short>(number) : number);
  }
  const auto last = text.find_last_not_of(L' ');
  return text_value(last == std::wstring::npos ? std::wstring() : text.substr(0, last + 1));
}

}  // namespace

std::size_t room_of(short data_type) {
  switch (data_type) {
    case edtBit:
    case edtByte:
    case edtRecError:
    case edtRecAlarm:
    case edtByteError:
      return 2;
    case edtInteger:
    case edtRecAnalog:
      return 4;
    case edtString6:
      return 6;
    case edtStringPack:
    case edtRecErrorHistory:
      return 7;
    case edtFloat:
    case edtString8:
    case edtRecPassword:
      return 8;
    case edtString9:
      return 9;
    case edtstring14:
      return 14;
    case edtString16:
      return 16;
    case edtString32:
      return 32;
    case edtApp80:
      return 80;
    case edtApp100:
      return 100;
    case edtapp120:
      return 120;
    case edtapp150:
      return 150;
    default:
      return 0;
  }
}

std::wstring encode(const ComPtr<_CItem>& item, const ComUtility& codes) {
  std::wstring data;
  for_each_variable(item, [&](const ComPtr<_CVariable>& variable) {
    data += encode_value(get(variable, &_CVariable::get_DataType),
                         get(variable, &_CVariable::get_Value), codes);
  });
  return data;
}

bool decode(std::wstring data, const ComPtr<_CItem>& item, const ComUtility& codes) {
  std::size_t expected = 0;
  for_each_variable(item, [&](const ComPtr<_CVariable>& variable) {
    expected += room_of(get(variable, &_CVariable::get_DataType));
  });
  if (data.size() != expected) return false;
  for_each_variable(item, [&](const ComPtr<_CVariable>& variable) {
    const short type = get(variable, &_CVariable::get_DataType);
    const _variant_t value = decode_value(type, codes.chunk(data, room_of(type)), codes);
    put(variable, &_CVariable::put_Value, value);
  });
  return true;
}

void set_dirty(const ComPtr<_CItem>& item, bool dirty) {
  for_each_variable(item, [&](const ComPtr<_CVariable>& variable) {
    put(variable, &_CVariable::put_Dirty, boolean(dirty));
  });
}

}  // namespace fluxor
