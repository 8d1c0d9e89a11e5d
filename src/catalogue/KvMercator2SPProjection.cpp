#include "catalogue/KvMercator2SPProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvMercator2SPProjectionIDs::ID_PROJECTION_SECTION = "MERCATOR_2SP_PROJECTION";
const std::string CKvMercator2SPProjectionIDs::ID_PROJECTION_SECTION_OLD = "MERCATOR_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterSpec kParams[] = {
    {"First parallel:", D::eParamAngle, &K::ID_PARALLEL_1, &K::ID_PARALLEL_1_DMS, EKvAltKey::eDms,
     KV_PRJ_FIELD(StandardParallel1)},
    {"Central meridian:", D::eParamAngle, &K::ID_CENTRE, &K::ID_CENTRE_DMS, EKvAltKey::eDms,
     KV_PRJ_FIELD(CentralMeridian)},
    {"False easting:", D::eParamLength, &K::ID_FALSE_EASTING, &K::ID_FALSE_EASTING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseEasting)},
    {"False northing:", D::eParamLength, &K::ID_FALSE_NORTHING, &K::ID_FALSE_NORTHING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseNorthing)},
};

}  // namespace

const SKvParameterSetInfo& CKvMercator2SPProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           &ID_PROJECTION_SECTION_OLD,
                                           "Mercator with 2 standard parallels",
                                           D::eMercator2SP,
                                           "Mercator_2SP",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvMercator2SPProjection::CKvMercator2SPProjection(const std::string& name,
                                                   const std::string& branch,
                                                   const std::string& ellipsoid, double parallel1,
                                                   double centre, double falseEasting,
                                                   double falseNorthing, bool canDelete,
                                                   bool canEdit)
    : CKvMercator2SPProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{parallel1, centre, falseEasting, falseNorthing}.data(), canDelete,
          canEdit) {}

CKvProjection* CKvMercator2SPProjection::CreateProjection() { return nullptr; }
