// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/automation/utility/utility_support.h"

#include <gtest/gtest.h>

#include <thread>

namespace pv::test {
namespace {

void run_caught(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& error) {
    ADD_FAILURE() << error.what();
  }
}

}  // namespace

Value as_type(VARTYPE type, const Value& value) {
  Value result;
  EXPECT_EQ(VariantChangeType(&result, const_cast<Value*>(&value), 0, type), S_OK);
  return result;
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
                                                 reinterpret_cast<void**>(object.put())))) {
    throw CallFailed("the copy of the library creates no object");
  }
  return Object(object);
}

bool FreshLibrary::unload() {
  module_.reset();
  return GetModuleHandleW(file_.path().c_str()) == nullptr;
}

}  // namespace pv::test
