#include "com/thread_state.h"

#include <utility>

#include "com/boundary.h"
#include "com/module.h"

namespace pv {
namespace {

void NTAPI release_at_thread_end(void* owner);

// One slot per thread whose value is released with the thread. A thread_local object with a
// destructor would pin the DLL in memory.
DWORD thread_slot() {
  static const DWORD slot = FlsAlloc(&release_at_thread_end);
  return slot;
}

// Owns a thread's state and hears when the thread leaves COM: host objects must be released
// before that.
class StateOwner final : public IInitializeSpy {
 public:
  StateOwner() { add_living_object(); }

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

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != __uuidof(IInitializeSpy)) return E_NOINTERFACE;
    *object = static_cast<IInitializeSpy*>(this);
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references_); }
  STDMETHODIMP_(ULONG) Release() override {
    const long left = --references_;
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }

  STDMETHODIMP PreInitialize(DWORD, DWORD) override { return S_OK; }
  STDMETHODIMP PostInitialize(HRESULT result, DWORD, DWORD) override { return result; }
  STDMETHODIMP PreUninitialize(DWORD references) override {
    if (references == 1) detach();
    return S_OK;
  }
  STDMETHODIMP PostUninitialize(DWORD) override { return S_OK; }

 private:
  ~StateOwner() { remove_living_object(); }

  ThreadState state_;
  ULARGE_INTEGER cookie_{};
  long references_ = 0;
};

void NTAPI release_at_thread_end(void* owner) {
  if (owner) static_cast<StateOwner*>(owner)->detach();
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

}  // namespace pv
