#include "engines/KvCassiniSoldnerEllipsoid.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "platform/KvConstants.h"

// EPSG Guidance Note 7-2, method 9806: MO, the meridian arc of the origin.
CKvCassiniSoldnerEllipsoid::CKvCassiniSoldnerEllipsoid(const CKvEllipsoid& ellipsoid,
                                                       double centralMeridian,
                                                       double originLatitude,
                                                       double falseEasting, double falseNorthing)
    : m_dA(ellipsoid.GetMajor()),
      m_dInvF(ellipsoid.GetInvFlatness()),
      m_dE2(ellipsoid.GetEccentricity() * ellipsoid.GetEccentricity()),
      m_dLonO(centralMeridian),
      m_dLatO(originLatitude),
      m_dFE(falseEasting),
      m_dFN(falseNorthing),
      m_dMO(0.0),
      m_arc(ellipsoid.GetMajor(), ellipsoid.GetFlatness()) {
  m_dMO = m_arc.Distance(originLatitude * KvConst::kDegToRad);
}

CKvCassiniSoldnerEllipsoid::~CKvCassiniSoldnerEllipsoid() = default;

// EPSG Guidance Note 7-2, method 9806, forward: A = (lambda - lambdaO) cos
// phi, T = tan^2 phi, C = e^2 cos^2 phi / (1 - e^2), nu = a / (1 - e^2 sin^2
// phi)^0.5; E = FE + nu (A - T A^3/6 - (8 - T + 8C) T A^5/120), N = FN + M -
// MO + nu tan phi (A^2/2 + (5 - T + 6C) A^4/24).
void CKvCassiniSoldnerEllipsoid::_Forward(double dLambda, double lat, double* dx,
                                          double* dy) const {
  const double e2 = m_dE2;
  double sinPhi, cosPhi;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  const double M = m_arc.Distance(lat * KvConst::kDegToRad);
  if (cosPhi == 0.0) {  // a pole: A = 0, where tan phi A^2 is 0 times infinity
    *dx = 0.0;
    *dy = M - m_dMO;
    return;
  }
  const double A = dLambda * cosPhi, A2 = A * A;
  const double tanPhi = sinPhi / cosPhi;
  const double T = tanPhi * tanPhi;
  const double C = e2 * cosPhi * cosPhi / (1.0 - e2);
  const double nu = m_dA / std::sqrt(1.0 - e2 * sinPhi * sinPhi);
  const double X = A * (1.0 - A2 * (T / 6.0 + (8.0 - T + 8.0 * C) * T * A2 / 120.0));
  *dx = nu * X;
  *dy = M - m_dMO + nu * tanPhi * A2 * (0.5 + (5.0 - T + 6.0 * C) * A2 / 24.0);
}

// EPSG Guidance Note 7-2, method 9806, reverse: the footpoint phi1 of M1 =
// MO + (N - FN), T1 = tan^2 phi1, nu1, rho1 = a (1 - e^2) / (1 - e^2 sin^2
// phi1)^1.5, D = (E - FE) / nu1; phi = phi1 - (nu1 tan phi1 / rho1) (D^2/2 -
// (1 + 3 T1) D^4/24), lambda = lambdaO + (D - T1 D^3/3 + (1 + 3 T1) T1
// D^5/15) / cos phi1.
void CKvCassiniSoldnerEllipsoid::_Reverse(double dx, double dy, double* dLambda,
                                          double* phi) const {
  const double e2 = m_dE2;
  const double phi1 = m_arc.Latitude(m_dMO + dy);
  const double sinPhi1 = std::sin(phi1), cosPhi1 = std::cos(phi1);
  const double tanPhi1 = sinPhi1 / cosPhi1;
  const double T1 = tanPhi1 * tanPhi1;
  const double w = 1.0 - e2 * sinPhi1 * sinPhi1;
  const double nu1 = m_dA / std::sqrt(w);
  const double nuOverRho = w / (1.0 - e2);  // nu1 / rho1
  const double D = dx / nu1, D2 = D * D;
  *phi = phi1 - nuOverRho * tanPhi1 * D2 * (0.5 - (1.0 + 3.0 * T1) * D2 / 24.0);
  *dLambda = D * (1.0 - D2 * (T1 / 3.0 - (1.0 + 3.0 * T1) * T1 * D2 / 15.0)) / cosPhi1;
}

void CKvCassiniSoldnerEllipsoid::Geo2Proj(double lon, double lat, double* x, double* y) {
  double dx, dy;
  _Forward(KvAux::ReduceLongitudeDeg(lon - m_dLonO) * KvConst::kDegToRad, lat, &dx, &dy);
  *x = m_dFE + dx;
  *y = m_dFN + dy;
}

// The reverse series G is not the exact inverse of the forward series F: it
// alone leaves 1.5e-7 degree (1.7 cm) 3 degrees from the central meridian
// at 45 N.  One step of defect correction, p = G(t) + (G(t) - G(F(G(t)))),
// removes its error to first order, so that the reverse inverts the forward
// series to 1e-12 degree within 5 degrees of the central meridian.
void CKvCassiniSoldnerEllipsoid::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double dx = x - m_dFE, dy = y - m_dFN;
  double dLambda, phi;
  _Reverse(dx, dy, &dLambda, &phi);
  double fx, fy, dLambdaBack, phiBack;
  _Forward(dLambda, phi * KvConst::kRadToDeg, &fx, &fy);
  _Reverse(fx, fy, &dLambdaBack, &phiBack);
  const double dLambdaFixed = dLambda + (dLambda - dLambdaBack);
  const double phiFixed = phi + (phi - phiBack);
  if (std::isfinite(dLambdaFixed) && std::isfinite(phiFixed)) {
    dLambda = dLambdaFixed;
    phi = phiFixed;
  }
  *lon = KvAux::ReduceLongitudeDeg(m_dLonO + dLambda * KvConst::kRadToDeg);
  *lat = phi * KvConst::kRadToDeg;
}

void CKvCassiniSoldnerEllipsoid::GetOrigin(double* lon, double* lat) {
  *lon = m_dLonO;
  *lat = m_dLatO;
}

void CKvCassiniSoldnerEllipsoid::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  Geo2Proj(m_dLonO - 3.0, std::max(m_dLatO - 3.0, -90.0), x0, y0);
  Geo2Proj(m_dLonO + 3.0, std::min(m_dLatO + 3.0, 90.0), x1, y1);
}

bool CKvCassiniSoldnerEllipsoid::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dA, m_dInvF);
  return true;
}
