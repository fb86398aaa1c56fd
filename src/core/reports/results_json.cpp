#include "core/reports/results_json.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string_view>
#include <utility>
#include <nlohmann/json.hpp>

#include "core/base/program.h"
#include "core/base/text.h"
#include "core/tables/datefun.h"

namespace ira::reports {
namespace {

using Json = nlohmann::ordered_json;
using rep_calc::IraDistResults;
using rep_calc::kSlotCount;

// The slots in index order, named for the reader.
constexpr const char* kSlotNames[kSlotCount] = {
    "ownerSingle",          "jointSpouse",     "jointBeneficiary", "distributionPeriod", "jointSpouseRecalculated",
    "nonSpouseAfterDeath", "survivingSpouse", "decedent",         "mdib",
};

// The exact amount held: at least two decimals, up to the four money keeps.
std::string AmountText(Money m) {
  std::string text = m.ToString();
  while (text.size() > 3 && text.back() == '0' && text[text.size() - 3] != '.') text.pop_back();
  return text;
}

Json Amount(Money m) { return AmountText(m); }

// Appended piece by piece: g++ 12 sees false overlaps (-Wrestrict) in
// std::string::insert at -O2.
std::string DecimalText(Decimal d) {
  const bool negative = d.mantissa < 0;
  const std::uint64_t magnitude =
      negative ? 0 - static_cast<std::uint64_t>(d.mantissa) : static_cast<std::uint64_t>(d.mantissa);
  char buf[24];
  const std::string_view digits(buf, static_cast<std::size_t>(std::to_chars(buf, std::end(buf), magnitude).ptr - buf));
  std::string text = negative ? "-" : "";
  if (d.scale <= 0) {
    text += digits;
    if (magnitude != 0) text.append(static_cast<std::size_t>(-d.scale), '0');
  } else if (const std::size_t scale = static_cast<std::size_t>(d.scale); digits.size() <= scale) {
    text += "0.";
    text.append(scale - digits.size(), '0');
    text += digits;
  } else {
    text += digits.substr(0, digits.size() - scale);
    text += '.';
    text += digits.substr(digits.size() - scale);
  }
  return text;
}

// A single (a rate, a percent, a factor) by its decimal meaning.
Json Single(float value) { return DecimalText(DecimalOf(value)); }

Json LifeExp(float value) {
  const std::optional<float> v = ApplicableLifeExp(value);
  return v ? Json(DecimalText(LifeExpDecimal(*v))) : Json(nullptr);
}

Json IsoDate(Date date) {
  if (date == kNoDate) return nullptr;
  const Ymd ymd = ToYmd(date);
  char buf[16];
  std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", ymd.year, ymd.month, ymd.day);
  return buf;
}

Json SlotName(std::int16_t slot) {
  if (slot < 0 || slot >= kSlotCount) return nullptr;
  return kSlotNames[slot];
}

Json Slots(const std::array<float, kSlotCount>& slots) {
  Json j = Json::object();
  for (std::size_t i = 0; i < slots.size(); ++i) j[kSlotNames[i]] = LifeExp(slots[i]);
  return j;
}

const char* EarlyMethodName(std::int16_t method) {
  switch (method) {
    case kMethodAmortization:
      return "amortization";
    case kMethodAnnuity:
      return "annuity";
    default:
      return "minimum";
  }
}

Json Inputs(const Scenario& scenario) {
  const GeneralInputs& g = scenario.Gen;
  Json j;
  j["ownerName"] = Trim(g.OwnerName);
  j["otherInfo"] = Trim(g.OtherInfo);
  j["ownerBirthDate"] = IsoDate(g.OwnerBirthDate);
  j["ownerDeathDate"] = IsoDate(g.OwnerDeathDate);
  j["spouseIsBeneficiary"] = g.SpouseBen != 0;
  j["spouseBirthDate"] = IsoDate(g.SpouseBirthDate);
  j["distributionYear"] = g.DCY;
  j["distributionType"] = IsEarly(g) ? "early" : "required";
  j["earlyMethod"] = EarlyMethodName(g.EarlyMethod);
  j["interestRate"] = Single(g.IntRate);
  j["annuityFactor"] = Single(g.AnnuityFactor);
  j["annuityFactorByUser"] = g.AnnuityOverride != 0;
  j["annuityInterestRate"] = Single(g.AnnuityIntRate);
  j["projectionYears"] = g.ProjectionYears;
  j["incomeInFirstYear"] = g.IncomeCalc != 0;
  j["inflationRate"] = Single(g.InflationRate);
  j["percentOver"] = Single(g.PercentOver);
  j["ruleSet"] = g.RuleSet;
  j["applicableAge1959"] = g.Age1959;
  Json iras = Json::array();
  for (const IraRecord& ira : scenario.Ira) {
    Json a;
    a["name"] = Trim(ira.IraName);
    a["spouseIsBeneficiary"] = ira.SpouseBen != 0;
    a["otherBeneficiary"] = ira.OtherBen != 0;
    a["beneficiaryName"] = Trim(ira.BeneficiaryName);
    a["beneficiaryBirthDate"] = IsoDate(ira.BeneBirthDate);
    a["beneficiaryKind"] = ira.BeneKind;
    a["spouseChoice"] = ira.SpouseChoice;
    a["spouseChoiceYear"] = ira.SpouseChoiceYear;
    a["balance"] = Amount(ira.Benefit);
    a["distributedThisYear"] = Amount(ira.DistributedThisYear);
    a["firstYearDistributions"] = Amount(ira.FirstYearDist);
    a["rateOfReturn"] = Single(ira.RateOfReturn);
    a["recalculation"] = ira.bRecalc;
    a["use2002Table"] = ira.chkUse2002Table != 0;
    iras.push_back(std::move(a));
  }
  j["iras"] = std::move(iras);
  return j;
}

Json Regime(const char* rules, const IraDistResults& r, std::int16_t slot, Money gross, Money toPay, bool series) {
  Json j;
  j["rules"] = rules;
  j["slot"] = series ? Json(nullptr) : SlotName(slot);
  j["divisor"] = series || slot < 0 || slot >= kSlotCount ? Json(nullptr)
                                                          : LifeExp(r.DcyLifeExp[static_cast<std::size_t>(slot)]);
  j["gross"] = Amount(gross);
  j["toPay"] = Amount(toPay);
  return j;
}

Json Account(const GeneralInputs& gen, const IraRecord& ira, const AccountFigures& a, bool series) {
  const IraDistResults& r = a.results;
  Json j;
  j["name"] = a.name;
  j["status"] = StatusText(a.status);
  j["deadline"] = a.deadline;
  j["dueDate"] = a.dueDate ? IsoDate(*a.dueDate) : Json(nullptr);
  j["finalYear"] = a.finalYear ? Json(*a.finalYear) : Json(nullptr);
  if (!HasFigures(a.status)) return j;
  j["unadjustedBalance"] = Amount(r.UnadjustedBenefit);
  j["priorYearMinimumDistributions"] = Amount(r.PriorYearMinDist);
  j["adjustedBalance"] = Amount(r.AdjustedBenefit);
  j["distributedThisYear"] = Amount(r.DistributedThisYear);
  // An early series has no Required Beginning Date and divides by no life expectancy.
  if (!IsEarly(gen))
    j["requiredBeginningDate"] = {{"slot", SlotName(r.RbdSlot)}, {"lifeExpectancies", Slots(r.RbdLifeExp)}};
  if (!series) j["distributionYearLifeExpectancies"] = Slots(r.DcyLifeExp);
  if (IsEarly(gen) && gen.EarlyMethod == kMethodAmortization)
    j["amortizationTerm"] = LifeExp(rep_calc::AmortizationTerm(gen, ira));
  Json regimes = Json::array();
  if (rep_calc::Has1987Amount(gen.DCY))
    regimes.push_back(Regime("1987", r, r.Slot1987, r.Gross1987, r.ToPay1987, series));
  if (rep_calc::HasLaterAmount(gen.DCY))
    regimes.push_back(Regime(gen.DCY >= 2002 ? "2002" : "2001", r, r.SlotLater, r.GrossLater, r.ToPayLater, series));
  j["regimes"] = std::move(regimes);
  j["summary"] = {{"divisor", a.divisor ? LifeExp(*a.divisor) : Json(nullptr)},
                  {"balance", Amount(a.balance)},
                  {"required", Amount(a.required)},
                  {"alreadyDistributed", Amount(a.alreadyDistributed)},
                  {"stillToPay", Amount(a.stillToPay)}};
  return j;
}

Json Totals(const ScenarioFigures& f) {
  const ScenarioTotals& t = f.totals;
  Json j;
  j["rules"] = f.laterRules ? "later" : "1987";
  j["accounts"] = t.accounts;
  j["accountsComputed"] = t.computed;
  j["balance"] = Amount(t.balance);
  j["required"] = Amount(t.required);
  j["alreadyDistributed"] = Amount(t.alreadyDistributed);
  j["stillToPay"] = Amount(t.stillToPay);
  return j;
}

Json ProjectionCell(const rep_calc::ProjCell& c, bool seriesEnded) {
  Json j;
  const std::int64_t raw = c.Distribution.Raw();
  const char* status = c.NotComputed                       ? "not computed yet"
                       : raw == rep_calc::kProjNoDataRaw    ? "ages not supported"
                       : raw == rep_calc::kProjStoppedRaw ? "balance exhausted"
                       : seriesEnded                      ? "series ended"
                                                          : "ok";
  j["status"] = status;
  const bool ok = status == std::string_view("ok");
  for (const auto& [name, value] : {std::pair<const char*, Money>{"beginningBalance", c.BegBalance},
                                    {"income", c.Income},
                                    {"distribution", c.Distribution},
                                    {"alreadyDistributed", c.Distributed},
                                    {"endBalance", c.EndBalance}})
    j[name] = ok ? Amount(value) : Json(nullptr);
  return j;
}

Json Projection(const Scenario& scenario) {
  const GeneralInputs& gen = scenario.Gen;
  if (gen.ProjectionYears < 1) return nullptr;
  Scenario copy = scenario;  // the engine writes the first-year distributions back
  rep_calc::ProjCells cells;
  std::vector<rep_calc::ProjYearTotals> totals;
  rep_calc::CalcProjResults(copy, cells, totals);
  const std::size_t dataYears =
      std::min(totals.size(), static_cast<std::size_t>(std::max(rep_calc::LastProjYear() + 1, 0)));
  // An early series is not carried past the year the owner reaches 59 1/2.
  const std::int16_t year59Half = YearOf(datefun::Date59Half(gen.OwnerBirthDate));
  Decimal rate = DecimalOf(rep_calc::kExcessTaxRate);
  rate.scale -= 2;  // a percent, like the other rates
  const Json taxRate = DecimalText(rate);
  Json years = Json::array();
  for (std::size_t y = 0; y < dataYears; ++y) {
    const long year = gen.DCY + static_cast<long>(y);
    const bool seriesEnded = IsEarly(gen) && year >= year59Half;
    Json j;
    j["year"] = year;
    j["ownerAge"] = datefun::AgeInYear(gen.OwnerBirthDate, static_cast<std::int16_t>(year));
    Json accounts = Json::array();
    for (std::size_t i = 0; i < cells.size(); ++i)
      accounts.push_back(y < cells[i].size() ? ProjectionCell(cells[i][y], seriesEnded) : Json(nullptr));
    j["accounts"] = std::move(accounts);
    const rep_calc::ProjYearTotals& t = totals[y];
    j["totalDistribution"] = Amount(t.TotalDist);
    j["combinedEndBalance"] = Amount(t.CombinedEnd);
    j["excessDistributionLimit"] = t.Limit.Raw() == rep_calc::kNoLimitRaw ? Json(nullptr) : Amount(t.Limit);
    j["excess"] = Amount(t.Excess);
    j["excessTaxRate"] = taxRate;
    j["tax"] = Amount(t.Tax);
    years.push_back(std::move(j));
  }
  return Json{{"years", std::move(years)}};
}

}  // namespace

std::string ResultsJson(std::string_view file, const Scenario& scenario, const ScenarioFigures& figures) {
  const GeneralInputs& gen = scenario.Gen;
  const bool series = IsEarlySeries(gen);
  Json doc;
  doc["format"] = kResultsJsonFormat;
  doc["version"] = kResultsJsonVersion;
  doc["program"] = VersionText();
  doc["file"] = std::string(file);
  doc["inputs"] = Inputs(scenario);
  if (series && gen.EarlyMethod == kMethodAnnuity)
    doc["annuityFactor"] = gen.AnnuityOverride != 0 ? Single(gen.AnnuityFactor)
                                                    : Single(rep_calc::EarlyAnnuityFactor(gen));
  Json accounts = Json::array();
  for (std::size_t i = 0; i < figures.accounts.size() && i < scenario.Ira.size(); ++i)
    accounts.push_back(Account(gen, scenario.Ira[i], figures.accounts[i], series));
  doc["accounts"] = std::move(accounts);
  doc["totals"] = Totals(figures);
  doc["projection"] = Projection(scenario);
  return doc.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace ira::reports
