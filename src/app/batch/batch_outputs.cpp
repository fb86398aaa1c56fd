#include "app/batch/batch_outputs.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string>
#include <utility>

#include "app/batch/batch_run.h"
#include "core/reports/results_json.h"
#include "core/reports/scenario_results.h"

namespace ira::app {
namespace {

PdfPainter g_pdfPainter;

class DiscardMessages final : public MessageSink {
 public:
  MsgAnswer Show(const Message& message) override { return DefaultAnswer(message.buttons); }
};

class DiscardErrors final : public ErrorReport {
 public:
  void Report(int, std::string_view, std::string_view) override {}
};

DiscardMessages g_discardMessages;
DiscardErrors g_discardErrors;

// Numbers the temporary files of this process.
std::atomic<unsigned long> g_temporaries{0};

}  // namespace

void SetPdfPainter(PdfPainter painter) { g_pdfPainter = std::move(painter); }

const PdfPainter& GetPdfPainter() { return g_pdfPainter; }

WholeFile::WholeFile(std::string path) : m_path(std::move(path)) {
  const std::filesystem::path target(m_path);
  const std::string folder = target.has_parent_path() ? target.parent_path().string() : std::string(".");
  // A file without a name until it is complete, where the file system has
  // them: one change to the folder per file instead of two. It is named
  // through /proc, so only where /proc is there.
  static const bool canName = ::access("/proc/self/fd", X_OK) == 0;
  if (canName) m_fd = ::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0666);
  if (m_fd >= 0) return;
  OpenNamed();
}

// Appended piece by piece: g++ 12 at -O3 sees a false overlap in "." + std::string.
std::string WholeFile::TemporaryStem() const {
  const std::filesystem::path target(m_path);
  std::string hidden = ".";
  hidden += target.filename().string();
  hidden += '.';
  hidden += std::to_string(::getpid());
  hidden += '-';
  return (target.parent_path() / hidden).string();
}

void WholeFile::OpenNamed() {
  const std::string stem = TemporaryStem();
  // Created exclusively: no other run's file, nor another worker's, is ever
  // written over. The mode is the one the user's umask gives any new file.
  for (int attempt = 0; m_fd < 0; ++attempt) {
    m_temporary = stem;
    m_temporary += std::to_string(g_temporaries.fetch_add(1));
    m_fd = ::open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (m_fd < 0 && (errno != EEXIST || attempt >= 100)) Fail(errno);
  }
}

WholeFile::~WholeFile() {
  if (m_fd < 0) return;
  ::close(m_fd);
  if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

void WholeFile::Write(std::string_view text) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t n = ::write(m_fd, text.data() + done, text.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) Fail(errno);
    done += static_cast<std::size_t>(n);
  }
}

void WholeFile::Commit() {
  if (m_temporary.empty()) {
    // Unnamed: give it its name, or, when a file of that name is there
    // already, a temporary name that is then renamed over it.
    const std::string self = "/proc/self/fd/" + std::to_string(m_fd);
    if (::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, m_path.c_str(), AT_SYMLINK_FOLLOW) == 0) {
      if (::close(std::exchange(m_fd, -1)) != 0) Fail(errno);
      return;
    }
    if (errno != EEXIST) Fail(errno);
    const std::string stem = TemporaryStem();
    for (int attempt = 0; m_temporary.empty(); ++attempt) {
      std::string name = stem;
      name += std::to_string(g_temporaries.fetch_add(1));
      if (::linkat(AT_FDCWD, self.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0)
        m_temporary = std::move(name);
      else if (errno != EEXIST || attempt >= 100)
        Fail(errno);
    }
  }
  const int fd = std::exchange(m_fd, -1);
  if (::close(fd) != 0 || std::rename(m_temporary.c_str(), m_path.c_str()) != 0) {
    const int error = errno;
    ::unlink(m_temporary.c_str());
    Fail(error);
  }
}

void WholeFile::Fail(int error) {
  throw FileError(kErrPathAccess, "The output file " + m_path + " cannot be written: " + std::strerror(error));
}

void WriteFileWhole(const std::string& path, std::string_view text) {
  WholeFile file(path);
  file.Write(text);
  file.Commit();
}

std::string WithExtension(const std::string& path, std::string_view extension) {
  std::filesystem::path p(path);
  p.replace_extension(extension);
  return p.string();
}

QuietScope::QuietScope() : m_messages(Messages()), m_errors(Errors()) {
  SetMessageSink(&g_discardMessages);
  SetErrorReport(&g_discardErrors);
}

QuietScope::~QuietScope() {
  SetMessageSink(&m_messages);
  SetErrorReport(&m_errors);
}

std::string WriteScenarioExtras(const std::string& reportPath, std::string_view file, const Scenario& asRead,
                                bool json, bool pdf) {
  TheScenario() = asRead;
  if (json) {
    reports::ScenarioFigures figures;
    {
      QuietScope quiet;
      figures = reports::ComputeFigures(asRead);
    }
    try {
      WriteFileWhole(WithExtension(reportPath, ".json"), reports::ResultsJson(file, asRead, figures));
    } catch (const Error& e) {
      return e.what();
    }
  }
  if (pdf) {
    const std::string pdfPath = WithExtension(reportPath, ".pdf");
    if (!g_pdfPainter) return "The file " + pdfPath + " was not written: this program was built without PDF output.";
    if (!g_pdfPainter(pdfPath, BatchReportFlags())) return "The file " + pdfPath + " was not written.";
  }
  return {};
}

}  // namespace ira::app
