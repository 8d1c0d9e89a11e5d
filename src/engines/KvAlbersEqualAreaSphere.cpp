#include "engines/KvAlbersEqualAreaSphere.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvConeGeometry.h"
#include "platform/KvConstants.h"

// Snyder, chapter 14: n = (sin phi1 + sin phi2) / 2,
// C = cos^2 phi1 + 2 n sin phi1, rho0 = R (C - 2 n sin phi0)^0.5 / n.  Equal
// parallels give the tangent cone, symmetric ones n = 0.
CKvAlbersEqualAreaSphere::CKvAlbersEqualAreaSphere(const CKvEllipsoid& sphere, double parallel1,
                                                   double parallel2, double originLongitude,
                                                   double originLatitude, double falseEasting,
                                                   double falseNorthing)
    : m_dR(sphere.GetMajor()),
      m_dInvF(sphere.GetInvFlatness()),
      m_dLon0(originLongitude),
      m_dLat0(originLatitude),
      m_dLat1(parallel1),
      m_dLat2(parallel2),
      m_dFE(falseEasting),
      m_dFN(falseNorthing) {
  double sin1, cos1, sin2, cos2, sin0, cos0;
  KvAux::SinCosDeg(parallel1, &sin1, &cos1);
  KvAux::SinCosDeg(parallel2, &sin2, &cos2);
  KvAux::SinCosDeg(originLatitude, &sin0, &cos0);
  const double n = 0.5 * (sin1 + sin2);
  const double C = cos1 * cos1 + 2.0 * n * sin1;
  m_dN = n;
  m_dC = C;
  m_dSinPhi0 = sin0;
  m_dR0 = m_dR * std::sqrt(std::max(C - 2.0 * n * sin0, 0.0));
}

CKvAlbersEqualAreaSphere::~CKvAlbersEqualAreaSphere() = default;

// Snyder, chapter 14, forward: x = rho sin theta, y = rho0 - rho cos
// theta, with rho0 - rho = 2 R^2 (sin phi - sin phi0) / (r0 + r).
void CKvAlbersEqualAreaSphere::Geo2Proj(double lon, double lat, double* x, double* y) {
  const double R = m_dR;
  double sinPhi, cosPhi;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  const double r = R * std::sqrt(std::max(m_dC - 2.0 * m_dN * sinPhi, 0.0));
  const double dLambda = KvAux::ReducedLongitudeDeg(lon - m_dLon0) * KvConst::kDegToRad;
  double east, drop;
  KvCone::Bend(m_dN, r, dLambda, &east, &drop);
  const double sum = m_dR0 + r;
  const double rise = sum > 0.0 ? 2.0 * R * R * (sinPhi - m_dSinPhi0) / sum : 0.0;
  *x = m_dFE + east;
  *y = m_dFN + rise + drop;
}

// Snyder, chapter 14, reverse: sin phi = (C - (rho n / R)^2) / (2n), which
// with rho^2 = dx^2 + (rho0 - dy)^2 is sin phi0 + (2 r0 dy - n (dx^2 +
// dy^2)) / (2 R^2).
void CKvAlbersEqualAreaSphere::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double R = m_dR;
  const double dx = x - m_dFE, dy = y - m_dFN;
  double sinPhi = m_dSinPhi0 + (2.0 * m_dR0 * dy - m_dN * (dx * dx + dy * dy)) / (2.0 * R * R);
  if (std::fabs(sinPhi) > 1.0 && std::fabs(sinPhi) - 1.0 < KvConst::kRelativeTolerance)
    sinPhi = std::copysign(1.0, sinPhi);
  const double cosPhi = std::sqrt((1.0 - sinPhi) * (1.0 + sinPhi));  // NaN beyond the pole
  const double dLambda = KvCone::LongitudeDifference(m_dN, m_dR0, dx, dy);
  *lon = KvAux::ReducedLongitudeDeg(m_dLon0 + dLambda * KvConst::kRadToDeg);
  *lat = std::atan2(sinPhi, cosPhi) * KvConst::kRadToDeg;
}

void CKvAlbersEqualAreaSphere::GetOrigin(double* lon, double* lat) {
  *lon = m_dLon0;
  *lat = m_dLat0;
}

// Central meridian +-3 degrees, mean standard parallel +-3 degrees.
void CKvAlbersEqualAreaSphere::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  const double mid = 0.5 * (m_dLat1 + m_dLat2);
  Geo2Proj(m_dLon0 - 3.0, std::max(mid - 3.0, -90.0), x0, y0);
  Geo2Proj(m_dLon0 + 3.0, std::min(mid + 3.0, 90.0), x1, y1);
}

bool CKvAlbersEqualAreaSphere::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dR, m_dInvF);
  return true;
}
