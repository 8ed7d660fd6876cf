// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>

#include "../fluxor_server/library.h"

namespace fluxor {

/// Listens to the events of pvItems32.CTxmEvents as long as it lives, and tells each in one line.
class ProgressListener {
 public:
  using Tell = std::function<void(const std::wstring& line)>;

  ProgressListener(const ComPtr<_CTxmEvents>& hub, Tell tell);
  ProgressListener(const ProgressListener&) = delete;
  ProgressListener& operator=(const ProgressListener&) = delete;
  ~ProgressListener();

 private:
  ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

}  // namespace fluxor
