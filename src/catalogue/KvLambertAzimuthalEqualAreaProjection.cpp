#include "catalogue/KvLambertAzimuthalEqualAreaProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvLambertAzimuthalEqualAreaProjectionIDs::ID_PROJECTION_SECTION =
    "LAMBERT_AZIMUTHAL_EQUAL_AREA_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kCentre, KvRow::kOriginLatitude, KvRow::kFalseEasting,
                                   KvRow::kFalseNorthing};

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
