// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/script_host/event_sink.h"
#include "tests/script_host/script_engine.h"
#include "tests/script_host/wsf_file.h"

namespace pv::test {

/// A host of scripts in any language that the platform has an engine for. They know it as WScript,
/// with CreateObject(ProgID, [prefix]), ConnectObject(object, prefix), DisconnectObject(object) and
/// Echo(text). An event of a connected object goes to the procedure of its name behind the prefix,
/// whatever language has it.
class ScriptHost {
 public:
  explicit ScriptHost(ErrorListener listener);
  ScriptHost(const ScriptHost&) = delete;
  ScriptHost& operator=(const ScriptHost&) = delete;
  ~ScriptHost();

  /// Further objects and constants for the scripts; before the first one runs.
  void add(NamedItem item) { items_.push_back(std::move(item)); }
  void add_constants(const Ref<ITypeLib>& library);

  void run(const Job& job);
  ScriptEngine& engine(const std::wstring& language);

  Object create(const std::wstring& prog_id, const std::wstring& prefix = {});
  void connect(const Object& object, const std::wstring& prefix);
  void disconnect(const Object& object);
  /// Names of the events that a connected object has but did not raise, joined by blanks.
  std::wstring missing_events(const Object& object) const;

 private:
  NamedItem own_object();
  HRESULT handle(const std::wstring& name, const DISPPARAMS& arguments);

  const ErrorListener listener_;
  std::vector<NamedItem> items_;
  std::vector<Ref<ITypeLib>> libraries_;
  std::vector<std::unique_ptr<ScriptEngine>> engines_;
  std::vector<std::unique_ptr<EventConnection>> connections_;
};

}  // namespace pv::test
