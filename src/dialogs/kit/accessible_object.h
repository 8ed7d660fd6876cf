// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>

#include <oleacc.h>

#include "com/ref.h"
#include "com/simple_object.h"
#include "dialogs/kit/accessible.h"

namespace pv {

/// The platform's own object for a window, with name, role and value replaced. Clients may hold it
/// longer than the window lives; then only the platform's object answers.
class AccessibleObject final : public SimpleObject<AccessibleObject, IAccessible> {
 public:
  AccessibleObject(Ref<IAccessible> standard, std::function<AccessibleDescription()> describe);
  void disconnect() { describe_ = nullptr; }

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;

  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return base_->GetTypeInfoCount(count); }
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return base_->GetTypeInfo(index, locale, info);
  }
  STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override {
    return base_->GetIDsOfNames(iid, names, count, locale, ids);
  }
  STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS* arguments,
                      VARIANT* result, EXCEPINFO* failure, UINT* wrong) override;

  // What the platform's object answers
  STDMETHODIMP get_accParent(IDispatch** parent) override { return base_->get_accParent(parent); }
  STDMETHODIMP get_accChildCount(LONG* count) override { return base_->get_accChildCount(count); }
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override {
    return base_->get_accChild(child, object);
  }
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* text) override {
    return base_->get_accDescription(child, text);
  }
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override {
    return base_->get_accState(child, state);
  }
  STDMETHODIMP get_accHelp(VARIANT child, BSTR* text) override {
    return base_->get_accHelp(child, text);
  }
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override {
    return base_->get_accHelpTopic(file, child, topic);
  }
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* text) override {
    return base_->get_accKeyboardShortcut(child, text);
  }
  STDMETHODIMP get_accFocus(VARIANT* child) override { return base_->get_accFocus(child); }
  STDMETHODIMP get_accSelection(VARIANT* children) override {
    return base_->get_accSelection(children);
  }
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* text) override {
    return base_->get_accDefaultAction(child, text);
  }
  STDMETHODIMP accSelect(LONG flags, VARIANT child) override {
    return base_->accSelect(flags, child);
  }
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                           VARIANT child) override {
    return base_->accLocation(left, top, width, height, child);
  }
  STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override {
    return base_->accNavigate(direction, start, end);
  }
  STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override {
    return base_->accHitTest(left, top, child);
  }
  STDMETHODIMP accDoDefaultAction(VARIANT child) override {
    return base_->accDoDefaultAction(child);
  }
  STDMETHODIMP put_accName(VARIANT child, BSTR name) override {
    return base_->put_accName(child, name);
  }
  STDMETHODIMP put_accValue(VARIANT child, BSTR value) override {
    return base_->put_accValue(child, value);
  }

 private:
  /// Of the window itself; nothing for children, and when the window is gone.
  AccessibleDescription description(const VARIANT& child) const;

  Ref<IAccessible> base_;
  std::function<AccessibleDescription()> describe_;
};

}  // namespace pv
