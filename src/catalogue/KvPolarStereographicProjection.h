#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvPolarStereographicProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "POLAR_STEREOGRAPHIC_PROJECTION"
};

// Polar stereographic by its scale on the pole or standard parallel.
class KVCART_API CKvPolarStereographicProjection
    : public CKvParameterSet<CKvPolarStereographicProjection, 5>,
      public CKvPolarStereographicProjectionIDs {
 public:
  CKvPolarStereographicProjection() = default;
  CKvPolarStereographicProjection(const std::string& name, const std::string& branch,
                                  const std::string& ellipsoid, double scale, double centre,
                                  double originLatitude, double falseEasting, double falseNorthing,
                                  bool canDelete = false, bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetScale() const { return _Get(0); }
  void SetScale(double v) { _Set(0, v); }
  double GetCentre() const { return _Get(1); }
  void SetCentre(double v) { _Set(1, v); }
  double GetOriginLatitude() const { return _Get(2); }
  void SetOriginLatitude(double v) { _Set(2, v); }
  double GetFalseEasting() const { return _Get(3); }
  void SetFalseEasting(double v) { _Set(3, v); }
  double GetFalseNorthing() const { return _Get(4); }
  void SetFalseNorthing(double v) { _Set(4, v); }
};
