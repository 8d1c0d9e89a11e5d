#pragma once

#include <string>

#include "catalogue/KvMercator2SPProjection.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Normal Mercator with a standard parallel phi1 of true scale (EPSG method
// 9805); the scale on the equator is derived from it as
// k0 = cos phi1 / sqrt(1 - e^2 sin^2 phi1).
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Mercator (variant B)"; once k0 is known the arithmetic is that of
// CKvMercator1SP, with the same accuracy, domain and numerical convergence.
// The parallels +-phi1 give the same projection, and phi1 = 0 is the 1SP
// projection with k0 = 1.
// Without an ellipsoid k0 is 0 as well: Geo2Proj gives (0, 0) away from
// the poles and Proj2Geo returns NaN.  A parallel at a pole gives k0 = 0
// likewise, a map shrunk to a point; nothing guards it.
class KVCART_API CKvMercator2SP : public CKvEngine<CKvMercator2SP, CKvMercator2SPProjection> {
 public:
  explicit CKvMercator2SP(CKvMercator2SPProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvMercator2SP(const std::string& name, double standardParallel, double originLongitude,
                 double falseEasting, double falseNorthing, const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  double GetConvergence(double lon, double lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  // Writes the derived scale factor on the equator, k0.
  void GetDerivedParameters(double* value) override;

 private:
  CKvMercator2SP(const std::string& name, double standardParallel, double originLongitude,
                 double falseEasting, double falseNorthing, const CKvEllipsoid* ellipsoid);

  double m_dPhi1 = 0.0;     // radians
  double m_dLambda0 = 0.0;  // radians
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
  double m_adC[4] = {};  // sin 2chi .. sin 8chi coefficients of the reverse
  double m_dK0 = 0.0;
};
