// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Reading and writing items over a line without faults.

#include "tests/serial/known_values.h"
#include "tests/serial/line_test.h"

namespace pv::test {
namespace {

using Exchange = LineTest;

// --- Reading
// ----------------------------------------------------------------------------------------

TEST_F(Exchange, ReadsEveryValueOfTheTransmitter) {
  enter(L"4444");
  const auto values = known_values();
  ASSERT_EQ(values.size(), 68u);
  for (const KnownValue& expected : values) {
    ASSERT_TRUE(read(expected.key)) << printable(expected.key);
    expect_known(value(expected.key, expected.variable), expected);
  }
}

TEST_F(Exchange, ReadsEveryItemOfTheVersion) {
  enter(L"4444");
  const Object items = transmitter_.get_object(L"Items");
  const Object entries =
      items.get_object(L"Versions").get_object(L"Item", L"2.30").get_object(L"VerItems");
  const long count = entries.get(L"Count").number();
  EXPECT_EQ(count, 64);
  for (long i = 1; i <= count; ++i) {
    const std::wstring key = entries.get_object(L"Item", i).get(L"Key").text();
    EXPECT_TRUE(read(key)) << printable(key);
    EXPECT_EQ(item(key).get(L"Dirty", 1), false) << printable(key);
  }
}

TEST_F(Exchange, ValuesAreUnknownBeforeTheyAreRead) {
  EXPECT_EQ(item(L"110").get(L"Dirty", 1), true);
  ASSERT_TRUE(read(L"110"));
  EXPECT_EQ(item(L"110").get(L"Dirty", 1), false);
}

TEST_F(Exchange, MeasuredValuesMoveBetweenTwoReads) {
  ASSERT_TRUE(read(L"21"));
  const double total = value(L"21").real();
  const StopWatch watch;
  do {
    ASSERT_TRUE(read(L"21"));
  } while (value(L"21").real() == total && watch.seconds() < 10);
  EXPECT_GT(value(L"21").real(), total);
  ASSERT_TRUE(read(L"1"));
  EXPECT_NEAR(value(L"1").real(), 3.5, 0.5);
}

TEST_F(Exchange, ReadsTheParentFirst) {
  ASSERT_EQ(transmitter_.call(L"ReadTxm", item(L"30"), true), true);
  EXPECT_EQ(record(0).get(L"CmdItemID"), 30);
  EXPECT_EQ(record(1).get(L"CmdItemID"), 1);
}

TEST_F(Exchange, ValuesAreShownInUnitsAndMeanings) {
  ASSERT_TRUE(read(L"30"));
  EXPECT_EQ(transmitter_.get(L"ItemValue", item(L"30"), 1, -1, -2, 2), L"20.00 m3/h");
  ASSERT_TRUE(read(L"133"));
  EXPECT_EQ(transmitter_.get(L"ItemValue", item(L"133")), L"Clock battery low");
}

// --- Writing
// ----------------------------------------------------------------------------------------

struct Written {
  const wchar_t* key;
  int variable;
  Value value;
};

TEST_F(Exchange, ReadsBackWhatItWrote) {
  enter(L"4444");
  const Written cases[] = {
      {L"37", 1, 5},                            // byte
      {L"34", 1, 999},                          // integer
      {L"103", 1, -5},                          // negative integer
      {L"103", 1, -32768},                      //
      {L"32", 1, 0.25},                         // real number
      {L"38", 1, -17.5},                        //
      {L"70", 3, 12.5},                         // variable of a record
      {L"90", 1, 0},                            // alarm record
      {L"110", 1, L"SIXTEEN LETTERS!"},         // text that fills its room
      {L"110", 1, L""},                         //
      {L"115", 1, L"M\x00FCnchen, 20 \x00B0"},  // beyond ASCII
      {L"119", 1, std::wstring(150, L'x')},     // the longest text
  };
  for (const Written& c : cases) {
    SCOPED_TRACE(printable(c.key));
    ASSERT_TRUE(read(c.key));
    const Value before = value(c.key, c.variable);
    EXPECT_TRUE(write(c.key, c.value, c.variable));
    item(c.key).put(L"Value", c.variable, before);
    ASSERT_TRUE(read(c.key));
    EXPECT_EQ(value(c.key, c.variable), c.value);
    EXPECT_TRUE(write(c.key, before, c.variable));
  }
}

TEST_F(Exchange, TextsAreCutToTheirRoom) {
  enter(L"1111");
  EXPECT_TRUE(write(L"110", L"SEVENTEEN LETTERS"));
  ASSERT_TRUE(read(L"110"));
  EXPECT_EQ(value(L"110"), L"SEVENTEEN LETTER");
  EXPECT_TRUE(write(L"110", L"FT-1203 COOLING"));
}

TEST_F(Exchange, AnEnteredValueTravelsInTheBaseUnit) {
  enter(L"2222");
  ASSERT_EQ(transmitter_.call(L"ReadTxm", item(L"30"), true), true);
  transmitter_.put(L"ItemValue", item(L"30"), 1, 36);  // m3/h
  EXPECT_TRUE(write(L"30"));
  ASSERT_TRUE(read(L"30"));
  EXPECT_NEAR(value(L"30").real(), 10, 1e-6);  // l/s
  EXPECT_TRUE(write(L"30", 5.55555555555556));
}

TEST_F(Exchange, WaitsAsLongAsTheItemAsks) {
  hurry_.reset();
  const Listener listener;
  const StopWatch watch;
  ASSERT_TRUE(write(L"105", 1));
  EXPECT_GT(watch.seconds(), 0.2);
  EXPECT_EQ(listener.count(kSmartWaiting), 2) << "the time left, and that none is left";
}

TEST_F(Exchange, AListenerMayCutTheWaitingShort) {
  const Listener listener;
  const StopWatch watch;
  enter(L"1111");  // the item asks for one and a half second
  EXPECT_LT(watch.seconds(), 1);
  EXPECT_EQ(listener.count(kSmartWaiting), 1);
}

TEST_F(Exchange, ResetsTheTotals) {
  enter(L"1111");
  EXPECT_TRUE(write(L"25", 1));
  ASSERT_TRUE(read(L"21"));
  EXPECT_LT(value(L"21").real(), 1);
}

// --- Refusals
// ---------------------------------------------------------------------------------------

TEST_F(Exchange, TheTransmitterRefusesWithoutAPassword) {
  EXPECT_EQ(write(L"32", 1.5), false);
  EXPECT_EQ(com_error(), kNoError);
  EXPECT_EQ(answer_error(), kPasswordWrong);
  EXPECT_EQ(transmitter_.get(L"ComAnswerErrorText"), L"Password wrong");
  EXPECT_EQ(item(L"32").get(L"Dirty", 1), true);
  EXPECT_EQ(read(L"35"), false);
  EXPECT_EQ(answer_error(), kPasswordWrong);
}

TEST_F(Exchange, AGoodExchangeForgetsTheErrorBefore) {
  ASSERT_EQ(read(L"35"), false);
  ASSERT_TRUE(read(L"110"));
  EXPECT_EQ(answer_error(), 0);
  EXPECT_EQ(transmitter_.get(L"ComAnswerErrorText"), L"");
}

TEST_F(Exchange, EachRefusalHasItsReason) {
  enter(L"4444");
  transmitter_.put(L"Version", L"");  // every item, not only those that the software has
  transmitter_.get_object(L"Items").call(L"Add", L"999", 999, false, 0, false, false, 0.5F, 0);
  EXPECT_EQ(read(L"999"), false);
  EXPECT_EQ(com_error(), kNotDefinedItem);
  EXPECT_EQ(answer_error(), kItemUnknown);
  EXPECT_EQ(write(L"1", 1), false);
  EXPECT_EQ(com_error(), kIllegalCommand);
  EXPECT_EQ(answer_error(), kCommandUnknown);
  EXPECT_EQ(write(L"30", 0), false);
  EXPECT_EQ(com_error(), kNoError);
  EXPECT_EQ(answer_error(), kOutOfLimits);
}

TEST_F(Exchange, ARefusalIsNotRepeatedButReported) {
  be_patient();
  const Listener listener;
  EXPECT_EQ(write(L"32", 1.5), false);
  EXPECT_EQ(listener.events(), (std::vector<DISPID>{kSending, kReceiving, kHistoryChanged,
                                                    kOnAnswerError, kFinished}));
}

TEST_F(Exchange, AnItemOfAnotherLengthIsNotFilled) {
  const Object odd = item(L"110");
  odd.get_object(L"Variables").get_object(L"Item", 1).put(L"DataType", short{5});
  EXPECT_EQ(read(L"110"), false);
  EXPECT_EQ(com_error(), kDataLength);
  EXPECT_EQ(odd.get(L"Dirty", 1), true);
}

// --- Passwords
// --------------------------------------------------------------------------------------

TEST_F(Exchange, EachPasswordOpensItsLevel) {
  const wchar_t* passwords[] = {L"1111", L"2222", L"3333", L"4444"};
  for (int level = 1; level <= 4; ++level) {
    enter(passwords[level - 1]);
    EXPECT_EQ(transmitter_.get(L"Password"), level);
    EXPECT_EQ(transmitter_.call(L"GetPassword"), level);
  }
}

TEST_F(Exchange, AWrongPasswordClosesTheLevel) {
  enter(L"4444");
  EXPECT_EQ(write(L"140", L"guess"), false);
  EXPECT_EQ(transmitter_.get(L"Password"), 0);
}

TEST_F(Exchange, ChangedPasswordsReplaceTheOldOnes) {
  enter(L"4444");
  const wchar_t* changed[] = {L"one", L"two", L"three", L"four"};
  for (int i = 1; i <= 4; ++i) item(L"142").put(L"Value", i, changed[i - 1]);
  ASSERT_TRUE(write(L"142"));
  ASSERT_TRUE(read(L"142"));
  EXPECT_EQ(value(L"142", 2), L"") << "nobody reads passwords";
  EXPECT_EQ(write(L"140", L"2222"), false);
  enter(L"four");
  EXPECT_EQ(transmitter_.get(L"Password"), 4);
  for (int i = 1; i <= 4; ++i)
    item(L"142").put(L"Value", i, std::wstring(4, static_cast<wchar_t>(L'0' + i)));
  ASSERT_TRUE(write(L"142"));
}

TEST_F(Exchange, AccessControlFollowsTheOpenLevel) {
  EXPECT_EQ(transmitter_.call(L"IsWriteable", item(L"30")), false);
  enter(L"2222");
  EXPECT_EQ(transmitter_.call(L"IsWriteable", item(L"30")), true);
  EXPECT_EQ(transmitter_.call(L"IsWriteable", item(L"35")), false);
}

}  // namespace
}  // namespace pv::test
