// The reports under the law in force: what they say where no figure is due
// or none could be computed yet.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/base/checked.h"
#include "core/reports/dist_calc.h"
#include "core/reports/gen_info.h"
#include "core/reports/proj_rpt.h"
#include "report_test_util.h"

namespace ira::reports::test {
namespace {

// How each report names the law in force and its authorities, and that none
// claims the described rules, is pinned by the golden batch runs; these are
// the texts those runs do not reach.
using CurrentLawReports = ReportTest;

TEST_F(CurrentLawReports, FirstYearDistributionsAreShownAndSaidNotToCount) {
  // Born 2/10/1951: 73 in 2024, the first year, whose amount may be paid by 4/1/2025.
  gen.RuleSet = kRulesCurrent;
  gen.DistType = kTrue;
  gen.DCY = 2026;
  gen.OwnerBirthDate = D(2, 10, 1951);
  AddIra("IRA", "400000").FirstYearDist = Money::FromString("1000");
  const std::string text = RunText(DisplayInputs, ReportMode::File);
  EXPECT_NE(text.find("1st Year Distributions (1/1-4/1/2025): $1,000.00\r\n  (Not used: under the law in force it "
                      "does not reduce"),
            std::string::npos)
      << text;
}

TEST_F(CurrentLawReports, WaivedYearAndDeathAfter2019SaySoWithoutAFigure) {
  struct Row {
    const char* name;
    std::int16_t dcy;
    Date death;
    std::vector<std::string> present;
    const char* absent;
  } rows[] = {
      {"2020 waived", 2020, kNoDate,
       {" No distribution is required for 2020", "   (CARES Act sec. 2203, IRC 401(a)(9)(I))",
        "  Gross required minimum distribution:                           $0.00",
        "  No distribution required for 2020"},
       "Divide by life expectancy"},
      // The ten-year rule is open to a spouse only before the required
      // beginning date (4/1/2016 here).
      {"died in 2021, the spouse chose the ten-year rule", 2023, D(6, 1, 2021),
       {"(SECURE Act sec. 401(a), IRC 401(a)(9)(E) and (H); T.D. 10001)",
        "  Not computed: the ten-year rule is open to a spouse"},
       "Gross required minimum distribution"},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    TheScenario().Reset();
    gen.RuleSet = kRulesCurrent;
    gen.DistType = kTrue;
    gen.DCY = r.dcy;
    gen.OwnerBirthDate = D(1, 1, 1945);
    gen.OwnerDeathDate = r.death;
    gen.SpouseBirthDate = D(1, 1, 1950);
    IraRecord& ira = AddIra("IRA", "300000");
    ira.SpouseBen = kTrue;
    ira.SpouseChoice = kSpouseTenYear;
    const std::string text = RunText(DispCalcResults, ReportMode::File);
    for (const std::string& p : r.present) EXPECT_NE(text.find(p), std::string::npos) << p;
    EXPECT_EQ(text.find(r.absent), std::string::npos) << text;
  }
}

TEST_F(CurrentLawReports, ProjectionShowsNoFigureForAnAccountNotComputedYet) {
  gen.RuleSet = kRulesCurrent;
  gen.DistType = kTrue;
  gen.DCY = 2024;
  gen.ProjectionYears = 2;
  gen.OwnerBirthDate = D(1, 1, 1945);
  gen.OwnerDeathDate = D(6, 1, 2021);
  gen.SpouseBirthDate = D(1, 1, 1950);
  // A spouse's ten-year rule after the required beginning date: no figure.
  for (const char* name : {"Inherited", "Second"}) {
    IraRecord& ira = AddIra(name, "300000");
    ira.SpouseBen = kTrue;
    ira.SpouseChoice = kSpouseTenYear;
  }
  const std::string text = RunText(DisplayProjRpt, ReportMode::File);
  // With no account left to project the table ends after its first year.
  EXPECT_NE(text.find("Beg. Balance                       Not computed \r\n"), std::string::npos) << text;
  EXPECT_NE(text.find("Total Distributions for year               0.00 \r\n"), std::string::npos);
  EXPECT_NE(text.find("Not computed yet: see the Distribution Calculations report for the reason."),
            std::string::npos);
}

}  // namespace
}  // namespace ira::reports::test
