// The report dispatcher (DisplayMaster without its choice dialog): runs the
// selected reports, in list order, in view, print or file mode.
//
//   - View:  each report's content goes to the ReportViewer (the desktop
//            opens one window per report). The Projection report without
//            projection mode gives the "Can't Show Report" message instead.
//   - Print: one print document spans all selected reports. Each report shows
//            its progress notice while it prints and ends with its page number
//            (PrnManager2(-200)), so the next begins on a new page; the
//            document ends with PrnManager2(-100). A printer failure shows
//            "PRINTER ERROR" and stops that report only. The Projection report
//            without projection mode is left out.
//   - File:  the output file is created empty, then each report's text is
//            appended to it (grid reports in printed layout without page
//            headings or numbers). The Projection report without projection
//            mode is left out. Given an output stream, each report's text
//            goes out as it is made (a report that fails part way leaves the
//            lines it made before the failure).
// Any other failure in a report is handed to the error report with the
// report's routine name, and the next report runs.
#pragma once

#include <array>
#include <cstdio>
#include <functional>
#include <string>

#include "core/base/print_device.h"
#include "core/reports/report_sink.h"

namespace ira::reports {

// Report selection flags: one bit per entry of the report list, in list order.
enum ReportFlag : int {
  kRptInputs = 1,
  kRptGenInfo = 2,
  kRptDistCalc = 4,
  kRptCalSumm = 8,
  kRptProjection = 16,
};
inline constexpr int kRptAll = 31;
inline constexpr int kReportCount = 5;

using ReportRoutine = std::function<void(ReportSink&)>;

struct ReportEntry {
  int flag;
  const char* listName;     // the entry of the report list: "Inputs", ...
  const char* printNotice;  // shown while the report prints
  const char* where;        // the routine's name in error reports
  ReportRoutine routine;    // empty: not available, skipped
};

using ReportTable = std::array<ReportEntry, kReportCount>;

// The program's reports in list order. A report's routine is named in the
// table in display_master.cpp (an empty entry is skipped); SetReportRoutine
// replaces one at run time.
const ReportTable& Reports();
void SetReportRoutine(ReportFlag flag, ReportRoutine routine);

// The desktop side of view mode.
class ReportViewer {
 public:
  virtual ~ReportViewer() = default;
  // A new text report window with this caption and text (lines end with CRLF).
  virtual void ShowText(const std::string& caption, const std::string& text) = 0;
  // A new grid report window.
  virtual void ShowGrid(const GridReport& grid) = 0;
  // The help text on projection reports, after "Can't Show Report" is answered OK.
  virtual void ShowProjectionHelp() = 0;
};

// Where the reports of one dispatch go; only the mode's member is used.
struct ReportTarget {
  ReportViewer* viewer = nullptr;   // View
  PrintDevice* printer = nullptr;   // Print
  std::string outputFile;           // File
  // File, when the caller opened the output itself: the reports are
  // appended to this stream, and a failed write throws ira::FileError whose
  // text is the system's reason alone (the caller names its file).
  std::FILE* outputStream = nullptr;
};

// Projection mode is set up when the scenario projects at least one year.
bool ProjectionModeOn();

// Runs the reports whose flags are set (a value of 0 or less runs none).
// File mode throws ira::FileError, naming the file, when the output file
// cannot be created or written.
void DisplayMaster(ReportMode mode, int flags, const ReportTarget& target);
// The same over an explicit table (tests and alternative report sets).
void DisplayMaster(ReportMode mode, int flags, const ReportTarget& target, const ReportTable& table);

// File mode without the file: the text DisplayMaster(ReportMode::File, flags,
// ...) writes to its output file. A folder batch writes it where it wants.
std::string FileModeText(int flags);
std::string FileModeText(int flags, const ReportTable& table);

// Prints the selected reports in one go without the dialog: resets the page
// line counter first (PrnManager2(-400)), then as DisplayMaster in print mode.
void PrintSelectedReports(int flags, PrintDevice& printer);
void PrintSelectedReports(int flags, PrintDevice& printer, const ReportTable& table);

// The fixed texts of the dispatcher; the wording ("occured") is deliberate.
inline constexpr const char* kCantShowTitle = "Can't Show Report";
inline constexpr const char* kCantShowText =
    "Projection Report can't be displayed. If you would like more information select OK.";
inline constexpr const char* kPrinterErrorTitle = "PRINTER ERROR";
std::string PrinterErrorText(const std::string& errorText);

}  // namespace ira::reports
