// The handle-based interface of the parameter-file library.

#include "platform/tsf.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>

#include "platform/TsfInternal.h"

namespace tsf {

namespace {

// Longer messages are cut (a path at most this long still fits whole).
constexpr std::size_t kMessageSize = 4096 + 256;

// Plain data on purpose: a thread-local object without a destructor is
// never torn down, so the error can still be set while the process exits
// (a catalogue written from a static destructor runs after the thread's
// own thread-local objects are gone).
struct GlobalError {
  int status;
  char message[kMessageSize];
};

GlobalError& ThreadError() {
  thread_local GlobalError error = {TSF_OK, {0}};
  return error;
}

void ResetError() {
  ThreadError().status = TSF_OK;
  ThreadError().message[0] = '\0';
}

// Handles arrive as void*; the kind tag tells what they point to.  The tag is
// the first member of every node, so reading it through Node is valid for
// any node type.
Node* AsNode(void* handle) { return static_cast<Node*>(handle); }
void* ToHandle(Node* node) { return node; }

// The node behind a handle when it is of the expected kind; otherwise
// records the error and gives null.
template <typename T>
T* AsKind(void* handle, Kind kind, const char* call, const char* what) {
  Node* n = AsNode(handle);
  if (!n || n->kind != kind) {
    SetError(TSF_ERR_HANDLE, std::string(call) + ": not a " + what + " handle");
    return nullptr;
  }
  return static_cast<T*>(n);
}

File* AsFile(void* handle, const char* call) { return AsKind<File>(handle, Kind::File, call, "file"); }

// A section handle, or a file standing for its root (the list of targets).
Section* AsSection(void* handle, const char* call) {
  Node* n = AsNode(handle);
  if (n && n->kind == Kind::Section) return static_cast<Section*>(n);
  if (n && n->kind == Kind::File) return &static_cast<File*>(n)->root;
  SetError(TSF_ERR_HANDLE, std::string(call) + ": not a file, target or section handle");
  return nullptr;
}

Keyword* AsKeyword(void* handle, const char* call) { return AsKind<Keyword>(handle, Kind::Keyword, call, "keyword"); }

Param* AsParam(void* handle, const char* call) { return AsKind<Param>(handle, Kind::Param, call, "parameter"); }

std::string Describe(const Section& s) { return s.depth == 0 ? "the file" : "section '" + Str(s.name) + "'"; }

const char* TypeName(ETsfParamType t) {
  switch (t) {
    case TSF_PARAM_TEXT: return "a text";
    case TSF_PARAM_WORD: return "a word";
    case TSF_PARAM_INT: return "an integer";
    case TSF_PARAM_DOUBLE: return "a floating number";
    default: return "nothing";
  }
}

// Occurrence `occurrence` of the child section or keyword named `name`.
template <typename T>
T* ChildByNameNum(Section& s, const std::pmr::vector<T*>& items, const NameIndex<T>& index, const char* name,
                  int occurrence, const char* what) {
  T* found = name ? index.Find(items, name, occurrence) : nullptr;
  if (!found)
    SetError(TSF_ERR_NOT_FOUND, Where(&s) + "no " + what + " '" + (name ? name : "") + "' number " +
                                    std::to_string(occurrence) + " in " + Describe(s));
  return found;
}

// Child section or keyword number `number`, counted from 1.
template <typename T>
T* ChildByNum(Section& s, const std::pmr::vector<T*>& items, int number, const char* what) {
  if (number < 1 || static_cast<std::size_t>(number) > items.size()) {
    SetError(TSF_ERR_NOT_FOUND, Where(&s) + "no " + what + " number " + std::to_string(number) + " in " + Describe(s));
    return nullptr;
  }
  return items[number - 1];
}

int TypeError(const Param& p, const char* wanted) {
  return SetError(TSF_ERR_TYPE, Where(&p) + "parameter '" + Str(p.text) + "' is " + TypeName(p.type) +
                                    ", not " + wanted);
}

void* Load(File* file, const char* data, std::size_t size, bool recover) {
  std::string message;
  int status = Parse(data, size, *file, message, recover);
  if (status == TSF_OK) return ToHandle(file);
  SetError(status, message);
  // A recovering load keeps what it could read unless the file was refused
  // as a whole.
  if (recover && status != TSF_ERR_TOO_LARGE) return ToHandle(file);
  delete file;
  return nullptr;
}

// Reads the whole file at `path`; on failure records the error and gives
// false.
bool ReadWholeFile(const char* path, std::string& data) {
  if (!path || !*path) {
    SetError(TSF_ERR_NO_FILE, "tsfLoadFile: no path given");
    return false;
  }
  // O_NONBLOCK keeps a FIFO without writer from blocking the open; anything
  // but a regular file is refused before it is read.
  int fd = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (fd < 0) {
    SetError(TSF_ERR_NO_FILE, Where(path, 0) + "cannot open: " + std::strerror(errno));
    return false;
  }
  struct stat st;
  if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    ::close(fd);
    SetError(TSF_ERR_NO_FILE, Where(path, 0) + "not a regular file");
    return false;
  }
  if (static_cast<unsigned long long>(st.st_size) > kTsfMaxFileSize) {
    ::close(fd);
    SetError(TSF_ERR_TOO_LARGE, Where(path, 0) + "file is larger than 100 MiB");
    return false;
  }
  data.assign(static_cast<std::size_t>(st.st_size), '\0');
  std::size_t got = 0;
  while (got < data.size()) {
    ssize_t n = ::read(fd, &data[got], data.size() - got);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;  // the file shrank while being read: take what is there
    got += static_cast<std::size_t>(n);
  }
  ::close(fd);
  data.resize(got);
  return true;
}

// The innermost open section of the file a building call was handed.
Section* OpenSection(void* handle, const char* call) {
  Node* n = AsNode(handle);
  if (!n || n->kind == Kind::Param || n->kind == Kind::Keyword) {
    SetError(TSF_ERR_HANDLE, std::string(call) + ": not a file, target or section handle");
    return nullptr;
  }
  File* f = n->file;
  if (f->open.empty()) {
    SetError(TSF_ERR_STATE, Where(f->path, 0) + call + ": no open section (call tsfAddTarget first)");
    return nullptr;
  }
  return f->open.back();
}

Keyword* NewKeyword(void* handle, const char* keyword, const char* call) {
  Section* s = OpenSection(handle, call);
  if (!s) return nullptr;
  if (!IsValidName(keyword)) {
    SetError(TSF_ERR_BAD_NAME, Where(s->file->path, 0) + call + ": '" + (keyword ? keyword : "") +
                                   "' is not a valid keyword name");
    return nullptr;
  }
  return s->AddKeyword(keyword, 0);
}

int AddParam(Keyword* k, ETsfParamType type, std::string_view text, long long integer, double real) {
  Param* p = k->file->Make<Param>(k->file, 0);
  p->type = type;
  p->text.assign(text.data(), text.size());
  p->integer = integer;
  p->real = real;
  k->params.push_back(p);
  return TSF_OK;
}

// A text is written on one line between quotes, so it cannot hold a line
// break; NUL would cut it short when read back.
bool IsWritableText(const std::string& text) { return text.find_first_of(std::string("\n\r\0", 3)) == std::string::npos; }

int BadTextError(const File* f, const char* keyword) {
  return SetError(TSF_ERR_BAD_VALUE, Where(f->path, 0) + "text for '" + (keyword ? keyword : "") +
                                         "' holds a line break or NUL byte");
}

int AddInt(Keyword* k, int value) {
  return AddParam(k, TSF_PARAM_INT, std::to_string(value), value, static_cast<double>(value));
}

int AddDouble(Keyword* k, double value) { return AddParam(k, TSF_PARAM_DOUBLE, FormatDouble(value), 0, value); }

}  // namespace

int SetError(int status, const std::string& message) {
  GlobalError& e = ThreadError();
  e.status = status;
  const std::size_t n = std::min(message.size(), kMessageSize - 1);
  std::memcpy(e.message, message.data(), n);
  e.message[n] = '\0';
  return status;
}

std::string Where(const std::string& path, int line) {
  return line > 0 ? path + ":" + std::to_string(line) + ": " : path + ": ";
}

std::string Where(const Node* node) { return Where(node->file->path, node->line); }

}  // namespace tsf

using namespace tsf;

// --- files -----------------------------------------------------------------

void* tsfLoadFile(const char* path, int resetError) {
  if (resetError) ResetError();
  std::string data;
  if (!ReadWholeFile(path, data)) return nullptr;
  return Load(new File(path, data.size()), data.data(), data.size(), false);
}

void* tsfLoadBuffer(const char* data, std::size_t size, const char* name, int resetError) {
  if (resetError) ResetError();
  if (!data && size > 0) {
    SetError(TSF_ERR_NO_FILE, "tsfLoadBuffer: no data given");
    return nullptr;
  }
  return Load(new File(name ? name : "<buffer>", size), data ? data : "", size, false);
}

void* tsfLoadFileRecover(const char* path, int resetError) {
  if (resetError) ResetError();
  std::string data;
  if (!ReadWholeFile(path, data)) return nullptr;
  return Load(new File(path, data.size()), data.data(), data.size(), true);
}

void* tsfLoadBufferRecover(const char* data, std::size_t size, const char* name, int resetError) {
  if (resetError) ResetError();
  if (!data && size > 0) {
    SetError(TSF_ERR_NO_FILE, "tsfLoadBuffer: no data given");
    return nullptr;
  }
  return Load(new File(name ? name : "<buffer>", size), data ? data : "", size, true);
}

int tsfIsDamaged(void* handle) {
  Section* s = AsSection(handle, "tsfIsDamaged");
  return s && IsDamaged(*s) ? 1 : 0;
}

void* tsfCreate(const char* path) {
  if (!path || !*path) {
    SetError(TSF_ERR_NO_FILE, "tsfCreate: no path given");
    return nullptr;
  }
  return ToHandle(new File(path, 0));
}

int tsfWrite(void* handle, const char* path) {
  File* f = AsFile(handle, "tsfWrite");
  if (!f) return TSF_ERR_HANDLE;
  const std::string target = (path && *path) ? path : f->path;
  std::string message;
  f->status = WriteAtomically(target, Serialize(*f), message);
  if (f->status != TSF_OK) SetError(f->status, message);
  return f->status;
}

int tsfWriteBuffer(const char* path, const char* data, std::size_t size) {
  if (!path || !*path) return SetError(TSF_ERR_NO_FILE, "tsfWriteBuffer: no path given");
  if (!data && size > 0) return SetError(TSF_ERR_WRITE, "tsfWriteBuffer: no data given");
  std::string message;
  const int status = WriteAtomically(path, std::string(data ? data : "", size), message);
  if (status != TSF_OK) SetError(status, message);
  return status;
}

int tsfFormatSection(void* section, std::string& text) {
  Node* n = AsNode(section);
  if (!n || n->kind != Kind::Section) {
    return SetError(TSF_ERR_HANDLE, "tsfFormatSection: not a target or section handle");
  }
  text.clear();
  AppendSection(text, *static_cast<Section*>(n));
  return TSF_OK;
}

int tsfClose(void** handle) {
  if (!handle) return SetError(TSF_ERR_HANDLE, "tsfClose: no handle given");
  File* f = AsFile(*handle, "tsfClose");
  if (!f) return TSF_ERR_HANDLE;
  int status = f->status;
  delete f;
  *handle = nullptr;
  return status;
}

// --- errors ----------------------------------------------------------------

int tsfGetErrorGlb() {
  int status = ThreadError().status;
  ThreadError().status = TSF_OK;
  return status;
}

int tsfPeekErrorGlb() { return ThreadError().status; }

const char* tsfGetErrorMessageGlb() { return ThreadError().message; }

int tsfSetErrorGlb(int status, const char* message) {
  return SetError(status, message ? message : "");
}

// --- navigation ------------------------------------------------------------

void* tsfTargetByNameNum(void* file, const char* name, int occurrence) {
  File* f = AsFile(file, "tsfTargetByNameNum");
  return f ? tsfSectionByNameNum(&f->root, name, occurrence) : nullptr;
}

void* tsfTargetByNum(void* file, int number) {
  File* f = AsFile(file, "tsfTargetByNum");
  return f ? tsfSectionByNum(&f->root, number) : nullptr;
}

int tsfGetNoTargets(void* file) {
  File* f = AsFile(file, "tsfGetNoTargets");
  return f ? static_cast<int>(f->root.sections.size()) : 0;
}

void* tsfSectionByNameNum(void* parent, const char* name, int occurrence) {
  Section* s = AsSection(parent, "tsfSectionByNameNum");
  return s ? ToHandle(ChildByNameNum(*s, s->sections, s->sectionIndex, name, occurrence, "section")) : nullptr;
}

void* tsfSectionByNum(void* parent, int number) {
  Section* s = AsSection(parent, "tsfSectionByNum");
  return s ? ToHandle(ChildByNum(*s, s->sections, number, "section")) : nullptr;
}

int tsfGetNoSections(void* parent) {
  Section* s = AsSection(parent, "tsfGetNoSections");
  return s ? static_cast<int>(s->sections.size()) : 0;
}

int tsfGetNoInstances(void* section) {
  Node* n = AsNode(section);
  if (!n || n->kind != Kind::Section) {
    SetError(TSF_ERR_HANDLE, "tsfGetNoInstances: not a target or section handle");
    return 0;
  }
  Section* s = static_cast<Section*>(n);
  return s->parent->sectionIndex.Count(s->parent->sections, s->name);
}

const char* tsfGetName(void* handle) {
  Node* n = AsNode(handle);
  if (n && n->kind == Kind::Section) return static_cast<Section*>(n)->name.c_str();
  if (n && n->kind == Kind::Keyword) return static_cast<Keyword*>(n)->name.c_str();
  if (n && n->kind == Kind::File) return static_cast<File*>(n)->path.c_str();
  SetError(TSF_ERR_HANDLE, "tsfGetName: not a file, section or keyword handle");
  return "";
}

int tsfGetLine(void* handle) {
  Node* n = AsNode(handle);
  if (!n) {
    SetError(TSF_ERR_HANDLE, "tsfGetLine: no handle given");
    return 0;
  }
  return n->line;
}

void* tsfGetFile(void* handle) {
  Node* n = AsNode(handle);
  if (!n) {
    SetError(TSF_ERR_HANDLE, "tsfGetFile: no handle given");
    return nullptr;
  }
  return ToHandle(n->file);
}

int tsfGetEndLine(void* section) {
  Node* n = AsNode(section);
  if (!n || n->kind != Kind::Section) {
    SetError(TSF_ERR_HANDLE, "tsfGetEndLine: not a target or section handle");
    return 0;
  }
  return static_cast<Section*>(n)->endLine;
}

void* tsfKeywordByNameNum(void* section, const char* name, int occurrence) {
  Section* s = AsSection(section, "tsfKeywordByNameNum");
  return s ? ToHandle(ChildByNameNum(*s, s->keywords, s->keywordIndex, name, occurrence, "keyword")) : nullptr;
}

void* tsfKeywordByNum(void* section, int number) {
  Section* s = AsSection(section, "tsfKeywordByNum");
  return s ? ToHandle(ChildByNum(*s, s->keywords, number, "keyword")) : nullptr;
}

int tsfGetNoKeywords(void* section) {
  Section* s = AsSection(section, "tsfGetNoKeywords");
  return s ? static_cast<int>(s->keywords.size()) : 0;
}

int tsfGetNoParams(void* keyword) {
  Keyword* k = AsKeyword(keyword, "tsfGetNoParams");
  return k ? static_cast<int>(k->params.size()) : 0;
}

void* tsfParamByNum(void* keyword, int number) {
  Keyword* k = AsKeyword(keyword, "tsfParamByNum");
  if (!k) return nullptr;
  if (number < 1 || static_cast<std::size_t>(number) > k->params.size()) {
    SetError(TSF_ERR_NOT_FOUND, Where(k) + "keyword '" + Str(k->name) + "' has no parameter " + std::to_string(number));
    return nullptr;
  }
  return ToHandle(k->params[number - 1]);
}

// --- reading parameters ----------------------------------------------------

int tsfGetParamType(void* param) {
  Param* p = AsParam(param, "tsfGetParamType");
  return p ? p->type : TSF_PARAM_NONE;
}

const char* tsfGetText(void* param) {
  Param* p = AsParam(param, "tsfGetText");
  return p ? p->text.c_str() : "";
}

int tsfGetInt(void* param) {
  Param* p = AsParam(param, "tsfGetInt");
  if (!p) return 0;
  if (p->type != TSF_PARAM_INT || p->integer < INT_MIN || p->integer > INT_MAX) {
    TypeError(*p, "an integer within the range of int");
    return 0;
  }
  return static_cast<int>(p->integer);
}

double tsfGetDouble(void* param) {
  Param* p = AsParam(param, "tsfGetDouble");
  if (!p) return 0.0;
  if (p->type != TSF_PARAM_DOUBLE && p->type != TSF_PARAM_INT) {
    TypeError(*p, "a number");
    return 0.0;
  }
  return p->real;
}

namespace {

Param* FindParam(void* section, const char* keyword, int number) {
  void* k = tsfKeywordByNameNum(section, keyword, 1);
  void* p = k ? tsfParamByNum(k, number) : nullptr;
  return p ? static_cast<Param*>(AsNode(p)) : nullptr;
}

}  // namespace

int tsfGetParam(void* section, const char* keyword, std::string& text, int number) {
  Param* p = FindParam(section, keyword, number);
  if (!p) return tsfPeekErrorGlb();
  text.assign(p->text.data(), p->text.size());
  return TSF_OK;
}

int tsfGetParam(void* section, const char* keyword, double& value, int number) {
  Param* p = FindParam(section, keyword, number);
  if (!p) return tsfPeekErrorGlb();
  if (p->type != TSF_PARAM_DOUBLE && p->type != TSF_PARAM_INT) return TypeError(*p, "a number");
  value = p->real;
  return TSF_OK;
}

int tsfGetParam(void* section, const char* keyword, int& value, int number) {
  Param* p = FindParam(section, keyword, number);
  if (!p) return tsfPeekErrorGlb();
  if (p->type != TSF_PARAM_INT || p->integer < INT_MIN || p->integer > INT_MAX)
    return TypeError(*p, "an integer within the range of int");
  value = static_cast<int>(p->integer);
  return TSF_OK;
}

// --- building --------------------------------------------------------------

void* tsfAddTarget(void* file, const char* name) {
  File* f = AsFile(file, "tsfAddTarget");
  if (!f) return nullptr;
  if (!IsValidName(name)) {
    SetError(TSF_ERR_BAD_NAME, Where(f->path, 0) + "'" + (name ? name : "") + "' is not a valid target name");
    return nullptr;
  }
  f->open.assign(1, f->root.AddSection(name, 0));
  return ToHandle(f->open.back());
}

void* tsfAddSection(void* handle, const char* name) {
  Section* s = OpenSection(handle, "tsfAddSection");
  if (!s) return nullptr;
  if (!IsValidName(name)) {
    SetError(TSF_ERR_BAD_NAME, Where(s->file->path, 0) + "'" + (name ? name : "") + "' is not a valid section name");
    return nullptr;
  }
  if (s->depth >= kTsfMaxDepth) {
    SetError(TSF_ERR_TOO_DEEP, Where(s->file->path, 0) + "sections nested deeper than " +
                                   std::to_string(kTsfMaxDepth) + " levels");
    return nullptr;
  }
  s->file->open.push_back(s->AddSection(name, 0));
  return ToHandle(s->file->open.back());
}

int tsfEndSection(void* handle) {
  Section* s = OpenSection(handle, "tsfEndSection");
  if (!s) return tsfPeekErrorGlb();
  s->file->open.pop_back();
  return TSF_OK;
}

int tsfPutParam(void* handle, const char* keyword, const char* text) {
  return tsfPutParam(handle, keyword, std::string(text ? text : ""));
}

int tsfPutParam(void* handle, const char* keyword, const std::string& text) {
  if (!IsWritableText(text)) {
    Node* n = AsNode(handle);
    return n ? BadTextError(n->file, keyword) : SetError(TSF_ERR_HANDLE, "tsfPutParam: no handle given");
  }
  Keyword* k = NewKeyword(handle, keyword, "tsfPutParam");
  return k ? AddParam(k, TSF_PARAM_TEXT, text, 0, 0.0) : tsfPeekErrorGlb();
}

int tsfPutParam(void* handle, const char* keyword, int value) {
  Keyword* k = NewKeyword(handle, keyword, "tsfPutParam");
  return k ? AddInt(k, value) : tsfPeekErrorGlb();
}

int tsfPutParam(void* handle, const char* keyword, double value) {
  Keyword* k = NewKeyword(handle, keyword, "tsfPutParam");
  return k ? AddDouble(k, value) : tsfPeekErrorGlb();
}

void* tsfAddKeyword(void* handle, const char* keyword) {
  return ToHandle(NewKeyword(handle, keyword, "tsfAddKeyword"));
}

int tsfAddParam(void* keyword, const char* text) {
  return tsfAddParam(keyword, std::string(text ? text : ""));
}

int tsfAddParam(void* keyword, const std::string& text) {
  Keyword* k = AsKeyword(keyword, "tsfAddParam");
  if (!k) return TSF_ERR_HANDLE;
  if (!IsWritableText(text)) return BadTextError(k->file, k->name.c_str());
  return AddParam(k, TSF_PARAM_TEXT, text, 0, 0.0);
}

int tsfAddParam(void* keyword, int value) {
  Keyword* k = AsKeyword(keyword, "tsfAddParam");
  return k ? AddInt(k, value) : TSF_ERR_HANDLE;
}

int tsfAddParam(void* keyword, double value) {
  Keyword* k = AsKeyword(keyword, "tsfAddParam");
  return k ? AddDouble(k, value) : TSF_ERR_HANDLE;
}

int tsfAddWord(void* keyword, const char* word) {
  Keyword* k = AsKeyword(keyword, "tsfAddWord");
  if (!k) return TSF_ERR_HANDLE;
  if (!IsValidName(word))
    return SetError(TSF_ERR_BAD_VALUE, Where(k->file->path, 0) + "'" + (word ? word : "") + "' is not a bare word");
  return AddParam(k, TSF_PARAM_WORD, word, 0, 0.0);
}
