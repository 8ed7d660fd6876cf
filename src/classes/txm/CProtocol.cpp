// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/txm/CProtocol.h"

#include "com/call.h"
#include "host/object_argument.h"

namespace pv {

template ClassEntry class_entry<CProtocol>();

STDMETHODIMP CProtocol::get_Server(IDispatch** result) noexcept {
  return method_with_result(result, [&] { return server_.object(); });
}

STDMETHODIMP CProtocol::putref_Server(IDispatch* value) noexcept {
  return method([&] { server_ = LateBound(Ref<IDispatch>(value)); });
}

bool CProtocol::exchange(std::wstring_view method, short address, _CItem** item) const {
  ObjectArgument argument(item);
  const Variant answer = server_.call(method, {value(address), argument.reference()});
  argument.hand_back();
  return to_bool(answer);
}

STDMETHODIMP CProtocol::ReadTxm(short address, _CItem** item, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    required(item);
    if (server_) return exchange(L"ReadTxm", address, item);
    attempt([&] { call(*item, &_CItem::put_Dirty, short{1}, VARIANT_TRUE); });
    return false;
  });
}

STDMETHODIMP CProtocol::WriteTxm(short address, _CItem** item, VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return required(item) && server_ && exchange(L"WriteTxm", address, item); });
}

STDMETHODIMP CProtocol::ReadDisplay(short address, BSTR* answer, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    required(answer);
    return server_ && to_bool(server_.call(L"ReadDisplay", {value(address), ref(*answer)}));
  });
}

STDMETHODIMP CProtocol::ItemComLength(_CItem* item, short variable, long* result) noexcept {
  return method_with_result(result, [&] {
    if (!server_) return 0L;
    return to_long(server_.call(L"ItemComLength", {value(item), value(variable)}));
  });
}

STDMETHODIMP CProtocol::get_Busy(VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return server_ && to_bool(server_.get(L"Busy")); });
}

STDMETHODIMP CProtocol::putref_TxmEvents(_CTxmEvents* value) noexcept {
  return method([&] {
    if (server_) server_.set(L"TxmEvents", value);
  });
}

}  // namespace pv
