#pragma once

#include <initializer_list>
#include <optional>
#include <string>

#include "com/automation.h"

// The library as a late-bound client sees it: by names only.
namespace pv::dialogs_test {

/// Registers the library that lies beside this program; false with a message when it cannot.
bool register_library();

/// One single-threaded apartment, for the thread that makes it.
class Apartment {
 public:
  Apartment() { CoInitialize(nullptr); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// What is passed to the message box; what has no value is left out of the call.
struct Box {
  std::wstring prompt;
  std::optional<short> buttons = std::nullopt;
  std::optional<short> picture = std::nullopt;
  std::optional<std::wstring> title = std::nullopt;
  HWND owner = nullptr;
};

/// The utility facade.
class Utility {
 public:
  Utility();
  ~Utility();
  Utility(const Utility&) = delete;
  Utility& operator=(const Utility&) = delete;

  /// The answer, or -1 when the call fails.
  long message_box(const Box& box) const;
  std::wstring text(long id) const;
  void set_language(long index) const;

 private:
  IDispatch* object_ = nullptr;
};

}  // namespace pv::dialogs_test
