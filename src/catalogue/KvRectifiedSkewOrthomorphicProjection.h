#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvRectifiedSkewOrthomorphicProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "RECTIFIED_SKEW_ORTHOMORPHIC_PROJECTION"
};

// Rectified skew orthomorphic: Hotine with a grid angle of its own.
class KVCART_API CKvRectifiedSkewOrthomorphicProjection
    : public CKvParameterSet<CKvRectifiedSkewOrthomorphicProjection, 7>,
      public CKvRectifiedSkewOrthomorphicProjectionIDs {
 public:
  CKvRectifiedSkewOrthomorphicProjection() = default;
  CKvRectifiedSkewOrthomorphicProjection(const std::string& name, const std::string& branch,
                                         const std::string& ellipsoid, double scale,
                                         double centerLongitude, double centerLatitude,
                                         double azimuth, double xYPlaneRotation,
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
  double GetXYPlaneRotation() const { return _Get(4); }
  void SetXYPlaneRotation(double v) { _Set(4, v); }
  double GetFalseEasting() const { return _Get(5); }
  void SetFalseEasting(double v) { _Set(5, v); }
  double GetFalseNorthing() const { return _Get(6); }
  void SetFalseNorthing(double v) { _Set(6, v); }
};
