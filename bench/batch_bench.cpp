// Times the batch run of demo.ira as a whole process (start-up, tables,
// scenario, reports, output file) beside the start of a trivial process, so
// the figure can be read against what the machine needs just to start one.
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

extern char** environ;

namespace {

// Runs the command once; returns its wall time in milliseconds, or a negative
// value when it could not be started or failed.
double TimeOnce(const std::vector<std::string>& command) {
  std::vector<char*> argv;
  for (const std::string& a : command) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  const auto start = std::chrono::steady_clock::now();
  pid_t pid = 0;
  if (posix_spawn(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0) return -1;
  int status = 0;
  if (waitpid(pid, &status, 0) < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return -1;
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

// The median wall time in milliseconds, or a negative value on failure.
double Report(const char* name, const std::vector<std::string>& command, int runs) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const double ms = TimeOnce(command);
    if (ms < 0) {
      std::printf("%-28s could not be run: %s\n", name, command[0].c_str());
      return -1;
    }
    times.push_back(ms);
  }
  std::sort(times.begin(), times.end());
  double sum = 0;
  for (double t : times) sum += t;
  std::printf("%-28s runs %3d   min %8.3f ms   median %8.3f ms   mean %8.3f ms\n", name, runs, times.front(),
              times[times.size() / 2], sum / static_cast<double>(runs));
  return times[times.size() / 2];
}

}  // namespace

int main() {
  constexpr int kRuns = 50;
  const std::string program = std::string(TALLYRA_PROGRAM_DIR) + "/tallyra";
  const std::string demo = std::string(TALLYRA_PROGRAM_DIR) + "/demo.ira";
  const std::string output = (std::filesystem::temp_directory_path() / "tallyra-bench-demo.txt").string();
  const double trivial = Report("process start (/bin/true)", {"/bin/true"}, kRuns);
  const double batch = Report("batch run of demo.ira", {program, "/silent", "/input", demo, "/output", output}, kRuns);
  std::filesystem::remove(output);
  if (trivial <= 0 || batch <= 0) return 1;
  std::printf("batch run / process start (medians): %.1f\n", batch / trivial);
  return 0;
}
