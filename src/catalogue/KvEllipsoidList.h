#pragma once

#include <list>
#include <string>

#include "catalogue/KvCustomFile.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvEllipsoidListIDs.h"
#include "platform/KvCartExport.h"

// The catalogue of ellipsoids: a predefined list read from the system file,
// a custom list read from the user's file or added at run time, and the
// complete list (predefined, then custom) that look-ups search.  The list
// owns every ellipsoid in its predefined and custom lists; pointers handed
// out stay valid until that ellipsoid is deleted or the list destroyed.
// Only custom ellipsoids can be edited, deleted and written back.
class KVCART_API CKvEllipsoidList : public CKvEllipsoidListIDs {
 public:
  enum EEllipsoidTypes {
    eAllEllipsoids = 0,          // any value but 1 and 2 selects the complete list
    ePredefinedEllipsoids = 1,
    eCustomEllipsoids = 2,
  };
  typedef std::list<CKvEllipsoid*>::iterator Iterator;

  CKvEllipsoidList();
  CKvEllipsoidList(const CKvEllipsoidList& other);
  CKvEllipsoidList& operator=(const CKvEllipsoidList& other);
  virtual ~CKvEllipsoidList();

  // Appends the ellipsoids of a catalogue file to the custom or predefined
  // list and returns the parameter-file library's status.  The complete list
  // is not rebuilt here: call GenerateCompleteList() afterwards.  The
  // readable ellipsoids of a damaged file are taken; one whose axis or
  // flattening does not read as a number is left out.  The first problem is
  // returned and left in the parameter-file library's global error.
  int ReadEllipsoids(const std::string& file, bool custom);
  // ReadEllipsoids(file, true) for the user's own file, noting what was read
  // for SaveCustomEllipsoids.
  int ReadCustomEllipsoids(const std::string& file);
  // Writes the custom list (never the predefined one) to `file`, replacing it
  // atomically; returns the parameter-file library's status.
  int WriteCustomEllipsoids(const std::string& file);
  // Applies this process's additions, edits and deletions of custom
  // ellipsoids to the user's file at `file` as it is now (see
  // CKvCustomFile); returns the parameter-file status, with what went wrong
  // in `report`.
  int SaveCustomEllipsoids(const std::string& file, std::string& report);
  // What was read from the user's file, and whether it was read whole.
  const CKvCustomFile& GetCustomFile() const { return m_CustomFile; }

  // The first ellipsoid of the complete list with exactly this identifier
  // (or name); null if none.  A predefined ellipsoid therefore shadows a
  // custom one with the same code.
  CKvEllipsoid* GetEllipsoid(const std::string& id);
  CKvEllipsoid* GetEllipsoidFromName(const std::string& name);

  // Takes ownership of `e` and appends it to the custom list.  A null
  // pointer, or one the list already holds, is ignored.
  void AddEllipsoid(CKvEllipsoid* e);
  // Call after changing a custom ellipsoid in place; other ellipsoids are
  // left alone.
  void EditEllipsoid(CKvEllipsoid* e);
  // Removes and deletes a custom ellipsoid; anything else (null, predefined,
  // unknown) changes nothing.
  void DeleteEllipsoid(CKvEllipsoid* e);
  void GenerateCompleteList();

  Iterator GetIteratorBegin(EEllipsoidTypes type);
  Iterator GetIteratorEnd(EEllipsoidTypes type);

 private:
  void _copy(const CKvEllipsoidList& other);
  void _dealloc();
  int _ReadFile(const std::string& file, bool custom, CKvCustomFile* noted);
  // Adds `e` as a section of the file being built.
  void _Write(void* handle, const CKvEllipsoid& e) const;
  bool _Holds(const CKvEllipsoid* e) const;
  std::list<CKvEllipsoid*>& _List(EEllipsoidTypes type);

  std::list<CKvEllipsoid*> m_lstPredefined;
  long m_nPredefined;
  std::list<CKvEllipsoid*> m_lstCustom;
  long m_nCustom;
  std::list<CKvEllipsoid*> m_lstComplete;  // not owning
  long m_nComplete;
  CKvCustomFile m_CustomFile;  // never copied: it describes this list's records
};
