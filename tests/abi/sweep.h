#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/abi/type_library.h"
#include "tests/support/dialog_presser.h"
#include "tests/support/module.h"
#include "tests/support/object.h"

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

  const ClassInfo& tested() const { return *tested_; }
  const std::vector<FunctionInfo>& functions() const { return functions_; }
  Object create() const { return Object::create(tested().prog_id()); }
  /// A new object's default interface, as the vtable is called.
  Ref<IDispatch> create_raw() const;

  /// An object for a parameter of this interface: of the class that has it, or a stranger's for
  /// plain IDispatch. Empty for interfaces that no class has.
  Ref<IDispatch> object_for(REFIID iid) const;

  /// Values worth passing to a parameter, of its type; the first is a harmless one.
  std::vector<Value> samples_for(const ParameterInfo& parameter) const;
  PlainType plain_type_of(const ParameterInfo& parameter) const;

 private:
  Module module_;
  std::vector<ClassInfo> classes_;
  const ClassInfo* tested_ = nullptr;
  std::vector<FunctionInfo> functions_;
  std::unique_ptr<DialogPresser> presser_;
};

/// One call through the vtable. The standard streams lead nowhere meanwhile: some members write to
/// the file of a given number.
class RawCall {
 public:
  /// `inputs` hold a value for every parameter but the result, of the parameter's type.
  RawCall(const TypeInfo& owner, const FunctionInfo& function, std::vector<Value> inputs);

  /// Passes a null pointer for a by-reference parameter, by its position among the inputs.
  void pass_null(std::size_t position) { null_position_ = position; }
  void pass_null_result() { null_result_ = true; }

  HRESULT on(IDispatch* object);

  /// After the call: what is wrong with the result, which was poisoned before; empty when it is
  /// cleared after a failure and a proper value of its type after success. Frees the result.
  std::string fault_of_result();

 private:
  std::string fault_of_success();
  bool is_cleared() const;

  const FunctionInfo& function_;
  std::vector<Value> inputs_;
  std::vector<PlainType> types_;
  PlainType result_type_;
  bool has_result_ = false;
  std::size_t null_position_ = SIZE_MAX;
  bool null_result_ = false;
  HRESULT answer_ = S_OK;
  alignas(8) unsigned char result_[sizeof(VARIANT)];
};

/// A test name out of a class name.
inline std::string class_name(const testing::TestParamInfo<std::string>& info) {
  return info.param;
}

}  // namespace pv::test
