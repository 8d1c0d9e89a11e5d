// Writes a parameter-file tree as text and replaces the file on disk atomically.

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/TsfInternal.h"

namespace tsf {

namespace {

constexpr int kIndent = 3;

void AppendParam(std::string& out, const Param& p) {
  if (p.type != TSF_PARAM_TEXT) {
    out.append(p.text.data(), p.text.size());
    return;
  }
  out += '\'';
  for (char c : p.text) {
    if (c == '\'') out += '\'';
    out += c;
  }
  out += '\'';
}

void AppendKeyword(std::string& out, const Keyword& k, int level) {
  out.append(static_cast<std::size_t>(level * kIndent), ' ');
  out.append(k.name.data(), k.name.size());
  out += " =";
  for (std::size_t i = 0; i < k.params.size(); ++i) {
    out += i == 0 ? " " : ", ";
    AppendParam(out, *k.params[i]);
  }
  out += '\n';
}

std::string ErrnoText(const std::string& path, const char* action) {
  return Where(path, 0) + action + ": " + std::strerror(errno);
}

bool WriteAll(int fd, const std::string& content) {
  const char* p = content.data();
  std::size_t left = content.size();
  while (left > 0) {
    ssize_t n = ::write(fd, p, left);
    if (n < 0) {
      if (errno == EINTR) continue;
      return false;
    }
    p += n;
    left -= static_cast<std::size_t>(n);
  }
  return true;
}

std::atomic<unsigned> g_tempCounter{0};

const char kTempMark[] = ".tmp.";

// Removes the temporary files that writers of `target` which no longer run
// left behind (a process killed while it wrote).  The writer's process id is
// part of the name; a file whose process is alive is left alone, whatever
// it is doing.
void RemoveStaleTemporaries(const std::string& target) {
  const std::string folder = FolderOf(target);
  const std::string::size_type slash = target.rfind('/');
  const std::string prefix = (slash == std::string::npos ? target : target.substr(slash + 1)) + kTempMark;
  DIR* dir = ::opendir(folder.c_str());
  if (!dir) return;
  while (const dirent* entry = ::readdir(dir)) {
    const char* name = entry->d_name;
    if (std::strncmp(name, prefix.c_str(), prefix.size()) != 0) continue;
    // <prefix><pid>.<counter>
    const char* digits = name + prefix.size();
    char* stop = nullptr;
    errno = 0;
    const long pid = std::strtol(digits, &stop, 10);
    if (errno != 0 || stop == digits || *stop != '.' || pid <= 0 || pid == ::getpid()) continue;
    if (::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH) continue;
    (void)::unlinkat(::dirfd(dir), name, 0);
  }
  ::closedir(dir);
}

}  // namespace

// Iterative, like the reader, so that depth never costs stack.
void AppendSection(std::string& out, const Section& top) {
  struct Frame {
    const Section* section;
    std::size_t next;
  };
  std::vector<Frame> stack{{&top, 0}};
  auto header = [&out](const Section& s) {
    out.append(static_cast<std::size_t>((s.depth - 1) * kIndent), ' ');
    out += '[';
    out.append(s.name.data(), s.name.size());
    out += "]\n";
  };
  header(top);
  while (!stack.empty()) {
    Frame& f = stack.back();
    if (f.next == f.section->order.size()) {
      out.append(static_cast<std::size_t>((f.section->depth - 1) * kIndent), ' ');
      out += "EndSect  // ";
      out.append(f.section->name.data(), f.section->name.size());
      out += '\n';
      stack.pop_back();
      continue;
    }
    const Node* child = f.section->order[f.next++];
    if (child->kind == Kind::Keyword) {
      AppendKeyword(out, *static_cast<const Keyword*>(child), f.section->depth);
    } else {
      const Section& s = *static_cast<const Section*>(child);
      header(s);
      stack.push_back({&s, 0});
    }
  }
}


std::string FormatDouble(double value) {
  char buffer[64];
  auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
  std::string text(buffer, ec == std::errc() ? end : buffer);
  if (text.find_first_of(".eEni") == std::string::npos) text += ".0";
  return text;
}

std::string Serialize(const File& file) {
  std::string out;
  bool first = true;
  for (const Section* target : file.root.sections) {
    if (!first) out += '\n';
    first = false;
    AppendSection(out, *target);
  }
  return out;
}

std::string FolderOf(const std::string& path) {
  const std::string::size_type slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  if (slash == 0) return "/";
  return path.substr(0, slash);
}

std::string FollowLinks(const std::string& path) {
  std::string current = path;
  // The limit the kernel itself applies to a chain of links.
  for (int hops = 0; hops < 40; ++hops) {
    struct stat st;
    if (::lstat(current.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return current;
    std::string target(static_cast<std::size_t>(st.st_size > 0 ? st.st_size : 255) + 1, '\0');
    const ssize_t n = ::readlink(current.c_str(), &target[0], target.size());
    if (n < 0 || static_cast<std::size_t>(n) >= target.size()) return current;
    target.resize(static_cast<std::size_t>(n));
    // A relative link is relative to the folder that holds it.
    current = (target[0] == '/' || current.find('/') == std::string::npos)
                  ? target
                  : FolderOf(current) + "/" + target;
  }
  return current;
}

void SyncFolder(const std::string& folder) {
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  (void)::fsync(fd);
  ::close(fd);
}

int WriteAtomically(const std::string& requested, const std::string& content, std::string& message) {
  // Writing through a link replaces the file it names and keeps the link.
  const std::string path = FollowLinks(requested);
  RemoveStaleTemporaries(path);
  // The temporary file lives beside the target so that rename() stays within
  // one file system and is atomic.
  const std::string temp = path + kTempMark + std::to_string(::getpid()) + "." +
                           std::to_string(g_tempCounter.fetch_add(1));
  int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) {
    message = ErrnoText(requested, "cannot create a temporary file beside it");
    return TSF_ERR_WRITE;
  }
  // A file that already exists keeps its permissions.
  struct stat existing;
  if (::stat(path.c_str(), &existing) == 0) (void)::fchmod(fd, existing.st_mode & 07777);

  bool ok = WriteAll(fd, content);
  if (!ok) message = ErrnoText(requested, "cannot write");
  if (ok && ::fsync(fd) != 0) {
    ok = false;
    message = ErrnoText(requested, "cannot flush to disk");
  }
  if (::close(fd) != 0 && ok) {
    ok = false;
    message = ErrnoText(requested, "cannot close");
  }
  if (ok && ::rename(temp.c_str(), path.c_str()) != 0) {
    ok = false;
    message = ErrnoText(requested, "cannot replace");
  }
  if (!ok) {
    ::unlink(temp.c_str());
    return TSF_ERR_WRITE;
  }
  // The rename is durable only once the folder's entry is on disk.
  SyncFolder(FolderOf(path));
  return TSF_OK;
}

}  // namespace tsf
