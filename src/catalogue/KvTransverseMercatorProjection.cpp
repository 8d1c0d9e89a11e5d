#include "catalogue/KvTransverseMercatorProjection.h"

#include "catalogue/KvParameterRows.h"

const std::string CKvTransverseMercatorProjectionIDs::ID_PROJECTION_SECTION = "UTM_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kScale, KvRow::kCentre, KvRow::kOriginLatitude,
                                   KvRow::kFalseEasting, KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvTransverseMercatorProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Transverse mercator",
                                           D::eTransverseMercator,
                                           "Transverse_Mercator",
                                           kParams,
                                           5,
                                           false,
                                           false};
  return info;
}

CKvTransverseMercatorProjection::CKvTransverseMercatorProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double scale,
    double centre, double originLatitude, double falseEasting, double falseNorthing, bool canDelete,
    bool canEdit)
    : CKvTransverseMercatorProjection(
          name, branch, ellipsoid,
          std::array<double, 5>{scale, centre, originLatitude, falseEasting, falseNorthing}.data(),
          canDelete, canEdit) {}
