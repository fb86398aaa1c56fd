// The grid reports as CSV for a spreadsheet: every row of the grid with its
// header rows and label column, amounts as plain numbers (no thousands
// separators), cells of several lines joined by a blank.
#pragma once

#include <QString>
#include <optional>

#include "core/reports/report_sink.h"

namespace ira::views {

// The whole grid as CSV text, lines ended with CRLF as RFC 4180 has them.
QString GridCsv(const reports::GridReport& grid);
// The whole grid as tab-separated lines, for the clipboard.
QString GridTsv(const reports::GridReport& grid);
// Writes GridCsv to `path` in one piece (an earlier file is replaced only by
// a complete one). False, after a message naming the file, when it cannot.
bool SaveGridCsv(const reports::GridReport& grid, const QString& path);
// The grid of a report (its selection flag) as view mode would show it,
// computed on a copy of the scenario with its notices held back (they were
// given when the report was shown); nothing when the report has no grid.
std::optional<reports::GridReport> ReportGrid(int flag);

}  // namespace ira::views
