#include "app/batch/output_file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <climits>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace ira::app {
namespace {

namespace fs = std::filesystem;

// The temporary file a signal must not leave behind. Only async-signal-safe
// calls in the handler: unlink, signal, raise.
char g_pending[PATH_MAX + 1];
volatile std::sig_atomic_t g_hasPending = 0;

extern "C" void RemovePendingAndStop(int sig) {
  if (g_hasPending != 0) ::unlink(g_pending);
  ::signal(sig, SIG_DFL);
  ::raise(sig);
}

void InstallSignalHandlers() {
  static const bool installed = [] {
    struct sigaction action {};
    action.sa_handler = RemovePendingAndStop;
    ::sigemptyset(&action.sa_mask);
    for (int sig : {SIGINT, SIGTERM, SIGHUP}) ::sigaction(sig, &action, nullptr);
    return true;
  }();
  (void)installed;
}

// Blocks the signals the handler serves while the pending name changes, so
// that a file is never created without the handler knowing it.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t set;
    ::sigemptyset(&set);
    for (int sig : {SIGINT, SIGTERM, SIGHUP}) ::sigaddset(&set, sig);
    ::sigprocmask(SIG_BLOCK, &set, &m_old);
  }
  ~SignalsHeld() { ::sigprocmask(SIG_SETMASK, &m_old, nullptr); }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;

 private:
  sigset_t m_old;
};

[[noreturn]] void Fail(int err) { throw OutputError(SystemReason(err)); }

// The file a chain of symbolic links ends at (which need not exist yet).
std::string FollowLinks(const std::string& path) {
  fs::path p = path;
  for (int hops = 0; hops < 40; ++hops) {
    struct stat st {};
    if (::lstat(p.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return p.string();
    std::error_code ec;
    const fs::path link = fs::read_symlink(p, ec);
    if (ec) Fail(ec.value());
    p = link.is_absolute() ? link : p.parent_path() / link;
  }
  Fail(ELOOP);
}

// What a plain create would give, since mkstemp makes the file private.
mode_t CreationMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

void WriteAll(int fd, const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t n = ::write(fd, data, size);
    if (n < 0) {
      if (errno == EINTR) continue;
      Fail(errno);
    }
    data += n;
    size -= static_cast<std::size_t>(n);
  }
}

// Copies the finished temporary file into `target` in place.
void CopyInto(std::FILE* from, const std::string& target) {
  if (std::fseek(from, 0, SEEK_SET) != 0) Fail(errno);
  const int fd = ::open(target.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
  if (fd < 0) Fail(errno);
  char buffer[65536];
  try {
    for (std::size_t n; (n = std::fread(buffer, 1, sizeof buffer, from)) > 0;) WriteAll(fd, buffer, n);
    if (std::ferror(from) != 0 || ::fsync(fd) != 0) Fail(errno);
  } catch (...) {
    ::close(fd);
    throw;
  }
  if (::close(fd) != 0) Fail(errno);
}

}  // namespace

std::string SystemReason(int err) { return std::generic_category().message(err); }

OutputFile::OutputFile(std::string path) : m_path(std::move(path)) {
  if (m_path == "-") {
    m_stream = stdout;
    m_ownsStream = false;
    return;
  }
  m_target = FollowLinks(m_path);
  struct stat st {};
  const bool exists = ::stat(m_target.c_str(), &st) == 0;
  if (!exists && errno != ENOENT) Fail(errno);
  if (exists && S_ISDIR(st.st_mode)) throw OutputError("it is a folder");
  if (exists && !S_ISREG(st.st_mode)) {
    const int fd = ::open(m_target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    if (fd < 0) Fail(errno);
    m_stream = ::fdopen(fd, "wb");
    if (m_stream == nullptr) {
      const int err = errno;
      ::close(fd);
      Fail(err);
    }
    return;
  }

  m_inPlace = exists && st.st_nlink > 1;
  const fs::path target(m_target);
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  std::string temporary = (folder / ("." + target.filename().string() + ".XXXXXX")).string();
  if (temporary.size() > PATH_MAX) Fail(ENAMETOOLONG);
  InstallSignalHandlers();
  int fd = -1;
  {
    SignalsHeld held;
    fd = ::mkstemp(temporary.data());
    if (fd < 0) Fail(errno);
    std::memcpy(g_pending, temporary.c_str(), temporary.size() + 1);
    g_hasPending = 1;
    m_temporary = temporary;
  }
  // The owner first: a change of owner clears the set-id bits of the mode.
  if (exists && (st.st_uid != ::geteuid() || st.st_gid != ::getegid())) (void)::fchown(fd, st.st_uid, st.st_gid);
  if (::fchmod(fd, exists ? st.st_mode & 07777 : CreationMode()) != 0 || (m_stream = ::fdopen(fd, "w+b")) == nullptr) {
    const int err = errno;
    ::close(fd);
    Discard();
    Fail(err);
  }
}

OutputFile::~OutputFile() { Discard(); }

void OutputFile::Discard() {
  if (m_stream != nullptr && m_ownsStream) std::fclose(m_stream);
  m_stream = nullptr;
  if (!m_temporary.empty()) {
    SignalsHeld held;
    ::unlink(m_temporary.c_str());
    g_hasPending = 0;
    m_temporary.clear();
  }
}

void OutputFile::Publish() {
  if (std::fflush(m_stream) != 0) Fail(errno);
  if (m_temporary.empty()) {
    if (m_ownsStream) {
      std::FILE* stream = std::exchange(m_stream, nullptr);
      if (std::fclose(stream) != 0) Fail(errno);
    }
    return;
  }
  // Synced before it is published, so that a crash never leaves an empty or
  // partial report under the user's name.
  if (::fsync(::fileno(m_stream)) != 0) Fail(errno);
  if (m_inPlace) {
    CopyInto(m_stream, m_target);
  } else {
    if (::rename(m_temporary.c_str(), m_target.c_str()) != 0) Fail(errno);
    SignalsHeld held;
    g_hasPending = 0;
    m_temporary.clear();
    const fs::path folder = fs::path(m_target).has_parent_path() ? fs::path(m_target).parent_path() : fs::path(".");
    if (const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); dir >= 0) {
      (void)::fsync(dir);  // the rename itself; not every file system can
      ::close(dir);
    }
  }
  Discard();
}

}  // namespace ira::app
