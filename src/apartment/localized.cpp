// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "apartment/localized.h"

#include <algorithm>
#include <utility>

#include "apartment/shared_objects.h"
#include "apartment/thread_state.h"
#include "com/call.h"
#include "core/text/string_ids.h"
#include "platform/resources.h"
#include "resources/text_ids.h"

namespace pv {

// The published numbers of texts are those of our list.
static_assert(pvStrOK == TEXT_OK && pvStrCancel == TEXT_CANCEL);
static_assert(pvStrAbort == TEXT_ABORT && pvStrRetry == TEXT_RETRY && pvStrIgnore == TEXT_IGNORE);
static_assert(pvStrYes == TEXT_YES && pvStrNo == TEXT_NO && pvStrError == TEXT_ERROR);
static_assert(pvStrUntitled == TEXT_UNTITLED && pvStrRefresh == TEXT_REFRESH);
static_assert(pvStrDelete == TEXT_DELETE && pvStrFinish == TEXT_FINISH && pvStrNext == TEXT_NEXT);
static_assert(pvStrBack == TEXT_BACK && pvStrBrowse == TEXT_BROWSE && pvStrApply == TEXT_APPLY);
static_assert(pvStrEnable == TEXT_ENABLE && pvStrDisable == TEXT_DISABLE);
static_assert(pvStrClose == TEXT_CLOSE && pvStrModify == TEXT_MODIFY);

namespace {

using TextSource = std::optional<std::wstring>(std::uint16_t id);

std::wstring text_from(TextSource& source, int id) {
  const auto language = result_of(shared_languages(), &_CLanguages::get_ActiveLanguageID);
  const std::int16_t own = localized_id(id, static_cast<std::int16_t>(language));
  if (auto text = source(static_cast<std::uint16_t>(own))) return *text;
  return source(static_cast<std::uint16_t>(id)).value_or(L"?");
}

}  // namespace

std::wstring localized(int id) {
  return text_from(id < TEXT_FIRST_LABEL ? resource_text : resource_label, id);
}

std::wstring published_text(int id) { return text_from(resource_text, id); }

LanguageWatch::LanguageWatch(std::function<void()> changed) : changed_(std::move(changed)) {
  thread_state().language_watches.push_back(this);
}

LanguageWatch::~LanguageWatch() {
  if (ThreadState* const state = existing_thread_state()) std::erase(state->language_watches, this);
}

}  // namespace pv
