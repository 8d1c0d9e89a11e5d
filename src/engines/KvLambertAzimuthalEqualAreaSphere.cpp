#include "engines/KvLambertAzimuthalEqualAreaSphere.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

// A centre at a pole needs no formulas of its own: sin and cos of +-90
// degrees are exact, so the oblique ones reduce to Snyder's polar ones.
CKvLambertAzimuthalEqualAreaSphere::CKvLambertAzimuthalEqualAreaSphere(const CKvEllipsoid& sphere,
                                                                       double centreLongitude,
                                                                       double originLatitude,
                                                                       double falseEasting,
                                                                       double falseNorthing)
    : m_dR(sphere.GetMajor()),
      m_dInvF(sphere.GetInvFlatness()),
      m_dLon0(centreLongitude),
      m_dLat1(originLatitude),
      m_dFE(falseEasting),
      m_dFN(falseNorthing) {
  KvAux::SinCosDeg(originLatitude, &m_dSinPhi1, &m_dCosPhi1);
}

CKvLambertAzimuthalEqualAreaSphere::~CKvLambertAzimuthalEqualAreaSphere() = default;

// Snyder, chapter 24, forward: k' = (2 / (1 + sin phi1 sin phi + cos phi1
// cos phi cos(lambda - lambda0)))^0.5, x = R k' cos phi sin(lambda -
// lambda0), y = R k' (cos phi1 sin phi - sin phi1 cos phi cos(lambda -
// lambda0)).
void CKvLambertAzimuthalEqualAreaSphere::Geo2Proj(double lon, double lat, double* x, double* y) {
  double sinPhi, cosPhi, sinDl, cosDl;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  KvAux::SinCosDeg(KvAux::ReducedLongitudeDeg(lon - m_dLon0), &sinDl, &cosDl);
  // Half the squared distance of the point from the centre's antipode: the
  // denominator of k' without its cancellation there.
  const double u = cosPhi * cosDl + m_dCosPhi1, v = cosPhi * sinDl, w = sinPhi + m_dSinPhi1;
  const double sum = 0.5 * (u * u + v * v + w * w);
  if (!(sum > 0.0)) {
    // The antipode: the bottom of the boundary circle.
    *x = m_dFE;
    *y = m_dFN - 2.0 * m_dR;
    return;
  }
  const double kP = std::sqrt(2.0 / sum);
  *x = m_dFE + m_dR * kP * cosPhi * sinDl;
  *y = m_dFN + m_dR * kP * (m_dCosPhi1 * sinPhi - m_dSinPhi1 * cosPhi * cosDl);
}

// Snyder, chapter 24, reverse: rho = (x^2 + y^2)^0.5, c = 2 asin(rho
// / 2R), phi = asin(cos c sin phi1 + y sin c cos phi1 / rho), lambda =
// lambda0 + atan2(x sin c, rho cos phi1 cos c - y sin phi1 sin c); sin c and
// cos c from sin(c/2) = rho / 2R.
void CKvLambertAzimuthalEqualAreaSphere::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double dx = x - m_dFE, dy = y - m_dFN;
  const double rho = std::sqrt(dx * dx + dy * dy);
  if (rho == 0.0) {
    *lon = m_dLon0;
    *lat = m_dLat1;
    return;
  }
  double h = rho / (2.0 * m_dR);
  if (h > 1.0 && h - 1.0 < KvConst::kRelativeTolerance) h = 1.0;
  const double sinC = 2.0 * h * std::sqrt((1.0 - h) * (1.0 + h));  // NaN beyond the boundary
  const double cosC = 1.0 - 2.0 * h * h;
  // The point's unit vector, in the frame of the centre's meridian: its z is
  // sin phi, its azimuth the arctangent's argument for lambda (divided by
  // rho), and cos phi the length of its equatorial part, accurate at the
  // poles where asin is not.
  const double east = dx / rho, north = dy / rho;
  const double px = m_dCosPhi1 * cosC - m_dSinPhi1 * sinC * north;
  const double py = sinC * east;
  const double pz = m_dSinPhi1 * cosC + m_dCosPhi1 * sinC * north;
  *lon = KvAux::ReducedLongitudeDeg(m_dLon0 + std::atan2(py, px) * KvConst::kRadToDeg);
  *lat = std::atan2(pz, std::sqrt(px * px + py * py)) * KvConst::kRadToDeg;
}

void CKvLambertAzimuthalEqualAreaSphere::GetOrigin(double* lon, double* lat) {
  *lon = m_dLon0;
  *lat = m_dLat1;
}

// The centre +-3 degrees; at a pole the square about it that holds the cap
// within 3 degrees, from two opposite corners on the 87th parallel.
void CKvLambertAzimuthalEqualAreaSphere::GetDefaultArea(double* x0, double* y0, double* x1,
                                                        double* y1) {
  if (m_dCosPhi1 == 0.0 && m_dSinPhi1 > 0.0) {
    Geo2Proj(m_dLon0 - 45.0, 87.0, x0, y0);
    Geo2Proj(m_dLon0 + 135.0, 87.0, x1, y1);
  } else if (m_dCosPhi1 == 0.0) {
    Geo2Proj(m_dLon0 - 135.0, -87.0, x0, y0);
    Geo2Proj(m_dLon0 + 45.0, -87.0, x1, y1);
  } else {
    Geo2Proj(m_dLon0 - 3.0, std::max(m_dLat1 - 3.0, -90.0), x0, y0);
    Geo2Proj(m_dLon0 + 3.0, std::min(m_dLat1 + 3.0, 90.0), x1, y1);
  }
}

bool CKvLambertAzimuthalEqualAreaSphere::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dR, m_dInvF);
  return true;
}
