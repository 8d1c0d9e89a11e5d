#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvRotatedLongitudeLatitudeProjection.h"
#include "engines/KvRotatedLongitudeLatitude.h"
#include "wkt/KvPRJParser.h"

// [M] 40-digit mpmath evaluation sharing no code with the engine: grid axes
//     built geometrically, z' = -unit(lp, pp), x' = unit(lp, pp + 90),
//     y' = z' x x'; the point at height 0 in geocentric coordinates; its
//     components along the axes read back as geodetic longitude and latitude
//     by iterating the latitude to convergence (height dropped); then
//     x = lon' - alpha.  The inverse takes xyz(gx + alpha, gy) to
//     x' w0 + y' w1 + z' w2 and reads it back the same way.
// [P] PROJ on the sphere of radius 6371229 m; the south pole (lp, pp) and
//     the angle alpha become a north pole at latitude -pp and a turn -alpha
//     (one line):
//       cs2cs -f %.12f +proj=longlat +R=6371229 +to +proj=ob_tran
//             +o_proj=longlat +o_lat_p=<-pp> +o_lon_p=<-alpha> +lon_0=<lp> +R=6371229
//     [M] on the sphere agrees with [P] to 1e-12 degrees.

namespace {

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);
const CKvEllipsoid kSphere("Sphere 6371229", "XY", 6371229, 0);

struct SCase {
  double lp, pp, alpha, in1, in2, out1, out2;
};

void ExpectForward(const CKvEllipsoid& ellipsoid, const SCase& c, bool roundTrip) {
  CKvRotatedLongitudeLatitude engine("Rotated test", c.lp, c.pp, c.alpha, ellipsoid);
  double x = 0, y = 0, lon = 0, lat = 0;
  engine.Geo2Proj(c.in1, c.in2, &x, &y);
  EXPECT_NEAR(x, c.out1, 1e-9) << c.lp << " " << c.pp << " " << c.in1 << " " << c.in2;
  EXPECT_NEAR(y, c.out2, 1e-9) << c.lp << " " << c.pp << " " << c.in1 << " " << c.in2;
  if (!roundTrip) return;
  engine.Proj2Geo(x, y, &lon, &lat);
  EXPECT_NEAR(lon, c.in1, 1e-10);
  EXPECT_NEAR(lat, c.in2, 1e-10);
}

void ExpectInverse(const CKvEllipsoid& ellipsoid, const SCase& c) {
  CKvRotatedLongitudeLatitude engine("Rotated test", c.lp, c.pp, c.alpha, ellipsoid);
  double lon = 0, lat = 0;
  engine.Proj2Geo(c.in1, c.in2, &lon, &lat);
  EXPECT_NEAR(lon, c.out1, 1e-9) << c.lp << " " << c.pp << " " << c.in1 << " " << c.in2;
  EXPECT_NEAR(lat, c.out2, 1e-9) << c.lp << " " << c.pp << " " << c.in1 << " " << c.in2;
}

TEST(RotatedLongitudeLatitude, RotatesOnTheEllipsoidAsIndependentlyEvaluated) {
  ExpectForward(kWgs84, {10, -40, 0, 12, 52, 1.2369318785906, 1.84202721667653}, false);  // [M]
  ExpectForward(kWgs84, {-160, -30, 15, 100, -20, -127.101622118557, -1.64837339255012},
                false);  // [M]
  ExpectForward(kWgs84, {170, -55, -25, -170, 70, 33.332849194436, 35.8943611270177},
                false);                                                                    // [M]
  ExpectInverse(kWgs84, {10, -40, 0, 1.5, -2.25, 12.2292229387043, 47.9338223628183});     // [M]
  ExpectInverse(kWgs84, {170, -55, -25, 200, -10, -16.9443183544597, -44.9527728461386});  // [M]
}

TEST(RotatedLongitudeLatitude, RotatesOnTheSphereAsPROJAndInvertsExactly) {
  ExpectForward(kSphere, {10, -40, 0, 12, 52, 1.231930640415, 2.016471230211}, true);      // [P]
  ExpectForward(kSphere, {10, -40, 0, -5, 35, -12.606477722950, -13.735334992719}, true);  // [P]
  ExpectForward(kSphere, {-160, -30, 15, 100, -20, -127.206930024255, -1.701681983809},
                true);  // [P]
  ExpectForward(kSphere, {170, -55, -25, -170, 70, 33.295894665821, 35.831763311861},
                true);  // [P]
  // [P] the other way: cs2cs from ob_tran (+o_lon_p=-15) to longlat.
  ExpectInverse(kSphere, {-160, -30, 15, -30, 20, 142.949582891994, 73.152246425175});
}

TEST(RotatedLongitudeLatitude, SouthPoleMapsToGridLatitudeMinus90OnTheSphere) {
  const double poles[][2] = {{10, -40}, {-123.5, 37.25}, {180, -5}};
  for (const auto& pole : poles) {
    CKvRotatedLongitudeLatitude engine("Pole test", pole[0], pole[1], 7, kSphere);
    double x = 0, y = 0;
    engine.Geo2Proj(pole[0], pole[1], &x, &y);
    EXPECT_NEAR(y, -90.0, 1e-6) << pole[0] << " " << pole[1];
  }
}

TEST(RotatedLongitudeLatitude, UnrotatedPoleIsTheIdentity) {
  CKvRotatedLongitudeLatitude engine("Identity", 0, -90, 0, kWgs84);
  for (double lon : {-179.5, 0.0, 12.25, 135.0}) {
    for (double lat : {-89.0, -45.5, 0.0, 33.3, 89.9}) {
      double x = 0, y = 0;
      engine.Geo2Proj(lon, lat, &x, &y);
      // Bowring's closed form is good to about 1e-11 degrees at height 0.
      EXPECT_NEAR(x, lon, 1e-10) << lon << " " << lat;
      EXPECT_NEAR(y, lat, 1e-10) << lon << " " << lat;
    }
  }
}

TEST(RotatedLongitudeLatitude, AngleShiftsTheGridLongitudeWithoutWrapping) {
  CKvRotatedLongitudeLatitude plain("Plain", 170, -55, 0, kWgs84);
  CKvRotatedLongitudeLatitude turned("Turned", 170, -55, 25, kWgs84);
  double x0, y0, x, y, lon0, lat0, lon, lat;
  plain.Geo2Proj(-5, -35, &x0, &y0);
  turned.Geo2Proj(-5, -35, &x, &y);
  EXPECT_LT(x0, -155.0);  // so that x0 - 25 leaves -180..180
  EXPECT_EQ(x, x0 - 25);
  EXPECT_EQ(y, y0);
  // The inverse adds the angle back before rotating.
  plain.Proj2Geo(x0, y0, &lon0, &lat0);
  turned.Proj2Geo(x, y, &lon, &lat);
  EXPECT_NEAR(lon, lon0, 1e-12);
  EXPECT_NEAR(lat, lat0, 1e-12);
}

TEST(RotatedLongitudeLatitude, EllipsoidalRoundTripDriftsBelowAThousandthOfADegree) {
  // The height dropped after the rotation is not restored by the inverse.
  CKvRotatedLongitudeLatitude engine("Drift", 10, -40, 0, kWgs84);
  double worst = 0;
  for (double lon = -180; lon <= 180; lon += 15) {
    for (double lat = -85; lat <= 85; lat += 10) {
      double x, y, lon2, lat2;
      engine.Geo2Proj(lon, lat, &x, &y);
      engine.Proj2Geo(x, y, &lon2, &lat2);
      worst = std::fmax(worst, std::fabs(lat2 - lat));
    }
  }
  EXPECT_LT(worst, 1e-3);  // 3.8e-4 for this pole
  EXPECT_GT(worst, 1e-6);  // it is not a spherical rotation
}

TEST(RotatedLongitudeLatitude, OriginIsTheGridCentreAndTheAreaClamps) {
  CKvRotatedLongitudeLatitude engine("Origin", 10, -40, 12, kSphere);
  double lon0 = 0, lat0 = 0, x = 0, y = 0;
  engine.GetOrigin(&lon0, &lat0);
  EXPECT_EQ(lon0, 10.0);
  EXPECT_EQ(lat0, 50.0);
  engine.Geo2Proj(lon0, lat0, &x, &y);
  EXPECT_NEAR(x, -12.0, 1e-12);
  EXPECT_NEAR(y, 0.0, 1e-12);
  // The pole's meridian is the grid's meridian: no convergence along it.
  EXPECT_NEAR(engine.GetConvergence(10, 20), 0.0, 1e-9);

  // Origins (179, 88) and (-179, -88): corners clamp at the date line and poles.
  CKvRotatedLongitudeLatitude north("North", 179, -2, 0, kWgs84);
  CKvRotatedLongitudeLatitude south("South", -179, -178, 0, kWgs84);
  double x0, y0, x1, y1;
  north.GetDefaultArea(&x0, &y0, &x1, &y1);
  north.Geo2Proj(180, 90, &x, &y);
  EXPECT_EQ(x1, x);
  EXPECT_EQ(y1, y);
  north.Geo2Proj(176, 85, &x, &y);
  EXPECT_EQ(x0, x);
  south.GetDefaultArea(&x0, &y0, &x1, &y1);
  south.Geo2Proj(-180, -90, &x, &y);
  EXPECT_EQ(x0, x);
  EXPECT_EQ(y0, y);
}

TEST(RotatedLongitudeLatitude, ConvertsGeocentricCoordinatesAsPROJ) {
  CKvRotatedLongitudeLatitude engine("Geocentric", 0, -90, 0, kWgs84);
  // cct -d 6 +proj=cart +ellps=WGS84, heights 0, 0, -20000 and 21000 m.
  const double points[][6] = {
      {12, 52, 0, 3848972.139461, 818124.283928, 5002803.345483},
      {-75.5, -33.25, 0, 1336859.733379, -5169253.037098, -3477179.164803},
      {12, 52, -20000, 3836927.983562, 815564.219561, 4987043.130411},
      {-75.5, -33.25, 21000, 1341256.909332, -5186255.654936, -3488693.322623},
  };
  for (const auto& p : points) {
    double X, Y, Z, lon, lat;
    if (p[2] == 0) {
      engine.Geo2XYZ(p[0], p[1], &X, &Y, &Z);
      EXPECT_NEAR(X, p[3], 1e-6);
      EXPECT_NEAR(Y, p[4], 1e-6);
      EXPECT_NEAR(Z, p[5], 1e-6);
    }
    engine.XYZ2Geo(p[3], p[4], p[5], &lon, &lat);  // the height is dropped
    EXPECT_NEAR(lon, p[0], 1e-10) << p[2];
    EXPECT_NEAR(lat, p[1], 1e-10) << p[2];
  }
  double lon, lat;
  engine.XYZ2Geo(0, 0, -6356752.314245, &lon, &lat);  // on the polar axis itself
  EXPECT_EQ(lat, -90.0);
}

TEST(RotatedLongitudeLatitude, CloneCopiesTheRotation) {
  CKvRotatedLongitudeLatitude engine("Clone test", -160, -30, 15, kWgs84);
  std::unique_ptr<CKvProjection> copy(engine.Clone());
  double a[2], b[2];
  engine.Proj2Geo(-30, 20, &a[0], &a[1]);
  copy->Proj2Geo(-30, 20, &b[0], &b[1]);
  EXPECT_EQ(std::memcmp(a, b, sizeof a), 0);
  engine.Geo2Proj(100, -20, &a[0], &a[1]);
  copy->Geo2Proj(100, -20, &b[0], &b[1]);
  EXPECT_EQ(std::memcmp(a, b, sizeof a), 0);
}

TEST(RotatedLongitudeLatitude, CatalogueEntryBuildsTheEngineAndWritesMetres) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord record(
      new CKvRotatedLongitudeLatitudeProjection("KvRotated test grid", "Model", "XY", 10, -40, 0));
  std::unique_ptr<CKvProjection> engine(record.get()->CreateProjection());
  auto* rotated = dynamic_cast<CKvRotatedLongitudeLatitude*>(engine.get());
  ASSERT_NE(rotated, nullptr);
  EXPECT_TRUE(engine->IsGeographical());
  double x, y;
  engine->Geo2Proj(12, 52, &x, &y);
  EXPECT_NEAR(x, 1.231930640415, 1e-9);  // [P], as above
  CKvRotatedLongitudeLatitudeProjection set;
  ASSERT_TRUE(rotated->GetMapProjection(set));
  EXPECT_EQ(set.GetLatitudeOfSouthPole(), -40.0);

  CKvPRJParser parser(*engine);
  EXPECT_EQ(parser.GetProjectionType(), CKvMapProjData::eRotatedLongitudeLatitude);
  EXPECT_EQ(parser.GetLongitudeOfSouthPole(), 10.0);
  EXPECT_EQ(parser.GetLatitudeOfSouthPole(), -40.0);
  // The engine declares metres where the record itself declares degrees.
  CString unit;
  double factor = 0;
  parser.GetProjUnit(unit, factor);
  EXPECT_STREQ(unit.GetString(), "Meter");
  EXPECT_EQ(factor, 1.0);
  CKvPRJParser(*record.get()).GetProjUnit(unit, factor);
  EXPECT_STREQ(unit.GetString(), "Degree");

  CKvRotatedLongitudeLatitude orphan("Not in any catalogue", 10, -40, 0, kWgs84);
  EXPECT_FALSE(orphan.GetMapProjection(set));
  EXPECT_EQ(CKvPRJParser(orphan).GetProjectionType(), CKvMapProjData::eNonProjected);
}

TEST(RotatedLongitudeLatitude, SetWithoutKnownEllipsoidGivesAnUnusableEngine) {
  kvtest::EnsureEllipsoids();
  for (const char* id : {"", "??"}) {
    CKvRotatedLongitudeLatitudeProjection set("No ellipsoid", "", id, 10, -40, 0);
    std::unique_ptr<CKvProjection> engine(set.CreateProjection());
    double x = 0, y = 0, lon = 0, lat = 0;
    engine->Geo2Proj(12, 52, &x, &y);
    engine->Proj2Geo(1, 2, &lon, &lat);
    EXPECT_TRUE(std::isnan(x) && std::isnan(y) && std::isnan(lon) && std::isnan(lat)) << id;
    CKvEllipsoid e("E", "E", 1, 2);
    EXPECT_FALSE(engine->GetAnonymousEllipsoid(e));
    EXPECT_EQ(e.GetMajor(), 1.0);
  }
}

}  // namespace
