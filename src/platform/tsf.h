#pragma once

// The parameter-file library: reads and writes sectioned parameter files
// (".tsf"), the format of the library's catalogues.  Internal to libKvCart:
// none of these functions is exported and this header is not installed.
//
//   // a comment runs from two slashes to the end of the line
//   [ELLIPSOID_DEFINITION]                 // a top-level section is a target
//      [REF_ELLIPSOID]                     // sections nest; names may repeat
//         Ellipsoid_Name = 'WGS 1984'      // keyword = parameter, parameter, ...
//         Central_Meridian_dms = 9, 30, 0.5
//      EndSect  // REF_ELLIPSOID
//   EndSect  // ELLIPSOID_DEFINITION
//
// Names are letters, digits and '_', not starting with a digit.  A parameter
// is a text in single quotes (a quote inside is doubled), an integer, a
// floating number (always read and written with a full stop), or a bare word.
// LF and CRLF line ends are both read.  Files over 100 MiB and sections nested
// deeper than 64 levels are refused.
//
// Handles are untyped pointers into one loaded or created file: the file
// itself, a target or section, a keyword, a parameter.  They stay valid until
// the file is closed.  Passing a handle of the wrong kind is detected and
// reported (TSF_ERR_HANDLE); passing a dangling pointer is not.
// Occurrence and index numbers are 1-based.
//
// Errors: every failing call records its status and a message in a global
// error that is kept per thread.  tsfGetErrorGlb() returns the status and
// clears it, tsfPeekErrorGlb() only returns it, tsfGetErrorMessageGlb() gives
// "path:line: what is wrong" for people.  A file object also keeps the status
// of its load and of its last write, which tsfClose() returns.

#include <cstddef>
#include <string>

enum ETsfStatus : int {
  TSF_OK = 0,
  TSF_ERR_NO_FILE = 1,     // the file is missing, unreadable or not a regular file
  TSF_ERR_SYNTAX = 2,      // the text does not follow the format
  TSF_ERR_TYPE = 3,        // the parameter does not hold the requested type
  TSF_ERR_WRITE = 4,       // the file could not be written
  TSF_ERR_NOT_FOUND = 5,   // no target, section, keyword or parameter of that name or number
  TSF_ERR_HANDLE = 6,      // a null handle, or a handle of the wrong kind
  TSF_ERR_TOO_LARGE = 7,   // the file is over 100 MiB
  TSF_ERR_TOO_DEEP = 8,    // sections nested deeper than 64 levels
  TSF_ERR_BAD_NAME = 9,    // a name that is not letters, digits and '_'
  TSF_ERR_BAD_VALUE = 10,  // a text that cannot be written (line break or NUL byte)
  TSF_ERR_STATE = 11,      // a write call with no open section, or EndSection with none open
};

// What a parameter holds.
enum ETsfParamType : int {
  TSF_PARAM_NONE = 0,  // only returned for a bad handle
  TSF_PARAM_TEXT = 1,  // 'quoted text'
  TSF_PARAM_WORD = 2,  // a bare word, kept as text
  TSF_PARAM_INT = 3,   // an integer literal that fits in 64 bits
  TSF_PARAM_DOUBLE = 4,
};

constexpr std::size_t kTsfMaxFileSize = 100u * 1024u * 1024u;
constexpr int kTsfMaxDepth = 64;

// --- files -----------------------------------------------------------------

// Loads a file.  With resetError non-zero the calling thread's global error is
// cleared first, so that a later tsfPeekErrorGlb() reports only this load.
// Returns null (and sets the global error) when the file is missing, too
// large, too deep or has a syntax error.
void* tsfLoadFile(const char* path, int resetError);

// Loads from memory; `name` stands for the path in messages.
void* tsfLoadBuffer(const char* data, std::size_t size, const char* name, int resetError);

// Load as much of a damaged file as can be trusted.  A line that breaks the
// format is skipped and the section it was read in is marked damaged;
// sections still open at the end are closed and marked damaged.  The first
// problem is recorded in the global error as tsfLoadFile would record it,
// and the file is still returned.  Null only when nothing can be read
// (missing, not a regular file, too large).
void* tsfLoadFileRecover(const char* path, int resetError);
void* tsfLoadBufferRecover(const char* data, std::size_t size, const char* name,
                                      int resetError);
// 1 when a recovering load marked this section, or a section inside it, as
// damaged (for a file: any of its sections), else 0.
int tsfIsDamaged(void* handle);

// Creates an empty file object to be filled with tsfAddTarget and friends and
// written with tsfWrite.  Nothing touches the disk before tsfWrite.
void* tsfCreate(const char* path);

// Writes the whole file to `path` (null or empty: the path it was loaded from
// or created for).  The target is replaced atomically: the text goes to a
// temporary file in the same folder ("<name>.tmp.<process id>.<n>"), is
// flushed to disk and then renamed over the target, and the folder is
// flushed so that the rename survives a crash; a failure leaves any previous
// file untouched.  When the path is a symbolic link, the file it names is
// replaced and the link stays.  Temporary files left by writers whose
// process no longer runs are removed first.
int tsfWrite(void* file, const char* path);

// Replaces `path` with `size` bytes of `data` exactly as tsfWrite does.
int tsfWriteBuffer(const char* path, const char* data, std::size_t size);

// Frees the file and sets *file to null.  Returns the file's status: that of
// its last write, else TSF_OK.
int tsfClose(void** file);

// --- errors ----------------------------------------------------------------

int tsfGetErrorGlb();
int tsfPeekErrorGlb();
// The message of the latest error recorded in this thread ("" when none since
// the last reset); it outlives tsfGetErrorGlb() so it can be read afterwards.
// Messages longer than 4351 bytes are cut.
const char* tsfGetErrorMessageGlb();
// Records an error found by a caller (a file that loads but holds values it
// cannot use); returns `status`.
int tsfSetErrorGlb(int status, const char* message);

// --- folders ---------------------------------------------------------------

// Takes the advisory lock that serialises the processes writing files in
// the folder of `path` (the folder of the file a symbolic link names): an
// exclusive flock() on ".tsf.lock" in that folder, created when missing.
// Waits up to `timeoutMs` milliseconds (negative: as long as it takes).
// Returns the lock, or -1 with the global error set (folder missing or not
// writable, or still locked when the time is up).  The lock ends with
// tsfUnlock or when the process does.
int tsfLock(const char* path, int timeoutMs);
int tsfUnlock(int lock);
// Copies the file `path` names (through a symbolic link) to
// "<file>.<why>-<UTC time>" beside it, never replacing another file, flushes
// the copy to disk and gives its path.  `why` is a name such as "damaged".
// The file itself is left as it is.
int tsfCopyAside(const char* path, const char* why, std::string& asidePath);

// --- navigation ------------------------------------------------------------

// Targets are the top-level sections of a file.
void* tsfTargetByNameNum(void* file, const char* name, int occurrence);
void* tsfTargetByNum(void* file, int number);
int tsfGetNoTargets(void* file);

// `parent` is a target or section (or the file, standing for its targets).
void* tsfSectionByNameNum(void* parent, const char* name, int occurrence);
void* tsfSectionByNum(void* parent, int number);
int tsfGetNoSections(void* parent);
// How many sections with this section's name its parent holds.
int tsfGetNoInstances(void* section);

// The name of a target, section or keyword; the path of a file.
const char* tsfGetName(void* handle);
// The file a target, section, keyword or parameter belongs to (the file
// itself for a file); null for a null handle.
void* tsfGetFile(void* handle);
// The line a target, section, keyword or parameter was read from (0 when it
// was created in memory).
int tsfGetLine(void* handle);
// The line of the EndSect that closed a target or section (0 when it was
// created in memory or never closed).  A section read from a file spans the
// lines tsfGetLine to tsfGetEndLine, both included.
int tsfGetEndLine(void* section);
// The section with everything inside it, in tsfWrite's layout and indented
// for its depth: two sections that read alike give the same text whatever
// their comments, spacing and line ends.
int tsfFormatSection(void* section, std::string& text);

void* tsfKeywordByNameNum(void* section, const char* name, int occurrence);
void* tsfKeywordByNum(void* section, int number);
int tsfGetNoKeywords(void* section);

int tsfGetNoParams(void* keyword);
void* tsfParamByNum(void* keyword, int number);

// --- reading parameters ----------------------------------------------------

int tsfGetParamType(void* param);
// The text of a quoted text or bare word; for a number, its literal as
// written.  Never null: a bad handle gives "".
const char* tsfGetText(void* param);
// An integer parameter within the range of int; anything else returns 0 and
// sets TSF_ERR_TYPE.
int tsfGetInt(void* param);
// A floating or integer parameter; anything else returns 0 and sets TSF_ERR_TYPE.
double tsfGetDouble(void* param);

// Parameter `number` of the first keyword `keyword` of `section`, in one call.
// On failure the output is left untouched and the status is returned.
int tsfGetParam(void* section, const char* keyword, std::string& text, int number = 1);
int tsfGetParam(void* section, const char* keyword, double& value, int number = 1);
int tsfGetParam(void* section, const char* keyword, int& value, int number = 1);

// --- building --------------------------------------------------------------
//
// A file object being written keeps a stack of open sections.  tsfAddTarget
// starts a new target and makes it the only open section; tsfAddSection opens
// a section inside the innermost open one; tsfEndSection closes it.  The
// other calls add to the innermost open section.  Any handle of the file
// (the file itself, a target, a section) may be passed.

void* tsfAddTarget(void* file, const char* name);
void* tsfAddSection(void* handle, const char* name);
int tsfEndSection(void* handle);

// Adds the line `keyword = value`.
int tsfPutParam(void* handle, const char* keyword, const char* text);
int tsfPutParam(void* handle, const char* keyword, const std::string& text);
int tsfPutParam(void* handle, const char* keyword, int value);
int tsfPutParam(void* handle, const char* keyword, double value);

// Adds a keyword line with no parameters, to be filled with tsfAddParam (for
// lines with several values such as `Central_Meridian_dms = 9, 30, 0.5`).
void* tsfAddKeyword(void* handle, const char* keyword);
int tsfAddParam(void* keyword, const char* text);
int tsfAddParam(void* keyword, const std::string& text);
int tsfAddParam(void* keyword, int value);
int tsfAddParam(void* keyword, double value);
// Adds a bare word (letters, digits and '_' only).
int tsfAddWord(void* keyword, const char* word);
