#include "catalogue/KvObliqueMercatorProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvObliqueMercatorProjectionIDs::ID_PROJECTION_SECTION =
    "OBLIQUE_MERCATOR_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kScale,   KvRow::kCenterLongitude, KvRow::kCenterLatitude,
                                   KvRow::kAzimuth, KvRow::kFalseEasting,    KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvObliqueMercatorProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Oblique mercator",
                                           D::eObliqueMercator,
                                           "Hotine_Oblique_Mercator_Azimuth_Center",
                                           kParams,
                                           6,
                                           false,
                                           false};
  return info;
}

CKvObliqueMercatorProjection::CKvObliqueMercatorProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double scale,
    double centerLongitude, double centerLatitude, double azimuth, double falseEasting,
    double falseNorthing, bool canDelete, bool canEdit)
    : CKvObliqueMercatorProjection(name, branch, ellipsoid,
                                   std::array<double, 6>{scale, centerLongitude, centerLatitude,
                                                         azimuth, falseEasting, falseNorthing}
                                       .data(),
                                   canDelete, canEdit) {}
