// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/txm/CComHistory.h"

namespace pv {

template ClassEntry class_entry<CComHistory>();

// Each new record removes one, even when the limit was lowered below the count.
STDMETHODIMP CComHistory::Add(_CComDetail* detail, _CComDetail** result) noexcept {
  return method_with_result(result, [&] {
    Ref<_CComDetail> record(detail);
    if (!record) throw automation_error(ErrorCode::kObjectNotSet, L"ComDetail");
    if (list_.size() >= maximum_) {
      list_.replace(static_cast<long>(maximum_), record, {}, 1);
    } else if (list_.empty()) {
      list_.append(record);
    } else {
      list_.insert(1, record);
    }
    return record;
  });
}

}  // namespace pv
