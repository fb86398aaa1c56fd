// The writers of the batch results on figures set by hand: the CSV quoting,
// the number and date forms, the rule set carried through; the engine's own
// figures are checked end to end in tests/batch.
#include <gtest/gtest.h>

#include "core/reports/results_csv.h"
#include "core/reports/results_json.h"
#include "support/installed_tables.h"

namespace ira::reports {
namespace {

TEST(CsvField, QuotesOnlyWhatMustBeQuoted) {
  struct Row { const char* in; const char* out; } rows[] = {
      {"plain text", "plain text"},
      {"", ""},
      {"Smith, John", "\"Smith, John\""},
      {"say \"hi\"", "\"say \"\"hi\"\"\""},
      {"two\r\nlines", "\"two\r\nlines\""},
      {"Zoë", "Zoë"},  // UTF-8 passes as it is
  };
  for (const Row& r : rows) EXPECT_EQ(CsvField(r.in), r.out) << r.in;
}

// A scenario under the law in force with one account whose figures are set by hand.
struct HandFigures {
  Scenario scenario;
  ScenarioFigures figures;
  HandFigures() {
    scenario.Reset();
    scenario.Gen.OwnerName = FixedText("Ann Lee", kOwnerNameWidth);
    scenario.Gen.DCY = 2024;
    scenario.Gen.DistType = -1;
    scenario.Gen.RuleSet = kRulesCurrent;
    scenario.AddIra().IraName = FixedText("Main", kIraNameWidth);
    AccountFigures& a = figures.accounts.emplace_back();
    a.name = "Main";
    a.dueDate = MakeDate(2024, 12, 31);
    a.divisor = 25.3f;
    a.balance = Money::FromString("1234.5");
    a.required = Money::FromString("48.795");  // a tie: half away from zero, 48.80
    a.alreadyDistributed = Money::FromString("50");
    a.stillToPay = Money::FromString("-1.205");  // -1.21
    figures.totals = {1, 1, a.balance, a.required, a.alreadyDistributed, a.stillToPay};
    figures.laterRules = true;
  }
};

TEST(ResultsCsv, AmountsDatesAndTheRuleSet) {
  const HandFigures h;
  EXPECT_EQ(SummaryCsvRows("lee.ira", h.scenario, h.figures),
            "lee.ira,Ann Lee,Main,1,2024,2024-12-31,1234.50,25.30,48.80,50.00,-1.21,,ok,\r\n");
  EXPECT_EQ(TotalsCsvRow("lee.ira", h.scenario, h.figures),
            "lee.ira,Ann Lee,1,2024,1,1,1234.50,48.80,50.00,-1.21,ok,\r\n");
  EXPECT_EQ(SummaryCsvReadError("x.ira", "File Error: bad, very"),
            "x.ira,,,,,,,,,,,,read error,\"File Error: bad, very\"\r\n");
}

TEST(ResultsJson, ExactAmountsAndTheInputsAsRead) {
  const HandFigures h;
  const std::string doc = ResultsJson("lee.ira", h.scenario, h.figures);
  for (const char* part : {"\"format\": \"tallyra-results\"", "\"ruleSet\": 1", "\"ownerName\": \"Ann Lee\"",
                           "\"required\": \"48.795\"", "\"stillToPay\": \"-1.205\"", "\"balance\": \"1234.50\"",
                           "\"ownerBirthDate\": null", "\"projection\": null"})
    EXPECT_NE(doc.find(part), std::string::npos) << part << " in\n" << doc;
}

// Through the engine: a year the law in force waives is a row with zero
// figures, no due date and its own status, counted as computed.
TEST(ResultsCsv, WaivedYearIsARowOfZerosWithItsStatus) {
  testing::LoadInstalledTables();
  Scenario s;
  s.Reset();
  s.Gen.OwnerName = FixedText("Ann Lee", kOwnerNameWidth);
  s.Gen.OwnerBirthDate = MakeDate(1945, 1, 1);  // 70 1/2 on 7/1/2015
  s.Gen.DCY = 2020;                             // no distribution required (CARES Act sec. 2203)
  s.Gen.DistType = -1;
  s.Gen.RuleSet = kRulesCurrent;
  IraRecord& ira = s.AddIra();
  ira.IraName = FixedText("Main", kIraNameWidth);
  ira.Benefit = Money::FromWhole(100'000);
  const ScenarioFigures figures = ComputeFigures(s);
  EXPECT_EQ(SummaryCsvRows("lee.ira", s, figures), "lee.ira,Ann Lee,Main,1,2020,,100000.00,,0.00,0.00,0.00,,waived,\r\n");
  EXPECT_EQ(TotalsCsvRow("lee.ira", s, figures), "lee.ira,Ann Lee,1,2020,1,1,100000.00,0.00,0.00,0.00,ok,\r\n");
}

// A schedule with a final year carries it: owner born 1945 died in 2022
// after the required beginning date; the daughter, born 1975, is not an
// eligible beneficiary: annual amounts, empty by 12/31/2032. 2025:
// max(38.1 - 2, 13.3 - 3) = 36.1; 300,000.00 / 36.1 = 8,310.2493.
TEST(ResultsCsv, FinalYearOfTheTenYearRule) {
  testing::LoadInstalledTables();
  Scenario s;
  s.Reset();
  s.Gen.OwnerName = FixedText("Ann Lee", kOwnerNameWidth);
  s.Gen.OwnerBirthDate = MakeDate(1945, 1, 1);
  s.Gen.OwnerDeathDate = MakeDate(2022, 6, 1);
  s.Gen.DCY = 2025;
  s.Gen.DistType = -1;
  s.Gen.RuleSet = kRulesCurrent;
  IraRecord& ira = s.AddIra();
  ira.IraName = FixedText("Main", kIraNameWidth);
  ira.OtherBen = -1;
  ira.BeneBirthDate = MakeDate(1975, 1, 1);
  ira.Benefit = Money::FromWhole(300'000);
  const ScenarioFigures figures = ComputeFigures(s);
  EXPECT_EQ(SummaryCsvRows("lee.ira", s, figures),
            "lee.ira,Ann Lee,Main,1,2025,2025-12-31,300000.00,36.10,8310.25,0.00,8310.25,2032,ok,\r\n");
  EXPECT_NE(ResultsJson("lee.ira", s, figures).find("\"finalYear\": 2032"), std::string::npos);
  // 2024's annual amount (divisor 38.1 - 1 = 37.1) is waived by Notice 2024-35: nothing to pay, same final year.
  s.Gen.DCY = 2024;
  EXPECT_EQ(SummaryCsvRows("lee.ira", s, ComputeFigures(s)),
            "lee.ira,Ann Lee,Main,1,2024,,300000.00,37.10,0.00,0.00,0.00,2032,waived,\r\n");
}

}  // namespace
}  // namespace ira::reports
