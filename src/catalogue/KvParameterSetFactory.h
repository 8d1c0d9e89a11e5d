#pragma once

#include <string>

#include "catalogue/KvMapProjData.h"
#include "catalogue/KvParameterTable.h"

// The one list of the twenty parameter sets, by projection type.
class CKvParameterSetFactory {
 public:
  // A new set of `type` with `values` in its field order (null gives zeros;
  // the geographical set takes its prime meridian as values[0]); null for a
  // type outside 1..20.
  static CKvMapProjData* Create(CKvMapProjData::EProjectionType type, const std::string& name,
                                const std::string& branch, const std::string& ellipsoid,
                                const double* values, bool canDelete, bool canEdit);
  // The table of `type`'s set, or null outside 1..20.
  static const SKvParameterSetInfo* InfoOf(CKvMapProjData::EProjectionType type);
};
