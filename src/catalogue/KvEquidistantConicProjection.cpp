#include "catalogue/KvEquidistantConicProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvEquidistantConicProjectionIDs::ID_PROJECTION_SECTION =
    "EQUIDISTANT_CONIC_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kParallel1,       KvRow::kParallel2,
                                   KvRow::kCentralMeridian, KvRow::kOriginLatitude,
                                   KvRow::kFalseEasting,    KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvEquidistantConicProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Equidistant conic",
                                           D::eEquidistantConic,
                                           "Equidistant_Conic",
                                           kParams,
                                           6,
                                           false,
                                           false};
  return info;
}

CKvEquidistantConicProjection::CKvEquidistantConicProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double parallel1, double parallel2, double centralMeridian, double originLatitude,
    double falseEasting, double falseNorthing, bool canDelete, bool canEdit)
    : CKvEquidistantConicProjection(
          name, branch, ellipsoid,
          std::array<double, 6>{parallel1, parallel2, centralMeridian, originLatitude, falseEasting,
                                falseNorthing}
              .data(),
          canDelete, canEdit) {}
