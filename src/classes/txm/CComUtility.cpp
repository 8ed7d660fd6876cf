// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/txm/CComUtility.h"

#include "com/call.h"
#include "core/text/number_text.h"
#include "core/txm/telegram_text.h"
#include "platform/code_page.h"

namespace pv {

template ClassEntry class_entry<CComUtility>();

namespace {

constexpr std::int16_t kErrorTexts = 65;  // codes 0 to 64 have a text

std::wstring error_text(_CDLists* lists, int code) {
  const auto list = result_of(lists, &_CDLists::get_Item, Variant(L"ERROR_TEXT"));
  const auto members = result_of(list, &_CDList::get_ListMembers);
  const auto member = result_of(members, &_CDListMembers::get_Item, Variant(format_integer(code)));
  return result_of(member, &_CDListMember::get_Caption);
}

// Texts that are numbers mean the same in every locale.
Variant number_in(const VARIANT& value) {
  Variant plain = dereferenced(value);
  if (plain.vt != VT_BSTR) return plain;
  const auto number = parse_number(view_of(plain.bstrVal));
  return number ? Variant(*number) : plain;
}

// Replaces the variable's content without touching what kind of variable it is.
void assign_text(VARIANT* variable, std::wstring_view text) {
  if (variable->vt == (VT_BYREF | VT_BSTR)) {
    Bstr content(text);
    SysFreeString(*variable->pbstrVal);
    *variable->pbstrVal = content.detach();
    return;
  }
  VARIANT* target = variable->vt == (VT_BYREF | VT_VARIANT) ? variable->pvarVal : variable;
  Variant content(text);
  VariantClear(target);
  *target = content.detach();
}

}  // namespace

STDMETHODIMP CComUtility::CHexToInt(BSTR value, long* result) noexcept {
  return method_with_result(result, [&] { return hex_to_integer(view_of(value)); });
}

STDMETHODIMP CComUtility::CIntToHex(VARIANT value, short digits, BSTR* result) noexcept {
  return method_with_result(result,
                            [&] { return integer_to_hex(to_long(number_in(value)), digits); });
}

STDMETHODIMP CComUtility::CHexToSng(BSTR value, double* result) noexcept {
  return method_with_result(result, [&] { return hex_to_single(view_of(value)); });
}

STDMETHODIMP CComUtility::CSngToHex(VARIANT value, BSTR* result) noexcept {
  return method_with_result(result, [&] { return single_to_hex(to_double(number_in(value))); });
}

STDMETHODIMP CComUtility::GetChunk(VARIANT* data, short count, VARIANT* result) noexcept {
  return method_with_result(result, [&] {
    std::wstring rest = to_text(dereferenced(*required(data)));
    Variant chunk(take_chunk(rest, count));
    if (count >= 1) assign_text(data, rest);
    return chunk;
  });
}

STDMETHODIMP CComUtility::CPackToStr(BSTR pack, _CItem*, _CDLists* lists, BSTR* result) noexcept {
  return method_with_result(result, [&] {
    return pack_to_text(character_codes(view_of(pack)),
                        [&](int code) { return error_text(lists, code); });
  });
}

STDMETHODIMP CComUtility::CStrToPack(BSTR, BSTR* result) noexcept {
  return method_with_result(result, [] { return empty_pack(); });
}

STDMETHODIMP CComUtility::CErrorToStr(BSTR error, _CItem*, short variable, _CDLists* lists,
                                      BSTR* result) noexcept {
  return method_with_result(result, [&] {
    short byte = 0;
    attempt([&] { byte = to_short(Variant(static_cast<long>(hex_to_integer(view_of(error))))); });
    const std::int16_t code = error_code(byte, variable);
    std::wstring text = format_integer(code) + L", ";
    if (code < 0 || code >= kErrorTexts) return text + L"???";
    attempt([&] { text += error_text(lists, code); });
    return text;
  });
}

STDMETHODIMP CComUtility::CStrToError(BSTR error, BSTR* result) noexcept {
  return method_with_result(
      result, [&] { return integer_to_hex(lenient_integer<std::int16_t>(view_of(error)), 2); });
}

STDMETHODIMP CComUtility::Pad(BSTR data, VARIANT number, BSTR character, VARIANT before,
                              BSTR* result) noexcept {
  return method_with_result(result, [&] {
    const bool at_start = !is_missing(before) && to_bool(dereferenced(before));
    return padded(view_of(data), to_long(number_in(number)), view_of(character), at_start);
  });
}

STDMETHODIMP CComUtility::pvC7Bit(BSTR source, VARIANT_BOOL replace_controls,
                                  BSTR* result) noexcept {
  return method_with_result(result, [&] {
    return seven_bit(character_codes(view_of(source)), replace_controls != VARIANT_FALSE);
  });
}

STDMETHODIMP CComUtility::GetAsciiCharName(BSTR character, BSTR* result) noexcept {
  return method_with_result(result, [&] { return ascii_name(view_of(character)); });
}

}  // namespace pv
