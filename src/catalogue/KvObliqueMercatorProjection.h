#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvObliqueMercatorProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "OBLIQUE_MERCATOR_PROJECTION"
};

// Oblique Mercator (azimuth at the centre).
class KVCART_API CKvObliqueMercatorProjection
    : public CKvParameterSet<CKvObliqueMercatorProjection, 6>,
      public CKvObliqueMercatorProjectionIDs {
 public:
  CKvObliqueMercatorProjection() = default;
  CKvObliqueMercatorProjection(const std::string& name, const std::string& branch,
                               const std::string& ellipsoid, double scale, double centerLongitude,
                               double centerLatitude, double azimuth, double falseEasting,
                               double falseNorthing, bool canDelete = false, bool canEdit = false);
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
