#include "catalogue/KvMercator2SPProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvMercator2SPProjectionIDs::ID_PROJECTION_SECTION = "MERCATOR_2SP_PROJECTION";
const std::string CKvMercator2SPProjectionIDs::ID_PROJECTION_SECTION_OLD = "MERCATOR_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kParallel1, KvRow::kCentre, KvRow::kFalseEasting,
                                   KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvMercator2SPProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           &ID_PROJECTION_SECTION_OLD,
                                           "Mercator with 2 standard parallels",
                                           D::eMercator2SP,
                                           "Mercator_2SP",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvMercator2SPProjection::CKvMercator2SPProjection(const std::string& name,
                                                   const std::string& branch,
                                                   const std::string& ellipsoid, double parallel1,
                                                   double centre, double falseEasting,
                                                   double falseNorthing, bool canDelete,
                                                   bool canEdit)
    : CKvMercator2SPProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{parallel1, centre, falseEasting, falseNorthing}.data(), canDelete,
          canEdit) {}
