// Runs the real executable in a child process, its standard error kept.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/scenario_files.h"

namespace ira::testing {

struct RunResult {
  int status = -1;
  std::string err;
};

// What the child does before it runs the program: its standard output goes
// to `outFile` when one is named, `beforeExec` runs in the child.
struct ChildSetup {
  std::string outFile;
  std::function<void()> beforeExec;
};

inline pid_t StartProgram(const std::string& program, const std::vector<std::string>& args,
                          const std::string& errFile, rlim_t fileSizeLimit = 0, const ChildSetup& setup = {}) {
  const pid_t pid = ::fork();
  if (pid == 0) {
    const int err = ::open(errFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (err < 0 || ::dup2(err, 2) < 0) ::_exit(126);
    if (!setup.outFile.empty()) {
      const int out = ::open(setup.outFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      if (out < 0 || ::dup2(out, 1) < 0) ::_exit(126);
    }
    if (fileSizeLimit != 0) {
      // Ignored, the signal leaves the write to fail with EFBIG.
      ::signal(SIGXFSZ, SIG_IGN);
      const rlimit limit{fileSizeLimit, fileSizeLimit};
      if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) ::_exit(126);
    }
    if (setup.beforeExec) setup.beforeExec();
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    ::execv(program.c_str(), argv.data());
    ::_exit(127);
  }
  return pid;
}

inline RunResult FinishProgram(pid_t pid, const std::string& errFile) {
  int raw = 0;
  ::waitpid(pid, &raw, 0);
  RunResult result{WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFileBytes(errFile)};
  std::filesystem::remove(errFile);
  return result;
}

// Runs `program` with `args`; a non-zero `fileSizeLimit` makes every file the
// child writes stop growing there, as on a full disk.
inline RunResult RunProgram(const std::string& program, const std::vector<std::string>& args, const std::string& errFile,
                            rlim_t fileSizeLimit = 0, const ChildSetup& setup = {}) {
  return FinishProgram(StartProgram(program, args, errFile, fileSizeLimit, setup), errFile);
}

}  // namespace ira::testing
