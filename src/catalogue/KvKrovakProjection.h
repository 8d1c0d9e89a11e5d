#pragma once

#include <string>

#include "catalogue/KvParameterSet.h"
#include "platform/KvCartExport.h"

class KVCART_API CKvKrovakProjectionIDs {
 public:
  static const std::string ID_PROJECTION_SECTION;  // "KROVAK_OBLIQUE_CONFORMAL_CONIC"
};

// Krovak oblique conformal conic.
class KVCART_API CKvKrovakProjection : public CKvParameterSet<CKvKrovakProjection, 10>,
                                       public CKvKrovakProjectionIDs {
 public:
  CKvKrovakProjection() = default;
  CKvKrovakProjection(const std::string& name, const std::string& branch,
                      const std::string& ellipsoid, double scaleAtPseudoParallel,
                      double pseudoParallel, double centerLongitude, double centerLatitude,
                      double azimuth, double xYPlaneRotation, double xScale, double yScale,
                      double falseEasting, double falseNorthing, bool canDelete = false,
                      bool canEdit = false);
  using CKvParameterSet::CKvParameterSet;

  static const SKvParameterSetInfo& Info();

  double GetScaleAtPseudoParallel() const { return _Get(0); }
  void SetScaleAtPseudoParallel(double v) { _Set(0, v); }
  double GetPseudoParallel() const { return _Get(1); }
  void SetPseudoParallel(double v) { _Set(1, v); }
  double GetCenterLongitude() const { return _Get(2); }
  void SetCenterLongitude(double v) { _Set(2, v); }
  double GetCenterLatitude() const { return _Get(3); }
  void SetCenterLatitude(double v) { _Set(3, v); }
  double GetAzimuth() const { return _Get(4); }
  void SetAzimuth(double v) { _Set(4, v); }
  double GetXYPlaneRotation() const { return _Get(5); }
  void SetXYPlaneRotation(double v) { _Set(5, v); }
  double GetXScale() const { return _Get(6); }
  void SetXScale(double v) { _Set(6, v); }
  double GetYScale() const { return _Get(7); }
  void SetYScale(double v) { _Set(7, v); }
  double GetFalseEasting() const { return _Get(8); }
  void SetFalseEasting(double v) { _Set(8, v); }
  double GetFalseNorthing() const { return _Get(9); }
  void SetFalseNorthing(double v) { _Set(9, v); }
};
