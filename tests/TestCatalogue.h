#pragma once

// Helpers for tests that need the process-wide catalogues.

#include <string>

#include "cart/KvCartSetup.h"
#include "catalogue/KvMapProjData.h"

namespace kvtest {

// Loads the bundled ellipsoids into the set-up object once per process.
inline void EnsureEllipsoids() {
  CKvEllipsoidList& list = CKvCartSetup::Instance().m_EllipsoidList;
  if (list.GetEllipsoid("WE")) return;
  list.ReadEllipsoids(KVCART_DATA_DIR "ellipsoid.tsf", false);
  list.GenerateCompleteList();
}

// Builds the built-in projection catalogue (and the ellipsoids) once per
// process, with no user folder.
inline void EnsureCatalogue() {
  EnsureEllipsoids();
  CKvMapProjectionList& list = CKvCartSetup::Instance().m_MapProjectionList;
  if (list.GetMapProjection("UTM-32")) return;
  list.InitMapProjections(KVCART_DATA_DIR, "/nonexistent-kvcart-user-folder/");
}

// Adds a record to the projection catalogue for the lifetime of the object.
class ScopedRecord {
 public:
  explicit ScopedRecord(CKvMapProjData* record) : m_record(record) {
    CKvCartSetup::Instance().m_MapProjectionList.AddMapProjection(record);
  }
  ~ScopedRecord() { CKvCartSetup::Instance().m_MapProjectionList.DeleteMapProjection(m_record); }
  ScopedRecord(const ScopedRecord&) = delete;
  ScopedRecord& operator=(const ScopedRecord&) = delete;
  CKvMapProjData* get() const { return m_record; }

 private:
  CKvMapProjData* m_record;
};

}  // namespace kvtest
