#include "catalogue/KvCassiniSoldnerProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvCassiniSoldnerProjectionIDs::ID_PROJECTION_SECTION =
    "CASSINI_SOLDNER_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kCentralMeridian, KvRow::kOriginLatitude,
                                   KvRow::kFalseEasting, KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvCassiniSoldnerProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Cassini-Soldner",
                                           D::eCassiniSoldner,
                                           "Cassini_Soldner",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvCassiniSoldnerProjection::CKvCassiniSoldnerProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double centralMeridian, double originLatitude, double falseEasting, double falseNorthing,
    bool canDelete, bool canEdit)
    : CKvCassiniSoldnerProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{centralMeridian, originLatitude, falseEasting, falseNorthing}
              .data(),
          canDelete, canEdit) {}
