// Life expectancy lookups (LIFE_EXP): single, joint and last survivor,
// term certain, one life recalculated with the other term certain, and MDIB.
// Ages are AgeInYear ages; ages outside 5..115 have no table value and give
// the sentinel 5000, which never wins a choice of the lowest life expectancy.
#pragma once

#include <cstdint>

#include "core/base/calendar.h"
#include "core/scenario/scenario.h"

namespace ira::life_exp {

inline constexpr float kNoTableValue = 5000.0f;
inline constexpr std::int16_t kMinAge = 5;
inline constexpr std::int16_t kMaxAge = 115;

// Table selector: 0 the 1986 tables, 1 the 2002 tables.
inline constexpr std::int16_t kTables1986 = 0;
inline constexpr std::int16_t kTables2002 = 1;
// 1 when the year is 2002 or later, else 0.
std::int16_t SelectorForYear(std::int16_t year);

// The published table sets, named by the year they were issued. The law in
// force picks one by value; a further set is one more value.
enum class TableSet : std::int16_t { k1986 = 1986, k2002 = 2002, k2022 = 2022 };
// Lookups by table set: kNoTableValue for an age the set does not hold, or
// when its file was not loaded. The Uniform Lifetime figure of the 1986 and
// 2002 sets is their joint figure at (age, age - 10), as published.
float SingleLife(TableSet set, int age);
float JointLife(TableSet set, int age1, int age2);
float UniformLifetime(TableSet set, int age);

float GetSingleLifeExp(std::int16_t age, std::int16_t sel);
float GetJointLifeExp(std::int16_t age1, std::int16_t age2, std::int16_t sel);
float SingleLifeExpInYear(Date birth, std::int16_t year, std::int16_t sel);
float JointLifeExpInYear(Date birth1, Date birth2, std::int16_t year, std::int16_t sel);
float MdibJointLifeExp(Date ownerBirth, std::int16_t year, std::int16_t sel);
float TermCertainSingleLifeExp(Date ownerBirth, Date birthB, std::int16_t year);
float TermCertainJointLifeExp(Date birthA, Date birthB, std::int16_t year);
std::int16_t GetTermCAge(Date birthT, Date ownerBirth, std::int16_t year);
float RecalcAndTermCLifeExp(Date birthR, Date birthT, Date ownerBirth, std::int16_t year, std::int16_t sel);
bool MdibAgeCheck(Date benBirth, Date ownerBirth, Date thirdBirth, std::int16_t year);

// The help shown when the user asks about a beneficiary younger than the
// joint table allows (OK on the "Please Note!" box).
inline constexpr const char* kBeneficiaryAgeHelpTitle = "Help on Beneficiary's Age";
inline constexpr const char* kBeneficiaryAgeHelp =
    "The age that you specified for the beneficiary is younger than allowed for in this system's joint "
    "life expectancy table. Please review the results closely to make sure the numbers make sense."
    "\r\n\r\n"
    "This probably won't be a problem. The Minimum Distribution Incidental Benefit (MDIB) rules will "
    "adjust the age of the beneficiary so that the difference in age is no more than ten years younger "
    "than the IRA owner. Ages adjusted by this rule should be supported by this system's life expectancy "
    "tables.";

// Interactive range checks: each shows its warnings or nothing.
void OwnerRangeCheck(const GeneralInputs& gen);
void SpouseJointRangeCheck(const GeneralInputs& gen);
// Trims the beneficiary's name and stores it back into the record.
void BeneficiaryJointRangeCheck(const GeneralInputs& gen, IraRecord& ira);

}  // namespace ira::life_exp
