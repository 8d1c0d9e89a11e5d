#include "engines/KvEquidistantConicEllipsoid.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvConeGeometry.h"
#include "platform/KvConstants.h"

// Snyder, chapter 16, ellipsoid: n = a (m1 - m2) / (M2 - M1), G = m1 / n +
// M1 / a; here n a G = a m1 + n M1, which stays finite when n is 0 (parallels
// symmetric about the equator).  Equal parallels give the tangent cone, the
// limit n = sin phi1.
CKvEquidistantConicEllipsoid::CKvEquidistantConicEllipsoid(
    const CKvEllipsoid& ellipsoid, double parallel1, double parallel2, double originLongitude,
    double originLatitude, double falseEasting, double falseNorthing)
    : m_dA(ellipsoid.GetMajor()),
      m_dInvF(ellipsoid.GetInvFlatness()),
      m_dLonF(originLongitude),
      m_dLatF(originLatitude),
      m_dLat1(parallel1),
      m_dLat2(parallel2),
      m_dFE(falseEasting),
      m_dFN(falseNorthing),
      m_dN(0.0),
      m_dNG(0.0),
      m_dMF(0.0),
      m_dR0(0.0),
      m_arc(ellipsoid.GetMajor(), ellipsoid.GetFlatness()) {
  const double a = m_dA, e = ellipsoid.GetEccentricity(), e2 = e * e;
  double sin1, cos1, sin2, cos2;
  KvAux::SinCosDeg(parallel1, &sin1, &cos1);
  KvAux::SinCosDeg(parallel2, &sin2, &cos2);
  const double m1 = KvAux::ParallelRadius(sin1, cos1, e2);
  const double m2 = KvAux::ParallelRadius(sin2, cos2, e2);
  const double M1 = m_arc.Distance(parallel1 * KvConst::kDegToRad);
  const double M2 = m_arc.Distance(parallel2 * KvConst::kDegToRad);
  m_dN = parallel1 == parallel2 ? sin1 : a * (m1 - m2) / (M2 - M1);
  m_dNG = a * m1 + m_dN * M1;
  m_dMF = m_arc.Distance(originLatitude * KvConst::kDegToRad);
  m_dR0 = m_dNG - m_dN * m_dMF;
}

CKvEquidistantConicEllipsoid::~CKvEquidistantConicEllipsoid() = default;

// Snyder, chapter 16, forward: rho = a G - M, theta = n (lambda -
// lambda0), x = rho sin theta, y = rho0 - rho cos theta, where rho0 - rho is
// M - MF exactly.
void CKvEquidistantConicEllipsoid::Geo2Proj(double lon, double lat, double* x, double* y) {
  const double M = m_arc.Distance(lat * KvConst::kDegToRad);
  const double r = m_dNG - m_dN * M;
  const double dLambda = KvAux::ReducedLongitudeDeg(lon - m_dLonF) * KvConst::kDegToRad;
  double east, drop;
  KvCone::Bend(m_dN, r, dLambda, &east, &drop);
  *x = m_dFE + east;
  *y = m_dFN + (M - m_dMF) + drop;
}

// Snyder, chapter 16, reverse: rho = sign(n) (dx^2 + (rho0 - dy)^2)^0.5, M =
// a G - rho, phi the footpoint latitude of M, lambda = lambda0 + theta / n.
// M is formed as MF + (rho0 - rho), and rho0 - rho as (rho0^2 - rho^2) /
// (rho0 + rho) = (2 r0 dy - n (dx^2 + dy^2)) / (r0 + n rho), which has no
// cancellation and keeps its limit dy when n is 0.
void CKvEquidistantConicEllipsoid::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double n = m_dN, r0 = m_dR0;
  const double dx = x - m_dFE, dy = y - m_dFN;
  const double u = n * dx, v = r0 - n * dy;
  const double nRho = std::sqrt(u * u + v * v);
  const double sum = r0 + nRho;
  // Both radii vanish only when the false origin and the point are the apex.
  const double rise = sum > 0.0 ? (2.0 * r0 * dy - n * (dx * dx + dy * dy)) / sum : 0.0;
  const double phi = m_arc.Latitude(m_dMF + rise);
  const double dLambda = KvCone::LongitudeDifference(n, r0, dx, dy);
  *lon = KvAux::ReducedLongitudeDeg(m_dLonF + dLambda * KvConst::kRadToDeg);
  *lat = phi * KvConst::kRadToDeg;
}

void CKvEquidistantConicEllipsoid::GetOrigin(double* lon, double* lat) {
  *lon = m_dLonF;
  *lat = m_dLatF;
}

// Central meridian +-3 degrees, mean standard parallel +-3 degrees.
void CKvEquidistantConicEllipsoid::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  const double mid = 0.5 * (m_dLat1 + m_dLat2);
  Geo2Proj(m_dLonF - 3.0, std::max(mid - 3.0, -90.0), x0, y0);
  Geo2Proj(m_dLonF + 3.0, std::min(mid + 3.0, 90.0), x1, y1);
}

bool CKvEquidistantConicEllipsoid::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dA, m_dInvF);
  return true;
}
