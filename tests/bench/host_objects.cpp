// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/bench/host_objects.h"

#include <cstdint>
#include <cstring>
#include <cwchar>
#include <iterator>

#include "tests/support/module.h"

namespace pv::bench {
namespace {

enum ServerMember : DISPID { kItems, kVersion, kDimensions, kProtocols, kReadTxm, kTypeName };
constexpr const wchar_t* kServerMembers[] = {L"Items",     L"Version", L"Dimensions",
                                             L"Protocols", L"ReadTxm", L"TypeName"};

// The slot of on_event in the vtable of TypedListener, behind IDispatch and the destructors.
template <class Method>
ULONG slot_of(Method method) {
  // A pointer to a virtual member holds its offset into the vtable, plus one.
  std::uintptr_t words[2];
  static_assert(sizeof method == sizeof words);
  std::memcpy(words, &method, sizeof words);
  return static_cast<ULONG>(words[0] - 1);
}

}  // namespace

IdleServer::IdleServer(Ref<_CItems> items, Ref<_CDimensions> dimensions)
    : items_(std::move(items)),
      dimensions_(std::move(dimensions)),
      protocols_(create<CProtocols, _CProtocols>()) {}

STDMETHODIMP IdleServer::GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) {
  for (std::size_t i = 0; i < std::size(kServerMembers); ++i) {
    if (_wcsicmp(names[0], kServerMembers[i]) != 0) continue;
    ids[0] = static_cast<DISPID>(i);
    return S_OK;
  }
  ids[0] = DISPID_UNKNOWN;
  return DISP_E_UNKNOWNNAME;
}

STDMETHODIMP IdleServer::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                EXCEPINFO*, UINT*) {
  Variant answer;
  switch (id) {
    case kItems:
      answer = Variant(items_.get());
      break;
    case kVersion:
      break;
    case kDimensions:
      answer = Variant(dimensions_.get());
      break;
    case kProtocols:
      answer = Variant(protocols_.get());
      break;
    case kReadTxm:
      answer = Variant(true);
      break;
    case kTypeName:
      answer = Variant(L"Fluxor");
      break;
    default:
      return DISP_E_MEMBERNOTFOUND;
  }
  if (result) *result = answer.detach();
  return S_OK;
}

TypedListener::TypedListener() {
  const test::Module module;
  check(module.type_library()->GetTypeInfoOfGuid(__uuidof(__CTxmEvents), events_.put()));
}

STDMETHODIMP TypedListener::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO*, UINT*) {
  for (UINT i = 0;; ++i) {
    FUNCDESC* function = nullptr;
    if (FAILED(events_->GetFuncDesc(i, &function))) return DISP_E_MEMBERNOTFOUND;
    const bool found = function->memid == id && parameters->cArgs == 0;
    events_->ReleaseFuncDesc(function);
    if (!found) continue;
    return DispCallFunc(this, slot_of(&TypedListener::on_event), CC_STDCALL, VT_I4, 0, nullptr,
                        nullptr, result);
  }
}

}  // namespace pv::bench
