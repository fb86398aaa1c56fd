#include "app/batch/folder_batch.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "app/batch/batch_outputs.h"
#include "app/batch/batch_run.h"
#include "core/base/text.h"
#include "core/reports/display_master.h"
#include "core/reports/results_csv.h"
#include "core/reports/scenario_results.h"
#include "core/scenario/file.h"

namespace ira::app {
namespace {

namespace fs = std::filesystem;

// The scenarios of a run, found before the first is computed: only their
// names are kept (a short name costs no more than the string itself), so a
// book of 10,000 files takes well under a megabyte here.
struct Book {
  std::vector<std::string> names;       // relative to the input folder, with "/", sorted
  std::map<std::size_t, std::string> clashes;  // index -> the file whose report its report would overwrite
};

// One scenario's files.
struct Job {
  Job(const FolderBatchOptions& options, const Book& book, std::size_t index)
      : name(book.names[index]), input(fs::path(options.inputFolder) / name), report(fs::path(options.outputFolder) / name) {
    report.replace_extension(".txt");
    inSubfolder = name.find('/') != std::string::npos;
    if (const auto at = book.clashes.find(index); at != book.clashes.end()) clash = at->second;
  }
  const std::string& name;  // the name rows and messages carry
  fs::path input;
  fs::path report;          // NAME.txt in the output folder
  std::string clash;
  bool inSubfolder = false;
};

struct Outcome {
  std::string messages;  // for standard error, each line naming the file
  std::string summary;   // CSV lines
  std::string totals;
  bool readFailed = false;
  bool outputFailed = false;
  bool reportFailed = false;
};

// One scenario's messages: shown on standard error as "NAME: TITLE: text"
// and, for a file that cannot be read, carried into the CSV files.
class ScenarioMessages final : public MessageSink, public ErrorReport {
 public:
  MsgAnswer Show(const Message& message) override {
    Add(message.title + ": " + message.text);
    return DefaultAnswer(message.buttons);
  }
  void Report(int number, std::string_view text, std::string_view where) override {
    Add("Error " + std::to_string(number) + " in " + std::string(where) + ": " + std::string(text));
    ++errors;
  }
  void Add(std::string line) {
    if (!joined.empty()) joined += "; ";
    joined += line;
    lines.push_back(std::move(line));
  }
  std::vector<std::string> lines;
  std::string joined;
  int errors = 0;
};

class ThreadSinks {
 public:
  explicit ThreadSinks(ScenarioMessages& m) {
    SetMessageSink(&m);
    SetErrorReport(&m);
  }
  ~ThreadSinks() {
    SetMessageSink(nullptr);
    SetErrorReport(nullptr);
  }
  ThreadSinks(const ThreadSinks&) = delete;
  ThreadSinks& operator=(const ThreadSinks&) = delete;
};

void WriteReport(const Job& job, const std::string& text) {
  if (job.inSubfolder) {
    std::error_code ec;
    fs::create_directories(job.report.parent_path(), ec);
  }
  WriteFileWhole(job.report.string(), text);
}

Outcome ComputeOne(const Job& job, const FolderBatchOptions& options) {
  Outcome out;
  ScenarioMessages messages;
  {
    ThreadSinks sinks(messages);
    Scenario& scenario = TheScenario();
    if (!job.clash.empty()) {
      messages.Add("not read: its report would overwrite the report of " + job.clash);
      out.readFailed = true;
    } else if (!file::OpenFile(job.input.string(), scenario)) {
      if (messages.lines.empty()) messages.Add("the file cannot be read");
      out.readFailed = true;
    }
    if (!out.readFailed && options.rules) scenario.Gen.RuleSet = *options.rules;
    if (out.readFailed) {
      out.summary = reports::SummaryCsvReadError(job.name, messages.joined);
      out.totals = reports::TotalsCsvReadError(job.name, messages.joined);
    } else {
      const Scenario asRead = scenario;
      reports::ScenarioFigures figures;
      {
        QuietScope quiet;  // the reports show the engine's messages
        figures = reports::ComputeFigures(asRead);
      }
      out.summary = reports::SummaryCsvRows(job.name, asRead, figures);
      out.totals = reports::TotalsCsvRow(job.name, asRead, figures);
      const std::string text = reports::FileModeText(BatchReportFlags());
      out.reportFailed = messages.errors > 0;
      try {
        WriteReport(job, text);
        const std::string failed =
            WriteScenarioExtras(job.report.string(), job.name, asRead, options.json, options.pdf);
        if (!failed.empty()) {
          messages.Add(failed);
          out.outputFailed = true;
        }
      } catch (const Error& e) {
        messages.Add(e.what());
        out.outputFailed = true;
      }
    }
  }
  for (const std::string& line : messages.lines) out.messages += job.name + ": " + line + "\n";
  return out;
}

// The report's name without its extension: what two scenario files must not share.
std::string ReportStem(const std::string& name) {
  const std::size_t dot = name.rfind('.');
  return name.substr(0, dot);
}

// Every "*.ira" of the folder (any case), sorted by name.
Book FindScenarios(const FolderBatchOptions& options, std::string& problem) {
  const fs::path root(options.inputFolder);
  Book book;
  std::error_code ec;
  const auto add = [&](const fs::directory_entry& entry) {
    std::error_code statError;
    if (!entry.is_regular_file(statError) || ToLower(entry.path().extension().string()) != ".ira") return;
    book.names.push_back(entry.path().lexically_relative(root).generic_string());
  };
  if (options.recursive) {
    fs::recursive_directory_iterator it(root, fs::directory_options::skip_permission_denied, ec);
    for (; !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) add(*it);
  } else {
    fs::directory_iterator it(root, ec);
    for (; !ec && it != fs::directory_iterator(); it.increment(ec)) add(*it);
  }
  if (ec) problem = "the folder " + options.inputFolder + " cannot be read (" + ec.message() + ")";
  std::sort(book.names.begin(), book.names.end());
  // "a.ira" and "a.IRA" would write the same "a.txt": the first keeps it.
  std::vector<std::size_t> byStem(book.names.size());
  for (std::size_t i = 0; i < byStem.size(); ++i) byStem[i] = i;
  std::stable_sort(byStem.begin(), byStem.end(), [&](std::size_t a, std::size_t b) {
    return ReportStem(book.names[a]) < ReportStem(book.names[b]);
  });
  for (std::size_t k = 1, first = 0; k < byStem.size(); ++k) {
    if (ReportStem(book.names[byStem[k]]) != ReportStem(book.names[byStem[first]]))
      first = k;
    else
      book.clashes.emplace(byStem[k], book.names[byStem[first]]);
  }
  return book;
}

constexpr std::size_t kCsvChunk = 1 << 16;

// Hands out the scenarios in order and takes their outcomes back, holding
// at most `window` outcomes that wait for an earlier one: the memory of a run
// does not grow with the number of files.
class Pipeline {
 public:
  Pipeline(std::size_t total, std::size_t window) : m_total(total), m_window(window) {}

  std::optional<std::size_t> Claim() {
    std::unique_lock lock(m_mutex);
    ++m_waiting;
    m_room.wait(lock, [&] { return m_next >= m_total || m_next < m_written + m_window; });
    --m_waiting;
    if (m_next >= m_total) return std::nullopt;
    return m_next++;
  }

  void Put(std::size_t index, Outcome outcome) {
    bool awaited = false;
    {
      std::lock_guard lock(m_mutex);
      m_done.emplace(index, std::move(outcome));
      awaited = index == m_written;
    }
    // Only the outcome the writer waits for is worth waking it.
    if (awaited) m_ready.notify_one();
  }

  // The next outcome in order, or nothing when `wait` passes first.
  std::optional<Outcome> Next(std::chrono::milliseconds wait) {
    std::unique_lock lock(m_mutex);
    if (!m_ready.wait_for(lock, wait, [&] { return m_done.count(m_written) != 0; })) return std::nullopt;
    auto node = m_done.extract(m_written);
    ++m_written;
    const bool someoneWaits = m_waiting > 0;
    lock.unlock();
    if (someoneWaits) m_room.notify_all();
    return std::move(node.mapped());
  }

  std::size_t Written() const { return m_written; }

 private:
  std::mutex m_mutex;
  std::condition_variable m_room;
  std::condition_variable m_ready;
  std::map<std::size_t, Outcome> m_done;
  const std::size_t m_total;
  const std::size_t m_window;
  std::size_t m_next = 0;
  std::size_t m_written = 0;  // read by the writer's own thread only outside the lock
  int m_waiting = 0;          // workers in Claim
};

class ProgressLine {
 public:
  ProgressLine(std::ostream& err, bool on, std::size_t total)
      : m_err(err), m_on(on), m_total(total), m_start(std::chrono::steady_clock::now()) {}

  void Show(std::size_t done, std::size_t failed, bool force = false) {
    if (!m_on) return;
    const auto now = std::chrono::steady_clock::now();
    if (!force && now - m_last < std::chrono::milliseconds(200)) return;
    m_last = now;
    const double seconds = std::chrono::duration<double>(now - m_start).count();
    char line[128];
    std::snprintf(line, sizeof line, "\r%zu/%zu files, %zu failed, %.0f files/s\033[K", done, m_total, failed,
                  seconds > 0 ? static_cast<double>(done) / seconds : 0.0);
    m_err << line << std::flush;
    m_shown = true;
  }
  // Clears the line before other text is written.
  void Clear() {
    if (m_shown) m_err << "\r\033[K";
    m_shown = false;
  }
  void Finish(std::size_t done, std::size_t failed) {
    if (!m_on) return;
    Show(done, failed, true);
    m_err << "\n";
  }

 private:
  std::ostream& m_err;
  bool m_on;
  std::size_t m_total;
  std::chrono::steady_clock::time_point m_start;
  std::chrono::steady_clock::time_point m_last{};
  bool m_shown = false;
};

}  // namespace

int RunFolderBatch(const FolderBatchOptions& options, std::ostream& err) {
  if (options.inputFolder.empty() || options.outputFolder.empty()) {
    err << "tallyra: the folder batch needs --batch FOLDER and --out FOLDER\n";
    return kExitUsage;
  }
  if (options.pdf && !GetPdfPainter()) {
    err << "tallyra: this program was built without Qt and writes no PDF files\n";
    return kExitUsage;
  }
  std::error_code ec;
  if (!fs::is_directory(options.inputFolder, ec)) {
    err << "tallyra: " << options.inputFolder << " is not a folder that can be read"
        << (ec ? " (" + ec.message() + ")" : std::string()) << "\n";
    return kExitBadScenario;
  }
  fs::create_directories(options.outputFolder, ec);
  if (ec || !fs::is_directory(options.outputFolder)) {
    err << "tallyra: the output folder " << options.outputFolder << " cannot be made"
        << (ec ? " (" + ec.message() + ")" : std::string()) << "\n";
    return kExitOutputFailed;
  }

  BatchMessages mainMessages(err);  // the main thread's (the table files')
  SetMessageSink(&mainMessages);
  LoadBatchTables();
  SetMessageSink(nullptr);

  std::string problem;
  const Book book = FindScenarios(options, problem);
  const std::vector<std::string>& jobs = book.names;
  bool readFailed = !problem.empty();
  if (readFailed) err << "tallyra: " << problem << "\n";

  const fs::path out(options.outputFolder);
  std::optional<WholeFile> summary;
  std::optional<WholeFile> totals;
  try {
    summary.emplace((out / kSummaryFile).string());
    totals.emplace((out / kTotalsFile).string());
    summary->Write(reports::SummaryCsvHeader());
    totals->Write(reports::TotalsCsvHeader());
  } catch (const Error& e) {
    err << "tallyra: " << e.what() << "\n";
    return kExitOutputFailed;
  }

  const unsigned cores = std::max(1u, std::thread::hardware_concurrency());
  const std::size_t workers =
      std::min<std::size_t>(options.jobs > 0 ? static_cast<std::size_t>(options.jobs) : cores, std::max<std::size_t>(jobs.size(), 1));
  Pipeline pipeline(jobs.size(), 16 * workers);
  std::vector<std::thread> threads;
  for (std::size_t w = 0; w < workers; ++w) {
    threads.emplace_back([&] {
      while (const std::optional<std::size_t> index = pipeline.Claim()) {
        Outcome outcome;
        try {
          outcome = ComputeOne(Job(options, book, *index), options);
        } catch (const std::exception& e) {
          // Nothing is left of this scenario but the failure.
          outcome = Outcome{};
          const std::string& name = jobs[*index];
          const std::string what = std::string("unexpected error: ") + e.what();
          outcome.messages = name + ": " + what + "\n";
          outcome.summary = reports::SummaryCsvReadError(name, what);
          outcome.totals = reports::TotalsCsvReadError(name, what);
          outcome.readFailed = true;
        }
        pipeline.Put(*index, std::move(outcome));
      }
    });
  }

  bool outputFailed = false;
  bool reportFailed = false;
  std::size_t failed = 0;
  ProgressLine progress(err, options.progress, jobs.size());
  std::string csvError;
  // The CSV lines go out in chunks, not a write per scenario.
  std::string summaryText;
  std::string totalsText;
  const auto flush = [&] {
    if (csvError.empty()) {
      try {
        summary->Write(summaryText);
        totals->Write(totalsText);
      } catch (const Error& e) {
        csvError = e.what();
      }
    }
    summaryText.clear();
    totalsText.clear();
  };
  while (pipeline.Written() < jobs.size()) {
    std::optional<Outcome> next = pipeline.Next(std::chrono::milliseconds(200));
    if (next) {
      if (!next->messages.empty()) {
        progress.Clear();
        err << next->messages;
      }
      readFailed = readFailed || next->readFailed;
      outputFailed = outputFailed || next->outputFailed;
      reportFailed = reportFailed || next->reportFailed;
      if (next->readFailed || next->outputFailed || next->reportFailed) ++failed;
      summaryText += next->summary;
      totalsText += next->totals;
      if (summaryText.size() >= kCsvChunk) flush();
    }
    progress.Show(pipeline.Written(), failed);
  }
  for (std::thread& t : threads) t.join();
  progress.Finish(jobs.size(), failed);
  flush();

  if (csvError.empty()) {
    try {
      summary->Commit();
      totals->Commit();
    } catch (const Error& e) {
      csvError = e.what();
    }
  }
  if (!csvError.empty()) {
    err << "tallyra: " << csvError << "\n";
    outputFailed = true;
  }
  if (outputFailed) return kExitOutputFailed;
  if (readFailed) return kExitBadScenario;
  return reportFailed ? kExitReportError : kExitOk;
}

int RunFolderBatch(const CommandLine& cl, std::ostream& err) {
  FolderBatchOptions options;
  options.inputFolder = cl.batchFolder;
  options.outputFolder = cl.outFolder;
  options.recursive = cl.recursive;
  options.jobs = cl.jobs;
  options.json = cl.json;
  options.pdf = cl.pdf;
  options.rules = cl.rules;
  options.progress = ::isatty(STDERR_FILENO) != 0;
  return RunFolderBatch(options, err);
}

}  // namespace ira::app
