#pragma once

#include <string>

#include "com/ref.h"
#include "pvItems32.h"

namespace pv {

/// The single instances that all objects of a thread share, created on first request.
Ref<_CLanguages> shared_languages();
Ref<_CTxmEvents> shared_events();
Ref<_CFile> shared_file();
Ref<_CPasswords> shared_passwords();

/// Title of the library's own messages: that of the application object, else the library's.
std::wstring message_title();

}  // namespace pv
