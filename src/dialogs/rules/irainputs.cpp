#include "dialogs/rules/irainputs.h"

#include <algorithm>

#include "core/base/checked.h"
#include "core/base/text.h"
#include "core/tables/datefun.h"
#include "core/tables/life_exp.h"
#include "dialogs/rules/entries.h"

namespace ira::irainputs {

void MoveIra(std::vector<IraRecord>& list, std::size_t from, std::size_t to) {
  if (from >= list.size() || to >= list.size() || from == to) return;
  const auto first = list.begin();
  if (from < to) {
    std::rotate(first + static_cast<std::ptrdiff_t>(from), first + static_cast<std::ptrdiff_t>(from) + 1,
                first + static_cast<std::ptrdiff_t>(to) + 1);
  } else {
    std::rotate(first + static_cast<std::ptrdiff_t>(to), first + static_cast<std::ptrdiff_t>(from),
                first + static_cast<std::ptrdiff_t>(from) + 1);
  }
}

std::vector<RecalcChoice> OfferedRecalcChoices(const GeneralInputs& gen, const IraRecord& ira) {
  bool spouseCounts = ira.SpouseBen != 0;
  if (spouseCounts && ira.OtherBen != 0 && gen.OwnerBirthDate != kNoDate && gen.SpouseBirthDate != kNoDate &&
      ira.BeneBirthDate != kNoDate) {
    spouseCounts = life_exp::MdibAgeCheck(ira.BeneBirthDate, gen.OwnerBirthDate, gen.SpouseBirthDate,
                                          datefun::FirstDCY(gen.OwnerBirthDate));
  }
  if (!spouseCounts) {
    return {{0, "Recalculate the owner's life expectancy each year"},
            {1, "Do not recalculate (term certain)"}};
  }
  return {{0, "Recalculate both the owner's and the spouse's life expectancy"},
          {1, "Recalculate neither (term certain for both)"},
          {2, "Recalculate the owner's only (spouse's term certain)"},
          {3, "Recalculate the spouse's only (owner's term certain)"}};
}

std::size_t RecalcChoiceIndex(const std::vector<RecalcChoice>& choices, std::int16_t bRecalc) {
  for (std::size_t i = 0; i < choices.size(); ++i) {
    if (choices[i].value == bRecalc) return i;
  }
  return bRecalc != 0 && choices.size() > 1 ? 1 : 0;
}

IraEntries EntriesOf(const IraRecord& ira) {
  IraEntries e;
  e.name = RTrim(ira.IraName);
  e.spouseBen = ira.SpouseBen != 0;
  e.otherBen = ira.OtherBen != 0;
  e.beneficiaryName = RTrim(ira.BeneficiaryName);
  e.beneficiaryBirthday = rules::DateText(ira.BeneBirthDate);
  e.distributedThisYear = rules::AmountText(ira.DistributedThisYear);
  e.benefit = rules::AmountText(ira.Benefit);
  e.firstYearDist = rules::AmountText(ira.FirstYearDist);
  e.rateOfReturn = NumberText(ira.RateOfReturn);
  e.bRecalc = ira.bRecalc;
  e.use2002Table = ira.chkUse2002Table != 0;
  e.beneKind = ira.BeneKind;
  e.spouseChoice = ira.SpouseChoice;
  e.spouseChoiceYear = ira.SpouseChoiceYear;
  return e;
}

const std::vector<Choice>& BeneKindChoices() {
  static const std::vector<Choice> choices = {
      {kBeneIndividual, "An individual", "Ten-year rule, unless not more than 10 years younger than the owner."},
      {kBeneMinorChild, "The owner's child under 21", "Life expectancy until 21, then ten more years."},
      {kBeneDisabled, "Disabled", "Life expectancy payments (an eligible designated beneficiary)."},
      {kBeneChronicallyIll, "Chronically ill", "Life expectancy payments (an eligible designated beneficiary)."},
      {kBeneNotIndividual, "Not an individual (estate, charity, trust)",
       "No designated beneficiary: five-year rule, or the owner's remaining life expectancy."},
  };
  return choices;
}

const std::vector<Choice>& SpouseChoices() {
  static const std::vector<Choice> choices = {
      {kSpouseRemainBeneficiary, "Remain beneficiary", "Life expectancy payments, the spouse's figure each year."},
      {kSpouseTreatAsOwn, "Treat the IRA as own", "The spouse's own applicable age and Uniform Lifetime Table."},
      {kSpouseTenYear, "Ten-year rule", "Empty by the end of the tenth year; owner died before the required "
                                        "beginning date."},
      {kSpouseTreatedAsOwner, "Be treated as the owner",
       "From 2024: Uniform Lifetime Table at the spouse's age (proposed rules)."},
  };
  return choices;
}

bool BeneKindMatters(const GeneralInputs& gen, bool otherBen) {
  return gen.RuleSet == kRulesCurrent && HasDeathDate(gen) && otherBen;
}

bool SpouseChoiceMatters(const GeneralInputs& gen, bool spouseBen, bool otherBen) {
  return gen.RuleSet == kRulesCurrent && HasDeathDate(gen) && spouseBen && !otherBen;
}

bool ApplyIraEntries(const IraEntries& e, IraRecord& ira) {
  const auto distributed = rules::ReadAmount(e.distributedThisYear, "Amount already distributed this year");
  if (!distributed) return false;
  const auto benefit = rules::ReadAmount(e.benefit, "Benefit (before adjustments)");
  if (!benefit) return false;
  const auto firstYear = rules::ReadAmount(e.firstYearDist, "1st Year Distributions");
  if (!firstYear) return false;
  const auto rate = rules::ReadSingle(e.rateOfReturn, "Rate Of Return");
  if (!rate) return false;

  ira.IraName = FixedText(Trim(e.name), kIraNameWidth);
  ira.SpouseBen = ToFlag(e.spouseBen);
  ira.OtherBen = ToFlag(e.otherBen);
  ira.BeneficiaryName = FixedText(Trim(e.beneficiaryName), kBeneficiaryNameWidth);
  ira.BeneBirthDate = rules::ReadDate(e.beneficiaryBirthday);
  ira.DistributedThisYear = *distributed;
  ira.Benefit = *benefit;
  ira.FirstYearDist = *firstYear;
  ira.RateOfReturn = *rate;
  ira.bRecalc = e.bRecalc;
  ira.chkUse2002Table = ToFlag(e.use2002Table);
  ira.BeneKind = e.beneKind;
  ira.SpouseChoice = e.spouseChoice;
  ira.SpouseChoiceYear = e.spouseChoiceYear;
  return true;
}

}  // namespace ira::irainputs
