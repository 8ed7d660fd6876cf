// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/automation/utility/language_support.h"

#include <gtest/gtest.h>

#include <utility>

#include "tests/support/dispatch_object.h"

namespace pv::test {

ActiveLanguage::ActiveLanguage(long language)
    : languages_(Object::create(L"pvItems32.CUtility").get_object(L"Languages")) {
  languages_.put(L"ActiveLanguageID", language);
}

ActiveLanguage::~ActiveLanguage() { languages_.try_put(L"ActiveLanguageID", 1); }

class LanguageListener::Sink final : public DispatchObject {
 public:
  explicit Sink(Kind kind)
      : DispatchObject(ObjectKind::kCompiled,
                       kind == Kind::kEvents ? &__uuidof(__CLanguages) : nullptr) {}

  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT*,
                      EXCEPINFO*, UINT*) override {
    EXPECT_EQ(id, 1);
    EXPECT_TRUE(flags & DISPATCH_METHOD);
    if (parameters->cArgs != 1 || parameters->cNamedArgs != 0) {
      ADD_FAILURE() << "the event has one argument";
      return DISP_E_BADPARAMCOUNT;
    }
    EXPECT_EQ(parameters->rgvarg[0].vt, VT_I4);
    heard.push_back(parameters->rgvarg[0].lVal);
    if (action) action(heard.back());
    return result;
  }

  std::vector<long> heard;
  std::function<void(long)> action;
  HRESULT result = S_OK;

 private:
  DISPID id_of(std::wstring_view) override { return DISPID_UNKNOWN; }
};

LanguageListener::LanguageListener(Kind kind) : sink_(new Sink(kind)) {}

LanguageListener::~LanguageListener() { disconnect(); }

void LanguageListener::connect(const Object& languages) {
  point_ = language_events_of(languages);
  ASSERT_EQ(point_->Advise(sink_.get(), &cookie_), S_OK);
}

void LanguageListener::disconnect() {
  if (point_) {
    EXPECT_EQ(point_->Unadvise(cookie_), S_OK);
  }
  point_ = Ref<IConnectionPoint>();
}

IUnknown* LanguageListener::sink() const { return sink_.get(); }

void LanguageListener::on_change(std::function<void(long language)> action) {
  sink_->action = std::move(action);
}

void LanguageListener::fail_with(HRESULT result) { sink_->result = result; }

const std::vector<long>& LanguageListener::heard() const { return sink_->heard; }

Ref<IConnectionPoint> language_events_of(const Object& languages) {
  const auto container = languages.as<IConnectionPointContainer>();
  Ref<IConnectionPoint> point;
  if (!container || FAILED(container->FindConnectionPoint(__uuidof(__CLanguages), point.put()))) {
    throw CallFailed("the registry raises no events");
  }
  return point;
}

}  // namespace pv::test
