#include "catalogue/KvStereographicNorthPoleProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvStereographicNorthPoleProjectionIDs::ID_PROJECTION_SECTION =
    "STEREOGRAPHIC_NORTH_POLE_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kParallel1, KvRow::kCentre, KvRow::kFalseEasting,
                                   KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvStereographicNorthPoleProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Stereographic north pole",
                                           D::eStereographicNorthPole,
                                           "Stereographic_North_Pole",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvStereographicNorthPoleProjection::CKvStereographicNorthPoleProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double parallel1, double centre, double falseEasting, double falseNorthing, bool canDelete,
    bool canEdit)
    : CKvStereographicNorthPoleProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{parallel1, centre, falseEasting, falseNorthing}.data(), canDelete,
          canEdit) {}
