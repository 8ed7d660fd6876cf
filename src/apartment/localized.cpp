#include "apartment/localized.h"

#include <algorithm>
#include <utility>

#include "apartment/shared_objects.h"
#include "apartment/thread_state.h"
#include "com/call.h"
#include "core/text/string_ids.h"
#include "platform/resources.h"

namespace pv {

std::wstring localized(int id) {
  const auto language = result_of(shared_languages(), &_CLanguages::get_ActiveLanguageID);
  const std::int16_t own = localized_id(id, static_cast<std::int16_t>(language));
  if (auto text = resource_text(static_cast<std::uint16_t>(own))) return *text;
  return resource_text(static_cast<std::uint16_t>(id)).value_or(L"?");
}

LanguageWatch::LanguageWatch(std::function<void()> changed) : changed_(std::move(changed)) {
  thread_state().language_watches.push_back(this);
}

LanguageWatch::~LanguageWatch() {
  if (ThreadState* const state = existing_thread_state()) std::erase(state->language_watches, this);
}

}  // namespace pv
