#include "catalogue/KvCassiniSoldnerProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvCassiniSoldnerProjectionIDs::ID_PROJECTION_SECTION =
    "CASSINI_SOLDNER_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterSpec kParams[] = {
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

const SKvParameterSetInfo& CKvCassiniSoldnerProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Cassini-Soldner",
                                           D::eCassiniSoldner,
                                           "Cassini_Soldner",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvCassiniSoldnerProjection::CKvCassiniSoldnerProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double centralMeridian, double originLatitude, double falseEasting, double falseNorthing,
    bool canDelete, bool canEdit)
    : CKvCassiniSoldnerProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{centralMeridian, originLatitude, falseEasting, falseNorthing}
              .data(),
          canDelete, canEdit) {}

CKvProjection* CKvCassiniSoldnerProjection::CreateProjection() { return nullptr; }
