#include "dialogs/rules/ginputs.h"

#include <cmath>

#include "core/base/calendar.h"
#include "core/base/checked.h"
#include "core/base/messages.h"
#include "core/base/text.h"
#include "core/law/law.h"
#include "core/tables/datefun.h"
#include "dialogs/rules/entries.h"
#include "dialogs/rules/numeric_text.h"

namespace ira::ginputs {
namespace {

constexpr const char* kNoteTitle = "Please Note!";
constexpr const char* kVerifyTitle = "Please Verify";

std::optional<Date> DateOfText(const std::string& text) {
  if (text.empty()) return std::nullopt;
  return ParseDate(text);
}

void Note(const std::string& text) { ShowMessage(kNoteTitle, text, MsgIcon::Information); }

}  // namespace

std::int16_t DistTypeOptionFor(const GeneralInputs& gen) {
  if (IsEarly(gen)) return kBefore59Half;
  if (gen.OwnerBirthDate != kNoDate && gen.DCY != 0 && gen.DCY < YearOf(datefun::Date70Half(gen.OwnerBirthDate))) {
    return kBetween59And70;
  }
  return kAfter70Half;
}

std::int16_t StoredDistType(std::int16_t option) { return option == kBefore59Half ? kFalse : kTrue; }

std::int16_t ExpandDcy(std::int16_t value, std::int16_t currentYear) {
  if (value >= 100) return value;
  return CheckedInt16(currentYear / 100 * 100 + value, "ExpandDcy()");
}

std::optional<std::int16_t> DcyOfText(std::string_view text) {
  const auto value = rules::NumericValue(text);
  if (!value) return std::nullopt;
  const double whole = std::nearbyint(*value);  // halves to the even year, as an integer entry rounds
  if (whole < -99 || whole > 9999) return std::nullopt;
  const std::int16_t year = ExpandDcy(static_cast<std::int16_t>(whole), CurrentYear());
  if (year < 1) return std::nullopt;
  return year;
}

bool CheckDcyAndType(DcyTypeEntries& e) {
  const auto parsed = DcyOfText(e.dcyText);
  if (!parsed) return false;
  std::int16_t dcy = *parsed;
  e.dcyText = std::to_string(dcy);

  const auto birth = DateOfText(e.ownerBirthText);
  if (!birth) return false;
  const std::int16_t year59 = YearOf(datefun::Date59Half(*birth));
  const bool currentLaw = e.ruleSet == kRulesCurrent;
  // The first year of required distributions: 70 1/2, or the applicable age.
  const std::int16_t year70 = currentLaw ? law::FirstDistributionYear(*birth, e.age1959)
                                         : YearOf(datefun::Date70Half(*birth));

  switch (e.distType) {
    case kBefore59Half:
      if (dcy >= year59) {
        Note("For a maximum distribution the Distribution Calendar Year must be earlier than the year the Owner "
             "turns 59 and 1/2. Please correct this.");
        e.conflict = true;
      }
      return false;
    case kBetween59And70: {
      const std::int16_t current = CurrentYear();
      if (dcy < current) {
        Note("The Year you entered is before the current year (" + std::to_string(dcy) +
             "). The Year will be changed to " + std::to_string(current) + ".");
        dcy = current;
        e.dcyText = std::to_string(dcy);
      }
      if (dcy < year59) {
        Note("The Distribution Calendar Year you entered would make this a Pre 59 and 1/2 distribution. Type of "
             "Distribution will be changed to Pre 59 and 1/2.");
        e.distType = kBefore59Half;
        return true;
      }
      if (dcy >= year70) {
        Note("The Distribution Calendar Year you entered would make this a Post 70 and 1/2 distribution. Type of "
             "Distribution will be changed to Post 70 and 1/2.");
        e.distType = kAfter70Half;
        return true;
      }
      return false;
    }
    default: {
      std::int16_t first = year70;
      if (const auto death = DateOfText(e.deathText)) {
        const std::int16_t afterDeath = CheckedInt16(YearOf(*death) + 1, "CheckDcyAndType()");
        if (afterDeath < first) first = afterDeath;
      }
      if (dcy < first) {
        Note(currentLaw ? "The Distribution Calendar Year must be equal to or later than the year the Owner reaches "
                          "the applicable age (" +
                              law::ApplicableAgeFor(*birth, e.age1959).Text() +
                              "). The DCY will be adjusted to the first possible DCY."
                        : "The Distribution Calendar Year must be equal to or later than the year the Owner turns 70 "
                          "and 1/2.The DCY will be adjusted to the first possible DCY.");
        e.dcyText = std::to_string(first);
      }
      return false;
    }
  }
}

// "larger that" and the blanks after "rate." are the program's own wording.
void Chk_InflationRate(std::string_view text) {
  if (static_cast<float>(rules::Val(text)) < -0.01f) {
    ShowMessage(kVerifyTitle, "Please check the inflation rate.  It should be larger that -0.01.",
                MsgIcon::Information);
  }
}

void Chk_IntRateRate(std::string_view text, std::int16_t earlyMethod) {
  if (earlyMethod == kMethodAmortization && static_cast<float>(rules::Val(text)) < 1.0f) {
    ShowMessage(kVerifyTitle, "Please check the interest rate.  It should be larger that 1.", MsgIcon::Information);
  }
}

void Chk_AnnuityIntRateRate(std::string_view text) {
  if (static_cast<float>(rules::Val(text)) < 4.2f) {
    ShowMessage(kVerifyTitle, "Please check the interest rate. It should be larger that 4.2.", MsgIcon::Information);
  }
}

GenEntries EntriesOf(const GeneralInputs& gen) {
  GenEntries e;
  e.ownerName = RTrim(gen.OwnerName);
  e.otherInfo = RTrim(gen.OtherInfo);
  e.spouseBen = gen.SpouseBen != 0;
  e.ownerBirthday = rules::DateText(gen.OwnerBirthDate);
  e.deathDate = rules::DateText(gen.OwnerDeathDate);
  e.spouseBirthday = rules::DateText(gen.SpouseBirthDate);
  e.dcy = gen.DCY != 0 ? std::to_string(gen.DCY) : std::string();
  e.distType = DistTypeOptionFor(gen);
  e.earlyMethod = gen.EarlyMethod;
  e.intRate = NumberText(gen.IntRate);
  e.annuityMethod = gen.AnnuityOverride != 0 ? kAnnuityUserOverride : kAnnuity90CM;
  e.annuityIntRate = NumberText(gen.AnnuityIntRate);
  e.annuityFactor = NumberText(gen.AnnuityFactor);
  e.inflationRate = NumberText(gen.InflationRate);
  e.ruleSet = gen.RuleSet;
  e.age1959 = gen.Age1959;
  return e;
}

bool ApplyGenEntries(const GenEntries& e, GeneralInputs& gen) {
  const auto dcy = DcyOfText(e.dcy);
  if (!dcy) {
    ShowMessage("WARNING",
                "The Distribution Calendar Year entered as " + e.dcy + " is not a year. Please enter a year such as " +
                    std::to_string(CurrentYear()) + ".",
                MsgIcon::Exclamation);
    return false;
  }
  const auto intRate = rules::ReadSingle(e.intRate, "Interest Rate");
  if (!intRate) return false;
  const auto annuityIntRate = rules::ReadSingle(e.annuityIntRate, "Interest Rate for Life Table 90CM");
  if (!annuityIntRate) return false;
  const auto annuityFactor = rules::ReadSingle(e.annuityFactor, "User Override Annuity Factor");
  if (!annuityFactor) return false;
  const auto inflation = rules::ReadSingle(e.inflationRate, "Inflation Rate");
  if (!inflation) return false;

  gen.OwnerName = FixedText(Trim(e.ownerName), kOwnerNameWidth);
  gen.OtherInfo = FixedText(Trim(e.otherInfo), kOtherInfoWidth);
  gen.SpouseBen = ToFlag(e.spouseBen);
  gen.OwnerBirthDate = rules::ReadDate(e.ownerBirthday);
  gen.OwnerDeathDate = rules::ReadDate(e.deathDate);
  gen.SpouseBirthDate = rules::ReadDate(e.spouseBirthday);
  gen.DCY = *dcy;
  gen.DistType = StoredDistType(e.distType);
  gen.EarlyMethod = e.earlyMethod;
  gen.IntRate = *intRate;
  gen.AnnuityOverride = ToFlag(e.annuityMethod == kAnnuityUserOverride);
  gen.AnnuityIntRate = *annuityIntRate;
  gen.AnnuityFactor = *annuityFactor;
  gen.InflationRate = *inflation;
  gen.RuleSet = e.ruleSet;
  gen.Age1959 = e.age1959;
  return true;
}

GenEnables SetGenIPEnables(const GenEntries& e) {
  GenEnables en;
  en.spouseBirthday = e.spouseBen;
  en.earlyMethod = e.distType == kBefore59Half;
  en.intRate = en.earlyMethod && e.earlyMethod == kMethodAmortization;
  en.annuityMethod = en.earlyMethod && e.earlyMethod == kMethodAnnuity;
  en.annuityIntRate = en.annuityMethod && e.annuityMethod == kAnnuity90CM;
  en.annuityFactor = en.annuityMethod && e.annuityMethod == kAnnuityUserOverride;
  const auto birth = DateOfText(Trim(e.ownerBirthday));
  en.age1959 = e.ruleSet == kRulesCurrent && birth && YearOf(*birth) == 1959;
  return en;
}

std::string RuleSetName(std::int16_t ruleSet) {
  return ruleSet == kRulesCurrent ? "the law in force in each year" : "the regulations as described (1987-2002)";
}

}  // namespace ira::ginputs
