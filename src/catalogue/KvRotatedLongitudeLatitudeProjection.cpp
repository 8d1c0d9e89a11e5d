#include "catalogue/KvRotatedLongitudeLatitudeProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvRotatedLongitudeLatitudeProjectionIDs::ID_PROJECTION_SECTION =
    "ROTATED_LONGITUDE_LATITUDE_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {
    {"Longitude of south pole:", D::eParamAngle, &K::ID_LONGITUDE_OF_SOUTH_POLE, nullptr,
     EKvAltKey::eNone, KV_PRJ_FIELD(LongitudeOfSouthPole)},
    {"Latitude of south pole:", D::eParamAngle, &K::ID_LATITUDE_OF_SOUTH_POLE, nullptr,
     EKvAltKey::eNone, KV_PRJ_FIELD(LatitudeOfSouthPole)},
    {"Angle of rotation:", D::eParamAngle, &K::ID_ANGLE_OF_ROTATION, nullptr, EKvAltKey::eNone,
     KV_PRJ_FIELD(AngleOfRotation)},
};

}  // namespace

const SKvParameterSetInfo& CKvRotatedLongitudeLatitudeProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Rotated longitude/latitude",
                                           D::eRotatedLongitudeLatitude,
                                           "Rotated_Longitude_Latitude",
                                           kParams,
                                           3,
                                           true,
                                           true};
  return info;
}

CKvRotatedLongitudeLatitudeProjection::CKvRotatedLongitudeLatitudeProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double longitudeOfSouthPole, double latitudeOfSouthPole, double angleOfRotation, bool canDelete,
    bool canEdit)
    : CKvRotatedLongitudeLatitudeProjection(
          name, branch, ellipsoid,
          std::array<double, 3>{longitudeOfSouthPole, latitudeOfSouthPole, angleOfRotation}.data(),
          canDelete, canEdit) {}
