#pragma once

#include <string>

#include "catalogue/KvLambert1SPProjection.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Lambert conformal conic with one standard parallel (EPSG method 9801): the
// cone touches the ellipsoid along the origin latitude, where the scale is
// k0.
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Lambert Conic Conformal (1SP)"; the reverse iterates the latitude from
// the conformal function t' to 1e-12 rad (at most 100 steps, usually five
// or six).
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the same
// formulas evaluated with mpmath at 40 digits (WGS 84, origin 35 S, 20
// degrees either side, 5 to 85 S): forward within 4 nanometres, reverse
// within 2e-13 degrees.
// Domain: every latitude but the pole opposite the apex, which lies at
// infinity; t is clamped at 0, so the apex pole maps to (FE, r0 + FN).
// Southern cones (n < 0) invert through negated atan2 arguments and radius.
// No cone: an origin on the equator gives n = 0, which has no finite F; such
// an engine returns NaN from Geo2Proj and Proj2Geo instead of dividing by
// zero, and its convergence is 0.  An origin at the north pole (t0 = 0, the
// cone flattened into a plane) has no finite F either and returns NaN too.
// Without an ellipsoid n = 0, so both directions return NaN likewise.
// Kept on purpose: the convergence is (lon - origin longitude) n degrees and
// ignores the latitude argument.
class KVCART_API CKvLambert1SP : public CKvEngine<CKvLambert1SP, CKvLambert1SPProjection> {
 public:
  explicit CKvLambert1SP(CKvLambert1SPProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvLambert1SP(const std::string& name, double scale, double originLongitude,
                double originLatitude, double falseEasting, double falseNorthing,
                const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  double GetConvergence(double lon, double lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;

 private:
  // The conic arithmetic, shared with CKvLambert2SP, which is the same with
  // k0 = 1 and the false origin in place of the natural one.
  friend class CKvLambert2SP;
  static void _Forward(double a, double e, double k0, double n, double F, double r0, double lambda0,
                       double FE, double FN, double lon, double lat, double* x, double* y);
  static void _Inverse(double a, double e, double k0, double n, double F, double r0, double lambda0,
                       double FE, double FN, double x, double y, double* lon, double* lat);

  CKvLambert1SP(const std::string& name, double scale, double originLongitude,
                double originLatitude, double falseEasting, double falseNorthing,
                const CKvEllipsoid* ellipsoid);

  double m_dLambda0 = 0.0;  // radians
  double m_dPhi0 = 0.0;     // radians
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
  double m_dK0 = 0.0;
  double m_dM0 = 0.0;
  double m_dT0 = 0.0;
  double m_dN = 0.0;
  double m_dF = 0.0;
  double m_dR0 = 0.0;
};
