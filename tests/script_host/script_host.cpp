// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/script_host/script_host.h"

#include <algorithm>
#include <cstdio>

#include "tests/script_host/member_object.h"
#include "tests/script_host/script_text.h"
#include "tests/script_host/type_constants.h"

namespace pv::test {
namespace {

Ref<ITypeLib> referenced(const Element& reference) {
  const auto& attributes = reference.attributes;
  if (const auto object = attributes.find("object"); object != attributes.end()) {
    return type_library_of_class(widened(object->second));
  }
  unsigned major = 1, minor = 0;
  if (const auto version = attributes.find("version"); version != attributes.end()) {
    std::sscanf(version->second.c_str(), "%u.%u", &major, &minor);
  }
  return registered_type_library(widened(attributes.at("guid")), major, minor);
}

std::wstring optional_text(const MemberObject::Arguments& arguments, std::size_t position) {
  return position < arguments.size() ? arguments[position].text() : std::wstring();
}

}  // namespace

ScriptHost::ScriptHost(ErrorListener listener) : listener_(std::move(listener)) {
  add(own_object());
}

// No event may come while the engines are closed.
ScriptHost::~ScriptHost() { connections_.clear(); }

NamedItem ScriptHost::own_object() {
  using Arguments = MemberObject::Arguments;
  return {L"WScript", new MemberObject({
                          {L"CreateObject",
                           [this](const Arguments& a) {
                             return Value(create(required(a, 0).text(), optional_text(a, 1)));
                           }},
                          {L"ConnectObject",
                           [this](const Arguments& a) {
                             connect(Object(required(a, 0)), required(a, 1).text());
                             return Value();
                           }},
                          {L"DisconnectObject",
                           [this](const Arguments& a) {
                             disconnect(Object(required(a, 0)));
                             return Value();
                           }},
                          {L"Echo",
                           [](const Arguments& a) {
                             std::printf("%s\n", printable(required(a, 0).text()).c_str());
                             return Value();
                           }},
                      })};
}

// Where the engines do not take type libraries, constants are members of an object of the host.
void ScriptHost::add_constants(const Ref<ITypeLib>& library) {
  libraries_.push_back(library);
  add({L"constants" + std::to_wstring(libraries_.size()), new TypeConstants(library), true});
}

void ScriptHost::run(const Job& job) {
  for (const Element& reference : job.references) add_constants(referenced(reference));
  for (const Element& script : job.scripts) {
    engine(widened(script.attributes.at("language"))).run(widened(script.text), script.line);
  }
}

ScriptEngine& ScriptHost::engine(const std::wstring& language) {
  for (const auto& engine : engines_) {
    if (is_same_name(engine->language(), language)) return *engine;
  }
  return *engines_.emplace_back(std::make_unique<ScriptEngine>(language, items_, listener_));
}

Object ScriptHost::create(const std::wstring& prog_id, const std::wstring& prefix) {
  const Object object = Object::create(prog_id);
  if (!prefix.empty()) connect(object, prefix);
  return object;
}

void ScriptHost::connect(const Object& object, const std::wstring& prefix) {
  connections_.push_back(std::make_unique<EventConnection>(
      object, prefix, [this](const std::wstring& name, const DISPPARAMS& arguments) {
        return handle(name, arguments);
      }));
}

void ScriptHost::disconnect(const Object& object) {
  std::erase_if(connections_, [&](const auto& connection) { return connection->is_to(object); });
}

std::wstring ScriptHost::missing_events(const Object& object) const {
  std::wstring missing;
  for (const auto& connection : connections_) {
    if (!connection->is_to(object)) continue;
    for (const std::wstring& name : connection->missing_events()) missing += name + L" ";
  }
  return missing;
}

HRESULT ScriptHost::handle(const std::wstring& name, const DISPPARAMS& arguments) {
  for (const auto& engine : engines_) {
    if (engine->has_procedure(name)) return engine->call(name, arguments);
  }
  return S_OK;
}

}  // namespace pv::test
