#pragma once

#include <atomic>
#include <cstdint>
#include <list>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "catalogue/KvCustomFile.h"
#include "catalogue/KvMapProjData.h"
#include "platform/KvCartExport.h"

// The catalogue of named projection definitions, in insertion order.  The
// list owns its records.  Names are matched by their short names (the WKT
// system name for WKT text), exactly and case-sensitively, and the first
// match in list order wins.
//
// Look-ups go through an index from short name to the records of that name
// in list order, kept up to date by every add and delete, so a look-up costs
// the same whatever the catalogue's size.  A listed record renamed in place
// (SetName, ReadFromHandle, assignment) moves its rename count; the next
// look-up sees that the process-wide count of such renames moved and
// re-files the records whose own count did.
//
// A name that matches no record but reads as "EPSG:<code>" (any letter case,
// blanks allowed around the parts) finds the first record in list order
// whose EPSG code (CKvMapProjDetails) is that code.  The index by code is
// built on the first such look-up and rebuilt after the list or a listed
// record's code changed; look-ups by code may run in several threads.
class KVCART_API CKvMapProjectionList {
 public:
  typedef std::list<CKvMapProjData*>::iterator Iterator;

  CKvMapProjectionList();
  virtual ~CKvMapProjectionList();
  CKvMapProjectionList(const CKvMapProjectionList&) = delete;
  CKvMapProjectionList& operator=(const CKvMapProjectionList&) = delete;

  // The first record whose short name equals that of `name`; else, for an
  // "EPSG:<code>" name, the first record of that code; else null.
  CKvMapProjData* GetMapProjection(const std::string& name);
  // The first record whose EPSG code is `code`, or null.
  CKvMapProjData* GetMapProjectionByCode(int code);
  // Appends `record` and takes ownership; null is ignored.
  void AddMapProjection(CKvMapProjData* record);
  // Removes every entry holding `record` and deletes it once; null does
  // nothing.
  void DeleteMapProjection(CKvMapProjData* record);

  // Builds the catalogue in its fixed order: "LONG/LAT", "UTM-1" to
  // "UTM-60", the three system files, the user's file (editable records),
  // "NON-UTM".  Missing files contribute nothing; returns TSF_OK.  What was
  // read from the user's file is noted for SaveCustomMapProjections.
  int InitMapProjections(const std::string& systemFolder, const std::string& userFolder);
  // Appends the records of one file; returns the parameter-file status.
  // The readable records of a damaged file are taken; a record whose values
  // do not read as numbers is left out.  The first problem is returned and
  // left in the parameter-file library's global error.
  int ReadMapProjections(const std::string& path, bool userDefined);
  // Writes the editable records to `path`, replacing it atomically; returns
  // the parameter-file status.
  int WriteCustomMapProjections(const std::string& path);
  // Applies this process's additions, edits and deletions of editable
  // records to the user's file at `path` as it is now (see CKvCustomFile);
  // returns the parameter-file status, with what went wrong in `report`.
  int SaveCustomMapProjections(const std::string& path, std::string& report);
  // What was read from the user's file, and whether it was read whole.
  const CKvCustomFile& GetCustomFile() const { return m_CustomFile; }

  Iterator GetIteratorBegin();
  Iterator GetIteratorEnd();

  // The name of the built-in local system, "NON-UTM".
  static const char* LocalName();
  // Whether `name`, without white space around it, is LocalName().
  static bool IsLocalName(const char* name);

 private:
  // A listed record and its place in the list (entries are only appended, so
  // a running number orders them).
  struct SIndexEntry {
    std::uint64_t order;
    CKvMapProjData* record;
  };
  // The short name a record is filed under, and its rename count then.
  struct SIndexKey {
    std::string key;
    std::uint32_t renames;
  };

  void _dealloc();
  int _ReadFile(const std::string& path, bool userDefined, CKvCustomFile* custom);
  void _Index(CKvMapProjData* record, std::uint64_t order);
  void _Unindex(const CKvMapProjData* record, std::vector<SIndexEntry>* removed);
  void _Refile(const CKvMapProjData* record);
  // Re-files the records renamed since the last look-up.
  void _Refresh();

  std::list<CKvMapProjData*> m_lstProjections;
  std::unordered_map<std::string, std::vector<SIndexEntry>> m_Index;
  std::unordered_map<const CKvMapProjData*, SIndexKey> m_IndexKeys;
  std::uint64_t m_nNextOrder;
  // CKvMapProjData::GetListedRenameCount() when the index was last checked;
  // the mutex lets concurrent look-ups re-file once.
  std::atomic<std::uint64_t> m_nSeenRenames;
  std::mutex m_RefreshMutex;

  void _IndexCodes();
  std::mutex m_CodeMutex;
  std::unordered_map<int, CKvMapProjData*> m_CodeIndex;
  bool m_bCodeIndexValid;
  std::uint64_t m_nCodeGeneration;
  CKvCustomFile m_CustomFile;
};
