#pragma once

#include <string>

#include "catalogue/KvMercator1SPProjection.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Normal Mercator with the scale factor k0 given on the equator (EPSG method
// 9804).
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Mercator (variant A)".  The reverse takes the conformal latitude chi from
// the northing in closed form and returns to the geodetic latitude by the
// Guidance Note's four-term series in e^2 (terms to e^8).
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// exact projection evaluated with mpmath at 40 digits (WGS 84, 85 S to
// 85 N): forward within 2 nanometres; reverse within 1.1e-10 degrees
// (0.012 mm), the truncation of the series, largest at high latitudes.
// Domain: |lat| < 90.  The poles lie at infinity and are not clamped:
// latitude 90 gives an infinite northing, -90 a negatively infinite one.
// Longitudes are not reduced to +-180 degrees around the central meridian.
// Without an ellipsoid Geo2Proj gives (0, 0) away from the poles, and
// Proj2Geo, which would divide by k0 a = 0, returns NaN; so does Proj2Geo
// with a zero scale.
// Kept on purpose: the convergence is measured numerically (the bearing of
// the image of one arc minute of meridian), so it is 0 up to rounding.
class KVCART_API CKvMercator1SP : public CKvEngine<CKvMercator1SP, CKvMercator1SPProjection> {
 public:
  explicit CKvMercator1SP(CKvMercator1SPProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvMercator1SP(const std::string& name, double scale, double originLongitude, double falseEasting,
                 double falseNorthing, const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  double GetConvergence(double lon, double lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  // Writes 0: the scale is a parameter, nothing is derived.
  void GetDerivedParameters(double* value) override;

 private:
  // The arithmetic, shared with CKvMercator2SP, which differs only in how it
  // obtains k0.
  friend class CKvMercator2SP;
  static void _Forward(double a, double e, double k0, double lambda0, double FE, double FN,
                       double lon, double lat, double* x, double* y);
  static void _Inverse(double a, double k0, double lambda0, double FE, double FN, const double* c,
                       double x, double y, double* lon, double* lat);
  // The world view for an origin at (0, 0), otherwise the origin +-3 degrees.
  static void _DefaultArea(CKvProjection& engine, double* x0, double* y0, double* x1, double* y1);

  CKvMercator1SP(const std::string& name, double scale, double originLongitude, double falseEasting,
                 double falseNorthing, const CKvEllipsoid* ellipsoid);

  double m_dLambda0 = 0.0;  // radians
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
  double m_adC[4] = {};  // sin 2chi .. sin 8chi coefficients of the reverse
  double m_dK0 = 0.0;
};
