#include "app/batch/batch_run.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <sys/stat.h>
#include <unistd.h>

#include "app/batch/batch_outputs.h"
#include "app/batch/output_file.h"
#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/engine/rep_calc.h"
#include "core/reports/display_master.h"
#include "core/scenario/file.h"
#include "core/scenario/scenario.h"
#include "core/tables/table_check.h"
#include "core/tables/tables.h"

namespace ira::app {
namespace {

class BatchErrors final : public ErrorReport {
 public:
  explicit BatchErrors(std::ostream& err) : m_err(err) {}
  void Report(int number, std::string_view text, std::string_view where) override {
    m_err << "Error " << number << " in " << where << ": " << text << "\n";
    ++count;
  }
  int count = 0;

 private:
  std::ostream& m_err;
};

// Installs the batch sinks for the run and restores the defaults after it.
class SinkScope {
 public:
  SinkScope(MessageSink& messages, ErrorReport& errors) {
    SetMessageSink(&messages);
    SetErrorReport(&errors);
  }
  ~SinkScope() {
    SetMessageSink(nullptr);
    SetErrorReport(nullptr);
  }
  SinkScope(const SinkScope&) = delete;
  SinkScope& operator=(const SinkScope&) = delete;
};

// True when `output` names the regular file `input` is (through links, other
// spellings or hard links alike).
bool SameFile(const std::string& input, const std::string& output) {
  struct stat in {}, out {};
  if (::stat(input.c_str(), &in) != 0 || ::stat(output.c_str(), &out) != 0) return false;
  return S_ISREG(in.st_mode) && in.st_dev == out.st_dev && in.st_ino == out.st_ino;
}

}  // namespace

MsgAnswer BatchMessages::Show(const Message& message) {
  m_err << message.title << ": " << message.text << "\n";
  return DefaultAnswer(message.buttons);
}

int BatchReportFlags() {
  using namespace reports;
  return kRptInputs | kRptGenInfo | kRptDistCalc | kRptCalSumm | (ProjectionModeOn() ? kRptProjection : 0);
}

void LoadBatchTables() {
  tables::ReadTableVI();
  tables::ReadTableV();
  tables::ReadTables2022();
}

int RunBatch(const CommandLine& cl, std::ostream& err) {
  if (cl.input.empty() || cl.output.empty()) {
    err << "tallyra: the batch run needs /input SCENARIO and /output REPORT\n";
    return kExitUsage;
  }
  if (SameFile(cl.input, cl.output)) {
    err << "tallyra: the output file " << cl.output << " is the input scenario; name another output file\n";
    return kExitUsage;
  }
  BatchMessages messages(err);
  BatchErrors errors(err);
  SinkScope scope(messages, errors);

  LoadBatchTables();
  if (!file::OpenFile(cl.input, TheScenario())) return kExitBadScenario;
  if (cl.rules) TheScenario().Gen.RuleSet = *cl.rules;
  // The JSON and PDF outputs start from the scenario as read.
  const Scenario asRead = cl.json || cl.pdf ? TheScenario() : Scenario{};

  std::string reason;
  try {
    OutputFile output(cl.output);
    reports::DisplayMaster(reports::ReportMode::File, BatchReportFlags(),
                           reports::ReportTarget{nullptr, nullptr, cl.output, output.Stream()});
    output.Publish();
  } catch (const OutputError& e) {
    reason = e.what();
  } catch (const FileError& e) {
    reason = e.what();
  }
  if (!reason.empty()) {
    err << "tallyra: the output file " << cl.output << " cannot be written (" << reason << ")\n";
    return kExitOutputFailed;
  }
  if (cl.json || cl.pdf) {
    const std::string failed = WriteScenarioExtras(cl.output, std::filesystem::path(cl.input).filename().string(),
                                                   asRead, cl.json, cl.pdf);
    if (!failed.empty()) {
      err << "tallyra: " << failed << "\n";
      return kExitOutputFailed;
    }
  }
  if (tables::AnyTableDamaged()) return kExitTableDamaged;
  // A projection too large to compute is a report that could not be made.
  const bool projectionRefused = reports::ProjectionModeOn() && !rep_calc::ProjectionFits(TheScenario().Gen);
  return errors.count == 0 && !projectionRefused ? kExitOk : kExitReportError;
}

std::string ExecutableFolder(const char* argv0) {
  std::error_code ec;
  std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) exe = std::filesystem::absolute(argv0 != nullptr ? argv0 : ".", ec);
  return exe.parent_path().string();
}

}  // namespace ira::app
