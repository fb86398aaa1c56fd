// Random scenarios within what the dialogs accept, through the engine and
// every report in every mode: no crash, no error but a reported overflow or
// division (or the 90CM table's subscript for a rate it does not hold), no
// block the page manager refuses, no page over its length, no grid row of the
// wrong width. The sanitizer build turns any silent overflow or undefined
// conversion on the way into a failure.
//   TALLYRA_RANDOM_SCENARIOS=N  how many (default 200)
//   TALLYRA_RANDOM_SEED=S       the first seed (default 2014); scenario i uses S + i
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/program.h"
#include "core/reports/display_master.h"
#include "core/reports/prnmastr.h"
#include "core/scenario/scenario.h"
#include "core/tables/tables.h"
#include "support/fake_print_device.h"
#include "support/recording_sinks.h"
#include "support/scenario_files.h"

namespace ira::testing {
namespace {

using reports::ReportMode;

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : m_gen(seed) {}
  int Int(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(m_gen); }
  bool Chance(int percent) { return Int(1, 100) <= percent; }
  // A number as typed in an entry: at most two decimals.
  float Typed(int loCents, int hiCents) { return static_cast<float>(Int(loCents, hiCents)) / 100.0f; }
  std::int16_t Flag() { return ToFlag(Chance(50)); }
  Date DateIn(int firstYear, int lastYear) {
    return MakeDate(firstYear, 1, 1) + Int(0, (lastYear - firstYear + 1) * 365);
  }
  Money Amount(std::int64_t maxDollars) {
    std::uniform_int_distribution<std::int64_t> cents(0, maxDollars * 100);
    return Money::FromRaw(cents(m_gen) * 100);
  }
  std::string Text(std::size_t width) {
    static const char* const kPieces[] = {"Ann", "Bj\xC3\xB6rn", " ", "IRA", "\xE2\x82\xAC", "#", "Roll-over", "'"};
    std::string text;
    const int n = Int(0, 8);
    for (int i = 0; i < n; ++i) text += kPieces[Int(0, 7)];
    return FixedText(text, width);
  }

 private:
  std::mt19937_64 m_gen;
};

Scenario RandomScenario(Dice& d) {
  Scenario s;
  GeneralInputs& g = s.Gen;
  g.OwnerName = d.Text(kOwnerNameWidth);
  g.OtherInfo = d.Text(kOtherInfoWidth);
  g.OwnerBirthDate = d.DateIn(1900, 2005);
  const int birthYear = YearOf(g.OwnerBirthDate);
  if (d.Chance(30)) g.OwnerDeathDate = g.OwnerBirthDate + d.Int(20 * 365, 100 * 365);
  g.SpouseBen = d.Flag();
  g.SpouseBirthDate = d.Chance(90) ? d.DateIn(birthYear - 25, birthYear + 40) : kNoDate;
  g.DistType = d.Chance(70) ? kTrue : kFalse;
  // Mostly a year the type check would let stand, sometimes any year.
  g.DCY = static_cast<std::int16_t>(d.Chance(80) ? (g.DistType != 0 ? birthYear + d.Int(70, 100) : birthYear + d.Int(30, 59))
                                                 : d.Int(1988, 2060));
  g.EarlyMethod = static_cast<std::int16_t>(d.Int(0, 2));
  g.InflationRate = d.Typed(-1, 1200);
  g.IntRate = d.Typed(0, 1500);
  g.AnnuityOverride = d.Flag();
  g.AnnuityFactor = d.Typed(0, 3000);
  g.AnnuityIntRate = d.Chance(90) ? d.Typed(420, 1400) : d.Typed(0, 2000);
  g.ProjectionYears = static_cast<std::int16_t>(d.Chance(60) ? d.Int(1, 40) : d.Chance(50) ? 0 : d.Int(41, 150));
  g.IncomeCalc = d.Flag();
  g.PercentOver = d.Typed(0, 15000);
  const int iras = d.Int(0, 8);
  for (int i = 0; i < iras; ++i) {
    IraRecord& r = s.AddIra();
    r.IraName = d.Text(kIraNameWidth);
    r.SpouseBen = d.Flag();
    r.OtherBen = d.Flag();
    r.BeneficiaryName = d.Text(kBeneficiaryNameWidth);
    r.BeneBirthDate = d.DateIn(1900, 2020);
    r.Benefit = d.Amount(d.Chance(90) ? 5'000'000 : 900'000'000);
    r.DistributedThisYear = d.Chance(50) ? Money() : d.Amount(50'000);
    r.FirstYearDist = d.Chance(70) ? Money() : d.Amount(50'000);
    r.RateOfReturn = d.Typed(-1000, 2500);
    r.bRecalc = static_cast<std::int16_t>(d.Int(0, 3));
    r.chkUse2002Table = d.Flag();
  }
  // Drawn last, so the rest of each seed's scenario stays as it was.
  g.RuleSet = d.Chance(50) ? kRulesCurrent : kRulesDescribed;
  g.Age1959 = d.Chance(50) ? kAge1959Default : kAge1959Alternative;
  return s;
}

class GridCheckingViewer : public reports::ReportViewer {
 public:
  std::vector<std::string> faults;
  void ShowText(const std::string&, const std::string&) override {}
  void ShowGrid(const reports::GridReport& grid) override {
    for (std::size_t row = 0; row < grid.cells.size(); ++row) {
      if (grid.cells[row].size() != grid.columnWidths.size())
        faults.push_back(grid.caption + ": row " + std::to_string(row) + " has " +
                         std::to_string(grid.cells[row].size()) + " cells for " +
                         std::to_string(grid.columnWidths.size()) + " columns");
    }
  }
  void ShowProjectionHelp() override {}
};

// What went wrong with one scenario, empty when nothing did.
std::string RunEveryReport(const Scenario& scenario, const std::string& outputFile) {
  std::ostringstream faults;
  RecordingScope rec;
  constexpr int kPageLength = 66;
  FakePrintDevice printer(kPageLength);
  GridCheckingViewer viewer;
  for (ReportMode mode : {ReportMode::View, ReportMode::Print, ReportMode::File}) {
    TheScenario() = scenario;
    reports::PrnManager2(printer, reports::kPrnReset, "", "", "");
    reports::DisplayMaster(mode, reports::kRptAll, reports::ReportTarget{&viewer, &printer, outputFile});
  }
  for (const RecordedError& e : rec.errors.errors) {
    if (e.number != kErrOverflow && e.number != kErrDivisionByZero && e.number != kErrSubscript)
      faults << "error " << e.number << " in " << e.where << ": " << e.text << "\n";
  }
  for (const Message& m : rec.messages.messages) {
    // A refused block or an inconsistency the program asks to have reported.
    if (m.title == reports::kPrnErrorTitle || m.text.find(kSupportPhone) != std::string::npos)
      faults << "message " << m.title << ": " << m.text << "\n";
  }
  for (std::size_t p = 0; p < printer.pages.size(); ++p) {
    if (printer.pages[p].size() > static_cast<std::size_t>(kPageLength))
      faults << "page " << p + 1 << " holds " << printer.pages[p].size() << " lines\n";
  }
  for (const std::string& f : viewer.faults) faults << f << "\n";
  return faults.str();
}

std::uint64_t FromEnvironment(const char* name, std::uint64_t fallback) {
  const char* value = std::getenv(name);
  return value != nullptr && *value != '\0' ? std::strtoull(value, nullptr, 10) : fallback;
}

TEST(RandomScenarios, RunThroughEveryReportInEveryMode) {
  SetProgramFolder(TALLYRA_PROGRAM_DIR);
  tables::ReadTableVI();
  tables::ReadTableV();
  tables::ReadTables2022();
  TempFolder folder;
  const std::uint64_t count = FromEnvironment("TALLYRA_RANDOM_SCENARIOS", 200);
  const std::uint64_t first = FromEnvironment("TALLYRA_RANDOM_SEED", 2014);
  int failed = 0;
  for (std::uint64_t seed = first; seed < first + count && failed < 5; ++seed) {
    Dice dice(seed);
    const std::string faults = RunEveryReport(RandomScenario(dice), folder.File("reports.txt"));
    if (!faults.empty()) {
      ADD_FAILURE() << "TALLYRA_RANDOM_SEED=" << seed << " TALLYRA_RANDOM_SCENARIOS=1\n" << faults;
      ++failed;
    }
  }
  TheScenario().Reset();
}

}  // namespace
}  // namespace ira::testing
