// Folder-level services of the parameter-file library: the advisory lock
// that serialises the processes writing one folder's files, and keeping a
// copy of a damaged file under a name that says why.

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "platform/TsfInternal.h"

namespace tsf {

namespace {

const char kLockName[] = ".tsf.lock";

std::string ErrnoText(const std::string& path, const char* action) {
  return Where(path, 0) + action + ": " + std::strerror(errno);
}

// "20240501-101500": the current time in UTC, for the name of a file put
// aside.
std::string Stamp() {
  const std::time_t now = std::time(nullptr);
  std::tm utc;
  char text[32] = "unknown-time";
  if (gmtime_r(&now, &utc)) std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &utc);
  return text;
}

}  // namespace

}  // namespace tsf

using namespace tsf;

int tsfLock(const char* path, int timeoutMs) {
  if (!path || !*path) {
    SetError(TSF_ERR_NO_FILE, "tsfLock: no path given");
    return -1;
  }
  const std::string lockPath = FolderOf(FollowLinks(path)) + "/" + kLockName;
  const int fd = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
  if (fd < 0) {
    SetError(TSF_ERR_WRITE, ErrnoText(path, "cannot lock its folder"));
    return -1;
  }
  // Polled rather than blocking so that a writer stopped while it holds the
  // lock cannot hang every other process for ever.
  int waited = 0;
  for (;;) {
    if (::flock(fd, timeoutMs < 0 ? LOCK_EX : LOCK_EX | LOCK_NB) == 0) return fd;
    if (errno == EINTR) continue;
    if (errno != EWOULDBLOCK || waited >= timeoutMs) break;
    const int step = waited < 100 ? 5 : 50;
    ::usleep(static_cast<useconds_t>(step) * 1000u);
    waited += step;
  }
  const std::string why = errno == EWOULDBLOCK ? std::string("its folder is locked by another process")
                                               : std::string("cannot lock its folder: ") + std::strerror(errno);
  ::close(fd);
  SetError(TSF_ERR_WRITE, Where(path, 0) + why);
  return -1;
}

int tsfUnlock(int lock) {
  if (lock < 0) return SetError(TSF_ERR_HANDLE, "tsfUnlock: no lock given");
  // Closing the descriptor releases the lock.
  return ::close(lock) == 0 ? TSF_OK : SetError(TSF_ERR_HANDLE, "tsfUnlock: not a lock");
}

int tsfCopyAside(const char* path, const char* why, std::string& asidePath) {
  if (!path || !*path) return SetError(TSF_ERR_NO_FILE, "tsfCopyAside: no path given");
  if (!IsValidName(why)) return SetError(TSF_ERR_BAD_NAME, "tsfCopyAside: the reason must be a name");
  const std::string file = FollowLinks(path);
  const int in = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
  struct stat st;
  if (in < 0 || ::fstat(in, &st) != 0 || !S_ISREG(st.st_mode)) {
    const int saved = errno;
    if (in >= 0) ::close(in);
    errno = in >= 0 && saved == 0 ? EINVAL : saved;
    return SetError(TSF_ERR_NO_FILE, ErrnoText(path, "cannot read the file to keep a copy"));
  }
  // A new name each time: an earlier copy is never replaced.
  const std::string base = file + "." + why + "-" + Stamp();
  int out = -1;
  std::string candidate;
  for (int n = 1; n < 1000 && out < 0; ++n) {
    candidate = n == 1 ? base : base + "-" + std::to_string(n);
    out = ::open(candidate.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, st.st_mode & 0777);
    if (out < 0 && errno != EEXIST) break;
  }
  if (out < 0) {
    ::close(in);
    return SetError(TSF_ERR_WRITE, ErrnoText(path, "cannot create a copy beside it"));
  }
  bool ok = true;
  char buffer[65536];
  for (;;) {
    const ssize_t n = ::read(in, buffer, sizeof buffer);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) ok = false;
    if (n <= 0) break;
    for (ssize_t done = 0; done < n;) {
      const ssize_t w = ::write(out, buffer + done, static_cast<std::size_t>(n - done));
      if (w < 0 && errno == EINTR) continue;
      if (w <= 0) {
        ok = false;
        break;
      }
      done += w;
    }
    if (!ok) break;
  }
  if (ok && ::fsync(out) != 0) ok = false;
  const int saved = errno;
  if (::close(out) != 0 && ok) ok = false;
  ::close(in);
  if (!ok) {
    ::unlink(candidate.c_str());
    errno = saved;
    return SetError(TSF_ERR_WRITE, ErrnoText(path, "cannot copy the file aside"));
  }
  SyncFolder(FolderOf(file));
  asidePath = candidate;
  return TSF_OK;
}
