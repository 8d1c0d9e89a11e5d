#include "catalogue/KvStereographicNorthPoleProjection.h"

#include <array>

#include "wkt/KvPRJParser.h"

const std::string CKvStereographicNorthPoleProjectionIDs::ID_PROJECTION_SECTION =
    "STEREOGRAPHIC_NORTH_POLE_PROJECTION";

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

const SKvParameterSetInfo& CKvStereographicNorthPoleProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Stereographic north pole",
                                           D::eStereographicNorthPole,
                                           "Stereographic_North_Pole",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvStereographicNorthPoleProjection::CKvStereographicNorthPoleProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double parallel1, double centre, double falseEasting, double falseNorthing, bool canDelete,
    bool canEdit)
    : CKvStereographicNorthPoleProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{parallel1, centre, falseEasting, falseNorthing}.data(), canDelete,
          canEdit) {}

CKvProjection* CKvStereographicNorthPoleProjection::CreateProjection() { return nullptr; }
