#include "core/scenario/file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/base/errors.h"
#include "core/base/messages.h"
#include "core/base/program.h"
#include "core/base/text.h"
#include "core/scenario/convert.h"
#include "core/scenario/extension.h"
#include "core/scenario/records.h"

namespace ira::file {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSignature = "NOTVB3";

std::string CauseText(int err) { return std::generic_category().message(err); }

int SaveErrorNumber(int err) {
  switch (err) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return kErrDiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
      return kErrPermissionDenied;
    case ENOENT:
    case ENOTDIR:
      return kErrPathNotFound;
    default:
      return kErrPathAccess;
  }
}

[[noreturn]] void ThrowSaveError(const std::string& path, int err) {
  throw FileError(SaveErrorNumber(err), "The file " + path + " could not be saved: " + CauseText(err) + ".");
}

std::vector<std::uint8_t> ScenarioBytes(const Scenario& scenario) {
  ByteWriter out;
  out.Field(kSignature, kSignatureSize);
  out.Field(FileVersionTag(), kTagWidth);
  WriteRecords(out, scenario);
  WriteExtension(out, scenario);
  return std::move(out.Data());
}

// The mode a plain create would give, since mkstemp makes the file private.
mode_t NewFileMode(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) == 0) return st.st_mode & 07777;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

void WriteReplacing(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  const fs::path target(path);
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  std::string temp = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
  const int fd = ::mkstemp(temp.data());
  if (fd < 0) ThrowSaveError(path, errno);

  int err = 0;
  if (::fchmod(fd, NewFileMode(path)) != 0) err = errno;
  for (std::size_t done = 0; err == 0 && done < bytes.size();) {
    const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n >= 0) {
      done += static_cast<std::size_t>(n);
    } else if (errno != EINTR) {
      err = errno;
    }
  }
  if (err == 0 && ::fsync(fd) != 0) err = errno;
  if (::close(fd) != 0 && err == 0) err = errno;
  if (err == 0 && ::rename(temp.c_str(), path.c_str()) != 0) err = errno;
  if (err != 0) {
    ::unlink(temp.c_str());
    ThrowSaveError(path, err);
  }
}

bool ShowReadError(const std::string& path, const std::string& cause) {
  ShowMessage(kFileErrorTitle, "The file " + path + " could not be read: " + cause + ".", MsgIcon::Information);
  return false;
}

// Reads at most kMaxFileSize bytes; returns 0 or the errno of the failure.
int ReadBytes(const std::string& path, std::vector<std::uint8_t>& data) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return errno;
  int err = 0;
  std::uint8_t buffer[65536];
  while (data.size() < kMaxFileSize) {
    const ssize_t n = ::read(fd, buffer, std::min(sizeof buffer, kMaxFileSize - data.size()));
    if (n == 0) break;
    if (n < 0) {
      if (errno == EINTR) continue;
      err = errno;
      break;
    }
    data.insert(data.end(), buffer, buffer + n);
  }
  ::close(fd);
  return err;
}

void CheckProjectionYears(GeneralInputs& gen) {
  if (gen.ProjectionYears >= 0) return;
  ShowMessage(kProjYearsTitle, kProjYearsText, MsgIcon::Exclamation);
  gen.ProjectionYears = 0;
}

std::string ComparablePath(const std::string& path) {
  std::error_code ec;
  fs::path full = fs::absolute(path, ec);
  if (ec) full = path;
  fs::path resolved = fs::weakly_canonical(full, ec);
  if (ec) resolved = full.lexically_normal();
  return ToLower(resolved.string());
}

}  // namespace

void SaveFile(const std::string& path, const Scenario& scenario) { WriteReplacing(path, ScenarioBytes(scenario)); }

void LoadFile(ByteReader& in, Scenario& out) {
  in.Expect(kHeaderSize, "version tag");
  in.Skip(kSignatureSize);
  std::string tag;
  in.Field(tag, kTagWidth);
  // Substring tests in this order: every tag starting with "VESK2001" is a 2001 file.
  if (tag.find("VESK1999.2") != std::string::npos) {
    Conv992xTo0010(in, out);
  } else if (tag.find("VESK2000.1") != std::string::npos) {
    Conv0010_2_0101(in, out);
  } else if (tag.find("VESK2001") != std::string::npos) {
    Conv0120_2_0210(in, out);
  } else {
    ReadScenario(in, GeneralLayout{}, out);
    // Only the current layout can carry the block: older versions never wrote one.
    if (!ReadExtension(in.Rest(), out)) {
      ShowMessage(kFileErrorTitle, "The file " + in.Name() + kDamagedExtensionText, MsgIcon::Exclamation);
    }
  }
}

bool OpenData(const std::string& name, std::span<const std::uint8_t> data, Scenario& scenario) {
  Scenario loaded;
  try {
    ByteReader in(name, data);
    if (in.Remaining() == 0) in.Refuse("is empty.");
    if (in.Peek(kSignatureSize) == kSignature) {
      LoadFile(in, loaded);
    } else {
      ConvLegacyFamily(in, loaded);
    }
  } catch (const RefusedFile& refused) {
    ShowMessage(refused.Title(), refused.what(), MsgIcon::Information);
    return false;
  }
  CheckProjectionYears(loaded.Gen);
  scenario = std::move(loaded);
  return true;
}

bool OpenFile(const std::string& path, Scenario& scenario) {
  try {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) {
      if (errno != ENOENT && errno != ENOTDIR) return ShowReadError(path, CauseText(errno));
      ShowMessage(kNotFoundTitle,
                  "File: " + path + " does not exist." + "Please verify the file is in the correct directory.",
                  MsgIcon::Information);
      return false;
    }
    if (S_ISDIR(st.st_mode)) return ShowReadError(path, "it is a folder");
    if (!S_ISREG(st.st_mode)) return ShowReadError(path, "it is not a regular file");
    std::vector<std::uint8_t> data;
    if (const int err = ReadBytes(path, data); err != 0) return ShowReadError(path, CauseText(err));
    return OpenData(path, data, scenario);
  } catch (const std::exception& e) {
    ReportUnexpected("OpenFile()", e);
    return false;
  }
}

bool CheckReservedName(const std::string& path) {
  if (ComparablePath(path) != ComparablePath(DebugFilePath())) return true;
  ShowMessage(kReservedNameTitle, path + " is reserved for system use. Please use another name.",
              MsgIcon::Information);
  return false;
}

std::string DebugFilePath() { return ProgramFile("DEBUG.IRA"); }

}  // namespace ira::file
