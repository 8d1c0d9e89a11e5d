#include "catalogue/KvStereographicSouthPoleProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvStereographicSouthPoleProjectionIDs::ID_PROJECTION_SECTION =
    "STEREOGRAPHIC_SOUTH_POLE_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kParallel1, KvRow::kCentre, KvRow::kFalseEasting,
                                   KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvStereographicSouthPoleProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Stereographic south pole",
                                           D::eStereographicSouthPole,
                                           "Stereographic_South_Pole",
                                           kParams,
                                           4,
                                           false,
                                           false};
  return info;
}

CKvStereographicSouthPoleProjection::CKvStereographicSouthPoleProjection(
    const std::string& name, const std::string& branch, const std::string& ellipsoid,
    double parallel1, double centre, double falseEasting, double falseNorthing, bool canDelete,
    bool canEdit)
    : CKvStereographicSouthPoleProjection(
          name, branch, ellipsoid,
          std::array<double, 4>{parallel1, centre, falseEasting, falseNorthing}.data(), canDelete,
          canEdit) {}
