#include "engines/KvEngineCatalogue.h"

#include <algorithm>
#include <cstring>

#include "cart/KvCartSetup.h"
#include "catalogue/KvParameterTable.h"

void CKvEngineCatalogue::CopyName(char* buffer, const std::string& name) {
  const std::size_t n = std::min(name.size(), static_cast<std::size_t>(kNameSize - 1));
  std::memcpy(buffer, name.data(), n);
  buffer[n] = '\0';
}

const CKvEllipsoid* CKvEngineCatalogue::FindEllipsoid(const std::string& id) {
  return CKvParameterTable::FindEllipsoid(id);
}

CKvMapProjData* CKvEngineCatalogue::FindDefinition(const char* name) {
  return CKvCartSetup::Instance().MapProjection(name);
}

bool CKvEngineCatalogue::GetEllipsoid(const char* name, CKvEllipsoid& ellipsoid) {
  const CKvEllipsoid* found = CKvCartSetup::Instance().Ellipsoid(name);
  if (!found) return false;
  ellipsoid = *found;
  return true;
}
