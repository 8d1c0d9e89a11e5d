#include "catalogue/KvNewZealandMapGridProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvNewZealandMapGridProjectionIDs::ID_PROJECTION_SECTION =
    "NEW_ZEALAND_MAP_GRID_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kOriginLongitude, KvRow::kOriginLatitude,
                                   KvRow::kFalseEasting, KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvNewZealandMapGridProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "New Zealand map grid",
                                           D::eNewZealandMapGrid,
                                           "New_Zealand_Map_Grid",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvNewZealandMapGridProjection::CKvNewZealandMapGridProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double originLongitude, double originLatitude, double falseEasting, double falseNorthing,
    bool canDelete, bool canEdit)
    : CKvNewZealandMapGridProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{originLongitude, originLatitude, falseEasting, falseNorthing}
              .data(),
          canDelete, canEdit) {}
