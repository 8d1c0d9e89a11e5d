#include <gtest/gtest.h>

#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "mapproj/KvVincenty.h"

namespace {

double Dms(double d, double m, double s) { return std::copysign(std::fabs(d) + m / 60 + s / 3600, d); }

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

TEST(Vincenty, ReachesIndependentlyComputedEndPoints) {
  const CKvEllipsoid bessel("Bessel 1841", "BR", 6377397.155, 299.1528128);
  const CKvEllipsoid international("International 1924", "IN", 6378388, 297);
  const CKvEllipsoid sphere("Sphere", "SP", 6371000, 0);
  struct Line {
    const char* what;
    const CKvEllipsoid& ellipsoid;
    double lon1, lat1, azimuth, distance, lon2, lat2, azimuth2, tol;
  };
  // Vincenty (1975), Survey Review 23(176), test lines (a) and (d): the paper
  // rounds distances to 1 mm and angles to 0.00001", hence 5e-9 degrees.
  // "ODE": the geodesic equations dphi/ds = cos(az)/M, dlon/ds =
  // sin(az)/(N cos phi), daz/ds = sin(az) tan(phi)/N integrated by RK4 in
  // mpmath at 40 digits (halving the step changes them by < 1e-12 degrees).
  // 1e-9 degrees is about 0.1 mm.
  // "Great circle": sin(lat2) = sin(lat1) cos(d) + cos(lat1) sin(d) cos(az),
  // d = s/R, in mpmath; the sphere takes its latitude as reduced latitude.
  const Line lines[] = {
      {"Vincenty (a)", bessel, 0, Dms(55, 45, 0), Dms(96, 36, 8.79960), 14110526.170,
       Dms(108, 13, 0), -Dms(33, 26, 0), Dms(137, 52, 22.01454), 5e-9},
      {"Vincenty (d), nearly antipodal", international, 0, 1, 89, 19960000,
       Dms(179, 17, 48.02997), -Dms(0, 59, 53.83076), Dms(91, 0, 6.11733), 5e-9},
      {"ODE regional", kWgs84, 9, 56, 45, 100000, 10.1521499891297, 56.6297381826480,
       45.9587262532473, 1e-9},
      {"ODE long", kWgs84, -75, 40, 50, 10000000, 43.0959048070044, 29.6457875421663,
       137.4999546562496, 1e-9},
      {"ODE near-equatorial", kWgs84, 0, 0.001, 89.99, 10000000, 89.8315285873256,
       0.0100312795439, 90.0010199847110, 1e-9},
      // The equator itself: lon2 - lon1 = s/a radians.
      {"ODE equatorial", kWgs84, 20, 0, 90, 1000000, 28.9831528411952, 0, 90, 1e-9},
      {"ODE meridional north", kWgs84, 10, 0, 0, 5000000, 10, 45.1354737865275, 0, 1e-9},
      {"ODE meridional south", kWgs84, -60, 45, 180, 3000000, -60, 17.9454503734803, 180, 1e-9},
      {"Great circle", sphere, -3, 51.5, 100, 8000000, 68.014494525873353, 8.0344218298174768,
       141.74704197042181, 1e-11},
      // Longitude lon1 + L, not brought into -180..180.
      {"Great circle over the antimeridian", sphere, 150, -35, 210, 15000000, -9.152500153884053,
       -5.6042901233299718, -24.30181070176802, 1e-11},
  };
  for (const Line& line : lines) {
    SCOPED_TRACE(line.what);
    double lon2 = 0, lat2 = 0, azimuth2 = 0;
    CKvVincenty(line.ellipsoid)
        .GetPoint(line.lon1, line.lat1, line.azimuth, line.distance, lon2, lat2, azimuth2);
    EXPECT_NEAR(lon2, line.lon2, line.tol);
    EXPECT_NEAR(lat2, line.lat2, line.tol);
    EXPECT_NEAR(azimuth2, line.azimuth2, line.tol);
  }
}

TEST(Vincenty, ZeroDistanceStaysAtTheStart) {
  const double starts[][3] = {{9, 56, 45}, {-120, -33.5, 271.25}, {0, 0, 0}};
  for (const auto& start : starts) {
    double lon2 = -1, lat2 = -1, azimuth2 = -1;
    CKvVincenty(kWgs84).GetPoint(start[0], start[1], start[2], 0, lon2, lat2, azimuth2);
    EXPECT_DOUBLE_EQ(lon2, start[0]);
    EXPECT_NEAR(lat2, start[1], 1e-13);
    EXPECT_NEAR(azimuth2, std::remainder(start[2], 360.0), 1e-12);  // atan2: -180..180
  }
}

}  // namespace
