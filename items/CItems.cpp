#include "items/CItems.h"

#include "com/fetch.h"
#include "dialogs/message_box.h"
#include "items/CVariables.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "util/library_version.h"
#include "util/number_text.h"

namespace pv {
namespace {

constexpr short kCriticalPicture = 16;

void report_refused_variable(const VariableRecord& record) {
  MessageBoxRequest message;
  message.prompt = L"Could not create item:" + record.key;
  message.picture = kCriticalPicture;
  message.title = L"KalVOS";
  show_message_box(message);
}

VariableRecord record_of(const Ref<_CVariable>& variable) {
  VariableRecord record;
  record.key = fetch(variable, &_CVariable::get_Key);
  record.caption = fetch(variable, &_CVariable::get_Caption);
  record.description = fetch(variable, &_CVariable::get_Description);
  record.parent_variable = fetch(variable, &_CVariable::get_ParentVariable);
  record.dimension_id = fetch(variable, &_CVariable::get_DimensionID);
  record.unit_id = fetch(variable, &_CVariable::get_UnitID);
  record.decimals = fetch(variable, &_CVariable::get_Decimals);
  attempt([&] { record.list_id = text_of(fetch(variable, &_CVariable::get_ListID)); });
  record.data_type = fetch(variable, &_CVariable::get_DataType);
  record.symbol = fetch(variable, &_CVariable::get_Symbol);
  return record;
}

LoadedItem record_of(CItem& item) {
  LoadedItem saved{item.record(), {}};
  const auto& variables = item.variables();
  const long count = fetch(variables, &_CVariables::get_Count);
  for (long i = 1; i <= count; ++i) {
    saved.variables.push_back(record_of(fetch(variables, &_CVariables::get_Item, Variant(i))));
  }
  return saved;
}

}  // namespace

std::wstring CItems::lookup_key(const VARIANT& index) const {
  const IndexKey key = index_key_of(index);
  if (const auto* text = std::get_if<std::wstring>(&key)) return *text;
  return integer_text(list_.at(std::get<long>(key))->record().item_id);
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
  return returning(result, [&] {
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
  return returning(result, [&] { return version_item_count(); });
}

STDMETHODIMP CItems::get_AllItemCount(long* result) noexcept {
  return returning(result, [&] { return list_.size(); });
}

STDMETHODIMP CItems::get_Versions(_CVersions** result) noexcept {
  return returning(result, [&] { return versions_; });
}

Ref<CItem> CItems::add(const ItemRecord& record, _CVariables* variables) {
  changed_ = true;
  const auto item = make<CItem>();
  item->assign(record);
  item->set_variables(variables);
  return added(record.key, item);
}

STDMETHODIMP CItems::Add(BSTR key, short item_id, VARIANT_BOOL by_meaning, short access,
                         VARIANT_BOOL historian, VARIANT_BOOL restore, float smart_wait,
                         short length, _CVariables* variables, _CItem** result) noexcept {
  return returning(result, [&] {
    return add({std::wstring(view_of(key)), item_id, by_meaning != VARIANT_FALSE, access,
                historian != VARIANT_FALSE, restore != VARIANT_FALSE, smart_wait, length},
               variables);
  });
}

// An item that the collection refuses is passed over with its variables.
void CItems::add_from_file(const LoadedItem& loaded) {
  const auto variables = make<CVariables>();
  if (!add(loaded.item, variables.get())) return;
  for (const VariableRecord& record : loaded.variables) {
    if (!variables->add(record)) report_refused_variable(record);
  }
}

STDMETHODIMP CItems::LoadSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    const auto bytes = read_file(std::wstring(view_of(file_name)));
    const auto items = bytes ? read_item_file(*bytes, ansi_codec()) : std::nullopt;
    if (!items) return false;
    list_.clear();
    for (const LoadedItem& loaded : *items) add_from_file(loaded);
    changed_ = false;
    return true;
  });
}

STDMETHODIMP CItems::SaveSettingsNew(BSTR file_name, VARIANT_BOOL* result) noexcept {
  return returning(result, [&] {
    std::vector<LoadedItem> records;
    for (const auto& item : list_) records.push_back(record_of(*item));
    const bool saved =
        replace_file(std::wstring(view_of(file_name)),
                     write_item_file(records, library_stamp(), ansi_codec(), decimal_separator()));
    if (saved) changed_ = false;
    return saved;
  });
}

}  // namespace pv
