#include "cart/KvCartSetup.h"

CKvCartSetup& CKvCartSetup::Instance() {
  static CKvCartSetup instance;
  return instance;
}

CKvCartSetup::CKvCartSetup() : m_bEllipsoidListModified(false), m_bMapProjectionListModified(false) {}

// Runs at process exit.  The files are replaced atomically by the
// parameter-file library, so an exit interrupted while writing leaves the
// user's previous file in place.  noexcept: an exception here ends the
// process rather than escaping static destruction.
CKvCartSetup::~CKvCartSetup() noexcept {
  // Without a user folder (ReadData never called) the files would land in
  // whatever the working directory is and replace a file there that has
  // nothing to do with this process, so nothing is written.
  if (m_strUserFolder.empty()) return;
  if (m_bMapProjectionListModified)
    m_MapProjectionList.WriteCustomMapProjections(m_strUserFolder + "custom_projection.tsf");
  if (m_bEllipsoidListModified)
    m_EllipsoidList.WriteCustomEllipsoids(m_strUserFolder + "custom_ellipsoid.tsf");
}

void CKvCartSetup::ReadData(const std::string& systemFolder, const std::string& userFolder) {
  m_strUserFolder = userFolder;
  m_EllipsoidList.ReadEllipsoids(systemFolder + "ellipsoid.tsf", false);
  m_EllipsoidList.ReadEllipsoids(userFolder + "custom_ellipsoid.tsf", true);
  m_EllipsoidList.GenerateCompleteList();
  m_MapProjectionList.InitMapProjections(systemFolder, userFolder);
}

CKvMapProjData* CKvCartSetup::MapProjection(const char* name) {
  SetMapProjectionListModified();
  return m_MapProjectionList.GetMapProjection(name);
}

CKvEllipsoid* CKvCartSetup::Ellipsoid(const char* name) {
  CKvMapProjData* record = m_MapProjectionList.GetMapProjection(name);
  if (!record) return nullptr;
  const std::string id = record->GetEllipsoidID();
  if (id.empty()) return nullptr;
  return m_EllipsoidList.GetEllipsoid(id);
}
