// The folder batch: every scenario file ("*.ira", any case) of a folder, and
// with `recursive` of its subfolders, in one process. The tables are loaded
// once; the scenarios are computed by `jobs` workers side by side, each with
// its own scenario and message sinks. For each NAME.ira the output folder
// gets NAME.txt (in the same subfolder), byte for byte what the single-file
// batch writes for it, and NAME.json / NAME.pdf when asked; it also gets
// summary.csv and totals.csv, their rows in the order of the file names.
//
// A file that cannot be read is listed on standard error with its message
// (and in the CSV files with the status "read error"); the run goes on. A
// progress line is kept on standard error while it is a terminal.
#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>

#include "app/batch/command_line.h"

namespace ira::app {

struct FolderBatchOptions {
  std::string inputFolder;
  std::string outputFolder;
  bool recursive = false;
  int jobs = 0;  // 0: one per processor
  bool json = false;
  bool pdf = false;
  std::optional<std::int16_t> rules;  // overrides each file's rule set
  bool progress = false;  // keep a progress line on `err`
};

inline constexpr const char* kSummaryFile = "summary.csv";
inline constexpr const char* kTotalsFile = "totals.csv";

// Returns the exit status: kExitOk, or the worst of kExitOutputFailed (an
// output could not be written), kExitBadScenario (a scenario could not be
// read), kExitReportError (a report failed).
int RunFolderBatch(const FolderBatchOptions& options, std::ostream& err);

// The folder batch of a command line (with --batch); the progress line when
// standard error is a terminal.
int RunFolderBatch(const CommandLine& cl, std::ostream& err);

}  // namespace ira::app
