#pragma once

#include <string>

#include "catalogue/KvEllipsoidList.h"
#include "catalogue/KvMapProjectionList.h"
#include "platform/KvCartExport.h"

// The process-wide catalogues: ellipsoids and projection definitions, the
// flags that say whether the user changed them, and the user's folder.
// There is one instance, created on first use and destroyed at exit.
// Nothing here is locked: set up before other threads use the library.
class KVCART_API CKvCartSetup {
 public:
  // The single instance.
  static CKvCartSetup& Instance();

  virtual ~CKvCartSetup();
  CKvCartSetup(const CKvCartSetup&) = delete;
  CKvCartSetup& operator=(const CKvCartSetup&) = delete;

  // Reads the ellipsoid files and builds the projection catalogue.  Folders
  // are joined to file names as they are, so each must end with '/'.
  // Calling it again appends the files' contents once more.
  void ReadData(const std::string& systemFolder, const std::string& userFolder);

  void SetEllipsoidListModified() { m_bEllipsoidListModified = true; }
  void SetMapProjectionListModified() { m_bMapProjectionListModified = true; }

  // The catalogue record named `name`, or null.  Marks the projection list
  // modified first, since the caller may change the record in place.
  CKvMapProjData* MapProjection(const char* name);
  // The ellipsoid of the catalogue record named `name`, or null.
  CKvEllipsoid* Ellipsoid(const char* name);

  CKvEllipsoidList m_EllipsoidList;
  CKvMapProjectionList m_MapProjectionList;
  bool m_bEllipsoidListModified;
  bool m_bMapProjectionListModified;
  std::string m_strUserFolder;

 private:
  CKvCartSetup();
};
