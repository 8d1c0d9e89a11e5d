#include "catalogue/KvMercator1SPProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvMercator1SPProjectionIDs::ID_PROJECTION_SECTION = "MERCATOR_1SP_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kScale, KvRow::kCentre, KvRow::kFalseEasting,
                                   KvRow::kFalseNorthing};

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
