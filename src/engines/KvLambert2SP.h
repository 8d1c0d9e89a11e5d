#pragma once

#include <string>

#include "catalogue/KvLambert2SPProjection.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Lambert conformal conic with two standard parallels (EPSG method 9802): the
// cone cuts the ellipsoid along both parallels, where the scale is exactly 1;
// coordinates are reckoned from a false origin (lambdaF, phiF).
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Lambert Conic Conformal (2SP)"; the reverse iterates the latitude to
// 1e-12 rad (at most 100 steps, usually five or six).
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the same
// formulas evaluated with mpmath at 40 digits (WGS 84, parallels 45 and 55,
// 10 W to 30 E, 20 to 85 N): forward within 3 nanometres, reverse within
// 2e-13 degrees.  Equal parallels give the tangent cone n = sin phi1, the same
// projection as CKvLambert1SP with k0 = 1.
// Domain: every latitude but the pole opposite the apex; t is clamped at 0,
// so the apex pole maps to (FE, rF + FN).  Southern cones (n < 0) invert
// through negated atan2 arguments and radius.
// No cone: parallels on the equator, or symmetric about it, give n = 0, which
// has no finite F; such an engine returns NaN from Geo2Proj and Proj2Geo
// instead of dividing by zero, and its convergence is 0.  A first parallel at
// the north pole (t1 = 0) has no finite F either and returns NaN too.
// Without an ellipsoid n = 0, so both directions return NaN likewise.
// Kept on purpose: a false origin at a pole centres the default area on the
// mean of the two parallels instead, where the projection is of use.
class KVCART_API CKvLambert2SP : public CKvEngine<CKvLambert2SP, CKvLambert2SPProjection> {
 public:
  explicit CKvLambert2SP(CKvLambert2SPProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvLambert2SP(const std::string& name, double parallel1, double parallel2, double originLongitude,
                double originLatitude, double falseEasting, double falseNorthing,
                const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  double GetConvergence(double lon, double lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;

 private:
  CKvLambert2SP(const std::string& name, double parallel1, double parallel2, double originLongitude,
                double originLatitude, double falseEasting, double falseNorthing,
                const CKvEllipsoid* ellipsoid);

  double m_dPhi1 = 0.0;     // radians
  double m_dPhi2 = 0.0;     // radians
  double m_dLambdaF = 0.0;  // radians
  double m_dPhiF = 0.0;     // radians
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
  double m_dM1 = 0.0;
  double m_dM2 = 0.0;
  double m_dT1 = 0.0;
  double m_dT2 = 0.0;
  double m_dTF = 0.0;
  double m_dN = 0.0;
  double m_dF = 0.0;
  double m_dRF = 0.0;
};
