#include <gtest/gtest.h>

#include "core/base/calendar.h"
#include "dialogs/rules/ginputs.h"
#include "support/recording_sinks.h"

using namespace ira;
using namespace ira::ginputs;

namespace {

// Which checks speak when a date entry of the general inputs is left.
TEST(DateEntries, EachCheckSpeaksOnlyWhenItHasWhatItNeeds) {
  SetTodayForTesting(MakeDate(2014, 6, 1));
  struct Row {
    const char* name;
    void (*entered)(const GenEntries&);
    GenEntries e;
    std::vector<std::string> titles;
  };
  const auto entries = [](std::string owner, std::string dcy, std::int16_t type, bool spouse = false,
                          std::string spouseBD = "", std::string death = "") {
    GenEntries e;
    e.ownerBirthday = std::move(owner);
    e.dcy = std::move(dcy);
    e.distType = type;
    e.spouseBen = spouse;
    e.spouseBirthday = std::move(spouseBD);
    e.deathDate = std::move(death);
    return e;
  };
  const std::vector<Row> rows = {
      {"empty birthday is not checked", OwnerBirthdayEntered, entries("", "2014", kAfter70Half), {}},
      {"impossible date", OwnerBirthdayEntered, entries("2/30/1950", "2014", kAfter70Half), {"WARNING"}},
      {"70 1/2 on 12/30/1987: cut-off", OwnerBirthdayEntered, entries("6/30/1917", "2014", kAfter70Half),
       {"WARNING!"}},
      {"no cut-off for early distributions", OwnerBirthdayEntered, entries("6/30/1917", "1970", kBefore59Half),
       {}},
      {"owner too young for the tables", OwnerBirthdayEntered, entries("1/1/2012", "2014", kAfter70Half),
       {"Data not available"}},
      {"no DCY yet: no range check", OwnerBirthdayEntered, entries("1/1/2012", "", kAfter70Half), {}},
      {"spouse too young for the joint table", SpouseBirthdayEntered,
       entries("1/1/1940", "2014", kAfter70Half, true, "1/1/2012"), {"Data not available!"}},
      {"spouse no beneficiary: no joint check", SpouseBirthdayEntered,
       entries("1/1/1940", "2014", kAfter70Half, false, "1/1/2012"), {}},
      {"spouse born 151 years ago", SpouseBirthdayEntered, entries("", "2014", kAfter70Half, false, "1/1/1863"),
       {"Please Verify"}},
      {"empty date of death: living", DeathDateEntered, entries("1/1/1940", "2014", kAfter70Half), {}},
      {"bad date of death", DeathDateEntered,
       entries("1/1/1940", "2014", kAfter70Half, false, "", "yesterday"), {"WARNING"}},
  };
  for (const Row& row : rows) {
    ira::testing::RecordingScope rec;
    row.entered(row.e);
    std::vector<std::string> titles;
    for (const auto& m : rec.messages.messages) titles.push_back(m.title);
    EXPECT_EQ(titles, row.titles) << row.name;
  }
  SetTodayForTesting(std::nullopt);
}

}  // namespace
