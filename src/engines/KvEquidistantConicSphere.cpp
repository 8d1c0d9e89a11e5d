#include "engines/KvEquidistantConicSphere.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvConeGeometry.h"
#include "platform/KvConstants.h"

// Snyder, chapter 16, sphere: n = (cos phi1 - cos phi2) / (phi2 - phi1), G =
// cos phi1 / n + phi1; here n R G = R cos phi1 + n R phi1, finite when n is
// 0.  Equal parallels give the tangent cone, n = sin phi1.
CKvEquidistantConicSphere::CKvEquidistantConicSphere(const CKvEllipsoid& sphere, double parallel1,
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
  const double R = m_dR;
  double sin1, cos1, sin2, cos2;
  KvAux::SinCosDeg(parallel1, &sin1, &cos1);
  KvAux::SinCosDeg(parallel2, &sin2, &cos2);
  const double phi1 = parallel1 * KvConst::kDegToRad, phi2 = parallel2 * KvConst::kDegToRad;
  m_dN = parallel1 == parallel2 ? sin1 : (cos1 - cos2) / (phi2 - phi1);
  m_dNG = R * cos1 + m_dN * R * phi1;
  m_dPhi0 = originLatitude * KvConst::kDegToRad;
  m_dR0 = m_dNG - m_dN * R * m_dPhi0;
}

CKvEquidistantConicSphere::~CKvEquidistantConicSphere() = default;

// Snyder, chapter 16, forward: rho = R (G - phi), theta = n (lambda -
// lambda0), x = rho sin theta, y = rho0 - rho cos theta, where rho0 - rho is
// R (phi - phi0) exactly.
void CKvEquidistantConicSphere::Geo2Proj(double lon, double lat, double* x, double* y) {
  const double R = m_dR;
  const double phi = lat * KvConst::kDegToRad;
  const double r = m_dNG - m_dN * R * phi;
  const double dLambda = KvAux::ReducedLongitudeDeg(lon - m_dLon0) * KvConst::kDegToRad;
  double east, drop;
  KvCone::Bend(m_dN, r, dLambda, &east, &drop);
  *x = m_dFE + east;
  *y = m_dFN + R * (phi - m_dPhi0) + drop;
}

// Snyder, chapter 16, reverse: rho = sign(n) (dx^2 + (rho0 - dy)^2)^0.5,
// phi = G - rho / R, lambda = lambda0 + theta / n; phi formed as phi0 +
// (rho0 - rho) / R, and rho0 - rho as (2 r0 dy - n (dx^2 + dy^2)) / (r0 + n
// rho), without cancellation.
void CKvEquidistantConicSphere::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double n = m_dN, r0 = m_dR0;
  const double dx = x - m_dFE, dy = y - m_dFN;
  const double u = n * dx, v = r0 - n * dy;
  const double nRho = std::sqrt(u * u + v * v);
  const double sum = r0 + nRho;
  const double rise = sum > 0.0 ? (2.0 * r0 * dy - n * (dx * dx + dy * dy)) / sum : 0.0;
  const double dLambda = KvCone::LongitudeDifference(n, r0, dx, dy);
  *lon = KvAux::ReducedLongitudeDeg(m_dLon0 + dLambda * KvConst::kRadToDeg);
  *lat = (m_dPhi0 + rise / m_dR) * KvConst::kRadToDeg;
}

void CKvEquidistantConicSphere::GetOrigin(double* lon, double* lat) {
  *lon = m_dLon0;
  *lat = m_dLat0;
}

// Central meridian +-3 degrees, mean standard parallel +-3 degrees.
void CKvEquidistantConicSphere::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  const double mid = 0.5 * (m_dLat1 + m_dLat2);
  Geo2Proj(m_dLon0 - 3.0, std::max(mid - 3.0, -90.0), x0, y0);
  Geo2Proj(m_dLon0 + 3.0, std::min(mid + 3.0, 90.0), x1, y1);
}

bool CKvEquidistantConicSphere::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dR, m_dInvF);
  return true;
}
