// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include "tests/support/dispatch_object.h"

namespace pv::test {

/// The constants of a type library as members of an object, found by the platform's own way from a
/// name to what it stands for.
class TypeConstants final : public DispatchObject {
 public:
  explicit TypeConstants(Ref<ITypeLib> library) : library_(std::move(library)) {}

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override;

 private:
  DISPID id_of(std::wstring_view name) override;

  const Ref<ITypeLib> library_;
  std::vector<Value> values_;  // of the names that were found so far
};

/// The registered type library of a class. Throws CallFailed when there is none.
Ref<ITypeLib> type_library_of_class(const std::wstring& prog_id);
/// By its identifier, as text in braces.
Ref<ITypeLib> registered_type_library(const std::wstring& guid, unsigned major, unsigned minor);

}  // namespace pv::test
