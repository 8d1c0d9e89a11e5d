#include "catalogue/KvKrovakProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvKrovakProjectionIDs::ID_PROJECTION_SECTION = "KROVAK_OBLIQUE_CONFORMAL_CONIC";

namespace {

typedef CKvMapProjDataIDs K;
typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {
    {"Scale at pseudo parallel:", D::eParamNumber, &K::ID_SCALE_AT_PSEUDO_PARALLEL, nullptr,
     EKvAltKey::eNone, KV_PRJ_FIELD(ScaleFactor)},
    {"Pseudo parallel:", D::eParamAngle, &K::ID_PSEUDO_PARALLEL, &K::ID_PSEUDO_PARALLEL_DMS,
     EKvAltKey::eDms, KV_PRJ_FIELD(PseudoParallel)},
    KvRow::kCenterLongitude,
    KvRow::kCenterLatitude,
    KvRow::kAzimuth,
    KvRow::kXYPlaneRotation,
    {"X scale:", D::eParamNumber, &K::ID_X_SCALE, nullptr, EKvAltKey::eNone, KV_PRJ_FIELD(XScale)},
    {"Y scale:", D::eParamNumber, &K::ID_Y_SCALE, nullptr, EKvAltKey::eNone, KV_PRJ_FIELD(YScale)},
    KvRow::kFalseEasting,
    KvRow::kFalseNorthing,
};

}  // namespace

const SKvParameterSetInfo& CKvKrovakProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Krovak oblique conformal conic",
                                           D::eKrovak,
                                           "Krovak",
                                           kParams,
                                           10,
                                           false,
                                           false};
  return info;
}

CKvKrovakProjection::CKvKrovakProjection(const std::string& name, const std::string& branch,
                                         const std::string& ellipsoid, double scaleAtPseudoParallel,
                                         double pseudoParallel, double centerLongitude,
                                         double centerLatitude, double azimuth,
                                         double xYPlaneRotation, double xScale, double yScale,
                                         double falseEasting, double falseNorthing, bool canDelete,
                                         bool canEdit)
    : CKvKrovakProjection(
          name, branch, ellipsoid,
          std::array<double, 10>{scaleAtPseudoParallel, pseudoParallel, centerLongitude,
                                 centerLatitude, azimuth, xYPlaneRotation, xScale, yScale,
                                 falseEasting, falseNorthing}
              .data(),
          canDelete, canEdit) {}
