#pragma once

#include "classes/items/CDListMember.h"
#include "com/collection.h"

namespace pv {

class CDListMembers final : public Collection<CDListMembers, _CDListMembers, ::CDListMembers,
                                              CDListMember, _CDListMember, Missing::kIsNothing> {
 public:
  static constexpr const wchar_t* kClassName = L"CDListMembers";

  STORED(Changed, VARIANT_BOOL, changed_)
  STDMETHODIMP Add(BSTR key, VARIANT caption, VARIANT tag,
                   _CDListMember** result) noexcept override;
  STDMETHODIMP ChangeKey(short index, VARIANT new_key, VARIANT_BOOL* result) noexcept override;

  /// Error: kKeyInUse.
  Ref<CDListMember> add(const ListMemberRecord& record);

 private:
  bool changed_ = false;
};

}  // namespace pv
