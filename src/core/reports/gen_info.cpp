#include "core/reports/gen_info.h"

#include <string>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "core/base/text.h"
#include "core/engine/rep_calc.h"
#include "core/law/law.h"
#include "core/reports/formats.h"
#include "core/scenario/scenario.h"
#include "core/tables/datefun.h"

namespace ira::reports {
namespace {

using datefun::AgeInYear;
using datefun::FirstDCY;

constexpr const char* kSeventyHalf = "70 and 1/2";
constexpr const char* kFiftyNineHalf = "59 and 1/2";

// The screen heading of a text report: owner, Other Info, the report's list
// name, then two empty lines. Only a window shows it.
void ScreenHeading(ReportSink& sink, const GeneralInputs& gen, const char* listName, const PageHeading& heading) {
  BlockWriter out(sink, heading);
  out.Add("  " + Trim(gen.OwnerName));
  out.Add("  " + Trim(gen.OtherInfo));
  out.Add(std::string("  ") + listName);
  out.Add("");
  out.Add("");
  out.EmitAll();
}

std::string Year(std::int16_t year) { return std::to_string(year); }

constexpr const char* kRuleSetCurrent = "Rules: the law in force in each distribution calendar year";

void RuleLine(BlockWriter& out, const law::RuleLine& line) {
  out.Add("  " + line.what);
  out.Add("    (" + line.citation + ")");
  out.Emit(2);
}

// The General Information report under the law in force: the applicable age
// and the dates that follow from it, as the law module gives them.
void GenInfoCurrent(BlockWriter& out, const GeneralInputs& gen) {
  const Date birth = gen.OwnerBirthDate;
  out.Add(std::string("  ") + kRuleSetCurrent);
  out.Add("  IRA Owner's date of birth: " + FormatMdy(birth));
  out.Emit(2);
  if (!IsEarly(gen)) {
    const law::ApplicableAge age = law::ApplicableAgeFor(birth, gen.Age1959);
    RuleLine(out, law::ApplicableAgeRule(birth, gen.Age1959));
    out.Add("  Date IRA Owner reaches " + age.Text() + ": " +
            FormatMmDdYyyy(law::ApplicableAgeDate(birth, gen.Age1959)));
    out.Add("  IRA Owner's Required Beginning Date: " + FormatMmDdYyyy(law::RequiredBeginningDate(birth, gen.Age1959)));
    out.Add("  First distribution calendar year: " + Year(law::FirstDistributionYear(birth, gen.Age1959)));
    out.Emit(3);
  }
  if (HasDeathDate(gen)) {
    out.Add("  Date of Death: " + FormatMdy(gen.OwnerDeathDate));
    out.Emit(1);
  }
  out.Add("  Current distribution calendar year: " + Year(gen.DCY));
  out.Add("  Owner's age in current Distribution calendar year: " + Year(AgeInYear(birth, gen.DCY)));
  out.Emit(2);
  if (gen.SpouseBen != 0) {
    out.Add("  Spouse's age in current distribution calendar year: " + Year(AgeInYear(gen.SpouseBirthDate, gen.DCY)));
    out.Emit(1);
  }
  out.Add("");
  out.Emit(1);
  if (!IsEarly(gen) && !law::ComputesRequiredYear(gen, gen.DCY)) {
    // Before 2002 the law in force was the described one.
    const std::string deadline = rep_calc::DistDeadLine(gen, IraRecord{});
    out.Add(deadline.starts_with("No ") ? "  " + deadline : "  Distribution must be made by " + deadline);
    out.Emit(1);
  } else if (!IsEarly(gen)) {
    // The owner's own deadline (an account with no beneficiary).
    const law::YearRules rules = law::OwnerSideRules(gen, IraRecord{}, gen.DCY);
    if (rules.basis == law::Basis::kWaived) RuleLine(out, law::WaiverRule(gen.DCY));
    if (!HasDeathDate(gen) || gen.DCY <= YearOf(gen.OwnerDeathDate)) {
      out.Add("  " + law::DeadlineSentence(gen, rules));
      out.Emit(1);
    } else {
      out.Add("  Each account's deadline is shown with its computation.");
      out.Emit(1);
    }
  }
  out.Add("");
  out.Add("");
  out.Add("  TERMINOLOGY:");
  out.Add("");
  out.Emit(4);
  if (!IsEarly(gen)) {
    out.Add("  REQUIRED BEGINNING DATE: April 1st of the year after the IRA owner ");
    out.Add("  reaches the applicable age: 70 1/2 if born before 7/1/1949, 72 if ");
    out.Add("  born by 12/31/1950, 73 if born 1951 to 1959, 75 if born 1960 or later ");
    out.Add("  (IRC 401(a)(9)(C); SECURE Act sec. 114; SECURE 2.0 Act sec. 107).");
    out.Add("");
    out.Emit(5);
  }
  out.Add("  DISTRIBUTION CALENDAR YEAR: A Distribution Calendar Year is a ");
  out.Add("  calendar year for which an IRA distribution is required. The amount ");
  out.Add("  of the first one may be paid until the Required Beginning Date; every ");
  out.Add("  other one by December 31st (Treas. Reg. 1.401(a)(9)-5(a)).");
  out.Add("");
  out.Add("  BENEFIT: The Benefit is the IRA account balance on December 31st of ");
  out.Add("  the year prior to the Distribution Calendar Year. For an IRA it is not ");
  out.Add("  reduced by a first-year distribution made by April 1st of the next year.");
  out.Add("");
  out.Emit(9);
}

}  // namespace

void DisplayGenInfo(ReportSink& sink) {
  const GeneralInputs& gen = TheScenario().Gen;
  const PageHeading heading{gen.OwnerName, gen.OtherInfo, "Owner/IRA Information"};
  if (sink.Mode() == ReportMode::View) {
    sink.SetCaption("Owner/IRA Information");
    ScreenHeading(sink, gen, "General Information", heading);
  }
  if (law::UsesCurrentLaw(gen)) {
    BlockWriter out(sink, heading);
    return GenInfoCurrent(out, gen);
  }
  const std::int16_t firstDcy = FirstDCY(gen.OwnerBirthDate);
  const Date rbd = datefun::RequiredBeginningDate(gen.OwnerBirthDate);
  BlockWriter out(sink, heading);

  out.Add("  IRA Owner's date of birth: " + FormatMdy(gen.OwnerBirthDate));
  out.Emit(1);
  if (!IsEarly(gen)) {
    out.Add(std::string("  Date IRA Owner turns ") + kSeventyHalf + ": " +
            FormatMmDdYyyy(datefun::Date70Half(gen.OwnerBirthDate)));
    out.Add("  IRA Owner's Required Beginning Date: " + FormatMmDdYyyy(rbd));
    out.Add("  First distribution calendar year: " + Year(firstDcy));
    out.Emit(3);
  }
  if (HasDeathDate(gen)) {
    out.Add("  Date of Death: " + FormatMdy(gen.OwnerDeathDate));
    out.Emit(1);
  }
  out.Add("  Current distribution calendar year: " + Year(gen.DCY));
  out.Add("  Owner's age in current Distribution calendar year: " + Year(AgeInYear(gen.OwnerBirthDate, gen.DCY)));
  out.Emit(2);
  if (gen.SpouseBen != 0) {
    out.Add("  Spouse's age in current distribution calendar year: " + Year(AgeInYear(gen.SpouseBirthDate, gen.DCY)));
    out.Emit(1);
  }
  out.Add("");
  out.Add("");
  out.Emit(2);

  if (!HasDeathDate(gen)) {
    out.Add("  Distribution must be made by " + (gen.DCY != firstDcy ? "12/31/" + Year(gen.DCY) : FormatMdy(rbd)));
    out.Emit(1);
  } else {
    out.Add("  A DISTRIBUTION MUST BE MADE BY:");
    out.Add("");
    out.Emit(2);
    if (gen.SpouseBen != 0) {
      out.Add("  A surviving spouse, sole beneficiary, may roll over an IRA into");
      out.Add("  the surviving spouse's account. In that case, use the spouse's");
      out.Add("  Required Beginning Date.");
      out.Add("");
      out.Add("  Otherwise, if the spouse is the sole beneficiary,");
      out.Add("  distributions begin the later of the year when the IRA");
      out.Add("  owner would have been 70.5 or the year after the");
      out.Add("  IRA owner died.");
      out.Add("");
      out.Emit(9);
    }
    // The deadline of an account inherited by a non-spouse beneficiary.
    IraRecord nonSpouse;
    nonSpouse.OtherBen = kTrue;
    out.Add("  For " + Year(gen.DCY) + ", if there is a nonspouse beneficiary, distributions ");
    out.Add("  must be made by: " + rep_calc::DistDeadLine(gen, nonSpouse));
    out.Emit(2);
  }
  out.Add("");
  out.Add("");
  out.Emit(2);
  out.Add("  TERMINOLOGY:");
  out.Add("");
  out.Emit(2);
  if (!IsEarly(gen)) {
    out.Add("  REQUIRED BEGINNING DATE: The Required Beginning Date is April 1st ");
    out.Add(std::string("  of the year after the IRA owner turns ") + kSeventyHalf + ". For  further ");
    out.Add("  information refer to Treas. Reg. Section 1.401(a)(9)-2(A-2).");
    out.Add("");
    out.Emit(4);
  }
  out.Add("  DISTRIBUTION CALENDAR YEAR: A Distribution Calendar Year is a ");
  out.Add("  calendar year for which an IRA distribution is required. For further ");
  out.Add("  information refer to Treas. Reg. Section 1.401(a)(9)-5 A-1(b).");
  out.Add("");
  out.Add("  BENEFIT: The Benefit is the IRA account balance on December 31st of ");
  out.Add("  the year prior to the Distribution Calendar Year. If this is the second ");
  out.Add("  Distribution Calendar Year, the account balance may be reduced by a ");
  out.Add("  minimum distribution made IN the second Distribution Calendar Year ");
  out.Add("  FOR the first Distribution Calendar Year. If you have provided that ");
  out.Add("  information to this program, the calculation will be done for you. ");
  out.Add("  Please refer to Treas. Reg. Section 1.401(a)(9)-5(A-3).");
  out.Add("");
  out.Emit(12);
}

namespace {

// Where the DCY stands among the owner's key years.
std::string DistributionPeriod(const GeneralInputs& gen) {
  if (gen.DCY < YearOf(datefun::Date59Half(gen.OwnerBirthDate))) return std::string("PRE ") + kFiftyNineHalf;
  if (law::UsesCurrentLaw(gen)) {
    const std::string age = "APPLICABLE AGE " + law::ApplicableAgeFor(gen.OwnerBirthDate, gen.Age1959).Text();
    if (gen.DCY < law::FirstDistributionYear(gen.OwnerBirthDate, gen.Age1959))
      return std::string(kFiftyNineHalf) + " TO " + age;
    return "POST " + age;
  }
  if (gen.DCY < FirstDCY(gen.OwnerBirthDate)) return std::string(kFiftyNineHalf) + " TO " + kSeventyHalf;
  return std::string("POST ") + kSeventyHalf;
}

std::string MethodName(std::int16_t method) {
  switch (method) {
    case kMethodAmortization:
      return "Amortization";
    case kMethodAnnuity:
      return "Annuity";
    default:
      return "Minimum distribution";
  }
}

void EarlyMethodBlock(BlockWriter& out, const GeneralInputs& gen) {
  out.Add("  Method to determine distributions: " + MethodName(gen.EarlyMethod));
  if (gen.EarlyMethod == kMethodAmortization) out.Add("  Interest Rate: " + FormatRate(gen.IntRate) + "%");
  if (gen.EarlyMethod == kMethodAnnuity) {
    if (gen.AnnuityOverride != 0)
      out.Add("  User Override Annuity Factor: " + NumberText(gen.AnnuityFactor));
    else
      out.Add("  Interest Rate for Life Table 90CM: " + FormatRate(gen.AnnuityIntRate) + "%");
  }
  out.EmitAll();
}

void IraBlock(BlockWriter& out, const GeneralInputs& gen, const IraRecord& ira) {
  out.Add("");
  out.Add("  IRA: " + Trim(ira.IraName));
  out.Add(ira.SpouseBen != 0 ? "  Spouse is a beneficiary on this IRA." : "  Spouse is not a beneficiary on this IRA.");
  if (ira.OtherBen != 0) {
    out.Add("  There is a Non-Spouse beneficiary on this IRA.");
    out.Add("  Non-Spouse Beneficiary: " + Trim(ira.BeneficiaryName));
    out.Add("  Non-Spouse Beneficiary's Birthday: " + FormatMdy(ira.BeneBirthDate));
  } else {
    out.Add("  There is not a Non-Spouse Beneficiary for this IRA.");
  }
  if (law::ComputesNoticeSeries(gen))
    out.Add("  Use 2022 Life Expectancy Tables (Notice 2022-6)");
  else if (IsEarly(gen))
    out.Add(ira.chkUse2002Table != 0 ? "  Use 2002 Life Expectancy Tables" : "  Use 1986 Life Expectancy Tables");
  out.Add("  Benefit (before adjustments): $" + FormatAmount(ira.Benefit));
  out.Add("  Amount already distributed this year: $" + FormatAmount(ira.DistributedThisYear));
  // The first-year distribution may be taken up to April 1 of the year after
  // the first DCY; it does not apply to a series of early payments.
  const Date rbd = law::UsesCurrentLaw(gen) ? law::RequiredBeginningDate(gen.OwnerBirthDate, gen.Age1959)
                                            : datefun::RequiredBeginningDate(gen.OwnerBirthDate);
  const std::string rbdYear = Year(YearOf(rbd));
  out.Add("  1st Year Distributions (1/1-4/1/" + rbdYear +
          "): " + (IsEarly(gen) ? std::string("N/A") : "$" + FormatAmount(ira.FirstYearDist)));
  if (law::UsesCurrentLaw(gen) && !IsEarly(gen) && ira.FirstYearDist != Money())
    out.Add("  (Not used: under the law in force it does not reduce an IRA's balance.)");
  // The rate of return is used only by the projection.
  out.Add("  Rate Of Return: " + (gen.ProjectionYears > 0 ? FormatRate(ira.RateOfReturn) + "%" : std::string("N/A")));
  out.EmitAll();
}

}  // namespace

void DisplayInputs(ReportSink& sink) {
  const Scenario& scenario = TheScenario();
  const GeneralInputs& gen = scenario.Gen;
  const PageHeading heading{gen.OwnerName, gen.OtherInfo, "Input Report"};
  if (sink.Mode() == ReportMode::View) {
    sink.SetCaption("Input Report");
    ScreenHeading(sink, gen, "Inputs", heading);
  }
  BlockWriter out(sink, heading);
  out.Add("  IRA Owner: " + Trim(gen.OwnerName));
  out.Add("  Other Info.: " + Trim(gen.OtherInfo));
  out.Add("  IRA Owner's Birthday: " + FormatMdy(gen.OwnerBirthDate));
  out.Add("  IRA Owner's Date of Death: " + (HasDeathDate(gen) ? FormatMdy(gen.OwnerDeathDate) : std::string("N.A.")));
  if (gen.SpouseBen != 0) {
    out.Add("  Spouse is a beneficiary on some/all accounts.");
    out.Add("  Spouse's Birthday: " + FormatMdy(gen.SpouseBirthDate));
  } else {
    out.Add("  Spouse is not a beneficiary on any account.");
  }
  out.Add("  Distribution Calendar Year: " + Year(gen.DCY));
  out.Add("  Type of Distribution: " + DistributionPeriod(gen));
  if (law::UsesCurrentLaw(gen)) {
    out.Add(std::string("  ") + kRuleSetCurrent);
    out.Add("  Applicable age for an owner born in 1959: " + Year(gen.Age1959) +
            (gen.Age1959 == kAge1959Alternative ? "" : " (proposed regulation)"));
  }
  out.EmitAll();
  if (IsEarly(gen)) EarlyMethodBlock(out, gen);
  for (const IraRecord& ira : scenario.Ira) IraBlock(out, gen, ira);
}

}  // namespace ira::reports
