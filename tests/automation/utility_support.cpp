#include "tests/automation/utility_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

namespace pv::test {
namespace {

std::wstring path_in_own_folder(std::wstring_view name) {
  static int folders = 0;
  const std::wstring folder = scratch_folder() + L"own" + std::to_wstring(++folders) + L"\\";
  std::filesystem::create_directories(folder);
  return folder + std::wstring(name);
}

wchar_t decimal_separator_of_user() {
  wchar_t text[8] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, ARRAYSIZE(text));
  return text[0];
}

void run_caught(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    ADD_FAILURE() << error.what();
  }
}

}  // namespace

std::wstring in_user_locale(std::wstring number) {
  std::replace(number.begin(), number.end(), L'.', decimal_separator_of_user());
  return number;
}

Value as_type(VARTYPE type, const Value& value) {
  Value result;
  EXPECT_EQ(VariantChangeType(&result, const_cast<Value*>(&value), 0, type), S_OK);
  return result;
}

OwnFile::OwnFile(std::wstring_view name) : path_(path_in_own_folder(name)) {}

OwnFile::OwnFile(std::wstring_view name, std::string_view bytes) : OwnFile(name) { fill(bytes); }

bool OwnFile::exists() const { return std::filesystem::exists(path_); }

std::string OwnFile::bytes() const {
  std::ifstream file(std::filesystem::path(path_), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void OwnFile::fill(std::string_view bytes) const {
  std::ofstream file(std::filesystem::path(path_), std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  EXPECT_TRUE(file.good());
}

std::string in_code_page(std::wstring_view text) {
  const auto length = static_cast<int>(text.size());
  std::string bytes(text.size() * 4, '\0');
  bytes.resize(static_cast<std::size_t>(
      WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(), length, bytes.data(),
                          static_cast<int>(bytes.size()), nullptr, nullptr)));
  return bytes;
}

void on_own_thread(const std::function<void()>& action) {
  std::thread([&] { run_caught(action); }).join();
}

void in_own_apartment(const std::function<void()>& action) {
  on_own_thread([&] {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    run_caught(action);
    SetErrorInfo(0, nullptr);
    CoUninitialize();
  });
}

FreshLibrary::FreshLibrary() : file_(L"copy.dll") {
  EXPECT_TRUE(CopyFileW(Module().path().c_str(), file_.path().c_str(), TRUE));
  module_ = std::make_unique<Module>(file_.path());
}

FreshLibrary::~FreshLibrary() = default;

Object FreshLibrary::create(REFCLSID clsid) const {
  const auto factory = module_->class_factory(clsid);
  Ref<IDispatch> object;
  if (!factory || FAILED(factory->CreateInstance(nullptr, IID_IDispatch,
                                                 reinterpret_cast<void**>(object.receive())))) {
    throw CallFailed("the copy of the library creates no object");
  }
  return Object(object);
}

bool FreshLibrary::unload() {
  module_.reset();
  return GetModuleHandleW(file_.path().c_str()) == nullptr;
}

}  // namespace pv::test
