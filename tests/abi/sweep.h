// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/dialogs/dialog_presser.h"
#include "tests/support/module.h"
#include "tests/support/object.h"
#include "tests/support/type_library.h"

// The sweep walks the library's own type description: whatever class is added to the contract is
// tested without a line added here.
namespace pv::test {

/// The names of all creatable classes, for parameterised tests.
std::vector<std::string> class_names();

/// A test of one class. Windows that its members open are answered, files land in the scratch
/// folder.
class ClassTest : public testing::TestWithParam<std::string> {
 protected:
  ClassTest();
  ~ClassTest() override;

  const ClassInfo& tested() const { return tested_; }
  const std::vector<FunctionInfo>& functions() const { return functions_; }
  Object create() const { return Object::create(tested().prog_id()); }
  /// A new object's default interface, as the vtable is called.
  Ref<IDispatch> create_raw() const;

  /// An object for a parameter of this interface: of the class that has it, or a stranger's for
  /// plain IDispatch. Empty for interfaces that no class has.
  Ref<IDispatch> object_for(REFIID iid) const;

  /// Values worth passing to a parameter, of its type; the first is a harmless one.
  std::vector<Value> samples_for(const ParameterInfo& parameter) const;
  /// The first of them for every input.
  std::vector<Value> harmless_values(const FunctionInfo& function) const;
  PlainType plain_type_of(const ParameterInfo& parameter) const;

 private:
  Module module_;
  std::vector<ClassInfo> classes_;
  const ClassInfo& tested_;
  std::vector<FunctionInfo> functions_;
  std::unique_ptr<DialogPresser> presser_;
};

/// A test name out of a class name.
inline std::string class_name(const testing::TestParamInfo<std::string>& info) {
  return info.param;
}

}  // namespace pv::test
