// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Free threads create objects: the platform makes one apartment in which all of these live, and
// what they share, they share there.

#include "pvItems32.h"
#include "tests/apartments/apartment.h"
#include "tests/apartments/platform.h"
#include "tests/support/fake_object.h"
#include "tests/support/module.h"
#include "tests/support/type_library.h"

namespace pv::test {
namespace {

using Creation = FreeThreaded;
using Hosting = FreeThreaded;

std::vector<ClassInfo> all_classes() { return classes_of(Module().type_library().get()); }

Object utility() { return Object::create(L"pvItems32.CUtility"); }
long active_language() {
  return utility().get_object(L"Languages").get(L"ActiveLanguageID").number();
}
void set_active_language(long language) {
  utility().get_object(L"Languages").put(L"ActiveLanguageID", language);
}

TEST_F(Creation, OfEveryClassGivesAStandIn) {
  for (const ClassInfo& entry : all_classes()) {
    SCOPED_TRACE(printable(entry.name));
    EXPECT_TRUE(is_proxy(Object::create(entry.prog_id()), entry.clsid));
    on_thread(COINIT_APARTMENTTHREADED,
              [&] { EXPECT_FALSE(is_proxy(Object::create(entry.prog_id()), entry.clsid)); });
  }
}

TEST_F(Creation, GivesTheDefaultInterfaceAndItsDescription) {
  for (const ClassInfo& entry : all_classes()) {
    SCOPED_TRACE(printable(entry.name));
    const Object object = Object::create(entry.prog_id());
    Ref<IUnknown> found;
    const IID& iid = entry.interface_type.attributes().guid;
    EXPECT_EQ(object.get()->QueryInterface(iid, reinterpret_cast<void**>(found.put())), S_OK);
    Ref<ITypeInfo> info;
    ASSERT_EQ(object.get()->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put()), S_OK);
    EXPECT_EQ(TypeInfo(info).attributes().guid, iid);
  }
}

TEST_F(Creation, ThroughTheClassFactoryWorks) {
  Ref<IClassFactory> factory;
  ASSERT_EQ(CoGetClassObject(__uuidof(CFile), CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                             reinterpret_cast<void**>(factory.put())),
            S_OK);
  for (int i = 0; i < 3; ++i) {
    Ref<IDispatch> file;
    ASSERT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(file.put())),
              S_OK);
    EXPECT_EQ(Object(file).call(L"GetName", L"C:\\a\\b.itm"), L"b");
  }
}

TEST_F(Creation, ObjectsAreTheSameForAllFreeThreads) {
  const Object items = Object::create(L"pvItems32.CItems");
  on_thread(COINIT_MULTITHREADED, [&] {
    items.call(L"Add", L"1", 1, false, 0, false, false, 0.0f, 0, Value::missing());
  });
  EXPECT_EQ(items.get(L"AllItemCount"), 1);
  EXPECT_EQ(items.get_object(L"Item", 1), items.get_object(L"Item", L"1"));
}

TEST_F(Hosting, IsSharedByAllFreeThreads) {
  const Object hub = utility().get_object(L"TxmEvents");
  const Object passwords = utility().get_object(L"PWS");
  set_active_language(3);
  utility().put(L"AppDirectory", 8, L"C:\\history");
  on_thread(COINIT_MULTITHREADED, [&] {
    EXPECT_EQ(utility().get_object(L"TxmEvents"), hub);
    EXPECT_EQ(utility().get_object(L"PWS"), passwords);
    EXPECT_EQ(active_language(), 3);
    EXPECT_EQ(utility().get(L"AppDirectory", 8), L"C:\\history");
    EXPECT_EQ(utility().get(L"pvString", 201), L"Abbrechen");
  });
}

TEST_F(Hosting, OutlivesTheThreadThatBeganIt) {
  on_thread(COINIT_MULTITHREADED, [] { set_active_language(2); });
  EXPECT_EQ(active_language(), 2);
}

TEST_F(Hosting, IsNotThatOfApartmentThreads) {
  set_active_language(3);
  on_thread(COINIT_APARTMENTTHREADED, [] {
    EXPECT_EQ(active_language(), 1);
    set_active_language(2);
  });
  EXPECT_EQ(active_language(), 3);
}

TEST_F(Hosting, EndsWithTheLastFreeThread) {
  FakeObject application;
  for (const wchar_t* const member : {L"Title", L"Major", L"Minor", L"Revision"}) {
    application.knows(member);
  }
  utility().set(L"Application", application);
  set_active_language(3);
  begin_anew();
  EXPECT_EQ(active_language(), 1);
  EXPECT_TRUE(holds_soon([&] { return application.references() == 0; }));
}

TEST_F(Hosting, IsFreeToBeUnloadedAfterItsEnd) {
  if (platform_keeps_class_objects()) GTEST_SKIP() << "the platform keeps class objects";
  Object::create(L"pvItems32.CItems");
  begin_anew();
  EXPECT_TRUE(holds_soon([] { return Module().can_unload() == S_OK; }));
}

}  // namespace
}  // namespace pv::test
