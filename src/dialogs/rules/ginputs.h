// The general inputs rules (GINPUTS): the Distribution Calendar Year and the
// type of distribution kept consistent with the owner's key years, and the
// advisory checks of the three rates. Every message here is a notice: the
// dialog stays open and only the DCY entry and the type option change.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/scenario/scenario.h"

namespace ira::ginputs {

// The values of the type-of-distribution option CSOptDistType.
enum DistTypeOption : std::int16_t { kAfter70Half = 0, kBetween59And70 = 1, kBefore59Half = 2 };

// The option that stands for the stored type: early is before 59 1/2; a
// required type is after 70 1/2 unless the DCY falls before the owner's
// 70 1/2 year.
std::int16_t DistTypeOptionFor(const GeneralInputs& gen);
// -1 (required minimum) for options 0 and 1, 0 (early) for option 2.
std::int16_t StoredDistType(std::int16_t option);

// A two-digit year belongs to the current century: 5 in 2014 is 2005.
std::int16_t ExpandDcy(std::int16_t value, std::int16_t currentYear);
// The year the DCY entry holds, two-digit years expanded; nothing when the
// entry is empty, not a number or not a year.
std::optional<std::int16_t> DcyOfText(std::string_view text);

// The entries the DCY and type check reads and may change.
struct DcyTypeEntries {
  std::string dcyText;
  std::int16_t distType = kAfter70Half;
  std::string ownerBirthText;
  std::string deathText;
  // Set when the year cannot stand for the type (a maximum distribution in
  // or after the 59 1/2 year): the user must correct one of them.
  bool conflict = false;
  // Under the law in force required distributions start in the year of the
  // applicable age, not of 70 1/2.
  std::int16_t ruleSet = kRulesDescribed;
  std::int16_t age1959 = kAge1959Default;
};
// Runs when the DCY or the type is left and on OK. Returns true when it
// changed the type, so that the dialog redoes its type-dependent set-up. A
// year the user typed is never erased: a conflict is reported and flagged.
bool CheckDcyAndType(DcyTypeEntries& entries);

// Each shows its "Please Verify" notice when the value looks wrong and leaves
// the value as typed.
void Chk_InflationRate(std::string_view text);
void Chk_IntRateRate(std::string_view text, std::int16_t earlyMethod);
void Chk_AnnuityIntRateRate(std::string_view text);

// The annuity method list lstAnnuityMethod.
inline constexpr const char* kAnnuityMethods[] = {"Life Table 90CM", "User Override"};
inline constexpr std::int16_t kAnnuity90CM = 0;
inline constexpr std::int16_t kAnnuityUserOverride = 1;

// The texts and choices of the general inputs dialog.
struct GenEntries {
  std::string ownerName;
  std::string otherInfo;
  bool spouseBen = false;
  std::string ownerBirthday;
  std::string deathDate;
  std::string spouseBirthday;
  std::string dcy;
  std::int16_t distType = kAfter70Half;  // CSOptDistType
  std::int16_t earlyMethod = kMethodMinimum;
  std::string intRate;
  std::int16_t annuityMethod = kAnnuity90CM;
  std::string annuityIntRate;
  std::string annuityFactor;
  std::string inflationRate;
  std::int16_t ruleSet = kRulesCurrent;  // RuleSetCode
  std::int16_t age1959 = kAge1959Default;
};
GenEntries EntriesOf(const GeneralInputs& gen);
// OK: a DCY that is no year is refused with a message naming the field; so is
// an unreadable rate. Otherwise every field is stored.
bool ApplyGenEntries(const GenEntries& entries, GeneralInputs& gen);

// The checks run when a date entry is left: the date's validity, then for the
// owner's birthday the 1987 cut-off, the plausibility and the owner's range
// check; for the spouse's birthday the plausibility; after either birthday
// the joint range check when the spouse is a beneficiary.
void OwnerBirthdayEntered(const GenEntries& entries);
void SpouseBirthdayEntered(const GenEntries& entries);
void DeathDateEntered(const GenEntries& entries);

// Which controls take input for the chosen type and methods (SetGenIPEnables).
struct GenEnables {
  bool spouseBirthday = false;
  bool earlyMethod = false;
  bool intRate = false;
  bool annuityMethod = false;
  bool annuityIntRate = false;
  bool annuityFactor = false;
  // The 1959 age matters only under the law in force, to an owner born 1959.
  bool age1959 = false;
};
GenEnables SetGenIPEnables(const GenEntries& entries);

// The rule set choices, in RuleSetCode order, and a line on what each does.
inline constexpr const char* kRuleSetChoices[] = {"The regulations as described (1987-2002)",
                                                  "The law in force in each year"};
inline constexpr const char* kRuleSetHints[] = {
    "Every year is computed under the 1987, 2001 and 2002 regulations, as the program always has.",
    "Each year is computed under the law of that year: SECURE Acts ages, 2022 tables, 2009 and 2020 waived."};
// The 1959 age choices: the proposed regulation's 73 first.
inline constexpr const char* kAge1959Choices[] = {"73 (the proposed regulation)", "75"};
// How the main window names a rule set.
std::string RuleSetName(std::int16_t ruleSet);

}  // namespace ira::ginputs
