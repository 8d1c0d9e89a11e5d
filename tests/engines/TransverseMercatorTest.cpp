#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "engines/KvTransverseMercator.h"
#include "engines/KvTransverseMercatorJHS.h"
#include "platform/KvConstants.h"
#include "wkt/KvPRJParser.h"

// Reference values marked [K]: Krueger's series to n^6 with the exact
// conformal latitude, mpmath at 40 digits, sharing nothing with the engines
// but the published series: /usr/bin/python3 tools/engine_references.py tm

namespace {

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);
const CKvEllipsoid kAiry("Airy 1830", "AA", 6377563.396, 299.3249646);

// UTM zone 32 north: k0 0.9996, central meridian 9, false easting 500000.
template <class Engine>
Engine Utm32(const char* name = "UTM 32 test") {
  return Engine(name, 0.9996, 9, 0, 500000, 0, kWgs84);
}

// British National Grid, the worked example of EPSG Guidance Note 7-2.
template <class Engine>
Engine NationalGrid() {
  return Engine("BNG test", 0.9996012717, -2, 49, 400000, -100000, kAiry);
}

// The reference values of both engines are in tests/data/engines/
// transverse_mercator.cases.

template <class Engine>
void ExpectPolarOriginAtFalseOrigin(double originLatitude) {
  Engine engine("Polar test", 0.994, 0, originLatitude, 2000000, 2000000, kWgs84);
  double x, y;
  engine.Geo2Proj(0, originLatitude, &x, &y);
  EXPECT_NEAR(x, 2000000, 1e-6) << originLatitude;
  EXPECT_NEAR(y, 2000000, 1e-6) << originLatitude;
}

TEST(TransverseMercator, PolarOriginMapsToTheFalseOrigin) {
  for (double lat0 : {90.0, -90.0}) {
    ExpectPolarOriginAtFalseOrigin<CKvTransverseMercator>(lat0);
    ExpectPolarOriginAtFalseOrigin<CKvTransverseMercatorJHS>(lat0);
  }
}

TEST(TransverseMercator, EnginesAgreeToAMicrometreNearTheCentralMeridian) {
  CKvTransverseMercator tm = Utm32<CKvTransverseMercator>();
  CKvTransverseMercatorJHS jhs = Utm32<CKvTransverseMercatorJHS>();
  for (double lon = 9 - 3.5; lon <= 9 + 3.5; lon += 0.5) {
    for (double lat = -84; lat <= 84; lat += 4) {
      double x1, y1, x2, y2;
      tm.Geo2Proj(lon, lat, &x1, &y1);
      jhs.Geo2Proj(lon, lat, &x2, &y2);
      EXPECT_NEAR(x1, x2, 1e-6) << lon << " " << lat;
      EXPECT_NEAR(y1, y2, 1e-6) << lon << " " << lat;
    }
  }
}

TEST(TransverseMercator, ContinuesOverThePoleWithRoundHalfMeridian) {
  CKvTransverseMercator engine = Utm32<CKvTransverseMercator>();
  double x, y91, y89, lon, lat;
  engine.Geo2Proj(9, 91, &x, &y91);
  engine.Geo2Proj(9, 89, &x, &y89);
  // 91 folds to 20000000 - (k0 * half meridian - y(89)); with the quarter
  // meridian 10001965.72931 m of WGS 84 [K] the gap is 4070.11406 m.
  EXPECT_NEAR(y91 - y89, 20000000 - 2 * 0.9996 * 10001965.72931, 1e-4);
  engine.Proj2Geo(x, y91, &lon, &lat);
  EXPECT_NEAR(lat, 89.0, 0.05);  // near 89, never beyond the pole
  EXPECT_LT(lat, 90.0);
  EXPECT_NEAR(lon, 9.0, 1e-9);
}

TEST(TransverseMercator, SouthernHemisphereIsTheExactMirrorImage) {
  CKvTransverseMercator engine("South test", 0.9996, 9, 0, 500000, 10000000, kWgs84);
  for (double lat : {0.5, 17.25, 45.0, 80.0}) {
    double xn, yn, xs, ys;
    engine.Geo2Proj(12, lat, &xn, &yn);
    engine.Geo2Proj(12, -lat, &xs, &ys);
    EXPECT_EQ(xs, xn);
    EXPECT_EQ(ys - 10000000, -(yn - 10000000));
  }
}

template <class Engine>
void ExpectLocalPassThrough(const char* name) {
  Engine engine(name, 0.9996, 9, 0, 500000, 0, kWgs84);
  EXPECT_TRUE(engine.IsLocal());
  EXPECT_STREQ(engine.GetName(), "NON-UTM");
  double x, y, lon, lat, x0, y0, x1, y1;
  engine.Geo2Proj(123.4, 56.7, &x, &y);
  EXPECT_EQ(x, 123.4);
  EXPECT_EQ(y, 56.7);
  engine.Proj2Geo(123.4, 56.7, &lon, &lat);
  EXPECT_EQ(lon, 123.4);
  EXPECT_EQ(lat, 56.7);
  EXPECT_EQ(engine.GetConvergence(123.4, 56.7), 0.0);
  engine.GetDefaultArea(&x0, &y0, &x1, &y1);
  EXPECT_EQ(x0, 0.0);
  EXPECT_EQ(y0, 0.0);
  EXPECT_EQ(x1, 10000.0);
  EXPECT_EQ(y1, 10000.0);
}

TEST(TransverseMercator, LocalSystemPassesCoordinatesThrough) {
  ExpectLocalPassThrough<CKvTransverseMercator>("NON-UTM");
  ExpectLocalPassThrough<CKvTransverseMercatorJHS>("NON-UTM");
  // An unnamed engine takes the local system's name, and with it the flag.
  ExpectLocalPassThrough<CKvTransverseMercator>("");
  ExpectLocalPassThrough<CKvTransverseMercatorJHS>("");
}

TEST(TransverseMercator, CentralMeridianHasNoConvergenceAndScaleK0) {
  CKvTransverseMercator tm = Utm32<CKvTransverseMercator>();
  CKvTransverseMercatorJHS jhs = Utm32<CKvTransverseMercatorJHS>();
  EXPECT_EQ(tm.GetConvergence(9, 56), 0.0);
  EXPECT_EQ(jhs.GetConvergence(9, 56), 0.0);
  EXPECT_EQ(tm.GetScaleFactor(9, 56), 0.9996);
  EXPECT_EQ(jhs.GetScaleFactor(9, 56), 0.9996);
  // Off the meridian the first-order convergence is dLon * sin(lat) degrees.
  EXPECT_NEAR(tm.GetConvergence(10, 50), std::sin(50 * KvConst::kDegToRad), 1e-3);
  double x0, y0, x1, y1, x, y;
  tm.GetDefaultArea(&x0, &y0, &x1, &y1);
  tm.Geo2Proj(12, 3, &x, &y);
  EXPECT_EQ(x1, x);
  EXPECT_EQ(y1, y);
}

TEST(TransverseMercator, SphereHasRectifyingRadiusK0TimesA) {
  const CKvEllipsoid sphere("Sphere", "XY", 6371229, 0);
  CKvTransverseMercator engine("Sphere test", 0.9996, 0, 0, 0, 0, sphere);
  double x, y;
  engine.Geo2Proj(0, 90, &x, &y);  // quarter great circle: k0 a pi / 2
  EXPECT_NEAR(y, 0.9996 * 6371229 * 90 * KvConst::kDegToRad, 1e-6);
  engine.Geo2Proj(10, 0, &x, &y);  // on the equator: k0 a atanh(sin dLon)
  EXPECT_NEAR(x, 0.9996 * 6371229 * std::atanh(std::sin(10 * KvConst::kDegToRad)), 1e-6);
  CKvEllipsoid e;
  ASSERT_TRUE(engine.GetAnonymousEllipsoid(e));
  EXPECT_EQ(e.GetMajor(), 6371229.0);
  EXPECT_EQ(e.GetInvFlatness(), 0.0);
}

TEST(TransverseMercator, CloneProjectsBitIdentically) {
  CKvTransverseMercator tm = NationalGrid<CKvTransverseMercator>();
  CKvTransverseMercatorJHS jhs = NationalGrid<CKvTransverseMercatorJHS>();
  for (CKvProjection* engine :
       {static_cast<CKvProjection*>(&tm), static_cast<CKvProjection*>(&jhs)}) {
    std::unique_ptr<CKvProjection> copy(engine->Clone());
    double x1, y1, x2, y2;
    engine->Geo2Proj(0.5, 50.5, &x1, &y1);
    copy->Geo2Proj(0.5, 50.5, &x2, &y2);
    EXPECT_EQ(std::memcmp(&x1, &x2, sizeof x1), 0);
    EXPECT_EQ(std::memcmp(&y1, &y2, sizeof y1), 0);
  }
}

TEST(TransverseMercator, EngineOutsideTheCatalogueIsNonProjected) {
  CKvTransverseMercator engine = Utm32<CKvTransverseMercator>("Not in any catalogue");
  CKvTransverseMercatorProjection set;
  EXPECT_FALSE(engine.GetMapProjection(set));
  CKvEllipsoid e;
  EXPECT_FALSE(engine.GetEllipsoid(e));
  CKvPRJParser parser(engine);
  EXPECT_EQ(parser.GetProjectionType(), CKvMapProjData::eNonProjected);
  EXPECT_STREQ(parser.GetProjectionTypeName().GetString(), "Non_Projected");
}

TEST(TransverseMercator, CatalogueEntryBuildsTheGuidanceNoteEngine) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord record(new CKvTransverseMercatorProjection("KvTm test zone", "Datum", "WE",
                                                                  0.9996, 9, 0, 500000, 0));
  std::unique_ptr<CKvProjection> engine(record.get()->CreateProjection());
  ASSERT_NE(dynamic_cast<CKvTransverseMercatorJHS*>(engine.get()), nullptr);
  double x, y;
  engine->Geo2Proj(15, 50, &x, &y);
  EXPECT_NEAR(x, 929865.502, 1e-3);  // [K], as above
  CKvPRJParser parser(*engine);
  EXPECT_EQ(parser.GetProjectionType(), CKvMapProjData::eTransverseMercator);
  EXPECT_STREQ(parser.GetProjectionTypeName().GetString(), "Transverse_Mercator");

  // Under the record's name with another meridian, the Gauss-Krueger engine
  // reports its own meridian and the JHS one the catalogue's.
  CKvTransverseMercator tm("KvTm test zone", 0.9996, 15, 0, 500000, 0, kWgs84);
  CKvTransverseMercatorJHS jhs("KvTm test zone", 0.9996, 15, 0, 500000, 0, kWgs84);
  CKvTransverseMercatorProjection fromTm, fromJhs;
  ASSERT_TRUE(tm.GetMapProjection(fromTm));
  ASSERT_TRUE(jhs.GetMapProjection(fromJhs));
  EXPECT_EQ(fromTm.GetCentre(), 15.0);
  EXPECT_EQ(fromJhs.GetCentre(), 9.0);
  EXPECT_EQ(fromTm.GetScale(), 0.9996);
}

TEST(TransverseMercator, SetWithoutEllipsoidHasNoAnonymousEllipsoid) {
  CKvTransverseMercatorProjection set("No ellipsoid", "", "", 0.9996, 9, 0, 500000, 0);
  std::unique_ptr<CKvProjection> jhs(set.CreateProjection());
  CKvTransverseMercator tm(&set);
  CKvEllipsoid e("E", "E", 1, 2);
  EXPECT_FALSE(jhs->GetAnonymousEllipsoid(e));
  EXPECT_FALSE(tm.GetAnonymousEllipsoid(e));
  EXPECT_EQ(e.GetMajor(), 1.0);
}

}  // namespace
