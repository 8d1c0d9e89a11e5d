#include "engines/KvLambert1SP.h"

#include <cmath>

#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

CKvLambert1SP::CKvLambert1SP(CKvLambert1SPProjection* set)
    : CKvLambert1SP(set->GetName(), set->GetScale(), set->GetOriginLongitude(),
                    set->GetOriginLatitude(), set->GetFalseEasting(), set->GetFalseNorthing(),
                    _FindEllipsoid(*set)) {}

CKvLambert1SP::CKvLambert1SP(const std::string& name, double scale, double originLongitude,
                             double originLatitude, double falseEasting, double falseNorthing,
                             const CKvEllipsoid& ellipsoid)
    : CKvLambert1SP(name, scale, originLongitude, originLatitude, falseEasting, falseNorthing,
                    &ellipsoid) {}

// EPSG Guidance Note 7-2, method 9801: m0, t0, n, F and r0.
CKvLambert1SP::CKvLambert1SP(const std::string& name, double scale, double originLongitude,
                             double originLatitude, double falseEasting, double falseNorthing,
                             const CKvEllipsoid* ellipsoid)
    : CKvEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dLambda0 = originLongitude * KvConst::kDegToRad;
  m_dPhi0 = originLatitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  m_dK0 = scale;

  const double a = m_dA, k0 = m_dK0;
  double sinPhi0, cosPhi0;
  KvAux::SinCosDeg(originLatitude, &sinPhi0, &cosPhi0);
  const double m0 = KvAux::ParallelRadius(sinPhi0, cosPhi0, m_dE2);
  double t0 = KvAux::ConformalT(originLatitude, m_dE);
  if (t0 <= 0.0) t0 = 0.0;  // the north pole, or beyond it
  const double n = std::sin(m_dPhi0);
  // An origin on the equator (n = 0) has no cone, one at a pole (t0 = 0) a
  // degenerate one: F and r0 stay NaN rather than come from a division by 0.
  double F = KvConst::kNaN, r0 = KvConst::kNaN;
  const double t0n = std::pow(t0, n);
  if (n * t0n != 0.0) {
    F = m0 / (n * t0n);
    r0 = a * k0 * F * t0n;
  }
  m_dM0 = m0;
  m_dT0 = t0;
  m_dN = n;
  m_dF = F;
  m_dR0 = r0;
}

// EPSG Guidance Note 7-2, method 9801, forward.
void CKvLambert1SP::_Forward(double a, double e, double k0, double n, double F, double r0,
                             double lambda0, double FE, double FN, double lon, double lat,
                             double* x, double* y) {
  if (n == 0.0) {
    *x = KvConst::kNaN;
    *y = KvConst::kNaN;
    return;
  }
  // t^n, with t clamped to 0 at the pole and beyond it: the apex.
  const double r = F * a * k0 * KvAux::ConformalTPower(lat, e, n);
  const double theta = n * (lon * KvConst::kDegToRad - lambda0);
  *x = r * std::sin(theta) + FE;
  *y = (r0 + FN) - r * std::cos(theta);
}

// EPSG Guidance Note 7-2, method 9801, reverse.  On a southern cone (n < 0)
// r' takes the sign of n and theta' is measured from the negated axes.
void CKvLambert1SP::_Inverse(double a, double e, double k0, double n, double F, double r0,
                             double lambda0, double FE, double FN, double x, double y, double* lon,
                             double* lat) {
  const double akF = k0 * a * F;
  if (n == 0.0 || akF == 0.0) {
    *lon = KvConst::kNaN;
    *lat = KvConst::kNaN;
    return;
  }
  const double dx = x - FE;
  const double dy = r0 - (y - FN);
  double thetaP, rP;
  if (n >= 0.0) {
    thetaP = std::atan2(dx, dy);
    rP = std::hypot(dx, dy);
  } else {
    thetaP = std::atan2(-dx, -dy);
    rP = -std::hypot(dx, dy);
  }
  const double tP = std::pow(rP / akF, 1.0 / n);
  *lon = (thetaP / n + lambda0) * KvConst::kRadToDeg;
  *lat = KvAux::LatitudeFromConformalT(tP, e) * KvConst::kRadToDeg;
}

void CKvLambert1SP::Geo2Proj(double lon, double lat, double* x, double* y) {
  _Forward(m_dA, m_dE, m_dK0, m_dN, m_dF, m_dR0, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, lon,
           lat, x, y);
}

void CKvLambert1SP::Proj2Geo(double x, double y, double* lon, double* lat) {
  _Inverse(m_dA, m_dE, m_dK0, m_dN, m_dF, m_dR0, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, x,
           y, lon, lat);
}

void CKvLambert1SP::GetOrigin(double* lon, double* lat) {
  *lon = m_dLambda0 * KvConst::kRadToDeg;
  *lat = m_dPhi0 * KvConst::kRadToDeg;
}

double CKvLambert1SP::GetConvergence(double lon, double) {
  return (lon - m_dLambda0 * KvConst::kRadToDeg) * m_dN;
}

void CKvLambert1SP::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  _DefaultAreaAroundOrigin(x0, y0, x1, y1);
}
