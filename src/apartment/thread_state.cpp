// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "apartment/thread_state.h"

#include <atomic>
#include <utility>

#include "com/simple_object.h"

namespace pv {
namespace {

void NTAPI release_at_thread_end(void* owner);

// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): the module has one slot.
std::atomic<DWORD> slot_in_use{FLS_OUT_OF_INDEXES};

// One slot per thread whose value is released with the thread. A thread_local object with a
// destructor would pin the DLL in memory.
DWORD thread_slot() {
  static const DWORD slot = slot_in_use = FlsAlloc(&release_at_thread_end);
  return slot;
}

// Owns a thread's state and hears when the thread leaves COM: host objects must be released
// before that.
class StateOwner final : public SimpleObject<StateOwner, IInitializeSpy> {
 public:
  ThreadState& state() { return state_; }

  void attach() {
    FlsSetValue(thread_slot(), this);
    AddRef();
    CoRegisterInitializeSpy(this, &cookie_);
  }

  void detach() {
    FlsSetValue(thread_slot(), nullptr);
    ThreadState doomed = std::exchange(state_, {});
    if (cookie_.QuadPart != 0) CoRevokeInitializeSpy(std::exchange(cookie_, {}));
    Release();
  }

  STDMETHODIMP PreInitialize(DWORD, DWORD) override { return S_OK; }
  STDMETHODIMP PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }
  STDMETHODIMP PreUninitialize(DWORD references) override {
    if (references == 1) detach();
    return S_OK;
  }
  STDMETHODIMP PostUninitialize(DWORD) override { return S_OK; }

 private:
  ThreadState state_;
  ULARGE_INTEGER cookie_{};
};

// A host that unloads the library by force leaves states behind. They are given up: releasing host
// objects inside the loader could hang the process.
void NTAPI release_at_thread_end(void* owner) {
  if (owner && slot_in_use != FLS_OUT_OF_INDEXES) static_cast<StateOwner*>(owner)->detach();
}

}  // namespace

ThreadState* existing_thread_state() {
  auto* owner = static_cast<StateOwner*>(FlsGetValue(thread_slot()));
  return owner ? &owner->state() : nullptr;
}

ThreadState& thread_state() {
  auto* owner = static_cast<StateOwner*>(FlsGetValue(thread_slot()));
  if (!owner) {
    owner = new StateOwner;
    owner->attach();
  }
  return owner->state();
}

void free_thread_slot() {
  const DWORD slot = slot_in_use.exchange(FLS_OUT_OF_INDEXES);
  if (slot != FLS_OUT_OF_INDEXES) FlsFree(slot);
}

}  // namespace pv
