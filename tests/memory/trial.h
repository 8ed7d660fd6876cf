// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/memory/portrait.h"
#include "tests/support/object.h"

namespace pv::test {

/// An object and the arguments of the call that is to be made on it.
struct Scene {
  Object object;
  std::vector<Value> arguments;
  /// What the arguments refer to.
  std::shared_ptr<void> variables = {};
};

/// One call that is made with each of its allocations failing, every time on a new scene.
struct Trial {
  std::function<Scene()> prepare;
  std::wstring member;
  WORD kind = DISPATCH_METHOD;
  /// For calls with very many allocations: after the first hundreds, only every n-th of them fails.
  long step = 1;
  /// Whether the call succeeds when no allocation fails.
  bool works = true;
  /// What the call may change besides the object and its arguments, in words.
  std::function<std::wstring()> surroundings = {};
};

/// Expects of each of these calls either error 7 and nothing changed, or the result and the effect
/// that it has when no allocation fails; and that nothing leaks either way. Gives the
/// number of calls that ended with error 7.
int fail_everywhere(const Trial& trial);

/// The same for a scene that needs no variables.
int fail_everywhere(const std::function<Object()>& object, const std::wstring& member,
                    const std::vector<Value>& arguments = {}, WORD kind = DISPATCH_METHOD,
                    long step = 1);

}  // namespace pv::test
