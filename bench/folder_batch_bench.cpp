// The folder batch over a book of clients: 1,000 and 10,000 scenario files
// like demo.ira (three accounts, ten projected years, each file with its own
// owner and balances), every report and both CSV files, timed as a whole
// process with its peak memory; beside it the single-file batch run on the
// same files one process each, so the ratio is measured, not assumed.
//   folder_batch_bench [FILES_OF_THE_LARGE_RUN]
#include <spawn.h>
#include <unistd.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "core/base/text.h"
#include "core/scenario/file.h"
#include "core/scenario/scenario.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;

struct Run {
  bool ok = false;
  double seconds = 0;
  long peakKb = 0;
};

Run RunOnce(const std::vector<std::string>& command) {
  std::vector<char*> argv;
  for (const std::string& a : command) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  const auto start = std::chrono::steady_clock::now();
  pid_t pid = 0;
  if (posix_spawn(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0) return {};
  int status = 0;
  rusage usage{};
  if (wait4(pid, &status, 0, &usage) < 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return {};
  return {true, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), usage.ru_maxrss};
}

// `count` files in `folder`, each demo.ira with a client's own name and balances.
void MakeBook(const ira::Scenario& demo, const fs::path& folder, int count) {
  fs::create_directories(folder);
  for (int i = 0; i < count; ++i) {
    ira::Scenario s = demo;
    s.Gen.OwnerName = ira::FixedText("Client " + std::to_string(i + 1), ira::kOwnerNameWidth);
    for (ira::IraRecord& ira : s.Ira) ira.Benefit += ira::Money::FromWhole(i);
    char name[32];
    std::snprintf(name, sizeof name, "client%05d.ira", i + 1);
    ira::file::SaveFile((folder / name).string(), s);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int large = argc > 1 ? std::atoi(argv[1]) : 10000;
  const std::string program = std::string(TALLYRA_PROGRAM_DIR) + "/tallyra";
  ira::Scenario demo;
  if (!ira::file::OpenFile(std::string(TALLYRA_PROGRAM_DIR) + "/demo.ira", demo)) return 1;
  const fs::path work = fs::temp_directory_path() / ("tallyra-folder-bench-" + std::to_string(::getpid()));

  bool ok = true;
  double largeSeconds = 0;
  for (const int count : {1000, large}) {
    const fs::path in = work / ("in" + std::to_string(count));
    const fs::path out = work / ("out" + std::to_string(count));
    MakeBook(demo, in, count);
    const Run run = RunOnce({program, "--batch", in.string(), "--out", out.string()});
    if (!run.ok) {
      std::printf("folder batch of %d files could not be run\n", count);
      ok = false;
      continue;
    }
    std::printf("folder batch, %5d files: %7.3f s   %8.0f files/s   peak memory %6.1f MB\n", count, run.seconds,
                count / run.seconds, static_cast<double>(run.peakKb) / 1024.0);
    if (count == large) largeSeconds = run.seconds;
  }

  // One process per file, as before the folder batch: timed on 300 of the
  // files and scaled to the large run.
  constexpr int kSingles = 300;
  const fs::path in = work / ("in" + std::to_string(large));
  const fs::path single = work / "single.txt";
  double singleSeconds = 0;
  for (int i = 0; i < kSingles && ok; ++i) {
    char name[32];
    std::snprintf(name, sizeof name, "client%05d.ira", i % large + 1);
    const Run run = RunOnce({program, "/silent", "/input", (in / name).string(), "/output", single.string()});
    ok = run.ok;
    singleSeconds += run.seconds;
  }
  if (ok && largeSeconds > 0) {
    const double perFile = singleSeconds / kSingles;
    std::printf("single-file batch:          %7.3f ms a file, %d files would take %.1f s\n", perFile * 1000, large,
                perFile * large);
    std::printf("folder batch / single-file runs: %.1f times as fast\n", perFile * large / largeSeconds);
  }
  std::error_code ec;
  fs::remove_all(work, ec);
  return ok ? 0 : 1;
}
