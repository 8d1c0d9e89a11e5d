#include "catalogue/KvRectifiedSkewOrthomorphicProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvRectifiedSkewOrthomorphicProjectionIDs::ID_PROJECTION_SECTION =
    "RECTIFIED_SKEW_ORTHOMORPHIC_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {
    KvRow::kScale,           KvRow::kCenterLongitude, KvRow::kCenterLatitude, KvRow::kAzimuth,
    KvRow::kXYPlaneRotation, KvRow::kFalseEasting,    KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvRectifiedSkewOrthomorphicProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Rectified skew orthomorphic",
                                           D::eRectifiedSkewOrthomorphic,
                                           "Rectified_Skew_Orthomorphic_Natural_Origin",
                                           kParams,
                                           7,
                                           false,
                                           false};
  return info;
}

CKvRectifiedSkewOrthomorphicProjection::CKvRectifiedSkewOrthomorphicProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double scale,
    double centerLongitude, double centerLatitude, double azimuth, double xYPlaneRotation,
    double falseEasting, double falseNorthing, bool canDelete, bool canEdit)
    : CKvRectifiedSkewOrthomorphicProjection(
          name, branch, ellipsoid,
          std::array<double, 7>{scale, centerLongitude, centerLatitude, azimuth, xYPlaneRotation,
                                falseEasting, falseNorthing}
              .data(),
          canDelete, canEdit) {}
