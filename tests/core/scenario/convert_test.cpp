#include <gtest/gtest.h>

#include "core/scenario/file.h"
#include "support/recording_sinks.h"
#include "support/scenario_files.h"

namespace ira::file {
namespace {

using namespace ira::testing;

TEST(ConvLegacyFamily, RefusesOtherContent) {
  const std::string oldDos = "The file you selected does not match the Tallyra format, or is a DOS version that is no longer supported.";
  struct Row {
    const char* tag;
    const char* title;
  } rows[] = {
      {"VESK1995.10", "Old Data File"},  {"VESK1997.20", "Incorrect File"}, {"VESK1999.2", "Incorrect File"},
      {"VESK2014.10", "Incorrect File"}, {"NOTVB", "Incorrect File"},
  };
  for (const Row& row : rows) {
    RecordingScope rec;
    Scenario s = FullScenario(1);
    EXPECT_FALSE(OpenData("x.ira", AsBytes(FileBytes(FullScenario(1), FileVersion::Legacy, row.tag)), s));
    EXPECT_EQ(s, FullScenario(1));
    ASSERT_EQ(rec.messages.messages.size(), 1u);
    const Message& m = rec.messages.Last();
    EXPECT_EQ(m.title, row.title) << row.tag;
    EXPECT_EQ(m.icon, MsgIcon::Information);
    if (std::string(row.title) == "Old Data File") {
      EXPECT_EQ(m.text, oldDos);
    } else {
      EXPECT_TRUE(m.text.starts_with("The file you specified does not match the IRA Distribution ")) << m.text;
      EXPECT_TRUE(m.text.ends_with(" Calendar format.")) << m.text;
      EXPECT_NE(m.text.find("x.ira"), std::string::npos) << m.text;
    }
  }
}

// Files from before the switch existed use the user's factor exactly when it
// is above 0.1; later files keep their own switch.
TEST(Converters, DeriveTheOverrideSwitchOnlyWhereTheFileHasNone) {
  struct Row {
    FileVersion version;
    float factor;
    std::int16_t stored;
    std::int16_t expected;
  } rows[] = {
      {FileVersion::V1999_2, 0.1f, -1, 0},  {FileVersion::V1999_2, 0.11f, 0, -1},
      {FileVersion::Legacy, 0.1f, -1, 0},   {FileVersion::Legacy, 0.11f, 0, -1},
      {FileVersion::V2000_1, 0.11f, 0, 0},  {FileVersion::V2001, 0.0f, -1, -1},
  };
  for (const Row& row : rows) {
    Scenario s = FullScenario(0);
    s.Gen.AnnuityFactor = row.factor;
    s.Gen.AnnuityOverride = row.stored;
    Scenario loaded;
    ASSERT_TRUE(OpenData("f.ira", AsBytes(FileBytes(s, row.version)), loaded));
    EXPECT_EQ(loaded.Gen.AnnuityOverride, row.expected) << static_cast<int>(row.version) << " " << row.factor;
    EXPECT_TRUE(loaded.Ira.empty());
    EXPECT_EQ(loaded.Gen.IraCount, 0);
  }
}

}  // namespace
}  // namespace ira::file
