// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include "com/ref.h"
#include "pvItems32.h"

namespace pv {

/// The single instances that all objects of a thread share, created on first request.
Ref<_CLanguages> shared_languages();
Ref<_CTxmEvents> shared_events();
Ref<_CFile> shared_file();
Ref<_CPasswords> shared_passwords();

}  // namespace pv
