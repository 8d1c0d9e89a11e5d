#include "engines/KvAlbersEqualAreaEllipsoid.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMapProjData.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvConeGeometry.h"
#include "platform/KvConstants.h"

// EPSG Guidance Note 7-2, method 9822: alpha1, alpha2, alphaF, m1, m2, n, C
// and rho0 (here r0 = n rho0).
CKvAlbersEqualAreaEllipsoid::CKvAlbersEqualAreaEllipsoid(const CKvEllipsoid& ellipsoid,
                                                         double parallel1, double parallel2,
                                                         double originLongitude,
                                                         double originLatitude, double falseEasting,
                                                         double falseNorthing)
    : m_dA(ellipsoid.GetMajor()),
      m_dInvF(ellipsoid.GetInvFlatness()),
      m_dE(ellipsoid.GetEccentricity()),
      m_dLonF(originLongitude),
      m_dLatF(originLatitude),
      m_dLat1(parallel1),
      m_dLat2(parallel2),
      m_dFE(falseEasting),
      m_dFN(falseNorthing) {
  const double a = m_dA, e = m_dE, e2 = e * e;
  double sin1, cos1, sin2, cos2, sinF, cosF;
  KvAux::SinCosDeg(parallel1, &sin1, &cos1);
  KvAux::SinCosDeg(parallel2, &sin2, &cos2);
  KvAux::SinCosDeg(originLatitude, &sinF, &cosF);
  const double m1 = KvAux::ParallelRadius(sin1, cos1, e2);
  const double m2 = KvAux::ParallelRadius(sin2, cos2, e2);
  const double alpha1 = KvAux::AuthalicQ(sin1, e);
  const double alpha2 = KvAux::AuthalicQ(sin2, e);
  const double alphaF = KvAux::AuthalicQ(sinF, e);
  // Equal parallels are the tangent cone, the limit of the quotient.
  const double n = parallel1 == parallel2 ? sin1 : (m1 * m1 - m2 * m2) / (alpha2 - alpha1);
  const double C = m1 * m1 + n * alpha1;
  m_dN = n;
  m_dC = C;
  m_dAlphaF = alphaF;
  m_dR0 = a * std::sqrt(std::max(C - n * alphaF, 0.0));
  m_dQP = KvAux::AuthalicQ(1.0, e);
  CKvMapProjData::ComputeFourierCoefficients(CKvMapProjData::eAlbersEqualArea, false, e2, m_adC);
}

CKvAlbersEqualAreaEllipsoid::~CKvAlbersEqualAreaEllipsoid() = default;

// EPSG Guidance Note 7-2, method 9822, forward: rho = a (C - n alpha)^0.5 / n,
// theta = n (lambda - lambdaF), E = EF + rho sin theta, N = NF + rho0 - rho
// cos theta, with rho0 - rho = a^2 (alpha - alphaF) / (r0 + r).
void CKvAlbersEqualAreaEllipsoid::Geo2Proj(double lon, double lat, double* x, double* y) {
  const double a = m_dA;
  double sinPhi, cosPhi;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  const double alpha = KvAux::AuthalicQ(sinPhi, m_dE);
  const double r = a * std::sqrt(std::max(m_dC - m_dN * alpha, 0.0));
  const double dLambda = KvAux::ReducedLongitudeDeg(lon - m_dLonF) * KvConst::kDegToRad;
  double east, drop;
  KvCone::Bend(m_dN, r, dLambda, &east, &drop);
  // Both radii vanish only when the false origin and the point are the apex.
  const double sum = m_dR0 + r;
  const double rise = sum > 0.0 ? a * a * (alpha - m_dAlphaF) / sum : 0.0;
  *x = m_dFE + east;
  *y = m_dFN + rise + drop;
}

// EPSG Guidance Note 7-2, method 9822, reverse: alpha' = (C - rho'^2 n^2 /
// a^2) / n, which with rho'^2 = dx^2 + (rho0 - dy)^2 is alphaF + (2 r0 dy - n
// (dx^2 + dy^2)) / a^2; beta' = asin(alpha' / qP); theta' from the cone.
void CKvAlbersEqualAreaEllipsoid::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double a = m_dA;
  const double dx = x - m_dFE, dy = y - m_dFN;
  const double alpha = m_dAlphaF + (2.0 * m_dR0 * dy - m_dN * (dx * dx + dy * dy)) / (a * a);
  double sinBeta = alpha / m_dQP;
  // The pole itself may come back a rounding error beyond it.
  if (std::fabs(sinBeta) > 1.0 && std::fabs(sinBeta) - 1.0 < KvConst::kRelativeTolerance)
    sinBeta = std::copysign(1.0, sinBeta);
  const double cosBeta = std::sqrt((1.0 - sinBeta) * (1.0 + sinBeta));  // NaN beyond the pole
  const double phi = KvAux::LatitudeFromAuthalic(sinBeta, cosBeta, m_dQP, m_dE, m_adC);
  const double dLambda = KvCone::LongitudeDifference(m_dN, m_dR0, dx, dy);
  *lon = KvAux::ReducedLongitudeDeg(m_dLonF + dLambda * KvConst::kRadToDeg);
  *lat = phi * KvConst::kRadToDeg;
}

void CKvAlbersEqualAreaEllipsoid::GetOrigin(double* lon, double* lat) {
  *lon = m_dLonF;
  *lat = m_dLatF;
}

// Central meridian +-3 degrees, mean standard parallel +-3 degrees.
void CKvAlbersEqualAreaEllipsoid::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  const double mid = 0.5 * (m_dLat1 + m_dLat2);
  Geo2Proj(m_dLonF - 3.0, std::max(mid - 3.0, -90.0), x0, y0);
  Geo2Proj(m_dLonF + 3.0, std::min(mid + 3.0, 90.0), x1, y1);
}

bool CKvAlbersEqualAreaEllipsoid::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dA, m_dInvF);
  return true;
}
