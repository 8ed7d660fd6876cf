// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/script_host/script_engine.h"

#include <cstdio>

#include "tests/script_host/reference.h"
#include "tests/script_host/script_text.h"
#include "tests/support/counted.h"

namespace pv::test {
namespace {

void require(HRESULT result, const char* what) {
  if (SUCCEEDED(result)) return;
  char text[100];
  std::snprintf(text, sizeof text, "%s: %08lx", what, static_cast<unsigned long>(result));
  throw CallFailed(text);
}

std::string text_of(EXCEPINFO& error) {
  char text[1000];
  const Bstr source = Bstr::attach(error.bstrSource);
  const Bstr description = Bstr::attach(error.bstrDescription);
  const Bstr help_file = Bstr::attach(error.bstrHelpFile);
  std::snprintf(text, sizeof text, "%08lx %s: %s", static_cast<unsigned long>(error.scode),
                printable(view_of(source)).c_str(), printable(view_of(description)).c_str());
  return text;
}

class Site final : public Counted<IActiveScriptSite> {
 public:
  Site(std::vector<NamedItem> items, ErrorListener listener)
      : items_(std::move(items)), listener_(std::move(listener)) {}

  STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; }
  STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
  STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
  STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
  STDMETHODIMP OnEnterScript() override { return S_OK; }
  STDMETHODIMP OnLeaveScript() override { return S_OK; }

  STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** object,
                           ITypeInfo** info) override {
    if (object) *object = nullptr;
    if (info) *info = nullptr;
    if (wanted & SCRIPTINFO_ITYPEINFO) return TYPE_E_ELEMENTNOTFOUND;
    for (const NamedItem& item : items_) {
      if (!is_same_name(item.name, name)) continue;
      *object = Ref<IUnknown>(item.object).detach();
      return S_OK;
    }
    return TYPE_E_ELEMENTNOTFOUND;
  }

  STDMETHODIMP OnScriptError(IActiveScriptError* error) override {
    EXCEPINFO exception{};
    DWORD context = 0;
    ULONG line = 0;
    LONG column = 0;
    error->GetExceptionInfo(&exception);
    error->GetSourcePosition(&context, &line, &column);
    listener_("line " + std::to_string(line + 1) + ": " + text_of(exception));
    return S_OK;
  }

 private:
  const std::vector<NamedItem> items_;
  const ErrorListener listener_;
};

}  // namespace

ScriptEngine::ScriptEngine(const std::wstring& language, std::vector<NamedItem> items,
                           ErrorListener listener)
    : language_(language),
      has_references_(!is_same_name(language, L"JScript")),
      listener_(std::move(listener)) {
  CLSID clsid{};
  require(CLSIDFromProgID(language.c_str(), &clsid), "no such language");
  require(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript),
                           reinterpret_cast<void**>(engine_.put())),
          "no engine");
  parser_ = query<IActiveScriptParse>(engine_.get());
  const Ref<IActiveScriptSite> site(new Site(items, listener_));
  require(engine_->SetScriptSite(site.get()), "SetScriptSite");
  require(parser_->InitNew(), "InitNew");
  for (const NamedItem& item : items) {
    const DWORD global = item.is_global ? SCRIPTITEM_GLOBALMEMBERS : 0;
    require(engine_->AddNamedItem(item.name.c_str(), SCRIPTITEM_ISVISIBLE | global),
            "AddNamedItem");
  }
  require(engine_->SetScriptState(SCRIPTSTATE_STARTED), "SetScriptState");
}

ScriptEngine::~ScriptEngine() {
  if (engine_) engine_->Close();
}

HRESULT ScriptEngine::add_type_library(ITypeLib* library) {
  TLIBATTR* attributes = nullptr;
  require(library->GetLibAttr(&attributes), "GetLibAttr");
  const HRESULT added =
      engine_->AddTypeLib(attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum, 0);
  library->ReleaseTLibAttr(attributes);
  return added;
}

void ScriptEngine::run(const std::wstring& script, int line) {
  EXCEPINFO exception{};
  const HRESULT parsed =
      parser_->ParseScriptText(script.c_str(), nullptr, nullptr, nullptr, 0,
                               static_cast<ULONG>(line), SCRIPTTEXT_ISVISIBLE, nullptr, &exception);
  if (FAILED(parsed)) require(parsed, text_of(exception).c_str());
}

Value ScriptEngine::evaluate(const std::wstring& expression) {
  run(L"evaluated = " + expression);
  return globals().get(L"evaluated");
}

Object ScriptEngine::globals() const {
  Ref<IDispatch> globals;
  require(engine_->GetScriptDispatch(nullptr, globals.put()), "GetScriptDispatch");
  return Object(globals);
}

bool ScriptEngine::has_procedure(const std::wstring& name) const {
  return globals().id_of(name) != DISPID_UNKNOWN;
}

HRESULT ScriptEngine::call(const std::wstring& name, const DISPPARAMS& given) {
  std::vector<PassedArgument> passed;
  std::vector<VARIANT> arguments;
  for (UINT i = 0; i < given.cArgs; ++i) {
    passed.emplace_back(given.rgvarg[i], has_references_);
    arguments.push_back(passed.back().variant());
  }
  const Object procedures = globals();
  const Outcome outcome = procedures.invoke(procedures.id_of(name), DISPATCH_METHOD, arguments);
  for (const PassedArgument& argument : passed) argument.hand_back();
  if (!outcome.worked()) {
    listener_(printable(name + L": " + outcome.description) + ", error " +
              std::to_string(outcome.number()));
  }
  return outcome.result;
}

}  // namespace pv::test
