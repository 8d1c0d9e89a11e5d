#include "catalogue/KvMapProjectionList.h"

#include <algorithm>
#include <memory>
#include <mutex>

#include "catalogue/KvGeographicalProjection.h"
#include "catalogue/KvMapProjDetails.h"
#include "catalogue/KvParameterSetFactory.h"
#include "catalogue/KvParameterTable.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "platform/KvConstants.h"
#include "platform/tsf.h"
#include "wkt/KvPRJParser.h"

namespace {

const char kTarget[] = "MAP_PROJECTION_DEFINITION";

std::string KeyOf(const std::string& name) {
  return CKvPRJParser::ShortName(CString(name)).GetString();
}

}  // namespace

CKvMapProjectionList::CKvMapProjectionList()
    : m_nNextOrder(0),
      m_nSeenRenames(CKvMapProjData::GetListedRenameCount()),
      m_bCodeIndexValid(false),
      m_nCodeGeneration(0),
      m_CustomFile(kTarget) {}

CKvMapProjectionList::~CKvMapProjectionList() { _dealloc(); }

const char* CKvMapProjectionList::LocalName() { return "NON-UTM"; }

bool CKvMapProjectionList::IsLocalName(const char* name) {
  CString text(name);
  text.TrimLeft();
  text.TrimRight();
  return text.Compare(LocalName()) == 0;
}

void CKvMapProjectionList::_dealloc() {
  for (CKvMapProjData* record : m_lstProjections) delete record;
  m_lstProjections.clear();
  m_Index.clear();
  m_IndexKeys.clear();
  m_CodeIndex.clear();
  m_bCodeIndexValid = false;
}

CKvMapProjData* CKvMapProjectionList::GetMapProjection(const std::string& name) {
  _Refresh();
  const auto bucket = m_Index.find(KeyOf(name));
  if (bucket != m_Index.end()) return bucket->second.front().record;
  const int code = CKvMapProjDetails::ParseCodeName(name.c_str());
  return code > 0 ? GetMapProjectionByCode(code) : nullptr;
}

CKvMapProjData* CKvMapProjectionList::GetMapProjectionByCode(int code) {
  if (code <= 0) return nullptr;
  std::lock_guard<std::mutex> lock(m_CodeMutex);
  if (!m_bCodeIndexValid || m_nCodeGeneration != CKvMapProjDetails::GetCodeGeneration())
    _IndexCodes();
  const auto found = m_CodeIndex.find(code);
  return found == m_CodeIndex.end() ? nullptr : found->second;
}

// The first record of each code in list order.
void CKvMapProjectionList::_IndexCodes() {
  m_nCodeGeneration = CKvMapProjDetails::GetCodeGeneration();
  m_CodeIndex.clear();
  for (CKvMapProjData* record : m_lstProjections) {
    const CKvMapProjDetails* details = CKvParameterSetBase::DetailsOf(record);
    if (details && details->GetEpsgCode() > 0) m_CodeIndex.emplace(details->GetEpsgCode(), record);
  }
  m_bCodeIndexValid = true;
}

void CKvMapProjectionList::AddMapProjection(CKvMapProjData* record) {
  if (!record) return;
  m_lstProjections.push_back(record);
  ++record->m_nLists;
  _Index(record, m_nNextOrder++);
  std::lock_guard<std::mutex> lock(m_CodeMutex);
  m_bCodeIndexValid = false;
}

void CKvMapProjectionList::DeleteMapProjection(CKvMapProjData* record) {
  if (!record) return;
  const std::size_t before = m_lstProjections.size();
  m_lstProjections.remove(record);
  if (m_lstProjections.size() == before) return;
  _Unindex(record, nullptr);
  {
    std::lock_guard<std::mutex> lock(m_CodeMutex);
    m_bCodeIndexValid = false;
  }
  delete record;
}

// Double-checked: look-ups that find the count unchanged touch nothing, and
// of several that find it moved one re-files while the others wait.  The
// scan compares counts only; names are parsed again for renamed records.
void CKvMapProjectionList::_Refresh() {
  const std::uint64_t now = CKvMapProjData::GetListedRenameCount();
  if (m_nSeenRenames.load(std::memory_order_acquire) == now) return;
  std::lock_guard<std::mutex> lock(m_RefreshMutex);
  if (m_nSeenRenames.load(std::memory_order_relaxed) == now) return;
  std::vector<const CKvMapProjData*> renamed;
  for (const auto& known : m_IndexKeys)
    if (known.first->GetRenameCount() != known.second.renames) renamed.push_back(known.first);
  for (const CKvMapProjData* record : renamed) _Refile(record);
  m_nSeenRenames.store(now, std::memory_order_release);
}

// Files `record` under its current short name, keeping each name's entries
// in list order.  A record listed twice shares one key.
void CKvMapProjectionList::_Index(CKvMapProjData* record, std::uint64_t order) {
  auto known = m_IndexKeys.find(record);
  if (known == m_IndexKeys.end())
    known = m_IndexKeys
                .emplace(record, SIndexKey{KeyOf(record->GetName()), record->GetRenameCount()})
                .first;
  std::vector<SIndexEntry>& entries = m_Index[known->second.key];
  const auto at =
      std::upper_bound(entries.begin(), entries.end(), order,
                       [](std::uint64_t o, const SIndexEntry& entry) { return o < entry.order; });
  entries.insert(at, SIndexEntry{order, record});
}

void CKvMapProjectionList::_Unindex(const CKvMapProjData* record,
                                    std::vector<SIndexEntry>* removed) {
  const auto known = m_IndexKeys.find(record);
  if (known == m_IndexKeys.end()) return;
  const auto bucket = m_Index.find(known->second.key);
  if (bucket != m_Index.end()) {
    std::vector<SIndexEntry>& entries = bucket->second;
    for (auto it = entries.begin(); it != entries.end();) {
      if (it->record != record) {
        ++it;
        continue;
      }
      if (removed) removed->push_back(*it);
      it = entries.erase(it);
    }
    if (entries.empty()) m_Index.erase(bucket);
  }
  m_IndexKeys.erase(known);
}

void CKvMapProjectionList::_Refile(const CKvMapProjData* record) {
  const auto known = m_IndexKeys.find(record);
  if (known == m_IndexKeys.end()) return;
  known->second.renames = record->GetRenameCount();
  if (known->second.key == KeyOf(record->GetName())) return;
  std::vector<SIndexEntry> entries;
  _Unindex(record, &entries);
  for (const SIndexEntry& entry : entries) _Index(entry.record, entry.order);
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
  // Geographic WGS 84, the system "LONG/LAT" is, answers to its code too.
  CKvMapProjDetails wgs84;
  wgs84.SetEpsgCode(KvConst::kEpsgWgs84Geographic);
  longLat->SetDetails(wgs84);
  AddMapProjection(longLat);
  for (int zone = 1; zone <= 60; ++zone) {
    CString name;
    name.Format("UTM-%d", zone);
    AddMapProjection(new CKvTransverseMercatorProjection(name.GetString(), "UTM Projections", "WE",
                                                         0.9996, 6.0 * zone - 183.0, 0.0, 500000.0,
                                                         0.0, false, false));
  }
  for (const char* file : {"map_projection.tsf", "state_plane_nad83.tsf", "state_plane_nad27.tsf"})
    ReadMapProjections(systemFolder + file, false);
  _ReadFile(userFolder + "custom_projection.tsf", true, &m_CustomFile);
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
      LocalName(), "Non UTM Projections", defaults->GetEllipsoidID(), values, false, false));
  return TSF_OK;
}

int CKvMapProjectionList::ReadMapProjections(const std::string& path, bool userDefined) {
  return _ReadFile(path, userDefined, nullptr);
}

int CKvMapProjectionList::_ReadFile(const std::string& path, bool userDefined,
                                    CKvCustomFile* custom) {
  void* file = tsfLoadFileRecover(path.c_str(), 1);
  if (!file) return tsfGetErrorGlb();
  // TSF_OK, or the first problem of a damaged file.
  int status = tsfGetErrorGlb();
  std::string problem = status != TSF_OK ? tsfGetErrorMessageGlb() : "";
  auto refuse = [&](int why, const std::string& text) {
    if (status != TSF_OK) return;
    status = why;
    problem = text;
  };
  void* target = tsfTargetByNameNum(file, kTarget, 1);
  const int sections = target ? tsfGetNoSections(target) : 0;
  std::vector<std::pair<CKvMapProjData*, void*>> read;  // record and its section
  for (int i = 1; i <= sections; ++i) {
    void* section = tsfSectionByNum(target, i);
    // The text of a damaged record cannot be trusted; the load's problem
    // already says so.
    if (tsfIsDamaged(section)) continue;
    const std::string name = tsfGetName(section);
    CKvMapProjData* record = nullptr;
    for (int index = 0; index < CKvMapProjData::GetNoOfProjections() && !record; ++index) {
      record = CKvMapProjData::CreateDefaultParameterProjection(CKvMapProjData::Enum2ProjectionType(index));
      if (!record->IsSectionID(name)) {
        delete record;
        record = nullptr;
      }
    }
    if (!record) continue;  // a method this library does not know
    std::string reason;
    if (!CKvParameterTable::Check(section, *CKvParameterSetFactory::InfoOf(record->GetProjectionType()), reason)) {
      std::string recordName;
      tsfGetParam(section, CKvMapProjDataIDs::ID_PROJECTION_NAME.c_str(), recordName);
      refuse(TSF_ERR_TYPE, reason + "; the record '" + recordName + "' is left out");
      delete record;
      continue;
    }
    record->ReadFromHandle(section, userDefined);
    AddMapProjection(record);
    read.emplace_back(record, section);
  }
  if (custom) {
    const std::vector<std::string> written =
        custom->FormatAll(read.size(), [&read](void* f, std::size_t i) { read[i].first->WriteToHandle(f); });
    for (std::size_t i = 0; i < read.size(); ++i) custom->NoteRead(read[i].first, read[i].second, written[i]);
  }
  tsfClose(&file);
  if (status != TSF_OK) {
    if (custom) custom->NoteDamage(problem);
    tsfSetErrorGlb(status, problem.c_str());
  }
  return status;
}

int CKvMapProjectionList::WriteCustomMapProjections(const std::string& path) {
  void* file = tsfCreate(path.c_str());
  if (!file) return tsfGetErrorGlb();
  tsfAddTarget(file, kTarget);
  for (CKvMapProjData* record : m_lstProjections) record->WriteToHandle(file);
  const int written = tsfWrite(file, path.c_str());
  const int closed = tsfClose(&file);
  return written != TSF_OK ? written : closed;
}

int CKvMapProjectionList::SaveCustomMapProjections(const std::string& path, std::string& report) {
  std::vector<CKvMapProjData*> editable;
  for (CKvMapProjData* record : m_lstProjections)
    if (record->CanEdit()) editable.push_back(record);
  const std::vector<std::string> texts = m_CustomFile.FormatAll(
      editable.size(), [&editable](void* f, std::size_t i) { editable[i]->WriteToHandle(f); });
  std::vector<CKvCustomFile::SRecord> now;
  for (std::size_t i = 0; i < editable.size(); ++i) now.push_back({editable[i], texts[i]});
  return m_CustomFile.Save(path, now, report);
}
