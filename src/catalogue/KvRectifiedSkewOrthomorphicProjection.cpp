#include "catalogue/KvRectifiedSkewOrthomorphicProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvRectifiedSkewOrthomorphicProjectionIDs::ID_PROJECTION_SECTION =
    "RECTIFIED_SKEW_ORTHOMORPHIC_PROJECTION";

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
    {"XY plane rotation:", D::eParamAngle, &K::ID_XY_PLANE_ROTATION, nullptr, EKvAltKey::eNone,
     KV_PRJ_FIELD(XYPlaneRotation)},
    {"False easting:", D::eParamLength, &K::ID_FALSE_EASTING, &K::ID_FALSE_EASTING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseEasting)},
    {"False northing:", D::eParamLength, &K::ID_FALSE_NORTHING, &K::ID_FALSE_NORTHING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseNorthing)},
};

}  // namespace

const SKvParameterSetInfo& CKvRectifiedSkewOrthomorphicProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Rectified skew orthomorphic",
                                           D::eRectifiedSkewOrthomorphic,
                                           "Rectified_Skew_Orthomorphic_Natural_Origin",
                                           kParams,
                                           7,
                                           false,
                                           false};
  return info;
}

CKvRectifiedSkewOrthomorphicProjection::CKvRectifiedSkewOrthomorphicProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double scale,
    double centerLongitude, double centerLatitude, double azimuth, double xYPlaneRotation,
    double falseEasting, double falseNorthing, bool canDelete, bool canEdit)
    : CKvRectifiedSkewOrthomorphicProjection(
          name, branch, ellipsoid,
          std::array<double, 7>{scale, centerLongitude, centerLatitude, azimuth, xYPlaneRotation,
                                falseEasting, falseNorthing}
              .data(),
          canDelete, canEdit) {}

CKvProjection* CKvRectifiedSkewOrthomorphicProjection::CreateProjection() { return nullptr; }
