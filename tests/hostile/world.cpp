// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/hostile/world.h"

#include <mutex>
#include <set>

#include "com/variant.h"
#include "tests/hostile/stranger.h"
#include "tests/support/raw_call.h"
#include "tests/support/sample_values.h"

namespace pv::test {
namespace {

constexpr std::size_t kMostHoldings = 80;
constexpr int kDeepest = 4;
constexpr std::size_t kMostConnections = 12;

// Members that open a window each time; most of the time something else is called.
const std::set<std::wstring> kSlow = {L"pvMsgBox", L"ItemAccessEdit", L"ItemSymbolEdit",
                                      L"ShowMe",   L"ShowMePW",       L"ShowMeDT",
                                      L"Edit",     L"GetFileList"};

}  // namespace

/// The arguments of one call in the order of the parameters, with the variables that by-reference
/// ones refer to.
struct World::Arguments {
  explicit Arguments(std::size_t count) : boxes(count), passed(count) {
    for (VARIANT& each : passed) VariantInit(&each);
  }

  void pass_value(std::size_t at) { passed[at] = boxes[at]; }
  void pass_variant_reference(std::size_t at) {
    passed[at].vt = VT_BYREF | VT_VARIANT;
    passed[at].pvarVal = &boxes[at];
  }
  void pass_typed_reference(std::size_t at) {
    passed[at].vt = static_cast<VARTYPE>(VT_BYREF | boxes[at].vt);
    passed[at].byref = &boxes[at].lVal;
  }

  std::vector<Value> boxes;
  std::vector<VARIANT> passed;
};

World::World(unsigned seed) : Dice(seed), classes_(classes_of(module_.type_library().get())) {
  for (const ClassInfo& each : classes_)
    kinds_.push_back({&each, functions_of(each.interface_type)});
  for (const Kind& kind : kinds_) keep(Object::create(kind.info->prog_id()).as<IDispatch>());
}

World::~World() {
  depth_ = kDeepest;  // callbacks do nothing from now on
  while (!connections_.empty()) disconnect_something();
  for (const Holding& holding : holdings_) untie(holding);
}

void World::call_many(long calls) {
  for (const long end = tally_.calls + calls; tally_.calls < end;) call_once();
}

void World::call_once() {
  ++tally_.calls;
  const unsigned die = random(100);
  if (die < 80) return invoke_something();
  if (die < 90) return call_something_raw();
  if (die < 93) return create_something();
  if (die < 95) return drop_something();
  if (die < 98) return connect_something();
  disconnect_something();
}

// One thread at a time opens windows: this platform's text boxes share a cache that is not
// thread-safe. Recursive, as a callback during the call may open another window.
std::optional<World::Turn> World::turn_to_call(const FunctionInfo& function) {
  static std::recursive_mutex windows;
  if (!kSlow.contains(function.name())) return Turn();
  if (!chance(2)) return std::nullopt;
  return Turn(windows);
}

void World::invoke_something() {
  const Holding holding = any_of(holdings_);
  if (!holding.kind) return;
  const FunctionInfo& function = any_of(holding.kind->functions);
  const auto turn = turn_to_call(function);
  if (!turn) return;
  Arguments arguments(function.inputs().size());
  fill(holding, function, arguments);
  std::vector<VARIANT> reversed(arguments.passed.rbegin(), arguments.passed.rend());
  if (chance(4) && !reversed.empty()) reversed.pop_back();
  Value surplus = any_value();
  if (chance(4)) reversed.push_back(surplus);
  auto flags = static_cast<WORD>(function.description().invkind);
  if (chance(5)) flags = static_cast<WORD>(1u << random(4));
  std::vector<DISPID> names;
  if (function.is_put() && !reversed.empty()) names.push_back(DISPID_PROPERTYPUT);
  if (chance(2) && !reversed.empty()) names.assign(1, static_cast<DISPID>(random(5)));
  Outcome outcome =
      Object(holding.object).invoke(function.description().memid, flags, reversed, names);
  if (!outcome.worked()) ++tally_.refused;
  keep(outcome.value);
  for (const Value& box : arguments.boxes) keep(box);
}

// By the types of the vtable: every argument is what its parameter asks for, by-reference ones may
// be null.
void World::call_something_raw() {
  const Holding holding = any_of(holdings_);
  if (!holding.kind) return;
  const FunctionInfo& function = any_of(holding.kind->functions);
  const auto turn = turn_to_call(function);
  if (!turn) return;
  const TypeInfo& owner = holding.kind->info->interface_type;
  Ref<IUnknown> object;
  holding.object->QueryInterface(owner.attributes().guid, reinterpret_cast<void**>(object.put()));
  if (!object) return;
  std::vector<Value> inputs;
  std::vector<std::size_t> nulls;
  for (const ParameterInfo& input : function.inputs()) {
    const PlainType type = plain_type_of(owner, input.type);
    inputs.push_back(value_for(type));
    if (type.pointers > 0 && chance(5)) nulls.push_back(inputs.size() - 1);
  }
  RawCall call(owner, function, std::move(inputs));
  for (std::size_t position : nulls) call.pass_null(position);
  if (function.has_result() && chance(3)) call.pass_null_result();
  if (FAILED(call.on(object.get()))) ++tally_.refused;
  keep(call.take_result());
  for (const Value& input : call.inputs()) keep(input);
}

void World::create_something() {
  if (holdings_.size() >= kMostHoldings) return drop_something();
  keep(chance(10) ? any_object() : Object::create(any_of(kinds_).info->prog_id()).as<IDispatch>());
}

void World::drop_something() {
  if (holdings_.size() <= kinds_.size()) return;
  const std::size_t at = random(static_cast<unsigned>(holdings_.size()));
  const Holding dropped = holdings_[at];
  holdings_.erase(holdings_.begin() + static_cast<std::ptrdiff_t>(at));
  untie(dropped);
}

void World::connect_something() {
  const Holding holding = any_of(holdings_);
  if (!holding.kind || holding.kind->info->source == IID_NULL) return;
  if (connections_.size() >= kMostConnections) return disconnect_something();
  const auto container = query<IConnectionPointContainer>(holding.object.get());
  Connection connection{{}, 0};
  const IID& events = holding.kind->info->source;
  container->FindConnectionPoint(events, connection.point.put());
  const Ref<IDispatch> listener(
      new Stranger([this](auto& given, auto& result) { return mischief(given, result); }, &events));
  if (!connection.point) return;
  if (FAILED(connection.point->Advise(listener.get(), &connection.cookie))) return;
  connections_.push_back(connection);
  ++tally_.connected;
}

void World::disconnect_something() {
  if (connections_.empty()) return;
  const std::size_t at = random(static_cast<unsigned>(connections_.size()));
  const Connection dropped = connections_[at];
  connections_.erase(connections_.begin() + static_cast<std::ptrdiff_t>(at));
  dropped.point->Unadvise(dropped.cookie);
}

void World::fill(const Holding& holding, const FunctionInfo& function, Arguments& arguments) {
  for (std::size_t i = 0; i < arguments.boxes.size(); ++i) {
    const ParameterInfo& parameter = function.parameters()[i];
    const PlainType type = plain_type_of(holding.kind->info->interface_type, parameter.type);
    if (parameter.is_optional() && chance(30)) {
      arguments.boxes[i] = Value::missing();
      arguments.pass_value(i);
      continue;
    }
    arguments.boxes[i] = chance(80) ? value_for(type) : any_value();
    const unsigned way = random(100);
    if (way < 70) {
      arguments.pass_value(i);
    } else if (way < 85 || arguments.boxes[i].vt == VT_EMPTY || arguments.boxes[i].vt == VT_NULL) {
      arguments.pass_variant_reference(i);
    } else {
      arguments.pass_typed_reference(i);
    }
  }
}

Ref<IDispatch> World::any_object() {
  if (chance(15)) return {};
  if (chance(30)) {
    return Ref<IDispatch>(
        new Stranger([this](auto& given, auto& result) { return mischief(given, result); }));
  }
  return any_of(holdings_).object;
}

// One that has the interface, if there is one.
Ref<IDispatch> World::object_for(REFIID iid) {
  if (iid == IID_IDispatch || iid == IID_IUnknown) return any_object();
  if (chance(10)) return {};
  for (int i = 0; i < 60; ++i) {
    Ref<IDispatch> object;
    any_of(holdings_).object->QueryInterface(iid, reinterpret_cast<void**>(object.put()));
    if (object) return object;
  }
  return {};
}

Value World::value_for(const PlainType& type) {
  switch (type.type) {
    case VT_VARIANT:
      return any_value();
    case VT_BSTR:
      return Value(text());
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return Value(object_for(type.iid));
    default:
      return number(type.type);
  }
}

Value World::any_value() {
  switch (random(16)) {
    case 0:
      return Value();
    case 1:
      return Value::null();
    case 2:
      return Value::missing();
    case 3:
    case 4:
      return Value(any_object());
    case 5:
      return array_of(chance(50) ? VT_VARIANT : VT_I4, random(4));
    case 6:
      return Value(chance(50));
    case 7:
      return number(VT_R8);
    case 8:
      return number(VT_R4);
    case 9:
      return number(VT_DATE);
    case 10:
      return number(VT_UI1);
    case 11:
    case 12:
      return number(chance(50) ? VT_I2 : VT_I4);
    default:
      return Value(text());
  }
}

HRESULT World::mischief(DISPPARAMS& given, VARIANT& result) {
  ++tally_.mischief;
  if (depth_ >= kDeepest) return S_OK;
  ++depth_;
  for (UINT i = 0; i < given.cArgs; ++i) {
    if (given.rgvarg[i].vt & VT_BYREF) spoil(given.rgvarg[i]);
  }
  const unsigned die = random(100);
  if (die < 25) call_once();
  if (die >= 25 && die < 30) disconnect_something();
  if (die >= 30 && die < 35) drop_something();
  HRESULT answer = S_OK;
  if (chance(70)) result = any_value().detach();
  if (chance(15)) answer = DISP_E_EXCEPTION;
  if (chance(3)) answer = E_OUTOFMEMORY;
  if (chance(3)) answer = DISP_E_MEMBERNOTFOUND;
  if (FAILED(answer)) VariantClear(&result);
  --depth_;
  return answer;
}

// Changes a variable of the library in its own type.
void World::spoil(VARIANT& reference) {
  if (chance(50)) return;
  switch (reference.vt & ~VT_BYREF) {
    case VT_I2:
    case VT_BOOL:
      *reference.piVal = static_cast<short>(random());
      return;
    case VT_I4:
      *reference.plVal = static_cast<long>(random());
      return;
    case VT_R4:
      *reference.pfltVal = 1e38f;
      return;
    case VT_BSTR:
      SysFreeString(*reference.pbstrVal);
      *reference.pbstrVal = SysAllocString(text().c_str());
      return;
    case VT_DISPATCH:
      if (*reference.ppdispVal) (*reference.ppdispVal)->Release();
      *reference.ppdispVal = any_object().detach();
      return;
    case VT_VARIANT:
      VariantClear(reference.pvarVal);
      *reference.pvarVal = any_value().detach();
      return;
    default:
      return;
  }
}

void World::keep(const VARIANT& value) {
  if ((value.vt != VT_DISPATCH && value.vt != VT_UNKNOWN) || !value.punkVal) return;
  if (const auto enumerator = query<IEnumVARIANT>(value.punkVal)) return walk(enumerator.get());
  keep(query<IDispatch>(value.punkVal));
}

void World::keep(const Ref<IDispatch>& object) {
  if (!object) return;
  for (const Holding& holding : holdings_) {
    if (holding.object == object) return;
  }
  const Kind* const kind = kind_of(object.get());
  if (kind) holdings_.push_back({object, kind});
}

void World::walk(IEnumVARIANT* enumerator) {
  Ref<IEnumVARIANT> copy;
  for (int i = 0; i < 4; ++i) {
    Value values[3];
    ULONG fetched = 0;
    enumerator->Next(random(4), values, &fetched);
    for (const Value& value : values) {
      if (value.vt == VT_DISPATCH) keep(query<IDispatch>(value.pdispVal));
    }
    enumerator->Skip(random(3));
    if (chance(30)) enumerator->Reset();
    if (chance(30)) enumerator->Clone(copy.put());
  }
}

const World::Kind* World::kind_of(IDispatch* object) const {
  for (const Kind& kind : kinds_) {
    Ref<IUnknown> found;
    object->QueryInterface(kind.info->interface_type.attributes().guid,
                           reinterpret_cast<void**>(found.put()));
    if (found) return &kind;
  }
  return nullptr;
}

// Breaks circular references: takes everything out of an object that may refer to others.
void World::untie(const Holding& holding) {
  const Object object(holding.object);
  for (const FunctionInfo& function : holding.kind->functions) {
    const auto& parameters = function.parameters();
    if (function.name() == L"Clear" && parameters.empty()) object.try_call(L"Clear");
    if (!function.is_put() || parameters.size() != 1) continue;
    const PlainType type =
        plain_type_of(holding.kind->info->interface_type, parameters.front().type);
    if (type.is_interface()) object.try_set(function.name(), Value::nothing());
    if (type.type == VT_VARIANT) object.try_put(function.name(), Value());
  }
}

}  // namespace pv::test
