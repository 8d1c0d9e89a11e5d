#include "engines/KvStereographic.h"

#include <cmath>

#include "engines/KvStereographicNorthPole.h"
#include "platform/KvConstants.h"

namespace {

// ln(c) / 2 of the Guidance Note's
//   c = (n + sin phi0) (1 - sin chi0) / ((n - sin phi0) (1 + sin chi0)),
// where (1 - sin chi0) / (1 + sin chi0) = 1 / w1 and ln w1 = 2 n psi0.  At
// the poles both n - sin phi0 and 1 / w1 vanish; written with
// 1 - sin phi0 = cos^2 phi0 / (1 + sin phi0) and n - sin phi0 =
// (1 - sin phi0) (1 + q), q = (n - 1) / (1 - sin phi0), the two vanishing
// factors cancel and ln c is
//   ln(n + s) + (1 - 2n) ln(1 + s) + (n - 1) ln cos^2 phi0 - ln(1 + q)
//   + 2 n e atanh(e s),
// s = |sin phi0|, finite up to the pole, where it is e ln((1 + e) / (1 - e)).
// c is 1 / c of the mirrored origin, so ln c is odd in phi0.
double HalfLnC(double sinPhi0, double cosPhi0, double n, double nMinus1, double e, double e2) {
  const double s = std::fabs(sinPhi0);
  const double cos2 = cosPhi0 * cosPhi0;
  const double q = e2 * cos2 * (1.0 + s) / ((1.0 - e2) * (n + 1.0));
  // (n - 1) ln cos^2 tends to 0 at the pole, where cos^2 is 0.
  const double nLnCos2 = cos2 > 0.0 ? nMinus1 * std::log(cos2) : 0.0;
  const double lnC = std::log(n + s) + (1.0 - 2.0 * n) * std::log1p(s) + nLnCos2 - std::log1p(q) +
                     2.0 * n * e * std::atanh(e * s);
  return std::copysign(0.5 * lnC, sinPhi0);
}

}  // namespace

CKvStereographic::CKvStereographic(CKvStereographicProjection* set)
    : CKvStereographic(set->GetName(), set->GetScale(), set->GetCentre(), set->GetOriginLatitude(),
                       set->GetFalseEasting(), set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvStereographic::CKvStereographic(const std::string& name, double scale, double originLongitude,
                                   double originLatitude, double falseEasting, double falseNorthing,
                                   const CKvEllipsoid& ellipsoid)
    : CKvStereographic(name, scale, originLongitude, originLatitude, falseEasting, falseNorthing,
                       &ellipsoid) {}

// EPSG Guidance Note 7-2, method 9809: R, n, c and chi0.
CKvStereographic::CKvStereographic(const std::string& name, double scale, double originLongitude,
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

  const double a = m_dA, e = m_dE, e2 = m_dE2;
  double sinPhi0, cosPhi0;
  KvAux::SinCosDeg(originLatitude, &sinPhi0, &cosPhi0);
  const double cos2 = cosPhi0 * cosPhi0;
  // R = sqrt(rho0 nu0) = a sqrt(1 - e^2) / (1 - e^2 sin^2 phi0)
  const double R = a * std::sqrt(1.0 - e2) / (1.0 - e2 * sinPhi0 * sinPhi0);
  // n = sqrt(1 + e^2 cos^4 phi0 / (1 - e^2)), and n - 1 without the
  // cancellation of the square root's 1
  const double n2Minus1 = e2 * cos2 * cos2 / (1.0 - e2);
  const double n = std::sqrt(1.0 + n2Minus1);
  const double nMinus1 = n2Minus1 / (n + 1.0);
  // sin chi0 = (w2 - 1) / (w2 + 1) with w2 = c w1 = (n + sin phi0) / (n -
  // sin phi0), which is sin phi0 / n; n -+ |sin phi0| as sums of positive
  // terms for cos chi0.
  const double s = std::fabs(sinPhi0);
  const double nMinusS = nMinus1 + cos2 / (1.0 + s);
  m_dR = R;
  m_dN = n;
  m_dHalfLnC = HalfLnC(sinPhi0, cosPhi0, n, nMinus1, e, e2);
  m_dSinChi0 = sinPhi0 / n;
  m_dCosChi0 = std::sqrt(nMinusS * (n + s)) / n;
  m_dTwoRk0 = 2.0 * R * m_dK0;
  // f = e^2 / (1 + sqrt(1 - e^2)), also for a sphere
  m_Conformal = KvAux::CKvConformalLatitude(e2 / (1.0 + std::sqrt(1.0 - e2)));
}

// The Gauss sphere: its isometric latitude is n psi + ln(c) / 2, its
// longitude Lambda - Lambda0 = n (lambda - lambda0).
void CKvStereographic::_Sphere(double lon, double lat, double* sinChi, double* cosChi,
                               double* dLambda) const {
  double sinPhi, cosPhi;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  const double psi = KvAux::IsometricLatitude(sinPhi, cosPhi, m_dE);
  KvAux::SinCosOfIsometric(m_dN * psi + m_dHalfLnC, sinChi, cosChi);
  *dLambda = m_dN * KvAux::ReducedLongitude(lon * KvConst::kDegToRad - m_dLambda0);
}

// EPSG Guidance Note 7-2, method 9809, forward: B, E and N.
void CKvStereographic::Geo2Proj(double lon, double lat, double* x, double* y) {
  double sinChi, cosChi, dLambda;
  _Sphere(lon, lat, &sinChi, &cosChi, &dLambda);
  const double sinDL = std::sin(dLambda), cosDL = std::cos(dLambda);
  const double B = 1.0 + sinChi * m_dSinChi0 + cosChi * m_dCosChi0 * cosDL;
  const double k = m_dTwoRk0 / B;
  *x = m_dFalseEasting + k * cosChi * sinDL;
  *y = m_dFalseNorthing + k * (sinChi * m_dCosChi0 - cosChi * m_dSinChi0 * cosDL);
}

// Snyder's reverse of the oblique stereographic on the sphere (eqs. 20-14,
// 20-15, 21-15) with the angular distance c' = 2 atan(rho / (2 R k0)) taken
// through t = tan(c'/2): the point on the unit sphere, seen from the
// origin's axes, is (2x', (1 - t^2) cos chi0 - 2y' sin chi0, (1 - t^2) sin
// chi0 + 2y' cos chi0) / (1 + t^2), with x' and y' the offsets over 2 R k0.
// So there is no division by rho, and none by a polar origin's tan chi0.
void CKvStereographic::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double xp = (x - m_dFalseEasting) / m_dTwoRk0;
  const double yp = (y - m_dFalseNorthing) / m_dTwoRk0;
  const double oneMinusT2 = 1.0 - (xp * xp + yp * yp);
  const double east = 2.0 * xp;
  // + 0.0: at the origin of a polar grid -0 would make atan2 return pi
  const double north = oneMinusT2 * m_dCosChi0 - 2.0 * yp * m_dSinChi0 + 0.0;
  const double up = oneMinusT2 * m_dSinChi0 + 2.0 * yp * m_dCosChi0;
  // The isometric latitude on the sphere, then on the ellipsoid.
  const double psiSphere = std::asinh(up / std::hypot(east, north));
  const double psi = (psiSphere - m_dHalfLnC) / m_dN;
  double sinChi, cosChi;
  KvAux::SinCosOfIsometric(psi, &sinChi, &cosChi);
  *lat = m_Conformal.Geodetic(sinChi, cosChi) * KvConst::kRadToDeg;
  *lon = KvAux::ReducedLongitude(m_dLambda0 + std::atan2(east, north) / m_dN) * KvConst::kRadToDeg;
}

void CKvStereographic::GetOrigin(double* lon, double* lat) {
  *lon = m_dLambda0 * KvConst::kRadToDeg;
  *lat = m_dPhi0 * KvConst::kRadToDeg;
}

// On a sphere stereographic from chi0, the meridian through a point turns
// from grid north by gamma with
//   tan gamma = sin dL (sin chi0 + sin chi) / (cos chi0 cos chi + (1 + sin
//   chi0 sin chi) cos dL);
// east of the central meridian it turns towards it (positive in the north).
double CKvStereographic::GetConvergence(double lon, double lat) {
  double sinChi, cosChi, dLambda;
  _Sphere(lon, lat, &sinChi, &cosChi, &dLambda);
  const double sinDL = std::sin(dLambda), cosDL = std::cos(dLambda);
  return std::atan2(sinDL * (m_dSinChi0 + sinChi),
                    m_dCosChi0 * cosChi + (1.0 + m_dSinChi0 * sinChi) * cosDL) *
         KvConst::kRadToDeg;
}

// A polar origin by the relative test the polar stereographic wrapper
// applies, so that an origin read as 90.00000000000001 counts.
void CKvStereographic::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  const double lat0 = m_dPhi0 * KvConst::kRadToDeg;
  if (KvConst::IsClose(std::fabs(lat0), 90.0)) {
    CKvStereographicNorthPole::_PolarDefaultArea(*this, m_dLambda0 * KvConst::kRadToDeg,
                                                 lat0 > 0.0 ? 1.0 : -1.0, x0, y0, x1, y1);
    return;
  }
  _DefaultAreaAroundOrigin(x0, y0, x1, y1);
}
