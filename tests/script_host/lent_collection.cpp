// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/script_host/lent_collection.h"

namespace pv::test {

class LentEnumerators::Collection final : public DispatchObject {
 public:
  Collection(Object members, LentEnumerators& lent) : members_(std::move(members)), lent_(lent) {}

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    const Outcome outcome = members_.invoke(id, flags);
    if (id != DISPID_NEWENUM || !outcome.worked() || !result) return DISP_E_MEMBERNOTFOUND;
    const Ref lent(new LentEnumerator(query<IEnumVARIANT>(outcome.value.punkVal)));
    lent_.lent_.push_back(lent);
    result->vt = VT_UNKNOWN;
    result->punkVal = Ref<IUnknown>(lent).detach();
    return S_OK;
  }

 private:
  DISPID id_of(std::wstring_view) override { return DISPID_UNKNOWN; }

  const Object members_;
  LentEnumerators& lent_;
};

Value LentEnumerators::lend(const Object& collection) {
  return Value(new Collection(collection, *this));
}

}  // namespace pv::test
