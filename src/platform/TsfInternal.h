#pragma once

// The in-memory tree behind the parameter-file handles.  Private to the
// parameter-file library; not installed.

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/tsf.h"

namespace tsf {

enum class Kind : std::uint32_t { File = 0x7466f001, Section, Keyword, Param };

struct File;

struct Node {
  explicit Node(Kind k, File* f, int l) : kind(k), file(f), line(l) {}
  Kind kind;
  File* file;
  int line;  // 1-based source line; 0 when built in memory
};

struct Param : Node {
  Param(File* f, int l) : Node(Kind::Param, f, l) {}
  ETsfParamType type = TSF_PARAM_WORD;
  std::string text;  // the text, the word, or a number's literal as written
  long long integer = 0;
  double real = 0.0;
};

struct Keyword : Node {
  Keyword(File* f, int l, std::string n) : Node(Kind::Keyword, f, l), name(std::move(n)) {}
  std::string name;
  std::vector<std::unique_ptr<Param>> params;
};

// Children indexed by name on first look-up once a section holds many of
// them, so that walking thousands of same-named sections stays linear.
template <typename T>
class NameIndex {
 public:
  T* Find(const std::vector<std::unique_ptr<T>>& items, const std::string& name, int occurrence) const;
  int Count(const std::vector<std::unique_ptr<T>>& items, const std::string& name) const;
  // Keeps a built index current as children are appended.
  void Added(T* item) {
    if (m_built) m_map[item->name].push_back(item);
  }

 private:
  void Build(const std::vector<std::unique_ptr<T>>& items) const;
  mutable bool m_built = false;
  mutable std::unordered_map<std::string, std::vector<T*>> m_map;
};

struct Section : Node {
  Section(File* f, int l, std::string n, Section* p, int d)
      : Node(Kind::Section, f, l), name(std::move(n)), parent(p), depth(d) {}
  std::string name;
  Section* parent;  // null for the file's root
  int depth;        // 0 for the root, 1 for a target
  std::vector<std::unique_ptr<Section>> sections;
  std::vector<std::unique_ptr<Keyword>> keywords;
  std::vector<Node*> order;  // sections and keywords in file order, for writing
  NameIndex<Section> sectionIndex;
  NameIndex<Keyword> keywordIndex;

  Section* AddSection(std::string n, int l);
  Keyword* AddKeyword(std::string n, int l);
};

struct File : Node {
  explicit File(std::string p) : Node(Kind::File, this, 0), path(std::move(p)), root(this, 0, "", nullptr, 0) {}
  std::string path;
  Section root;               // its sections are the targets
  int status = TSF_OK;        // of the last write
  std::vector<Section*> open;  // sections opened by the building calls
};

// Records an error in the calling thread's global error and returns `status`.
int SetError(int status, const std::string& message);
// "path:line: " for a node, "path: " when it has no line.
std::string Where(const Node* node);
std::string Where(const std::string& path, int line);

// Parses `size` bytes into `file`.  On failure returns the status and a
// message in "path:line: what is wrong" form; the tree is then incomplete.
int Parse(const char* data, std::size_t size, File& file, std::string& message);

// Classifies and stores a bare token as integer, floating number or word.
void ClassifyToken(Param& param);

bool IsValidName(const char* name);

// The whole file as text in the writer's layout.
std::string Serialize(const File& file);

// Replaces `path` with `content` through a temporary file in the same folder.
int WriteAtomically(const std::string& path, const std::string& content, std::string& message);

// The shortest text that reads back as the same double, always with a
// decimal point or exponent so it reads back as a floating number.
std::string FormatDouble(double value);

}  // namespace tsf
