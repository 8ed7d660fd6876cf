// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "core/items/data_type.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>

namespace pv {
namespace {

TEST(DataTypeClass, IsThatOfTheTableForEveryType) {
  const std::map<int, DataClass> classes = {
      {-1, DataClass::kSpecial}, {0, DataClass::kUnknown},  {1, DataClass::kNumeric},
      {2, DataClass::kNumeric},  {3, DataClass::kNumeric},  {4, DataClass::kNumeric},
      {5, DataClass::kString},   {6, DataClass::kRecord},   {7, DataClass::kString},
      {8, DataClass::kString},   {9, DataClass::kRecord},   {10, DataClass::kString},
      {11, DataClass::kString},  {12, DataClass::kString},  {13, DataClass::kRecord},
      {14, DataClass::kRecord},  {15, DataClass::kString},  {16, DataClass::kString},
      {17, DataClass::kRecord},  {18, DataClass::kString},  {20, DataClass::kString},
      {21, DataClass::kString},  {22, DataClass::kUnknown}, {-2, DataClass::kUnknown},
  };
  for (const auto& [type, expected] : classes) EXPECT_EQ(data_class(type), expected) << type;
  EXPECT_EQ(data_class(INT_MAX), DataClass::kUnknown);
  EXPECT_EQ(data_class(INT_MIN), DataClass::kUnknown);
}

TEST(DataTypeClass, LeavesTheErrorByteUnclassified) {
  EXPECT_EQ(data_class(19), DataClass::kUnknown);
}

TEST(DataTypeClass, HasThePublishedValues) {
  EXPECT_EQ(static_cast<int>(DataClass::kUnknown), -1);
  EXPECT_EQ(static_cast<int>(DataClass::kNumeric), 1);
  EXPECT_EQ(static_cast<int>(DataClass::kString), 2);
  EXPECT_EQ(static_cast<int>(DataClass::kRecord), 3);
  EXPECT_EQ(static_cast<int>(DataClass::kSpecial), 4);
}

}  // namespace
}  // namespace pv
