#include "catalogue/KvMapProjectionList.h"

#include <memory>

#include "catalogue/KvGeographicalProjection.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "platform/tsf.h"
#include "wkt/KvPRJParser.h"

CKvMapProjectionList::CKvMapProjectionList() = default;

CKvMapProjectionList::~CKvMapProjectionList() { _dealloc(); }

void CKvMapProjectionList::_dealloc() {
  for (CKvMapProjData* record : m_lstProjections) delete record;
  m_lstProjections.clear();
}

CKvMapProjData* CKvMapProjectionList::GetMapProjection(const std::string& name) {
  const CString wanted = CKvPRJParser::ShortName(name);
  for (CKvMapProjData* record : m_lstProjections)
    if (CKvPRJParser::ShortName(record->GetName()).Compare(wanted.GetString()) == 0) return record;
  return nullptr;
}

void CKvMapProjectionList::AddMapProjection(CKvMapProjData* record) {
  if (record) m_lstProjections.push_back(record);
}

void CKvMapProjectionList::DeleteMapProjection(CKvMapProjData* record) {
  if (!record) return;
  const std::size_t before = m_lstProjections.size();
  m_lstProjections.remove(record);
  if (m_lstProjections.size() != before) delete record;
}

CKvMapProjectionList::Iterator CKvMapProjectionList::GetIteratorBegin() {
  return m_lstProjections.begin();
}

CKvMapProjectionList::Iterator CKvMapProjectionList::GetIteratorEnd() {
  return m_lstProjections.end();
}

int CKvMapProjectionList::InitMapProjections(const std::string& systemFolder,
                                             const std::string& userFolder) {
  CKvGeographicalProjection* longLat = new CKvGeographicalProjection("LONG/LAT", "", "WE", 0.0);
  longLat->SetBranchName("Non UTM Projections");
  AddMapProjection(longLat);
  for (int zone = 1; zone <= 60; ++zone) {
    CString name;
    name.Format("UTM-%d", zone);
    AddMapProjection(new CKvTransverseMercatorProjection(name.GetString(), "UTM Projections", "WE",
                                                         0.9996, 6.0 * zone - 183.0, 0.0,
                                                         500000.0, 0.0, false, false));
  }
  for (const char* file : {"map_projection.tsf", "state_plane_nad83.tsf", "state_plane_nad27.tsf"})
    ReadMapProjections(systemFolder + file, false);
  ReadMapProjections(userFolder + "custom_projection.tsf", true);
  // "NON-UTM" takes the values of the default transverse Mercator record and,
  // like the UTM zones, is read-only, so it never reaches the user's file.
  std::unique_ptr<CKvMapProjData> defaults(
      CKvMapProjData::CreateDefaultParameterProjection(CKvMapProjData::eTransverseMercator));
  double values[5];
  for (int i = 0; i < 5; ++i) {
    std::string label;
    CKvMapProjData::EParamType kind;
    defaults->GetParameter(i, label, values[i], kind);
  }
  AddMapProjection(new CKvTransverseMercatorProjection(
      "NON-UTM", "Non UTM Projections", defaults->GetEllipsoidID(), values, false, false));
  return TSF_OK;
}

int CKvMapProjectionList::ReadMapProjections(const std::string& path, bool userDefined) {
  void* file = tsfLoadFile(path.c_str(), 1);
  if (!file) return tsfGetErrorGlb();
  if (tsfPeekErrorGlb() != TSF_OK) return tsfClose(&file);
  void* target = tsfTargetByNameNum(file, "MAP_PROJECTION_DEFINITION", 1);
  const int sections = target ? tsfGetNoSections(target) : 0;
  for (int i = 1; i <= sections; ++i) {
    void* section = tsfSectionByNum(target, i);
    const std::string name = tsfGetName(section);
    for (int index = 0; index < CKvMapProjData::GetNoOfProjections(); ++index) {
      CKvMapProjData* record = CKvMapProjData::CreateDefaultParameterProjection(
          CKvMapProjData::Enum2ProjectionType(index));
      if (record->IsSectionID(name)) {
        record->ReadFromHandle(section, userDefined);
        AddMapProjection(record);
        break;
      }
      delete record;
    }
  }
  return tsfClose(&file);
}

int CKvMapProjectionList::WriteCustomMapProjections(const std::string& path) {
  void* file = tsfCreate(path.c_str());
  if (!file) return tsfGetErrorGlb();
  tsfAddTarget(file, "MAP_PROJECTION_DEFINITION");
  for (CKvMapProjData* record : m_lstProjections) record->WriteToHandle(file);
  const int written = tsfWrite(file, path.c_str());
  const int closed = tsfClose(&file);
  return written != TSF_OK ? written : closed;
}
