// What the batch runs write besides the text report: the JSON document and
// the PDF of a scenario, through files that appear whole or not at all.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/scenario/scenario.h"

namespace ira::app {

// Paints the reports of `flags` of the calling thread's scenario into a PDF
// at `path`, the way the desktop prints them; false (after a message to the
// thread's message sink) when the file was not written. The desktop build
// installs one at start-up, before any worker starts; the headless build has
// none.
using PdfPainter = std::function<bool(const std::string& path, int flags)>;
void SetPdfPainter(PdfPainter painter);
const PdfPainter& GetPdfPainter();

// A file written through a temporary file of its own in the same folder,
// renamed over `path` by Commit once complete; dropped without Commit, it
// leaves nothing behind. Throws ira::FileError naming `path` and the
// system's reason.
class WholeFile {
 public:
  explicit WholeFile(std::string path);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  void Write(std::string_view text);
  void Commit();

 private:
  [[noreturn]] void Fail(int error);
  std::string TemporaryStem() const;
  void OpenNamed();
  std::string m_path;
  std::string m_temporary;  // empty while the file has no name
  int m_fd = -1;
};

// `text` to `path` as a WholeFile.
void WriteFileWhole(const std::string& path, std::string_view text);

// `path` with its extension (if any) replaced: "plan.txt" -> "plan.json".
std::string WithExtension(const std::string& path, std::string_view extension);

// Discards the calling thread's messages and error reports while it lives
// (the figures of the summary files are computed a second time, after the
// reports have shown their messages once).
class QuietScope {
 public:
  QuietScope();
  ~QuietScope();
  QuietScope(const QuietScope&) = delete;
  QuietScope& operator=(const QuietScope&) = delete;

 private:
  MessageSink& m_messages;
  ErrorReport& m_errors;
};

// Writes NAME.json (when `json`) and NAME.pdf (when `pdf`) beside
// `reportPath` for `asRead`, the scenario as its file was read (`file` is the
// name the document carries). The thread's scenario is set back to `asRead`
// first, since the Projection report writes into it. Returns "" or what went
// wrong, naming the file.
std::string WriteScenarioExtras(const std::string& reportPath, std::string_view file, const Scenario& asRead,
                                bool json, bool pdf);

}  // namespace ira::app
