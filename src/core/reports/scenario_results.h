// The figures of one scenario as other software reads them (the summary and
// totals CSV files, the JSON document): each account's required distribution
// for the Distribution Calendar Year, computed by the engine exactly as the
// reports compute it, and the totals the Calendar Year Summary prints.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/base/money.h"
#include "core/engine/rep_calc.h"
#include "core/scenario/scenario.h"

namespace ira::reports {

// What an account's row says about its figures. Only Ok and Waived rows have
// figures (a waived year's are zero).
enum class AccountStatus { Ok, AgesNotSupported, Waived, NotComputedYet, TableDamaged };
inline bool HasFigures(AccountStatus status) {
  return status == AccountStatus::Ok || status == AccountStatus::Waived;
}

struct AccountFigures {
  std::string name;                 // the account's name, trimmed
  rep_calc::IraDistResults results;
  std::string deadline;             // as the reports print it: "12/31/2005", "No distribution required for 2005"
  std::optional<Date> dueDate;      // none when no distribution is required
  // The year by which the account must be emptied, where the law in force
  // gives its schedule one (ten-year, five-year, a minor child's).
  std::optional<std::int16_t> finalYear;
  AccountStatus status = AccountStatus::Ok;
  // Under the rules the summary takes (see SummaryUsesLaterRules); only
  // meaningful when the status is Ok.
  std::optional<float> divisor;     // none for an amortization or annuity series
  Money balance;                    // the adjusted balance the divisor applies to
  Money required;
  Money alreadyDistributed;
  Money stillToPay;
};

struct ScenarioTotals {
  int accounts = 0;
  int computed = 0;  // accounts with figures; only these are totalled
  Money balance;
  Money required;
  Money alreadyDistributed;
  Money stillToPay;
};

struct ScenarioFigures {
  bool laterRules = false;  // the 2001/2002 amounts rather than the 1987 ones
  std::vector<AccountFigures> accounts;
  ScenarioTotals totals;
};

// The summary's rules, as the Calendar Year Summary window shows them: the
// 1987 amount before 2001, the later amount after 2001, and in 2001 the later
// one for required distributions, the 1987 one for an early series.
inline bool SummaryUsesLaterRules(const GeneralInputs& gen) {
  return rep_calc::ProjectionUsesLaterRules(gen.DistType, gen.DCY);
}

// An early scenario paid as a series (amortization or annuity): a level
// payment, no divisor.
inline bool IsEarlySeries(const GeneralInputs& gen) {
  return IsEarly(gen) && (gen.EarlyMethod == kMethodAmortization || gen.EarlyMethod == kMethodAnnuity);
}

// A life expectancy slot's value, or none for a slot that does not apply.
std::optional<float> ApplicableLifeExp(float value);

// Computes every account of `scenario` (the engine's messages go to the
// thread's message sink, as the reports' do).
ScenarioFigures ComputeFigures(const Scenario& scenario);

// The text of a status as the summary files write it.
const char* StatusText(AccountStatus status);

}  // namespace ira::reports
