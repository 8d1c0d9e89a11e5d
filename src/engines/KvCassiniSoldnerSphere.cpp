#include "engines/KvCassiniSoldnerSphere.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

namespace {

// Beyond this sine asin loses digits (its error grows as one over the
// cosine), and the arctangent of the unit vector's parts takes over.
constexpr double kAsinLimit = 0.99;

}  // namespace

CKvCassiniSoldnerSphere::CKvCassiniSoldnerSphere(const CKvEllipsoid& sphere, double centralMeridian,
                                                 double originLatitude, double falseEasting,
                                                 double falseNorthing)
    : m_dR(sphere.GetMajor()),
      m_dInvF(sphere.GetInvFlatness()),
      m_dLon0(centralMeridian),
      m_dLat0(originLatitude),
      m_dFE(falseEasting),
      m_dFN(falseNorthing),
      m_dPhi0(originLatitude * KvConst::kDegToRad) {}

CKvCassiniSoldnerSphere::~CKvCassiniSoldnerSphere() = default;

// Snyder, chapter 13, forward: x = R asin(cos phi sin(lambda - lambda0)), y =
// R (atan2(tan phi, cos(lambda - lambda0)) - phi0), both of the point's unit
// vector (X towards the origin's meridian on the equator, Y east of it, Z
// north); next to the poles of the transverse aspect, 90 degrees from the
// central meridian, where asin loses digits, x is the arctangent of Y and
// the length of the rest.
void CKvCassiniSoldnerSphere::Geo2Proj(double lon, double lat, double* x, double* y) {
  double sinPhi, cosPhi, sinDl, cosDl;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  KvAux::SinCosDeg(KvAux::ReducedLongitudeDeg(lon - m_dLon0), &sinDl, &cosDl);
  const double X = cosPhi * cosDl, Y = cosPhi * sinDl, Z = sinPhi;
  const double xr =
      std::fabs(Y) < kAsinLimit ? std::asin(Y) : std::atan2(Y, std::sqrt(X * X + Z * Z));
  *x = m_dFE + m_dR * xr;
  *y = m_dFN + m_dR * (std::atan2(Z, X) - m_dPhi0);
}

// Snyder, chapter 13, reverse: D = y / R + phi0, phi = asin(sin D cos(x / R)),
// lambda = lambda0 + atan2(tan(x / R), cos D), from the point's unit vector
// likewise; near the poles, where asin loses digits, phi is the arctangent
// of its z and the length of its equatorial part.
void CKvCassiniSoldnerSphere::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double xr = (x - m_dFE) / m_dR;
  const double D = (y - m_dFN) / m_dR + m_dPhi0;
  const double X = std::cos(xr) * std::cos(D), Y = std::sin(xr), Z = std::cos(xr) * std::sin(D);
  const double phi =
      std::fabs(Z) < kAsinLimit ? std::asin(Z) : std::atan2(Z, std::sqrt(X * X + Y * Y));
  *lon = KvAux::ReducedLongitudeDeg(m_dLon0 + std::atan2(Y, X) * KvConst::kRadToDeg);
  *lat = phi * KvConst::kRadToDeg;
}

void CKvCassiniSoldnerSphere::GetOrigin(double* lon, double* lat) {
  *lon = m_dLon0;
  *lat = m_dLat0;
}

void CKvCassiniSoldnerSphere::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  Geo2Proj(m_dLon0 - 3.0, std::max(m_dLat0 - 3.0, -90.0), x0, y0);
  Geo2Proj(m_dLon0 + 3.0, std::min(m_dLat0 + 3.0, 90.0), x1, y1);
}

bool CKvCassiniSoldnerSphere::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dR, m_dInvF);
  return true;
}
