#include "catalogue/KvEquidistantConicProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvEquidistantConicProjectionIDs::ID_PROJECTION_SECTION =
    "EQUIDISTANT_CONIC_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterSpec kParams[] = {
    {"First parallel:", D::eParamAngle, &K::ID_PARALLEL_1, &K::ID_PARALLEL_1_DMS, EKvAltKey::eDms,
     KV_PRJ_FIELD(StandardParallel1)},
    {"Second parallel:", D::eParamAngle, &K::ID_PARALLEL_2, &K::ID_PARALLEL_2_DMS, EKvAltKey::eDms,
     KV_PRJ_FIELD(StandardParallel2)},
    {"Central Meridian:", D::eParamAngle, &K::ID_CENTRAL_MERIDIAN, &K::ID_CENTRAL_MERIDIAN_DMS,
     EKvAltKey::eDms, KV_PRJ_FIELD(CentralMeridian)},
    {"Latitude origin:", D::eParamAngle, &K::ID_ORIGIN_LATITUDE, &K::ID_ORIGIN_LATITUDE_DMS,
     EKvAltKey::eDms, KV_PRJ_FIELD(LatitudeOfOrigin)},
    {"False easting:", D::eParamLength, &K::ID_FALSE_EASTING, &K::ID_FALSE_EASTING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseEasting)},
    {"False northing:", D::eParamLength, &K::ID_FALSE_NORTHING, &K::ID_FALSE_NORTHING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseNorthing)},
};

}  // namespace

const SKvParameterSetInfo& CKvEquidistantConicProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Equidistant conic",
                                           D::eEquidistantConic,
                                           "Equidistant_Conic",
                                           kParams,
                                           6,
                                           false,
                                           false};
  return info;
}

CKvEquidistantConicProjection::CKvEquidistantConicProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double parallel1, double parallel2, double centralMeridian, double originLatitude,
    double falseEasting, double falseNorthing, bool canDelete, bool canEdit)
    : CKvEquidistantConicProjection(
          name, branch, ellipsoid,
          std::array<double, 6>{parallel1, parallel2, centralMeridian, originLatitude, falseEasting,
                                falseNorthing}
              .data(),
          canDelete, canEdit) {}

CKvProjection* CKvEquidistantConicProjection::CreateProjection() { return nullptr; }
