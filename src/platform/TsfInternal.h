#pragma once

// The in-memory tree behind the parameter-file handles.  Private to the
// parameter-file library; not installed.

#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/tsf.h"

namespace tsf {

enum class Kind : std::uint32_t { File = 0x7466f001, Section, Keyword, Param };

struct File;

// Every node of a file lives in that file's arena and is released with it in
// one go; node destructors never run, so nodes hold nothing but arena memory.
struct Node {
  Node(Kind k, File* f, int l) : kind(k), file(f), line(l) {}
  Kind kind;
  File* file;
  int line;  // 1-based source line; 0 when built in memory
};

using Text = std::pmr::string;

inline std::string Str(const Text& t) { return std::string(t.data(), t.size()); }

struct Param : Node {
  Param(File* f, int l);
  ETsfParamType type = TSF_PARAM_WORD;
  Text text;  // the text, the word, or a number's literal as written
  long long integer = 0;
  double real = 0.0;
};

struct Keyword : Node {
  Keyword(File* f, int l, std::string_view n);
  Text name;
  std::pmr::vector<Param*> params;
};

// Children indexed by name on first look-up once a section holds many of
// them, so that walking thousands of same-named sections stays linear.
template <typename T>
class NameIndex {
 public:
  explicit NameIndex(std::pmr::memory_resource* arena) : m_map(arena) {}
  T* Find(const std::pmr::vector<T*>& items, std::string_view name, int occurrence) const;
  int Count(const std::pmr::vector<T*>& items, std::string_view name) const;
  // Keeps a built index current as children are appended.
  void Added(T* item) {
    if (m_built) m_map[item->name].push_back(item);
  }

 private:
  void Build(const std::pmr::vector<T*>& items) const;
  mutable bool m_built = false;
  mutable std::pmr::unordered_map<Text, std::pmr::vector<T*>> m_map;
};

struct Section : Node {
  Section(File* f, int l, std::string_view n, Section* p, int d);
  Text name;
  Section* parent;  // null for the file's root
  int depth;        // 0 for the root, 1 for a target
  int endLine = 0;  // the line of the EndSect that closed it; 0 when none
  // A line inside it broke the format, or it was never closed (set only by
  // a recovering load).
  bool damaged = false;
  std::pmr::vector<Section*> sections;
  std::pmr::vector<Keyword*> keywords;
  std::pmr::vector<Node*> order;  // sections and keywords in file order, for writing
  NameIndex<Section> sectionIndex;
  NameIndex<Keyword> keywordIndex;

  Section* AddSection(std::string_view n, int l);
  Keyword* AddKeyword(std::string_view n, int l);
};

struct File : Node {
  // `sizeHint` is the size of the text to be read, to size the first block.
  File(std::string p, std::size_t sizeHint);
  std::pmr::monotonic_buffer_resource arena;  // first: everything below allocates from it
  std::string path;
  Section root;                // its sections are the targets
  int status = TSF_OK;         // of the last write
  std::vector<Section*> open;  // sections opened by the building calls

  template <typename T, typename... Args>
  T* Make(Args&&... args) {
    return new (arena.allocate(sizeof(T), alignof(T))) T(std::forward<Args>(args)...);
  }
};

// Records an error in the calling thread's global error and returns `status`.
int SetError(int status, const std::string& message);
// "path:line: " for a node, "path: " when it has no line.
std::string Where(const Node* node);
std::string Where(const std::string& path, int line);

// Parses `size` bytes into `file`.  On failure returns the status and a
// message in "path:line: what is wrong" form; the tree is then incomplete.
// With `recover`, a line that breaks the format is skipped and the section
// it was read in marked damaged, sections left open at the end are closed
// and marked damaged, and the status and message are those of the first
// problem.
int Parse(const char* data, std::size_t size, File& file, std::string& message, bool recover = false);

// Whether `section` or any section inside it is damaged.
bool IsDamaged(const Section& section);

// One section (with everything inside it) in the writer's layout, indented
// for its depth.
void AppendSection(std::string& out, const Section& section);

// Classifies and stores a bare token as integer, floating number or word.
void ClassifyToken(Param& param);

bool IsValidName(const char* name);

// The whole file as text in the writer's layout.
std::string Serialize(const File& file);

// Replaces `path` with `content` through a temporary file in the same folder.
// A symbolic link is followed, so the file it names is replaced and the link
// stays.
int WriteAtomically(const std::string& path, const std::string& content, std::string& message);

// The file `path` names once symbolic links in its last component are
// followed (the path itself when it is no link or does not exist).
std::string FollowLinks(const std::string& path);
// The folder part of a path ("." for a bare name), without a trailing '/'.
std::string FolderOf(const std::string& path);
// Flushes a folder's entries to disk, so that a rename inside it survives a
// crash; errors are ignored (some file systems cannot sync a folder).
void SyncFolder(const std::string& folder);

// The shortest text that reads back as the same double, always with a
// decimal point or exponent so it reads back as a floating number.
std::string FormatDouble(double value);

}  // namespace tsf
