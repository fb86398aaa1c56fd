// The reports under the law in force: each names the rules it followed with
// their authority, and none claims rules that do not govern the year.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "core/base/checked.h"
#include "core/reports/cal_summ.h"
#include "core/reports/dist_calc.h"
#include "core/reports/gen_info.h"
#include "core/reports/proj_rpt.h"
#include "report_test_util.h"

namespace ira::reports::test {
namespace {

using Routine = std::function<void(ReportSink&)>;

class CurrentLawReports : public ReportTest {
 protected:
  // Owner 75 and spouse 63 in 2026; one account with the spouse as sole
  // beneficiary, one left to a child; a two-year projection.
  void Couple2026() {
    gen.RuleSet = kRulesCurrent;
    gen.DistType = kTrue;
    gen.DCY = 2026;
    gen.OwnerBirthDate = D(2, 10, 1951);
    gen.SpouseBen = kTrue;
    gen.SpouseBirthDate = D(11, 20, 1963);
    gen.ProjectionYears = 2;
    IraRecord& spouse = AddIra("Spouse IRA", "400000");
    spouse.SpouseBen = kTrue;
    spouse.FirstYearDist = Money::FromString("1000");  // shown, and said not to count
    IraRecord& child = AddIra("Child IRA", "500000");
    child.OtherBen = kTrue;
    child.BeneficiaryName = FixedText("Sam", kBeneficiaryNameWidth);
    child.BeneBirthDate = D(4, 4, 1990);
  }
};

TEST_F(CurrentLawReports, NameTheirRulesAndNoneThatDoNotGovernTheYear) {
  Couple2026();
  struct Row {
    const char* name;
    Routine routine;
    std::vector<std::string> present;
  } rows[] = {
      {"inputs", DisplayInputs,
       {"Rules: the law in force in each distribution calendar year", "POST APPLICABLE AGE 73",
        "1st Year Distributions (1/1-4/1/2025): $1,000.00\r\n  (Not used: under the law in force it does not reduce"}},
      {"general information", DisplayGenInfo,
       {"Rules: the law in force", "(SECURE 2.0 Act sec. 107: applicable age 73)",
        "IRA Owner's Required Beginning Date: 04/01/2025", "First distribution calendar year: 2024",
        "Distribution must be made by 12/31/2026"}},
      // 400,000 / 26.1 = 15,325.67 (joint 75/63); 500,000 / 24.6 = 20,325.20.
      {"distribution calculations", DispCalcResults,
       {"(Treas. Reg. 1.401(a)(9)-9, tables in force from 2022)", "(Treas. Reg. 1.401(a)(9)-5(c)(2))",
        "(Treas. Reg. 1.401(a)(9)-5(c)(1))", "$15,325.67", "$20,325.20"}},
      {"calendar year summary", DisplayCalSumm, {"COMPUTATIONS USING THE LAW IN FORCE FOR 2026:", "35,650.87"}},
      {"projection", DisplayProjRpt,
       {"Not applicable: repealed for distributions after 1996 (TRA 1997 sec. 1073)"}},
  };
  for (const Row& r : rows) {
    SCOPED_TRACE(r.name);
    const std::string text = RunText(r.routine, ReportMode::File);
    for (const std::string& p : r.present) EXPECT_NE(text.find(p), std::string::npos) << p;
    for (const char* absent : {"2002 final regulations", "2002 FINAL REGULATIONS", "70 and 1/2",
                               "Excess Distribution Limit", "1987 proposed"})
      EXPECT_EQ(text.find(absent), std::string::npos) << absent;
  }
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
