// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/abi/sweep.h"

#include "tests/support/counted.h"
#include "tests/support/sample_values.h"

namespace pv::test {
namespace {

/// An object of somebody else that knows no member at all.
class Stranger final : public Counted<IDispatch> {
 public:
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
    *ids = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    return DISP_E_MEMBERNOTFOUND;
  }
};

// Through the default interface, as compiled clients hold it.
Ref<IDispatch> create_by_interface(const ClassInfo& entry) {
  Ref<IDispatch> object;
  CoCreateInstance(entry.clsid, nullptr, CLSCTX_INPROC_SERVER,
                   entry.interface_type.attributes().guid, reinterpret_cast<void**>(object.put()));
  return object;
}

}  // namespace

std::vector<std::string> class_names() {
  std::vector<std::string> names;
  for (const ClassInfo& entry : classes_of(Module().type_library().get())) {
    names.push_back(entry.plain_name());
  }
  return names;
}

ClassTest::ClassTest()
    : classes_(classes_of(module_.type_library().get())),
      tested_(class_named(classes_, GetParam())),
      functions_(functions_of(tested_.interface_type)) {
  SetCurrentDirectoryW(scratch_folder().c_str());
  presser_ = std::make_unique<DialogPresser>();
}

ClassTest::~ClassTest() { SetCurrentDirectoryW(program_folder().c_str()); }

Ref<IDispatch> ClassTest::create_raw() const {
  Ref<IDispatch> object = create_by_interface(tested());
  if (!object) throw CallFailed("cannot create " + GetParam());
  return object;
}

Ref<IDispatch> ClassTest::object_for(REFIID iid) const {
  if (iid == IID_IDispatch) return Ref<IDispatch>(new Stranger);
  const ClassInfo* const found = class_with(classes_, iid);
  return found ? create_by_interface(*found) : nullptr;
}

PlainType ClassTest::plain_type_of(const ParameterInfo& parameter) const {
  return test::plain_type_of(tested().interface_type, parameter.type);
}

std::vector<Value> ClassTest::samples_for(const ParameterInfo& parameter) const {
  const PlainType type = plain_type_of(parameter);
  if (type.is_interface()) return {Value::nothing(), Value(object_for(type.iid))};
  if (type.type == VT_VARIANT) return values_of_all_types(Ref<IDispatch>(new Stranger));
  return limit_values(type.type);
}

std::vector<Value> ClassTest::harmless_values(const FunctionInfo& function) const {
  std::vector<Value> values;
  for (const ParameterInfo& input : function.inputs()) {
    values.push_back(samples_for(input).front());
  }
  return values;
}

}  // namespace pv::test
