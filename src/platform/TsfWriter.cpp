// Writes a parameter-file tree as text and replaces the file on disk atomically.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdio>
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

}  // namespace

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

int WriteAtomically(const std::string& path, const std::string& content, std::string& message) {
  // The temporary file lives beside the target so that rename() stays within
  // one file system and is atomic.
  const std::string temp = path + ".tmp." + std::to_string(::getpid()) + "." +
                           std::to_string(g_tempCounter.fetch_add(1));
  int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fd < 0) {
    message = ErrnoText(path, "cannot create a temporary file beside it");
    return TSF_ERR_WRITE;
  }
  // A file that already exists keeps its permissions.
  struct stat existing;
  if (::stat(path.c_str(), &existing) == 0) (void)::fchmod(fd, existing.st_mode & 07777);

  bool ok = WriteAll(fd, content);
  if (!ok) message = ErrnoText(path, "cannot write");
  if (ok && ::fsync(fd) != 0) {
    ok = false;
    message = ErrnoText(path, "cannot flush to disk");
  }
  if (::close(fd) != 0 && ok) {
    ok = false;
    message = ErrnoText(path, "cannot close");
  }
  if (ok && ::rename(temp.c_str(), path.c_str()) != 0) {
    ok = false;
    message = ErrnoText(path, "cannot replace");
  }
  if (!ok) {
    ::unlink(temp.c_str());
    return TSF_ERR_WRITE;
  }
  return TSF_OK;
}

}  // namespace tsf
