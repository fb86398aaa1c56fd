// The JSON document of one scenario: its inputs and every figure the engine
// computes for it (each account under each set of rules, the summary and its
// totals, each projected year). Amounts, rates and life expectancies are
// decimal strings, so no figure passes through a binary float on its way to
// the reader; a figure that does not apply is null. The schema is described
// in docs/results-json.md.
#pragma once

#include <string>
#include <string_view>

#include "core/reports/scenario_results.h"
#include "core/scenario/scenario.h"

namespace ira::reports {

inline constexpr const char* kResultsJsonFormat = "tallyra-results";
inline constexpr int kResultsJsonVersion = 1;

// The document (UTF-8, indented, ending with a line feed) for `scenario` read
// from `file`. The projection is computed on a copy: the scenario is left as
// it was.
std::string ResultsJson(std::string_view file, const Scenario& scenario, const ScenarioFigures& figures);

}  // namespace ira::reports
