// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/apartments/apartment.h"

#include <exception>
#include <thread>

#include "tests/apartments/platform.h"

namespace pv::test {
namespace {

constexpr UINT kTask = WM_APP + 1;

void check_result(const char* what, HRESULT result) {
  if (FAILED(result)) throw CallFailed(what + std::to_string(result));
}

void leave_apartment() {
  SetErrorInfo(0, nullptr);
  CoUninitialize();
}

}  // namespace

FreeThreaded::FreeThreaded() {
  platform_keeps_class_objects();
  platform_keeps_arguments();
  enter(COINIT_MULTITHREADED);
}

void FreeThreaded::enter(COINIT kind) {
  leave_apartment();
  if (FAILED(CoInitializeEx(nullptr, kind))) throw CallFailed("the apartment is not there");
}

bool holds_soon(const std::function<bool()>& condition) {
  constexpr int kLooks = 400;
  for (int look = 0; look < kLooks && !condition(); ++look) Sleep(5);
  return condition();
}

void on_thread(COINIT kind, const std::function<void()>& action) {
  std::exception_ptr thrown;
  std::thread([&] {
    CoInitializeEx(nullptr, kind);
    try {
      action();
    } catch (...) {
      thrown = std::current_exception();
    }
    leave_apartment();
  }).join();
  if (thrown) std::rethrow_exception(thrown);
}

/// What the thread is asked to do.
struct ApartmentThread::Task {
  const std::function<void()>& action;
  HANDLE done;
  std::exception_ptr thrown;
};

ApartmentThread::ApartmentThread() {
  const HANDLE started = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  thread_ = CreateThread(nullptr, 0, &answer, started, 0, &id_);
  WaitForSingleObject(started, INFINITE);
  CloseHandle(started);
}

DWORD WINAPI ApartmentThread::answer(void* started) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  MSG message;
  PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // makes the queue
  SetEvent(started);
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.message != kTask) {
      DispatchMessageW(&message);
      continue;
    }
    auto& task = *reinterpret_cast<Task*>(message.lParam);
    try {
      task.action();
    } catch (...) {
      task.thrown = std::current_exception();
    }
    SetEvent(task.done);
  }
  leave_apartment();
  return 0;
}

void ApartmentThread::run(const std::function<void()>& action) {
  Task task{action, CreateEventW(nullptr, TRUE, FALSE, nullptr), nullptr};
  PostThreadMessageW(id_, kTask, 0, reinterpret_cast<LPARAM>(&task));
  WaitForSingleObject(task.done, INFINITE);
  CloseHandle(task.done);
  if (task.thrown) std::rethrow_exception(task.thrown);
}

Object ApartmentThread::make(const std::function<Object()>& action) {
  IStream* packed = nullptr;
  run([&] {
    const Object made = action();
    check_result("pack ",
                 CoMarshalInterThreadInterfaceInStream(IID_IDispatch, made.get(), &packed));
  });
  Ref<IDispatch> object;
  check_result("unpack ", CoGetInterfaceAndReleaseStream(packed, IID_IDispatch,
                                                         reinterpret_cast<void**>(object.put())));
  return Object(object);
}

void ApartmentThread::end() {
  if (!thread_) return;
  PostThreadMessageW(id_, WM_QUIT, 0, 0);
  WaitForSingleObject(thread_, INFINITE);
  CloseHandle(std::exchange(thread_, nullptr));
}

GlobalInterfaceTable::GlobalInterfaceTable() {
  CoCreateInstance(CLSID_StdGlobalInterfaceTable, nullptr, CLSCTX_INPROC_SERVER,
                   IID_IGlobalInterfaceTable, reinterpret_cast<void**>(table_.put()));
}

DWORD GlobalInterfaceTable::enter(const Object& object) const {
  DWORD cookie = 0;
  check_result("enter ", table_->RegisterInterfaceInGlobal(object.get(), IID_IDispatch, &cookie));
  return cookie;
}

HRESULT GlobalInterfaceTable::leave(DWORD cookie) const {
  return table_->RevokeInterfaceFromGlobal(cookie);
}

Object GlobalInterfaceTable::object(DWORD cookie) const {
  Ref<IDispatch> found;
  table_->GetInterfaceFromGlobal(cookie, IID_IDispatch, reinterpret_cast<void**>(found.put()));
  return Object(found);
}

bool is_proxy(const Object& object, REFCLSID clsid) {
  Ref<IUnknown> itself;
  object.get()->QueryInterface(clsid, reinterpret_cast<void**>(itself.put()));
  return !itself;
}

}  // namespace pv::test
