// Times the distribution engine: one CalcIraDist, and a projection of 100
// IRAs over 100 years. Prints its figures; it asserts nothing.
#include <chrono>
#include <cstdio>
#include <vector>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "core/base/program.h"
#include "core/engine/rep_calc.h"
#include "core/scenario/scenario.h"
#include "core/tables/tables.h"

namespace {

using Clock = std::chrono::steady_clock;
using namespace ira;

double MicrosSince(Clock::time_point start) {
  return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

void FillScenario(Scenario& s, std::int16_t iras, std::int16_t years) {
  s.Reset();
  s.Gen.OwnerBirthDate = MakeDate(1933, 7, 1);
  s.Gen.SpouseBen = kTrue;
  s.Gen.SpouseBirthDate = MakeDate(1940, 3, 1);
  s.Gen.DistType = kTrue;
  s.Gen.DCY = 2000;
  s.Gen.ProjectionYears = years;
  s.Gen.IncomeCalc = kTrue;
  s.Gen.InflationRate = 3.0f;
  for (int i = 0; i < iras; ++i) {
    IraRecord& ira = s.AddIra();
    ira.Benefit = Money::FromWhole(50000 + 1000 * i);
    ira.RateOfReturn = 4.0f + static_cast<float>(i % 5);
    ira.bRecalc = static_cast<std::int16_t>(i % 4);
    ira.SpouseBen = ToFlag(i % 2 == 0);
    ira.OtherBen = ToFlag(i % 3 == 0);
    ira.BeneBirthDate = MakeDate(1960 + i % 30, 1, 1);
  }
}

}  // namespace

int main() {
  SetProgramFolder(TALLYRA_PROGRAM_DIR);
  tables::ReadTableVI();
  tables::ReadTableV();

  Scenario s;
  FillScenario(s, 1, 0);
  s.Gen.DCY = 2001;  // both regimes
  constexpr int kRounds = 20000;
  rep_calc::IraDistResults results;
  auto start = Clock::now();
  for (int i = 0; i < kRounds; ++i) {
    results = rep_calc::IraDistResults{};
    rep_calc::CalcIraDist(s.Gen, s.Ira[0], results, 0.0f);
  }
  std::printf("CalcIraDist (DCY 2001, spouse and non-spouse): %.2f us per call\n", MicrosSince(start) / kRounds);

  FillScenario(s, 100, 100);
  rep_calc::ProjCells cells;
  std::vector<rep_calc::ProjYearTotals> totals;
  start = Clock::now();
  rep_calc::CalcProjResults(s, cells, totals);
  std::printf("CalcProjResults, 100 IRAs x 100 years: %.1f ms (last year index %d)\n", MicrosSince(start) / 1000.0,
              rep_calc::LastProjYear());
  return 0;
}
