#include "catalogue/KvStereographicProjection.h"

#include <array>

#include "catalogue/KvParameterRows.h"

const std::string CKvStereographicProjectionIDs::ID_PROJECTION_SECTION = "STEREOGRAPHIC_PROJECTION";

namespace {

typedef CKvMapProjData D;

const SKvParameterRow kParams[] = {KvRow::kScale, KvRow::kCentre, KvRow::kOriginLatitude,
                                   KvRow::kFalseEasting, KvRow::kFalseNorthing};

}  // namespace

const SKvParameterSetInfo& CKvStereographicProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Stereographic",
                                           D::eStereographic,
                                           "Stereographic",
                                           kParams,
                                           5,
                                           false,
                                           false};
  return info;
}

CKvStereographicProjection::CKvStereographicProjection(const std::string& name,
                                                       const std::string& branch,
                                                       const std::string& ellipsoid, double scale,
                                                       double centre, double originLatitude,
                                                       double falseEasting, double falseNorthing,
                                                       bool canDelete, bool canEdit)
    : CKvStereographicProjection(
          name, branch, ellipsoid,
          std::array<double, 5>{scale, centre, originLatitude, falseEasting, falseNorthing}.data(),
          canDelete, canEdit) {}
