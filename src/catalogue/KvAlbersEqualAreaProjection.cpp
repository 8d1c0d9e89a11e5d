#include "catalogue/KvAlbersEqualAreaProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvAlbersEqualAreaProjectionIDs::ID_PROJECTION_SECTION =
    "ALBERS_EQUAL_AREA_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kParallel1,       KvRow::kParallel2,
                                   KvRow::kCentralMeridian, KvRow::kOriginLatitude,
                                   KvRow::kFalseEasting,    KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvAlbersEqualAreaProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Albers equal area",
                                           D::eAlbersEqualArea,
                                           "Albers_Conic_Equal_Area",
                                           kParams,
                                           6,
                                           false,
                                           false};
  return info;
}

CKvAlbersEqualAreaProjection::CKvAlbersEqualAreaProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double parallel1, double parallel2, double centralMeridian, double originLatitude,
    double falseEasting, double falseNorthing, bool canDelete, bool canEdit)
    : CKvAlbersEqualAreaProjection(
          name, branch, ellipsoid,
          std::array<double, 6>{parallel1, parallel2, centralMeridian, originLatitude, falseEasting,
                                falseNorthing}
              .data(),
          canDelete, canEdit) {}
