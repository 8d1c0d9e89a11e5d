#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "catalogue/KvEllipsoid.h"
#include "mapproj/KvVincenty.h"
#include "platform/KvConstants.h"

// The inverse geodesic problem as CKvVincenty::GetDistance solves it.

namespace {

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);
const CKvEllipsoid kSphere("Sphere", "SP", 6371000, 0);

// Distances agree to 1 micrometre, azimuths to 1e-9 degrees unless ill-conditioned: unless
// turning them by the difference moves the far end by under 10 nm (|d azimuth| |m12|, m12
// the reduced length), as on lines of millimetres and near antipodes, where the last digits
// of an azimuth are rounding in any double-precision solution.
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
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    SCase c{0, 0, 0, 0, 0, 0, 0, 0, line};
    if (!(fields >> c.lat1 >> c.lon1 >> c.lat2 >> c.lon2 >> c.azi1 >> c.azi2 >> c.s12 >> c.m12))
      ADD_FAILURE() << "unreadable line: " << line;
    cases.push_back(c);
  }
  return cases;
}

double AngleDifference(double x, double y) { return std::fabs(std::remainder(x - y, 360.0)); }

bool AzimuthAgrees(double azimuth, double expected, double m12) {
  const double d = AngleDifference(azimuth, expected);
  return d <= kAzimuthTolerance || d * KvConst::kDegToRad * std::fabs(m12) <= kEndShiftTolerance;
}

TEST(GeodesicInverse, AgreesWithAnIndependentSolutionOnWgs84AndASphere) {
  const struct {
    const CKvEllipsoid& ellipsoid;
    const char* file;
    std::size_t minimum;
  } sets[] = {{kWgs84, "geodesic_inverse_wgs84.txt", 10000},
              {kSphere, "geodesic_inverse_sphere.txt", 2000}};
  for (const auto& set : sets) {
    const std::vector<SCase> cases = ReadCases(set.file);
    ASSERT_GE(cases.size(), set.minimum) << set.file;
    const CKvVincenty geodesic(set.ellipsoid);
    int failures = 0;
    for (const SCase& c : cases) {
      double s12 = -1, azi1 = -1, azi2 = -1;
      geodesic.GetDistance(c.lon1, c.lat1, c.lon2, c.lat2, s12, azi1, azi2);
      // A point on a pole is taken as the limit along its own meridian, as by the
      // oracle, so its azimuths are compared too.
      const bool ok = std::fabs(s12 - c.s12) <= kDistanceTolerance &&
                      AzimuthAgrees(azi1, c.azi1, c.m12) && AzimuthAgrees(azi2, c.azi2, c.m12);
      if (!ok && ++failures <= 10)
        ADD_FAILURE() << c.text << "\n  got " << azi1 << " " << azi2 << " " << s12;
    }
    EXPECT_EQ(failures, 0) << set.file;
  }
}

TEST(GeodesicInverse, FollowsTheConventionsForDegenerateAndAntipodalPairs) {
  // echo "lat1 lon1 lat2 lon2" | GeodSolve -i -p 12 (WGS 84; -e 6371000 0 for the sphere)
  const struct {
    const CKvEllipsoid& ellipsoid;
    double lat1, lon1, lat2, lon2, azi1, azi2, s12;
  } pairs[] = {
      // Coincident points take the meridian: south from the northern side (or +0), else north.
      {kWgs84, 10, 20, 10, 20, 180, 180, 0},
      {kWgs84, -10, 20, -10, 20, 0, 0, 0},
      // A pole is approached along its own meridian.
      {kWgs84, 90, 0, -90, 0, 180, 180, 20003931.4586254470},
      {kWgs84, 90, 30, 0, 0, -150, -180, 10001965.7293127235},
      {kWgs84, -90, 30, 0, 0, -30, 0, 10001965.7293127235},
      // Equatorial antipodes are joined over a pole; equally short paths on opposite meridians
      // start north from the northern side.
      {kWgs84, 0, 0, 0, 180, 0, 180, 20003931.4586254470},
      {kWgs84, 10, 0, -10, 180, 0, 180, 20003931.4586254470},
      // Along the equator up to (1 - f) 180 degrees, beyond that not.
      {kWgs84, 0, 0, 0, 179, 90, 90, 19926188.8519959711},
      {kWgs84, 0, 0, 0, 179.5, 55.966495140158635, 124.033504859841372, 19980861.9088909626},
      // Inside the astroid, symmetric about the equator and not.
      {kWgs84, 10, 0, -10, 179.8, 19.677575769700205, 160.322424230299788, 20000239.4377246685},
      {kWgs84, -30, 0, 30, 179.9, 168.969703467366031, 11.030296532633967, 20003008.4215094112},
      {kSphere, 0, 0, 0, 180, 0, 180, 20015086.7960205711},
      {kSphere, 0, 0, 0, 90, 90, 90, 10007543.3980102856},
  };
  for (const auto& p : pairs) {
    SCOPED_TRACE(testing::Message() << p.lat1 << " " << p.lon1 << " " << p.lat2 << " " << p.lon2);
    double s12 = -1, azi1 = -1, azi2 = -1;
    CKvVincenty(p.ellipsoid).GetDistance(p.lon1, p.lat1, p.lon2, p.lat2, s12, azi1, azi2);
    EXPECT_NEAR(s12, p.s12, kDistanceTolerance);
    EXPECT_LE(AngleDifference(azi1, p.azi1), kAzimuthTolerance) << azi1;
    EXPECT_LE(AngleDifference(azi2, p.azi2), kAzimuthTolerance) << azi2;
  }
}

TEST(GeodesicInverse, KeepsTinyLongitudeDifferencesAcrossTheAntimeridian) {
  // On the equator s12 = a (lon2 - lon1).  The difference of these doubles, taken exactly and
  // reduced by 360, is 2.98427949019242e-12 degrees (python3 fractions); subtracting them
  // directly loses 1 % of it.  s12: mpmath, 30 digits, a * that * pi / 180.
  const double ends[][3] = {{179.999999999999, -179.999999999998, 90},
                            {-179.999999999998, 179.999999999999, -90}};
  for (const auto& e : ends) {
    double s12 = -1, azi1 = -1, azi2 = -1;
    CKvVincenty(kWgs84).GetDistance(e[0], 0, e[1], 0, s12, azi1, azi2);
    EXPECT_NEAR(s12, 3.32208473233030336e-7, 1e-12 * 3.3e-7);
    EXPECT_TRUE(azi1 == e[2] && azi2 == e[2]) << azi1 << " " << azi2;
  }
}

TEST(GeodesicInverse, ReturnsToTheSecondPointThroughTheDirectProblem) {
  // The direct solution from point 1 with the inverse's azimuth and length lands on point 2
  // heading azi2; its series are good to about 0.1 mm, so the bound is 2e-9 degrees (0.2 mm).
  // Every 17th pair of the WGS 84 file, off the poles.
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
    EXPECT_LE(AngleDifference(lon2, c.lon2) * std::cos(c.lat2 * KvConst::kDegToRad), 2e-9);
    // Within a degree of a pole the direct azimuth loses digits (both atan2 arguments shrink).
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
  const CKvEllipsoid flat("Flat", "FL", 6378137, 0.5);  // 1/f below 1: no positive minor axis
  const struct {
    const CKvEllipsoid& ellipsoid;
    double lon1, lat1, lon2, lat2;
  } inputs[] = {
      {kWgs84, 0, 90.000001, 1, 1}, {kWgs84, 0, 0, 1, -91}, {kWgs84, nan, 0, 1, 1},
      {kWgs84, 0, nan, 1, 1},       {kWgs84, 0, 0, inf, 1}, {kWgs84, -inf, 0, 1, 1},
      {flat, 0, 0, 1, 1},
  };
  for (const auto& in : inputs) {
    double s12 = 1, azi1 = 1, azi2 = 1;
    CKvVincenty(in.ellipsoid).GetDistance(in.lon1, in.lat1, in.lon2, in.lat2, s12, azi1, azi2);
    EXPECT_TRUE(std::isnan(s12) && std::isnan(azi1) && std::isnan(azi2))
        << in.lon1 << " " << in.lat1 << " " << in.lon2 << " " << in.lat2;
  }
}

}  // namespace
