#include <gtest/gtest.h>

#include <cmath>

#include "KvCart.h"
#include "TestCatalogue.h"
#include "mapproj/KvGeocentric.h"

namespace {

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137.0, 298.257223563);

struct Case {
  double X, Y, Z;
  double lat, lon, h;
};

// Expected: GeographicLib's exact conversion,
//   echo "X Y Z" | CartConvert -r -p 12
// (WGS 84).  From 10 km below to a few kilometres above the ellipsoid PROJ
// agrees to 1e-11 degrees,
//   echo "X Y Z 0" | cct -d 15 -I +proj=cart +ellps=WGS84
// but higher up cct's own answer drifts from the exact one (0.3 m and
// 5e-7 degrees at 30,000 km), so the exact values are the reference.
const Case kCases[] = {
    // The polar axis: latitude +-90 and the height |Z| - b.
    {0, 0, 6356752.314245, 90, 0, -0.0000001793},
    {0, 0, -6356752.314245, -90, 0, -0.0000001793},
    {0, 0, 36356752.314245, 90, 0, 29999999.9999998212},
    {0, 0, 6346752.314245, 90, 0, -10000.0000001798},
    {1, 1, 6356752.314245, 89.999987338497846, 45, -0.0000000240},
    // The equator.
    {6378137, 0, 0, 0, 0, 0},
    {-6368137, 0, 0, 0, 180, -10000.0000000006},
    {0, 36378137, 0, 0, 90, 30000000},
    // The ground, 10 km below and up to 30,000 km above.
    {4201000, 168000, 4780000, 48.856792797531000, 2.290065369708664, -126.7463906003},
    {3771793.968, 140253.342, 5124304.349, 53.809394439962126, 2.129550001320768, 72.9999306725},
    {-2694892.46, -4296046.93, 3854273.55, 37.420822639851899, -122.099878462041772, -518.6771599600},
    {-6358000, -300000, -700000, -6.317679066169814, -177.298522399237157, 25569.1987007289},
    {12000000, -15000000, 20000000, 46.199317487313039, -51.340191745909905, 21363834.8905285709},
    {-30000000, 5000000, -15000000, -26.281034073929668, 170.537677791974374, 27537695.4694509432},
    // Deep inside: the foot of the point on the ellipsoid.
    {2000000, 2000000, 1000000, 19.730455646549530, 45, -3375734.0979245878},
    {1000, 0, 0, 88.662480514868719, 0, -6356740.6432565628},
    {10000, 0, 5000, 77.961926985427638, 0, -6350708.3382255323},
    {0, 0, 0, 90, 0, -6356752.3142451793},
};

}  // namespace

TEST(KvGeocentric, MatchesTheExactConversionEverywhere) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(testing::Message() << c.X << " " << c.Y << " " << c.Z);
    double lon, lat, h;
    CKvGeocentric::XYZ2Geo(kWgs84, c.X, c.Y, c.Z, &lon, &lat, &h);
    EXPECT_NEAR(lat, c.lat, 1e-11);
    EXPECT_NEAR(lon, c.lon, 1e-11);
    EXPECT_NEAR(h, c.h, 1e-6);
  }
  // The centre seen from below the equatorial plane: the southern foot.
  double lon, lat, h;
  CKvGeocentric::XYZ2Geo(kWgs84, 0, 0, -0.0, &lon, &lat, &h);
  EXPECT_EQ(lat, -90.0);
}

// Forward and back over every latitude and the whole height range; the
// forward formula is exact, so the inverse must return the input.
TEST(KvGeocentric, RoundTripsFromBelowTheGroundToGeostationaryHeights) {
  double worstLat = 0, worstH = 0;
  for (double h0 : {-10e3, -1e3, 0.0, 350.0, 8848.0, 100e3, 1000e3, 20200e3, 30000e3}) {
    for (double lat0 = -90; lat0 <= 90; lat0 += 0.25) {
      double X, Y, Z, lon, lat, h;
      CKvGeocentric::Geo2XYZ(kWgs84, 12.5, lat0, h0, &X, &Y, &Z);
      CKvGeocentric::XYZ2Geo(kWgs84, X, Y, Z, &lon, &lat, &h);
      worstLat = std::fmax(worstLat, std::fabs(lat - lat0));
      worstH = std::fmax(worstH, std::fabs(h - h0));
      if (std::fabs(lat0) < 90) {
        EXPECT_NEAR(lon, 12.5, 1e-12);
      }
    }
  }
  EXPECT_LT(worstLat, 1e-13);
  EXPECT_LT(worstH, 5e-8);  // a few units in the last place of 36,000 km
  // A sphere needs no iteration at all.
  const CKvEllipsoid sphere("Sphere", "SP", 6371000.0, 0.0);
  double lon, lat, h;
  CKvGeocentric::XYZ2Geo(sphere, 0, 3000000, 4000000, &lon, &lat, &h);
  EXPECT_NEAR(lat, std::atan2(4.0, 3.0) * 57.29577951308232, 1e-12);
  EXPECT_NEAR(h, 5000000.0 - 6371000.0, 1e-8);
}

// The flat entry on the polar axis: the issue reported latitude -90 and a
// height of -6399593.6 m here, and NaN at the centre.
TEST(KvGeocentric, FlatEntryAnswersOnThePolarAxisAndAtTheCentre) {
  kvtest::EnsureCatalogue();
  void* handle = nullptr;
  int status = -1;
  C_KVMP_CREATE("LONG/LAT", &handle, &status);
  ASSERT_EQ(status, 0);
  double lon, lat, h;
  C_KVMP_XYZ2GEO(handle, 0, 0, 6356752.314, &lon, &lat, &h);
  EXPECT_EQ(lat, 90.0);
  EXPECT_NEAR(h, -0.000245179, 1e-9);  // cct: 0 90 -0.000245179050
  C_KVMP_XYZ2GEO(handle, 0, 0, 0, &lon, &lat, &h);
  EXPECT_EQ(lat, 90.0);
  EXPECT_NEAR(h, -6356752.314245179, 1e-6);  // cct: 0 90 -6356752.314245179296
  C_KVMP_DESTROY(&handle, &status);
}
