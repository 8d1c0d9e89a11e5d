#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "catalogue/KvEllipsoid.h"
#include "mapproj/KvVincenty.h"

// The inverse geodesic problem as CKvVincenty::GetDistance solves it.

namespace {

constexpr double kDegToRad = 0.017453292519943295;

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);
const CKvEllipsoid kSphere("Sphere", "SP", 6371000, 0);

// Distances must agree to 1 micrometre.  Azimuths must agree to 1e-9 degrees
// unless they are ill-conditioned, that is unless turning them by the
// difference moves the far end by less than 10 nm (|d azimuth| |m12|, m12 the
// reduced length): on lines a few millimetres long and near an antipode the
// last digits of an azimuth are rounding in any double-precision solution.
constexpr double kDistanceTolerance = 1e-6;
constexpr double kAzimuthTolerance = 1e-9;
constexpr double kEndShiftTolerance = 1e-8;

struct SCase {
  double lat1, lon1, lat2, lon2, azi1, azi2, s12, m12;
  std::string text;
};

// tests/data/geodesic_inverse_*.txt, written by tools/make_geodesic_cases.py
// from GeographicLib's GeodSolve (the command is in each file's header).
std::vector<SCase> ReadCases(const std::string& name) {
  std::vector<SCase> cases;
  std::ifstream in(std::string(KVCART_TEST_DATA_DIR) + name);
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    SCase c;
    fields >> c.lat1 >> c.lon1 >> c.lat2 >> c.lon2 >> c.azi1 >> c.azi2 >> c.s12 >> c.m12;
    if (!fields) ADD_FAILURE() << "unreadable line: " << line;
    c.text = line;
    cases.push_back(c);
  }
  return cases;
}

double AngleDifference(double x, double y) { return std::fabs(std::remainder(x - y, 360.0)); }

bool AzimuthAgrees(double azimuth, double expected, double m12) {
  const double d = AngleDifference(azimuth, expected);
  return d <= kAzimuthTolerance || d * kDegToRad * std::fabs(m12) <= kEndShiftTolerance;
}

void ExpectAgreement(const CKvEllipsoid& ellipsoid, const std::string& file) {
  const std::vector<SCase> cases = ReadCases(file);
  ASSERT_GE(cases.size(), file.find("wgs84") != std::string::npos ? 10000U : 2000U);
  const CKvVincenty geodesic(ellipsoid);
  int failures = 0;
  for (const SCase& c : cases) {
    double s12 = -1, azi1 = -1, azi2 = -1;
    geodesic.GetDistance(c.lon1, c.lat1, c.lon2, c.lat2, s12, azi1, azi2);
    // Points on a pole are taken as the limit along their own meridian, the
    // convention of the oracle too, so their azimuths are compared as well.
    const bool ok = std::fabs(s12 - c.s12) <= kDistanceTolerance &&
                    AzimuthAgrees(azi1, c.azi1, c.m12) && AzimuthAgrees(azi2, c.azi2, c.m12);
    if (!ok && ++failures <= 10)
      ADD_FAILURE() << c.text << "\n  got " << azi1 << " " << azi2 << " " << s12;
  }
  EXPECT_EQ(failures, 0);
}

TEST(GeodesicInverse, AgreesWithAnIndependentSolutionOnWgs84) {
  ExpectAgreement(kWgs84, "geodesic_inverse_wgs84.txt");
}

TEST(GeodesicInverse, AgreesWithAnIndependentSolutionOnASphere) {
  ExpectAgreement(kSphere, "geodesic_inverse_sphere.txt");
}

TEST(GeodesicInverse, FollowsTheConventionsForDegenerateAndAntipodalPairs) {
  struct Pair {
    const char* what;
    const CKvEllipsoid& ellipsoid;
    double lat1, lon1, lat2, lon2, azi1, azi2, s12;
  };
  // Expected values: GeodSolve -i -p 12 (WGS 84) and
  // GeodSolve -e 6371000 0 -i -p 12 (sphere), input lines "lat1 lon1 lat2 lon2".
  const Pair pairs[] = {
      // Coincident points take the meridian: southward from a point on the
      // northern side (or +0), northward from the southern side.
      {"coincident north", kWgs84, 10, 20, 10, 20, 180, 180, 0},
      {"coincident south", kWgs84, -10, 20, -10, 20, 0, 0, 0},
      // A pole is approached along its own meridian.
      {"pole to pole", kWgs84, 90, 0, -90, 0, 180, 180, 20003931.4586254470},
      {"north pole, meridian 30", kWgs84, 90, 30, 0, 0, -150, -180, 10001965.7293127235},
      {"south pole, meridian 30", kWgs84, -90, 30, 0, 0, -30, 0, 10001965.7293127235},
      // Antipodes on the equator are joined over a pole, and equally short
      // paths on opposite meridians start north from the northern side.
      {"equatorial antipodes", kWgs84, 0, 0, 0, 180, 0, 180, 20003931.4586254470},
      {"opposite meridians", kWgs84, 10, 0, -10, 180, 0, 180, 20003931.4586254470},
      // Along the equator up to (1 - f) 180 degrees, beyond that not.
      {"equator", kWgs84, 0, 0, 0, 179, 90, 90, 19926188.8519959711},
      {"past the equatorial limit", kWgs84, 0, 0, 0, 179.5, 55.966495140158635, 124.033504859841372,
       19980861.9088909626},
      // Inside the astroid, symmetric about the equator and not.
      {"symmetric, nearly antipodal", kWgs84, 10, 0, -10, 179.8, 19.677575769700205,
       160.322424230299788, 20000239.4377246685},
      {"nearly antipodal", kWgs84, -30, 0, 30, 179.9, 168.969703467366031, 11.030296532633967,
       20003008.4215094112},
      {"sphere, antipodes", kSphere, 0, 0, 0, 180, 0, 180, 20015086.7960205711},
      {"sphere, quarter", kSphere, 0, 0, 0, 90, 90, 90, 10007543.3980102856},
  };
  for (const Pair& p : pairs) {
    SCOPED_TRACE(p.what);
    double s12 = -1, azi1 = -1, azi2 = -1;
    CKvVincenty(p.ellipsoid).GetDistance(p.lon1, p.lat1, p.lon2, p.lat2, s12, azi1, azi2);
    EXPECT_NEAR(s12, p.s12, kDistanceTolerance);
    EXPECT_LE(AngleDifference(azi1, p.azi1), kAzimuthTolerance) << azi1;
    EXPECT_LE(AngleDifference(azi2, p.azi2), kAzimuthTolerance) << azi2;
  }
}

TEST(GeodesicInverse, KeepsTinyLongitudeDifferencesAcrossTheAntimeridian) {
  // On the equator s12 = a (lon2 - lon1).  The difference of the two doubles
  // below, taken exactly and reduced by 360, is 2.98427949019242e-12 degrees
  // (python3 fractions); subtracting them directly loses 1 % of it.
  // mpmath, 30 digits: a * that * pi / 180.
  double s12 = -1, azi1 = -1, azi2 = -1;
  CKvVincenty(kWgs84).GetDistance(179.999999999999, 0, -179.999999999998, 0, s12, azi1, azi2);
  EXPECT_NEAR(s12, 3.32208473233030336e-7, 1e-12 * 3.3e-7);
  EXPECT_EQ(azi1, 90);
  EXPECT_EQ(azi2, 90);
  // The same the other way round.
  CKvVincenty(kWgs84).GetDistance(-179.999999999998, 0, 179.999999999999, 0, s12, azi1, azi2);
  EXPECT_NEAR(s12, 3.32208473233030336e-7, 1e-12 * 3.3e-7);
  EXPECT_EQ(azi1, -90);
}

TEST(GeodesicInverse, ReturnsToTheSecondPointThroughTheDirectProblem) {
  // The direct solution (Vincenty) from point 1 with the inverse's azimuth
  // and length lands on point 2 heading azi2.  Vincenty's direct series are
  // good to about 0.1 mm, so 2e-9 degrees (0.2 mm) is the bound.  Pairs from
  // the WGS 84 file, off the poles, every 17th.
  const std::vector<SCase> cases = ReadCases("geodesic_inverse_wgs84.txt");
  const CKvVincenty geodesic(kWgs84);
  int tried = 0;
  for (std::size_t i = 0; i < cases.size(); i += 17) {
    const SCase& c = cases[i];
    if (std::fabs(c.lat1) == 90 || std::fabs(c.lat2) == 90) continue;
    double s12 = 0, azi1 = 0, azi2 = 0;
    geodesic.GetDistance(c.lon1, c.lat1, c.lon2, c.lat2, s12, azi1, azi2);
    double lon2 = 0, lat2 = 0, back = 0;
    geodesic.GetPoint(c.lon1, c.lat1, azi1, s12, lon2, lat2, back);
    SCOPED_TRACE(c.text);
    EXPECT_NEAR(lat2, c.lat2, 2e-9);
    EXPECT_LE(AngleDifference(lon2, c.lon2) * std::cos(c.lat2 * kDegToRad), 2e-9);
    // Within a degree of a pole the direct solution's azimuth loses digits
    // (both arguments of its atan2 shrink); elsewhere it holds 1e-9 degrees.
    if (std::fabs(c.lat2) < 89) {
      EXPECT_LE(AngleDifference(back, azi2), kAzimuthTolerance);
    }
    ++tried;
  }
  EXPECT_GT(tried, 500);
}

TEST(GeodesicInverse, GivesNaNOutsideTheDomain) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  const double inputs[][4] = {
      {0, 90.000001, 1, 1}, {0, 0, 1, -91}, {nan, 0, 1, 1},
      {0, nan, 1, 1},       {0, 0, inf, 1}, {-inf, 0, 1, 1},
  };
  for (const auto& in : inputs) {
    double s12 = 1, azi1 = 1, azi2 = 1;
    CKvVincenty(kWgs84).GetDistance(in[0], in[1], in[2], in[3], s12, azi1, azi2);
    EXPECT_TRUE(std::isnan(s12) && std::isnan(azi1) && std::isnan(azi2))
        << in[0] << " " << in[1] << " " << in[2] << " " << in[3];
  }
  // An ellipsoid with 1/f below 1 has no positive minor axis.
  double s12 = 1, azi1 = 1, azi2 = 1;
  CKvVincenty(CKvEllipsoid("Flat", "FL", 6378137, 0.5)).GetDistance(0, 0, 1, 1, s12, azi1, azi2);
  EXPECT_TRUE(std::isnan(s12));
}

}  // namespace
