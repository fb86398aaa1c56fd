// The Distribution Calculations report (DispCalcResults): for every IRA, how
// the DCY's distribution is reached, from the life expectancies considered to
// the amount still to be paid out, under each regime the DCY has (the 1987
// rules, then the 2001/2002 rules: Post2001MinDist), or the level payment of
// an early series. The engine computes; this only formats.
#pragma once

#include "core/reports/report_sink.h"

namespace ira::reports {

void DispCalcResults(ReportSink& sink);

}  // namespace ira::reports
