#pragma once

#include <utility>

#include "com/object.h"
#include "core/items/item_record.h"
#include "pvItems32.h"

namespace pv {

class CItem final : public Dual<CItem, _CItem, ::CItem> {
 public:
  static constexpr const wchar_t* kClassName = L"CItem";

  STORED(Key, BSTR, record_.key)
  STORED(ItemID, short, record_.item_id)
  STORED(ByMeaning, VARIANT_BOOL, record_.by_meaning)
  STORED(Access, short, record_.access)
  STORED(Historian, VARIANT_BOOL, record_.historian)
  STORED(Restore, VARIANT_BOOL, record_.restore)
  STORED(SmartWait, float, record_.smart_wait)
  STDMETHODIMP get_Length(short index, short* result) noexcept override;
  STDMETHODIMP put_Length(short index, short value) noexcept override;
  STDMETHODIMP get_Variables(_CVariables** result) noexcept override;
  STDMETHODIMP putref_Variables(_CVariables* value) noexcept override;

  // Properties of the variable at `index`; an index out of range means the first variable.
  STDMETHODIMP get_Dimension(short index, short* result) noexcept override;
  STDMETHODIMP put_Dimension(short index, short value) noexcept override;
  STDMETHODIMP get_Unit(short index, short* result) noexcept override;
  STDMETHODIMP put_Unit(short index, short value) noexcept override;
  STDMETHODIMP get_Caption(short index, BSTR* result) noexcept override;
  STDMETHODIMP put_Caption(short index, BSTR value) noexcept override;
  STDMETHODIMP get_Description(short index, BSTR* result) noexcept override;
  STDMETHODIMP put_Description(short index, BSTR value) noexcept override;
  STDMETHODIMP get_Symbol(short index, BSTR* result) noexcept override;
  STDMETHODIMP put_Symbol(short index, BSTR value) noexcept override;
  STDMETHODIMP get_Decimals(short index, short* result) noexcept override;
  STDMETHODIMP put_Decimals(short index, short value) noexcept override;
  STDMETHODIMP get_Value(short index, VARIANT* result) noexcept override;
  STDMETHODIMP put_Value(short index, VARIANT value) noexcept override;
  STDMETHODIMP get_Dirty(short index, VARIANT_BOOL* result) noexcept override;
  STDMETHODIMP put_Dirty(short index, VARIANT_BOOL value) noexcept override;
  STDMETHODIMP get_DataType(short index, short* result) noexcept override;
  STDMETHODIMP put_DataType(short index, short value) noexcept override;

  STDMETHODIMP Copy(_CItem* dest, _CItem** result) noexcept override;
  STDMETHODIMP CheckVarIndex(short index, short* result) noexcept override;

  const ItemRecord& record() const { return record_; }
  void assign(ItemRecord record) { record_ = std::move(record); }
  void identify(std::wstring_view key, short item_id) {
    record_.key = key;
    record_.item_id = item_id;
  }
  void set_variables(Ref<_CVariables> variables) { variables_ = std::move(variables); }
  const Ref<_CVariables>& variables();
  void copy_to(_CItem* dest);

 private:
  short checked_index(short index);
  Ref<_CVariable> variable(short index);
  template <class Out, class Getter>
  HRESULT get_of_variable(short index, Out* result, Getter getter,
                          const Location& where = Location::current()) noexcept;
  template <class Value, class Putter>
  HRESULT put_to_variable(short index, Value value, Putter putter,
                          const Location& where = Location::current()) noexcept;

  ItemRecord record_{{}, 0, true, 1, false, false, 0.5f, 4};
  Ref<_CVariables> variables_;
};

}  // namespace pv
