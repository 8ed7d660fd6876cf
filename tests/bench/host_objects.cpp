// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/bench/host_objects.h"

#include <cwchar>
#include <iterator>

namespace pv::bench {
namespace {

enum ServerMember : DISPID { kItems, kVersion, kDimensions, kProtocols, kReadTxm, kTypeName };
constexpr const wchar_t* kServerMembers[] = {L"Items",     L"Version", L"Dimensions",
                                             L"Protocols", L"ReadTxm", L"TypeName"};

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

}  // namespace pv::bench
