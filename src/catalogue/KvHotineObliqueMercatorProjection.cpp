#include "catalogue/KvHotineObliqueMercatorProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvHotineObliqueMercatorProjectionIDs::ID_PROJECTION_SECTION =
    "HOTINE_OBLIQUE_MERCATOR_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kScale,   KvRow::kCenterLongitude, KvRow::kCenterLatitude,
                                   KvRow::kAzimuth, KvRow::kFalseEasting,    KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvHotineObliqueMercatorProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Hotine oblique mercator",
                                           D::eHotineObliqueMercator,
                                           "Hotine_Oblique_Mercator_Azimuth_Natural_Origin",
                                           kParams,
                                           6,
                                           false,
                                           false};
  return info;
}

CKvHotineObliqueMercatorProjection::CKvHotineObliqueMercatorProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double scale,
    double centerLongitude, double centerLatitude, double azimuth, double falseEasting,
    double falseNorthing, bool canDelete, bool canEdit)
    : CKvHotineObliqueMercatorProjection(
          name, branch, ellipsoid,
          std::array<double, 6>{scale, centerLongitude, centerLatitude, azimuth, falseEasting,
                                falseNorthing}
              .data(),
          canDelete, canEdit) {}
