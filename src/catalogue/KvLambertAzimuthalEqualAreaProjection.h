#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvLambertAzimuthalEqualAreaProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "LAMBERT_AZIMUTHAL_EQUAL_AREA_PROJECTION"
};

// Lambert azimuthal equal area.
class KVCART_API CKvLambertAzimuthalEqualAreaProjection
    : public CKvParameterSet<CKvLambertAzimuthalEqualAreaProjection, 4>,
      public CKvLambertAzimuthalEqualAreaProjectionIDs {
 public:
  CKvLambertAzimuthalEqualAreaProjection() = default;
  CKvLambertAzimuthalEqualAreaProjection(const std::string& name, const std::string& branch,
                                         const std::string& ellipsoid, double centre,
                                         double originLatitude, double falseEasting,
                                         double falseNorthing, bool canDelete = false,
                                         bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetCentre() const { return _Get(0); }
  void SetCentre(double v) { _Set(0, v); }
  double GetOriginLatitude() const { return _Get(1); }
  void SetOriginLatitude(double v) { _Set(1, v); }
  double GetFalseEasting() const { return _Get(2); }
  void SetFalseEasting(double v) { _Set(2, v); }
  double GetFalseNorthing() const { return _Get(3); }
  void SetFalseNorthing(double v) { _Set(3, v); }
};
