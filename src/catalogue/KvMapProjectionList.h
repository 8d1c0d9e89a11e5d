#pragma once

#include <list>
#include <string>

#include "catalogue/KvMapProjData.h"
#include "platform/KvCartExport.h"

// The catalogue of named projection definitions, in insertion order.  The
// list owns its records.  Names are matched by their short names (the WKT
// system name for WKT text), exactly and case-sensitively, and the first
// match in list order wins.
class KVCART_API CKvMapProjectionList {
 public:
  typedef std::list<CKvMapProjData*>::iterator Iterator;

  CKvMapProjectionList();
  virtual ~CKvMapProjectionList();
  CKvMapProjectionList(const CKvMapProjectionList&) = delete;
  CKvMapProjectionList& operator=(const CKvMapProjectionList&) = delete;

  // The first record whose short name equals that of `name`, or null.
  CKvMapProjData* GetMapProjection(const std::string& name);
  // Appends `record` and takes ownership; null is ignored.
  void AddMapProjection(CKvMapProjData* record);
  // Removes every entry holding `record` and deletes it once; null does
  // nothing.
  void DeleteMapProjection(CKvMapProjData* record);

  // Builds the catalogue in its fixed order: "LONG/LAT", "UTM-1" to
  // "UTM-60", the three system files, the user's file (editable records),
  // "NON-UTM".  Missing files contribute nothing; returns TSF_OK.
  int InitMapProjections(const std::string& systemFolder, const std::string& userFolder);
  // Appends the records of one file; returns the parameter-file status.
  int ReadMapProjections(const std::string& path, bool userDefined);
  // Writes the editable records to `path`, replacing it atomically; returns
  // the parameter-file status.
  int WriteCustomMapProjections(const std::string& path);

  Iterator GetIteratorBegin();
  Iterator GetIteratorEnd();

 private:
  void _dealloc();

  std::list<CKvMapProjData*> m_lstProjections;
};
