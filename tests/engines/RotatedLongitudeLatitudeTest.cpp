#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <utility>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvRotatedLongitudeLatitudeProjection.h"
#include "engines/KvRotatedLongitudeLatitude.h"
#include "wkt/KvPRJParser.h"

// [P] cs2cs -f %.12f +proj=longlat +R=6371229 +to +proj=ob_tran +o_proj=longlat
//     +o_lat_p=<-pp> +o_lon_p=<-alpha> +lon_0=<lp> +R=6371229 (the other way for the inverse).

namespace {

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);
const CKvEllipsoid kSphere("Sphere 6371229", "XY", 6371229, 0);

// The independently evaluated rotations, on WGS 84 and on a sphere, are in
// tests/data/engines/rotated_longitude_latitude.cases.

TEST(RotatedLongitudeLatitude, UnrotatedPoleIsTheIdentityOthersDriftOnTheEllipsoid) {
  CKvRotatedLongitudeLatitude identity("Identity", 0, -90, 0, kWgs84);
  CKvRotatedLongitudeLatitude drift("Drift", 10, -40, 0, kWgs84);
  double worst = 0;
  for (double lon = -179.5; lon <= 180; lon += 14.5) {
    for (double lat : {-89.0, -75.0, -45.5, -20.0, 0.0, 15.0, 33.3, 60.0, 85.0, 89.9}) {
      double x, y, lon2, lat2;
      // Bowring's closed form is good to about 1e-11 degrees at height 0.
      identity.Geo2Proj(lon, lat, &x, &y);
      EXPECT_NEAR(x, lon, 1e-10) << lon << " " << lat;
      EXPECT_NEAR(y, lat, 1e-10) << lon << " " << lat;
      // The height dropped after the rotation is not restored by the inverse.
      drift.Geo2Proj(lon, lat, &x, &y);
      drift.Proj2Geo(x, y, &lon2, &lat2);
      worst = std::fmax(worst, std::fabs(lat2 - lat));
    }
  }
  EXPECT_LT(worst, 1e-3);  // 3.8e-4 for this pole
  EXPECT_GT(worst, 1e-6);  // it is not a spherical rotation
}

TEST(RotatedLongitudeLatitude, AngleShiftsTheGridLongitudeWithoutWrapping) {
  CKvRotatedLongitudeLatitude plain("Plain", 170, -55, 0, kWgs84);
  CKvRotatedLongitudeLatitude turned("Turned", 170, -55, 25, kWgs84);
  double p[4], t[4];  // x, y and back again
  plain.Geo2Proj(-5, -35, &p[0], &p[1]);
  turned.Geo2Proj(-5, -35, &t[0], &t[1]);
  EXPECT_LT(p[0], -155.0);  // so that x - 25 leaves -180..180
  EXPECT_TRUE(t[0] == p[0] - 25 && t[1] == p[1]) << t[0] << " " << p[0];
  // The inverse adds the angle back before rotating.
  plain.Proj2Geo(p[0], p[1], &p[2], &p[3]);
  turned.Proj2Geo(t[0], t[1], &t[2], &t[3]);
  EXPECT_NEAR(t[2], p[2], 1e-12);
  EXPECT_NEAR(t[3], p[3], 1e-12);
}

TEST(RotatedLongitudeLatitude, OriginIsTheGridCentrePoleTheGridPoleAndTheAreaClamps) {
  CKvRotatedLongitudeLatitude engine("Origin", 10, -40, 12, kSphere);
  double lon0 = 0, lat0 = 0, x = 0, y = 0;
  engine.GetOrigin(&lon0, &lat0);
  EXPECT_TRUE(lon0 == 10 && lat0 == 50);
  engine.Geo2Proj(lon0, lat0, &x, &y);
  EXPECT_NEAR(x, -12.0, 1e-12);
  EXPECT_NEAR(y, 0.0, 1e-12);
  // The pole's meridian is the grid's meridian: no convergence along it.
  EXPECT_NEAR(engine.GetConvergence(10, 20), 0.0, 1e-9);
  // On the sphere the south pole is the grid's, at grid latitude -90.
  for (const auto& pole : {std::make_pair(10.0, -40.0), {-123.5, 37.25}, {180.0, -5.0}}) {
    CKvRotatedLongitudeLatitude(" ", pole.first, pole.second, 7, kSphere)
        .Geo2Proj(pole.first, pole.second, &x, &y);
    EXPECT_NEAR(y, -90.0, 1e-6) << pole.first << " " << pole.second;
  }

  // Origins (179, 88) and (-179, -88): corners clamp at the date line and poles.
  CKvRotatedLongitudeLatitude north("North", 179, -2, 0, kWgs84);
  CKvRotatedLongitudeLatitude south("South", -179, -178, 0, kWgs84);
  double x0, y0, x1, y1;
  north.GetDefaultArea(&x0, &y0, &x1, &y1);
  north.Geo2Proj(180, 90, &x, &y);
  EXPECT_TRUE(x1 == x && y1 == y);
  north.Geo2Proj(176, 85, &x, &y);
  EXPECT_EQ(x0, x);
  south.GetDefaultArea(&x0, &y0, &x1, &y1);
  south.Geo2Proj(-180, -90, &x, &y);
  EXPECT_TRUE(x0 == x && y0 == y);
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
    double xyz[3], lon, lat;
    engine.Geo2XYZ(p[0], p[1], &xyz[0], &xyz[1], &xyz[2]);
    for (int k = 0; k < 3 && p[2] == 0; ++k) EXPECT_NEAR(xyz[k], p[3 + k], 1e-6) << k;
    engine.XYZ2Geo(p[3], p[4], p[5], &lon, &lat);  // the height is dropped
    EXPECT_NEAR(lon, p[0], 1e-10) << p[2];
    EXPECT_NEAR(lat, p[1], 1e-10) << p[2];
  }
  double lon, lat;
  engine.XYZ2Geo(0, 0, -6356752.314245, &lon, &lat);  // on the polar axis itself
  EXPECT_EQ(lat, -90.0);
}

TEST(RotatedLongitudeLatitude, CatalogueEntryBuildsTheEngineAndWritesMetres) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord record(
      new CKvRotatedLongitudeLatitudeProjection("KvRotated test grid", "Model", "XY", 10, -40, 0));
  std::unique_ptr<CKvProjection> engine(record.get()->CreateProjection());
  ASSERT_NE(dynamic_cast<CKvRotatedLongitudeLatitude*>(engine.get()), nullptr);
  EXPECT_TRUE(engine->IsGeographical());
  double x, y;
  engine->Geo2Proj(12, 52, &x, &y);
  EXPECT_NEAR(x, 1.231930640415, 1e-9);  // [P], as above: the record's angles in their places
  CKvPRJParser parser(*engine);
  EXPECT_EQ(parser.GetProjectionType(), CKvMapProjData::eRotatedLongitudeLatitude);
  EXPECT_TRUE(parser.GetLongitudeOfSouthPole() == 10 && parser.GetLatitudeOfSouthPole() == -40);
  // The engine declares metres where the record itself declares degrees.
  CString unit;
  double factor = 0;
  parser.GetProjUnit(unit, factor);
  EXPECT_STREQ(unit.GetString(), "Meter");
  EXPECT_EQ(factor, 1.0);
  CKvPRJParser(*record.get()).GetProjUnit(unit, factor);
  EXPECT_STREQ(unit.GetString(), "Degree");

  CKvRotatedLongitudeLatitudeProjection set;
  EXPECT_FALSE(CKvRotatedLongitudeLatitude("Not in any catalogue", 10, -40, 0, kWgs84)
                   .GetMapProjection(set));
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
