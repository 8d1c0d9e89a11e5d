#include "cart/KvCartSetup.h"

#include <cstdio>

#include "platform/tsf.h"

namespace {

const char kCustomProjections[] = "custom_projection.tsf";
const char kCustomEllipsoids[] = "custom_ellipsoid.tsf";

}  // namespace

CKvCartSetup& CKvCartSetup::Instance() {
  static CKvCartSetup instance;
  return instance;
}

CKvCartSetup::CKvCartSetup() : m_bEllipsoidListModified(false), m_bMapProjectionListModified(false) {}

// Runs at process exit, when nobody is left to read a status: a save that
// failed, or a damaged file kept aside, is told on the standard error, the
// one place a user may still see it.  Nothing here may throw or touch
// another thread-local object: the calling thread's are already gone.
CKvCartSetup::~CKvCartSetup() {
  try {
    std::string told;
    _Save(told);
    if (!told.empty()) std::fprintf(stderr, "KvCart: %s\n", told.c_str());
  } catch (...) {
    std::fputs("KvCart: the user's catalogue files could not be saved\n", stderr);
  }
}

void CKvCartSetup::ReadData(const std::string& systemFolder, const std::string& userFolder) {
  m_strUserFolder = userFolder;
  m_EllipsoidList.ReadEllipsoids(systemFolder + "ellipsoid.tsf", false);
  m_EllipsoidList.ReadCustomEllipsoids(userFolder + kCustomEllipsoids);
  m_EllipsoidList.GenerateCompleteList();
  m_MapProjectionList.InitMapProjections(systemFolder, userFolder);
  // A user's file that could not be read whole is said once, after all the
  // reading whose errors would hide it.
  std::string problem;
  for (const CKvCustomFile* file : {&m_MapProjectionList.GetCustomFile(), &m_EllipsoidList.GetCustomFile()}) {
    if (!file->IsDamaged()) continue;
    if (!problem.empty()) problem += "; ";
    problem += file->GetDamage() + "; the file is left as it is";
  }
  _SetLastError(problem);
  if (!problem.empty()) tsfSetErrorGlb(TSF_ERR_SYNTAX, problem.c_str());
}

int CKvCartSetup::SaveUserFiles() {
  std::string told;
  return _Save(told);
}

int CKvCartSetup::_Save(std::string& told) {
  std::lock_guard<std::mutex> lock(m_Mutex);
  // Without a user folder (ReadData never called) the files would land in
  // whatever the working directory is and replace a file there that has
  // nothing to do with this process, so nothing is written.
  if (m_strUserFolder.empty()) return TSF_OK;
  int status = TSF_OK;
  // Keeps what a save had to tell and the first failure.
  auto note = [&](int result, const std::string& report) {
    if (report.empty()) return;
    if (!told.empty()) told += "; ";
    told += report;
    if (status == TSF_OK) status = result;
  };
  std::string report;
  if (m_bMapProjectionListModified) {
    const int result = m_MapProjectionList.SaveCustomMapProjections(m_strUserFolder + kCustomProjections, report);
    note(result, report);
  }
  if (m_bEllipsoidListModified) {
    const int result = m_EllipsoidList.SaveCustomEllipsoids(m_strUserFolder + kCustomEllipsoids, report);
    note(result, report);
  }
  if (!told.empty()) m_strLastError = told;
  return status;
}

std::string CKvCartSetup::GetLastError() const {
  std::lock_guard<std::mutex> lock(m_Mutex);
  return m_strLastError;
}

void CKvCartSetup::_SetLastError(const std::string& text) {
  std::lock_guard<std::mutex> lock(m_Mutex);
  m_strLastError = text;
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
