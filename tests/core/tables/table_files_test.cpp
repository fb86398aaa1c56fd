#include <gtest/gtest.h>

#include <bit>
#include <cstdio>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "core/tables/table_check.h"
#include "core/tables/tables.h"
#include "support/recording_sinks.h"
#include "table_test_support.h"

namespace ira::testing {
namespace {

using tables::kAges;
using tables::Tables;

static_assert(std::endian::native == std::endian::little, "the table files are little-endian");

template <typename T>
T RecordOf(const std::string& bytes, std::size_t k) {
  T v;
  std::memcpy(&v, bytes.data() + k * sizeof(T), sizeof(T));
  return v;
}

std::string Built(const std::string& name) { return ReadFileBytes(std::string(TALLYRA_PROGRAM_DIR) + "/" + name); }

TEST(GeneratedTableFiles, LifeFilesHoldTheCsvValuesInRecordOrder) {
  const auto v86 = Built("v86.tbl"), v02 = Built("v02.tbl"), vi86 = Built("vi86.tbl"), vi02 = Built("vi02.tbl");
  ASSERT_EQ(v86.size(), 444u);
  ASSERT_EQ(v02.size(), 888u);
  ASSERT_EQ(vi86.size(), 49'284u);
  ASSERT_EQ(vi02.size(), 98'568u);
  const auto tableV = ReadCsv("table_v_1986.csv"), single02 = ReadCsv("single_life_2002.csv");
  const auto tableVI = ReadCsv("table_vi_1986.csv"), joint02 = ReadCsv("joint_life_2002.csv");
  for (std::size_t i = 0; i < kAges; ++i) {
    const std::string a = std::to_string(5 + i);
    EXPECT_EQ(RecordOf<float>(v86, i), std::stof(tableV.at({a}))) << "v86.tbl age " << a;
    EXPECT_EQ(RecordOf<double>(v02, i), std::stod(single02.at({a}))) << "v02.tbl age " << a;
    for (std::size_t j = 0; j < kAges; ++j) {
      const std::vector<std::string> ages{a, std::to_string(5 + j)};
      ASSERT_EQ(RecordOf<float>(vi86, i * kAges + j), std::stof(tableVI.at(ages))) << "vi86.tbl " << a << "/" << 5 + j;
      ASSERT_EQ(RecordOf<double>(vi02, i * kAges + j), std::stod(joint02.at(ages))) << "vi02.tbl " << a << "/" << 5 + j;
    }
  }
  EXPECT_EQ(RecordOf<float>(vi86, (70 - 5) * 111 + (60 - 5)), 26.2f);
}

TEST(GeneratedTableFiles, FactorFileIsWrittenColumnByColumn) {
  const auto s90 = Built("s-90cm.tbl");
  ASSERT_EQ(s90.size(), 44'400u);
  const auto tableS = ReadCsv("table_s_90cm.csv");
  ASSERT_EQ(tableS.size(), 50u * 110u);
  for (std::size_t row = 0; row < 50; ++row) {
    char rate[8];
    std::snprintf(rate, sizeof rate, "%.1f", 4.2 + 0.2 * static_cast<double>(row));
    EXPECT_EQ(RecordOf<double>(s90, row), std::stod(rate));
    for (std::size_t age = 0; age < 110; ++age)
      ASSERT_EQ(RecordOf<double>(s90, (age + 1) * 50 + row), std::stod(tableS.at({rate, std::to_string(age)})))
          << "rate " << rate << " age " << age;
  }
}

TEST(ReadTable, MissingFileIsReportedAndLeavesThatReaderUnloaded) {
  struct Row {
    const char* name;
    std::vector<std::string> present;
    const char* reported;
    bool jointLoaded, singleLoaded;
  } rows[] = {
      {"1986 joint missing: its partner is not tested", {"v86.tbl", "v02.tbl", "vi02.tbl"}, "vi86.tbl", false, true},
      {"2002 single missing: neither single table loads", {"v86.tbl", "vi86.tbl", "vi02.tbl"}, "v02.tbl", true, false},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    RecordingScope scope;
    TempProgramFolder folder(r.present);
    tables::ClearTables();
    tables::ReadTableVI();
    tables::ReadTableV();
    ASSERT_EQ(scope.messages.messages.size(), 2u);
    EXPECT_EQ(scope.messages.Last().text, "The table file " + folder.File(r.reported) + " is damaged: reinstall the program.");
    const Message& m = scope.messages.messages[0];
    EXPECT_EQ(m.title, "File not found");
    EXPECT_EQ(m.text, "File: " + folder.File(r.reported) + " does not exist.Please verify the file is in the correct directory.");
    EXPECT_EQ(m.icon, MsgIcon::Information);
    EXPECT_EQ(Tables().joint86[7270] != 0 && Tables().joint02[7270] != 0, r.jointLoaded);
    EXPECT_EQ(Tables().single86[65] != 0 || Tables().single02[65] != 0, r.singleLoaded);
    EXPECT_EQ(tables::Usable(tables::kJoint86) && tables::Usable(tables::kJoint02), r.jointLoaded);
    EXPECT_EQ(tables::Usable(tables::kSingle86) && tables::Usable(tables::kSingle02), r.singleLoaded);
  }
}

// Any change to a table file, even one that keeps its size, is found: the
// file is named, its table stays empty and unusable, its partner loads.
TEST(ReadTable, DamagedFileIsNamedAndNotUsed) {
  struct Row {
    const char* name;
    const char* file;
    tables::TableId damaged, partner;
    std::function<void(std::string&)> damage;
  } rows[] = {
      {"empty", "vi02.tbl", tables::kJoint02, tables::kJoint86, [](std::string& b) { b.clear(); }},
      {"cut short", "v02.tbl", tables::kSingle02, tables::kSingle86, [](std::string& b) { b.resize(100); }},
      {"one byte more", "v86.tbl", tables::kSingle86, tables::kSingle02, [](std::string& b) { b += '\0'; }},
      {"zeroed", "vi86.tbl", tables::kJoint86, tables::kJoint02, [](std::string& b) { b.assign(b.size(), '\0'); }},
      {"one bit flipped", "v02.tbl", tables::kSingle02, tables::kSingle86, [](std::string& b) { b[8 * 65 + 6] ^= 1; }},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    RecordingScope scope;
    TempProgramFolder folder({"v86.tbl", "v02.tbl", "vi86.tbl", "vi02.tbl"});
    std::string bytes = ReadFileBytes(folder.File(r.file));
    r.damage(bytes);
    WriteFileBytes(folder.File(r.file), bytes);
    tables::ClearTables();
    tables::ReadTableVI();
    tables::ReadTableV();
    ASSERT_EQ(scope.messages.messages.size(), 1u);
    EXPECT_EQ(scope.messages.Last().title, "Damaged Table");
    EXPECT_EQ(scope.messages.Last().text, "The table file " + folder.File(r.file) + " is damaged: reinstall the program.");
    EXPECT_TRUE(scope.errors.errors.empty());
    EXPECT_FALSE(tables::Usable(r.damaged));
    EXPECT_TRUE(tables::Usable(r.partner));
    EXPECT_TRUE(tables::AnyTableDamaged());
  }
  tables::ClearTables();
}

}  // namespace
}  // namespace ira::testing
