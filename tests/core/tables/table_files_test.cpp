#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <string>
#include <vector>

#include "core/tables/tables.h"
#include "support/recording_sinks.h"
#include "table_test_support.h"

namespace ira::testing {
namespace {

using tables::kAges;
using tables::Tables;

float SingleAt(const std::vector<unsigned char>& bytes, std::size_t record) {
  std::uint32_t bits = 0;
  for (int i = 3; i >= 0; --i) bits = (bits << 8) | bytes[record * 4 + static_cast<std::size_t>(i)];
  return std::bit_cast<float>(bits);
}

double DoubleAt(const std::vector<unsigned char>& bytes, std::size_t record) {
  std::uint64_t bits = 0;
  for (int i = 7; i >= 0; --i) bits = (bits << 8) | bytes[record * 8 + static_cast<std::size_t>(i)];
  return std::bit_cast<double>(bits);
}

std::vector<unsigned char> Built(const std::string& name) {
  return FileBytes(std::string(TALLYRA_PROGRAM_DIR) + "/" + name);
}

TEST(GeneratedTableFiles, HoldThePublishedValuesInRecordOrder) {
  const auto v86 = Built("v86.tbl");
  const auto v02 = Built("v02.tbl");
  const auto vi86 = Built("vi86.tbl");
  const auto vi02 = Built("vi02.tbl");
  ASSERT_EQ(v86.size(), 444u);
  ASSERT_EQ(v02.size(), 888u);
  ASSERT_EQ(vi86.size(), 49'284u);
  ASSERT_EQ(vi02.size(), 98'568u);

  const auto tableV = ReadCsv("table_v_1986.csv");
  const auto single02 = ReadCsv("single_life_2002.csv");
  const auto tableVI = ReadCsv("table_vi_1986.csv");
  const auto joint02 = ReadCsv("joint_life_2002.csv");
  for (std::size_t k = 0; k < kAges; ++k) {
    const std::string age = std::to_string(5 + k);
    EXPECT_EQ(SingleAt(v86, k), std::stof(tableV.at({age}))) << "v86.tbl age " << age;
    EXPECT_EQ(DoubleAt(v02, k), std::stod(single02.at({age}))) << "v02.tbl age " << age;
  }
  for (std::size_t i = 0; i < kAges; ++i) {
    for (std::size_t j = 0; j < kAges; ++j) {
      const std::vector<std::string> ages{std::to_string(5 + i), std::to_string(5 + j)};
      const std::size_t record = i * kAges + j;
      ASSERT_EQ(SingleAt(vi86, record), std::stof(tableVI.at(ages))) << "vi86.tbl " << ages[0] << "/" << ages[1];
      ASSERT_EQ(DoubleAt(vi02, record), std::stod(joint02.at(ages))) << "vi02.tbl " << ages[0] << "/" << ages[1];
    }
  }
  // First age 70, second age 60, and the other order.
  EXPECT_EQ(SingleAt(vi86, 7270), 26.2f);
  EXPECT_EQ(SingleAt(vi86, 6170), std::stof(tableVI.at({"60", "70"})));
}

TEST(GeneratedTableFiles, FactorTableIsWrittenColumnByColumn) {
  const auto s90 = Built("s-90cm.tbl");
  ASSERT_EQ(s90.size(), 44'400u);
  const auto tableS = ReadCsv("table_s_90cm.csv");
  std::size_t checked = 0;
  for (std::size_t row = 0; row < 50; ++row) {
    char rate[8];
    std::snprintf(rate, sizeof rate, "%.1f", 4.2 + 0.2 * static_cast<double>(row));
    EXPECT_EQ(DoubleAt(s90, row), std::stod(rate)) << "rate of row " << row;
    for (std::size_t age = 0; age < 110; ++age) {
      const double expected = std::stod(tableS.at({rate, std::to_string(age)}));
      ASSERT_EQ(DoubleAt(s90, (age + 1) * 50 + row), expected) << "rate " << rate << " age " << age;
      ++checked;
    }
  }
  EXPECT_EQ(checked, tableS.size());
}

TEST(ReadTable, LoadsEveryTableInMemoryOrder) {
  LoadBuiltTables();
  const auto& t = Tables();
  EXPECT_EQ(t.single86[70 - 5], 16.0f);
  // The 2002 double of record 65 rounded to single.
  EXPECT_EQ(t.single02[70 - 5], static_cast<float>(DoubleAt(Built("v02.tbl"), 65)));
  EXPECT_EQ(t.single02[70 - 5], 17.0f);
  // In memory the first age varies fastest.
  EXPECT_EQ(t.joint86[(70 - 5) + (60 - 5) * kAges], 26.2f);
  EXPECT_EQ(t.joint02[(70 - 5) + (60 - 5) * kAges], 27.4f);
  EXPECT_EQ(t.joint02[(90 - 5) + (80 - 5) * kAges], 11.4f);
}

TEST(ReadTable, MissingFileIsReportedAndLeavesThatReaderUnloaded) {
  struct Row {
    const char* name;
    std::vector<std::string> present;
    const char* reported;  // the one file the message names
    bool jointLoaded;
    bool singleLoaded;
  } rows[] = {
      {"1986 joint file missing: its partner is not tested", {"v86.tbl", "v02.tbl", "vi02.tbl"}, "vi86.tbl",
       false, true},
      {"2002 joint file missing", {"v86.tbl", "v02.tbl", "vi86.tbl"}, "vi02.tbl", false, true},
      {"2002 single file missing: neither single table loads", {"v86.tbl", "vi86.tbl", "vi02.tbl"}, "v02.tbl",
       true, false},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    RecordingScope scope;
    TempProgramFolder folder(r.present);
    tables::ClearTables();
    tables::ReadTableVI();
    tables::ReadTableV();
    ASSERT_EQ(scope.messages.messages.size(), 1u);
    const Message& m = scope.messages.Last();
    EXPECT_EQ(m.title, "File not found");
    EXPECT_EQ(m.text, "File: " + folder.Path(r.reported) +
                          " does not exist.Please verify the file is in the correct directory.");
    EXPECT_EQ(m.icon, MsgIcon::Information);
    EXPECT_EQ(m.buttons, MsgButtons::Ok);
    EXPECT_TRUE(scope.errors.errors.empty());
    const auto& t = Tables();
    EXPECT_EQ(t.joint86[7270] != 0 && t.joint02[7270] != 0, r.jointLoaded);
    EXPECT_EQ(t.single86[65] != 0 || t.single02[65] != 0, r.singleLoaded);
  }
}

TEST(ReadTable, ShortFileIsReadAsFarAsItGoes) {
  RecordingScope scope;
  TempProgramFolder folder({"v86.tbl", "v02.tbl", "vi86.tbl", "vi02.tbl"});
  folder.Truncate("v02.tbl", 66 * 8 + 5);      // ages 5..70 and part of 71
  folder.Truncate("vi86.tbl", 7271 * 4 + 2);   // up to first age 70 with second age 60
  folder.Truncate("vi02.tbl", 0);
  tables::ClearTables();
  tables::ReadTableVI();
  tables::ReadTableV();
  EXPECT_TRUE(scope.messages.messages.empty());
  EXPECT_TRUE(scope.errors.errors.empty());
  const auto& t = Tables();
  EXPECT_EQ(t.single02[70 - 5], 17.0f);
  EXPECT_EQ(t.single02[71 - 5], 0.0f);
  EXPECT_EQ(t.single86[115 - 5], 0.5f);  // the full partner file still loads whole
  EXPECT_EQ(t.joint86[(70 - 5) + (60 - 5) * kAges], 26.2f);
  EXPECT_EQ(t.joint86[(70 - 5) + (61 - 5) * kAges], 0.0f);
  EXPECT_EQ(t.joint86[(115 - 5) + (115 - 5) * kAges], 0.0f);
  EXPECT_EQ(t.joint02[0], 0.0f);
}

}  // namespace
}  // namespace ira::testing
