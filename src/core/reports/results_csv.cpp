#include "core/reports/results_csv.h"

#include <cstdio>
#include <initializer_list>

#include "core/base/text.h"
#include "core/reports/formats.h"

namespace ira::reports {
namespace {

constexpr const char* kReadError = "read error";
// The totals of a scenario with an account left out say so.

std::string Line(std::initializer_list<std::string_view> fields) {
  std::string line;
  for (std::string_view f : fields) {
    if (!line.empty()) line += ',';
    line += CsvField(f);
  }
  return line + "\r\n";
}

std::string IsoDate(Date date) {
  const Ymd ymd = ToYmd(date);
  char buf[16];
  std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", ymd.year, ymd.month, ymd.day);
  return buf;
}

std::string Owner(const Scenario& scenario) { return Trim(scenario.Gen.OwnerName); }

}  // namespace

std::string CsvField(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
  std::string quoted = "\"";
  for (char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + '"';
}

std::string SummaryCsvHeader() {
  return Line({"file", "owner", "account", "rule_set", "distribution_year", "due_date", "balance", "divisor",
               "required_amount", "already_distributed", "still_to_pay", "final_year", "status", "message"});
}

std::string TotalsCsvHeader() {
  return Line({"file", "owner", "rule_set", "distribution_year", "accounts", "accounts_computed", "balance",
               "required_amount", "already_distributed", "still_to_pay", "status", "message"});
}

std::string SummaryCsvRows(std::string_view file, const Scenario& scenario, const ScenarioFigures& figures) {
  const std::string owner = Owner(scenario);
  const std::string ruleSet = std::to_string(scenario.Gen.RuleSet);
  const std::string year = std::to_string(scenario.Gen.DCY);
  std::string rows;
  for (const AccountFigures& a : figures.accounts) {
    const std::string due = a.dueDate ? IsoDate(*a.dueDate) : std::string();
    if (!HasFigures(a.status)) {
      rows += Line({file, owner, a.name, ruleSet, year, due, "", "", "", "", "", "", StatusText(a.status), ""});
      continue;
    }
    rows += Line({file, owner, a.name, ruleSet, year, due, FormatPlainAmount(a.balance),
                  a.divisor ? FormatFixed(*a.divisor) : std::string(), FormatPlainAmount(a.required),
                  FormatPlainAmount(a.alreadyDistributed), FormatPlainAmount(a.stillToPay),
                  a.finalYear ? std::to_string(*a.finalYear) : std::string(),
                  StatusText(a.status), ""});
  }
  return rows;
}

std::string TotalsCsvRow(std::string_view file, const Scenario& scenario, const ScenarioFigures& figures) {
  const ScenarioTotals& t = figures.totals;
  // A scenario with an account left out says why, by its first such account.
  const char* status = StatusText(AccountStatus::Ok);
  for (const AccountFigures& a : figures.accounts) {
    if (!HasFigures(a.status)) {
      status = StatusText(a.status);
      break;
    }
  }
  return Line({file, Owner(scenario), std::to_string(scenario.Gen.RuleSet), std::to_string(scenario.Gen.DCY),
               std::to_string(t.accounts), std::to_string(t.computed), FormatPlainAmount(t.balance),
               FormatPlainAmount(t.required), FormatPlainAmount(t.alreadyDistributed), FormatPlainAmount(t.stillToPay),
               status, ""});
}

std::string SummaryCsvReadError(std::string_view file, std::string_view message) {
  return Line({file, "", "", "", "", "", "", "", "", "", "", "", kReadError, message});
}

std::string TotalsCsvReadError(std::string_view file, std::string_view message) {
  return Line({file, "", "", "", "", "", "", "", "", "", kReadError, message});
}

}  // namespace ira::reports
