#include "app/batch/batch_run.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>

#include "app/batch/batch_outputs.h"
#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/reports/display_master.h"
#include "core/scenario/file.h"
#include "core/scenario/scenario.h"
#include "core/tables/tables.h"

namespace ira::app {
namespace {

// Nobody is there to answer: every message is written out and gets its
// default button.
class BatchMessages final : public MessageSink {
 public:
  explicit BatchMessages(std::ostream& err) : m_err(err) {}
  MsgAnswer Show(const Message& message) override {
    m_err << message.title << ": " << message.text << "\n";
    return DefaultAnswer(message.buttons);
  }

 private:
  std::ostream& m_err;
};

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

// A hidden name in the output's own folder, so that the rename stays on one file system.
std::string TemporaryPath(const std::string& output) {
  const std::filesystem::path target(output);
  const std::string name = "." + target.filename().string() + ".tmp" + std::to_string(::getpid());
  return (target.parent_path() / name).string();
}

}  // namespace

int BatchReportFlags() {
  using namespace reports;
  return kRptInputs | kRptGenInfo | kRptDistCalc | kRptCalSumm | (ProjectionModeOn() ? kRptProjection : 0);
}

void LoadBatchTables() {
  tables::ReadTableVI();
  tables::ReadTableV();
}

int RunBatch(const CommandLine& cl, std::ostream& err) {
  if (cl.input.empty() || cl.output.empty()) {
    err << "tallyra: the batch run needs /input SCENARIO and /output REPORT\n";
    return kExitUsage;
  }
  BatchMessages messages(err);
  BatchErrors errors(err);
  SinkScope scope(messages, errors);

  LoadBatchTables();
  if (!file::OpenFile(cl.input, TheScenario())) return kExitBadScenario;
  // The JSON and PDF outputs start from the scenario as read.
  const Scenario asRead = cl.json || cl.pdf ? TheScenario() : Scenario{};

  const std::string temporary = TemporaryPath(cl.output);
  try {
    reports::DisplayMaster(reports::ReportMode::File, BatchReportFlags(),
                           reports::ReportTarget{nullptr, nullptr, temporary});
    std::filesystem::rename(temporary, cl.output);
  } catch (const std::exception& e) {
    std::error_code ignored;
    std::filesystem::remove(temporary, ignored);
    // The temporary file is our own affair: the user is told about the file
    // they named, with the system's reason.
    const auto* fsError = dynamic_cast<const std::filesystem::filesystem_error*>(&e);
    std::string reason = fsError != nullptr ? fsError->code().message() : e.what();
    for (auto at = reason.find(temporary); at != std::string::npos; at = reason.find(temporary))
      reason.replace(at, temporary.size(), cl.output);
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
  return errors.count == 0 ? kExitOk : kExitReportError;
}

std::string ExecutableFolder(const char* argv0) {
  std::error_code ec;
  std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (ec) exe = std::filesystem::absolute(argv0 != nullptr ? argv0 : ".", ec);
  return exe.parent_path().string();
}

}  // namespace ira::app
