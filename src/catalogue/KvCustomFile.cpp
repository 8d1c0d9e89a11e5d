#include "catalogue/KvCustomFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "platform/tsf.h"

namespace {

// How long a process at exit waits for another one that is writing the
// same folder; a writer of a 100 MiB file is done well within it.
constexpr int kLockTimeoutMs = 30000;

// A record's line range in the file on disk and how it reads.
struct SEntry {
  int first;
  int last;
  std::string text;
};

std::string FolderOf(const std::string& path) {
  const std::string::size_type slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// Reads the file at `path` as it is.  A missing file is no failure (there is
// simply nothing yet); anything else that keeps it from being read is.
bool ReadBytes(const std::string& path, std::string& data, bool& missing, std::string& message) {
  data.clear();
  missing = false;
  const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    if (errno == ENOENT) {
      missing = true;
      return true;
    }
    message = path + ": cannot read: " + std::strerror(errno);
    return false;
  }
  struct stat st;
  if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    ::close(fd);
    message = path + ": not a regular file";
    return false;
  }
  if (static_cast<unsigned long long>(st.st_size) > kTsfMaxFileSize) {
    ::close(fd);
    message = path + ": file is larger than 100 MiB";
    return false;
  }
  data.resize(static_cast<std::size_t>(st.st_size));
  std::size_t got = 0;
  bool ok = true;
  while (got < data.size()) {
    const ssize_t n = ::read(fd, &data[got], data.size() - got);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      message = path + ": cannot read: " + std::strerror(errno);
      ok = false;
    }
    if (n <= 0) break;
    got += static_cast<std::size_t>(n);
  }
  ::close(fd);
  data.resize(got);
  return ok;
}

// The text's lines, each with its own line end (the last may have none).
std::vector<std::string> SplitLines(const std::string& text) {
  std::vector<std::string> lines;
  std::string::size_type start = 0;
  while (start < text.size()) {
    const std::string::size_type eol = text.find('\n', start);
    const std::string::size_type end = eol == std::string::npos ? text.size() : eol + 1;
    lines.push_back(text.substr(start, end - start));
    start = end;
  }
  return lines;
}

// Writer text (LF line ends) in the line ends of the file it goes into.
std::string InLineEnds(const std::string& text, const std::string& eol) {
  if (eol == "\n") return text;
  std::string out;
  out.reserve(text.size() + text.size() / 16);
  for (char c : text) {
    if (c == '\n') out += eol;
    else out += c;
  }
  return out;
}

// The file rebuilt from the parts of a damaged tree that can be trusted:
// the undamaged sections of `target` and the undamaged other targets.
std::string Salvage(void* file, const std::string& target, int& kept) {
  std::string out, text;
  kept = 0;
  for (int t = 1; t <= tsfGetNoTargets(file); ++t) {
    void* block = tsfTargetByNum(file, t);
    const bool ours = target == tsfGetName(block);
    if (!ours && tsfIsDamaged(block)) continue;
    if (!out.empty()) out += '\n';
    if (!ours) {
      tsfFormatSection(block, text);
      out += text;
      continue;
    }
    out += "[" + target + "]\n";
    for (int s = 1; s <= tsfGetNoSections(block); ++s) {
      void* section = tsfSectionByNum(block, s);
      if (tsfIsDamaged(section)) continue;
      tsfFormatSection(section, text);
      out += text;
      ++kept;
    }
    out += "EndSect  // " + target + "\n";
  }
  return out;
}

// Holds the folder's lock for a scope.
class CLock {
 public:
  explicit CLock(int lock) : m_nLock(lock) {}
  ~CLock() {
    if (m_nLock >= 0) tsfUnlock(m_nLock);
  }
  CLock(const CLock&) = delete;
  CLock& operator=(const CLock&) = delete;

 private:
  int m_nLock;
};

// Takes the lock for writing `path`.  A missing user folder is created (one
// level, as a program creates its configuration folder on first use) so
// that the first records a user adds are not lost.
int LockFor(const std::string& path) {
  int lock = tsfLock(path.c_str(), kLockTimeoutMs);
  if (lock >= 0) return lock;
  const std::string folder = FolderOf(path);
  struct stat st;
  if (::stat(folder.c_str(), &st) != 0 && errno == ENOENT && ::mkdir(folder.c_str(), 0777) == 0)
    lock = tsfLock(path.c_str(), kLockTimeoutMs);
  return lock;
}

}  // namespace

CKvCustomFile::CKvCustomFile(const std::string& target) : m_strTarget(target) {}

void CKvCustomFile::Clear() {
  m_Noted.clear();
  m_strDamage.clear();
}

void CKvCustomFile::NoteRead(const void* key, void* section, const std::string& written) {
  SNoted noted{key, std::string(), written};
  tsfFormatSection(section, noted.source);
  m_Noted.push_back(std::move(noted));
}

void CKvCustomFile::NoteDamage(const std::string& reason) {
  if (m_strDamage.empty()) m_strDamage = reason.empty() ? "the file could not be read whole" : reason;
}

std::string CKvCustomFile::Format(const std::function<void(void* file)>& write) const {
  return FormatAll(1, [&write](void* file, std::size_t) { write(file); }).front();
}

std::vector<std::string> CKvCustomFile::FormatAll(
    std::size_t count, const std::function<void(void* file, std::size_t i)>& write) const {
  std::vector<std::string> texts(count);
  void* file = tsfCreate("<records>");
  void* target = tsfAddTarget(file, m_strTarget.c_str());
  int sections = 0;
  for (std::size_t i = 0; i < count && target; ++i) {
    write(file, i);
    // A record that writes nothing (a read-only one) has no text.
    if (tsfGetNoSections(target) == sections) continue;
    sections = tsfGetNoSections(target);
    tsfFormatSection(tsfSectionByNum(target, sections), texts[i]);
  }
  tsfClose(&file);
  return texts;
}

std::vector<CKvCustomFile::SChange> CKvCustomFile::_Changes(const std::vector<SRecord>& now) const {
  std::unordered_map<const void*, const SRecord*> byKey;
  for (const SRecord& record : now) byKey.emplace(record.key, &record);
  std::vector<SChange> changes;
  std::unordered_set<const void*> noted;
  for (const SNoted& n : m_Noted) {
    noted.insert(n.key);
    const auto found = byKey.find(n.key);
    if (found == byKey.end()) {
      changes.push_back({&n.source, nullptr});
    } else if (found->second->text != n.written) {
      changes.push_back({&n.source, &found->second->text});
    }
  }
  for (const SRecord& record : now)
    if (!noted.count(record.key) && !record.text.empty()) changes.push_back({nullptr, &record.text});
  return changes;
}

int CKvCustomFile::Save(const std::string& path, const std::vector<SRecord>& now, std::string& report) {
  report.clear();
  const std::vector<SChange> changes = _Changes(now);
  // A process that changed nothing leaves the file alone, damaged or not.
  if (changes.empty()) return TSF_OK;
  auto fail = [&](int status, const std::string& why) {
    report = why + "; this process's changes to " + path + " are not saved";
    return status;
  };

  const int lock = LockFor(path);
  if (lock < 0) return fail(TSF_ERR_WRITE, tsfGetErrorMessageGlb());
  CLock held(lock);

  // The file as it is now: other processes may have written it since this
  // one read it.
  std::string text, message;
  bool missing = false;
  if (!ReadBytes(path, text, missing, message)) return fail(TSF_ERR_NO_FILE, message);
  void* disk = tsfLoadBufferRecover(text.data(), text.size(), path.c_str(), 1);
  if (!disk) return fail(tsfGetErrorGlb(), tsfGetErrorMessageGlb());
  std::string damage;
  int kept = 0;
  if (tsfIsDamaged(disk)) {
    damage = tsfGetErrorMessageGlb();
    text = Salvage(disk, m_strTarget, kept);
    tsfClose(&disk);
    disk = tsfLoadBuffer(text.data(), text.size(), path.c_str(), 1);
    if (!disk) return fail(tsfGetErrorGlb(), std::string("cannot rebuild a damaged file: ") + tsfGetErrorMessageGlb());
  }

  // The records of the target as they read, with their lines.
  std::vector<SEntry> entries;
  void* target = tsfTargetByNameNum(disk, m_strTarget.c_str(), 1);
  const int targetEnd = target ? tsfGetEndLine(target) : 0;
  for (int s = 1; target && s <= tsfGetNoSections(target); ++s) {
    void* section = tsfSectionByNum(target, s);
    SEntry entry{tsfGetLine(section), tsfGetEndLine(section), std::string()};
    tsfFormatSection(section, entry.text);
    entries.push_back(std::move(entry));
  }
  tsfClose(&disk);
  // Entries by how they read, each text's entries in file order.
  std::unordered_map<std::string_view, std::vector<std::size_t>> byText;
  for (std::size_t i = entries.size(); i-- > 0;) byText[entries[i].text].push_back(i);
  auto takeEntry = [&](const std::string& wanted) -> SEntry* {
    const auto found = byText.find(wanted);
    if (found == byText.end() || found->second.empty()) return nullptr;
    SEntry* entry = &entries[found->second.back()];
    found->second.pop_back();
    return entry;
  };

  // This process's changes applied to what is there now.  A record someone
  // else already removed stays removed; an edit of such a record brings it
  // back as edited; an addition that is already there is not doubled.
  std::map<int, std::pair<int, const std::string*>> replaced;  // first line -> last line, new text (null: removed)
  std::vector<const std::string*> appended;
  for (const SChange& change : changes) {
    if (SEntry* entry = change.from ? takeEntry(*change.from) : nullptr) {
      replaced[entry->first] = {entry->last, change.to};
      continue;
    }
    if (!change.to) continue;
    if (takeEntry(*change.to)) continue;
    appended.push_back(change.to);
  }
  if (replaced.empty() && appended.empty() && damage.empty()) {
    _Adopt(now);
    return TSF_OK;
  }

  const std::vector<std::string> lines = SplitLines(text);
  const std::string eol = !lines.empty() && lines[0].size() >= 2 && lines[0].compare(lines[0].size() - 2, 2, "\r\n") == 0
                              ? "\r\n"
                              : "\n";
  std::string out;
  out.reserve(text.size() + 1024);
  std::string added;
  for (const std::string* section : appended) added += InLineEnds(*section, eol);
  for (int line = 1; line <= static_cast<int>(lines.size()); ++line) {
    const auto change = replaced.find(line);
    if (change != replaced.end()) {
      if (change->second.second) out += InLineEnds(*change->second.second, eol);
      line = change->second.first;
      continue;
    }
    if (line == targetEnd) out += added;
    out += lines[line - 1];
  }
  if (!target && !added.empty()) {
    if (!out.empty() && out.back() != '\n') out += eol;
    if (!out.empty()) out += eol;
    out += "[" + m_strTarget + "]" + eol + added + "EndSect  // " + m_strTarget + eol;
  }

  // Never write what would not read back.
  void* check = tsfLoadBuffer(out.data(), out.size(), path.c_str(), 1);
  if (!check) return fail(TSF_ERR_SYNTAX, std::string("the merged text does not read back: ") + tsfGetErrorMessageGlb());
  tsfClose(&check);

  std::string aside;
  if (!damage.empty() && tsfCopyAside(path.c_str(), "damaged", aside) != TSF_OK)
    return fail(TSF_ERR_WRITE, damage + "; " + tsfGetErrorMessageGlb());
  if (tsfWriteBuffer(path.c_str(), out.data(), out.size()) != TSF_OK)
    return fail(TSF_ERR_WRITE, tsfGetErrorMessageGlb());
  if (!damage.empty())
    report = damage + "; the damaged file is kept as " + aside + " and " + path + " now holds its " +
             std::to_string(kept) + " readable records and this process's changes";
  _Adopt(now);
  return TSF_OK;
}

void CKvCustomFile::_Adopt(const std::vector<SRecord>& now) {
  m_Noted.clear();
  for (const SRecord& record : now)
    if (!record.text.empty()) m_Noted.push_back({record.key, record.text, record.text});
  m_strDamage.clear();
}
