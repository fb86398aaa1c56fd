// The extension block after the IRA records, checked against blocks built by
// hand from the layout table rather than by the program's writer.
#include <gtest/gtest.h>

#include "core/scenario/file.h"
#include "support/recording_sinks.h"
#include "support/scenario_files.h"

namespace ira::file {
namespace {

using namespace ira::testing;

std::string I16(std::int16_t v) { return std::string(reinterpret_cast<const char*>(&v), 2); }
std::string I32(std::int32_t v) { return std::string(reinterpret_cast<const char*>(&v), 4); }
std::string Chunk(std::string_view id, const std::string& payload) {
  return std::string(id) + I32(static_cast<std::int32_t>(payload.size())) + payload;
}
std::string Block(const std::string& chunks, std::int16_t version = 1) {
  return "TLYEXT" + I16(version) + I32(static_cast<std::int32_t>(chunks.size())) + chunks;
}
std::string Rule(std::int16_t set, std::int16_t age) { return Chunk("RULE", I16(set) + I16(age)); }
std::string BeneEntry(std::int16_t kind, std::int16_t choice, std::int16_t year, std::int16_t kept) {
  return I16(kind) + I16(choice) + I16(year) + I16(kept);
}

// The scenario with every addition at its default, as a file without the block reads.
Scenario WithoutAdditions(Scenario s) {
  s.Gen.RuleSet = kRulesDescribed;
  s.Gen.Age1959 = kAge1959Default;
  for (IraRecord& r : s.Ira) r.BeneKind = r.SpouseChoice = r.SpouseChoiceYear = r.BeneKept = 0;
  s.OtherChunks.clear();
  return s;
}

struct Written {
  const char* name;
  Scenario scenario;
  std::string block;  // the bytes expected after the IRA records
};

std::vector<Written> WrittenRows() {
  std::vector<Written> rows;
  rows.push_back({"defaults", FullScenario(2), ""});
  Scenario current = FullScenario(0);
  current.Gen.RuleSet = kRulesCurrent;
  rows.push_back({"rule set 1, no IRAs", current, Block(Rule(1, 73))});
  Scenario age = FullScenario(1);
  age.Gen.Age1959 = 75;
  rows.push_back({"1959 age 75 only", age, Block(Rule(0, 75))});
  Scenario bene = FullScenario(2);
  bene.Ira[1].BeneKind = kBeneChronicallyIll;
  bene.Ira[1].SpouseChoiceYear = 2031;
  rows.push_back({"one IRA's details", bene, Block(Chunk("BENE", BeneEntry(0, 0, 0, 0) + BeneEntry(3, 0, 2031, 0)))});
  Scenario all = FullScenario(2);
  all.Gen.RuleSet = kRulesCurrent;
  all.Gen.Age1959 = 75;
  all.Ira[0].SpouseChoice = kSpouseTreatedAsOwner;
  all.Ira[0].BeneKept = -1;
  all.OtherChunks.push_back({{'N', 'O', 'T', 'E'}, {1, 2, 3}});
  all.OtherChunks.push_back({{'z', 'z', 'z', '0'}, {}});
  rows.push_back({"everything and later chunks", all,
                  Block(Rule(1, 75) + Chunk("BENE", BeneEntry(0, 3, 0, -1) + BeneEntry(0, 0, 0, 0)) +
                        Chunk("NOTE", "\x01\x02\x03") + Chunk("zzz0", ""))});
  Scenario later = FullScenario(1);
  later.OtherChunks.push_back({{'X', 'Y', 'Z', 'W'}, {0xFF}});
  rows.push_back({"later chunks only", later, Block(Chunk("XYZW", "\xFF"))});
  return rows;
}

// The block is written only when needed, reads back the same scenario, and
// cut off it leaves the same scenario under the described rules.
TEST(Extension, WritesReadsAndCutsOffTheBlock) {
  RecordingScope rec;
  TempFolder folder;
  for (const Written& row : WrittenRows()) {
    const std::string path = folder.File("plan.ira");
    SaveFile(path, row.scenario);
    const std::string records = FileBytes(row.scenario, FileVersion::Current);
    EXPECT_EQ(ReadFileBytes(path), records + row.block) << row.name;

    Scenario loaded;
    ASSERT_TRUE(OpenFile(path, loaded)) << row.name;
    EXPECT_EQ(loaded, row.scenario) << row.name;

    Scenario cut;
    ASSERT_TRUE(OpenData("cut.ira", AsBytes(records), cut)) << row.name;
    EXPECT_EQ(cut, WithoutAdditions(row.scenario)) << row.name;
    EXPECT_EQ(cut.Gen.RuleSet, kRulesDescribed) << row.name;
  }
  EXPECT_TRUE(rec.messages.messages.empty());
}

// Every file this version reads without a notice is saved back byte for
// byte, whatever the records hold and whichever chunks follow.
TEST(Extension, SavesBackWhatItReadsByteForByte) {
  const std::string two = FileBytes(FullScenario(2), FileVersion::Current);
  const std::string none = FileBytes(FullScenario(0), FileVersion::Current);
  const std::string files[] = {
      two,
      none,
      none + Block(Rule(1, 73)),
      two + Block(Rule(0, 75) + Chunk("BENE", BeneEntry(4, 2, 0, 0) + BeneEntry(1, 1, 2030, 77))),
      two + Block(Chunk("BENE", BeneEntry(2, 0, 0, 0) + BeneEntry(0, 0, 0, 0)) + Chunk("ABCD", "payload")),
      none + Block(Rule(1, 75) + Chunk("\x01\x02\x03\x04", std::string(300, '\0')) + Chunk("LAST", "")),
  };
  RecordingScope rec;
  TempFolder folder;
  for (const std::string& bytes : files) {
    WriteFileBytes(folder.File("in.ira"), bytes);
    Scenario s;
    ASSERT_TRUE(OpenFile(folder.File("in.ira"), s));
    SaveFile(folder.File("out.ira"), s);
    EXPECT_EQ(ReadFileBytes(folder.File("out.ira")), bytes);
  }
  EXPECT_TRUE(rec.messages.messages.empty());
}

// A damaged block still loads: what is whole is kept (chunks of later
// versions too), the rest takes its defaults, and one notice names the file.
// Bytes after the records that are no block, or a 1959 age that is neither
// 73 nor 75, are no damage.
TEST(Extension, DamagedBlocksLoadWithDefaultsAndOneNotice) {
  const std::string recs = FileBytes(FullScenario(2), FileVersion::Current);
  const std::string bene = Chunk("BENE", BeneEntry(1, 2, 2030, 5) + BeneEntry(4, 0, 0, 0));
  const std::string later = Chunk("LATR", "abc");
  struct Row {
    const char* name;
    std::string block;
    bool notice;
    std::int16_t ruleSet, age, kind0, kind1;
    std::size_t laterChunks;
  } rows[] = {
      {"whole", Block(Rule(1, 75) + bene + later), false, 1, 75, 1, 4, 1},
      {"not a block", "TLYEXX" + Block(Rule(1, 75)), false, 0, 73, 0, 0, 0},
      {"1959 age 74", Block(Rule(1, 74)), false, 1, 73, 0, 0, 0},
      {"header cut", "TLYEXT\x01", true, 0, 73, 0, 0, 0},
      {"block version 2", Block(Rule(1, 75), 2), true, 0, 73, 0, 0, 0},
      {"block runs past the end", Block(Rule(1, 75) + bene + later).substr(0, 12 + 12 + 20), true, 1, 75, 0, 0, 0},
      {"chunk runs past the block", Block(Rule(1, 75) + later + "BENE" + I32(16)), true, 1, 75, 0, 0, 1},
      {"negative length", Block(Rule(1, 75) + "BENE" + I32(-8)), true, 1, 75, 0, 0, 0},
      {"BENE for one IRA", Block(Rule(1, 75) + Chunk("BENE", BeneEntry(1, 0, 0, 0)) + later), true, 1, 75, 0, 0, 1},
      {"RULE of 6 bytes", Block(Chunk("RULE", I16(1) + I16(75) + I16(0)) + bene), true, 0, 73, 1, 4, 0},
      {"unknown rule set", Block(Rule(7, 75) + bene), true, 0, 73, 1, 4, 0},
      {"unknown beneficiary kind", Block(Chunk("BENE", BeneEntry(9, 0, 0, 0) + BeneEntry(4, 0, 0, 0))), true, 0, 73,
       0, 4, 0},
      {"RULE twice", Block(Rule(1, 75) + Rule(0, 73) + later), true, 1, 75, 0, 0, 1},
  };
  for (const Row& row : rows) {
    RecordingScope rec;
    Scenario s;
    ASSERT_TRUE(OpenData("plan.ira", AsBytes(recs + row.block), s)) << row.name;
    EXPECT_EQ(s.Gen.RuleSet, row.ruleSet) << row.name;
    EXPECT_EQ(s.Gen.Age1959, row.age) << row.name;
    EXPECT_EQ(s.Ira[0].BeneKind, row.kind0) << row.name;
    EXPECT_EQ(s.Ira[1].BeneKind, row.kind1) << row.name;
    EXPECT_EQ(s.OtherChunks.size(), row.laterChunks) << row.name;
    if (row.laterChunks > 0) {
      EXPECT_EQ(s.OtherChunks[0].Payload, (std::vector<std::uint8_t>{'a', 'b', 'c'})) << row.name;
    }
    // The records themselves are never touched by a bad block.
    EXPECT_EQ(WithoutAdditions(s), FullScenario(2)) << row.name;
    ASSERT_EQ(rec.messages.messages.size(), row.notice ? 1u : 0u) << row.name;
    if (row.notice) {
      EXPECT_EQ(rec.messages.Last().title, "File Error") << row.name;
      EXPECT_TRUE(rec.messages.Last().text.starts_with("The file plan.ira is partly damaged")) << row.name;
    }
  }
}

// The beneficiary details travel with their IRA when the list changes.
TEST(Extension, AddingAndRemovingAnIraCarriesItsDetails) {
  TempFolder folder;
  Scenario s = FullScenario(3);
  for (std::int16_t i = 0; i < 3; ++i) s.Ira[static_cast<std::size_t>(i)].BeneKind = static_cast<std::int16_t>(i + 1);
  s.RemoveIra(1);
  s.AddIra();
  SaveFile(folder.File("list.ira"), s);
  const std::string expected = FileBytes(s, FileVersion::Current) +
                               Block(Chunk("BENE", BeneEntry(1, 0, 0, 0) + BeneEntry(3, 0, 0, 0) + BeneEntry(0, 0, 0, 0)));
  EXPECT_EQ(ReadFileBytes(folder.File("list.ira")), expected);
}

}  // namespace
}  // namespace ira::file
