#include "catalogue/KvLambert2SPProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvLambert2SPProjectionIDs::ID_PROJECTION_SECTION =
    "LAMBERT_CONIC_2SP_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kParallel1,       KvRow::kParallel2,
                                   KvRow::kOriginLongitude, KvRow::kOriginLatitude,
                                   KvRow::kFalseEasting,    KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvLambert2SPProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Lambert conformal conic with 2 standard parallels",
                                           D::eLambert2SP,
                                           "Lambert_Conformal_Conic_2SP",
                                           kParams,
                                           6,
                                           false,
                                           false};
  return info;
}

CKvLambert2SPProjection::CKvLambert2SPProjection(const std::string& name, const std::string& branch,
                                                 const std::string& ellipsoid, double parallel1,
                                                 double parallel2, double originLongitude,
                                                 double originLatitude, double falseEasting,
                                                 double falseNorthing, bool canDelete, bool canEdit)
    : CKvLambert2SPProjection(name, branch, ellipsoid,
                              std::array<double, 6>{parallel1, parallel2, originLongitude,
                                                    originLatitude, falseEasting, falseNorthing}
                                  .data(),
                              canDelete, canEdit) {}
