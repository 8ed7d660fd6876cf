#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "tests/support/module.h"
#include "tests/support/object.h"

namespace pv::test {

/// A number text written with '.', as the user's locale writes it.
std::wstring in_user_locale(std::wstring number);

/// A copy of a value in another variant type.
Value as_type(VARTYPE type, const Value& value);

/// A file in an empty folder of its own, so that no test sees what another one left.
class OwnFile {
 public:
  explicit OwnFile(std::wstring_view name = L"settings.ini");
  OwnFile(std::wstring_view name, std::string_view bytes);

  const std::wstring& path() const { return path_; }
  operator Value() const { return Value(path_); }
  bool exists() const;
  std::string bytes() const;
  void fill(std::string_view bytes) const;

 private:
  std::wstring path_;
};

/// Text as the bytes of the system's code page.
std::string in_code_page(std::wstring_view text);

/// Runs a piece of code on a thread in an apartment of its own, to its end. Exceptions fail the
/// test.
void in_own_apartment(const std::function<void()>& action);
/// The same on a thread that has not joined COM.
void on_own_thread(const std::function<void()>& action);

/// A second copy of the library, which no other test has touched: its life can be watched.
class FreshLibrary {
 public:
  FreshLibrary();
  ~FreshLibrary();
  FreshLibrary(const FreshLibrary&) = delete;
  FreshLibrary& operator=(const FreshLibrary&) = delete;

  Object create(REFCLSID clsid) const;
  HRESULT can_unload() const { return module_->can_unload(); }
  /// Takes the library out of the process; tells whether it is gone.
  bool unload();

 private:
  OwnFile file_;
  std::unique_ptr<Module> module_;
};

}  // namespace pv::test
