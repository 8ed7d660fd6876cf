// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/memory/host.h"

#include <algorithm>
#include <vector>

#include "tests/memory/failing_memory.h"

namespace pv::test {
namespace {

class Host final : public DispatchObject {
 public:
  Host(HostAnswer answer, const IID* events)
      : DispatchObject(ObjectKind::kCompiled, events), answer_(std::move(answer)) {}

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    const HostCode own_memory;
    Value answer = answer_(name_of(id), HostArguments(*given));
    if (result) *result = answer.detach();
    return S_OK;
  }

 private:
  static constexpr DISPID kFirst = 1000;

  DISPID id_of(std::wstring_view member) override {
    const HostCode own_memory;
    const auto known = std::find(names_.begin(), names_.end(), member);
    const auto at = known - names_.begin();
    if (known == names_.end()) names_.emplace_back(member);
    return kFirst + static_cast<DISPID>(at);
  }

  std::wstring name_of(DISPID id) const {
    if (id < kFirst) return L"#" + std::to_wstring(id);
    return names_[static_cast<std::size_t>(id - kFirst)];
  }

  HostAnswer answer_;
  std::vector<std::wstring> names_;
};

}  // namespace

Object host_object(HostAnswer answer, const IID* events) {
  return Object(Ref<IDispatch>(new Host(std::move(answer), events)));
}

}  // namespace pv::test
