#pragma once

// The latitude functions and trigonometric series the engines share, each
// written once.  Angles are radians unless a name says degrees; e is the
// first eccentricity, e2 its square, n the third flattening f / (2 - f).
//
// Sources: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2) for t, m, q
// and the isometric latitude; J. P. Snyder, "Map Projections: A Working
// Manual" (USGS PP 1395, 1987), eqs. 3-1, 3-12, 15-9 and 3-21, 3-26 for
// the authalic q and the meridian arc; C. F. F. Karney, "On auxiliary
// latitudes" (Survey Review, 2023; arXiv:2212.05818), appendix A, for the
// geodetic latitude as a series of the conformal one; C. W. Clenshaw
// (1955) for the summation of sine series.
//
// Functions that take sin phi and cos phi rather than phi let an engine
// form them once per point, and exactly at the poles with SinCosDeg.

#include <cmath>

#include "platform/KvConstants.h"

namespace KvAux {

// sin and cos of `degrees`, exact where the angle is a multiple of 90
// degrees: cos 90 is 0, not 6.1e-17, so a pole given as 90 is the pole.
// The reduction to [-45, 45] degrees is exact (Sterbenz), so the result is
// also as accurate as the library's sin and cos of the remainder.  The
// quadrant is rounded through an integer, which costs no library call;
// angles beyond 1e15 degrees, infinities and NaN give NaN.
inline void SinCosDeg(double degrees, double* sinOut, double* cosOut) {
  if (!(std::fabs(degrees) < 1e15)) {
    *sinOut = *cosOut = KvConst::kNaN;
    return;
  }
  const long long q = static_cast<long long>(degrees * (1.0 / 90.0) + (degrees < 0 ? -0.5 : 0.5));
  const double r = (degrees - 90.0 * static_cast<double>(q)) * KvConst::kDegToRad;
  const double s = std::sin(r), c = std::cos(r);
  switch (q & 3) {
    case 1:
      *sinOut = c;
      *cosOut = -s;
      break;
    case 2:
      *sinOut = -s;
      *cosOut = -c;
      break;
    case 3:
      *sinOut = -c;
      *cosOut = s;
      break;
    default:
      *sinOut = s;
      *cosOut = c;
  }
  *cosOut += 0.0;  // -0 to +0, so that 1 / cos 90 is +infinity on both sides
}

// tan(pi/4 - phi/2) of a latitude in degrees, formed from the angle in
// degrees: 45 - lat/2 on the northern half, where the difference is exact
// near the pole, and the reciprocal of tan(45 + lat/2) on the southern half
// for the same reason at the south pole.  So it keeps its relative accuracy
// where tan(pi/4 - phi/2) in radians loses eight digits within 1e-6 degree
// of the north pole.  0 at the north pole, +infinity at the south pole,
// negative beyond the north pole.
inline double HalfColatitudeTan(double latDegrees) {
  if (latDegrees >= 0.0) return std::tan((45.0 - 0.5 * latDegrees) * KvConst::kDegToRad);
  return 1.0 / std::tan((45.0 + 0.5 * latDegrees) * KvConst::kDegToRad);
}

// Guidance Note 7-2's conformal function of a latitude in degrees,
//   t = tan(pi/4 - phi/2) / ((1 - e sin phi) / (1 + e sin phi))^(e/2),
// the exponential of minus the isometric latitude.
inline double ConformalT(double latDegrees, double e) {
  const double eSinPhi = e * std::sin(latDegrees * KvConst::kDegToRad);
  return HalfColatitudeTan(latDegrees) * std::pow((1.0 - eSinPhi) / (1.0 + eSinPhi), -0.5 * e);
}

// t^n for the cones: exp(n (ln tan(pi/4 - phi/2) + e atanh(e sin phi))),
// one exponential and two logarithms where t and its power would take two
// powers.  At and beyond the north pole, where tan(pi/4 - phi/2) <= 0, t
// counts as 0 (so t^n is 0 for n > 0 and infinite for n < 0).
inline double ConformalTPower(double latDegrees, double e, double n) {
  const double h = HalfColatitudeTan(latDegrees);
  if (!(h > 0.0)) return h <= 0.0 ? std::pow(0.0, n) : h;  // NaN stays NaN
  return std::exp(
      n * (std::log(h) + e * std::atanh(e * std::sin(latDegrees * KvConst::kDegToRad))));
}

// The latitude of conformal function value t >= 0 (Guidance Note 7-2, the
// reverse of the Lambert conic): phi = pi/2 - 2 atan(t ((1 - e sin phi) /
// (1 + e sin phi))^(e/2)), iterated from the spherical value until two
// successive latitudes differ by less than 1e-12 rad, at most 100 times
// (usually five or six).  A NaN t ends the iteration at once.
inline double LatitudeFromConformalT(double t, double e) {
  constexpr double kTolerance = 1e-12;
  constexpr int kMaxIterations = 100;
  const double halfE = 0.5 * e;
  double phi = KvConst::kHalfPi - 2.0 * std::atan(t);
  for (int i = 0; i < kMaxIterations; ++i) {
    const double eSinPhi = e * std::sin(phi);
    const double next =
        KvConst::kHalfPi - 2.0 * std::atan(t * std::pow((1.0 - eSinPhi) / (1.0 + eSinPhi), halfE));
    const bool converged = !(std::fabs(next - phi) >= kTolerance);
    phi = next;
    if (converged) break;
  }
  return phi;
}

// The isometric latitude psi = asinh(tan phi) - e atanh(e sin phi), which
// is -ln t; +-infinity at the poles.
inline double IsometricLatitude(double sinPhi, double cosPhi, double e) {
  return std::asinh(sinPhi / cosPhi) - e * std::atanh(e * sinPhi);
}

// sin chi and cos chi of the angle chi = gd psi whose isometric latitude is
// psi (sin chi = tanh psi, cos chi = sech psi), from one exponential v =
// exp(-|psi|): sin chi = (1 - v^2) / (1 + v^2), cos chi = 2v / (1 + v^2).
// Near the equator 1 - v^2 is formed as -w (2 + w) from w = v - 1 =
// expm1(-|psi|), so both keep their relative accuracy everywhere; psi =
// +-inf gives the poles exactly.
inline void SinCosOfIsometric(double psi, double* sinOut, double* cosOut) {
  const double a = std::fabs(psi);
  double v, oneMinusV2;
  if (a < 0.35) {
    const double w = std::expm1(-a);
    v = 1.0 + w;
    oneMinusV2 = -w * (2.0 + w);
  } else {
    v = std::exp(-a);
    oneMinusV2 = 1.0 - v * v;
  }
  const double d = 1.0 + v * v;
  *sinOut = std::copysign(oneMinusV2 / d, psi);
  *cosOut = 2.0 * v / d;
}

// A longitude difference in radians reduced to [-pi, pi], exactly (the
// remainder of a division is exact); differences already in range, the
// usual case, pass untouched.
inline double ReducedLongitude(double dLambda) {
  if (std::fabs(dLambda) <= KvConst::kPi) return dLambda;
  return std::remainder(dLambda, 2.0 * KvConst::kPi);
}

// The same in degrees, [-180, 180], for engines that keep their longitudes
// in degrees as callers pass them (exactly 180 stays 180).
inline double ReducedLongitudeDeg(double degrees) {
  if (std::fabs(degrees) <= 180.0) return degrees;
  return std::remainder(degrees, 360.0);
}

// m = cos phi / sqrt(1 - e^2 sin^2 phi): the radius of the parallel in
// units of the semi-major axis (Guidance Note 7-2's m).
inline double ParallelRadius(double sinPhi, double cosPhi, double e2) {
  return cosPhi / std::sqrt(1.0 - e2 * sinPhi * sinPhi);
}

// Snyder's authalic q = (1 - e^2) [sin phi / (1 - e^2 sin^2 phi) -
// ln((1 - e sin phi) / (1 + e sin phi)) / (2e)], with the logarithm written
// as 2 atanh(e sin phi), whose quotient by e has no cancellation for small
// e; a sphere (e = 0) gives its limit 2 sin phi.  q at the pole is qP.
inline double AuthalicQ(double sinPhi, double e) {
  const double e2 = e * e;
  const double eSinPhi = e * sinPhi;
  const double atanhTerm = e == 0.0 ? sinPhi : std::atanh(eSinPhi) / e;
  return (1.0 - e2) * (sinPhi / (1.0 - eSinPhi * eSinPhi) + atanhTerm);
}

// Clenshaw's sum of c[k] sin(2(k + 1) x), k = 0 .. count - 1, from sin 2x
// and cos 2x.
inline double ClenshawSin(const double* c, int count, double sin2x, double cos2x) {
  if (count <= 0) return 0.0;
  const double t = 2.0 * cos2x;
  double h1 = c[count - 1];  // the first step of the recurrence, from h = 0
  double h2 = 0.0;
  for (int k = count - 2; k >= 0; --k) {
    const double h0 = t * h1 - h2 + c[k];
    h2 = h1;
    h1 = h0;
  }
  return sin2x * h1;
}

// The geodetic latitude phi of the authalic latitude beta, given as sin
// beta and cos beta (so that the caller keeps cos beta accurate near the
// poles), of an ellipsoid with eccentricity e and pole value qP = q(pi/2):
// the series phi = beta + c[0] sin 2beta + c[1] sin 4beta + c[2] sin 6beta
// (Guidance Note 7-2's three terms in e^2, as CKvMapProjData::
// ComputeFourierCoefficients gives them; they leave 2.5e-10 rad, 1.6 mm,
// on WGS 84), then one Newton step on q(phi) = qP sin beta (Snyder 3-16),
// which leaves less than 1e-15 rad.  Within 1e-3 rad of a pole, where
// dq/dphi vanishes and the series' error shrinks below 5e-14 rad, the
// step is left out.
inline double LatitudeFromAuthalic(double sinBeta, double cosBeta, double qP, double e,
                                   const double* c) {
  constexpr double kNewtonCosMin = 1e-3;
  const double beta = std::atan2(sinBeta, cosBeta);
  double phi =
      beta + ClenshawSin(c, 3, 2.0 * sinBeta * cosBeta, (cosBeta - sinBeta) * (cosBeta + sinBeta));
  const double sinPhi = std::sin(phi), cosPhi = std::cos(phi);
  if (cosPhi > kNewtonCosMin) {
    const double e2 = e * e;
    const double w = 1.0 - e2 * sinPhi * sinPhi;
    phi += (qP * sinBeta - AuthalicQ(sinPhi, e)) * w * w / (2.0 * (1.0 - e2) * cosPhi);
  }
  return phi;
}

// The same sum at the complex argument u + iv, from sin 2u, cos 2u,
// sinh 2v and cosh 2v: the real part is sum c sin(2ku) cosh(2kv), the
// imaginary part sum c cos(2ku) sinh(2kv).
inline void ClenshawSinComplex(const double* c, int count, double sin2u, double cos2u,
                               double sinh2v, double cosh2v, double* real, double* imag) {
  if (count <= 0) {
    *real = *imag = 0.0;
    return;
  }
  // 2 cos(2(u + jv)) = r + j i, with j the imaginary unit
  const double r = 2.0 * cos2u * cosh2v;
  const double i = -2.0 * sin2u * sinh2v;
  // the first step of the recurrence, from h = 0
  double hr1 = c[count - 1], hi1 = 0.0, hr2 = 0.0, hi2 = 0.0;
  for (int k = count - 2; k >= 0; --k) {
    const double hr0 = r * hr1 - i * hi1 - hr2 + c[k];
    const double hi0 = i * hr1 + r * hi1 - hi2;
    hr2 = hr1;
    hi2 = hi1;
    hr1 = hr0;
    hi1 = hi0;
  }
  // times sin(2(u + jv))
  const double sr = sin2u * cosh2v;
  const double si = cos2u * sinh2v;
  *real = sr * hr1 - si * hi1;
  *imag = sr * hi1 + si * hr1;
}

// The meridian arc from the equator, as a series in the third flattening
// n (Helmert's, to n^5, summed by Clenshaw): M = B (phi + sum d_k sin 2k
// phi) with the rectifying radius B = a (1 + n^2/4 + n^4/64) / (1 + n);
// and its inverse, the footpoint latitude phi = mu + sum u_k sin 2k mu of
// the rectifying latitude mu = M / B.  The terms to n^4 are Snyder's (3-21
// and 3-26 written in n).  The neglected n^6 terms amount to about 1e-10 m
// on terrestrial ellipsoids.
class CKvMeridianArc {
 public:
  CKvMeridianArc(double a, double f) {
    const double n = f / (2.0 - f);
    const double n2 = n * n, n3 = n2 * n, n4 = n3 * n, n5 = n4 * n;
    m_dB = a * (1.0 + n2 / 4.0 + n4 / 64.0) / (1.0 + n);
    m_adD[0] = -3.0 / 2.0 * n + 9.0 / 16.0 * n3 - 3.0 / 32.0 * n5;
    m_adD[1] = 15.0 / 16.0 * n2 - 15.0 / 32.0 * n4;
    m_adD[2] = -35.0 / 48.0 * n3 + 105.0 / 256.0 * n5;
    m_adD[3] = 315.0 / 512.0 * n4;
    m_adD[4] = -693.0 / 1280.0 * n5;
    m_adU[0] = 3.0 / 2.0 * n - 27.0 / 32.0 * n3 + 269.0 / 512.0 * n5;
    m_adU[1] = 21.0 / 16.0 * n2 - 55.0 / 32.0 * n4;
    m_adU[2] = 151.0 / 96.0 * n3 - 417.0 / 128.0 * n5;
    m_adU[3] = 1097.0 / 512.0 * n4;
    m_adU[4] = 8011.0 / 2560.0 * n5;
  }
  // The rectifying radius B: the quarter meridian is B pi / 2.
  double RectifyingRadius() const { return m_dB; }
  // M(phi), metres; odd in phi.
  double Distance(double phi) const {
    return m_dB * (phi + ClenshawSin(m_adD, 5, std::sin(2.0 * phi), std::cos(2.0 * phi)));
  }
  // The latitude whose arc is `distance` metres.
  double Latitude(double distance) const {
    const double mu = distance / m_dB;
    return mu + ClenshawSin(m_adU, 5, std::sin(2.0 * mu), std::cos(2.0 * mu));
  }
  // M(phi) from sin phi and cos phi as well, for callers that have them:
  // sin 2phi and cos 2phi come from them instead of from two more calls.
  double Distance(double phi, double sinPhi, double cosPhi) const {
    return m_dB * (phi + ClenshawSin(m_adD, 5, 2.0 * sinPhi * cosPhi,
                                     (cosPhi - sinPhi) * (cosPhi + sinPhi)));
  }
  // The latitude whose arc is `distance` metres, with its sine and cosine,
  // from one sine and cosine of mu: the series' small sum d (below 0.003
  // rad on terrestrial ellipsoids) turns them by sin d and cos d, taken
  // from their Taylor series to d^7 while |d| < 0.01 (exact to rounding).
  double Latitude(double distance, double* sinPhi, double* cosPhi) const {
    const double mu = distance / m_dB;
    const double s = std::sin(mu), c = std::cos(mu);
    const double d = ClenshawSin(m_adU, 5, 2.0 * s * c, (c - s) * (c + s));
    double sinD, cosD;
    if (std::fabs(d) < 0.01) {
      const double d2 = d * d;
      sinD = d * (1.0 - d2 / 6.0 * (1.0 - d2 / 20.0 * (1.0 - d2 / 42.0)));
      cosD = 1.0 - d2 / 2.0 * (1.0 - d2 / 12.0 * (1.0 - d2 / 30.0));
    } else {
      sinD = std::sin(d);
      cosD = std::cos(d);
    }
    *sinPhi = s * cosD + c * sinD;
    *cosPhi = c * cosD - s * sinD;
    return mu + d;
  }

 private:
  double m_dB;
  double m_adD[5];
  double m_adU[5];
};

// The geodetic latitude phi of a conformal latitude chi, phi = chi + sum
// c_k sin 2k chi, with Karney's coefficients in the third flattening n to
// n^6 (summed by Clenshaw).  The neglected n^7 terms amount to 8e-18 rad on
// WGS 84, so the series is exact in double precision for terrestrial
// ellipsoids; a sphere (n = 0) gives phi = chi.
class CKvConformalLatitude {
 public:
  explicit CKvConformalLatitude(double f = 0.0) {
    const double n = f / (2.0 - f);
    const double n2 = n * n, n3 = n2 * n, n4 = n3 * n, n5 = n4 * n, n6 = n5 * n;
    m_adC[0] = 2.0 * n - 2.0 / 3.0 * n2 - 2.0 * n3 + 116.0 / 45.0 * n4 + 26.0 / 45.0 * n5 -
               2854.0 / 675.0 * n6;
    m_adC[1] = 7.0 / 3.0 * n2 - 8.0 / 5.0 * n3 - 227.0 / 45.0 * n4 + 2704.0 / 315.0 * n5 +
               2323.0 / 945.0 * n6;
    m_adC[2] = 56.0 / 15.0 * n3 - 136.0 / 35.0 * n4 - 1262.0 / 105.0 * n5 + 73814.0 / 2835.0 * n6;
    m_adC[3] = 4279.0 / 630.0 * n4 - 332.0 / 35.0 * n5 - 399572.0 / 14175.0 * n6;
    m_adC[4] = 4174.0 / 315.0 * n5 - 144838.0 / 6237.0 * n6;
    m_adC[5] = 601676.0 / 22275.0 * n6;
  }
  // phi in radians of the conformal latitude chi, from sin chi and cos chi.
  double Geodetic(double sinChi, double cosChi) const {
    const double s = sinChi, c = cosChi;
    return std::atan2(s, c) + ClenshawSin(m_adC, 6, 2.0 * s * c, (c - s) * (c + s));
  }

 private:
  double m_adC[6];
};

}  // namespace KvAux
