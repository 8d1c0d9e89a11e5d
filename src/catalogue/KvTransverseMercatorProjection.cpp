#include "catalogue/KvTransverseMercatorProjection.h"

#include "wkt/KvPRJParser.h"

const std::string CKvTransverseMercatorProjectionIDs::ID_PROJECTION_SECTION = "UTM_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterSpec kParams[] = {
    {"Scale:", D::eParamNumber, &K::ID_SCALE, &K::ID_SCALE_REDUCTION, EKvAltKey::eScaleReduction,
     KV_PRJ_FIELD(ScaleFactor)},
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

const SKvParameterSetInfo& CKvTransverseMercatorProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Transverse mercator",
                                           D::eTransverseMercator,
                                           "Transverse_Mercator",
                                           kParams,
                                           5,
                                           false,
                                           false};
  return info;
}

CKvTransverseMercatorProjection::CKvTransverseMercatorProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double scale,
    double centre, double originLatitude, double falseEasting, double falseNorthing, bool canDelete,
    bool canEdit)
    : CKvTransverseMercatorProjection(
          name, branch, ellipsoid,
          std::array<double, 5>{scale, centre, originLatitude, falseEasting, falseNorthing}.data(),
          canDelete, canEdit) {}

CKvProjection* CKvTransverseMercatorProjection::CreateProjection() { return nullptr; }
