#include "catalogue/KvLambert2SPProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvLambert2SPProjectionIDs::ID_PROJECTION_SECTION =
    "LAMBERT_CONIC_2SP_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterSpec kParams[] = {
    {"First parallel:", D::eParamAngle, &K::ID_PARALLEL_1, &K::ID_PARALLEL_1_DMS, EKvAltKey::eDms,
     KV_PRJ_FIELD(StandardParallel1)},
    {"Second parallel:", D::eParamAngle, &K::ID_PARALLEL_2, &K::ID_PARALLEL_2_DMS, EKvAltKey::eDms,
     KV_PRJ_FIELD(StandardParallel2)},
    {"Longitude origin:", D::eParamAngle, &K::ID_ORIGIN_LONGITUDE, &K::ID_ORIGIN_LONGITUDE_DMS,
     EKvAltKey::eDms, KV_PRJ_FIELD(CentralMeridian)},
    {"Latitude origin:", D::eParamAngle, &K::ID_ORIGIN_LATITUDE, &K::ID_ORIGIN_LATITUDE_DMS,
     EKvAltKey::eDms, KV_PRJ_FIELD(LatitudeOfOrigin)},
    {"False easting:", D::eParamLength, &K::ID_FALSE_EASTING, &K::ID_FALSE_EASTING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseEasting)},
    {"False northing:", D::eParamLength, &K::ID_FALSE_NORTHING, &K::ID_FALSE_NORTHING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseNorthing)},
};

}  // namespace

const SKvParameterSetInfo& CKvLambert2SPProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Lambert conformal conic with 2 standard parallels",
                                           D::eLambert2SP,
                                           "Lambert_Conformal_Conic_2SP",
                                           kParams,
                                           6,
                                           false,
                                           false};
  return info;
}

CKvLambert2SPProjection::CKvLambert2SPProjection(const std::string& name, const std::string& branch,
                                                 const std::string& ellipsoid, double parallel1,
                                                 double parallel2, double originLongitude,
                                                 double originLatitude, double falseEasting,
                                                 double falseNorthing, bool canDelete, bool canEdit)
    : CKvLambert2SPProjection(name, branch, ellipsoid,
                              std::array<double, 6>{parallel1, parallel2, originLongitude,
                                                    originLatitude, falseEasting, falseNorthing}
                                  .data(),
                              canDelete, canEdit) {}

CKvProjection* CKvLambert2SPProjection::CreateProjection() { return nullptr; }
