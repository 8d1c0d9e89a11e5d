#include "catalogue/KvLambertAzimuthalEqualAreaProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvLambertAzimuthalEqualAreaProjectionIDs::ID_PROJECTION_SECTION =
    "LAMBERT_AZIMUTHAL_EQUAL_AREA_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterSpec kParams[] = {
    {"Central meridian:", D::eParamAngle, &K::ID_CENTRE, &K::ID_CENTRE_DMS, EKvAltKey::eDms,
     KV_PRJ_FIELD(CentralMeridian)},
    {"Latitude origin:", D::eParamAngle, &K::ID_ORIGIN_LATITUDE, &K::ID_ORIGIN_LATITUDE_DMS,
     EKvAltKey::eDms, KV_PRJ_FIELD(LatitudeOfOrigin)},
    {"False easting:", D::eParamLength, &K::ID_FALSE_EASTING, &K::ID_FALSE_EASTING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseEasting)},
    {"False northing:", D::eParamLength, &K::ID_FALSE_NORTHING, &K::ID_FALSE_NORTHING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseNorthing)},
};

}  // namespace

const SKvParameterSetInfo& CKvLambertAzimuthalEqualAreaProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Lambert azimuthal equal area",
                                           D::eLambertAzimuthalEqualArea,
                                           "Lambert_Azimuthal_Equal_Area",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvLambertAzimuthalEqualAreaProjection::CKvLambertAzimuthalEqualAreaProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double centre,
    double originLatitude, double falseEasting, double falseNorthing, bool canDelete, bool canEdit)
    : CKvLambertAzimuthalEqualAreaProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{centre, originLatitude, falseEasting, falseNorthing}.data(),
          canDelete, canEdit) {}

CKvProjection* CKvLambertAzimuthalEqualAreaProjection::CreateProjection() { return nullptr; }
