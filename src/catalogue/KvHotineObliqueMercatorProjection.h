#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvHotineObliqueMercatorProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "HOTINE_OBLIQUE_MERCATOR_PROJECTION"
};

// Hotine oblique Mercator (azimuth at the natural origin).
class KVCART_API CKvHotineObliqueMercatorProjection
    : public CKvParameterSet<CKvHotineObliqueMercatorProjection, 6>,
      public CKvHotineObliqueMercatorProjectionIDs {
 public:
  CKvHotineObliqueMercatorProjection() = default;
  CKvHotineObliqueMercatorProjection(const std::string& name, const std::string& branch,
                                     const std::string& ellipsoid, double scale,
                                     double centerLongitude, double centerLatitude, double azimuth,
                                     double falseEasting, double falseNorthing,
                                     bool canDelete = false, bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetScale() const { return _Get(0); }
  void SetScale(double v) { _Set(0, v); }
  double GetCenterLongitude() const { return _Get(1); }
  void SetCenterLongitude(double v) { _Set(1, v); }
  double GetCenterLatitude() const { return _Get(2); }
  void SetCenterLatitude(double v) { _Set(2, v); }
  double GetAzimuth() const { return _Get(3); }
  void SetAzimuth(double v) { _Set(3, v); }
  double GetFalseEasting() const { return _Get(4); }
  void SetFalseEasting(double v) { _Set(4, v); }
  double GetFalseNorthing() const { return _Get(5); }
  void SetFalseNorthing(double v) { _Set(5, v); }
};
