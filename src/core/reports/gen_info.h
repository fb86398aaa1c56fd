// The General Information report (the owner's key dates and years and the
// terms the other reports rest on) and the Inputs report (the scenario's
// inputs echoed), both text reports on the report framework.
#pragma once

#include "core/reports/report_sink.h"

namespace ira::reports {

void DisplayGenInfo(ReportSink& sink);
void DisplayInputs(ReportSink& sink);

}  // namespace ira::reports
