#include "core/reports/dist_calc.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "core/base/messages.h"
#include "core/base/text.h"
#include "core/engine/rep_calc.h"
#include "core/law/law.h"
#include "core/reports/formats.h"
#include "core/reports/prnmastr.h"
#include "core/scenario/scenario.h"
#include "core/tables/datefun.h"
#include "core/tables/life_exp.h"
#include "core/tables/table_check.h"

namespace ira::reports {
namespace {

using rep_calc::IraDistResults;
using Slots = std::array<float, rep_calc::kSlotCount>;

// Amounts and the divisor line up in 20 characters after 48-character labels;
// the underlines sit under the last 14 of them.
constexpr std::size_t kValueWidth = 20;
const std::string kRuler(46, '*');
const std::string kSubtotal = std::string(54, ' ') + "--------------";
const std::string kFinal = std::string(54, ' ') + "==============";

const char* const kAgesNotSupported[] = {
    "Calculations can not be performed for this account, either because the ",
    "Owner's or a Beneficiary's age is not supported by this systems life-",
    "expectancy tables. Please refer to the manual for the ages this system ",
    "supports.",
};

// Deliberate wording, kept as support staff know it.
constexpr const char* kUnanticipated =
    "An unanticipated situation has come up in the program in Post2001MinDist() where the program shows how life "
    "expectancies are determined. This may be indicative of an error condition where you SHOULD NOT rely on the "
    "program's results.";

// One section of the report: its lines, each written "  " + text.
class Section {
 public:
  void Add(std::string_view text) { m_lines.push_back("  " + std::string(text)); }
  void Amount(std::string_view label, Money amount) { Add(std::string(label) + PadLeft(FormatCurrency(amount), kValueWidth)); }
  void Divisor(std::string_view label, float lifeExp) { Add(std::string(label) + PadLeft(FormatFixed(lifeExp), kValueWidth)); }
  void ListValue(std::string_view label, float lifeExp) { Add(std::string(label) + NumberText(lifeExp)); }
  // A section goes to the page as one block, or in blocks of the largest
  // size the page manager takes.
  void Emit(BlockWriter& out) {
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
      out.Add(m_lines[i]);
      if ((i + 1) % kPrnMaxBlock == 0) out.EmitAll();
    }
    out.EmitAll();
    m_lines.clear();
  }
  bool Empty() const { return m_lines.empty(); }

 private:
  std::vector<std::string> m_lines;
};

const char* const kTableDamaged[] = {
    "Calculations can not be performed for this account: a table file it ",
    "needs is missing or damaged. Please reinstall the program.",
};

// Why an account has no figures: its ages, or a table it needs.
void AgesNotSupported(Section& s, const IraDistResults& r) {
  if (r.TableDamaged) {
    for (const char* line : kTableDamaged) s.Add(line);
    return;
  }
  for (const char* line : kAgesNotSupported) s.Add(line);
}

// Labels line up with the described ones: 48 characters, then the value.
std::string Label(const std::string& text) { return PadRight(text, 48); }

std::string BalanceLabel(const GeneralInputs& gen) {
  return Label("Balance at 12/31/" + std::to_string(gen.DCY - 1) + ":");
}

// A long note in lines of at most 60 characters, broken at blanks.
void Note(Section& s, std::string_view text) {
  constexpr std::size_t kWidth = 60;
  std::string line;
  std::size_t from = 0;
  while (from < text.size()) {
    std::size_t to = text.find(' ', from);
    if (to == std::string_view::npos) to = text.size();
    const std::string_view word = text.substr(from, to - from);
    if (!line.empty() && line.size() + 1 + word.size() > kWidth) {
      s.Add(line);
      line.clear();
    }
    line += (line.empty() ? "" : " ") + std::string(word);
    from = to + 1;
  }
  if (!line.empty()) s.Add(line);
}

// The rules that fired, each with its authority on the next line.
void RuleLines(Section& s, const std::vector<law::RuleLine>& lines) {
  for (const law::RuleLine& line : lines) {
    s.Add(" " + line.what);
    s.Add("   (" + line.citation + ")");
  }
}

// A table figure printed on its own, or "not computable" when a table it
// asks is missing or damaged.
template <typename Lookup>
std::string TableFigure(Lookup lookup) {
  const tables::UnusableReads reads;
  const float value = static_cast<float>(lookup());
  return reads.Any() ? std::string(tables::kNotComputable) : NumberText(value);
}

// The arithmetic from the December 31 balance to the amount to be paid out.
void Amounts(Section& s, const GeneralInputs& gen, const IraDistResults& r, float lifeExp, Money gross, Money toPay) {
  const bool early = IsEarly(gen);
  s.Amount("Unadjusted benefit at end of year:              ", r.UnadjustedBenefit);
  if (gen.DCY == datefun::FirstDCY(gen.OwnerBirthDate))
    s.Amount("Minimum Distributions made this year:           ", r.PriorYearMinDist);
  else
    s.Add("");
  s.Add(kSubtotal);
  s.Amount("Benefit as adjusted:                            ", r.AdjustedBenefit);
  s.Divisor("Divide by life expectancy                       ", lifeExp);
  s.Add(kSubtotal);
  s.Amount(early ? "Distribution :                                  " : "Gross required minimum distribution:            ",
           gross);
  s.Amount("Less, distributions made during year:           ", r.DistributedThisYear);
  s.Add(kSubtotal);
  s.Amount(early ? "Maximum distribution without penalty:           " : "Minimum distribution to be paid out:            ",
           toPay);
  s.Add(kFinal);
}

std::string RecalcText(std::int16_t bRecalc) {
  switch (bRecalc) {
    case 0:
      return "   Recalculated for owner & spouse ";
    case 1:
      return "   Term certain for owner and spouse ";
    case 2:
      return "   Recalculated for owner, but not for spouse ";
    case 3:
      return "   Recalculated for spouse, but not for owner ";
    default:
      return {};  // the engine has warned about the election already
  }
}

// The 1987 life expectancies of one list (at the Required Beginning Date or
// in the DCY): which were considered and which one is used.
void LifeExpList1987(Section& s, const GeneralInputs& gen, const IraRecord& ira, const Slots& le, float elected) {
  const bool spouse = ira.SpouseBen != 0 && !IsEarly(gen);
  const bool other = ira.OtherBen != 0 && !IsEarly(gen);
  if (!spouse && !other) {
    s.ListValue("  Single life expectancy :                                  ", le[rep_calc::kSlotOwnerSingle]);
    s.Add(ira.bRecalc != 0 ? "  (Life expectancy not recalculated each year)" : "  (Life expectancy recalculated each year)");
    return;
  }
  if (spouse) {
    s.ListValue("  Joint life expectancy - Spouse :                          ", le[rep_calc::kSlotJointSpouse]);
    const std::string recalc = RecalcText(ira.bRecalc);
    if (!recalc.empty()) s.Add(recalc);
  }
  if (other) {
    const float joint = le[rep_calc::kSlotJointBeneficiary];
    const float mdib = le[rep_calc::kSlotMdib];
    s.Add("  Life expectancy with: " + Trim(ira.BeneficiaryName));
    s.ListValue(ira.bRecalc != 0 ? "  Term certain life expectancy for owner and beneficiary:   "
                                 : "  Term certain for beneficiary & recalculate for owner:     ",
                joint);
    if (mdib >= rep_calc::kNotApplicableRequired)
      s.Add("  Joint life expectancy - MDIB :                            N/A");
    else
      s.ListValue("  Joint life expectancy - MDIB :                            ", mdib);
    s.Add("  (MDIB=Minimum Distribution Incidental Benefit)");
    s.ListValue("  Use lower life expectancy :                               ", std::min(joint, mdib));
  }
  if (spouse && other) {
    s.Add("  If there is both a Spouse and Non-Spouse beneficiary");
    s.Add("  then use the lower life expectancy of both.");
    s.ListValue("  Use lower life expectancy :                               ", elected);
  }
}

void Section1987(Section& s, const GeneralInputs& gen, const IraRecord& ira, const IraDistResults& r) {
  if (r.AgesSupported == 0) return AgesNotSupported(s, r);
  s.Add(kRuler);
  s.Add("The following computation follows the 1987");
  s.Add("proposed regulations that must be used for");
  s.Add("Distribution Calendar Years before 2001 and");
  s.Add("may be used for 2001.");
  s.Add(kRuler);
  if (!IsEarly(gen)) {
    s.Add(" Life Expectancies For Required Beginning Date: ");
    LifeExpList1987(s, gen, ira, r.RbdLifeExp, r.RbdLifeExp[r.RbdSlot]);
  }
  s.Add(" Life Expectancy for Distribution Calendar Year-" + std::to_string(gen.DCY) + ":");
  const float used = r.DcyLifeExp[r.Slot1987];
  LifeExpList1987(s, gen, ira, r.DcyLifeExp, used);
  Amounts(s, gen, r, used, r.Gross1987, r.ToPay1987);
}

// How the 2001/2002 life expectancy is found; false for a state none of the
// rules describes.
bool LaterLifeExp(Section& s, const GeneralInputs& gen, const IraRecord& ira, const IraDistResults& r) {
  using namespace rep_calc;
  const Slots& le = r.DcyLifeExp;
  const std::int16_t dcy = gen.DCY;
  const std::int16_t sel = life_exp::SelectorForYear(dcy);
  const bool spouseOnly = ira.SpouseBen != 0 && ira.OtherBen == 0;
  const bool living = !HasDeathDate(gen) || dcy <= YearOf(gen.OwnerDeathDate);
  if (IsEarly(gen) || (living && !spouseOnly)) {
    s.Add("If there is a nonspouse beneficiary, even if");
    s.Add("the spouse is a beneficiary, or no beneficiary  ");
    s.Divisor("use the Distribution Period table amount        ", le[kSlotDistPeriod]);
    return r.SlotLater == kSlotDistPeriod;
  }
  if (living) {
    s.Add("If the spouse is beneficiary, use the");
    s.Add("larger of the life expectancy from the");
    s.Add("Distribution Period table or the joint");
    s.Add("life table with recalculation each year.");
    s.Divisor("Distribution Period Life Expectancy             ", le[kSlotDistPeriod]);
    s.Divisor("Joint Life Expectancy Recalculated This Year    ", le[kSlotJointSpouseRecalc]);
    s.Divisor("Larger Life Expectancy                          ", le[r.SlotLater]);
    return r.SlotLater == kSlotDistPeriod || r.SlotLater == kSlotJointSpouseRecalc;
  }
  const std::int16_t deathYear = YearOf(gen.OwnerDeathDate);
  if (ira.SpouseBen == 0 && ira.OtherBen == 0) {
    s.Add("If there is no beneficiary, use the");
    s.Add("single life life expectancy that the");
    s.Add("decedent would have attained in the year");
    s.Add("of death and subtract by 1 for each");
    s.Add("subsequent year.");
    s.Divisor("Decedent's Life Expectancy in Year of Death     ",
              life_exp::SingleLifeExpInYear(gen.OwnerBirthDate, deathYear, sel));
    s.Divisor("Current Year Life Expectancy                    ", le[kSlotDecedent]);
    return r.SlotLater == kSlotDecedent;
  }
  if (spouseOnly) {
    s.Add("Distribution must begin the later of the year after");
    s.Add("death or the year in which the IRA owner would have");
    s.Add("turned 70 and one-half. The life expectancy is");
    s.Add("determined from the single life table recalculating");
    s.Add("the life expectancy each year.");
    s.Add("As an alternative to the computation shown here,");
    s.Add("if the spouse is the sole designated beneficiary,");
    s.Add("the spouse may roll an IRA into an IRA in the");
    s.Add("spouse's own name.");
    if (r.SlotLater == kSlotSurvivingSpouse) {
      s.Divisor("Spouse's Life Expectancy In Dist. Cal. Year     ", le[kSlotSurvivingSpouse]);
    } else {
      s.Add("NO DISTRIBUTION IS REQUIRED UNTIL THE YEAR THAT");
      s.Add("THE DECEDENT WOULD HAVE TURNED 70 AND A HALF.");
    }
    return r.SlotLater == kSlotSurvivingSpouse || r.SlotLater == kSlotOwnerSingle;
  }
  s.Add("If there is a nonspouse beneficiary, use the");
  s.Add("single life life expectancy in the year");
  s.Add("after death and subtract by 1 for each");
  s.Add("subsequent year.");
  const std::int16_t afterDeath = CheckedInt16(deathYear + 1, "Post2001MinDist()");
  s.Divisor("Nonspouse's Life Expectancy 1 Year After Death  ",
            life_exp::GetSingleLifeExp(datefun::AgeInYear(ira.BeneBirthDate, afterDeath), sel));
  s.Divisor("Nonspouse's Life Expectancy In Dist. Cal. Year  ", le[kSlotNonSpouseAfterDeath]);
  return r.SlotLater == kSlotNonSpouseAfterDeath;
}

void Post2001MinDist(Section& s, const GeneralInputs& gen, const IraRecord& ira, const IraDistResults& r) {
  if (r.AgesSupported == 0) return AgesNotSupported(s, r);
  s.Add(kRuler);
  if (gen.DCY >= 2002) {
    s.Add("The following computation follows the 2002");
    s.Add("final regulations that must be used for");
    s.Add("Distribution Calendar Years after 2002 and");
    s.Add("may be used for 2002.");
  } else {
    s.Add("The following computation follows the 2001");
    s.Add("proposed regulations that must be used for");
    s.Add("Distribution Calendar Years after 2001 and");
    s.Add("may be used for 2001.");
  }
  s.Add(kRuler);
  s.Add("Life Expectancy for Distribution ");
  s.Add("Calendar Year " + std::to_string(gen.DCY));
  if (!LaterLifeExp(s, gen, ira, r)) {
    s.Add(kUnanticipated);
    s.Add(kSupportPhone);
  }
  Amounts(s, gen, r, r.DcyLifeExp[r.SlotLater], r.GrossLater, r.ToPayLater);
}

// The level payment of an amortization or annuity series.
void EarlyAmounts(Section& s, const GeneralInputs& gen, const IraDistResults& r) {
  if (r.AgesSupported == 0) return AgesNotSupported(s, r);
  const bool later = rep_calc::HasLaterAmount(gen.DCY);
  s.Amount("Calculated distribution:                        ", later ? r.GrossLater : r.Gross1987);
  s.Amount("Less, distributions made during year:           ", r.DistributedThisYear);
  s.Add(kSubtotal);
  s.Amount("Amount to be distributed:                       ", later ? r.ToPayLater : r.ToPay1987);
  s.Add(kFinal);
}

// Notice 2022-6 (series starting from 2023): what the method takes.
void NoticeHeading(Section& s, const GeneralInputs& gen) {
  const std::int16_t age = datefun::AgeInYear(gen.OwnerBirthDate, gen.DCY);
  s.Add("Rules applied:");
  RuleLines(s, {law::NoticeSeriesRule(gen.EarlyMethod)});
  if (gen.EarlyMethod == kMethodAmortization) {
    s.Add("Method Used: Amortization");
    s.Add("Reasonable Interest Rate: " + FormatRate(gen.IntRate) + "%");
    s.Add("Term or Life Expectancy (Years) using 2022 table: " +
          NumberText(life_exp::SingleLife(life_exp::TableSet::k2022, age)));
    if (law::RateNeedsMidTermCheck(gen.IntRate)) Note(s, law::kMidTermWarning);
  } else if (gen.EarlyMethod == kMethodAnnuity) {
    s.Add("Method Used: Annuity");
    const float factor = rep_calc::EarlyAnnuityFactor(gen);
    if (factor > 0.0f) s.Add("Annuity Factor(provided by user): " + NumberText(factor));
  } else {
    s.Add("Method Used: Minimum distribution");
    s.Add("Life Expectancy (Years) using 2022 Single Life table: " +
          NumberText(life_exp::SingleLife(life_exp::TableSet::k2022, age)));
  }
}

// Printed once before the accounts of an early scenario.
void EarlyHeading(Section& s, const GeneralInputs& gen) {
  s.Add("The distributions are for a series of substantially equal");
  s.Add("periodic payments for a period of five years or more.");
  if (law::ComputesNoticeSeries(gen)) {
    if (gen.EarlyMethod == kMethodAmortization || gen.EarlyMethod == kMethodAnnuity) {
      s.Add("Since the Amortization or Annuity method is being used, it");
      s.Add("is essential that the Distribution Calendar Year is the FIRST");
      s.Add("year of the series of annual payments. If a subsequent year is");
      s.Add("used, the payment amounts will be incorrect!");
    }
    return NoticeHeading(s, gen);
  }
  if (gen.EarlyMethod != kMethodAmortization && gen.EarlyMethod != kMethodAnnuity) return;
  s.Add("Since the Amortization or Annuity method is being used, it");
  s.Add("is essential that the Distribution Calendar Year is the FIRST");
  s.Add("year of the series of annual payments. If a subsequent year is");
  s.Add("used, the payment amounts will be incorrect!");
  if (gen.EarlyMethod == kMethodAmortization) {
    const std::int16_t age = datefun::AgeInYear(gen.OwnerBirthDate, gen.DCY);
    s.Add("Method Used: Amortization");
    s.Add("Reasonable Interest Rate: " + FormatRate(gen.IntRate) + "%");
    s.Add("Term or Life Expectancy (Years) using 1986 table: " +
          TableFigure([&] { return life_exp::GetSingleLifeExp(age, life_exp::kTables1986); }));
    s.Add("Term or Life Expectancy (Years) using 2002 table: " +
          TableFigure([&] { return life_exp::GetSingleLifeExp(age, life_exp::kTables2002); }));
  } else {
    s.Add("Method Used: Annuity");
    if (gen.AnnuityOverride != 0)
      s.Add("Annuity Factor(provided by user): " + NumberText(gen.AnnuityFactor));
    else
      s.Add("Life Table 90CM Annuity Factor: " + TableFigure([&] { return rep_calc::EarlyAnnuityFactor(gen); }));
  }
}

// A fixed period: whose figure, looked up at which age in which year, and
// what is left of it after the years since.
void FixedPeriodLines(Section& s, const std::string& whose, std::int16_t age, std::int16_t lookupYear,
                      std::int16_t year, float start, float now) {
  s.Divisor(Label("Single Life Table, " + whose + " age " + std::to_string(age) + " in " + std::to_string(lookupYear)),
            start);
  s.Divisor(Label("Less " + std::to_string(year - lookupYear) + " for the years since " + std::to_string(lookupYear)),
            now);
}

// The owner's side of an account under the law in force, a year from 2002.
void CurrentLawSection(Section& s, const GeneralInputs& gen, const IraDistResults& r) {
  using law::Basis;
  s.Add(kRuler);
  s.Add("The following computation follows the law in");
  s.Add("force for Distribution Calendar Year " + std::to_string(gen.DCY) + ".");
  s.Add(kRuler);
  s.Add("Rules applied:");
  RuleLines(s, law::Explain(gen, r.Law));
  if (law::IsNotComputed(r.Law.basis)) {
    Note(s, law::NotComputedText(r.Law));
    return;
  }
  if (r.AgesSupported == 0) return AgesNotSupported(s, r);
  const float le = r.DcyLifeExp[r.SlotLater];
  const std::string owner = std::to_string(r.Law.ownerAge);
  switch (r.Law.basis) {
    case Basis::kUniform:
      s.Divisor(Label("Uniform Lifetime Table, owner's age " + owner), le);
      break;
    case Basis::kJointSpouse:
      s.Divisor(Label("Uniform Lifetime Table, owner's age " + owner), r.DcyLifeExp[rep_calc::kSlotDistPeriod]);
      s.Divisor(Label("Joint and Last Survivor Table, ages " + owner + "/" + std::to_string(r.Law.spouseAge)), le);
      s.Divisor(Label("Larger Life Expectancy"), le);
      break;
    case Basis::kOwnerRemaining:
    case Basis::kNonSpouse:
      s.Divisor(Label("Single Life Table, age " + std::to_string(r.Law.lookupAge) + " in " +
                      std::to_string(r.Law.lookupYear)),
                law::FixedPeriodStart(r.Law));
      s.Divisor(Label("Less 1 for each year since " + std::to_string(r.Law.lookupYear)), le);
      break;
    case Basis::kSpouseYearly:
      s.Divisor(Label("Single Life Table, spouse's age " + std::to_string(r.Law.spouseAge)), le);
      break;
    case Basis::kSpouseOwn:
    case Basis::kSpouseAsOwner:
      s.Divisor(Label("Uniform Lifetime Table, spouse's age " + std::to_string(r.Law.spouseAge)), le);
      break;
    case Basis::kBeneficiaryLife:
    case Basis::kAnnualWaived:
      FixedPeriodLines(s, "beneficiary's", r.Law.lookupAge, r.Law.lookupYear, r.Law.year,
                       law::FixedPeriodStart(r.Law), law::BeneficiaryFigure(r.Law));
      break;
    default:
      break;
  }
  if (r.Law.greaterOfOwner && (r.Law.basis == Basis::kBeneficiaryLife || r.Law.basis == Basis::kAnnualWaived ||
                               r.Law.basis == Basis::kSpouseYearly || r.Law.basis == Basis::kNonSpouse)) {
    FixedPeriodLines(s, "owner's", r.Law.ownerLookupAge, r.Law.ownerLookupYear, r.Law.year,
                     law::OwnerRemainingStart(r.Law), law::OwnerRemainingFigure(r.Law));
    s.Divisor(Label("Larger Life Expectancy"), le);
  }
  const bool amount = r.Law.basis != Basis::kBeforeFirstYear && r.Law.basis != Basis::kWaived &&
                      r.Law.basis != Basis::kSpouseNotYet && r.Law.basis != Basis::kSpouseOwnNotYet &&
                      r.Law.basis != Basis::kNothingUntilFinal && r.Law.basis != Basis::kWholeBalance;
  s.Amount(BalanceLabel(gen), r.AdjustedBenefit);
  if (amount) {
    s.Divisor(Label("Divide by life expectancy"), le);
    s.Add(kSubtotal);
  }
  if (r.Law.basis == Basis::kWholeBalance) Note(s, "Final year: the whole balance is due.");
  if (r.Law.basis == Basis::kAnnualWaived) {
    s.Amount("Annual amount due, waived:                      ", r.WaivedAmount);
    s.Add(kSubtotal);
  }
  s.Amount("Gross required minimum distribution:            ", r.GrossLater);
  s.Amount("Less, distributions made during year:           ", r.DistributedThisYear);
  s.Add(kSubtotal);
  s.Amount("Minimum distribution to be paid out:            ", r.ToPayLater);
  s.Add(kFinal);
  s.Add(law::DeadlineSentence(gen, r.Law));
}

// A Notice 2022-6 series: the 2022 Single Life Table for the owner's age in
// the first year.
void NoticeSeriesSection(Section& s, const GeneralInputs& gen, const IraDistResults& r) {
  if (r.NoAnnuityFactor) {
    Note(s, law::kNoAnnuityFactorText);
    return;
  }
  if (r.AgesSupported == 0) return AgesNotSupported(s, r);
  if (gen.EarlyMethod == kMethodMinimum) {
    s.Amount(BalanceLabel(gen), r.AdjustedBenefit);
    s.Divisor(Label("Divide by life expectancy"), r.DcyLifeExp[rep_calc::kSlotOwnerSingle]);
    s.Add(kSubtotal);
  }
  EarlyAmounts(s, gen, r);
}

void IraSections(BlockWriter& out, const GeneralInputs& gen, const IraRecord& ira) {
  IraDistResults r;
  rep_calc::CalcIraDist(gen, ira, r, 0.0f);
  Section s;
  s.Add("");
  s.Add("IRA: " + Trim(ira.IraName));
  if (r.CurrentLaw) {
    if (r.NoticeSeries)
      NoticeSeriesSection(s, gen, r);
    else
      CurrentLawSection(s, gen, r);
    s.Emit(out);
    return;
  }
  const bool series = IsEarly(gen) && (gen.EarlyMethod == kMethodAmortization || gen.EarlyMethod == kMethodAnnuity);
  if (series) {
    EarlyAmounts(s, gen, r);
    s.Emit(out);
    return;
  }
  if (gen.DCY >= 2002 && IsEarly(gen))
    s.Add(ira.chkUse2002Table != 0 ? "Using 2002 Distribution Period table."
                                    : "Using 2001 Distribution Period table based on 1986 life expectancies.");
  if (rep_calc::Has1987Amount(gen.DCY)) {
    Section1987(s, gen, ira, r);
    s.Emit(out);
  }
  if (rep_calc::HasLaterAmount(gen.DCY)) {
    Post2001MinDist(s, gen, ira, r);
    s.Emit(out);
  }
}

}  // namespace

void DispCalcResults(ReportSink& sink) {
  const Scenario& scenario = TheScenario();
  const GeneralInputs& gen = scenario.Gen;
  const PageHeading heading{gen.OwnerName, gen.OtherInfo, "Distribution Calculations"};
  BlockWriter out(sink, heading);
  Section s;
  if (sink.Mode() == ReportMode::View) {
    sink.SetCaption("Distribution Calculations");
    s.Add("");
    s.Add(Trim(gen.OwnerName));
    s.Add(Trim(gen.OtherInfo));
    s.Add("Distribution Calculations");
    s.Add("");
    s.Emit(out);
  }
  if (IsEarly(gen)) {
    EarlyHeading(s, gen);
    s.Emit(out);
  }
  for (const IraRecord& ira : scenario.Ira) IraSections(out, gen, ira);
}

}  // namespace ira::reports
