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
  /// Of a call with very many allocations, only every so-manieth after the first hundreds.
  long step = 1;
  /// With all memory it works, too, unless it is meant to fail.
  bool works = true;
  /// What the call may change besides the object and its arguments, in words.
  std::function<std::wstring()> surroundings = {};
};

/// Expects of each of these calls either error 7 and nothing changed, or the result and the effect
/// that it has with all the memory it wants; and that nothing is left behind either way. Gives the
/// number of calls that ended with error 7.
int fail_everywhere(const Trial& trial);

/// The same for a scene that needs no variables.
int fail_everywhere(const std::function<Object()>& object, const std::wstring& member,
                    const std::vector<Value>& arguments = {}, WORD kind = DISPATCH_METHOD,
                    long step = 1);

}  // namespace pv::test
