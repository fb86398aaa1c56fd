// The IRA list and one IRA's inputs: moving IRAs in the list and the
// recalculation elections an IRA is offered. With a spouse beneficiary the
// spouse's election matters only while the spouse's joint life expectancy is
// the one elected, that is while the spouse is at least as old as the
// non-spouse beneficiary counts under the MDIB rule.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/scenario/scenario.h"

namespace ira::irainputs {

// Moves the IRA at `from` to `to` (both within the list), keeping the rest in order.
void MoveIra(std::vector<IraRecord>& list, std::size_t from, std::size_t to);

struct RecalcChoice {
  std::int16_t value;  // bRecalc
  std::string label;
};
// The owner-only pair (0, 1) or, when the spouse's election counts, all four.
std::vector<RecalcChoice> OfferedRecalcChoices(const GeneralInputs& gen, const IraRecord& ira);
// The offered entry that stands for `bRecalc`: without the spouse's choices
// only zero versus nonzero matters.
std::size_t RecalcChoiceIndex(const std::vector<RecalcChoice>& choices, std::int16_t bRecalc);

// The texts of the IRA inputs dialog's entries.
struct IraEntries {
  std::string name;
  bool spouseBen = false;
  bool otherBen = false;
  std::string beneficiaryName;
  std::string beneficiaryBirthday;
  std::string distributedThisYear;
  std::string benefit;
  std::string firstYearDist;
  std::string rateOfReturn;
  std::int16_t bRecalc = 0;
  bool use2002Table = false;
  std::int16_t beneKind = 0;          // BeneKindCode
  std::int16_t spouseChoice = 0;      // SpouseChoiceCode
  std::int16_t spouseChoiceYear = 0;  // 0: the first year the choice can apply
};

// A choice offered in a list, with a one-line hint of what it means.
struct Choice {
  std::int16_t value;
  std::string label;
  std::string hint;
};
const std::vector<Choice>& BeneKindChoices();
const std::vector<Choice>& SpouseChoices();
// Under the law in force, once the owner has died: who the non-spouse
// beneficiary is, and a sole spouse beneficiary's choice.
bool BeneKindMatters(const GeneralInputs& gen, bool otherBen);
bool SpouseChoiceMatters(const GeneralInputs& gen, bool spouseBen, bool otherBen);
IraEntries EntriesOf(const IraRecord& ira);
// OK: every entry is read first; a bad one is reported by its field's name
// and nothing is stored.
bool ApplyIraEntries(const IraEntries& entries, IraRecord& ira);

// The beneficiary's birthday was left: the date's validity, then, when the IRA
// has a non-spouse beneficiary, the beneficiary's joint range check.
void BeneficiaryBirthdayEntered(const GeneralInputs& gen, const IraEntries& entries);

}  // namespace ira::irainputs
