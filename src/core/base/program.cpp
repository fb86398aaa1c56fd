#include "core/base/program.h"

namespace ira {
namespace {
std::string g_folder = ".";
}

std::string VersionText() {
  return "VESK" + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "." +
         std::to_string(kVersionRevision);
}

std::string FileVersionTag() { return "VESK" + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor); }

const std::string& ProgramFolder() { return g_folder; }

void SetProgramFolder(std::string folder) {
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  g_folder = folder.empty() ? "." : std::move(folder);
}

std::string ProgramFile(const std::string& name) { return g_folder + "/" + name; }

}  // namespace ira
