#include "catalogue/KvMercator1SPProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvMercator1SPProjectionIDs::ID_PROJECTION_SECTION = "MERCATOR_1SP_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterSpec kParams[] = {
    {"Scale:", D::eParamNumber, &K::ID_SCALE, &K::ID_SCALE_REDUCTION, EKvAltKey::eScaleReduction,
     KV_PRJ_FIELD(ScaleFactor)},
    {"Central meridian:", D::eParamAngle, &K::ID_CENTRE, &K::ID_CENTRE_DMS, EKvAltKey::eDms,
     KV_PRJ_FIELD(CentralMeridian)},
    {"False easting:", D::eParamLength, &K::ID_FALSE_EASTING, &K::ID_FALSE_EASTING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseEasting)},
    {"False northing:", D::eParamLength, &K::ID_FALSE_NORTHING, &K::ID_FALSE_NORTHING_FOOT_US,
     EKvAltKey::eFootUs, KV_PRJ_FIELD(FalseNorthing)},
};

}  // namespace

const SKvParameterSetInfo& CKvMercator1SPProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Mercator with 1 standard parallel",
                                           D::eMercator1SP,
                                           "Mercator_1SP",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvMercator1SPProjection::CKvMercator1SPProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double scale,
    double centre, double falseEasting, double falseNorthing, bool canDelete, bool canEdit)
    : CKvMercator1SPProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{scale, centre, falseEasting, falseNorthing}.data(), canDelete,
          canEdit) {}

CKvProjection* CKvMercator1SPProjection::CreateProjection() { return nullptr; }
