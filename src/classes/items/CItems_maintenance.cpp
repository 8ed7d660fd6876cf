// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <cmath>
#include <limits>

#include "apartment/shared_objects.h"
#include "classes/items/CItems.h"
#include "com/call.h"
#include "com/lenient.h"
#include "core/list/sorted_positions.h"
#include "core/text/file_name.h"
#include "core/text/library_version.h"
#include "core/text/number_text.h"
#include "host/image_list.h"
#include "host/type_name.h"
#include "platform/letter_case.h"
#include "platform/picture_file.h"
#include "platform/profile.h"

// Operations that edit or export the item database as a whole. Errors are trapped: the result
// tells.
namespace pv {
namespace {

constexpr short kAllVariables = -1;

std::wstring item_section(long position) { return L"ITEM" + format_integer(position); }

// One file per language: the extension is the language's number in three digits.
std::wstring text_file_of(const std::wstring& file) {
  const auto language = result_of(shared_languages(), &_CLanguages::get_ActiveLanguageID);
  const std::wstring filled = L"00" + format_integer(language);
  FileName name = parse_file_name(file);
  name.extension = filled.substr(filled.size() - 3);
  return make_full_name(name);
}

bool write_item_texts(ProfileChanges& file, long position, CItem& item, short variable) {
  const Ref<_CVariables> variables = item.variables();
  const long count = result_of(variables, &_CVariables::get_Count);
  if (variable != kAllVariables && (variable < 1 || variable > count)) return false;
  bool written = true;
  for (long j = 1; j <= count; ++j) {
    if (variable != kAllVariables && variable != j) continue;
    const auto each = result_of(variables, &_CVariables::get_Item, Variant(j));
    written &= file.write(item_section(position), L"VAR" + format_integer(j),
                          result_of(each, &_CVariable::get_Caption) + L"|" +
                              result_of(each, &_CVariable::get_Description));
  }
  return written;
}

bool write_head(ProfileChanges& file, std::size_t count) {
  const FileStamp stamp = library_stamp();
  bool written = file.write(L"Items", L"Count", format_integer(static_cast<long>(count)));
  written &= file.write(L"Items", L"Version", stamp.version);
  return file.write(L"Items", L"Date", stamp.comments) && written;
}

bool clear_recorded_items(ProfileChanges& file) {
  bool cleared = true;
  const long recorded = lenient_integer<short>(file.read(L"Items", L"Count", L"0"));
  for (long i = 1; i <= recorded; ++i) cleared &= file.clear_section(item_section(i));
  return cleared;
}

// The new position of a renamed item: a numeric key, even numeric text, is a position; any other is
// the end.
double new_position(const VARIANT& old_key) {
  double position = std::numeric_limits<double>::infinity();
  attempt([&] { position = std::nearbyint(to_double(old_key)); });
  if (position < 1) throw automation_error(ErrorCode::kSubscript, to_text(old_key));
  return position;
}

}  // namespace

// The order of the insertion pass that moves members before the first greater one: a stable sort.
// What is moved is added again under its own key, which the host may have changed.
bool CItems::sort(bool ascending) {
  std::vector<std::int16_t> keys;
  for (const auto& item : list_) {
    if (item->record().key.empty()) return false;
    keys.push_back(lenient_integer<std::int16_t>(item->record().key));
  }
  list_.reorder(sorted_positions(keys, ascending),
                [](const Ref<CItem>& item) { return item->record().key; });
  return true;
}

STDMETHODIMP CItems::Sort(VARIANT_BOOL ascending, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    bool sorted = false;
    attempt([&] { sorted = sort(ascending != VARIANT_FALSE); });
    return sorted;
  });
}

void CItems::change_id(short index, short new_id) {
  const std::wstring key = format_integer(new_id);
  const Ref<CItem> former = list_.at(static_cast<long>(index));
  if (list_.contains(key) && list_.at(key) != former) {
    throw automation_error(ErrorCode::kKeyInUse, key);
  }
  const auto copy = make<CItem>();
  former->copy_to(copy.get());
  copy->identify(key, new_id);
  replace_member(list_, index, copy, key);
}

STDMETHODIMP CItems::ChangeID(short index, short new_id, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return attempt([&] { change_id(index, new_id); }); });
}

void CItems::change_key(const VARIANT& old_key, std::wstring_view new_key) {
  const Ref<CItem> former = at(old_key);
  const double position = new_position(old_key);
  if (list_.contains(new_key) && list_.at(new_key) != former) {
    throw automation_error(ErrorCode::kKeyInUse, std::wstring(new_key));
  }
  const auto copy = make<CItem>();
  former->copy_to(copy.get());
  copy->identify(new_key, former->record().item_id);
  list_.replace(list_.position_of(former), copy, new_key,
                static_cast<long>(std::min<double>(position, list_.size())));
}

STDMETHODIMP CItems::ChangeKey(VARIANT old_key, VARIANT new_key, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    return attempt([&] { change_key(dereferenced(old_key), to_text(dereferenced(new_key))); });
  });
}

bool CItems::save_texts(const std::wstring& file_name, _CItem* item, short variable) const {
  const std::vector<Ref<CItem>> items = present_items();
  ProfileChanges file(file_name);
  bool written = false;
  if (!item) {
    written = clear_recorded_items(file);
    written &= write_head(file, items.size());
    long position = 0;
    for (const auto& each : items) written &= write_item_texts(file, ++position, *each, variable);
  } else {
    const short id = result_of(item, &_CItem::get_ItemID);
    const auto found = std::find_if(items.begin(), items.end(), [&](const Ref<CItem>& each) {
      return each->record().item_id == id;
    });
    written = found != items.end() &&
              write_item_texts(file, found - items.begin() + 1, **found, variable);
  }
  return file.save() && written;
}

STDMETHODIMP CItems::SaveTextSettings(BSTR file_name, _CItem* item, short variable,
                                      VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    bool saved = false;
    attempt([&] {
      saved = save_texts(text_file_of(std::wstring(view_of(file_name))), item, variable);
    });
    return saved;
  });
}

STDMETHODIMP CItems::LoadItemSymbols(IDispatch* control, BSTR path, long* result) noexcept {
  return method_with_result(result, [&] {
    if (type_name_of(control) != L"ImageList") return 0L;
    const ImageList images{control};
    bool complete = true;
    for (const auto& item : present_items()) {
      const Ref<_CVariables> variables = item->variables();
      const long count = result_of(variables, &_CVariables::get_Count);
      for (long j = 1; j <= count; ++j) {
        complete &= attempt([&] {
          const auto variable = result_of(variables, &_CVariables::get_Item, Variant(j));
          const std::wstring symbol = upper_case(result_of(variable, &_CVariable::get_Symbol));
          images.add(symbol,
                     picture_from_file(std::wstring(view_of(path)) + symbol + L".BMP").get());
        });
      }
    }
    return complete ? -1L : 0L;
  });
}

}  // namespace pv
