// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The module itself: what it exports and imports, its class factories, when it may be unloaded.

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <thread>

#include "pvItems32.h"
#include "tests/support/module.h"
#include "tests/support/object.h"
#include "tests/support/type_library.h"
#include "tests/support/value.h"

namespace pv::test {
namespace {

class Image {
 public:
  explicit Image(HMODULE module) : base_(reinterpret_cast<const char*>(module)) {}

  std::set<std::string> exports() const {
    std::set<std::string> names;
    const auto& directory = *at<IMAGE_EXPORT_DIRECTORY>(entry(IMAGE_DIRECTORY_ENTRY_EXPORT));
    const auto* name_offsets = at<DWORD>(directory.AddressOfNames);
    for (DWORD i = 0; i < directory.NumberOfNames; ++i) names.insert(at<char>(name_offsets[i]));
    return names;
  }
  DWORD exported_functions() const {
    return at<IMAGE_EXPORT_DIRECTORY>(entry(IMAGE_DIRECTORY_ENTRY_EXPORT))->NumberOfFunctions;
  }

  std::set<std::string> imported_modules() const {
    std::set<std::string> names;
    const auto* import = at<IMAGE_IMPORT_DESCRIPTOR>(entry(IMAGE_DIRECTORY_ENTRY_IMPORT));
    for (; import->Name; ++import) names.insert(at<char>(import->Name));
    return names;
  }

  bool has(WORD characteristic) const {
    return (headers().OptionalHeader.DllCharacteristics & characteristic) != 0;
  }

 private:
  template <class T>
  const T* at(DWORD offset) const {
    return reinterpret_cast<const T*>(base_ + offset);
  }
  const IMAGE_NT_HEADERS& headers() const {
    return *at<IMAGE_NT_HEADERS>(static_cast<DWORD>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
  }
  DWORD entry(int index) const {
    return headers().OptionalHeader.DataDirectory[index].VirtualAddress;
  }

  const char* base_;
};

/// A second copy of the library, with its own count of objects.
class Copy {
 public:
  Copy() : path_(scratch_folder() + L"copy.dll") {
    std::filesystem::copy_file(Module().path(), path_,
                               std::filesystem::copy_options::overwrite_existing);
    module_ = std::make_unique<Module>(path_);
  }
  ~Copy() {
    module_.reset();
    std::error_code failed;
    EXPECT_TRUE(std::filesystem::remove(path_, failed)) << "the library was not unloaded";
  }
  const Module& operator*() const { return *module_; }
  const Module* operator->() const { return module_.get(); }

 private:
  std::filesystem::path path_;
  std::unique_ptr<Module> module_;
};

std::vector<ClassInfo> all_classes() { return classes_of(Module().type_library().get()); }

TEST(Image, ExportsItsEntryPointsAndNothingElse) {
  const Image image(Module().handle());
  const std::set<std::string> expected = {"DllCanUnloadNow", "DllGetClassObject", "DllInstall",
                                          "DllRegisterServer", "DllUnregisterServer"};
  EXPECT_EQ(image.exports(), expected);
  EXPECT_EQ(image.exported_functions(), expected.size());
}

TEST(Image, ImportsOnlyWhatComesWithThePlatform) {
  wchar_t folder[MAX_PATH] = L"";
  GetSystemDirectoryW(folder, ARRAYSIZE(folder));
  for (const std::string& name : Image(Module().handle()).imported_modules()) {
    EXPECT_TRUE(std::filesystem::exists(std::filesystem::path(folder) / name)) << name;
    EXPECT_NE(name.rfind("lib", 0), 0u) << name << " belongs to a compiler";
  }
}

TEST(Image, MayBeMovedInMemoryAndDoesNotExecuteData) {
  const Image image(Module().handle());
  EXPECT_TRUE(image.has(IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE));
  EXPECT_TRUE(image.has(IMAGE_DLLCHARACTERISTICS_NX_COMPAT));
}

TEST(ClassFactory, RefusesAggregation) {
  const Module module;
  for (const ClassInfo& entry : all_classes()) {
    const auto factory = module.class_factory(entry.clsid);
    const auto outer = module.class_factory(entry.clsid);
    void* object = reinterpret_cast<void*>(0xCCCCCCCC);
    EXPECT_EQ(factory->CreateInstance(outer.get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
  }
}

TEST(ClassFactory, RefusesNullPointersAndUnknownInterfaces) {
  const Module module;
  for (const ClassInfo& entry : all_classes()) {
    SCOPED_TRACE(printable(entry.name));
    const auto factory = module.class_factory(entry.clsid);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    void* object = reinterpret_cast<void*>(0xCCCCCCCC);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IStream, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    object = reinterpret_cast<void*>(0xCCCCCCCC);
    EXPECT_EQ(module.get_class_object(entry.clsid, IID_IStream, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(module.get_class_object(entry.clsid, IID_IClassFactory, nullptr), E_POINTER);
  }
}

TEST(ClassFactory, DoesNotKnowForeignClasses) {
  void* object = reinterpret_cast<void*>(0xCCCCCCCC);
  EXPECT_EQ(Module().get_class_object(CLSID_StdGlobalInterfaceTable, IID_IUnknown, &object),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(object, nullptr);
}

TEST(Unloading, WaitsForFactoriesLocksAndObjects) {
  const Copy copy;
  const CLSID clsid = all_classes().front().clsid;
  EXPECT_EQ(copy->can_unload(), S_OK);
  auto factory = copy->class_factory(clsid);
  EXPECT_EQ(copy->can_unload(), S_FALSE);
  factory->LockServer(TRUE);
  Ref<IUnknown> object;
  ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(object.put())),
            S_OK);
  object.reset();
  factory->LockServer(FALSE);
  EXPECT_EQ(copy->can_unload(), S_FALSE);
  ASSERT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(object.put())),
            S_OK);
  factory.reset();
  EXPECT_EQ(copy->can_unload(), S_FALSE);
  object.reset();
  EXPECT_EQ(copy->can_unload(), S_OK);
}

// What the objects of a thread share is freed when the thread leaves COM.
void use_on_a_thread(const Module& module, const CLSID& clsid) {
  std::thread([&] {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
      Ref<IDispatch> object;
      module.class_factory(clsid)->CreateInstance(nullptr, IID_IDispatch,
                                                  reinterpret_cast<void**>(object.put()));
      EXPECT_TRUE(object);
      EXPECT_EQ(module.can_unload(), S_FALSE);
    }
    CoUninitialize();
  }).join();
}

TEST(Unloading, IsPossibleAfterAnyClassWasUsed) {
  const Copy copy;
  for (const ClassInfo& entry : all_classes()) {
    SCOPED_TRACE(printable(entry.name));
    use_on_a_thread(*copy, entry.clsid);
    EXPECT_EQ(copy->can_unload(), S_OK);
  }
}

TEST(Unloading, CanBeRepeated) {
  const CLSID clsid = all_classes().back().clsid;
  for (int i = 0; i < 3; ++i) {
    const Copy copy;
    use_on_a_thread(*copy, clsid);
  }
}

DWORD next_free_slot() {
  const DWORD slot = FlsAlloc(nullptr);
  FlsFree(slot);
  return slot;
}

TEST(Unloading, GivesBackTheSlotOfWhatAThreadShares) {
  const DWORD before = next_free_slot();
  {
    const Copy copy;
    std::thread([&] {
      CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
      {
        Ref<IDispatch> utility;
        copy->class_factory(__uuidof(CUtility))
            ->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(utility.put()));
        Object(utility).put(L"AppHelpFileName", L"manual.chm");
      }
      CoUninitialize();
    }).join();
    EXPECT_NE(next_free_slot(), before);
  }
  EXPECT_EQ(next_free_slot(), before);
}

}  // namespace
}  // namespace pv::test
