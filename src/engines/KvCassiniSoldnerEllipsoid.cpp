#include "engines/KvCassiniSoldnerEllipsoid.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "platform/KvConstants.h"

// EPSG Guidance Note 7-2, method 9806: MO, the meridian arc of the origin.
CKvCassiniSoldnerEllipsoid::CKvCassiniSoldnerEllipsoid(const CKvEllipsoid& ellipsoid,
                                                       double centralMeridian,
                                                       double originLatitude, double falseEasting,
                                                       double falseNorthing)
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
// phi)^0.5; E = FE + nu X with X = A - T A^3/6 - (8 - T + 8C) T A^5/120, N =
// FN + M - MO + nu tan phi Y with Y = A^2/2 + (5 - T + 6C) A^4/24.  With
// `jacobian`, also the partial derivatives of E and N by lambda and phi, in
// the order dE/dlambda, dE/dphi, dN/dlambda, dN/dphi.
void CKvCassiniSoldnerEllipsoid::_Forward(double dLambda, double phi, double sinPhi, double cosPhi,
                                          double* dx, double* dy, double* jacobian) const {
  const double e2 = m_dE2;
  const double M = m_arc.Distance(phi, sinPhi, cosPhi);
  if (cosPhi == 0.0) {  // a pole: A = 0, where tan phi A^2 is 0 times infinity
    *dx = 0.0;
    *dy = M - m_dMO;
    if (jacobian) jacobian[0] = jacobian[1] = jacobian[2] = jacobian[3] = KvConst::kNaN;
    return;
  }
  const double A = dLambda * cosPhi, A2 = A * A;
  const double t = sinPhi / cosPhi;
  const double T = t * t;
  const double C = e2 * cosPhi * cosPhi / (1.0 - e2);
  const double w = 1.0 - e2 * sinPhi * sinPhi;
  const double nu = m_dA / std::sqrt(w);
  const double X = A * (1.0 - A2 * (T / 6.0 + (8.0 - T + 8.0 * C) * T * A2 / 120.0));
  const double Y = A2 * (0.5 + (5.0 - T + 6.0 * C) * A2 / 24.0);
  *dx = nu * X;
  *dy = M - m_dMO + nu * t * Y;
  if (!jacobian) return;
  // X and Y by A, T and C; A, T, C and nu by phi.
  const double XA = 1.0 - A2 * (T / 2.0 + (8.0 - T + 8.0 * C) * T * A2 / 24.0);
  const double XT = -A * A2 * (1.0 / 6.0 + (8.0 - 2.0 * T + 8.0 * C) * A2 / 120.0);
  const double XC = -A * A2 * A2 * T / 15.0;
  const double YA = A * (1.0 + (5.0 - T + 6.0 * C) * A2 / 6.0);
  const double YT = -A2 * A2 / 24.0;
  const double YC = A2 * A2 / 4.0;
  const double Aphi = -A * t, Tphi = 2.0 * t * (1.0 + T), Cphi = -2.0 * C * t;
  const double nuPhi = nu * e2 * sinPhi * cosPhi / w;
  const double rho = nu * (1.0 - e2) / w;  // dM/dphi
  jacobian[0] = nu * XA * cosPhi;
  jacobian[1] = nuPhi * X + nu * (XA * Aphi + XT * Tphi + XC * Cphi);
  jacobian[2] = nu * sinPhi * YA;
  jacobian[3] =
      rho + (nuPhi * t + nu * (1.0 + T)) * Y + nu * t * (YA * Aphi + YT * Tphi + YC * Cphi);
}

// EPSG Guidance Note 7-2, method 9806, reverse: the footpoint phi1 of M1 =
// MO + (N - FN), T1 = tan^2 phi1, nu1, rho1 = a (1 - e^2) / (1 - e^2 sin^2
// phi1)^1.5, D = (E - FE) / nu1; phi = phi1 - (nu1 tan phi1 / rho1) (D^2/2 -
// (1 + 3 T1) D^4/24), lambda = lambdaO + (D - T1 D^3/3 + (1 + 3 T1) T1
// D^5/15) / cos phi1.
void CKvCassiniSoldnerEllipsoid::_Reverse(double dx, double dy, double* dLambda,
                                          double* phi) const {
  const double e2 = m_dE2;
  double sinPhi1, cosPhi1;
  const double phi1 = m_arc.Latitude(m_dMO + dy, &sinPhi1, &cosPhi1);
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
  double sinPhi, cosPhi, dx, dy;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  _Forward(KvAux::ReducedLongitudeDeg(lon - m_dLonO) * KvConst::kDegToRad, lat * KvConst::kDegToRad,
           sinPhi, cosPhi, &dx, &dy, nullptr);
  *x = m_dFE + dx;
  *y = m_dFN + dy;
}

// The reverse series is not the exact inverse of the forward series: it
// alone leaves 1.5e-7 degree (1.7 cm) 3 degrees from the central meridian
// at 45 N.  Newton's method on the forward series, from the reverse
// series' point, removes that: a step that moves the point by less than
// 1e-7 rad leaves less than 1e-13 rad, and is the last (within some 5
// degrees of the central meridian the first is), at most four.
void CKvCassiniSoldnerEllipsoid::Proj2Geo(double x, double y, double* lon, double* lat) {
  constexpr int kMaxSteps = 4;
  constexpr double kLastStep = 1e-7;  // radians
  const double dx = x - m_dFE, dy = y - m_dFN;
  double dLambda, phi;
  _Reverse(dx, dy, &dLambda, &phi);
  for (int step = 0; step < kMaxSteps; ++step) {
    double fx, fy, J[4];
    _Forward(dLambda, phi, std::sin(phi), std::cos(phi), &fx, &fy, J);
    const double rE = dx - fx, rN = dy - fy;
    const double det = J[0] * J[3] - J[1] * J[2];
    const double moveLambda = (rE * J[3] - J[1] * rN) / det;
    const double movePhi = (J[0] * rN - J[2] * rE) / det;
    if (!std::isfinite(moveLambda) || !std::isfinite(movePhi)) break;
    dLambda += moveLambda;
    phi += movePhi;
    if (std::fabs(moveLambda) < kLastStep && std::fabs(movePhi) < kLastStep) break;
  }
  *lon = KvAux::ReducedLongitudeDeg(m_dLonO + dLambda * KvConst::kRadToDeg);
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
