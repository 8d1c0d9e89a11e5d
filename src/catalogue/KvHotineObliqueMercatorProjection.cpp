#include "catalogue/KvHotineObliqueMercatorProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvHotineObliqueMercatorProjectionIDs::ID_PROJECTION_SECTION =
    "HOTINE_OBLIQUE_MERCATOR_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterSpec kParams[] = {
    {"Scale:", D::eParamNumber, &K::ID_SCALE, &K::ID_SCALE_REDUCTION, EKvAltKey::eScaleReduction,
     KV_PRJ_FIELD(ScaleFactor)},
    {"Longitude of center:", D::eParamAngle, &K::ID_CENTER_LONGITUDE, &K::ID_CENTER_LONGITUDE_DMS,
     EKvAltKey::eDms, KV_PRJ_FIELD(LongitudeOfCenter)},
    {"Latitude of center:", D::eParamAngle, &K::ID_CENTER_LATITUDE, &K::ID_CENTER_LATITUDE_DMS,
     EKvAltKey::eDms, KV_PRJ_FIELD(LatitudeOfCenter)},
    {"Azimuth:", D::eParamAngle, &K::ID_AZIMUTH, nullptr, EKvAltKey::eNone, KV_PRJ_FIELD(Azimuth)},
    {"False easting:", D::eParamLength, &K::ID_FALSE_EASTING, &K::ID_FALSE_EASTING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseEasting)},
    {"False northing:", D::eParamLength, &K::ID_FALSE_NORTHING, &K::ID_FALSE_NORTHING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseNorthing)},
};

}  // namespace

const SKvParameterSetInfo& CKvHotineObliqueMercatorProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Hotine oblique mercator",
                                           D::eHotineObliqueMercator,
                                           "Hotine_Oblique_Mercator_Azimuth_Natural_Origin",
                                           kParams,
                                           6,
                                           false,
                                           false};
  return info;
}

CKvHotineObliqueMercatorProjection::CKvHotineObliqueMercatorProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double scale,
    double centerLongitude, double centerLatitude, double azimuth, double falseEasting,
    double falseNorthing, bool canDelete, bool canEdit)
    : CKvHotineObliqueMercatorProjection(
          name, branch, ellipsoid,
          std::array<double, 6>{scale, centerLongitude, centerLatitude, azimuth, falseEasting,
                                falseNorthing}
              .data(),
          canDelete, canEdit) {}

CKvProjection* CKvHotineObliqueMercatorProjection::CreateProjection() { return nullptr; }
