// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Registration writes what clients need and takes all of it away again; without registration the
// manifest beside the library is enough.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include "tests/support/activation.h"
#include "tests/support/module.h"
#include "tests/support/object.h"
#include "tests/support/type_library.h"

namespace pv::test {
namespace {

using Entries = std::set<std::wstring>;

// Both views of the registry share the applications: this is \AppID once more.
constexpr wchar_t kApplicationsOfTheOtherView[] = L"\\Wow6432Node\\AppID";

// Every key below this one, and every value as "key|name=text".
void collect(HKEY key, const std::wstring& path, Entries& entries) {
  wchar_t name[512];
  for (DWORD i = 0;; ++i) {
    DWORD length = ARRAYSIZE(name), type = 0;
    wchar_t text[2048];
    DWORD size = sizeof text - sizeof(wchar_t);
    const LSTATUS status =
        RegEnumValueW(key, i, name, &length, nullptr, &type, reinterpret_cast<BYTE*>(text), &size);
    if (status == ERROR_NO_MORE_ITEMS) break;
    if (status != ERROR_SUCCESS) continue;
    text[size / sizeof(wchar_t)] = 0;
    entries.insert(path + L"|" + name + L"=" + (type == REG_SZ ? text : L"?"));
  }
  for (DWORD i = 0; RegEnumKeyW(key, i, name, ARRAYSIZE(name)) == ERROR_SUCCESS; ++i) {
    const std::wstring below = path + L"\\" + name;
    if (_wcsicmp(below.c_str(), kApplicationsOfTheOtherView) == 0) continue;
    entries.insert(below);
    HKEY child = nullptr;
    if (RegOpenKeyExW(key, name, 0, KEY_READ, &child) != ERROR_SUCCESS) continue;
    collect(child, below, entries);
    RegCloseKey(child);
  }
}

Entries classes_in(HKEY root) {
  Entries entries;
  HKEY key = nullptr;
  if (RegOpenKeyExW(root, L"Software\\Classes", 0, KEY_READ, &key) != ERROR_SUCCESS) return entries;
  collect(key, L"", entries);
  RegCloseKey(key);
  return entries;
}

std::string listed(const Entries& from, const Entries& without) {
  std::string text;
  for (const std::wstring& entry : from) {
    if (!without.contains(entry)) text += "  " + printable(entry) + "\n";
  }
  return text;
}

// Entries that name the library, one of its classes, or the type library. The folder of the tree
// may have the library's name, too, and be in the entries of others.
std::string traces_in(const Entries& entries, ITypeLib* library) {
  std::vector<std::wstring> names = {L"pvItems32.dll"};
  for (const ClassInfo& entry : classes_of(library)) names.push_back(entry.prog_id());
  for (const TypeInfo& type : types_of(library)) {
    names.push_back(text_of_guid(type.attributes().guid));
  }
  std::string traces;
  for (const std::wstring& entry : entries) {
    const bool is_trace = std::any_of(names.begin(), names.end(), [&](const std::wstring& name) {
      return entry.find(name) != std::wstring::npos;
    });
    if (is_trace) traces += "  " + printable(entry) + "\n";
  }
  return traces;
}

/// Leaves the library registered for the tests that follow.
class Registration : public testing::Test {
 protected:
  ~Registration() override { EXPECT_EQ(module_.register_server(), S_OK); }

  const Module module_;
};

TEST_F(Registration, OfTheMachineIsTakenAwayCompletely) {
  ASSERT_EQ(module_.unregister_server(), S_OK);
  const Entries before = classes_in(HKEY_LOCAL_MACHINE);
  EXPECT_EQ(traces_in(before, module_.type_library().get()), "");
  ASSERT_EQ(module_.register_server(), S_OK);
  EXPECT_GT(classes_in(HKEY_LOCAL_MACHINE).size(), before.size());
  ASSERT_EQ(module_.unregister_server(), S_OK);
  const Entries after = classes_in(HKEY_LOCAL_MACHINE);
  EXPECT_EQ(listed(after, before), "");
  EXPECT_EQ(listed(before, after), "");
}

TEST_F(Registration, TwiceIsTheSameAsOnce) {
  ASSERT_EQ(module_.register_server(), S_OK);
  const Entries once = classes_in(HKEY_LOCAL_MACHINE);
  ASSERT_EQ(module_.register_server(), S_OK);
  EXPECT_EQ(classes_in(HKEY_LOCAL_MACHINE), once);
  EXPECT_EQ(module_.unregister_server(), S_OK);
  EXPECT_EQ(module_.unregister_server(), S_OK) << "what is not there is no failure";
}

TEST_F(Registration, WritesWhatClientsLookFor) {
  ASSERT_EQ(module_.unregister_server(), S_OK);
  ASSERT_EQ(module_.register_server(), S_OK);
  const Entries entries = classes_in(HKEY_LOCAL_MACHINE);
  for (const ClassInfo& entry : classes_of(module_.type_library().get())) {
    const std::wstring clsid = text_of_guid(entry.clsid), key = L"\\CLSID\\" + clsid;
    for (const std::wstring& expected :
         {key + L"\\InprocServer32|=" + module_.path(),
          key + L"\\InprocServer32|ThreadingModel=Apartment",
          key + L"\\ProgID|=" + entry.prog_id() + L".1",
          key + L"\\VersionIndependentProgID|=" + entry.prog_id(), key + L"\\Version|=1.0",
          key + L"\\Programmable", L"\\" + entry.prog_id() + L"\\CLSID|=" + clsid,
          L"\\" + entry.prog_id() + L".1\\CLSID|=" + clsid,
          L"\\" + entry.prog_id() + L"\\CurVer|=" + entry.prog_id() + L".1"}) {
      EXPECT_TRUE(entries.contains(expected)) << printable(expected);
    }
  }
}

TEST_F(Registration, OfTheUserIsTakenAwayCompletely) {
  const Entries machine = classes_in(HKEY_LOCAL_MACHINE);
  // The classes of all programs share this key: it stays. A fresh profile does not have it yet.
  HKEY shared = nullptr;
  ASSERT_EQ(RegCreateKeyW(HKEY_CURRENT_USER, L"Software\\Classes\\CLSID", &shared), ERROR_SUCCESS);
  RegCloseKey(shared);
  const Entries before = classes_in(HKEY_CURRENT_USER);
  ASSERT_EQ(module_.install(true, L"user"), S_OK);
  EXPECT_GT(classes_in(HKEY_CURRENT_USER).size(), before.size());
  EXPECT_EQ(classes_in(HKEY_LOCAL_MACHINE), machine) << "the machine is not touched";
  ASSERT_EQ(module_.install(false, L"user"), S_OK);
  EXPECT_EQ(listed(classes_in(HKEY_CURRENT_USER), before), "");
}

TEST_F(Registration, InstallWithoutAUserIsThatOfTheMachine) {
  ASSERT_EQ(module_.install(true, nullptr), S_OK);
  const Entries registered = classes_in(HKEY_LOCAL_MACHINE);
  ASSERT_EQ(module_.install(false, L""), S_OK);
  EXPECT_LT(classes_in(HKEY_LOCAL_MACHINE).size(), registered.size());
}

constexpr wchar_t kAppId[] = L"{37D5D503-E0CD-46FB-BB20-CEA6915A50A9}";

// The entries that there are with a surrogate, and only then.
Entries of_the_surrogate(ITypeLib* library) {
  const std::wstring application = std::wstring(L"\\AppID\\") + kAppId;
  Entries entries = {application, application + L"|=pvItems32", application + L"|DllSurrogate="};
  for (const ClassInfo& entry : classes_of(library)) {
    entries.insert(L"\\CLSID\\" + text_of_guid(entry.clsid) + L"|AppID=" + kAppId);
  }
  return entries;
}

TEST_F(Registration, OfTheSurrogateAddsTheApplicationAndNothingElse) {
  ASSERT_EQ(module_.register_server(), S_OK);
  const Entries before = classes_in(HKEY_LOCAL_MACHINE);
  Entries expected = of_the_surrogate(module_.type_library().get());
  expected.insert(before.begin(), before.end());
  for (int times = 0; times < 2; ++times) {
    EXPECT_EQ(module_.install(true, L"surrogate"), S_OK);
    EXPECT_EQ(listed(classes_in(HKEY_LOCAL_MACHINE), expected), "");
    EXPECT_EQ(listed(expected, classes_in(HKEY_LOCAL_MACHINE)), "");
  }
  for (int times = 0; times < 2; ++times) {
    EXPECT_EQ(module_.install(false, L"surrogate"), S_OK);
    EXPECT_EQ(listed(classes_in(HKEY_LOCAL_MACHINE), before), "");
    EXPECT_EQ(listed(before, classes_in(HKEY_LOCAL_MACHINE)), "");
  }
}

TEST_F(Registration, OfTheSurrogateForTheUserLeavesTheMachineAlone) {
  ASSERT_EQ(module_.register_server(), S_OK);
  const Entries machine = classes_in(HKEY_LOCAL_MACHINE);
  ASSERT_EQ(module_.install(true, L"user"), S_OK);
  const Entries before = classes_in(HKEY_CURRENT_USER);
  Entries expected = of_the_surrogate(module_.type_library().get());
  expected.insert(before.begin(), before.end());
  expected.insert(L"\\AppID");
  EXPECT_EQ(module_.install(true, L"user,surrogate"), S_OK);
  EXPECT_EQ(listed(classes_in(HKEY_CURRENT_USER), expected), "");
  EXPECT_EQ(listed(expected, classes_in(HKEY_CURRENT_USER)), "");
  EXPECT_EQ(module_.install(false, L"user,surrogate"), S_OK);
  EXPECT_EQ(listed(classes_in(HKEY_CURRENT_USER), expected), "");
  EXPECT_FALSE(classes_in(HKEY_CURRENT_USER).contains(std::wstring(L"\\AppID\\") + kAppId));
  EXPECT_EQ(classes_in(HKEY_LOCAL_MACHINE), machine);
  EXPECT_EQ(module_.install(false, L"user"), S_OK);
}

TEST_F(Registration, OfTheSurrogateNeedsTheClasses) {
  ASSERT_EQ(module_.unregister_server(), S_OK);
  const Entries before = classes_in(HKEY_LOCAL_MACHINE);
  EXPECT_EQ(module_.install(true, L"surrogate"), REGDB_E_CLASSNOTREG);
  EXPECT_EQ(classes_in(HKEY_LOCAL_MACHINE), before);
  EXPECT_EQ(module_.install(false, L"surrogate"), S_OK) << "what is not there is no failure";
  EXPECT_EQ(classes_in(HKEY_LOCAL_MACHINE), before);
}

TEST_F(Registration, OfTheSurrogateGoesWithTheClasses) {
  ASSERT_EQ(module_.unregister_server(), S_OK);
  const Entries before = classes_in(HKEY_LOCAL_MACHINE);
  ASSERT_EQ(module_.register_server(), S_OK);
  ASSERT_EQ(module_.install(true, L"surrogate"), S_OK);
  ASSERT_EQ(module_.unregister_server(), S_OK);
  EXPECT_EQ(listed(classes_in(HKEY_LOCAL_MACHINE), before), "");
}

TEST_F(Registration, InstallRefusesWhatItDoesNotKnow) {
  EXPECT_EQ(module_.install(true, L"surrogate,user"), E_INVALIDARG);
  EXPECT_EQ(module_.install(true, L"everybody"), E_INVALIDARG);
  EXPECT_EQ(module_.install(false, L"everybody"), E_INVALIDARG);
}

TEST_F(Registration, OfTheTypeLibraryLeadsToTheModule) {
  ASSERT_EQ(module_.register_server(), S_OK);
  TLIBATTR* attributes = nullptr;
  module_.type_library()->GetLibAttr(&attributes);
  Ref<ITypeLib> registered;
  EXPECT_EQ(LoadRegTypeLib(attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum,
                           LOCALE_NEUTRAL, registered.put()),
            S_OK);
  module_.type_library()->ReleaseTLibAttr(attributes);
}

TEST_F(Registration, IsNotNeededWithTheManifest) {
  ASSERT_EQ(module_.unregister_server(), S_OK);
  CLSID clsid;
  ASSERT_NE(CLSIDFromProgID(L"pvItems32.CFile", &clsid), S_OK);

  const Activation activation(program_folder() + L"pvItems32.manifest");
  ASSERT_TRUE(activation.is_active());
  for (const ClassInfo& entry : classes_of(module_.type_library().get())) {
    const Object object = Object::create(entry.prog_id());
    const auto provider = object.as<IProvideClassInfo>();
    Ref<ITypeInfo> info;
    ASSERT_EQ(provider->GetClassInfo(info.put()), S_OK);
    EXPECT_EQ(TypeInfo(info).attributes().guid, entry.clsid) << printable(entry.name);
    EXPECT_EQ(CLSIDFromProgID((entry.prog_id() + L".1").c_str(), &clsid), S_OK);
  }
}

TEST(Manifest, NamesEveryInterfaceOfTheLibrary) {
  std::ifstream file(std::filesystem::path(program_folder()) / "pvItems32.manifest");
  const std::string manifest((std::istreambuf_iterator<char>(file)), {});
  const Module module;
  int interfaces = 0;
  for (const TypeInfo& type : types_of(module.type_library().get())) {
    if (type.attributes().typekind != TKIND_DISPATCH) continue;
    ++interfaces;
    const bool is_dual = (type.attributes().wTypeFlags & TYPEFLAG_FDUAL) != 0;
    const auto at = manifest.find("iid=\"" + printable(text_of_guid(type.attributes().guid)));
    ASSERT_NE(at, std::string::npos) << printable(type.name());
    const std::string line = manifest.substr(at, manifest.find('\n', at) - at);
    EXPECT_NE(line.find(is_dual ? "{00020424-" : "{00020420-"), std::string::npos) << line;
  }
  EXPECT_GT(interfaces, 0);
}

}  // namespace
}  // namespace pv::test
