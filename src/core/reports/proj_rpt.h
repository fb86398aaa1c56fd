// The Projection report (DisplayProjRpt): every IRA rolled forward year by
// year from the DCY (CalcProjResults), with each year's totals, excess
// distribution limit and tax. Runs only in projection mode.
//
// What it shows beside the engine's figures:
//   - an account's distributions are net of the amount already distributed
//     (the window's note says so); the yearly totals are the engine's, on
//     which the excess limit is measured;
//   - "No Data**" for an account whose ages the tables do not cover, and for
//     every account of an early series from the year the owner reaches 59 1/2
//     (no longer projected: the totals of those years stay empty);
//   - an account whose balance ran out shows nothing in the later years;
//   - years after the engine's last projected year show nothing;
//   - the "*" penalty mark follows the year's total distributions when the
//     year has an excess distribution.
// The window (frmProjRpt) has one column per projection year; paper and the
// batch file carry the years holding data, in groups of at most 10.
#pragma once

#include <string>

#include "core/reports/report_sink.h"
#include "core/scenario/scenario.h"

namespace ira::reports {

// A projection larger than the engine holds (rep_calc::ProjectionFits) is
// not computed: the message says so, and paper and the batch file carry the
// same text in place of the report.
void DisplayProjRpt(ReportSink& sink);

inline constexpr const char* kProjTooLargeTitle = "Projection too large";
std::string ProjectionTooLargeText(const GeneralInputs& gen);

}  // namespace ira::reports
