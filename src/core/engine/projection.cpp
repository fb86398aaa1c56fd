// The projection: every IRA rolled forward year by year from the DCY, with the
// year's required distribution recomputed from the projected balance under
// the rules in force that year, and per-year totals, excess limit and tax.
#include <exception>
#include <string_view>

#include "core/base/checked.h"
#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/progress.h"
#include "core/engine/rep_calc.h"
#include "core/tables/datefun.h"

namespace ira::rep_calc {
namespace {

constexpr std::string_view kWhere = "CalcProjResults()";
constexpr std::string_view kProgressText = "Doing calculations for Projection Report";
// Wording as the support staff know it.
constexpr std::string_view kBadStatus =
    "Error in CalcProjResults() - Ira Status invalid. Please Report this error to Quillon";

enum ProjStatus : std::int16_t { kActive = 1, kExhausted = 2, kNoData = 3, kNotComputed = 4 };

// Per thread: they belong to the scenario of the thread (see TheScenario).
thread_local std::int16_t g_lastProjYear = 0;
thread_local std::int16_t g_overflowYear = 0;

// Income on a balance at a percent rate, to the cent.
Money Income(Money balance, float ratePercent) {
  Decimal rate = DecimalOf(ratePercent);
  rate.scale += 2;
  return RoundAmt(MulDecimal(balance, rate), 2);
}

void Project(Scenario& scenario, ProjCells& cells, std::vector<ProjYearTotals>& totals) {
  const GeneralInputs& gen = scenario.Gen;
  const std::size_t iraCount = static_cast<std::size_t>(gen.IraCount);
  const std::size_t years = static_cast<std::size_t>(gen.ProjectionYears);

  ProgressScope progress(kProgressText);
  cells.assign(iraCount, std::vector<ProjCell>(years));
  totals.assign(years, ProjYearTotals{});
  std::vector<std::int16_t> status(iraCount, kActive);
  std::vector<Money> balance(iraCount);
  for (std::size_t i = 0; i < iraCount; ++i) balance[i] = scenario.Ira.at(i).Benefit;
  int active = gen.IraCount;

  const bool fixedSeries = law::ComputesNoticeSeries(gen) &&
                           (gen.EarlyMethod == kMethodAmortization || gen.EarlyMethod == kMethodAnnuity);
  std::vector<Money> seriesPayment(iraCount);
  const std::int16_t firstDcy = datefun::FirstDCY(gen.OwnerBirthDate);
  std::int16_t second = 2;
  const std::int16_t secondDcy = datefun::CalcDCY(gen.OwnerBirthDate, second);

  for (std::size_t y = 0; y < years; ++y) {
    const std::int16_t year = CheckedInt16(gen.DCY + static_cast<long long>(y), kWhere);
    const bool laterRules = ProjectionUsesLaterRules(gen.DistType, year);
    ProjYearTotals& total = totals[y];
    total.TotalDist = Money();
    total.CombinedEnd = Money();
    // A balance grown past what an amount can hold is a result, not a fault:
    // the projection ends with the last year it could compute.
    try {
      for (std::size_t i = 0; i < iraCount; ++i) {
        ProjCell& cell = cells[i][y];
        switch (status[i]) {
          case kActive: break;
          case kExhausted: cell.Distribution = Money::FromRaw(kProjStoppedRaw); continue;
          case kNoData: cell.Distribution = Money::FromRaw(kProjNoDataRaw); continue;
          case kNotComputed:
            cell.Distribution = Money::FromRaw(kProjNoDataRaw);
            cell.NotComputed = true;
            continue;
          default: ShowMessage(kProgramTitle, std::string(kBadStatus), MsgIcon::None); return;
        }

        GeneralInputs yearGen = gen;
        yearGen.DCY = year;
        IraRecord yearIra = scenario.Ira[i];
        if (y > 0) yearIra.DistributedThisYear = Money();
        if (year != secondDcy) yearIra.FirstYearDist = Money();
        yearIra.Benefit = balance[i];

        IraDistResults results;
        CalcIraDist(yearGen, yearIra, results, gen.PercentOver);
        // Notice 2022-6: the amortization and annuity payments are fixed in
        // the series' first year and paid unchanged every later year.
        if (fixedSeries && results.AgesSupported != kFalse) {
          if (y == 0) seriesPayment[i] = results.GrossLater;
          results.GrossLater = seriesPayment[i];
        }

        if (results.AgesSupported == kFalse) {
          const bool notYet = results.CurrentLaw && law::IsNotComputed(results.Law.basis);
          cell.Distribution = Money::FromRaw(kProjNoDataRaw);
          cell.NotComputed = notYet;
          status[i] = notYet ? kNotComputed : kNoData;
          --active;
        } else {
          cell.BegBalance = balance[i];
          const Money gross = laterRules ? results.GrossLater : results.Gross1987;
          // At least what was already taken is distributed.
          cell.Distribution = gross > results.DistributedThisYear ? gross : results.DistributedThisYear;
          balance[i] = results.AdjustedBenefit;
          const Money income =
              (y > 0 || gen.IncomeCalc != 0) ? Income(balance[i], yearIra.RateOfReturn) : Money();
          // The final year of a ten- or five-year rule empties the account.
          if (results.CurrentLaw && results.Law.basis == law::Basis::kWholeBalance)
            cell.Distribution = balance[i] + income;
          balance[i] = balance[i] + income - cell.Distribution;
          cell.Income = income;
          cell.Distributed = yearIra.DistributedThisYear;
          // From the balance before the first-year adjustment; the running
          // balance carries it, so the two differ in the second DCY.
          cell.EndBalance = cell.BegBalance + cell.Income - cell.Distribution;
        }

        // Sentinels included: an account found unsupported this year still
        // counts in this year's totals. One whose rules are not computed yet
        // has no figure to add.
        if (status[i] != kNotComputed) {
          total.TotalDist += cell.Distribution;
          total.CombinedEnd += balance[i];
        }
        // The first-year distributions belong to the owner's first DCY only.
        // The law in force never uses it, and leaves the user's figure alone.
        if (year == firstDcy && !law::ComputesRequiredYear(gen, year)) scenario.Ira[i].FirstYearDist = Money();
        if (status[i] == kActive && balance[i] <= Money()) {
          status[i] = kExhausted;
          --active;
        }
        if (active < 1) g_lastProjYear = CheckedInt16(static_cast<long long>(y), kWhere);
      }

      // Under the law in force the excess distribution tax is gone after 1996.
      const bool repealed = law::UsesCurrentLaw(gen) && law::ExcessRepealed(year);
      total.Limit = repealed ? Money::FromRaw(kNoLimitRaw) : GetExcessDistLimit(gen.InflationRate, year);
      if (!repealed && total.TotalDist > total.Limit) {
        total.Excess = total.TotalDist - total.Limit;
        total.Tax = MulBinarySingle(total.Excess, kExcessTaxRate);
      } else {
        total.Excess = Money();
        total.Tax = Money();
      }
    } catch (const OverflowError&) {
      g_overflowYear = year;
      g_lastProjYear = CheckedInt16(static_cast<long long>(y) - 1, kWhere);
      total = ProjYearTotals{};
      return;
    }
    if (active < 1) break;
  }
}

}  // namespace

void CalcProjResults(Scenario& scenario, ProjCells& cells, std::vector<ProjYearTotals>& totals) {
  const GeneralInputs& gen = scenario.Gen;
  try {
    g_lastProjYear = CheckedInt16(static_cast<long long>(gen.ProjectionYears) - 1, kWhere);
    g_overflowYear = 0;
    if (gen.IraCount == 0 || gen.ProjectionYears < 1) return;
    if (!ProjectionFits(gen)) {
      g_lastProjYear = -1;  // checked before anything is allocated
      return;
    }
    Project(scenario, cells, totals);
  } catch (const std::exception& e) {
    ReportUnexpected(kWhere, e);
  }
}

std::int16_t LastProjYear() { return g_lastProjYear; }

std::int16_t ProjOverflowYear() { return g_overflowYear; }

}  // namespace ira::rep_calc
