#include "catalogue/KvEllipsoidList.h"

#include <algorithm>

#include "catalogue/KvParameterTable.h"
#include "platform/tsf.h"

CKvEllipsoidList::CKvEllipsoidList()
    : m_nPredefined(0), m_nCustom(0), m_nComplete(0), m_CustomFile(ID_TARGET) {}

CKvEllipsoidList::CKvEllipsoidList(const CKvEllipsoidList& other) : CKvEllipsoidList() { _copy(other); }

CKvEllipsoidList& CKvEllipsoidList::operator=(const CKvEllipsoidList& other) {
  if (this != &other) {
    _dealloc();
    m_CustomFile.Clear();
    _copy(other);
  }
  return *this;
}

CKvEllipsoidList::~CKvEllipsoidList() { _dealloc(); }

void CKvEllipsoidList::_copy(const CKvEllipsoidList& other) {
  for (const CKvEllipsoid* e : other.m_lstPredefined) m_lstPredefined.push_back(new CKvEllipsoid(*e));
  for (const CKvEllipsoid* e : other.m_lstCustom) m_lstCustom.push_back(new CKvEllipsoid(*e));
  m_nPredefined = other.m_nPredefined;
  m_nCustom = other.m_nCustom;
  GenerateCompleteList();
}

void CKvEllipsoidList::_dealloc() {
  for (CKvEllipsoid* e : m_lstPredefined) delete e;
  for (CKvEllipsoid* e : m_lstCustom) delete e;
  m_lstPredefined.clear();
  m_lstCustom.clear();
  m_lstComplete.clear();
  m_nPredefined = m_nCustom = m_nComplete = 0;
}

int CKvEllipsoidList::ReadEllipsoids(const std::string& file, bool custom) {
  return _ReadFile(file, custom, nullptr);
}

int CKvEllipsoidList::ReadCustomEllipsoids(const std::string& file) {
  return _ReadFile(file, true, &m_CustomFile);
}

int CKvEllipsoidList::_ReadFile(const std::string& file, bool custom, CKvCustomFile* noted) {
  void* handle = tsfLoadFileRecover(file.c_str(), 1);
  if (!handle) return tsfGetErrorGlb();
  // TSF_OK, or the first problem of a damaged file.
  int status = tsfGetErrorGlb();
  std::string problem = status != TSF_OK ? tsfGetErrorMessageGlb() : "";

  void* target = tsfTargetByNameNum(handle, ID_TARGET.c_str(), 1);
  void* first = target ? tsfSectionByNameNum(target, ID_SECTION.c_str(), 1) : nullptr;
  const int count = first ? tsfGetNoInstances(first) : 0;
  std::vector<std::pair<CKvEllipsoid*, void*>> read;  // ellipsoid and its section
  for (int i = 1; i <= count; ++i) {
    void* section = tsfSectionByNameNum(target, ID_SECTION.c_str(), i);
    if (!section || tsfIsDamaged(section)) continue;
    // A missing keyword leaves its value empty or 0; one that is there must
    // say what it means.
    std::string name, code, reason;
    tsfGetParam(section, ID_NAME.c_str(), name);
    tsfGetParam(section, ID_CODE.c_str(), code);
    if (!CKvParameterTable::CheckNumber(section, ID_MAJOR.c_str(), reason) ||
        !CKvParameterTable::CheckNumber(section, ID_INV_FLATNESS.c_str(), reason)) {
      if (status == TSF_OK) {
        status = TSF_ERR_TYPE;
        problem = reason + "; the ellipsoid '" + (name.empty() ? code : name) + "' is left out";
      }
      continue;
    }
    double major = 0.0, invFlattening = 0.0;
    tsfGetParam(section, ID_MAJOR.c_str(), major);
    tsfGetParam(section, ID_INV_FLATNESS.c_str(), invFlattening);
    CKvEllipsoid* e = new CKvEllipsoid(name, code, major, invFlattening);
    if (custom) {
      m_lstCustom.push_back(e);
      ++m_nCustom;
    } else {
      m_lstPredefined.push_back(e);
      ++m_nPredefined;
    }
    read.emplace_back(e, section);
  }
  if (noted) {
    const std::vector<std::string> written =
        noted->FormatAll(read.size(), [&](void* f, std::size_t i) { _Write(f, *read[i].first); });
    for (std::size_t i = 0; i < read.size(); ++i) noted->NoteRead(read[i].first, read[i].second, written[i]);
  }
  tsfClose(&handle);
  if (status != TSF_OK) {
    if (noted) noted->NoteDamage(problem);
    tsfSetErrorGlb(status, problem.c_str());
  }
  return status;
}

void CKvEllipsoidList::_Write(void* handle, const CKvEllipsoid& e) const {
  tsfAddSection(handle, ID_SECTION.c_str());
  tsfPutParam(handle, ID_NAME.c_str(), e.GetName());
  tsfPutParam(handle, ID_CODE.c_str(), e.GetID());
  tsfPutParam(handle, ID_MAJOR.c_str(), e.GetMajor());
  tsfPutParam(handle, ID_INV_FLATNESS.c_str(), e.GetInvFlatness());
  tsfEndSection(handle);
}

int CKvEllipsoidList::WriteCustomEllipsoids(const std::string& file) {
  void* handle = tsfCreate(file.c_str());
  if (!handle) return tsfGetErrorGlb();
  tsfAddTarget(handle, ID_TARGET.c_str());
  for (const CKvEllipsoid* e : m_lstCustom) _Write(handle, *e);
  tsfWrite(handle, file.c_str());
  return tsfClose(&handle);
}

int CKvEllipsoidList::SaveCustomEllipsoids(const std::string& file, std::string& report) {
  const std::vector<const CKvEllipsoid*> custom(m_lstCustom.begin(), m_lstCustom.end());
  const std::vector<std::string> texts =
      m_CustomFile.FormatAll(custom.size(), [&](void* f, std::size_t i) { _Write(f, *custom[i]); });
  std::vector<CKvCustomFile::SRecord> now;
  for (std::size_t i = 0; i < custom.size(); ++i) now.push_back({custom[i], texts[i]});
  return m_CustomFile.Save(file, now, report);
}

CKvEllipsoid* CKvEllipsoidList::GetEllipsoid(const std::string& id) {
  for (CKvEllipsoid* e : m_lstComplete)
    if (e->GetID() == id) return e;
  return nullptr;
}

CKvEllipsoid* CKvEllipsoidList::GetEllipsoidFromName(const std::string& name) {
  for (CKvEllipsoid* e : m_lstComplete)
    if (e->GetName() == name) return e;
  return nullptr;
}

bool CKvEllipsoidList::_Holds(const CKvEllipsoid* e) const {
  return std::find(m_lstPredefined.begin(), m_lstPredefined.end(), e) != m_lstPredefined.end() ||
         std::find(m_lstCustom.begin(), m_lstCustom.end(), e) != m_lstCustom.end();
}

void CKvEllipsoidList::AddEllipsoid(CKvEllipsoid* e) {
  // Holding a pointer twice would delete it twice.
  if (!e || _Holds(e)) return;
  m_lstCustom.push_back(e);
  ++m_nCustom;
  GenerateCompleteList();
}

void CKvEllipsoidList::EditEllipsoid(CKvEllipsoid* e) {
  if (e && std::find(m_lstCustom.begin(), m_lstCustom.end(), e) != m_lstCustom.end()) GenerateCompleteList();
}

void CKvEllipsoidList::DeleteEllipsoid(CKvEllipsoid* e) {
  if (!e) return;
  const std::size_t before = m_lstCustom.size();
  m_lstCustom.remove(e);
  if (m_lstCustom.size() == before) return;  // not custom: never deleted
  m_nCustom = static_cast<long>(m_lstCustom.size());
  delete e;
  GenerateCompleteList();
}

void CKvEllipsoidList::GenerateCompleteList() {
  m_lstComplete.assign(m_lstPredefined.begin(), m_lstPredefined.end());
  m_lstComplete.insert(m_lstComplete.end(), m_lstCustom.begin(), m_lstCustom.end());
  m_nComplete = static_cast<long>(m_lstComplete.size());
}

std::list<CKvEllipsoid*>& CKvEllipsoidList::_List(EEllipsoidTypes type) {
  switch (type) {
    case ePredefinedEllipsoids: return m_lstPredefined;
    case eCustomEllipsoids: return m_lstCustom;
    default: return m_lstComplete;
  }
}

CKvEllipsoidList::Iterator CKvEllipsoidList::GetIteratorBegin(EEllipsoidTypes type) { return _List(type).begin(); }

CKvEllipsoidList::Iterator CKvEllipsoidList::GetIteratorEnd(EEllipsoidTypes type) { return _List(type).end(); }
