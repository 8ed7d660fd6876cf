// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "examples/simulator/device.h"

#include <gtest/gtest.h>

#include "examples/simulator/hex_text.h"
#include "examples/simulator/item_id.h"
#include "examples/simulator/settings.h"

namespace fluxor {
namespace {

class SimulatedDevice : public testing::Test {
 protected:
  static Device make(const std::string& software = "2.30") {
    return Device(load_parameters(PV_EXAMPLE_DATA_DIR, software));
  }

  static std::string content(int address, char letter, int item, const std::string& data = "") {
    const std::string body = int_to_hex(static_cast<std::uint32_t>(address), 2) + letter +
                             int_to_hex(static_cast<std::uint32_t>(item), 4) + data;
    return body + checksum(body);
  }

  // The device gets the time that it needs after a write.
  Answer ask(char letter, int item, const std::string& data = "") {
    device_.advance(10);
    return device_.answer(content(device_.address(), letter, item, data)).value_or(Answer{});
  }

  AnswerError write(int item, const std::string& data) { return ask('W', item, data).error; }
  void enter(const std::string& password) {
    std::string data = password;
    data.resize(8, ' ');
    ask('W', kEnterPassword, data);
  }

  Device device_ = make();
};

TEST_F(SimulatedDevice, AnswersUnderItsAddress) {
  const auto answer = device_.answer(content(1, 'R', kTagName));
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->address, 1);
  EXPECT_EQ(answer->letter, 'r');
  EXPECT_EQ(answer->item, kTagName);
  EXPECT_EQ(answer->error, AnswerError::kNone);
  EXPECT_EQ(answer->data, "FT-1203 COOLING ");
}

TEST_F(SimulatedDevice, KeepsSilentUnderOtherAddresses) {
  EXPECT_FALSE(device_.answer(content(2, 'R', kTagName)));
  device_.set_address(2);
  EXPECT_TRUE(device_.answer(content(2, 'R', kTagName)));
  EXPECT_EQ(device_.number(kBusAddress), 2);
}

TEST_F(SimulatedDevice, KeepsSilentAfterGarbage) {
  EXPECT_FALSE(device_.answer("no telegram at all"));
}

TEST_F(SimulatedDevice, ReportsADamagedCommand) {
  const auto answer = device_.answer("01R006E0000");
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->error, AnswerError::kChecksumWrong);
  EXPECT_EQ(answer->data, "");
}

TEST_F(SimulatedDevice, RefusesUnknownCommandsAndItems) {
  EXPECT_EQ(ask('X', kTagName).error, AnswerError::kCommandUnknown);
  EXPECT_EQ(ask('R', 999).error, AnswerError::kItemUnknown);
  EXPECT_EQ(write(999, ""), AnswerError::kItemUnknown);
}

TEST_F(SimulatedDevice, HasTheItemsOfItsSoftwareVersion) {
  Device old = make("1.10");
  const auto error = [&](int item) { return old.answer(content(1, 'R', item))->error; };
  EXPECT_EQ(old.text(kSoftwareVersion), "1.10");
  EXPECT_EQ(error(160), AnswerError::kNone);
  EXPECT_EQ(error(32), AnswerError::kItemUnknown);
  EXPECT_EQ(ask('R', 160).error, AnswerError::kItemUnknown);
  EXPECT_EQ(ask('R', 32).error, AnswerError::kNone);
}

TEST_F(SimulatedDevice, AnUnknownSoftwareVersionOrFolderIsAnError) {
  EXPECT_THROW(make("9.99"), std::runtime_error);
  EXPECT_THROW(load_parameters("/no such folder", "2.30"), std::runtime_error);
}

TEST_F(SimulatedDevice, SendsVariablesOneAfterTheOther) {
  EXPECT_EQ(ask('R', kOutput1).data,
            "0001" + float_to_hex(0) + float_to_hex(5.55555555555556F) + float_to_hex(1));
  enter("2222");
  EXPECT_EQ(ask('R', 54).data, "55905564");
}

TEST_F(SimulatedDevice, StoresWhatIsWritten) {
  enter("1111");
  EXPECT_EQ(write(kFlowDamping, float_to_hex(7.5F)), AnswerError::kNone);
  EXPECT_EQ(ask('R', kFlowDamping).data, float_to_hex(7.5F));
  EXPECT_EQ(write(kTagName, "NEW NAME        "), AnswerError::kNone);
  EXPECT_EQ(device_.text(kTagName), "NEW NAME");
}

TEST_F(SimulatedDevice, StoresNegativeIntegers) {
  enter("2222");
  EXPECT_EQ(write(103, "FFFB"), AnswerError::kNone);
  EXPECT_EQ(device_.number(103), -5);
  EXPECT_EQ(ask('R', 103).data, "FFFB");
}

TEST_F(SimulatedDevice, RefusesIncompleteData) {
  enter("2222");
  for (const char* data : {"", "0000", "000000000", "no number"}) {
    EXPECT_EQ(write(kFlowDamping, data), AnswerError::kDataIncomplete) << data;
  }
  EXPECT_EQ(write(kFlowDamping, "0000C07F"), AnswerError::kDataIncomplete) << "not a number";
}

TEST_F(SimulatedDevice, RefusesValuesOutOfLimits) {
  enter("2222");
  EXPECT_EQ(write(kFullScaleFlow, float_to_hex(0)), AnswerError::kOutOfLimits);
  EXPECT_EQ(write(kBusAddress, "64"), AnswerError::kOutOfLimits);
  EXPECT_EQ(write(kBaudRate, "05"), AnswerError::kOutOfLimits);
}

TEST_F(SimulatedDevice, NobodySetsMeasuredValues) {
  enter("4444");
  EXPECT_EQ(write(kVolumeFlow, float_to_hex(1)), AnswerError::kCommandUnknown);
  EXPECT_EQ(write(kPasswordLevel, "04"), AnswerError::kCommandUnknown);
}

TEST_F(SimulatedDevice, EachPasswordOpensItsLevel) {
  const char* passwords[] = {"1111", "2222", "3333", "4444"};
  for (int level = 1; level <= Device::kLevels; ++level) {
    enter(passwords[level - 1]);
    EXPECT_EQ(device_.password_level(), level);
    EXPECT_EQ(ask('P', 0).data, "0" + std::to_string(level));
    EXPECT_EQ(device_.number(kPasswordLevel), level);
  }
}

TEST_F(SimulatedDevice, AWrongPasswordClosesAllLevels) {
  enter("2222");
  EXPECT_EQ(write(kEnterPassword, "guess   "), AnswerError::kPasswordWrong);
  EXPECT_EQ(device_.password_level(), 0);
}

TEST_F(SimulatedDevice, AnEmptyPasswordClosesAllLevels) {
  enter("2222");
  EXPECT_EQ(write(kEnterPassword, "        "), AnswerError::kNone);
  EXPECT_EQ(device_.password_level(), 0);
}

TEST_F(SimulatedDevice, LevelsProtectReadingAndWriting) {
  EXPECT_EQ(ask('R', kCalibrationFactor).error, AnswerError::kPasswordWrong);
  EXPECT_EQ(write(kFlowDamping, float_to_hex(1)), AnswerError::kPasswordWrong);
  enter("1111");
  EXPECT_EQ(write(kFlowDamping, float_to_hex(1)), AnswerError::kNone);
  EXPECT_EQ(ask('R', kCalibrationFactor).error, AnswerError::kPasswordWrong);
  enter("3333");
  EXPECT_EQ(ask('R', kCalibrationFactor).error, AnswerError::kNone);
}

TEST_F(SimulatedDevice, PasswordsAreChangedButNeverShown) {
  enter("4444");
  EXPECT_EQ(write(kChangePasswords, "one     two     three   four    "), AnswerError::kNone);
  EXPECT_EQ(ask('R', kChangePasswords).data, std::string(32, ' '));
  EXPECT_EQ(ask('R', kEnterPassword).data, std::string(8, ' '));
  enter("2222");
  EXPECT_EQ(device_.password_level(), 0);
  enter("two");
  EXPECT_EQ(device_.password_level(), 2);
}

TEST_F(SimulatedDevice, KeepsSilentWhileItStores) {
  enter("1111");
  ASSERT_EQ(write(kFlowDamping, float_to_hex(1)), AnswerError::kNone);
  EXPECT_FALSE(device_.answer(content(1, 'R', kTagName)));
  device_.advance(0.5);  // the waiting time in the item's record
  EXPECT_TRUE(device_.answer(content(1, 'R', kTagName)));
}

TEST_F(SimulatedDevice, AnswersUnderItsNewAddressAfterTheWriteOfIt) {
  enter("2222");
  EXPECT_EQ(write(kBusAddress, "07"), AnswerError::kNone);
  EXPECT_EQ(device_.address(), 7);
}

TEST_F(SimulatedDevice, SpeaksAtTheBaudRateOfItsSettings) {
  EXPECT_EQ(device_.baud_rate(), 4800);
  enter("2222");
  EXPECT_EQ(write(kBaudRate, "04"), AnswerError::kNone);
  EXPECT_EQ(device_.baud_rate(), 19200);
}

TEST_F(SimulatedDevice, ShowsItsNameAndFlow) {
  const Answer answer = ask('D', 0);
  EXPECT_EQ(answer.data.size(), 32u);
  EXPECT_EQ(answer.data.substr(0, 16), "FT-1203 COOLING ");
  EXPECT_NE(answer.data.find(" m3/h"), std::string::npos);
}

// --- The process
// ------------------------------------------------------------------------------------

TEST_F(SimulatedDevice, FlowMoves) {
  device_.advance(1);
  const double flow = device_.number(kVolumeFlow);
  device_.advance(7);
  EXPECT_NE(device_.number(kVolumeFlow), flow);
  EXPECT_NEAR(device_.number(kVolumeFlow), 3.5, 0.5);
}

TEST_F(SimulatedDevice, TotalsGrowByTheFlow) {
  const double volume = device_.number(kVolumeTotal);
  const double mass = device_.number(kMassTotal);
  const double hours = device_.number(kOperatingTime);
  for (int i = 0; i < 3600; ++i) device_.advance(1);
  EXPECT_NEAR(device_.number(kVolumeTotal) - volume, 12.6, 0.2);  // m3 in an hour
  EXPECT_NEAR(device_.number(kMassTotal) - mass, 12577, 200);     // kg
  EXPECT_NEAR(device_.number(kOperatingTime) - hours, 1, 1e-6);
}

TEST_F(SimulatedDevice, MeasuredValuesAgreeWithEachOther) {
  device_.advance(123.4);
  const double flow = device_.number(kVolumeFlow);
  EXPECT_NEAR(device_.number(kMassFlow), flow * device_.number(kDensity) / 1000, 1e-9);
  EXPECT_NEAR(device_.number(kRelativeFlow), flow / 5.55555555555556 * 100, 1e-9);
  EXPECT_NEAR(device_.number(kVelocity), 1.7825 * flow / 3.5, 1e-3);
  EXPECT_NEAR(device_.number(kOutput1Current), 4 + 16 * flow / 5.55555555555556, 1e-9);
  EXPECT_NEAR(device_.number(kOutput2Current), 4 + 16 * (device_.number(kDensity) - 900) / 200,
              1e-9);
  EXPECT_NEAR(device_.number(kPulseFrequency), flow, 1e-9);  // pulses of one litre
}

TEST_F(SimulatedDevice, FlowBelowTheCutOffIsZero) {
  device_.set_number(kLowFlowCutOff, 10);
  device_.advance(1);
  EXPECT_EQ(device_.number(kVolumeFlow), 0);
  EXPECT_EQ(device_.number(kMassFlow), 0);
}

TEST_F(SimulatedDevice, BatchBeginsAnewAtItsPreset) {
  device_.set_number(kBatchTotal, 1.1999);
  device_.advance(1);
  EXPECT_EQ(device_.number(kBatchTotal), 0);
}

TEST_F(SimulatedDevice, BatchCountsMassWhenToldSo) {
  device_.set_number(kTotalSource, 0);
  device_.set_number(kBatchPreset, 0);
  device_.set_number(kBatchTotal, 0);
  device_.advance(1);
  EXPECT_NEAR(device_.number(kBatchTotal), device_.number(kMassFlow), 1e-9);
}

TEST_F(SimulatedDevice, ResetSetsTheTotalsToZero) {
  enter("1111");
  ASSERT_EQ(write(kTotalReset, "01"), AnswerError::kNone);
  EXPECT_EQ(device_.number(kVolumeTotal), 0);
  EXPECT_EQ(device_.number(kMassTotal), 0);
  EXPECT_EQ(ask('R', kTotalReset).data, "00");
}

TEST_F(SimulatedDevice, SwitchedOffOutputStaysAtItsZero) {
  device_.set_number(kOutput1, 0);
  device_.advance(1);
  EXPECT_EQ(device_.number(kOutput1Current), 4);
}

TEST(SimulatedParameters, UnknownDataTypesHaveNoRoom) {
  for (const int type : {0, 22, -1}) EXPECT_FALSE(room_of(type));
  for (int type = 1; type <= 21; ++type) EXPECT_TRUE(room_of(type)) << type;
}

}  // namespace
}  // namespace fluxor
