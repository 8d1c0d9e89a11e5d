#include "mapproj/KvGeodesicInverse.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "platform/KvConstants.h"

namespace {

constexpr double kMachineEpsilon = std::numeric_limits<double>::epsilon();
// Newton (with bisection) steps on alpha1.  Newton alone needs 2 to 4; the
// cap only matters if the bisection fallback runs all the way down.
constexpr int kMaxIterations = 200;
// |lambda12(alpha1) - lambda12| small enough to stop: a few units in the
// last place of angles near pi, about 10 nm at the second point.  lambda12 is
// not computed more closely than that even for short lines (omega12 comes
// from products of unit vectors), so this is also the floor.
constexpr double kLambdaTolerance = 8 * kMachineEpsilon;
// A Newton correction to alpha1 this small (radians) is the last one needed:
// the step is taken and the loop ends.
constexpr double kAlphaTolerance = 4 * kMachineEpsilon;
// The astroid start is used when the second point lies within this many
// units of f pi a cos^2(beta1) of the antipode of the first.
constexpr double kAstroidReach = 4.0;
constexpr int kMaxAstroidIterations = 60;

// Error-free sum: s + t == x + y exactly (Knuth's two-sum).
void TwoSum(double x, double y, double& s, double& t) {
  s = x + y;
  const double yy = s - x;
  const double xx = s - yy;
  t = (x - xx) + (y - yy);
}

// Sine and cosine of an angle in degrees, exact at multiples of 90 degrees
// and accurate near them: the angle is reduced to -45..45 before it goes to
// radians.
void SinCosDeg(double x, double& sinx, double& cosx) {
  int quadrant = 0;
  const double r = std::remquo(x, 90.0, &quadrant) * KvConst::kDegToRad;
  const double s = std::sin(r);
  const double c = std::cos(r);
  switch (static_cast<unsigned>(quadrant) & 3U) {
    case 0:
      sinx = s;
      cosx = c;
      break;
    case 1:
      sinx = c;
      cosx = -s;
      break;
    case 2:
      sinx = -s;
      cosx = -c;
      break;
    default:
      sinx = -c;
      cosx = s;
      break;
  }
  sinx += 0.0;  // no negative zeros out of the quadrant swaps
  cosx += 0.0;
}

// lon2 - lon1 reduced to -180..180, and 180 - |lon2 - lon1|, both with the
// rounding of the subtraction carried: the longitudes are reduced first (an
// exact operation), subtracted by two-sum, the sum reduced again (exact) and
// its rounding error added at the end.  Longitudes such as 179.9999999 and
// -179.9999999 thus give their small difference to full relative precision.
void LonDiff(double lon1, double lon2, double& lon12, double& lon12Supplement) {
  double d = 0.0;
  double t = 0.0;
  TwoSum(std::remainder(-lon1, 360.0), std::remainder(lon2, 360.0), d, t);
  d = std::remainder(d, 360.0);
  if (d == 180.0 && t > 0.0) d = -180.0;
  if (d == -180.0 && t < 0.0) d = 180.0;
  lon12 = d + t;
  const double sign = lon12 < 0.0 ? -1.0 : 1.0;
  lon12Supplement = (180.0 - sign * d) - sign * t;
}

void Normalize(double& y, double& x) {
  const double r = std::sqrt(x * x + y * y);
  y /= r;
  x /= r;
}

// alpha1 is carried as its sine and cosine, which keep full relative
// precision near 0, 90 and 180 degrees; near 90 degrees lambda12(alpha1) can
// be so steep (points close to the equator) that the angle itself in radians
// could not resolve the root.
struct SDirection {
  double s, c;
};

// a < b for directions in 0..180 degrees.
bool Before(const SDirection& a, const SDirection& b) { return a.c * b.s - a.s * b.c > 0.0; }

SDirection Rotate(const SDirection& a, double angle) {
  const double s = std::sin(angle);
  const double c = std::cos(angle);
  SDirection r{a.s * c + a.c * s, a.c * c - a.s * s};
  Normalize(r.s, r.c);
  return r;
}

// The direction halfway between a and b (0..180 degrees apart, b after a).
SDirection Halfway(const SDirection& a, const SDirection& b) {
  SDirection r{a.s + b.s, a.c + b.c};
  if (r.s == 0.0 && r.c == 0.0) return SDirection{1.0, 0.0};  // 0 and 180 degrees
  Normalize(r.s, r.c);
  return r;
}

// sum_{l=1..count} c[l-1] sin(2 l sigma) by Clenshaw's recurrence, from sin
// and cos of sigma.
double SinSeries(double sinSigma, double cosSigma, const double* c, int count) {
  const double twoCos2Sigma = 2.0 * (cosSigma - sinSigma) * (cosSigma + sinSigma);
  double b1 = 0.0;
  double b2 = 0.0;
  for (int l = count - 1; l >= 0; --l) {
    const double b0 = c[l] + twoCos2Sigma * b1 - b2;
    b2 = b1;
    b1 = b0;
  }
  return 2.0 * sinSigma * cosSigma * b1;
}

// I1(sigma) = A1 (sigma + sum C1l sin 2 l sigma), the distance integral.
double A1(double eps) {
  const double e2 = eps * eps;
  return (1.0 + e2 * (1.0 / 4 + e2 * (1.0 / 64 + e2 / 256))) / (1.0 - eps);
}

void C1(double eps, double c[6]) {
  const double e2 = eps * eps;
  double d = eps;
  c[0] = d * (-1.0 / 2 + e2 * (3.0 / 16 - e2 / 32));
  d *= eps;
  c[1] = d * (-1.0 / 16 + e2 * (1.0 / 32 - e2 * 9 / 2048));
  d *= eps;
  c[2] = d * (-1.0 / 48 + e2 * 3 / 256);
  d *= eps;
  c[3] = d * (-5.0 / 512 + e2 * 3 / 512);
  d *= eps;
  c[4] = d * (-7.0 / 1280);
  d *= eps;
  c[5] = d * (-7.0 / 2048);
}

// I2(sigma) = A2 (sigma + sum C2l sin 2 l sigma), the integral in the reduced
// length.
double A2(double eps) {
  const double e2 = eps * eps;
  return (1.0 - eps) * (1.0 + e2 * (1.0 / 4 + e2 * (9.0 / 64 + e2 * 25 / 256)));
}

void C2(double eps, double c[6]) {
  const double e2 = eps * eps;
  double d = eps;
  c[0] = d * (1.0 / 2 + e2 * (1.0 / 16 + e2 / 32));
  d *= eps;
  c[1] = d * (3.0 / 16 + e2 * (1.0 / 32 + e2 * 35 / 2048));
  d *= eps;
  c[2] = d * (5.0 / 48 + e2 * 5 / 256);
  d *= eps;
  c[3] = d * (35.0 / 512 + e2 * 7 / 512);
  d *= eps;
  c[4] = d * (63.0 / 1280);
  d *= eps;
  c[5] = d * (77.0 / 2048);
}

// eps = (sqrt(1 + k^2) - 1) / (sqrt(1 + k^2) + 1), written without the
// cancellation.
double Eps(double k2) { return k2 / (2.0 * (1.0 + std::sqrt(1.0 + k2)) + k2); }

// sigma12 from the sines and cosines at both ends; the first northward
// crossing of beta2 lies within half a great circle, so 0 <= sigma12 <= pi
// and a slightly negative cross product is rounding.
double Sigma12(double sinSigma1, double cosSigma1, double sinSigma2, double cosSigma2) {
  return std::atan2(std::max(0.0, cosSigma1 * sinSigma2 - sinSigma1 * cosSigma2),
                    cosSigma1 * cosSigma2 + sinSigma1 * sinSigma2);
}

// The positive root mu of the astroid equation
//   x^2 / (1 + mu)^2 + y^2 / mu^2 = 1,
// equivalently mu^4 + 2 mu^3 + (1 - x^2 - y^2) mu^2 - 2 y^2 mu - y^2 = 0,
// for y != 0.  The left side is convex and falling for mu > 0, so Newton's
// method started below the root climbs to it without overshooting.
double AstroidRoot(double x, double y) {
  const double ax = std::fabs(x);
  const double ay = std::fabs(y);
  // Each term is at most 1 and one of them at least 1/2 at the root.
  double upper = std::max(std::sqrt(2.0) * ay, std::sqrt(2.0) * ax - 1.0);
  if (ax < 1.0) upper = std::min(upper, ay / std::sqrt(1.0 - ax * ax));
  const double t = ax / (1.0 + upper);
  double mu = std::max(ay / std::sqrt(std::max(1.0 - t * t, kMachineEpsilon)), ax - 1.0);
  mu = std::max(mu, ay);
  for (int i = 0; i < kMaxAstroidIterations; ++i) {
    const double p = 1.0 + mu;
    const double g = x * x / (p * p) + y * y / (mu * mu) - 1.0;
    const double dg = -2.0 * (x * x / (p * p * p) + y * y / (mu * mu * mu));
    const double next = mu - g / dg;
    if (!(next > mu)) break;  // at the root to rounding
    const bool done = next - mu <= 1e-12 * next;
    mu = next;
    if (done) break;
  }
  return mu;
}

}  // namespace

// Where the geodesic leaving point 1 at azimuth alpha1 first crosses the
// parallel beta2 heading north (cos alpha2 >= 0), and lambda12 there.
struct CKvGeodesicInverse::SArc {
  double sinAlpha2, cosAlpha2;
  double sinSigma1, cosSigma1, sinSigma2, cosSigma2, sigma12;
  double eps;
  double lambda12;
  double dLambda12;  // d lambda12 / d alpha1
};

CKvGeodesicInverse::CKvGeodesicInverse(double a, double f)
    : m_a(a),
      m_f(f),
      m_b(a * (1.0 - f)),
      m_e2(f * (2.0 - f)),
      m_ep2(m_e2 / ((1.0 - f) * (1.0 - f))),
      m_n(f / (2.0 - f)),
      m_A3x(),
      m_C3x() {
  const double n = m_n;
  const double n2 = n * n;
  // A3 = 1 - (1/2 - n/2) eps - (1/4 + n/8 - 3n^2/8) eps^2
  //        - (1/16 + 3n/16 + n^2/16) eps^3 - (3/64 + n/32) eps^4 - 3/128 eps^5
  m_A3x[0] = 1.0;
  m_A3x[1] = -(1.0 / 2 - n / 2);
  m_A3x[2] = -(1.0 / 4 + n / 8 - 3 * n2 / 8);
  m_A3x[3] = -(1.0 / 16 + 3 * n / 16 + n2 / 16);
  m_A3x[4] = -(3.0 / 64 + n / 32);
  m_A3x[5] = -3.0 / 128;
  // C31 = (1/4 - n/4) eps + (1/8 - n^2/8) eps^2 + (3/64 + 3n/64 - n^2/64) eps^3
  //       + (5/128 + n/64) eps^4 + 3/128 eps^5
  m_C3x[0][0] = 1.0 / 4 - n / 4;
  m_C3x[0][1] = 1.0 / 8 - n2 / 8;
  m_C3x[0][2] = 3.0 / 64 + 3 * n / 64 - n2 / 64;
  m_C3x[0][3] = 5.0 / 128 + n / 64;
  m_C3x[0][4] = 3.0 / 128;
  // C32 = (1/16 - 3n/32 + n^2/32) eps^2 + (3/64 - n/32 - 3n^2/64) eps^3
  //       + (3/128 + n/128) eps^4 + 5/256 eps^5
  m_C3x[1][1] = 1.0 / 16 - 3 * n / 32 + n2 / 32;
  m_C3x[1][2] = 3.0 / 64 - n / 32 - 3 * n2 / 64;
  m_C3x[1][3] = 3.0 / 128 + n / 128;
  m_C3x[1][4] = 5.0 / 256;
  // C33 = (5/192 - 3n/64 + 5n^2/192) eps^3 + (3/128 - 5n/192) eps^4 + 7/512 eps^5
  m_C3x[2][2] = 5.0 / 192 - 3 * n / 64 + 5 * n2 / 192;
  m_C3x[2][3] = 3.0 / 128 - 5 * n / 192;
  m_C3x[2][4] = 7.0 / 512;
  // C34 = (7/512 - 7n/256) eps^4 + 7/512 eps^5
  m_C3x[3][3] = 7.0 / 512 - 7 * n / 256;
  m_C3x[3][4] = 7.0 / 512;
  // C35 = 21/2560 eps^5
  m_C3x[4][4] = 21.0 / 2560;
}

double CKvGeodesicInverse::_A3(double eps) const {
  double sum = 0.0;
  for (int j = 5; j >= 0; --j) sum = sum * eps + m_A3x[j];
  return sum;
}

void CKvGeodesicInverse::_C3(double eps, double c[5]) const {
  for (int l = 0; l < 5; ++l) {
    double sum = 0.0;
    for (int j = 4; j >= l; --j) sum = sum * eps + m_C3x[l][j];
    for (int j = 0; j < l; ++j) sum *= eps;
    c[l] = sum * eps;
  }
}

void CKvGeodesicInverse::_Arc(double sinBeta1, double cosBeta1, double sinBeta2, double cosBeta2,
                              double sinAlpha1, double cosAlpha1, SArc& arc) const {
  const double f = m_f;

  // Clairaut: sin alpha0 = sin alpha1 cos beta1.
  const double sinAlpha0 = sinAlpha1 * cosBeta1;
  const double cosAlpha0 =
      std::sqrt(cosAlpha1 * cosAlpha1 + (sinAlpha1 * sinBeta1) * (sinAlpha1 * sinBeta1));

  // tan sigma1 = tan beta1 / cos alpha1, tan omega1 = sin alpha0 tan sigma1.
  double sinSigma1 = sinBeta1;
  double cosSigma1 = cosAlpha1 * cosBeta1;
  const double sinOmega1 = sinAlpha0 * sinBeta1;
  const double cosOmega1 = cosSigma1;
  Normalize(sinSigma1, cosSigma1);

  // alpha2 from Clairaut, cos alpha2 >= 0:
  //   cos^2 alpha2 cos^2 beta2 = cos^2 alpha1 cos^2 beta1 + cos^2 beta2 - cos^2 beta1,
  // the difference written in whichever of cosines or sines varies faster
  // at beta1 (near the equator the cosines round to 1 and say nothing).
  const double sinAlpha2 = sinAlpha0 / cosBeta2;
  const double dCos2 = cosBeta1 < -sinBeta1 ? (cosBeta2 - cosBeta1) * (cosBeta2 + cosBeta1)
                                            : (sinBeta1 - sinBeta2) * (sinBeta1 + sinBeta2);
  const double cosAlpha1CosBeta1 = cosAlpha1 * cosBeta1;
  const double cosAlpha2 =
      std::sqrt(std::max(0.0, cosAlpha1CosBeta1 * cosAlpha1CosBeta1 + dCos2)) / cosBeta2;

  double sinSigma2 = sinBeta2;
  double cosSigma2 = cosAlpha2 * cosBeta2;
  const double sinOmega2 = sinAlpha0 * sinBeta2;
  const double cosOmega2 = cosSigma2;
  Normalize(sinSigma2, cosSigma2);

  const double sigma12 = Sigma12(sinSigma1, cosSigma1, sinSigma2, cosSigma2);
  // omega grows along the geodesic (sin alpha0 >= 0) and omega12 stays below
  // pi (1 + f) because lambda12 <= pi; atan2 folds values above pi to
  // negative ones, and values just below 0 are rounding.
  double omega12 = std::atan2(cosOmega1 * sinOmega2 - sinOmega1 * cosOmega2,
                              cosOmega1 * cosOmega2 + sinOmega1 * sinOmega2);
  omega12 = omega12 < -KvConst::kHalfPi ? omega12 + 2.0 * KvConst::kPi : std::max(0.0, omega12);

  const double k2 = m_ep2 * cosAlpha0 * cosAlpha0;
  const double eps = Eps(k2);

  // lambda = omega - f sin alpha0 I3(sigma).
  double c3[5];
  _C3(eps, c3);
  const double I3 = _A3(eps) * (sigma12 + SinSeries(sinSigma2, cosSigma2, c3, 5) -
                                SinSeries(sinSigma1, cosSigma1, c3, 5));
  const double lambda12 = omega12 - f * sinAlpha0 * I3;

  // d lambda12 / d alpha1 = m12 / (a cos alpha2 cos beta2), with
  // m12 / b = dn2 cos sigma1 sin sigma2 - dn1 sin sigma1 cos sigma2
  //           - cos sigma1 cos sigma2 (J(sigma2) - J(sigma1)),
  // J = I1 - I2, dn = sqrt(1 + k^2 sin^2 sigma).
  double dLambda12 = KvConst::kNaN;
  if (cosAlpha2 == 0.0) {
    // Point 2 at a vertex (beta2 = -beta1, alpha1 = 90 degrees): m12 and
    // cos alpha2 vanish together; the limit of the ratio.
    if (sinBeta1 != 0.0)
      dLambda12 = -2.0 * (1.0 - f) * std::sqrt(1.0 + m_ep2 * sinBeta1 * sinBeta1) / sinBeta1;
  } else {
    const double a1 = A1(eps);
    const double a2 = A2(eps);
    double c1[6];
    double c2[6];
    C1(eps, c1);
    C2(eps, c2);
    double cJ[6];
    for (int l = 0; l < 6; ++l) cJ[l] = a1 * c1[l] - a2 * c2[l];
    const double J12 = (a1 - a2) * sigma12 + SinSeries(sinSigma2, cosSigma2, cJ, 6) -
                       SinSeries(sinSigma1, cosSigma1, cJ, 6);
    const double dn1 = std::sqrt(1.0 + k2 * sinSigma1 * sinSigma1);
    const double dn2 = std::sqrt(1.0 + k2 * sinSigma2 * sinSigma2);
    const double m12b =
        dn2 * cosSigma1 * sinSigma2 - dn1 * sinSigma1 * cosSigma2 - cosSigma1 * cosSigma2 * J12;
    dLambda12 = (1.0 - f) * m12b / (cosAlpha2 * cosBeta2);
  }

  arc.sinAlpha2 = sinAlpha2;
  arc.cosAlpha2 = cosAlpha2;
  arc.sinSigma1 = sinSigma1;
  arc.cosSigma1 = cosSigma1;
  arc.sinSigma2 = sinSigma2;
  arc.cosSigma2 = cosSigma2;
  arc.sigma12 = sigma12;
  arc.eps = eps;
  arc.lambda12 = lambda12;
  arc.dLambda12 = dLambda12;
}

void CKvGeodesicInverse::_StartAlpha1(double sinBeta1, double cosBeta1, double sinBeta2,
                                      double cosBeta2, double lambda12, double lambda12Supplement,
                                      double& sinAlpha1, double& cosAlpha1) const {
  const double f = m_f;
  if (f > 0.0 && lambda12 > KvConst::kHalfPi) {
    // Nearly antipodal points.  Geodesics leaving point 1 at alpha1 pass,
    // to first order in f, through the point f pi a cos^2(beta1) sin(alpha1)
    // west of its antipode heading pi - alpha1.  In units of that length the
    // second point lies at x east and y north of the antipode, and the
    // geodesic through it has sin alpha1 = -x / (1 + mu), cos alpha1 = y / mu
    // where mu solves the astroid equation.
    const double lambdaScale = f * KvConst::kPi * cosBeta1;
    const double x = -lambda12Supplement / lambdaScale;  // (lambda12 - pi) / scale
    const double beta12Sum = std::atan2(sinBeta1 * cosBeta2 + cosBeta1 * sinBeta2,
                                        cosBeta1 * cosBeta2 - sinBeta1 * sinBeta2);
    const double y = beta12Sum / (lambdaScale * cosBeta1);
    if (x >= -kAstroidReach && y >= -kAstroidReach) {
      if (y == 0.0) {
        // Symmetric about the equator: the limit y -> 0 from below.
        sinAlpha1 = x <= -1.0 ? 1.0 : -x;
        cosAlpha1 = x <= -1.0 ? 0.0 : -std::sqrt((1.0 - x) * (1.0 + x));
      } else {
        const double mu = AstroidRoot(x, y);
        sinAlpha1 = -x / (1.0 + mu);
        cosAlpha1 = y / mu;
        Normalize(sinAlpha1, cosAlpha1);
      }
      return;
    }
  }
  // A sphere of radius a wbar, wbar^2 = 1 - e^2 cos^2 of the mean reduced
  // latitude, on which the longitude difference is omega12 = lambda12 / wbar.
  const double cosBetaMean = 0.5 * (cosBeta1 + cosBeta2);
  const double wbar = std::sqrt(1.0 - m_e2 * cosBetaMean * cosBetaMean);
  // Past pi the scaled difference would turn the start around; for lines
  // that long lambda12 itself is the better guess.
  const double omega12 = lambda12 / wbar < KvConst::kPi ? lambda12 / wbar : lambda12;
  const double sinOmega12 = std::sin(omega12);
  const double cosOmega12 = std::cos(omega12);
  // cos alpha1 = cos beta1 sin beta2 - sin beta1 cos beta2 cos omega12, with
  // 1 - cos omega12 written without cancellation for short lines.
  const double sinBeta12 = sinBeta2 * cosBeta1 - cosBeta2 * sinBeta1;
  const double oneMinusCos =
      cosOmega12 >= 0.0 ? sinOmega12 * sinOmega12 / (1.0 + cosOmega12) : 1.0 - cosOmega12;
  sinAlpha1 = cosBeta2 * sinOmega12;
  cosAlpha1 = sinBeta12 + sinBeta1 * cosBeta2 * oneMinusCos;
  if (sinAlpha1 > 0.0) {
    Normalize(sinAlpha1, cosAlpha1);
  } else {  // omega12 beyond pi: no usable start
    sinAlpha1 = 1.0;
    cosAlpha1 = 0.0;
  }
}

void CKvGeodesicInverse::Solve(double lon1, double lat1, double lon2, double lat2, double& s12,
                               double& azi1, double& azi2) const {
  s12 = azi1 = azi2 = KvConst::kNaN;
  if (!(std::isfinite(m_a) && m_a > 0.0 && m_f >= 0.0 && m_f < 1.0)) return;
  if (!(std::isfinite(lon1) && std::isfinite(lon2))) return;
  if (!(std::fabs(lat1) <= 90.0 && std::fabs(lat2) <= 90.0)) return;  // also NaN

  double lon12 = 0.0;
  double lon12Supplement = 0.0;  // 180 - |lon12|
  LonDiff(lon1, lon2, lon12, lon12Supplement);

  // Bring the problem to lat1 <= 0, lat1 <= lat2 <= -lat1, 0 <= lon12 <= 180
  // by swapping the points and mirroring in the equator and the meridian.
  const bool swapped = std::fabs(lat1) < std::fabs(lat2);
  if (swapped) {
    std::swap(lat1, lat2);
    lon12 = -lon12;
  }
  const bool latFlipped = !std::signbit(lat1);
  if (latFlipped) {
    lat1 = -lat1;
    lat2 = -lat2;
  }
  const bool lonFlipped = std::signbit(lon12);
  lon12 = std::fabs(lon12);

  double sinLambda12 = 0.0;
  double cosLambda12 = 0.0;
  if (lon12 <= 90.0) {
    SinCosDeg(lon12, sinLambda12, cosLambda12);
  } else {
    SinCosDeg(lon12Supplement, sinLambda12, cosLambda12);
    cosLambda12 = -cosLambda12;
  }
  // Near 180 degrees the supplement carries the digits that lon12 lost.
  const double lambda12Supplement = lon12Supplement * KvConst::kDegToRad;
  const double lambda12 =
      lon12 <= 90.0 ? lon12 * KvConst::kDegToRad : KvConst::kPi - lambda12Supplement;

  // Reduced latitudes, tan beta = (1 - f) tan phi.
  double sinBeta1 = 0.0;
  double cosBeta1 = 0.0;
  double sinBeta2 = 0.0;
  double cosBeta2 = 0.0;
  SinCosDeg(lat1, sinBeta1, cosBeta1);
  SinCosDeg(lat2, sinBeta2, cosBeta2);
  sinBeta1 *= 1.0 - m_f;
  sinBeta2 *= 1.0 - m_f;
  Normalize(sinBeta1, cosBeta1);
  Normalize(sinBeta2, cosBeta2);

  double sinAlpha1 = 0.0;
  double cosAlpha1 = 0.0;
  double sinAlpha2 = 0.0;
  double cosAlpha2 = 0.0;
  bool solved = false;

  // Along a meridian, or from a pole (point 2 can be on one only if point 1
  // is): alpha1 = lambda12, alpha2 = 0.  Taken when no conjugate point lies
  // between the two (m12 >= 0).
  if (lat1 == -90.0 || lon12 == 0.0 || lon12Supplement == 0.0) {
    sinAlpha1 = sinLambda12;
    cosAlpha1 = cosLambda12;
    sinAlpha2 = 0.0;
    cosAlpha2 = 1.0;
    double sinSigma1 = sinBeta1;
    double cosSigma1 = cosAlpha1 * cosBeta1;
    double sinSigma2 = sinBeta2;
    double cosSigma2 = cosBeta2;
    Normalize(sinSigma1, cosSigma1);
    Normalize(sinSigma2, cosSigma2);
    const double sigma12 = Sigma12(sinSigma1, cosSigma1, sinSigma2, cosSigma2);
    const double k2 = m_ep2;
    const double eps = Eps(k2);
    const double a1 = A1(eps);
    const double a2 = A2(eps);
    double c1[6];
    double c2[6];
    C1(eps, c1);
    C2(eps, c2);
    const double B1 =
        SinSeries(sinSigma2, cosSigma2, c1, 6) - SinSeries(sinSigma1, cosSigma1, c1, 6);
    const double B2 =
        SinSeries(sinSigma2, cosSigma2, c2, 6) - SinSeries(sinSigma1, cosSigma1, c2, 6);
    const double J12 = (a1 - a2) * sigma12 + a1 * B1 - a2 * B2;
    const double dn1 = std::sqrt(1.0 + k2 * sinSigma1 * sinSigma1);
    const double dn2 = std::sqrt(1.0 + k2 * sinSigma2 * sinSigma2);
    const double m12b =
        dn2 * cosSigma1 * sinSigma2 - dn1 * sinSigma1 * cosSigma2 - cosSigma1 * cosSigma2 * J12;
    if (sigma12 < 1.0 || m12b >= 0.0) {
      s12 = m_b * a1 * (sigma12 + B1);
      solved = true;
    }
  }

  // Along the equator, shortest while lambda12 <= (1 - f) pi.
  if (!solved && sinBeta1 == 0.0 && lon12 <= (1.0 - m_f) * 180.0) {
    s12 = m_a * lambda12;
    sinAlpha1 = sinAlpha2 = 1.0;
    cosAlpha1 = cosAlpha2 = 0.0;
    solved = true;
  }

  if (!solved) {
    // lambda12(alpha1) rises from 0 at alpha1 = 0 to pi at alpha1 = pi; keep
    // the root bracketed and fall back on bisection whenever Newton's step
    // leaves the bracket or fails to halve the residual.
    SDirection lo{0.0, 1.0};
    SDirection hi{0.0, -1.0};
    SDirection alpha1{1.0, 0.0};
    _StartAlpha1(sinBeta1, cosBeta1, sinBeta2, cosBeta2, lambda12, lambda12Supplement, alpha1.s,
                 alpha1.c);
    SArc arc{};
    SArc best{};
    SDirection bestAlpha1 = alpha1;
    double bestResidual = std::numeric_limits<double>::infinity();
    double previousResidual = std::numeric_limits<double>::infinity();
    bool lastWasNewton = false;
    bool lastPass = false;
    for (int i = 0; i < kMaxIterations; ++i) {
      _Arc(sinBeta1, cosBeta1, sinBeta2, cosBeta2, alpha1.s, alpha1.c, arc);
      const double v = arc.lambda12 - lambda12;
      const double residual = std::fabs(v);
      if (residual <= bestResidual) {
        best = arc;
        bestAlpha1 = alpha1;
        bestResidual = residual;
      }
      if (lastPass || !(residual > kLambdaTolerance)) break;
      if (v > 0.0)
        hi = alpha1;
      else
        lo = alpha1;
      const double step = -v / arc.dLambda12;
      SDirection next = alpha1;
      bool newton = arc.dLambda12 > 0.0 && std::fabs(step) < KvConst::kHalfPi;
      if (newton) {
        next = Rotate(alpha1, step);
        newton = Before(lo, next) && Before(next, hi);
      }
      if (newton && std::fabs(step) <= kAlphaTolerance) {
        lastPass = true;
      } else if (!newton || (lastWasNewton && residual > 0.5 * previousResidual)) {
        next = Halfway(lo, hi);
        if (!(Before(lo, next) && Before(next, hi))) break;  // bracket at rounding level
        newton = false;
      }
      lastWasNewton = newton;
      previousResidual = residual;
      alpha1 = next;
    }
    arc = best;
    double c1[6];
    C1(arc.eps, c1);
    s12 = m_b * A1(arc.eps) *
          (arc.sigma12 + SinSeries(arc.sinSigma2, arc.cosSigma2, c1, 6) -
           SinSeries(arc.sinSigma1, arc.cosSigma1, c1, 6));
    sinAlpha1 = bestAlpha1.s;
    cosAlpha1 = bestAlpha1.c;
    sinAlpha2 = arc.sinAlpha2;
    cosAlpha2 = arc.cosAlpha2;
  }

  // Points a few units in the last place apart can leave the difference of
  // the two series a hair below zero.
  s12 = std::max(0.0, s12);

  // Undo the mirrors and the swap (their order does not matter).
  if (lonFlipped) {
    sinAlpha1 = -sinAlpha1;
    sinAlpha2 = -sinAlpha2;
  }
  if (latFlipped) {
    cosAlpha1 = -cosAlpha1;
    cosAlpha2 = -cosAlpha2;
  }
  if (swapped) {
    std::swap(sinAlpha1, sinAlpha2);
    std::swap(cosAlpha1, cosAlpha2);
    sinAlpha1 = -sinAlpha1;
    cosAlpha1 = -cosAlpha1;
    sinAlpha2 = -sinAlpha2;
    cosAlpha2 = -cosAlpha2;
  }
  azi1 = std::atan2(sinAlpha1, cosAlpha1) * KvConst::kRadToDeg;
  azi2 = std::atan2(sinAlpha2, cosAlpha2) * KvConst::kRadToDeg;
}
