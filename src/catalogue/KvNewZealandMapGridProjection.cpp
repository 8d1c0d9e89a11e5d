#include "catalogue/KvNewZealandMapGridProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvNewZealandMapGridProjectionIDs::ID_PROJECTION_SECTION =
    "NEW_ZEALAND_MAP_GRID_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterSpec kParams[] = {
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

const SKvParameterSetInfo& CKvNewZealandMapGridProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "New Zealand map grid",
                                           D::eNewZealandMapGrid,
                                           "New_Zealand_Map_Grid",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvNewZealandMapGridProjection::CKvNewZealandMapGridProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double originLongitude, double originLatitude, double falseEasting, double falseNorthing,
    bool canDelete, bool canEdit)
    : CKvNewZealandMapGridProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{originLongitude, originLatitude, falseEasting, falseNorthing}
              .data(),
          canDelete, canEdit) {}

CKvProjection* CKvNewZealandMapGridProjection::CreateProjection() { return nullptr; }
