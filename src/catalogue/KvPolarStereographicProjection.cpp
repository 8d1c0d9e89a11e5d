#include "catalogue/KvPolarStereographicProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvPolarStereographicProjectionIDs::ID_PROJECTION_SECTION =
    "POLAR_STEREOGRAPHIC_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kScale, KvRow::kCentre, KvRow::kOriginLatitude,
                                   KvRow::kFalseEasting, KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvPolarStereographicProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Polar stereographic",
                                           D::ePolarStereographic,
                                           "Polar_Stereographic",
                                           kParams,
                                           5,
                                           false,
                                           false};
  return info;
}

CKvPolarStereographicProjection::CKvPolarStereographicProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid, double scale,
    double centre, double originLatitude, double falseEasting, double falseNorthing, bool canDelete,
    bool canEdit)
    : CKvPolarStereographicProjection(
          name, branch, ellipsoid,
          std::array<double, 5>{scale, centre, originLatitude, falseEasting, falseNorthing}.data(),
          canDelete, canEdit) {}
