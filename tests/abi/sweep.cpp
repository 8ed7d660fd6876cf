#include "tests/abi/sweep.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "com/variant.h"
#include "com/vtable_call.h"
#include "tests/support/counted.h"
#include "tests/support/silent_streams.h"

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

// Longer ones overrun the buffers of Wine's private profile functions when they are file names.
constexpr std::size_t kLongText = 200;

Value typed(VARTYPE type, double number) {
  Value value(number);
  VARIANT converted_value;
  VariantInit(&converted_value);
  if (FAILED(VariantChangeType(&converted_value, &value, 0, type))) converted_value.vt = type;
  return Value(Variant(converted_value));
}

std::vector<Value> numbers(VARTYPE type, std::initializer_list<double> values) {
  std::vector<Value> samples;
  for (double value : values) samples.push_back(typed(type, value));
  return samples;
}

std::vector<Value> texts() {
  Value null_text;
  null_text.vt = VT_BSTR;
  using namespace std::string_view_literals;
  return {Value(L""), null_text, Value(scratch_folder() + L"sweep.txt"),
          Value(std::wstring_view(L"a\0b;|\x150\xD83D"sv)), Value(std::wstring(kLongText, L'x'))};
}

Value array_of_numbers() {
  Value value;
  value.parray = SafeArrayCreateVector(VT_I4, 0, 3);
  value.vt = VT_ARRAY | VT_I4;
  return value;
}

std::vector<Value> values_of_all_kinds(const Ref<IDispatch>& object) {
  Value error;
  error.vt = VT_ERROR;
  error.scode = E_FAIL;
  return {Value(),      Value(1),      Value(L"text"),    Value(0),
          Value(-1),    Value(999999), Value(1e300),      Value(2.5f),
          Value(true),  Value(L""),    Value(L"1"),       Value::null(),
          Value(L"\0"), error,         Value::nothing(),  Value(object),
          Value(-0.5),  Value(NAN),    array_of_numbers()};
}

void* payload_of(Value& value, const PlainType& type) {
  return type.type == VT_VARIANT ? static_cast<void*>(static_cast<VARIANT*>(&value)) : &value.lVal;
}

void push_value(CallWords& words, Value& value, const PlainType& type) {
  words.push_value(payload_of(value, type), size_of(type.type));
}

}  // namespace

std::vector<std::string> class_names() {
  std::vector<std::string> names;
  for (const ClassInfo& entry : classes_of(Module().type_library().get())) {
    names.emplace_back(entry.name.begin(), entry.name.end());
  }
  return names;
}

ClassTest::ClassTest() : classes_(classes_of(module_.type_library().get())) {
  for (const ClassInfo& entry : classes_) {
    if (std::string(entry.name.begin(), entry.name.end()) == GetParam()) tested_ = &entry;
  }
  functions_ = functions_of(tested_->interface_type);
  SetCurrentDirectoryW(scratch_folder().c_str());
  presser_ = std::make_unique<DialogPresser>();
}

ClassTest::~ClassTest() { SetCurrentDirectoryW(program_folder().c_str()); }

Ref<IDispatch> ClassTest::create_raw() const {
  Ref<IDispatch> object;
  CoCreateInstance(tested().clsid, nullptr, CLSCTX_INPROC_SERVER,
                   tested().interface_type.attributes().guid,
                   reinterpret_cast<void**>(object.put()));
  if (!object) throw CallFailed("cannot create " + GetParam());
  return object;
}

Ref<IDispatch> ClassTest::object_for(REFIID iid) const {
  if (iid == IID_IDispatch) return Ref<IDispatch>(new Stranger);
  for (const ClassInfo& entry : classes_) {
    if (entry.interface_type.attributes().guid != iid) continue;
    Ref<IDispatch> object;
    CoCreateInstance(entry.clsid, nullptr, CLSCTX_INPROC_SERVER, iid,
                     reinterpret_cast<void**>(object.put()));
    return object;
  }
  return {};
}

PlainType ClassTest::plain_type_of(const ParameterInfo& parameter) const {
  return test::plain_type_of(tested().interface_type, parameter.type);
}

std::vector<Value> ClassTest::samples_for(const ParameterInfo& parameter) const {
  const PlainType type = plain_type_of(parameter);
  switch (type.type) {
    case VT_BSTR:
      return texts();
    case VT_VARIANT:
      return values_of_all_kinds(Ref<IDispatch>(new Stranger));
    case VT_BOOL:
      return numbers(VT_BOOL, {0, -1});
    case VT_UI1:
      return numbers(VT_UI1, {0, 1, 255});
    case VT_I2:
      return numbers(VT_I2, {0, 1, -1, 2, 32767, -32768});
    case VT_I4:
      return numbers(VT_I4, {0, 1, -1, 2, 2147483647.0, -2147483648.0});
    case VT_R4:
      return {Value(0.0f), Value(-1.5f), Value(3e38f), Value(std::nanf(""))};
    case VT_R8:
    case VT_DATE:
      return {typed(type.type, 0), typed(type.type, -1.5), typed(type.type, 1e300)};
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return {Value::nothing(), Value(object_for(type.iid))};
    default:
      ADD_FAILURE() << "the sweep has no values of type " << type.type;
      return {Value()};
  }
}

RawCall::RawCall(const TypeInfo& owner, const FunctionInfo& function, std::vector<Value> inputs)
    : function_(function), inputs_(std::move(inputs)) {
  for (const ParameterInfo& parameter : function.parameters()) {
    const PlainType type = plain_type_of(owner, parameter.type);
    if (parameter.is_result()) {
      result_type_ = type;
      has_result_ = true;
    } else {
      types_.push_back(type);
    }
  }
  std::memset(result_, 0xCC, sizeof result_);
}

HRESULT RawCall::on(IDispatch* object) {
  CallWords words;
  words.push(object);
  for (std::size_t i = 0; i < inputs_.size(); ++i) {
    if (types_[i].pointers == 0) {
      push_value(words, inputs_[i], types_[i]);
    } else {
      words.push(i == null_position_ ? nullptr : payload_of(inputs_[i], types_[i]));
    }
  }
  if (has_result_) words.push(null_result_ ? nullptr : result_);
  SetErrorInfo(0, nullptr);
  const auto slot = static_cast<std::size_t>(function_.description().oVft) / sizeof(void*);
  const SilentStreams silence;
  answer_ = call_vtable(object, slot, words);
  return answer_;
}

bool RawCall::is_cleared() const {
  if (result_type_.type == VT_VARIANT) {
    return reinterpret_cast<const VARIANT*>(result_)->vt == VT_EMPTY;
  }
  const unsigned char nothing[sizeof result_] = {};
  return std::memcmp(result_, nothing, size_of(result_type_.type)) == 0;
}

std::string RawCall::fault_of_result() {
  if (!has_result_ || null_result_) return {};
  if (FAILED(answer_)) return is_cleared() ? "" : "the result is not cleared after a failure";
  return fault_of_success();
}

std::string RawCall::fault_of_success() {
  unsigned char poison[sizeof result_];
  std::memset(poison, 0xCC, sizeof poison);
  if (std::memcmp(result_, poison, size_of(result_type_.type)) == 0) return "no result was set";
  switch (result_type_.type) {
    case VT_VARIANT:
      return FAILED(VariantClear(reinterpret_cast<VARIANT*>(result_))) ? "no proper value" : "";
    case VT_BOOL: {
      const auto flag = *reinterpret_cast<VARIANT_BOOL*>(result_);
      return flag == VARIANT_TRUE || flag == VARIANT_FALSE ? "" : "a Boolean that is not -1 or 0";
    }
    case VT_BSTR:
      SysFreeString(*reinterpret_cast<BSTR*>(result_));
      return {};
    case VT_DISPATCH:
    case VT_UNKNOWN:
      if (auto* object = *reinterpret_cast<IUnknown**>(result_)) object->Release();
      return {};
    default:
      return {};
  }
}

}  // namespace pv::test
