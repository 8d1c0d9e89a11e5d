#include "engines/KvLambertAzimuthalEqualAreaEllipsoid.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMapProjData.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

// EPSG Guidance Note 7-2, method 9820: qP, qO, betaO, Rq and D; a centre at
// a pole takes the polar formulas, which need none but qP.
CKvLambertAzimuthalEqualAreaEllipsoid::CKvLambertAzimuthalEqualAreaEllipsoid(
    const CKvEllipsoid& ellipsoid, double centreLongitude, double originLatitude,
    double falseEasting, double falseNorthing)
    : m_dA(ellipsoid.GetMajor()),
      m_dInvF(ellipsoid.GetInvFlatness()),
      m_dE(ellipsoid.GetEccentricity()),
      m_dLonO(centreLongitude),
      m_dLatO(originLatitude),
      m_dFE(falseEasting),
      m_dFN(falseNorthing) {
  const double a = m_dA, e = m_dE, e2 = e * e;
  m_dPole = KvConst::IsClose(originLatitude, 90.0)    ? 1.0
            : KvConst::IsClose(originLatitude, -90.0) ? -1.0
                                                      : 0.0;
  m_dQP = KvAux::AuthalicQ(1.0, e);
  m_dRq = a * std::sqrt(0.5 * m_dQP);
  double sinPhiO, cosPhiO;
  KvAux::SinCosDeg(originLatitude, &sinPhiO, &cosPhiO);
  const double qO = KvAux::AuthalicQ(sinPhiO, e);
  m_dSinBetaO = m_dPole != 0.0 ? m_dPole : qO / m_dQP;
  m_dCosBetaO = m_dPole != 0.0 ? 0.0 : std::sqrt((1.0 - m_dSinBetaO) * (1.0 + m_dSinBetaO));
  m_dD = m_dPole != 0.0 ? 1.0
                        : a * KvAux::ParallelRadius(sinPhiO, cosPhiO, e2) / (m_dRq * m_dCosBetaO);
  CKvMapProjData::ComputeFourierCoefficients(CKvMapProjData::eLambertAzimuthalEqualArea, false, e2,
                                             m_adC);
}

CKvLambertAzimuthalEqualAreaEllipsoid::~CKvLambertAzimuthalEqualAreaEllipsoid() = default;

// EPSG Guidance Note 7-2, method 9820, forward.  Oblique: B = Rq (2 / (1 +
// sin betaO sin beta + cos betaO cos beta cos(lambda - lambdaO)))^0.5, E =
// FE + B D cos beta sin(lambda - lambdaO), N = FN + (B / D) (cos betaO sin
// beta - sin betaO cos beta cos(lambda - lambdaO)).  Polar: rho = a (qP -+
// q)^0.5, E = FE + rho sin(lambda - lambdaO), N = FN -+ rho cos(lambda -
// lambdaO).
void CKvLambertAzimuthalEqualAreaEllipsoid::Geo2Proj(double lon, double lat, double* x, double* y) {
  double sinPhi, cosPhi, sinDl, cosDl;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  KvAux::SinCosDeg(KvAux::ReducedLongitudeDeg(lon - m_dLonO), &sinDl, &cosDl);
  const double q = KvAux::AuthalicQ(sinPhi, m_dE);
  if (m_dPole != 0.0) {
    const double rho = m_dA * std::sqrt(std::max(m_dQP - m_dPole * q, 0.0));
    *x = m_dFE + rho * sinDl;
    *y = m_dFN - m_dPole * rho * cosDl;
    return;
  }
  const double sinBeta = q / m_dQP;
  const double cosBeta = std::sqrt(std::max((1.0 - sinBeta) * (1.0 + sinBeta), 0.0));
  // Half the squared distance of the point from the antipode of the centre,
  // both on the unit sphere: 1 + sin betaO sin beta + cos betaO cos beta cos
  // (lambda - lambdaO) without its cancellation there.
  const double u = cosBeta * cosDl + m_dCosBetaO, v = cosBeta * sinDl, w = sinBeta + m_dSinBetaO;
  const double sum = 0.5 * (u * u + v * v + w * w);
  if (!(sum > 0.0)) {
    // The antipode: the bottom of the boundary ellipse.
    *x = m_dFE;
    *y = m_dFN - 2.0 * m_dRq / m_dD;
    return;
  }
  const double B = m_dRq * std::sqrt(2.0 / sum);
  *x = m_dFE + B * m_dD * cosBeta * sinDl;
  *y = m_dFN + (B / m_dD) * (m_dCosBetaO * sinBeta - m_dSinBetaO * cosBeta * cosDl);
}

// EPSG Guidance Note 7-2, method 9820, reverse.  Oblique: rho = ((dx / D)^2
// + (D dy)^2)^0.5, C = 2 asin(rho / 2Rq), beta' = asin(cos C sin betaO + D
// dy sin C cos betaO / rho), lambda = lambdaO + atan2(dx sin C, D rho cos
// betaO cos C - D^2 dy sin betaO sin C).  Polar: beta' = +-asin(1 - rho^2 /
// (a^2 qP)), lambda = lambdaO + atan2(dx, -+dy).  sin C and cos C come from
// sin(C/2) = rho / 2Rq.
void CKvLambertAzimuthalEqualAreaEllipsoid::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double dx = x - m_dFE, dy = y - m_dFN;
  double sinBeta, cosBeta, dLambda;
  if (m_dPole != 0.0) {
    const double rho = std::sqrt(dx * dx + dy * dy);
    double t = rho * rho / (m_dA * m_dA * m_dQP);  // 1 - |sin beta'|
    // The opposite pole may come back a rounding error beyond the boundary.
    if (t > 2.0 && t - 2.0 < KvConst::kRelativeTolerance) t = 2.0;
    sinBeta = m_dPole * (1.0 - t);
    cosBeta = std::sqrt(t * (2.0 - t));  // NaN beyond the boundary
    dLambda = std::atan2(dx, -m_dPole * dy);
  } else {
    const double D = m_dD;
    const double u = dx / D, v = D * dy;
    const double rho = std::sqrt(u * u + v * v);
    if (rho == 0.0) {
      *lon = m_dLonO;
      *lat = m_dLatO;
      return;
    }
    double h = rho / (2.0 * m_dRq);  // sin(C/2)
    if (h > 1.0 && h - 1.0 < KvConst::kRelativeTolerance) h = 1.0;
    const double sinC = 2.0 * h * std::sqrt((1.0 - h) * (1.0 + h));  // NaN beyond the boundary
    const double cosC = 1.0 - 2.0 * h * h;
    // The point's unit vector on the authalic sphere, in the frame of the
    // centre's meridian: its z is the Guidance Note's sin beta', its
    // azimuth the argument of the arctangent for lambda (both divided by D
    // rho), and cos beta' the length of its equatorial part, accurate at
    // the poles where 1 - sin^2 beta' is not.
    const double east = dx / (D * rho), north = D * dy / rho;
    const double px = m_dCosBetaO * cosC - m_dSinBetaO * sinC * north;
    const double py = sinC * east;
    sinBeta = m_dSinBetaO * cosC + m_dCosBetaO * sinC * north;
    cosBeta = std::sqrt(px * px + py * py);
    dLambda = std::atan2(py, px);
  }
  const double phi = KvAux::LatitudeFromAuthalic(sinBeta, cosBeta, m_dQP, m_dE, m_adC);
  *lon = KvAux::ReducedLongitudeDeg(m_dLonO + dLambda * KvConst::kRadToDeg);
  *lat = phi * KvConst::kRadToDeg;
}

void CKvLambertAzimuthalEqualAreaEllipsoid::GetOrigin(double* lon, double* lat) {
  *lon = m_dLonO;
  *lat = m_dLatO;
}

// The centre +-3 degrees; at a pole the square about it that holds the cap
// within 3 degrees, from two opposite corners on the 87th parallel.
void CKvLambertAzimuthalEqualAreaEllipsoid::GetDefaultArea(double* x0, double* y0, double* x1,
                                                           double* y1) {
  if (m_dPole > 0.0) {
    Geo2Proj(m_dLonO - 45.0, 87.0, x0, y0);
    Geo2Proj(m_dLonO + 135.0, 87.0, x1, y1);
  } else if (m_dPole < 0.0) {
    Geo2Proj(m_dLonO - 135.0, -87.0, x0, y0);
    Geo2Proj(m_dLonO + 45.0, -87.0, x1, y1);
  } else {
    Geo2Proj(m_dLonO - 3.0, std::max(m_dLatO - 3.0, -90.0), x0, y0);
    Geo2Proj(m_dLonO + 3.0, std::min(m_dLatO + 3.0, 90.0), x1, y1);
  }
}

bool CKvLambertAzimuthalEqualAreaEllipsoid::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dA, m_dInvF);
  return true;
}
