// The batch run's output file, written so that the user's file is either the
// whole new report or what it was before:
//   - a plain file (new or existing) is written to a temporary file created
//     exclusively beside it, synced, and renamed over it; the replaced file's
//     mode (and owner, where permitted) is kept, and a file with other hard
//     links is rewritten in place once the report is complete, so the links
//     keep sharing it;
//   - a symbolic link is followed: its target is written, the link stays;
//   - a FIFO or a device (/dev/stdout, /dev/null) is written directly, and
//     "-" means standard output;
//   - a folder is refused.
// SIGINT and SIGTERM during the run remove the temporary file.
#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

namespace ira::app {

class OutputFile {
 public:
  // Prepares `path` for writing. Throws OutputError when it cannot be.
  explicit OutputFile(std::string path);
  ~OutputFile();  // removes the temporary file unless published
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // Where the report goes.
  std::FILE* Stream() const { return m_stream; }
  // Makes the written report the user's file. Throws OutputError.
  void Publish();

 private:
  void Discard();

  std::string m_path;       // the file the user named
  std::string m_target;     // what gets written: the path, or a link's target
  std::string m_temporary;  // empty when written directly
  std::FILE* m_stream = nullptr;
  bool m_ownsStream = true;
  bool m_inPlace = false;   // the target has other hard links
};

// Why the output file cannot be written: the system's reason alone ("No
// space left on device", "it is a folder"); the caller names the file.
class OutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The error text of errno value `err`.
std::string SystemReason(int err);

}  // namespace ira::app
