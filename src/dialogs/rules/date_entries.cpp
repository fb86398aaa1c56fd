// The checks run as the dialogs' date entries are left. An empty entry is a
// date not given yet (or, for the date of death, a living owner): nothing to
// check. The range checks need the owner's birthday and the DCY; until both
// are there they would only report the placeholders.
#include "core/base/checked.h"
#include "core/base/text.h"
#include "core/tables/datefun.h"
#include "core/tables/life_exp.h"
#include "dialogs/rules/entries.h"
#include "dialogs/rules/ginputs.h"
#include "dialogs/rules/irainputs.h"

namespace ira {
namespace {

// The general inputs as the entries stand, for the checks that read them.
GeneralInputs TypedInputs(const ginputs::GenEntries& e) {
  GeneralInputs gen;
  gen.SpouseBen = ToFlag(e.spouseBen);
  gen.OwnerBirthDate = rules::ReadDate(e.ownerBirthday);
  gen.OwnerDeathDate = rules::ReadDate(e.deathDate);
  gen.SpouseBirthDate = rules::ReadDate(e.spouseBirthday);
  gen.DCY = ginputs::DcyOfText(e.dcy).value_or(0);
  gen.DistType = ginputs::StoredDistType(e.distType);
  return gen;
}

bool RangeCheckable(const GeneralInputs& gen) { return gen.OwnerBirthDate != kNoDate && gen.DCY != 0; }

// DateValid on a typed date; false for an empty or an invalid one.
bool Entered(const std::string& text, std::string_view label, Date& date) {
  if (Trim(text).empty()) return false;
  return datefun::DateValid(Trim(text), label, date);
}

void SpouseRangeIfBoth(const GeneralInputs& gen) {
  if (gen.SpouseBen != 0 && gen.SpouseBirthDate != kNoDate && RangeCheckable(gen)) {
    life_exp::SpouseJointRangeCheck(gen);
  }
}

}  // namespace

namespace ginputs {

void OwnerBirthdayEntered(const GenEntries& entries) {
  Date birth = kNoDate;
  if (!Entered(entries.ownerBirthday, "Owner's Birthday", birth)) return;
  GeneralInputs gen = TypedInputs(entries);
  gen.OwnerBirthDate = birth;
  datefun::CheckOwnerBirthday(gen);
  if (RangeCheckable(gen)) life_exp::OwnerRangeCheck(gen);
  SpouseRangeIfBoth(gen);
}

void SpouseBirthdayEntered(const GenEntries& entries) {
  Date birth = kNoDate;
  if (!Entered(entries.spouseBirthday, "Spouse's Birthday", birth)) return;
  datefun::CheckSpouseBirthday(birth);
  GeneralInputs gen = TypedInputs(entries);
  gen.SpouseBirthDate = birth;
  SpouseRangeIfBoth(gen);
}

void DeathDateEntered(const GenEntries& entries) {
  Date death = kNoDate;
  Entered(entries.deathDate, "Date of Death", death);
}

}  // namespace ginputs

namespace irainputs {

void BeneficiaryBirthdayEntered(const GeneralInputs& gen, const IraEntries& entries) {
  Date birth = kNoDate;
  if (!Entered(entries.beneficiaryBirthday, "Beneficiary's Birthday", birth)) return;
  if (!entries.otherBen || !RangeCheckable(gen)) return;
  IraRecord ira;
  ira.OtherBen = kTrue;
  ira.BeneficiaryName = FixedText(entries.beneficiaryName, kBeneficiaryNameWidth);
  ira.BeneBirthDate = birth;
  life_exp::BeneficiaryJointRangeCheck(gen, ira);
}

}  // namespace irainputs
}  // namespace ira
