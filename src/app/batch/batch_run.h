// The silent batch run: load the life expectancy tables, open the /input
// scenario with every check and conversion, and write its reports to the
// /output file. Messages go to standard error as "TITLE: text"; the output
// file is written as output_file.h says, so a failed run never leaves half a
// report. An output that is the input scenario itself is refused.
#pragma once

#include <ostream>
#include <string>

#include "app/batch/command_line.h"
#include "core/base/messages.h"

namespace ira::app {

// Exit statuses of the program.
enum ExitStatus : int {
  kExitOk = 0,
  kExitBadScenario = 1,   // the scenario file cannot be read
  kExitUsage = 2,         // a bad command line
  kExitOutputFailed = 3,  // the output file cannot be written
  kExitReportError = 4,   // a report failed; the others were written
  kExitTableDamaged = 5,  // a table file is missing or damaged: figures that need it are withheld
  kExitUnexpected = 70,   // an error nobody expected, caught at the top
};

// Nobody is there to answer: every message is written out as "TITLE: text"
// and gets its default button.
class BatchMessages final : public MessageSink {
 public:
  explicit BatchMessages(std::ostream& err) : m_err(err) {}
  MsgAnswer Show(const Message& message) override;

 private:
  std::ostream& m_err;
};

// Runs the batch job of `cl` (silent, with input and output); returns the exit status.
int RunBatch(const CommandLine& cl, std::ostream& err);

// The reports of a batch run, in list order: all but the Projection report,
// which is added when projection mode is on.
int BatchReportFlags();

// Loads the table files every batch run needs (the folder batch once for all
// its scenarios); their messages go to the calling thread's message sink.
void LoadBatchTables();

// The folder of the running executable (its program folder).
std::string ExecutableFolder(const char* argv0);

}  // namespace ira::app
