#pragma once

#include <atomic>
#include <mutex>
#include <string>

#include "catalogue/KvEllipsoidList.h"
#include "catalogue/KvMapProjectionList.h"
#include "platform/KvCartExport.h"

// The process-wide catalogues: ellipsoids and projection definitions, the
// flags that say whether the user changed them, and the user's folder.
// There is one instance, created on first use and destroyed at exit, when it
// saves the user's changes (SaveUserFiles).
//
// Threads: the modified flags may be set from any thread (look-ups set
// them); the catalogues themselves are not locked, so ReadData must finish
// before other threads use the library, and catalogue edits must not
// overlap look-ups.
class KVCART_API CKvCartSetup {
 public:
  // The single instance.
  static CKvCartSetup& Instance();

  virtual ~CKvCartSetup();
  CKvCartSetup(const CKvCartSetup&) = delete;
  CKvCartSetup& operator=(const CKvCartSetup&) = delete;

  // Reads the ellipsoid files and builds the projection catalogue.  Folders
  // are joined to file names as they are, so each must end with '/'.
  // Calling it again appends the files' contents once more.  A custom file
  // that could not be read whole is reported through GetLastError() and the
  // parameter-file library's global error of the calling thread; it is left
  // as it is.
  void ReadData(const std::string& systemFolder, const std::string& userFolder);

  void SetEllipsoidListModified() { m_bEllipsoidListModified = true; }
  void SetMapProjectionListModified() { m_bMapProjectionListModified = true; }

  // The catalogue record named `name`, or null.  Marks the projection list
  // modified first, since the caller may change the record in place.
  CKvMapProjData* MapProjection(const char* name);
  // The ellipsoid of the catalogue record named `name`, or null.
  CKvEllipsoid* Ellipsoid(const char* name);

  // Saves the user's changes to the custom files in the user folder now, as
  // the destructor does at exit: for each list marked modified, this
  // process's additions, edits and deletions are merged into the file as it
  // is on disk (CKvCustomFile).  Nothing is written without a user folder or
  // without changes.  Returns TSF_OK or the status of the first failure,
  // whose reason GetLastError() then gives.
  int SaveUserFiles();

  // The latest problem with the user's files ("" when none): a custom file
  // that could not be read whole, a save that failed, a damaged file kept
  // aside.  Shared by all threads.
  std::string GetLastError() const;

  CKvEllipsoidList m_EllipsoidList;
  CKvMapProjectionList m_MapProjectionList;
  std::atomic<bool> m_bEllipsoidListModified;
  std::atomic<bool> m_bMapProjectionListModified;
  std::string m_strUserFolder;

 private:
  CKvCartSetup();
  void _SetLastError(const std::string& text);
  // SaveUserFiles, with what there is to tell in `told` ("" when nothing).
  int _Save(std::string& told);

  mutable std::mutex m_Mutex;  // guards the last error and saving
  std::string m_strLastError;
};
