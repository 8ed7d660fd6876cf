// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <activscp.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/object.h"

namespace pv::test {

/// An object that scripts know by a name; by the names of its members, too, when it is global.
struct NamedItem {
  std::wstring name;
  Ref<IDispatch> object;
  bool is_global = false;
};

/// Is told of errors that end a script.
using ErrorListener = std::function<void(const std::string& error)>;

/// The platform's engine of one script language.
class ScriptEngine {
 public:
  /// Throws CallFailed when there is no such engine.
  ScriptEngine(const std::wstring& language, std::vector<NamedItem> items, ErrorListener listener);
  ScriptEngine(const ScriptEngine&) = delete;
  ScriptEngine& operator=(const ScriptEngine&) = delete;
  ~ScriptEngine();

  const std::wstring& language() const { return language_; }

  /// Makes the constants of a type library known by their names.
  HRESULT add_type_library(ITypeLib* library);

  /// `line`: what the script's first line counts as.
  void run(const std::wstring& script, int line = 0);
  /// What an expression gives in the middle of the scripts.
  Value evaluate(const std::wstring& expression);

  /// The procedures and variables of the scripts.
  Object globals() const;

  bool has_procedure(const std::wstring& name) const;
  /// Calls a procedure with the arguments of an event. What it makes of by-reference ones reaches
  /// the event's source. A language without by-reference parameters gets an object with a Value in
  /// place of each.
  HRESULT call(const std::wstring& name, const DISPPARAMS& given);

 private:
  const std::wstring language_;
  const bool has_references_;
  const ErrorListener listener_;
  Ref<IActiveScript> engine_;
  Ref<IActiveScriptParse> parser_;
};

}  // namespace pv::test
