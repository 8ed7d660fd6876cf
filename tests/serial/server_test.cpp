// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The server's contract, called directly: kinds of arguments, settings, functions, pictures.

#include "pvItems32.h"
#include "tests/serial/line_test.h"
#include "tests/support/module.h"

namespace pv::test {
namespace {

class Server : public LineTest {
 protected:
  Server() { server_.get_object(L"Protocols").put(L"ActiveProtocol", 1); }

  static constexpr const wchar_t* kLine = L"4800,n,8,1";
};

TEST_F(Server, TakesTypedReferences) {
  Ref<IDispatch> object(item(L"110").get());
  EXPECT_EQ(server_.call(L"ReadTxm", short{1}, by_ref(*object.in_out()), short{1}, kLine), true);
  EXPECT_EQ(object.get(), item(L"110").get());

  short level = 9;
  EXPECT_EQ(server_.call(L"ReadPassword", short{1}, by_ref(level), short{1}, kLine), true);
  EXPECT_EQ(level, 0);

  VARIANT_BOOL change = VARIANT_FALSE;
  BSTR version = SysAllocString(L"COM1");
  EXPECT_EQ(server_.call(L"AutoConnect", by_ref_boolean(change), short{1}, short{1}, kLine,
                         by_ref(version)),
            true);
  EXPECT_EQ(std::wstring(version), L"2.30");
  SysFreeString(version);
}

TEST_F(Server, TakesReferencesToVariants) {
  Value object(item(L"110"));
  Value line(kLine);
  EXPECT_EQ(server_.call(L"ReadTxm", short{1}, by_ref(object), short{1}, by_ref(line)), true);
  Value level(short{9});
  EXPECT_EQ(server_.call(L"ReadPassword", short{1}, by_ref(level), short{1}, kLine), true);
  EXPECT_EQ(level, 0);
  Value version(L"COM1");
  EXPECT_EQ(server_.call(L"AutoConnect", Value(false), short{1}, short{1}, kLine, by_ref(version)),
            true);
  EXPECT_EQ(version, L"2.30");
}

TEST_F(Server, TakesValues) {
  EXPECT_EQ(server_.call(L"ReadTxm", 1, item(L"110"), 1, kLine), true);
  EXPECT_EQ(server_.call(L"AutoConnect", false, 1, 1, kLine, L""), true);
}

TEST_F(Server, NamesAreFoundWhateverTheirCase) {
  EXPECT_EQ(server_.get(L"TYPENAME"), L"Fluxor");
  EXPECT_EQ(server_.id_of(L"NoSuchMember"), DISPID_UNKNOWN);
}

TEST_F(Server, WrongArgumentsAreErrorsWithText) {
  const Outcome missing = server_.try_call(L"ReadTxm", 1);
  EXPECT_FALSE(missing.worked());
  EXPECT_EQ(missing.code, DISP_E_BADPARAMCOUNT);
  EXPECT_NE(missing.description, L"");
  const Outcome wrong = server_.try_call(L"ReadTxm", 1, L"no item", 1, kLine);
  EXPECT_EQ(wrong.code, DISP_E_TYPEMISMATCH);
  const Outcome nothing = server_.try_call(L"ReadTxm", 1, Value::nothing(), 1, kLine);
  EXPECT_EQ(nothing.code, DISP_E_TYPEMISMATCH);
  EXPECT_EQ(server_.try_put(L"TypeName", L"x").code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(Server, KnowsItsTypeAndDefaultItem) {
  EXPECT_EQ(transmitter_.get(L"TxmTypeName"), L"Fluxor");
  EXPECT_EQ(transmitter_.get_object(L"DefaultItem").get(L"ItemID"), 1);
}

TEST_F(Server, LoadsTheFilesByAnyOfTheirNames) {
  for (const wchar_t* extension : {L"", L".itm", L".ver", L".DIM", L".lst"}) {
    const Object server = Object::create(L"Fluxor.Server");
    EXPECT_EQ(server.call(L"LoadSettings", settings_name() + extension), true)
        << printable(extension);
    EXPECT_EQ(server.get_object(L"Items").get(L"AllItemCount"), 66);
    EXPECT_EQ(server.get_object(L"Dimensions").get(L"Count"), 22);
    EXPECT_EQ(server.get_object(L"Lists").get(L"Count"), 12);
    EXPECT_EQ(server.get(L"FileName"), settings_name() + extension);
  }
}

TEST_F(Server, CannotLoadFilesThatAreNotThere) {
  EXPECT_EQ(server_.call(L"LoadSettings", L"Z:\\no such folder\\fluxor"), false);
  EXPECT_EQ(server_.call(L"LoadSettings", L""), false);
}

TEST_F(Server, LoadsWhatItSaved) {
  const std::wstring name = scratch_folder() + L"\\saved";
  ASSERT_EQ(transmitter_.call(L"SaveSettings", name), true);
  EXPECT_EQ(transmitter_.get(L"FileName"), name);
  const Object other = Object::create(L"Fluxor.Server");
  ASSERT_EQ(other.call(L"LoadSettings", name), true);
  EXPECT_EQ(other.get_object(L"Items").get(L"AllItemCount"), 66);
  EXPECT_EQ(other.get_object(L"Items").get_object(L"Versions").get(L"Count"), 3);
}

TEST_F(Server, LoadsTheUnitsThatWereSavedLast) {
  const std::wstring name = scratch_folder() + L"\\units";
  const Object unit =
      server_.get_object(L"Dimensions").get_object(L"Item", 1).get_object(L"Units", 1);
  for (const wchar_t* caption : {L"first", L"second"}) {
    unit.put(L"Caption", caption);
    ASSERT_EQ(server_.call(L"SaveSettings", name), true);
  }
  const Object other = Object::create(L"Fluxor.Server");
  ASSERT_EQ(other.call(L"LoadSettings", name), true);
  const Object dimensions = other.get_object(L"Dimensions");
  EXPECT_EQ(dimensions.get(L"Count"), 22);
  EXPECT_EQ(dimensions.get_object(L"Item", 1).get_object(L"Units", 1).get(L"Caption"), L"second");
}

TEST_F(Server, ASecondLoadReplacesListsAndVersions) {
  const Object lists = server_.get_object(L"Lists");
  const Object versions = server_.get_object(L"Items").get_object(L"Versions");
  const auto first_member = [&] {
    return lists.get_object(L"Item", 1).get_object(L"ListMembers").get_object(L"Item", 1);
  };
  const Value caption = first_member().get(L"Caption");
  first_member().put(L"Caption", L"edited");
  lists.call(L"Add", L"New list", Value::nothing(), L"New list");
  versions.call(L"Add", L"9.99", 3);
  ASSERT_EQ(server_.call(L"LoadSettings", settings_name()), true);
  EXPECT_EQ(lists.get(L"Count"), 12);
  EXPECT_EQ(versions.get(L"Count"), 3);
  EXPECT_EQ(first_member().get(L"Caption"), caption);
}

TEST_F(Server, ALoadThatFailsKeepsEverything) {
  ASSERT_EQ(server_.call(L"LoadSettings", L"Z:\\no such folder\\fluxor"), false);
  EXPECT_EQ(server_.get_object(L"Items").get(L"AllItemCount"), 66);
  EXPECT_EQ(server_.get_object(L"Items").get_object(L"Versions").get(L"Count"), 3);
  EXPECT_EQ(server_.get_object(L"Dimensions").get(L"Count"), 22);
  EXPECT_EQ(server_.get_object(L"Lists").get(L"Count"), 12);
}

TEST_F(Server, NoValueIsKnownAfterALoadWhateverTheVersion) {
  const Object items = server_.get_object(L"Items");
  items.put(L"Version", L"1.10");
  ASSERT_EQ(server_.call(L"LoadSettings", settings_name()), true);
  EXPECT_EQ(items.get(L"Version"), L"1.10");
  items.put(L"Version", L"");
  const long count = items.get(L"AllItemCount").number();
  EXPECT_GT(count, 0);
  for (long i = 1; i <= count; ++i) {
    const Object each = items.get_object(L"Item", i);
    const long variables = each.get_object(L"Variables").get(L"Count").number();
    for (long k = 1; k <= variables; ++k) EXPECT_EQ(each.get(L"Dirty", k), true) << i;
  }
}

TEST_F(Server, OffersTheItemsOfTheVersion) {
  transmitter_.put(L"Version", L"1.10");
  EXPECT_EQ(transmitter_.get_object(L"Items").get(L"Count"), 54);
  EXPECT_EQ(item(L"32").get(L"ItemID"), 160);
}

TEST_F(Server, TellsTheRoomOfEachVariable) {
  const Object protocol = server_.get_object(L"Protocols").get_object(L"Item", 1);
  EXPECT_EQ(protocol.get(L"Name"), L"Norvak");
  EXPECT_EQ(protocol.get(L"Index"), 1);
  EXPECT_EQ(protocol.call(L"ItemComLength", item(L"1")), 8);
  EXPECT_EQ(protocol.call(L"ItemComLength", item(L"70"), 1), 4);
  EXPECT_EQ(protocol.call(L"ItemComLength", item(L"119")), 150);
  EXPECT_EQ(protocol.get(L"Busy"), false);
}

// The item file tells the room of each item, the protocol that of each variable.
TEST_F(Server, RoomsOfVariablesAddUpToTheLengthOfTheItem) {
  const Object protocol = server_.get_object(L"Protocols").get_object(L"Item", 1);
  transmitter_.put(L"Version", L"");
  const Object items = transmitter_.get_object(L"Items");
  const long count = items.get(L"AllItemCount").number();
  for (long i = 1; i <= count; ++i) {
    const Object each = items.get_object(L"Item", i);
    const long variables = each.get_object(L"Variables").get(L"Count").number();
    long room = 0;
    for (long k = 1; k <= variables; ++k) room += protocol.call(L"ItemComLength", each, k).number();
    EXPECT_EQ(room, each.get(L"Length").number()) << each.get(L"ItemID").number();
  }
}

TEST_F(Server, TakesMessagesAboutItsLine) {
  EXPECT_EQ(transmitter_.call(L"SendMessage", L"Attempts=3"), 1);
  EXPECT_EQ(transmitter_.call(L"SendMessage", L"responsetime=0.3"), 1);
  for (const wchar_t* message : {L"", L"Attempts", L"Attempts=0", L"Attempts=x", L"Other=1"}) {
    EXPECT_EQ(transmitter_.call(L"SendMessage", message), 0) << printable(message);
  }
  EXPECT_EQ(transmitter_.call(L"GetMessage"),
            L"Norvak: 0 exchanges, 0 repeats, 0 time-outs, 0 failed");
}

TEST_F(Server, HasFunctions) {
  const Object functions = transmitter_.get_object(L"Functions");
  EXPECT_EQ(functions.get(L"Count"), 3);
  EXPECT_EQ(functions.get_object(L"Item", 2).get(L"FuncType"), 2);
  EXPECT_EQ(transmitter_.call(L"FunctionTitle", short{1}), L"Zero totals");
  EXPECT_EQ(transmitter_.call(L"FunctionTitle", short{2}), L"");
  EXPECT_EQ(transmitter_.call(L"FunctionTitle", short{9}), L"");
  EXPECT_EQ(transmitter_.call(L"StartFunction", L"CheckLine"), true);
}

TEST_F(Server, AFunctionNeedsItsLevel) {
  EXPECT_EQ(transmitter_.call(L"StartFunction", L"ZeroTotals"), false);
  enter(L"1111");
  EXPECT_EQ(transmitter_.call(L"StartFunction", L"ZeroTotals"), true);
  ASSERT_TRUE(read(L"22"));
  EXPECT_LT(value(L"22").real(), 1000);
}

TEST_F(Server, AnUnknownFunctionIsTheCollectionsError) {
  EXPECT_EQ(transmitter_.try_call(L"StartFunction", L"NoSuchFunction").number(), 5);
}

TEST_F(Server, HasPictures) {
  const Object off = transmitter_.get_object(L"PictureTransmitter");
  EXPECT_TRUE(off.as<IPicture>());
  EXPECT_TRUE(transmitter_.get_object(L"PictureFunction", 1).as<IPicture>());
}

TEST_F(Server, ShowsItsPort) {
  ASSERT_TRUE(connect());
  const Object port = server_.call_object(L"GetComObject");
  EXPECT_EQ(port.get(L"Name"), L"COM1");
  EXPECT_EQ(port.get(L"Settings"), kLine);
}

}  // namespace
}  // namespace pv::test
