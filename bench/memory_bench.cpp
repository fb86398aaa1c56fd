// Peak memory of the batch run as a whole process on the largest inputs a
// scenario file can hold: 32,767 IRAs projected over 32,767 years (refused
// before anything is allocated), the most IRAs projected over the most years
// that fit, and the most account-years in a middling list. Each figure is
// the child's maximum resident set size, with its wall time and exit status.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "core/base/calendar.h"
#include "core/engine/rep_calc.h"
#include "core/scenario/file.h"
#include "core/scenario/scenario.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
using namespace ira;

std::string WriteScenario(const fs::path& folder, int iras, int years) {
  Scenario s;
  s.Gen.OwnerBirthDate = MakeDate(1930, 3, 1);
  s.Gen.DCY = 2005;
  s.Gen.DistType = -1;
  s.Gen.ProjectionYears = static_cast<std::int16_t>(years);
  for (int i = 0; i < iras; ++i) {
    IraRecord& r = s.AddIra();
    r.IraName = FixedText("IRA " + std::to_string(i + 1), kIraNameWidth);
    r.Benefit = Money::FromWhole(100'000);
    r.RateOfReturn = 5;
  }
  const std::string path = (folder / (std::to_string(iras) + "x" + std::to_string(years) + ".ira")).string();
  file::SaveFile(path, s);
  return path;
}

bool Measure(const std::string& program, const std::string& input, const std::string& output) {
  std::vector<std::string> command{program, "/silent", "/input", input, "/output", output};
  std::vector<char*> argv;
  for (const std::string& a : command) argv.push_back(const_cast<char*>(a.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  const auto start = std::chrono::steady_clock::now();
  pid_t pid = 0;
  const int spawned = posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) return false;
  int status = 0;
  rusage usage{};
  if (::wait4(pid, &status, 0, &usage) < 0) return false;
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::error_code ec;
  const auto size = fs::file_size(output, ec);
  std::printf("%-22s peak %7.1f MB   %6.2f s   exit %d   report %8.1f MB\n", fs::path(input).stem().c_str(),
              static_cast<double>(usage.ru_maxrss) / 1024.0, seconds, WIFEXITED(status) ? WEXITSTATUS(status) : -1,
              ec ? 0.0 : static_cast<double>(size) / 1e6);
  return true;
}

}  // namespace

int main() {
  const std::string program = std::string(TALLYRA_PROGRAM_DIR) + "/tallyra";
  const fs::path folder = fs::temp_directory_path() / "tallyra-memory-bench";
  fs::create_directories(folder);
  const int most = static_cast<int>(rep_calc::kMaxProjectedAccountYears / 32767);
  const struct {
    int iras, years;
  } cases[] = {{32767, 32767}, {32767, most}, {1000, 100}};
  bool ok = true;
  for (const auto& c : cases) ok = Measure(program, WriteScenario(folder, c.iras, c.years), (folder / "out.txt").string()) && ok;
  fs::remove_all(folder);
  return ok ? 0 : 1;
}
