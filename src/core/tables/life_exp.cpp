#include "core/tables/life_exp.h"

#include <algorithm>
#include <string>

#include "core/base/checked.h"
#include "core/base/messages.h"
#include "core/base/money.h"
#include "core/base/text.h"
#include "core/tables/datefun.h"
#include "core/tables/table_check.h"
#include "core/tables/tables.h"

namespace ira::life_exp {
namespace {

using datefun::AgeInYear;
using datefun::FirstDCY;
using tables::kAges;
using tables::Tables;

bool InTable(int age) { return age >= kMinAge && age <= kMaxAge; }

std::size_t Index(int age) { return static_cast<std::size_t>(age - kMinAge); }

// A table value; a table found missing or damaged gives 0, as a missing one
// always has, and the read is noted so that the figure is withheld.
float Read(tables::TableId id, float value) {
  if (tables::Usable(id)) return value;
  tables::NoteUnusableRead();
  return 0;
}

// Years elapsed since a first DCY, as the 16-bit value the rules count in.
std::int16_t YearsSince(std::int16_t year, std::int16_t first, const char* where) {
  return CheckedInt16(static_cast<long long>(year) - first, where);
}

// Fixed texts of the range checks; the wording (and the blank before the line
// feed) is deliberate.
constexpr const char* kOwnerAge = "The Owner's age (";
constexpr const char* kSpouseAge = "The Spouse's age (";
constexpr const char* kLessThanAllowed = ") is less than allowed for ";
constexpr const char* kGreaterThanAllowed = ") is greater than allowed for ";
constexpr const char* kSingleTail =
    "in this system's life expectancy tables. The results for this person will be erroneous.";
constexpr const char* kJointTail =
    " is either younger or older than allowed for in this system's joint life expectancy table. "
    "The results produced are likely to be incorrect.";
constexpr const char* kYoungerThanJoint =
    ") is younger than allowed for in this system's joint life expectancy table. \n"
    "If you would like additional information select OK, otherwise select Cancel";
constexpr const char* kNotAvailable = "Data not available";
constexpr const char* kJointNotAvailable = "Data not available!";
constexpr const char* kPleaseNote = "Please Note!";

void JointRangeMessage(const std::string& who, std::int16_t age) {
  ShowMessage(kJointNotAvailable, who + std::to_string(age) + ")" + kJointTail, MsgIcon::Critical);
}

}  // namespace

namespace {

// A value of zero is a table that was not loaded.
float Loaded(float value) { return value > 0.0f ? value : kNoTableValue; }

bool In2022(int age) { return age >= 0 && age < static_cast<int>(tables::k2022Ages); }

}  // namespace

float SingleLife(TableSet set, int age) {
  if (set == TableSet::k2022) {
    if (!In2022(age)) return kNoTableValue;
    return Loaded(Read(tables::kSingle22, tables::Tables2022().single[static_cast<std::size_t>(age)]));
  }
  if (!InTable(age)) return kNoTableValue;
  return Loaded(set == TableSet::k1986 ? Read(tables::kSingle86, Tables().single86[Index(age)])
                                       : Read(tables::kSingle02, Tables().single02[Index(age)]));
}

float JointLife(TableSet set, int age1, int age2) {
  if (set == TableSet::k2022) {
    if (!In2022(age1) || !In2022(age2)) return kNoTableValue;
    return Loaded(Read(tables::kJoint22, tables::Tables2022().joint[static_cast<std::size_t>(age1) +
                                                                    static_cast<std::size_t>(age2) * tables::k2022Ages]));
  }
  if (!InTable(age1) || !InTable(age2)) return kNoTableValue;
  if (set == TableSet::k1986) return Loaded(Read(tables::kJoint86, Tables().joint86[Index(age1) + Index(age2) * kAges]));
  return Loaded(
      Read(tables::kJoint02, Tables().joint02[Index(std::max(age1, age2)) + Index(std::min(age1, age2)) * kAges]));
}

float UniformLifetime(TableSet set, int age) {
  if (set != TableSet::k2022) return JointLife(set, age, age - 10);
  const int index = age - tables::kUniform2022FirstAge;
  if (index < 0 || index >= static_cast<int>(tables::kUniform2022Ages)) return kNoTableValue;
  return Loaded(Read(tables::kUniform22, tables::Tables2022().uniform[static_cast<std::size_t>(index)]));
}

std::int16_t SelectorForYear(std::int16_t year) { return year >= 2002 ? kTables2002 : kTables1986; }

// The age and selector checks keep every index inside the arrays, so these
// two lookups have nothing left that can fail.
float GetSingleLifeExp(std::int16_t age, std::int16_t sel) {
  if (!InTable(age)) return kNoTableValue;
  if (sel == kTables1986) return Read(tables::kSingle86, Tables().single86[Index(age)]);
  if (sel == kTables2002) return Read(tables::kSingle02, Tables().single02[Index(age)]);
  return kNoTableValue;
}

float GetJointLifeExp(std::int16_t age1, std::int16_t age2, std::int16_t sel) {
  if (!InTable(age1) || !InTable(age2)) return kNoTableValue;
  if (sel == kTables1986) return Read(tables::kJoint86, Tables().joint86[Index(age1) + Index(age2) * kAges]);
  if (sel == kTables2002) {
    // Only the half with the older life first is consulted in the 2002 table;
    // the 1986 table is read in the order given, as a full square.
    const std::int16_t older = std::max(age1, age2);
    const std::int16_t younger = std::min(age1, age2);
    return Read(tables::kJoint02, Tables().joint02[Index(older) + Index(younger) * kAges]);
  }
  return 0;
}

float SingleLifeExpInYear(Date birth, std::int16_t year, std::int16_t sel) {
  return GetSingleLifeExp(AgeInYear(birth, year), sel);
}

float JointLifeExpInYear(Date birth1, Date birth2, std::int16_t year, std::int16_t sel) {
  return GetJointLifeExp(AgeInYear(birth1, year), AgeInYear(birth2, year), sel);
}

float MdibJointLifeExp(Date ownerBirth, std::int16_t year, std::int16_t sel) {
  const std::int16_t age = AgeInYear(ownerBirth, year);
  return GetJointLifeExp(age, CheckedInt16(age - 10, "MdibJointLifeExp()"), sel);
}

// Fixed in the owner's first DCY from that year's table, then one less for
// every year since; never re-read, so it may reach zero or below.
float TermCertainSingleLifeExp(Date ownerBirth, Date birthB, std::int16_t year) {
  const std::int16_t first = FirstDCY(ownerBirth);
  const float fixed = GetSingleLifeExp(AgeInYear(birthB, first), SelectorForYear(first));
  return fixed - static_cast<float>(YearsSince(year, first, "TermCertainSingleLifeExp()"));
}

float TermCertainJointLifeExp(Date birthA, Date birthB, std::int16_t year) {
  const std::int16_t first = FirstDCY(birthA);
  const float fixed = GetJointLifeExp(AgeInYear(birthA, first), AgeInYear(birthB, first), SelectorForYear(first));
  return fixed - static_cast<float>(YearsSince(year, first, "TermCertainJointLifeExp()"));
}

// The age whose table life expectancy has shrunk to the remaining term: the
// first age from 40 on whose value is at most the term, else 116. Both sides
// are one-decimal figures and are compared as such (17.3 - 10 is 7.3, as by
// hand, though the single 17.3f - 10 lies just below 7.3f).
std::int16_t GetTermCAge(Date birthT, Date ownerBirth, std::int16_t year) {
  try {
    const long long term = LifeExpDecimal(TermCertainSingleLifeExp(ownerBirth, birthT, year)).mantissa;
    const std::int16_t sel = SelectorForYear(year);
    for (std::int16_t age = 40; age <= kMaxAge; ++age) {
      if (LifeExpDecimal(GetSingleLifeExp(age, sel)).mantissa <= term) return age;
    }
    return kMaxAge + 1;
  } catch (const std::exception& e) {
    ReportUnexpected("GetTermCAge()", e);
    return 0;
  }
}

float RecalcAndTermCLifeExp(Date birthR, Date birthT, Date ownerBirth, std::int16_t year, std::int16_t sel) {
  try {
    const std::int16_t recalcAge = AgeInYear(birthR, year);
    if (year == FirstDCY(ownerBirth)) return GetJointLifeExp(recalcAge, AgeInYear(birthT, year), sel);
    const std::int16_t termAge = GetTermCAge(birthT, ownerBirth, year);
    // A term-certain life past the table is spent: the owner's own figure applies.
    if (termAge >= kMaxAge) return SingleLifeExpInYear(ownerBirth, year, sel);
    return GetJointLifeExp(recalcAge, termAge, sel);
  } catch (const std::exception& e) {
    ReportUnexpected("RecalcAndTermCLifeExp()", e);
    return 0;
  }
}

// The beneficiary counts as at most ten years younger than the owner.
bool MdibAgeCheck(Date benBirth, Date ownerBirth, Date thirdBirth, std::int16_t year) {
  const std::int16_t ownerAge = AgeInYear(ownerBirth, year);
  const int adjusted = std::max<int>(AgeInYear(benBirth, year), ownerAge - 10);
  return AgeInYear(thirdBirth, year) >= adjusted;
}

void OwnerRangeCheck(const GeneralInputs& gen) {
  try {
    if (gen.OwnerBirthDate == kNoDate) return;
    const std::int16_t age = AgeInYear(gen.OwnerBirthDate, gen.DCY);
    if (age >= kMinAge && age <= kMaxAge) return;
    const char* bound = age < kMinAge ? kLessThanAllowed : kGreaterThanAllowed;
    ShowMessage(kNotAvailable, kOwnerAge + std::to_string(age) + bound + kSingleTail, MsgIcon::Critical);
  } catch (const std::exception& e) {
    ReportUnexpected("OwnerRangeCheck()", e);
  }
}

void SpouseJointRangeCheck(const GeneralInputs& gen) {
  try {
    if (gen.SpouseBen == 0) return;
    const std::int16_t ownerAge = AgeInYear(gen.OwnerBirthDate, gen.DCY);
    const std::int16_t spouseAge = AgeInYear(gen.SpouseBirthDate, gen.DCY);
    if (!InTable(ownerAge)) JointRangeMessage(kOwnerAge, ownerAge);
    if (!InTable(spouseAge)) JointRangeMessage(kSpouseAge, spouseAge);
  } catch (const std::exception& e) {
    ReportUnexpected("SpouseJointRangeCheck()", e);
  }
}

void BeneficiaryJointRangeCheck(const GeneralInputs& gen, IraRecord& ira) {
  try {
    if (ira.OtherBen == 0) return;
    const std::int16_t ownerAge = AgeInYear(gen.OwnerBirthDate, gen.DCY);
    const std::int16_t benAge = AgeInYear(ira.BeneBirthDate, gen.DCY);
    const std::string name = Trim(ira.BeneficiaryName);
    ira.BeneficiaryName = FixedText(name, kBeneficiaryNameWidth);
    if (!InTable(ownerAge)) JointRangeMessage(kOwnerAge, ownerAge);
    const std::string who = name + "'s age (";
    if (ownerAge < benAge) {
      if (!InTable(benAge)) JointRangeMessage(who, benAge);
    } else if (benAge > kMaxAge) {
      JointRangeMessage(who, benAge);
    } else if (benAge < kMinAge) {
      // A beneficiary much younger than the owner is usually rescued by the
      // MDIB age adjustment, so this case only offers help.
      const MsgAnswer answer = ShowMessage(kPleaseNote, who + std::to_string(benAge) + kYoungerThanJoint,
                                           MsgIcon::Information, MsgButtons::OkCancel);
      if (answer == MsgAnswer::Ok) ShowMessage(kBeneficiaryAgeHelpTitle, kBeneficiaryAgeHelp, MsgIcon::Information);
    }
  } catch (const std::exception& e) {
    ReportUnexpected("BeneficiaryJointRangeCheck()", e);
  }
}

}  // namespace ira::life_exp
