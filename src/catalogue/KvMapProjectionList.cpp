#include "catalogue/KvMapProjectionList.h"

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
