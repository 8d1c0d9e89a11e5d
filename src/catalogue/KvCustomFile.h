#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/KvCartExport.h"

// One of the user's custom catalogue files ("custom_projection.tsf",
// "custom_ellipsoid.tsf") and what this process read from it, so that
// writing it back applies this process's own changes and nothing else.
//
// At start-up the catalogue notes every record it read: the record's
// section as it stood in the file, and the section the record would write.
// At exit, Save compares the catalogue's records then with those notes (a
// record gone is a deletion, one that would write differently an edit, one
// not noted an addition) and applies exactly these changes to the file as
// it is on disk then, under the folder's lock.  Records other processes
// added, changed or removed meanwhile, records this library cannot read,
// other targets and the comments around untouched records all stay as they
// are.  The file is written only when that changes it, atomically.
//
// A file that could not be read whole (a syntax error, a record whose
// values do not read as numbers) is never rewritten in place behind the
// user's back: records that could not be read stay in the file untouched,
// and a file whose text is damaged is put aside ("<name>.damaged-<time>")
// before the good records and this process's changes are written.
class KVCART_API CKvCustomFile {
 public:
  // A catalogue record as it would be written: `key` tells records apart in
  // memory (the record's address), `text` is its section in the
  // parameter-file writer's layout.
  struct SRecord {
    const void* key;
    std::string text;
  };

  // `target` names the file's top-level block ("MAP_PROJECTION_DEFINITION").
  explicit CKvCustomFile(const std::string& target);

  // Forgets what was read; call before reading the file.
  void Clear();
  // Notes a record read from `section` (a section handle of the file being
  // read) that writes itself as `written`.
  void NoteRead(const void* key, void* section, const std::string& written);
  // Notes why the file could not be read whole; the first reason is kept.
  void NoteDamage(const std::string& reason);
  bool IsDamaged() const { return !m_strDamage.empty(); }
  const std::string& GetDamage() const { return m_strDamage; }
  const std::string& GetTarget() const { return m_strTarget; }

  // Applies the changes between the noted records and `now` (the
  // catalogue's records in order) to the file at `path`.  Returns TSF_OK
  // when the file now holds them (written, or already as it should be) and
  // the parameter-file status of the failure otherwise, leaving the file as
  // it was.  `report` says what went wrong or what was put aside; it is
  // empty when there is nothing to tell.  After a successful save the notes
  // describe `now`, so a second save changes nothing.
  int Save(const std::string& path, const std::vector<SRecord>& now, std::string& report);

  // The section that `write` adds to an empty file with this object's
  // target, in the writer's layout; "" when it adds none.
  std::string Format(const std::function<void(void* file)>& write) const;
  // The same for `count` records at once, `write(file, i)` adding record i
  // to one shared file: far cheaper than one file per record.
  std::vector<std::string> FormatAll(std::size_t count,
                                     const std::function<void(void* file, std::size_t i)>& write) const;

 private:
  struct SNoted {
    const void* key;
    std::string source;   // the section as it stood in the file
    std::string written;  // the section as the record wrote itself then
  };
  struct SChange {
    const std::string* from;  // null: an addition
    const std::string* to;    // null: a deletion
  };

  std::vector<SChange> _Changes(const std::vector<SRecord>& now) const;
  // After a save: the file holds `now`.
  void _Adopt(const std::vector<SRecord>& now);

  std::string m_strTarget;
  std::vector<SNoted> m_Noted;
  std::string m_strDamage;
};
