// The scenario: one planning case, the owner-wide GeneralInputs and the list
// of the owner's IRA accounts. There is one program-wide scenario; dialogs
// write its fields, the file code stores it byte for byte, the engine and the
// reports read it. Fixed texts are held padded to their stored widths (UTF-8
// in memory); readers trim the right-hand blanks before display.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/base/money.h"
#include "core/base/text.h"

namespace ira {

inline constexpr std::size_t kOwnerNameWidth = 51;
inline constexpr std::size_t kOtherInfoWidth = 51;
inline constexpr std::size_t kIraNameWidth = 32;
inline constexpr std::size_t kBeneficiaryNameWidth = 52;

// The 90CM interest rate, percent, that the general inputs start from; files
// from versions without that rate get it too.
inline constexpr float kDefaultAnnuityIntRate = 6.0f;

// Early-distribution methods.
enum EarlyMethodCode : std::int16_t { kMethodMinimum = 0, kMethodAmortization = 1, kMethodAnnuity = 2 };

// The rules a scenario is computed under: the regulations of 1987 to 2002 as
// the program has always applied them, or the law in force in each year.
enum RuleSetCode : std::int16_t { kRulesDescribed = 0, kRulesCurrent = 1 };
// The applicable age of an owner born in 1959 (the statute gives both).
inline constexpr std::int16_t kAge1959Default = 73;
inline constexpr std::int16_t kAge1959Alternative = 75;

// Who the non-spouse beneficiary is, as the law in force classifies it.
enum BeneKindCode : std::int16_t {
  kBeneIndividual = 0,     // an individual not listed below
  kBeneMinorChild = 1,     // the owner's child, not yet 21 at the owner's death
  kBeneDisabled = 2,
  kBeneChronicallyIll = 3,
  kBeneNotIndividual = 4,  // an estate, a charity, a trust that is not see-through
};
// What a surviving spouse who is the beneficiary chose.
enum SpouseChoiceCode : std::int16_t {
  kSpouseRemainBeneficiary = 0,  // life expectancy payments
  kSpouseTreatAsOwn = 1,
  kSpouseTenYear = 2,            // owner died before the required beginning date
  kSpouseTreatedAsOwner = 3,     // the election for calendar years after 2023
};

struct GeneralInputs {
  std::string OwnerName = FixedText("", kOwnerNameWidth);
  std::string OtherInfo = FixedText("", kOtherInfoWidth);
  std::int16_t SpouseBen = 0;        // spouse is a beneficiary on some/all accounts
  Date OwnerBirthDate = kNoDate;
  Date OwnerDeathDate = kNoDate;     // kNoDate: the owner is living
  Date SpouseBirthDate = kNoDate;
  std::array<std::uint8_t, 8> Reserved{};
  std::int16_t DCY = 0;              // Distribution Calendar Year
  std::int16_t DistType = 0;         // -1 required minimum, 0 early (before 59 1/2)
  std::array<std::uint8_t, 8> OtherInputs{};
  std::int16_t ProjectionYears = 0;  // 0: projection mode off
  std::int16_t IraCount = 0;
  std::int16_t IncomeCalc = 0;       // compute income in the first projected year too
  std::int16_t EarlyMethod = 0;      // EarlyMethodCode
  float InflationRate = 0;           // percent
  float IntRate = 0;                 // amortization interest rate, percent
  float AnnuityFactor = 0;           // user override annuity factor
  float AnnuityIntRate = 0;          // 90CM interest rate, percent
  std::int16_t AnnuityOverride = 0;  // the user's annuity factor is used
  std::int16_t Kept174 = 0;
  float PercentOver = 0;             // percentage over the required minimum
  std::array<std::uint8_t, 4> Kept180{};  // zeroed when the DCY is above 2050
  // Stored in the file's extension block ("RULE"), not in the general record.
  std::int16_t RuleSet = kRulesDescribed;  // RuleSetCode
  std::int16_t Age1959 = kAge1959Default;  // 73 or 75

  friend bool operator==(const GeneralInputs&, const GeneralInputs&) = default;
};

struct IraRecord {
  std::string IraName = FixedText("", kIraNameWidth);
  std::int16_t SpouseBen = 0;        // spouse is a beneficiary on this IRA
  std::int16_t OtherBen = 0;         // there is a non-spouse beneficiary
  std::int16_t Kept36 = 0;
  std::string BeneficiaryName = FixedText("", kBeneficiaryNameWidth);
  Date BeneBirthDate = kNoDate;      // non-spouse beneficiary's birthday
  Money DistributedThisYear;         // amount already distributed this year
  Money Benefit;                     // balance at 12/31 of the year before the DCY
  Money FirstYearDist;               // first-year distributions made 1/1 to 4/1 of the second DCY
  std::int16_t Kept122 = 0;
  float RateOfReturn = 0;            // percent
  std::int16_t bRecalc = 0;          // recalculation election, 0..3
  std::int16_t chkUse2002Table = 0;  // early distributions: use the 2002 tables
  std::array<std::uint8_t, 6> Kept132{};
  // Stored in the file's extension block ("BENE"), not in the IRA record.
  std::int16_t BeneKind = kBeneIndividual;          // BeneKindCode
  std::int16_t SpouseChoice = kSpouseRemainBeneficiary;  // SpouseChoiceCode
  std::int16_t SpouseChoiceYear = 0;                // 0: the first year the choice can apply
  std::int16_t BeneKept = 0;

  friend bool operator==(const IraRecord&, const IraRecord&) = default;
};

// A chunk of the extension block this version does not know: kept as read
// and written back after the known ones, in its order.
struct ExtensionChunk {
  std::array<char, 4> Id{};
  std::vector<std::uint8_t> Payload;

  friend bool operator==(const ExtensionChunk&, const ExtensionChunk&) = default;
};

struct Scenario {
  GeneralInputs Gen;
  std::vector<IraRecord> Ira;  // always Gen.IraCount entries
  std::vector<ExtensionChunk> OtherChunks;

  // Every field zero or blank, no IRAs, no dates, the described rules (as a
  // file without an extension block reads).
  void Reset();
  // What New and start-up give the user: Reset, under the law in force.
  void ResetForNew();
  // Keeps Gen.IraCount and the list in step.
  IraRecord& AddIra();
  void RemoveIra(std::size_t index);

  friend bool operator==(const Scenario&, const Scenario&) = default;
};

// The one program-wide scenario (one per thread: the workers of a folder
// batch each compute their own).
Scenario& TheScenario();

inline bool IsEarly(const GeneralInputs& gen) { return gen.DistType == 0; }
inline bool HasDeathDate(const GeneralInputs& gen) { return gen.OwnerDeathDate != kNoDate; }

}  // namespace ira
