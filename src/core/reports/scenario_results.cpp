#include "core/reports/scenario_results.h"

#include "core/base/text.h"
#include "core/law/law.h"

namespace ira::reports {

std::optional<float> ApplicableLifeExp(float value) {
  if (value >= rep_calc::kNotApplicableRequired || value <= rep_calc::kNotApplicableEarly) return std::nullopt;
  return value;
}

ScenarioFigures ComputeFigures(const Scenario& scenario) {
  const GeneralInputs& gen = scenario.Gen;
  ScenarioFigures figures;
  figures.laterRules = SummaryUsesLaterRules(gen);
  const bool series = IsEarlySeries(gen);
  ScenarioTotals& totals = figures.totals;
  for (const IraRecord& ira : scenario.Ira) {
    AccountFigures& a = figures.accounts.emplace_back();
    a.name = Trim(ira.IraName);
    rep_calc::CalcIraDist(gen, ira, a.results, 0.0f);
    a.deadline = rep_calc::DistDeadLine(gen, ira);
    a.dueDate = ParseDate(a.deadline);
    ++totals.accounts;
    const rep_calc::IraDistResults& r = a.results;
    if (r.TableDamaged) {
      a.status = AccountStatus::TableDamaged;
      continue;
    }
    if (r.CurrentLaw && law::IsNotComputed(r.Law.basis)) {
      a.status = AccountStatus::NotComputedYet;
      continue;
    }
    if (r.AgesSupported == 0) {
      a.status = AccountStatus::AgesNotSupported;
      continue;
    }
    if (r.CurrentLaw && (r.Law.basis == law::Basis::kWaived || r.Law.basis == law::Basis::kAnnualWaived))
      a.status = AccountStatus::Waived;
    if (r.CurrentLaw && r.Law.finalYear > 0) a.finalYear = r.Law.finalYear;
    const std::int16_t slot = figures.laterRules ? r.SlotLater : r.Slot1987;
    if (!series && slot >= 0 && slot < rep_calc::kSlotCount)
      a.divisor = ApplicableLifeExp(r.DcyLifeExp[static_cast<std::size_t>(slot)]);
    a.balance = r.AdjustedBenefit;
    a.required = figures.laterRules ? r.GrossLater : r.Gross1987;
    a.alreadyDistributed = r.DistributedThisYear;
    a.stillToPay = figures.laterRules ? r.ToPayLater : r.ToPay1987;
    ++totals.computed;
    totals.balance += a.balance;
    totals.required += a.required;
    totals.alreadyDistributed += a.alreadyDistributed;
    totals.stillToPay += a.stillToPay;
  }
  return figures;
}

const char* StatusText(AccountStatus status) {
  switch (status) {
    case AccountStatus::Ok:
      return "ok";
    case AccountStatus::AgesNotSupported:
      return "ages not supported";
    case AccountStatus::Waived:
      return "waived";
    case AccountStatus::NotComputedYet:
      return "not computed yet";
    case AccountStatus::TableDamaged:
      return "table damaged";
  }
  return "ok";
}

}  // namespace ira::reports
