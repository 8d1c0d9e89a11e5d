#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <limits>

#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

// WGS 84.  [M]: mpmath at 30 digits from the published formulas, e.g.
//   /usr/bin/python3 -c "from mpmath import *; mp.dps=30; f=1/mpf('298.257223563');
//   e=sqrt(f*(2-f)); p=mpf(45)*pi/180; print(tan(pi/4-p/2)/((1-e*sin(p))/(1+e*sin(p)))**(e/2))"
// [G]: echo "0 0 LAT 0" | GeodSolve -i -p 9 (the meridian distance from the equator).

namespace {

const double kF = 1 / 298.257223563;
const double kE2 = kF * (2 - kF);
const double kE = std::sqrt(kE2);

void SinCosOf(double degrees, double* s, double* c) { KvAux::SinCosDeg(degrees, s, c); }

TEST(AuxiliaryLatitudes, SinCosInDegreesIsExactAtQuarterTurns) {
  const double cases[][3] = {
      {0, 0, 1},     {90, 1, 0},   {180, 0, -1}, {270, -1, 0},  {360, 0, 1},
      {-90, -1, 0},  {-180, 0, -1}, {450, 1, 0}, {-630, 1, 0},  {3.6e9, 0, 1},
  };
  for (const auto& c : cases) {
    double s, co;
    SinCosOf(c[0], &s, &co);
    EXPECT_EQ(s, c[1]) << c[0];
    EXPECT_EQ(co, c[2]) << c[0];
    EXPECT_FALSE(std::signbit(co) && co == 0) << c[0];  // +0, so 1 / cos is +infinity
  }
  // Elsewhere as accurate as sin and cos of the reduced angle.
  for (double d : {30.0, -45.0, 123.456, 89.999999}) {
    double s, co;
    SinCosOf(d, &s, &co);
    EXPECT_NEAR(s, std::sin(d * KvConst::kDegToRad), 2e-16) << d;
    EXPECT_NEAR(co, std::cos(d * KvConst::kDegToRad), 2e-16) << d;
  }
  double s, co;
  SinCosOf(std::numeric_limits<double>::quiet_NaN(), &s, &co);
  EXPECT_TRUE(std::isnan(s) && std::isnan(co));
  SinCosOf(std::numeric_limits<double>::infinity(), &s, &co);
  EXPECT_TRUE(std::isnan(s) && std::isnan(co));
}

TEST(AuxiliaryLatitudes, ConformalTKeepsItsRelativeAccuracyUpToThePoles) {
  const double cases[][2] = {
      {45, 0.416181151389742331921190724522},             // [M]
      {89.999999, 8.78539346909504191807706172726e-9},    // [M] at the double nearest 89.999999
      {-60, 3.71044071913681218757850150013},             // [M]
      {0, 1},                                             // [M]
  };
  for (const auto& c : cases) {
    // tan(pi/4 - phi/2) in radians would lose eight digits at 89.999999.
    EXPECT_NEAR(KvAux::ConformalT(c[0], kE) / c[1], 1.0, 4e-15) << c[0];
  }
  EXPECT_EQ(KvAux::ConformalT(90, kE), 0.0);
  EXPECT_EQ(KvAux::ConformalT(-90, kE), std::numeric_limits<double>::infinity());
  // Beyond the north pole t turns negative.
  EXPECT_LT(KvAux::ConformalT(90.5, kE), 0.0);
  // Near the south pole the reciprocal keeps the relative accuracy too:
  // t(-lat) = 1 / t(lat).
  EXPECT_NEAR(KvAux::ConformalT(-89.999999, kE) * 8.78539346909504191807706172726e-9, 1.0, 4e-15);
}

TEST(AuxiliaryLatitudes, ConformalTPowerIsTheConesPowerOfT) {
  for (double n : {0.7, -0.42}) {
    for (double d : {-89.5, -30.0, 0.0, 45.0, 89.999999}) {
      const double expected = std::pow(KvAux::ConformalT(d, kE), n);
      EXPECT_NEAR(KvAux::ConformalTPower(d, kE, n) / expected, 1.0, 2e-15) << n << " " << d;
    }
    // At and beyond the north pole t counts as 0; the south pole is t = infinity.
    EXPECT_EQ(KvAux::ConformalTPower(90, kE, n), n > 0 ? 0.0 : INFINITY) << n;
    EXPECT_EQ(KvAux::ConformalTPower(90.5, kE, n), n > 0 ? 0.0 : INFINITY) << n;
    EXPECT_EQ(KvAux::ConformalTPower(-90, kE, n), n > 0 ? INFINITY : 0.0) << n;
  }
  EXPECT_TRUE(std::isnan(KvAux::ConformalTPower(NAN, kE, 0.5)));
}

TEST(AuxiliaryLatitudes, LatitudeFromConformalTInvertsIt) {
  for (double d : {-89.9, -60.0, -1e-9, 0.0, 17.5, 45.0, 80.0, 89.999999}) {
    const double t = KvAux::ConformalT(d, kE);
    EXPECT_NEAR(KvAux::LatitudeFromConformalT(t, kE) * KvConst::kRadToDeg, d, 1e-12) << d;
  }
  EXPECT_EQ(KvAux::LatitudeFromConformalT(0.0, kE), KvConst::kHalfPi);
  EXPECT_TRUE(std::isnan(KvAux::LatitudeFromConformalT(NAN, kE)));
}

TEST(AuxiliaryLatitudes, IsometricLatitudeIsMinusTheLogarithmOfT) {
  double s, co;
  SinCosOf(60, &s, &co);
  const double psi = 1.31115066178427172812812807952;  // [M] asinh(tan p) - e atanh(e sin p)
  EXPECT_NEAR(KvAux::IsometricLatitude(s, co, kE), psi, 1e-15);
  EXPECT_NEAR(-std::log(KvAux::ConformalT(60, kE)), psi, 1e-15);
  SinCosOf(90, &s, &co);
  EXPECT_EQ(KvAux::IsometricLatitude(s, co, kE), std::numeric_limits<double>::infinity());
}

TEST(AuxiliaryLatitudes, AuthalicQMatchesSnyderAndTheSphere) {
  double s, co;
  SinCosOf(40, &s, &co);
  EXPECT_NEAR(KvAux::AuthalicQ(s, kE), 1.27932966152950387905823144702, 2e-15);  // [M]
  // qP = 1 - (1 - e^2) / (2e) ln((1 - e) / (1 + e))
  EXPECT_NEAR(KvAux::AuthalicQ(1.0, kE), 1.99553108750283679137924738034, 2e-15);  // [M]
  // The sphere's limit, 2 sin phi, with no division by e = 0.
  EXPECT_EQ(KvAux::AuthalicQ(0.5, 0.0), 1.0);
  EXPECT_NEAR(KvAux::AuthalicQ(0.5, 1e-9), 1.0, 1e-15);
}

// sin beta and cos beta of the authalic latitude of each latitude, [M]:
//   q = (1 - e^2) (s / (1 - e^2 s^2) - ln((1 - e s) / (1 + e s)) / (2e)),
//   sin beta = q / q(90), cos beta = sqrt(1 - sin^2 beta)
TEST(AuxiliaryLatitudes, LatitudeFromAuthalicInvertsQToRoundingError) {
  const double qP = KvAux::AuthalicQ(1.0, kE);
  const double e2 = kE2, e4 = e2 * e2, e6 = e4 * e2;
  // Guidance Note 7-2's three terms
  const double c[3] = {e2 / 3 + 31 * e4 / 180 + 517 * e6 / 5040, 23 * e4 / 360 + 251 * e6 / 3780,
                       761 * e6 / 45360};
  const double cases[][4] = {
      // 20.8 degrees: where the series alone is worst, 2.5e-10 rad (1.6 mm)
      {20.8, 0.353718770224509978031774, 0.9353518223592982947416805, 4e-16},
      {45, 0.7055216511245873252433318, 0.7086883657817701808711185, 4e-16},
      {70, 0.9391986442331030389882685, 0.3433742952969851348327355, 4e-16},
      // within 1e-3 rad of the pole the series stands alone
      {89.99, 0.9999999846321418406143992, 0.0001753160462781434541098675, 1e-14},
      {-60, -0.8650532439391864758070963, 0.5016800625401515163949507, 4e-16},
      {90, 1, 0, 4e-16},
  };
  for (const auto& k : cases) {
    const double phi = KvAux::LatitudeFromAuthalic(k[1], k[2], qP, kE, c);
    EXPECT_NEAR(phi, k[0] * KvConst::kDegToRad, k[3]) << k[0];
  }
  // The sphere: beta is phi.
  const double none[3] = {0, 0, 0};
  EXPECT_NEAR(KvAux::LatitudeFromAuthalic(0.5, std::sqrt(0.75), 2.0, 0.0, none),
              KvConst::kPi / 6, 2e-16);
}

TEST(AuxiliaryLatitudes, LongitudesInDegreesAreReducedExactly) {
  const double cases[][2] = {
      {0, 0},      {179.5, 179.5}, {180, 180}, {-180, -180}, {190, -170},
      {-190, 170}, {359, -1},      {725, 5},   {-1e6, 80},   {3.6e9 + 0.25, 0.25},
  };
  for (const auto& c : cases) EXPECT_EQ(KvAux::ReducedLongitudeDeg(c[0]), c[1]) << c[0];
  // Inside [-180, 180] an angle is kept as it is.
  EXPECT_EQ(KvAux::ReducedLongitudeDeg(-13.627203666666666), -13.627203666666666);
  EXPECT_EQ(std::fabs(KvAux::ReducedLongitudeDeg(540)), 180.0);
  EXPECT_TRUE(std::isnan(KvAux::ReducedLongitudeDeg(std::nan(""))));
  EXPECT_TRUE(std::isnan(KvAux::ReducedLongitudeDeg(INFINITY)));
}

TEST(AuxiliaryLatitudes, ParallelRadiusIsTheRadiusOfTheParallelOverA) {
  double s, co;
  SinCosOf(60, &s, &co);
  // 0.5 / sqrt(1 - e^2 3/4)
  EXPECT_NEAR(KvAux::ParallelRadius(s, co, kE2), 0.5 / std::sqrt(1 - 0.75 * kE2), 1e-16);
  SinCosOf(90, &s, &co);
  EXPECT_EQ(KvAux::ParallelRadius(s, co, kE2), 0.0);
}

TEST(AuxiliaryLatitudes, MeridianArcAgreesWithGeodesicsToTheNanometre) {
  const KvAux::CKvMeridianArc arc(6378137, kF);
  const double cases[][2] = {
      {90, 10001965.729312724},   // [G]
      {10, 1105854.833234372},    // [G]
      {45, 4984944.377977744},    // [G]
      {60, 6654072.819490512},    // [G]
      {80, 8885139.871936874},    // [G]
      {-30, -3320113.397940383},  // [G] southwards
  };
  for (const auto& c : cases) {
    const double phi = c[0] * KvConst::kDegToRad;
    EXPECT_NEAR(arc.Distance(phi), c[1], 2e-9) << c[0];
    EXPECT_NEAR(arc.Latitude(c[1]), phi, 1e-15) << c[0];
  }
  EXPECT_NEAR(arc.RectifyingRadius() * KvConst::kHalfPi, 10001965.729312724, 2e-9);  // [G]
}

// The forms that take or give sin phi and cos phi agree with the plain ones
// and with the geodesics.
TEST(AuxiliaryLatitudes, MeridianArcWithSinesAndCosinesAgrees) {
  const KvAux::CKvMeridianArc arc(6378137, kF);
  const double cases[][2] = {
      {90, 10001965.729312724},   // [G]
      {10, 1105854.833234372},    // [G]
      {60, 6654072.819490512},    // [G]
      {-30, -3320113.397940383},  // [G]
  };
  for (const auto& c : cases) {
    double s, co;
    SinCosOf(c[0], &s, &co);
    const double phi = c[0] * KvConst::kDegToRad;
    EXPECT_NEAR(arc.Distance(phi, s, co), c[1], 2e-9) << c[0];
    double sinPhi = 2, cosPhi = 2;
    EXPECT_NEAR(arc.Latitude(c[1], &sinPhi, &cosPhi), phi, 1e-15) << c[0];
    EXPECT_NEAR(sinPhi, s, 2e-16) << c[0];
    EXPECT_NEAR(cosPhi, co, 2e-16) << c[0];
  }
  // A flattening of 1/3 turns mu by more than 0.01 rad: sin and cos of the
  // turn come from the library then.
  const KvAux::CKvMeridianArc flat(1, 1.0 / 3);
  double sinPhi = 2, cosPhi = 2;
  const double phi = flat.Latitude(0.7, &sinPhi, &cosPhi);
  EXPECT_NEAR(phi, flat.Latitude(0.7), 1e-15);
  EXPECT_NEAR(sinPhi, std::sin(phi), 1e-15);
  EXPECT_NEAR(cosPhi, std::cos(phi), 1e-15);
}

TEST(AuxiliaryLatitudes, ClenshawSumsEqualTheirTermByTermSums) {
  const double c[] = {0.3, -0.02, 0.004, -5e-4, 7e-5};
  for (double x : {-1.2, 0.0, 0.3, 1.5}) {
    for (int count : {1, 4, 5}) {
      double direct = 0;
      for (int k = 0; k < count; ++k) direct += c[k] * std::sin(2 * (k + 1) * x);
      EXPECT_NEAR(KvAux::ClenshawSin(c, count, std::sin(2 * x), std::cos(2 * x)), direct, 1e-16);
      for (double y : {-0.7, 0.0, 0.4}) {
        std::complex<double> sum = 0, z(x, y);
        for (int k = 0; k < count; ++k) sum += c[k] * std::sin(2.0 * (k + 1) * z);
        double re, im;
        KvAux::ClenshawSinComplex(c, count, std::sin(2 * x), std::cos(2 * x), std::sinh(2 * y),
                                  std::cosh(2 * y), &re, &im);
        EXPECT_NEAR(re, sum.real(), 1e-15) << x << " " << y;
        EXPECT_NEAR(im, sum.imag(), 1e-15) << x << " " << y;
      }
    }
  }
}

}  // namespace

namespace {

// [M]: /usr/bin/python3 -c "from mpmath import *; mp.dps=30; f=1/mpf('298.257223563');
//   e=sqrt(f*(2-f)); p=mpf(LAT)*pi/180; c=atan(sinh(asinh(tan(p))-e*atanh(e*sin(p))));
//   print(sin(c), cos(c), p)"
TEST(AuxiliaryLatitudes, GeodeticLatitudeOfAConformalOneIsExactToTheLastBit) {
  const KvAux::CKvConformalLatitude conformal(kF);
  const double cases[][3] = {
      // sin chi, cos chi, phi (radians), [M] at 45, -71, 89.999999 and 1e-6 degrees
      {0.704729365632948099426990046029, 0.709476230197025381799104519935,
       0.78539816339744830961566084582},
      {-0.944842275792876927000020316964, 0.327525684297486958731809633228,
       -1.23918376891597399961582044563},
      {0.99999999999999984563372240689, 1.75707869825520550425002002478e-8,
       1.5707963093416040992880259224},
      {1.73364535477357034023427989923e-8, 0.999999999999999849723689193601,
       1.74532925199432957692369076849e-8},
      {1, 0, KvConst::kHalfPi},
      {-1, 0, -KvConst::kHalfPi},
  };
  for (const auto& c : cases)
    EXPECT_NEAR(conformal.Geodetic(c[0], c[1]), c[2], 4e-16 * std::fabs(c[2]) + 1e-30) << c[2];
  // A sphere: the same angle.
  EXPECT_EQ(KvAux::CKvConformalLatitude(0).Geodetic(0.6, 0.8), std::atan2(0.6, 0.8));
}

// [M]: tanh(psi) and sech(psi) at 30 digits.
TEST(AuxiliaryLatitudes, SineAndCosineOfAnIsometricLatitudeKeepTheirRelativeAccuracy) {
  const double cases[][3] = {
      {0.5, 0.462117157260009758502318483644, 0.886818883970073908658897797783},
      {-3, -0.995054753686730451331880185255, 0.0993279274194332078290124480993},
      {1e-9, 9.99999999999999999666666666667e-10, 0.9999999999999999995},
      {40, 1.0, 8.49670851058317799065846956572e-18},
  };
  for (const auto& c : cases) {
    double s, co;
    KvAux::SinCosOfIsometric(c[0], &s, &co);
    EXPECT_NEAR(s / c[1], 1.0, 4e-16) << c[0];
    EXPECT_NEAR(co / c[2], 1.0, 4e-16) << c[0];
  }
  double s, co;
  KvAux::SinCosOfIsometric(-std::numeric_limits<double>::infinity(), &s, &co);
  EXPECT_EQ(s, -1.0);
  EXPECT_EQ(co, 0.0);
}

TEST(AuxiliaryLatitudes, LongitudeDifferencesAreReducedExactly) {
  const double pi = KvConst::kPi;
  EXPECT_EQ(KvAux::ReducedLongitude(1.25), 1.25);  // in range: untouched
  EXPECT_EQ(KvAux::ReducedLongitude(-pi), -pi);
  EXPECT_EQ(KvAux::ReducedLongitude(2 * pi + 0.5), std::remainder(2 * pi + 0.5, 2 * pi));
  EXPECT_NEAR(KvAux::ReducedLongitude(3 * pi / 2), -pi / 2, 1e-15);
  EXPECT_NEAR(KvAux::ReducedLongitude(-7 * pi / 2), pi / 2, 1e-15);
  EXPECT_TRUE(std::isnan(KvAux::ReducedLongitude(std::numeric_limits<double>::infinity())));
}

}  // namespace
