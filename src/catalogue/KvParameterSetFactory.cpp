#include "catalogue/KvParameterSetFactory.h"

#include "catalogue/KvAlbersEqualAreaProjection.h"
#include "catalogue/KvCassiniSoldnerProjection.h"
#include "catalogue/KvEquidistantConicProjection.h"
#include "catalogue/KvGeographicalProjection.h"
#include "catalogue/KvHotineObliqueMercatorProjection.h"
#include "catalogue/KvKrovakProjection.h"
#include "catalogue/KvLambert1SPProjection.h"
#include "catalogue/KvLambert2SPProjection.h"
#include "catalogue/KvLambertAzimuthalEqualAreaProjection.h"
#include "catalogue/KvMercator1SPProjection.h"
#include "catalogue/KvMercator2SPProjection.h"
#include "catalogue/KvNewZealandMapGridProjection.h"
#include "catalogue/KvObliqueMercatorProjection.h"
#include "catalogue/KvPolarStereographicProjection.h"
#include "catalogue/KvRectifiedSkewOrthomorphicProjection.h"
#include "catalogue/KvRotatedLongitudeLatitudeProjection.h"
#include "catalogue/KvStereographicNorthPoleProjection.h"
#include "catalogue/KvStereographicProjection.h"
#include "catalogue/KvStereographicSouthPoleProjection.h"
#include "catalogue/KvTransverseMercatorProjection.h"

namespace {

typedef CKvMapProjData* (*Maker)(const std::string&, const std::string&, const std::string&,
                                 const double*, bool, bool);

template <class Set>
CKvMapProjData* Make(const std::string& name, const std::string& branch,
                     const std::string& ellipsoid, const double* values, bool canDelete,
                     bool canEdit) {
  return new Set(name, branch, ellipsoid, values, canDelete, canEdit);
}

template <>
CKvMapProjData* Make<CKvGeographicalProjection>(const std::string& name, const std::string& branch,
                                                const std::string& ellipsoid, const double* values,
                                                bool canDelete, bool canEdit) {
  return new CKvGeographicalProjection(name, branch, ellipsoid, values ? values[0] : 0.0, canDelete,
                                       canEdit);
}

struct SEntry {
  Maker make;
  const SKvParameterSetInfo& (*info)();
};

#define KV_SET(Set) \
  { Make<Set>, Set::Info }

// Indexed by projection type - 1.
const SEntry kSets[] = {
    KV_SET(CKvTransverseMercatorProjection),
    KV_SET(CKvLambert2SPProjection),
    KV_SET(CKvLambert1SPProjection),
    KV_SET(CKvStereographicProjection),
    KV_SET(CKvNewZealandMapGridProjection),
    KV_SET(CKvHotineObliqueMercatorProjection),
    KV_SET(CKvObliqueMercatorProjection),
    KV_SET(CKvRectifiedSkewOrthomorphicProjection),
    KV_SET(CKvRotatedLongitudeLatitudeProjection),
    KV_SET(CKvMercator2SPProjection),
    KV_SET(CKvMercator1SPProjection),
    KV_SET(CKvStereographicNorthPoleProjection),
    KV_SET(CKvStereographicSouthPoleProjection),
    KV_SET(CKvGeographicalProjection),
    KV_SET(CKvKrovakProjection),
    KV_SET(CKvAlbersEqualAreaProjection),
    KV_SET(CKvLambertAzimuthalEqualAreaProjection),
    KV_SET(CKvCassiniSoldnerProjection),
    KV_SET(CKvEquidistantConicProjection),
    KV_SET(CKvPolarStereographicProjection),
};

const SEntry* EntryOf(CKvMapProjData::EProjectionType type) {
  const int index = static_cast<int>(type) - 1;
  if (index < 0 || index >= static_cast<int>(sizeof kSets / sizeof kSets[0])) return nullptr;
  return &kSets[index];
}

}  // namespace

CKvMapProjData* CKvParameterSetFactory::Create(CKvMapProjData::EProjectionType type,
                                               const std::string& name, const std::string& branch,
                                               const std::string& ellipsoid, const double* values,
                                               bool canDelete, bool canEdit) {
  const SEntry* entry = EntryOf(type);
  return entry ? entry->make(name, branch, ellipsoid, values, canDelete, canEdit) : nullptr;
}

const SKvParameterSetInfo* CKvParameterSetFactory::InfoOf(CKvMapProjData::EProjectionType type) {
  const SEntry* entry = EntryOf(type);
  return entry ? &entry->info() : nullptr;
}
