// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// The audit file.

#include "tests/automation/txm/audit.h"

namespace pv::test {
namespace {

constexpr int kTarola = 6, kGravix = 4;

TEST_F(Audit, TheFirstEntryBringsTheHeader) {
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(7), L"Ann", L"why"), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7")}));
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(8, 0, false, L"on"), L"Ann", L"why"), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7"), entry("8", "on")}));
}

TEST_F(Audit, TheEntryBeginsWithTheMoment) {
  const std::string early = printable(time_of_day());
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(7), L"Ann", L""), true);
  const std::string late = printable(time_of_day());
  const std::string bytes = history.bytes();
  const std::string start = printable(today()) + ",";
  EXPECT_TRUE(bytes.find("\r\n" + start + early + ",Ann,") != std::string::npos ||
              bytes.find("\r\n" + start + late + ",Ann,") != std::string::npos)
      << bytes;
}

TEST_F(Audit, AnItemWithThreeVariablesMakesThreeLines) {
  EXPECT_EQ(txm.call(L"DoHistorian", item_with_variables(3), L"Ann", L"why"), true);
  EXPECT_EQ(lines(),
            (Lines{kHeader, entry("7", ""), ",,,,,,,Caption 2,20,", ",,,,,,,Caption 3,30,", ""}));
}

TEST_F(Audit, TheFirstOfSeveralVariablesIsNotEvenConverted) {
  const Object item = item_with_variables(2);
  item.get_object(L"Variables").get_object(L"Item", 1).put(L"DimensionID", 1);
  EXPECT_EQ(txm.call(L"DoHistorianX", item, L"Ann", L"why"), true);
  EXPECT_EQ(calls(), (Lines{"get server.TypeName", "get server.TypeName"}));
}

TEST_F(Audit, ValuesAreWrittenWithAPeriodAndTheirUnit) {
  const Object units = Object::create(L"pvItems32.CUnits");
  units.call(L"Add", L"u", L"m3/h", 0.5, 0.0);
  dimensions.call(L"Add", L"Flow", L"Flow", units);
  const Object item = add_item(7, 0, true, 25.0);
  const Object variable = item.get_object(L"Variables").get_object(L"Item", 1);
  variable.put(L"DimensionID", 1);
  EXPECT_EQ(txm.call(L"DoHistorianX", item, L"Ann", L"why"), true);
  EXPECT_EQ(lines().back(), "Ann,Fluxor,1,TXM#1:Untitled TXM (Fluxor),7,Caption 1,12.5,m3/h,why");
}

TEST_F(Audit, ANumberWithoutDimensionIsWrittenWithAPeriod) {
  for (const Value& value : {Value(2.5), Value(2.5F), Value(L"2,5")}) {
    const Object item = add_item(7);
    item.put(L"Value", 1, value);
    EXPECT_EQ(txm.call(L"DoHistorianX", item, L"Ann", L"why"), true);
    EXPECT_EQ(lines().back(), entry("7", "2.5"));
    items.call(L"Clear");
  }
}

TEST_F(Audit, ACodeWithoutMeaningIsWrittenWithAPeriod) {
  const Object item = add_item(7, 0, true, 2.5);
  item.get_object(L"Variables").get_object(L"Item", 1).put(L"ListID", 1);
  EXPECT_EQ(txm.call(L"DoHistorianX", item, L"Ann", L"why"), true);
  EXPECT_EQ(lines().back(), entry("7", "2.5"));
}

TEST_F(Audit, FurtherVariablesAreWrittenWithAPeriod) {
  const Object item = item_with_variables(3);
  item.put(L"Value", 2, 2.5);
  item.put(L"Value", 3, L"-3,25");
  EXPECT_EQ(txm.call(L"DoHistorianX", item, L"Ann", L"why"), true);
  EXPECT_EQ(lines(),
            (Lines{kHeader, entry("7", ""), ",,,,,,,Caption 2,2.5,", ",,,,,,,Caption 3,-3.25,"}));
}

TEST_F(Audit, TextThatIsNoNumberIsWrittenAsItIs) {
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(7, 0, true, L"Kiel, 2,5 km"), L"Ann", L"why"), true);
  EXPECT_EQ(lines().back(), entry("7", "Kiel, 2,5 km"));
}

TEST_F(Audit, WriteLineAppendsAnEmptyLine) {
  EXPECT_EQ(txm.call(L"WriteLine"), true);
  EXPECT_EQ(txm.call(L"WriteLine"), true);
  EXPECT_EQ(history.bytes(), "\r\n\r\n");
}

TEST_F(Audit, AFileThatIsThereGetsNoHeader) {
  txm.call(L"WriteLine");
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(7), L"Ann", L"why"), true);
  EXPECT_EQ(lines(), (Lines{"", entry("7", "7")}));
}

TEST_F(Audit, AMissingFolderMakesFalse) {
  utility.put(L"AppDirectory", kHistoryDirectory, history.folder() + L"none\\");
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(7), L"Ann", L"why"), false);
  EXPECT_EQ(txm.call(L"DoHistorian", add_item(8), L"Ann", L"why"), false);
  EXPECT_EQ(txm.call(L"WriteLine"), false);
  EXPECT_EQ(txm.get(L"Historian"), kSilent);
}

TEST_F(Audit, NothingDisablesTheHistorian) {
  EXPECT_EQ(txm.call(L"DoHistorianX", Value::nothing(), L"Ann", L"why"), false);
  EXPECT_EQ(txm.get(L"Historian"), kDisabled);
  EXPECT_EQ(history.bytes(), "");
}

TEST_F(Audit, OneEntryForMostTypesNoneForOthers) {
  const Object item = add_item(7);
  for (int type : {1, 2, 3, 5}) {
    txm.put(L"TxmType", type);
    EXPECT_EQ(txm.call(L"DoHistorian", item, L"Ann", L"why"), true);
  }
  for (int type : {kTarola, 0, 7, -1}) {
    txm.put(L"TxmType", type);
    EXPECT_EQ(txm.call(L"DoHistorian", item, L"Ann", L"why"), true);
  }
  const std::string one = entry("7", "7");
  EXPECT_EQ(lines(), (Lines{kHeader, one, "", one, "", one, "", one, "", "", "", "", ""}));
}

TEST_F(Audit, AGravixChangeBringsItsConditions) {
  txm.put(L"TxmType", kGravix);
  const short ids[] = {5, 223, 33, 60, 65, 183, 184};
  Lines expected{kHeader, entry("7", "7")};
  const Object item = add_item(7);
  for (short id : ids) {
    add_item(id, 0, false, id);
    expected.push_back(entry(std::to_string(id), std::to_string(id), "Conditions"));
  }
  expected.push_back("");
  EXPECT_EQ(txm.call(L"DoHistorian", item, L"Ann", L"why"), true);
  EXPECT_EQ(lines(), expected);
  Lines reads = calls();
  std::erase_if(reads, [](const auto& line) { return line.rfind("call server.ReadTxm", 0) != 0; });
  EXPECT_EQ(reads.size(), 7u);
}

TEST_F(Audit, AConditionThatDoesNotExistIsSkipped) {
  txm.put(L"TxmType", kGravix);
  for (short id : {5, 223, 33, 60, 65, 183}) add_item(id, 0, false, id);
  EXPECT_EQ(txm.call(L"DoHistorian", add_item(7), L"Ann", L"why"), true);
  EXPECT_EQ(lines().size(), 1u + 7 + 1);
  EXPECT_EQ(txm.get(L"Historian"), kSilent);
}

TEST_F(Audit, AConditionThatTheServerTakesAwayIsSkipped) {
  txm.put(L"TxmType", kGravix);
  add_item(5);
  server.on(L"ReadTxm", [](const Arguments& a) {
    a.set(1, Value::nothing());
    return Value(true);
  });
  EXPECT_EQ(txm.call(L"DoHistorian", add_item(7), L"Ann", L"why"), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7"), ""}));
  EXPECT_EQ(txm.get(L"Historian"), kSilent);
}

TEST_F(Audit, AConditionThatIsReadBadlyIsRecordedAsItIs) {
  txm.put(L"TxmType", kGravix);
  add_item(5);
  server.answer(L"ReadTxm", false);
  EXPECT_EQ(txm.call(L"DoHistorian", add_item(7), L"Ann", L"why"), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7"), entry("5", "7", "Conditions"), ""}));
}

TEST_F(Audit, OneTechnicianSignsTheWholeRun) {
  txm.put(L"TxmType", kGravix);
  for (short id : {5, 223}) add_item(id);
  server.on(L"ReadTxm", [&](const Arguments&) {
    txm.put(L"HistorianTechName", L"Bob");
    txm.put(L"HistorianComment", L"other");
    return Value(true);
  });
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, true))), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7"), entry("5", "7", "Conditions"),
                            entry("223", "7", "Conditions"), ""}));
  EXPECT_EQ(txm.get(L"HistorianTechName"), L"Bob");
}

// --- A history directory that changes within a run ----------------------------------------------

struct MovedAudit : Audit {
  MovedAudit() {
    txm.put(L"TxmType", kGravix);
    add_item(5);
  }
  // The first condition that is read brings the change.
  void move_to(const std::wstring& where, bool is_lost = false) {
    server.on(L"ReadTxm", [this, where, is_lost](const Arguments& a) {
      utility.put(L"AppDirectory", kHistoryDirectory, where);
      if (is_lost) a.set(1, Value::nothing());
      return Value(true);
    });
  }
  bool record() { return txm.call(L"DoHistorian", add_item(7), L"Ann", L"why").boolean(); }
};

TEST_F(MovedAudit, TheBlockEndsWhereItsLastEntryIs) {
  const HistoryFile other;
  move_to(other.folder());
  EXPECT_TRUE(record());
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7")}));
  EXPECT_EQ(other.lines(), (Lines{kHeader, entry("5", "7", "Conditions"), ""}));
}

TEST_F(MovedAudit, AConditionWithoutEntryDoesNotMoveTheEnd) {
  const HistoryFile other;
  move_to(other.folder(), true);
  EXPECT_TRUE(record());
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7"), ""}));
  EXPECT_EQ(other.bytes(), "");
}

TEST_F(MovedAudit, AnEntryThatCouldNotBeWrittenDoesNotMoveTheEnd) {
  move_to(history.folder() + L"none\\");
  EXPECT_FALSE(record());
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7"), ""}));
}

}  // namespace
}  // namespace pv::test
