// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/items/CItems.h"

#include "classes/items/CVariables.h"
#include "com/call.h"
#include "com/lenient.h"
#include "core/text/library_version.h"
#include "core/text/number_text.h"
#include "dialogs/message_box.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/locale.h"

namespace pv {

template ClassEntry class_entry<CItems>();

namespace {

constexpr short kCriticalPicture = 16;
constexpr std::size_t kPiece = 64 * 1024;  // a file is written in pieces of about so many bytes

void report_refused_variable(const std::wstring& key) {
  MessageBoxRequest message;
  message.prompt = L"Could not create item:" + key;
  message.picture = kCriticalPicture;
  message.title = L"KalVOS";
  show_message_box(message);
}

// Into an existing text, whose capacity is reused.
void read_text(std::wstring& text, const Ref<_CVariable>& variable,
               HRESULT (STDMETHODCALLTYPE _CVariable::*property)(BSTR*)) {
  Variant value;
  call(variable, property, &value.bstrVal);
  value.vt = VT_BSTR;
  text = view_of(value.bstrVal);
}

// A variable of a host.
void read_record(VariableRecord& record, const Ref<_CVariable>& variable) {
  read_text(record.key, variable, &_CVariable::get_Key);
  read_text(record.caption, variable, &_CVariable::get_Caption);
  read_text(record.description, variable, &_CVariable::get_Description);
  record.parent_variable = result_of(variable, &_CVariable::get_ParentVariable);
  record.dimension_id = result_of(variable, &_CVariable::get_DimensionID);
  record.unit_id = result_of(variable, &_CVariable::get_UnitID);
  record.decimals = result_of(variable, &_CVariable::get_Decimals);
  record.list_id.clear();
  attempt([&] { record.list_id = to_text(result_of(variable, &_CVariable::get_ListID)); });
  record.data_type = result_of(variable, &_CVariable::get_DataType);
  read_text(record.symbol, variable, &_CVariable::get_Symbol);
}

// A variable of our own. The text of its list comes first, as it may be that of an object.
void write(ItemFileWriter& file, const CVariable& variable) {
  std::wstring list_id;
  attempt([&] { list_id = to_text(variable.list_id()); });
  file.variable(variable.view(list_id));
}

void write(ItemFileWriter& file, CItem& item) {
  const Ref<_CVariables> variables = item.variables();
  const Ref<CVariables> own = CVariables::from_interface(variables.get());
  const long count = result_of(variables, &_CVariables::get_Count);
  file.item(item.record(), static_cast<std::size_t>(count));
  VariableRecord record;
  for (long i = 1; i <= count; ++i) {
    if (own) {
      write(file, *Ref<CVariable>(own->list().at(i)));
    } else {
      read_record(record, result_of(variables, &_CVariables::get_Item, Variant(i)));
      file.variable(record.as<std::wstring_view>());
    }
  }
}

// As the utility's pvCBool converts a text.
bool platform_boolean(std::wstring_view text) { return lenient_boolean(Variant(text)); }

// The keys of variables that their item refuses are added to `refused`.
Ref<_CVariables> variables_from(ItemFileReader& file, RecentTexts& texts,
                                std::vector<std::wstring>& refused) {
  const auto variables = make<CVariables>();
  variables->list().reserve(static_cast<std::size_t>(file.variables_left()));
  for (VariableRecordView record; file.next_variable(record);) {
    const auto variable = make<CVariable>(record, texts);
    if (!variables->add(variable)) refused.emplace_back(variable->key());
  }
  return variables;
}

// An item that the collection refuses is passed over with its variables.
void add_items(CItems::Members& items, ItemFileReader& file, std::vector<std::wstring>& refused) {
  RecentTexts texts;
  for (ItemRecord record; file.next(record);) {
    const auto item = make<CItem>();
    item->assign(std::move(record));
    if (!attempt([&] { items.append(item, item->record().key); })) continue;
    item->set_variables(variables_from(file, texts, refused));
  }
}

}  // namespace

std::wstring CItems::lookup_key(const VARIANT& index) const {
  const IndexKey key = index_key_of(index);
  if (const auto* text = std::get_if<std::wstring_view>(&key)) return std::wstring(*text);
  return format_integer(list_.at(std::get<long>(key))->record().item_id);
}

// With a version selected, its table tells which item stands for the one that was asked for.
Ref<CItem> CItems::find(const VARIANT& index) const {
  if (version_.empty()) return at(index);
  const std::wstring key = lookup_key(index);
  const auto& version = versions_->list().at(version_);
  const std::wstring& mapped = version->entries().list().at(key)->record().index_key;
  return list_.at(mapped.empty() ? key : mapped);
}

STDMETHODIMP CItems::get_Item(VARIANT index, _CItem** result) noexcept {
  return plain_method_with_result(result, [&] {
    Ref<CItem> found;
    attempt([&] { found = find(index); });
    return found;
  });
}

long CItems::version_item_count() const {
  const auto& versions = versions_->list();
  if (!version_.empty() && versions.contains(version_)) return versions.at(version_)->item_count();
  return versions.empty() ? 0 : versions.at(1)->item_count();
}

STDMETHODIMP CItems::get_Count(long* result) noexcept {
  return method_with_result(result, [&] { return version_item_count(); });
}

STDMETHODIMP CItems::get_AllItemCount(long* result) noexcept {
  return method_with_result(result, [&] { return list_.size(); });
}

STDMETHODIMP CItems::get_Versions(_CVersions** result) noexcept {
  return method_with_result(result, [&] { return versions_; });
}

Ref<CItem> CItems::add(ItemRecord record, _CVariables* variables) {
  const auto item = make<CItem>();
  item->assign(std::move(record));
  item->set_variables(variables);
  Ref<CItem> result = added(item->record().key, item);
  changed_ = true;
  return result;
}

STDMETHODIMP CItems::Add(BSTR key, short item_id, VARIANT_BOOL by_meaning, short access,
                         VARIANT_BOOL historian, VARIANT_BOOL restore, float smart_wait,
                         short length, _CVariables* variables, _CItem** result) noexcept {
  return method_with_result(result, [&] {
    return add({std::wstring(view_of(key)), item_id, by_meaning != VARIANT_FALSE, access,
                historian != VARIANT_FALSE, restore != VARIANT_FALSE, smart_wait, length},
               variables);
  });
}

bool CItems::load(const std::wstring& file_name, std::vector<std::wstring>& refused) {
  const auto bytes = read_file(file_name);
  if (!bytes) return false;
  ItemFileReader file(*bytes, ansi_codec(), platform_boolean, decimal_separator());
  if (file.count() < 1) return false;
  Members items = no_members();
  items.reserve(static_cast<std::size_t>(file.count()));
  add_items(items, file, refused);
  std::swap(list_, items);  // the former ones are released once the new ones are there
  changed_ = false;
  return true;
}

// While a message is open, the host may work with the items: all of them are in place by then.
STDMETHODIMP CItems::LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    std::vector<std::wstring> refused;
    const bool loaded = load(std::wstring(view_of(file_name)), refused);
    for (const std::wstring& key : refused) report_refused_variable(key);
    return loaded;
  });
}

// Foreign code that is called meanwhile may change the collection.
std::vector<Ref<CItem>> CItems::present_items() const {
  std::vector<Ref<CItem>> items;
  items.reserve(static_cast<std::size_t>(list_.size()));
  for (const auto& item : list_) items.push_back(item);
  return items;
}

// What a variable holds may be an object that changes the collection when it is asked for its text,
// so the items that are there at the beginning are written.
STDMETHODIMP CItems::SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    const std::vector<Ref<CItem>> items = present_items();
    FileReplacement file(std::wstring(view_of(file_name)));
    ItemFileWriter writer(items.size(), library_stamp(), ansi_codec(), decimal_separator());
    for (const auto& item : items) {
      write(writer, *item);
      if (writer.size() >= kPiece) file.write(writer.take());
    }
    file.write(writer.take());
    const bool saved = file.put_in_place();
    if (saved) changed_ = false;
    return saved;
  });
}

}  // namespace pv
