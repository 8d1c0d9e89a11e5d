#include "catalogue/KvLambert1SPProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvLambert1SPProjectionIDs::ID_PROJECTION_SECTION =
    "LAMBERT_CONIC_1SP_PROJECTION";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {
    KvRow::kScale,
    {"Central meridian:", D::eParamAngle, &K::ID_ORIGIN_LONGITUDE, &K::ID_ORIGIN_LONGITUDE_DMS,
     EKvAltKey::eDms, KV_PRJ_FIELD(CentralMeridian)},
    KvRow::kOriginLatitude,
    KvRow::kFalseEasting,
    KvRow::kFalseNorthing,
};

}  // namespace

const SKvParameterSetInfo& CKvLambert1SPProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Lambert conformal conic with 1 standard parallel",
                                           D::eLambert1SP,
                                           "Lambert_Conformal_Conic_1SP",
                                           kParams,
                                           5,
                                           false,
                                           false};
  return info;
}

CKvLambert1SPProjection::CKvLambert1SPProjection(const std::string& name, const std::string& branch,
                                                 const std::string& ellipsoid, double scale,
                                                 double originLongitude, double originLatitude,
                                                 double falseEasting, double falseNorthing,
                                                 bool canDelete, bool canEdit)
    : CKvLambert1SPProjection(
          name, branch, ellipsoid,
          std::array<double, 5>{scale, originLongitude, originLatitude, falseEasting, falseNorthing}
              .data(),
          canDelete, canEdit) {}
