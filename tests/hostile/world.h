// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "tests/hostile/dice.h"
#include "tests/support/module.h"
#include "tests/support/object.h"
#include "tests/support/type_library.h"

namespace pv::test {

/// A caller who makes random calls of the library's objects, the same ones for the same seed:
/// random members of random objects with random arguments, through Invoke and through the vtable,
/// with servers and listeners that fail, call back, release and disconnect. The destructor releases
/// everything, circular references included.
class World : private Dice {
 public:
  explicit World(unsigned seed);
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  void call_many(long calls);

  struct Tally {
    long calls = 0;
    long refused = 0;    // calls that came back with an error
    long mischief = 0;   // calls that strangers got
    long connected = 0;  // listeners that were accepted
  };
  const Tally& tally() const { return tally_; }

 private:
  struct Kind {
    const ClassInfo* info;
    std::vector<FunctionInfo> functions;
  };
  struct Holding {
    Ref<IDispatch> object;
    const Kind* kind;  // none for a stranger
  };
  struct Connection {
    Ref<IConnectionPoint> point;
    DWORD cookie;
  };
  struct Arguments;

  void call_once();
  void invoke_something();
  void call_something_raw();
  void create_something();
  void drop_something();
  void connect_something();
  void disconnect_something();
  void walk(IEnumVARIANT* enumerator);

  /// Locked during the call of a member; nothing when the member is not called this time.
  using Turn = std::unique_lock<std::recursive_mutex>;
  std::optional<Turn> turn_to_call(const FunctionInfo& function);

  void fill(const Holding& holding, const FunctionInfo& function, Arguments& arguments);
  Value any_value();
  Value value_for(const PlainType& type);
  Ref<IDispatch> any_object();
  Ref<IDispatch> object_for(REFIID iid);

  HRESULT mischief(DISPPARAMS& given, VARIANT& result);
  void spoil(VARIANT& reference);

  void keep(const VARIANT& value);
  void keep(const Ref<IDispatch>& object);
  const Kind* kind_of(IDispatch* object) const;
  void untie(const Holding& holding);

  Module module_;
  std::vector<ClassInfo> classes_;
  std::vector<Kind> kinds_;
  std::vector<Holding> holdings_;
  std::vector<Connection> connections_;
  int depth_ = 0;
  Tally tally_;
};

}  // namespace pv::test
