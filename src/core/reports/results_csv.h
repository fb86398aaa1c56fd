// The summary files of a batch run, for spreadsheets and other software:
// summary.csv (one row per account per scenario) and totals.csv (one row per
// scenario). RFC 4180: fields separated by commas, quoted when they hold a
// comma, a quote or a line end (quotes doubled), lines ending with CRLF;
// UTF-8 text. Amounts are plain decimals with two places ("1234.50"), dates
// ISO 8601 ("2005-12-31"); the columns are listed in docs/batch-results.md.
#pragma once

#include <string>
#include <string_view>

#include "core/reports/scenario_results.h"
#include "core/scenario/scenario.h"

namespace ira::reports {

// One field, quoted when it must be.
std::string CsvField(std::string_view text);

// The header line of each file (with its CRLF).
std::string SummaryCsvHeader();
std::string TotalsCsvHeader();

// The lines of one scenario read from `file` (the name the rows carry).
std::string SummaryCsvRows(std::string_view file, const Scenario& scenario, const ScenarioFigures& figures);
std::string TotalsCsvRow(std::string_view file, const Scenario& scenario, const ScenarioFigures& figures);

// The line of a scenario that could not be read, with the reason.
std::string SummaryCsvReadError(std::string_view file, std::string_view message);
std::string TotalsCsvReadError(std::string_view file, std::string_view message);

}  // namespace ira::reports
