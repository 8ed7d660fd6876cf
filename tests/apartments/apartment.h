// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string_view>

#include "tests/support/object.h"

// Threads in apartments of every kind, and objects on their way between them.
namespace pv::test {

/// A test whose thread is free-threaded, as those of services and most managed hosts are. It is the
/// only such thread at its beginning: the platform's hosting apartment lasts as long as the test.
class FreeThreaded : public testing::Test {
 protected:
  FreeThreaded();
  ~FreeThreaded() override { enter(COINIT_APARTMENTTHREADED); }

  /// Leaves the apartment of all free threads, which ends with the last of them, and begins anew.
  static void begin_anew() { enter(COINIT_MULTITHREADED); }

 private:
  static void enter(COINIT kind);
};

/// Whether a condition holds now or soon: other threads may still be about to bring it about.
bool holds_soon(const std::function<bool()>& condition);

/// Runs the action on a new thread in an apartment of this kind, and waits for its end. What it
/// throws comes out here.
void on_thread(COINIT kind, const std::function<void()>& action);

/// A thread with an apartment of its own that answers calls from others until it ends.
class ApartmentThread {
 public:
  ApartmentThread();
  ~ApartmentThread() { end(); }
  ApartmentThread(const ApartmentThread&) = delete;
  ApartmentThread& operator=(const ApartmentThread&) = delete;

  /// Runs the action there and waits for its end. What it throws comes out here.
  void run(const std::function<void()>& action);
  /// An object that is made there, as the caller's apartment sees it.
  Object make(const std::function<Object()>& action);
  Object create(std::wstring_view prog_id) {
    return make([&] { return Object::create(prog_id); });
  }
  /// The thread leaves its apartment, whatever others hold of it.
  void end();

 private:
  struct Task;
  static DWORD WINAPI answer(void* started);

  DWORD id_ = 0;
  HANDLE thread_ = nullptr;
};

/// The platform's table of interfaces for all apartments of the process.
class GlobalInterfaceTable {
 public:
  GlobalInterfaceTable();

  DWORD enter(const Object& object) const;
  HRESULT leave(DWORD cookie) const;
  /// The object as this apartment sees it; none when the cookie is not known.
  Object object(DWORD cookie) const;

 private:
  Ref<IGlobalInterfaceTable> table_;
};

/// The object belongs to another apartment: what is held is the platform's stand-in. Only an object
/// itself answers to the id of its class.
bool is_proxy(const Object& object, REFCLSID clsid);

}  // namespace pv::test
