// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What every object tells about itself: interfaces, class information, events.

#include <ocidl.h>

#include <array>

#include "tests/abi/sweep.h"
#include "tests/support/fake_object.h"

namespace pv::test {
namespace {

constexpr GUID kUnknownInterface = {0x6A1E2B3C, 0x1111, 0x4222, {1, 2, 3, 4, 5, 6, 7, 8}};

class IdentitySweep : public ClassTest {
 protected:
  std::vector<IID> interfaces() const {
    std::vector<IID> all = {
        IID_IUnknown,          IID_IDispatch,         tested().interface_type.attributes().guid,
        IID_ISupportErrorInfo, IID_IProvideClassInfo, IID_IProvideClassInfo2};
    if (tested().source != IID_NULL) all.push_back(IID_IConnectionPointContainer);
    return all;
  }

  Ref<IConnectionPoint> connection_point(const Object& object) const {
    Ref<IConnectionPoint> point;
    const auto container = object.as<IConnectionPointContainer>();
    if (container) container->FindConnectionPoint(tested().source, point.put());
    return point;
  }
};

Ref<IUnknown> ask(IUnknown* object, REFIID iid) {
  Ref<IUnknown> answer;
  object->QueryInterface(iid, reinterpret_cast<void**>(answer.put()));
  return answer;
}

TEST_P(IdentitySweep, EveryInterfaceReachesEveryOther) {
  const Object object = create();
  const Ref<IUnknown> identity = ask(object.get(), IID_IUnknown);
  for (const IID& from : interfaces()) {
    const Ref<IUnknown> start = ask(object.get(), from);
    ASSERT_TRUE(start) << printable(text_of_guid(from));
    EXPECT_EQ(ask(start.get(), IID_IUnknown), identity);
    for (const IID& to : interfaces()) EXPECT_TRUE(ask(start.get(), to));
  }
}

TEST_P(IdentitySweep, UnknownInterfaceIsRefusedAndThePointerCleared) {
  const Object object = create();
  void* poisoned = reinterpret_cast<void*>(0xCCCCCCCC);
  EXPECT_EQ(object.get()->QueryInterface(kUnknownInterface, &poisoned), E_NOINTERFACE);
  EXPECT_EQ(poisoned, nullptr);
  EXPECT_EQ(object.get()->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(references_of(object.get()), 1u);
}

TEST_P(IdentitySweep, ErrorInformationIsPromisedForItsInterface) {
  const auto support = create().as<ISupportErrorInfo>();
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(tested().interface_type.attributes().guid), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(kUnknownInterface), S_FALSE);
}

TEST_P(IdentitySweep, TypeInformationIsThatOfItsInterface) {
  const Object object = create();
  UINT count = 0;
  EXPECT_EQ(object.get()->GetTypeInfoCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(object.get()->GetTypeInfoCount(nullptr), E_POINTER);
  Ref<ITypeInfo> info;
  ASSERT_EQ(object.get()->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.put()), S_OK);
  EXPECT_EQ(TypeInfo(info).attributes().guid, tested().interface_type.attributes().guid);
  EXPECT_EQ(object.get()->GetTypeInfo(1, LOCALE_USER_DEFAULT, info.put()), DISP_E_BADINDEX);
  EXPECT_FALSE(info);
  EXPECT_EQ(object.get()->GetTypeInfo(0, LOCALE_USER_DEFAULT, nullptr), E_POINTER);
}

TEST_P(IdentitySweep, ClassInformationIsThatOfItsClass) {
  const auto provider = create().as<IProvideClassInfo2>();
  Ref<ITypeInfo> info;
  ASSERT_EQ(provider->GetClassInfo(info.put()), S_OK);
  EXPECT_EQ(TypeInfo(info).attributes().guid, tested().clsid);
  EXPECT_EQ(provider->GetClassInfo(nullptr), E_POINTER);
}

TEST_P(IdentitySweep, SourceInterfaceIsNamedWhenThereIsOne) {
  const auto provider = create().as<IProvideClassInfo2>();
  GUID source = kUnknownInterface;
  const HRESULT result = provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &source);
  EXPECT_EQ(SUCCEEDED(result), tested().source != IID_NULL);
  EXPECT_EQ(source, tested().source);
  EXPECT_EQ(provider->GetGUID(99, &source), E_INVALIDARG);
  EXPECT_EQ(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr), E_POINTER);
}

TEST_P(IdentitySweep, OnlyClassesWithEventsHaveConnectionPoints) {
  const auto container = create().as<IConnectionPointContainer>();
  EXPECT_EQ(static_cast<bool>(container), tested().source != IID_NULL);
}

TEST_P(IdentitySweep, ConnectionPointKnowsItsPlace) {
  if (tested().source == IID_NULL) return;
  const Object object = create();
  const auto container = object.as<IConnectionPointContainer>();
  const Ref<IConnectionPoint> point = connection_point(object);
  ASSERT_TRUE(point);
  IID events = IID_NULL;
  EXPECT_EQ(point->GetConnectionInterface(&events), S_OK);
  EXPECT_EQ(events, tested().source);
  Ref<IConnectionPointContainer> owner;
  EXPECT_EQ(point->GetConnectionPointContainer(owner.put()), S_OK);
  EXPECT_EQ(owner, container);
  Ref<IConnectionPoint> none;
  EXPECT_EQ(container->FindConnectionPoint(kUnknownInterface, none.put()), CONNECT_E_NOCONNECTION);
  EXPECT_EQ(container->FindConnectionPoint(tested().source, nullptr), E_POINTER);
}

TEST_P(IdentitySweep, ConnectionPointsAreEnumerated) {
  if (tested().source == IID_NULL) return;
  const Object object = create();
  Ref<IEnumConnectionPoints> points;
  ASSERT_EQ(object.as<IConnectionPointContainer>()->EnumConnectionPoints(points.put()), S_OK);
  Ref<IConnectionPoint> first, second;
  EXPECT_EQ(points->Next(1, first.put(), nullptr), S_OK);
  EXPECT_EQ(first, connection_point(object));
  EXPECT_EQ(points->Next(1, second.put(), nullptr), S_FALSE);
  EXPECT_EQ(points->Reset(), S_OK);
  EXPECT_EQ(points->Skip(2), S_FALSE);
}

TEST_P(IdentitySweep, ListenersConnectAndDisconnect) {
  if (tested().source == IID_NULL) return;
  const Object object = create();
  const Ref<IConnectionPoint> point = connection_point(object);
  FakeObject listener, other;
  std::array<DWORD, 2> cookies{};
  ASSERT_EQ(point->Advise(listener.get(), &cookies[0]), S_OK);
  ASSERT_EQ(point->Advise(other.get(), &cookies[1]), S_OK);
  EXPECT_NE(cookies[0], cookies[1]);
  EXPECT_EQ(listener.references(), 1u);

  Ref<IEnumConnections> connections;
  ASSERT_EQ(point->EnumConnections(connections.put()), S_OK);
  CONNECTDATA seen[3] = {};
  ULONG count = 0;
  EXPECT_EQ(connections->Next(3, seen, &count), S_FALSE);
  ASSERT_EQ(count, 2u);
  for (ULONG i = 0; i < count; ++i) {
    EXPECT_EQ(seen[i].dwCookie, cookies[i]);
    seen[i].pUnk->Release();
  }
  connections.reset();

  EXPECT_EQ(point->Unadvise(cookies[0]), S_OK);
  EXPECT_EQ(point->Unadvise(cookies[0]), CONNECT_E_NOCONNECTION);
  EXPECT_EQ(listener.references(), 0u);
  EXPECT_EQ(point->Advise(nullptr, &cookies[0]), E_POINTER);
  EXPECT_EQ(point->Advise(listener.get(), nullptr), E_POINTER);
}

TEST_P(IdentitySweep, ForgottenListenersAreReleasedWithTheObject) {
  if (tested().source == IID_NULL) return;
  FakeObject listener;
  {
    const Object object = create();
    DWORD cookie = 0;
    ASSERT_EQ(connection_point(object)->Advise(listener.get(), &cookie), S_OK);
  }
  EXPECT_EQ(listener.references(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Classes, IdentitySweep, testing::ValuesIn(class_names()), class_name);

}  // namespace
}  // namespace pv::test
