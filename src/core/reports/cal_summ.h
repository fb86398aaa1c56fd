// The Calendar Year Summary (DisplayCalSumm): one line per IRA with its
// adjusted benefit, the total distribution for the DCY, the amount already
// distributed and the net amount still to distribute, and their totals over
// the accounts the engine could compute.
//
//   - View: the grid of frmCalSumm under one set of rules: the 2002 (later)
//     rules from 2002, the 1987 rules before 2001, and for 2001 the rules the
//     scenario's type of distribution takes that year (the projection's
//     choice: required distributions the 2001 rules, early ones 1987).
//   - Print and file: one section per set of rules the DCY has, the later
//     rules first, each with its own totals and footnote.
#pragma once

#include "core/reports/report_sink.h"

namespace ira::reports {

void DisplayCalSumm(ReportSink& sink);

}  // namespace ira::reports
