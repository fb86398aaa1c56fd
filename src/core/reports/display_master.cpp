#include "core/reports/display_master.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <stdexcept>

#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/progress.h"
#include "core/reports/cal_summ.h"
#include "core/reports/dist_calc.h"
#include "core/reports/gen_info.h"
#include "core/reports/prnmastr.h"
#include "core/reports/proj_rpt.h"
#include "core/scenario/scenario.h"

namespace ira::reports {
namespace {

ReportTable g_reports{{
    {kRptInputs, "Inputs", "Sending Inputs Report to printer/Print Manager", "DisplayInputs()", DisplayInputs},
    {kRptGenInfo, "General Information", "Sending General Information Report to printer/Print Manager",
     "Reports.DisplayGenInfo", DisplayGenInfo},
    {kRptDistCalc, "Distribution Calculation", "Sending Distribution Calculations Report to printer/Print Manager",
     "DispCalcResults()", DispCalcResults},
    {kRptCalSumm, "Calendar Year Summary", "Sending Calendar Year Summary Report to printer/Print Manager",
     "DisplayCalSumm()", DisplayCalSumm},
    {kRptProjection, "Projection of Distributions", "Sending Projection Report to printer/Print Manager",
     "DisplayProjRpt()", DisplayProjRpt},
}};

[[noreturn]] void ThrowFileError(const std::string& path, const char* what) {
  throw FileError(kErrPathAccess, "The output file " + path + " " + what + ": " + std::strerror(errno));
}

void WriteFile(const std::string& path, const std::string& text, const char* fileMode) {
  std::FILE* f = std::fopen(path.c_str(), fileMode);
  if (f == nullptr) ThrowFileError(path, "cannot be opened");
  const bool written = std::fwrite(text.data(), 1, text.size(), f) == text.size();
  const bool closed = std::fclose(f) == 0;
  if (!written || !closed) ThrowFileError(path, "cannot be written");
}

void ShowPrinterError(const Error& e) {
  ShowMessage(kPrinterErrorTitle, PrinterErrorText(e.what()), MsgIcon::Critical);
}

void ViewReport(const ReportEntry& entry, ReportViewer& viewer) {
  TextSink sink(ReportMode::View);
  entry.routine(sink);
  if (sink.HasGrid())
    viewer.ShowGrid(sink.Grid());
  else
    viewer.ShowText(sink.Caption(), sink.Text());
}

void PrintReport(const ReportEntry& entry, PrintDevice& printer) {
  try {
    ProgressScope notice(entry.printNotice);
    PrintSink sink(printer);
    entry.routine(sink);
  } catch (const Error& e) {
    if (e.Number() != kErrPrinter) throw;
    ShowPrinterError(e);
  }
  // Every report ends with its page number so that the next begins on a new
  // page, also after a failure stopped it part way.
  try {
    PrnManager2(printer, kPrnEndReport, "", "", "");
  } catch (const Error& e) {
    if (e.Number() != kErrPrinter) throw;
    // The failure of this report has been shown already; start the next one afresh.
    PrnManager2(printer, kPrnReset, "", "", "");
  }
}

// File mode: given an output stream, a report's text goes out as it is made;
// otherwise each report's whole text is handed to `emit` once it is finished.
using FileEmit = std::function<void(const std::string&)>;

void FileReport(const ReportEntry& entry, const ReportTarget& target, const FileEmit& emit) {
  if (target.outputStream != nullptr) {
    TextSink sink(ReportMode::File, target.outputStream);
    entry.routine(sink);
    sink.Flush();
    return;
  }
  TextSink sink(ReportMode::File);
  entry.routine(sink);
  emit(sink.Text());
}

void RunReport(ReportMode mode, const ReportEntry& entry, const ReportTarget& target, const FileEmit& emit) {
  try {
    switch (mode) {
      case ReportMode::View:
        ViewReport(entry, *target.viewer);
        break;
      case ReportMode::Print:
        PrintReport(entry, *target.printer);
        break;
      case ReportMode::File:
        FileReport(entry, target, emit);
        break;
    }
  } catch (const FileError&) {
    throw;  // the output file is the batch run's business
  } catch (const std::exception& e) {
    ReportUnexpected(entry.where, e);
  }
}

// Runs the selected reports; file mode's texts go to `emit`.
void RunReports(ReportMode mode, int flags, const ReportTarget& target, const ReportTable& table,
                const FileEmit& emit) {
  for (const ReportEntry& entry : table) {
    if ((flags & entry.flag) == 0) continue;
    if (entry.flag == kRptProjection && !ProjectionModeOn()) {
      if (mode == ReportMode::View &&
          ShowMessage(kCantShowTitle, kCantShowText, MsgIcon::Information, MsgButtons::OkCancel) == MsgAnswer::Ok)
        target.viewer->ShowProjectionHelp();
      continue;
    }
    if (entry.routine) RunReport(mode, entry, target, emit);
  }
}

void CheckTarget(ReportMode mode, const ReportTarget& target) {
  if ((mode == ReportMode::View && target.viewer == nullptr) ||
      (mode == ReportMode::Print && target.printer == nullptr) ||
      (mode == ReportMode::File && target.outputFile.empty() && target.outputStream == nullptr))
    throw std::invalid_argument("DisplayMaster(): no destination for the report mode");
}

}  // namespace

const ReportTable& Reports() { return g_reports; }

void SetReportRoutine(ReportFlag flag, ReportRoutine routine) {
  for (ReportEntry& entry : g_reports)
    if (entry.flag == flag) entry.routine = std::move(routine);
}

bool ProjectionModeOn() { return TheScenario().Gen.ProjectionYears > 0; }

std::string PrinterErrorText(const std::string& errorText) {
  return "A Printer Error: " + errorText + " has occured.";
}

void DisplayMaster(ReportMode mode, int flags, const ReportTarget& target) {
  DisplayMaster(mode, flags, target, g_reports);
}

void DisplayMaster(ReportMode mode, int flags, const ReportTarget& target, const ReportTable& table) {
  if (flags <= 0) return;
  CheckTarget(mode, target);
  FileEmit emit;
  if (mode == ReportMode::File && target.outputStream == nullptr) {
    WriteFile(target.outputFile, "", "wb");
    emit = [&target](const std::string& text) { WriteFile(target.outputFile, text, "ab"); };
  }
  RunReports(mode, flags, target, table, emit);
  if (mode == ReportMode::Print) {
    try {
      PrnManager2(*target.printer, kPrnEndDocument, "", "", "");
    } catch (const Error& e) {
      if (e.Number() == kErrPrinter)
        ShowPrinterError(e);
      else
        ReportUnexpected("DisplayMaster()", e);
    }
  }
}

std::string FileModeText(int flags) { return FileModeText(flags, g_reports); }

std::string FileModeText(int flags, const ReportTable& table) {
  std::string text;
  if (flags > 0)
    RunReports(ReportMode::File, flags, ReportTarget{}, table, [&text](const std::string& part) { text += part; });
  return text;
}

void PrintSelectedReports(int flags, PrintDevice& printer) { PrintSelectedReports(flags, printer, g_reports); }

void PrintSelectedReports(int flags, PrintDevice& printer, const ReportTable& table) {
  PrnManager2(printer, kPrnReset, "", "", "");
  DisplayMaster(ReportMode::Print, flags, ReportTarget{nullptr, &printer, {}}, table);
}

}  // namespace ira::reports
