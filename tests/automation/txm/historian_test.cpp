// The audit file, the modes of the historian and its prompt.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "tests/automation/txm/txm_support.h"
#include "tests/support/module.h"

namespace pv::test {
namespace {

constexpr int kHistoryDirectory = 8;
constexpr int kDisabled = 0, kSilent = 1, kEnabled = 2;
constexpr int kTarola = 6, kGravix = 4;
constexpr int kPrompt = 1010, kItem = 1011, kName = 1021, kComment = 1023;

std::wstring fresh_folder() {
  static int count = 0;
  const std::wstring path = scratch_folder() + L"history" + std::to_wstring(++count) + L"\\";
  std::filesystem::create_directories(path);
  return path;
}

std::wstring now_in(DWORD date_flags, DWORD time_flags) {
  wchar_t text[64] = L"";
  if (date_flags) {
    GetDateFormatW(LOCALE_USER_DEFAULT, date_flags, nullptr, nullptr, text, 64);
  } else {
    GetTimeFormatW(LOCALE_USER_DEFAULT, time_flags, nullptr, nullptr, text, 64);
  }
  return text;
}

const char kHeader[] =
    "Date,Time,Signature,Txm Type,Txm CA,Txm name,Item ID,Item Name,New value,Unit,Comments";

struct Audit : testing::Test, Transmitter {
  Audit() {
    device_answers(true);
    before_ = utility.get(L"AppDirectory", kHistoryDirectory);
    utility.put(L"AppDirectory", kHistoryDirectory, folder);
    txm.put(L"Historian", kSilent);
    txm.put(L"HistorianTechName", L"Ann");
    txm.put(L"HistorianComment", L"why");
  }
  ~Audit() override { utility.put(L"AppDirectory", kHistoryDirectory, before_); }

  std::string file_bytes() const {
    std::ifstream file(std::filesystem::path(folder + L"Historian.csv"), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  // The lines of the file, with the first two fields of each entry line checked and cut away.
  Lines lines() const {
    const std::string bytes = file_bytes();
    Lines found;
    for (std::size_t start = 0; start < bytes.size();) {
      const auto end = bytes.find("\r\n", start);
      if (end == std::string::npos) {
        ADD_FAILURE() << "a line has no end";
        break;
      }
      found.push_back(without_moment(bytes.substr(start, end - start)));
      start = end + 2;
    }
    return found;
  }
  static std::string without_moment(const std::string& line) {
    const std::string date = printable(now_in(DATE_SHORTDATE, 0)) + ",";
    if (line.rfind(date, 0) != 0) return line;
    return line.substr(line.find(',', date.size()) + 1);
  }
  Object item_with_variables(int count) {
    const Object item = add_item(7, 0, true, 10);
    for (int i = 2; i <= count; ++i) {
      item.get_object(L"Variables")
          .call(L"Add", std::to_wstring(i), L"Caption " + std::to_wstring(i), L"", L"", 0, 17, 1, 2,
                i * 10, 0, 4);
    }
    return item;
  }

  const std::wstring folder = fresh_folder();

 private:
  Value before_;
};
using Prompt = Audit;

std::string entry(const std::string& id, const std::string& value,
                  const std::string& comment = "why", const std::string& caption = "Caption 1") {
  return "Ann,Fluxor,1,TXM#1:Untitled TXM (Fluxor)," + id + "," + caption + "," + value + ",," +
         comment;
}

TEST_F(Audit, TheFirstEntryBringsTheHeader) {
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(7), L"Ann", L"why"), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7")}));
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(8, 0, false, L"on"), L"Ann", L"why"), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7"), entry("8", "on")}));
}

TEST_F(Audit, TheEntryBeginsWithTheMoment) {
  const std::string early = printable(now_in(0, LOCALE_NOUSEROVERRIDE));
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(7), L"Ann", L""), true);
  const std::string late = printable(now_in(0, LOCALE_NOUSEROVERRIDE));
  const std::string bytes = file_bytes();
  const std::string start = printable(now_in(DATE_SHORTDATE, 0)) + ",";
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

TEST_F(Audit, WriteLineAppendsAnEmptyLine) {
  EXPECT_EQ(txm.call(L"WriteLine"), true);
  EXPECT_EQ(txm.call(L"WriteLine"), true);
  EXPECT_EQ(file_bytes(), "\r\n\r\n");
}

TEST_F(Audit, AFileThatIsThereGetsNoHeader) {
  txm.call(L"WriteLine");
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(7), L"Ann", L"why"), true);
  EXPECT_EQ(lines(), (Lines{"", entry("7", "7")}));
}

TEST_F(Audit, AMissingFolderMakesFalse) {
  utility.put(L"AppDirectory", kHistoryDirectory, folder + L"none\\");
  EXPECT_EQ(txm.call(L"DoHistorianX", add_item(7), L"Ann", L"why"), false);
  EXPECT_EQ(txm.call(L"DoHistorian", add_item(8), L"Ann", L"why"), false);
  EXPECT_EQ(txm.call(L"WriteLine"), false);
  EXPECT_EQ(txm.get(L"Historian"), kSilent);
}

TEST_F(Audit, NothingDisablesTheHistorian) {
  EXPECT_EQ(txm.call(L"DoHistorianX", Value::nothing(), L"Ann", L"why"), false);
  EXPECT_EQ(txm.get(L"Historian"), kDisabled);
  EXPECT_EQ(file_bytes(), "");
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

// --- Modes ------------------------------------------------------------------------------------

TEST_F(Audit, DisabledRecordsNothing) {
  txm.put(L"Historian", kDisabled);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, true))), true);
  EXPECT_EQ(file_bytes(), "");
}

TEST_F(Audit, SilentRecordsTheItemsThatAskForIt) {
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, false))), true);
  EXPECT_EQ(file_bytes(), "");
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(8, 0, true))), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("8", "7"), ""}));
}

TEST_F(Audit, AWriteThatFailedIsRecordedToo) {
  server.answer(L"WriteTxm", false);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(8, 0, true))), false);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("8", "7"), ""}));
}

TEST_F(Audit, TheItemThatCameBackIsRecorded) {
  const Object other = add_item(9, 0, false, 99);
  server.on(L"WriteTxm", [&](const Arguments& a) {
    a.set(1, other);
    return Value(true);
  });
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(8, 0, true))), true);
  EXPECT_EQ(lines(), (Lines{kHeader, entry("9", "99"), ""}));
}

TEST_F(Audit, ARefusedWriteIsNotRecorded) {
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(8, 1, true)), true), false);
  EXPECT_EQ(file_bytes(), "");
}

// --- The prompt -------------------------------------------------------------------------------

TEST_F(Prompt, OpensOnlyForItemsThatAreRecorded) {
  txm.put(L"Historian", kEnabled);
  const DialogResponder dialogs(DialogResponder::kSecond);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, false))), true);
  EXPECT_TRUE(dialogs.shown().empty());
  EXPECT_EQ(file_bytes(), "");
}

TEST_F(Prompt, OkWritesAndRecordsWithTheAnswers) {
  txm.put(L"Historian", kEnabled);
  const Object item = add_item(7, 0, true);
  log.name(item, "item");
  {
    const DialogResponder dialogs(DialogResponder::kFirst,
                                  {{kName, L"Ann"}, {kComment, L"because"}});
    EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(item)), true);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    const auto& shown = dialogs.shown()[0];
    EXPECT_EQ(shown.caption, L"Kalvos Historian");
    EXPECT_EQ(shown.texts.at(kPrompt), utility.call(L"pvString", 302).text());
    EXPECT_EQ(shown.texts.at(kItem), L"TXM#1:Untitled TXM (Fluxor) : 7, Caption 1");
    EXPECT_EQ(shown.texts.at(kName), L"");
    EXPECT_EQ(shown.texts.at(kComment), L"");
  }
  EXPECT_EQ(txm.get(L"HistorianTechName"), L"Ann");
  EXPECT_EQ(txm.get(L"HistorianComment"), L"because");
  EXPECT_EQ(lines(), (Lines{kHeader, entry("7", "7", "because"), ""}));
  const Lines all = calls();
  EXPECT_EQ(Lines(all.begin(), all.begin() + 4),
            joined({{"get server.TypeName"}, exchange_lines("WriteTxm")}));
}

TEST_F(Prompt, NoFieldIsMandatory) {
  txm.put(L"Historian", kEnabled);
  const DialogResponder dialogs(DialogResponder::kFirst);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, true))), true);
  EXPECT_EQ(txm.get(L"HistorianTechName"), L"");
  EXPECT_EQ(txm.get(L"HistorianComment"), L"");
}

TEST_F(Prompt, OpensWithEmptyFieldsEachTime) {
  txm.put(L"Historian", kEnabled);
  const Object item = add_item(7, 0, true);
  const DialogResponder dialogs(DialogResponder::kFirst, {{kName, L"Ann"}});
  txm.call(L"WriteTxm", ItemVariable(item));
  txm.call(L"WriteTxm", ItemVariable(item));
  ASSERT_EQ(dialogs.shown().size(), 2u);
  EXPECT_EQ(dialogs.shown()[1].texts.at(kName), L"");
}

TEST_F(Prompt, CancelAndTheCloseBoxReadTheItemAgain) {
  txm.put(L"Historian", kEnabled);
  server.answer(L"ReadPassword", false);
  const Object item = add_item(7, 64, true);
  log.name(item, "item");
  for (int button : {+DialogResponder::kSecond, +DialogResponder::kCloseBox}) {
    txm.put(L"Password", 3);
    const DialogResponder dialogs(button, {{kName, L"Bob"}, {kComment, L"x"}});
    EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(item)), true);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(calls(), joined({{"get server.TypeName"},
                               exchange_lines("ReadTxm"),
                               {"call server.ReadPassword(I2 1, I2& 0, I2 1, BSTR "
                                "\"4800,n,8,1\")"}}));
    EXPECT_EQ(txm.get(L"HistorianTechName"), L"Ann");
    EXPECT_EQ(txm.get(L"Password"), 0);
    EXPECT_EQ(file_bytes(), "");
  }
}

TEST_F(Prompt, ACancelledWriteAnswersWhatTheReadAnswered) {
  txm.put(L"Historian", kEnabled);
  server.answer(L"ReadTxm", false);
  const DialogResponder dialogs(DialogResponder::kSecond);
  EXPECT_EQ(txm.call(L"WriteTxm", ItemVariable(add_item(7, 0, true))), false);
}

}  // namespace
}  // namespace pv::test
