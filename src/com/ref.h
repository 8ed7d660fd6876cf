// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <utility>

#include "com/automation.h"

namespace pv {

/// Owns one reference to a COM object. `T` is an interface or one of our own classes.
template <class T>
// NOLINTNEXTLINE(cppcoreguidelines-special-member-functions): one assignment, by value.
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  Ref(T* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  Ref(const Ref& other) : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <class U>
  Ref(const Ref<U>& other) : Ref(static_cast<T*>(other.get())) {}
  ~Ref() { reset(); }

  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  void reset() {
    if (T* doomed = std::exchange(object_, nullptr)) doomed->Release();
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }
  bool operator==(const Ref&) const = default;

  /// Gives the reference away.
  [[nodiscard]] T* detach() { return std::exchange(object_, nullptr); }
  /// Takes over a reference that the caller owns.
  static Ref attach(T* object) {
    Ref ref;
    ref.object_ = object;
    return ref;
  }
  /// For functions that may replace the object; what is held then belongs to this Ref as before.
  T** in_out() { return &object_; }
  /// For functions that return an object through a pointer; releases what is held.
  T** put() {
    reset();
    return &object_;
  }

 private:
  T* object_ = nullptr;
};

/// The object's interface `I`, or nothing.
template <class I>
Ref<I> query(IUnknown* object) {
  Ref<I> result;
  if (object) object->QueryInterface(__uuidof(I), reinterpret_cast<void**>(result.put()));
  return result;
}

}  // namespace pv
