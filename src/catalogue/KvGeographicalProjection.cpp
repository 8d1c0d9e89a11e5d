#include "catalogue/KvGeographicalProjection.h"


const std::string CKvGeographicalProjectionIDs::ID_PROJECTION_SECTION = "GEOGRAPHICAL_PROJECTION";

const SKvParameterSetInfo& CKvGeographicalProjection::Info() {
  static const SKvParameterSetInfo info = {&ID_PROJECTION_SECTION,
                                           nullptr,
                                           "Geographical",
                                           CKvMapProjData::eGeographical,
                                           "Geographical",
                                           nullptr,
                                           0,
                                           false,
                                           true};
  return info;
}

CKvGeographicalProjection::CKvGeographicalProjection(const std::string& name,
                                                     const std::string& branch,
                                                     const std::string& ellipsoid,
                                                     double primeMeridian, bool canDelete,
                                                     bool canEdit)
    : CKvParameterSet(name, branch, ellipsoid, nullptr, canDelete, canEdit),
      m_dPrimeMeridian(primeMeridian) {}
