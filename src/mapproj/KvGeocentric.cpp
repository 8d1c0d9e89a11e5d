#include "mapproj/KvGeocentric.h"

#include <cmath>

#include "platform/KvConstants.h"

namespace {

// Points closer to the centre than this fraction of a are solved by
// bisection.
constexpr double kDeepInside = 0.25;
// More than enough halvings to shrink any bracket of doubles to one ulp.
constexpr int kMaxBisections = 2200;

// The foot of (p, z), z >= 0, on the meridian ellipse with semi-axes a
// (equatorial) and b (polar): the nearest point (x, y).  Eberly's
// bisection, with the parameter shifted by b^2 (s = t + b^2) so that no
// difference of two large numbers is taken.
void Foot(double a, double b, double p, double z, double* x, double* y) {
  const double c2 = (a - b) * (a + b);  // a^2 - b^2
  if (z > 0.0 && p > 0.0) {
    double lo = b * z, hi = std::hypot(a * p, b * z);
    for (int i = 0; i < kMaxBisections; ++i) {
      const double s = 0.5 * (lo + hi);
      if (s <= lo || s >= hi) break;
      const double u = a * p / (s + c2), v = b * z / s;
      const double F = u * u + v * v - 1.0;
      if (F > 0.0) {
        lo = s;
      } else if (F < 0.0) {
        hi = s;
      } else {
        lo = hi = s;
      }
    }
    const double s = 0.5 * (lo + hi);
    *x = a * a * p / (s + c2);
    *y = b * b * z / s;
  } else if (z > 0.0) {
    *x = 0.0;
    *y = b;
  } else if (a * p < c2) {
    // Inside the evolute on the equatorial plane: the feet lie off it.
    *x = a * a * p / c2;
    const double q = *x / a;
    *y = b * std::sqrt(std::fmax(0.0, 1.0 - q * q));
  } else {
    *x = a;
    *y = 0.0;
  }
}

}  // namespace

void CKvGeocentric::Geo2XYZ(const CKvEllipsoid& ellipsoid, double lon, double lat, double h,
                            double* X, double* Y, double* Z) {
  const double a = ellipsoid.GetMajor();
  const double e = ellipsoid.GetEccentricity();
  const double e2 = e * e;
  const double phi = lat * KvConst::kDegToRad, lambda = lon * KvConst::kDegToRad;
  const double sinPhi = std::sin(phi);
  const double N = a / std::sqrt(1.0 - e2 * sinPhi * sinPhi);
  *X = (N + h) * std::cos(phi) * std::cos(lambda);
  *Y = (N + h) * std::cos(phi) * std::sin(lambda);
  *Z = ((1.0 - e2) * N + h) * sinPhi;
}

void CKvGeocentric::XYZ2Geo(const CKvEllipsoid& ellipsoid, double X, double Y, double Z,
                            double* lon, double* lat, double* h) {
  const double a = ellipsoid.GetMajor(), b = ellipsoid.GetMinor();
  const double e = ellipsoid.GetEccentricity();
  const double e2 = e * e;
  const double ep2 = e2 / (1.0 - e2);  // e'^2, the second eccentricity squared
  const double p = std::hypot(X, Y);
  const double lambda = std::atan2(Y, X);
  double phi, sinPhi, cosPhi;
  if (std::hypot(p, Z) < kDeepInside * a) {
    double x, y;
    Foot(a, b, p, std::fabs(Z), &x, &y);
    phi = std::copysign(std::atan2(a * a * y, b * b * x), Z);
    sinPhi = std::sin(phi);
    cosPhi = std::cos(phi);
  } else {
    // Bowring: a first estimate of the parametric latitude u, then
    // tan(phi) = (Z + e'^2 b sin^3 u) / (p - e^2 a cos^3 u).
    const double r = std::hypot(p, Z);
    const double u = std::atan2(Z * (b / a + a * e2 / r), p);
    const double sinU = std::sin(u), cosU = std::cos(u);
    phi = std::atan2(Z + ep2 * b * sinU * sinU * sinU, p - e2 * a * cosU * cosU * cosU);
    sinPhi = std::sin(phi);
    cosPhi = std::cos(phi);
    // One Newton step on F(phi) = p sin(phi) - Z cos(phi) - e^2 N sin(phi)
    // cos(phi), which is zero when the point lies on the normal at phi.  The
    // step is below 1e-12 rad, so sin and cos follow to first order.
    const double W2 = 1.0 - e2 * sinPhi * sinPhi;
    const double N = a / std::sqrt(W2);
    const double F = p * sinPhi - Z * cosPhi - e2 * N * sinPhi * cosPhi;
    const double dF = p * cosPhi + Z * sinPhi -
                      e2 * N * ((cosPhi - sinPhi) * (cosPhi + sinPhi) + e2 * sinPhi * sinPhi * cosPhi * cosPhi / W2);
    const double step = -F / dF;
    phi += step;
    const double s = sinPhi + step * cosPhi, c = cosPhi - step * sinPhi;
    sinPhi = s;
    cosPhi = c;
  }
  // The height along the normal, without dividing by cos(phi): exact on the
  // polar axis as well.
  *h = p * cosPhi + Z * sinPhi - a * std::sqrt(1.0 - e2 * sinPhi * sinPhi);
  *lon = lambda * KvConst::kRadToDeg;
  *lat = phi * KvConst::kRadToDeg;
}
