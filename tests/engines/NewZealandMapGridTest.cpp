#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvNewZealandMapGridProjection.h"
#include "engines/KvNewZealandMapGrid.h"
#include "wkt/KvPRJParser.h"

// [P]: PROJ, one line each way:
//   proj -f "%.4f" +proj=nzmg +lat_0=-41 +lon_0=173 +x_0=2510000 +y_0=6023150 +ellps=intl
//   invproj -f "%.11f" (same parameters)

namespace {

const CKvEllipsoid kInternational("International 1924", "IN", 6378388, 297);

CKvNewZealandMapGrid Nzmg(const char* name = "NZMG test",
                          const CKvEllipsoid& ellipsoid = kInternational) {
  return CKvNewZealandMapGrid(name, 173, -41, 2510000, 6023150, ellipsoid);
}

TEST(NewZealandMapGrid, AgreesWithIndependentValuesBothWays) {
  struct Row {
    double lon, lat, x, y, tolerance;  // metres forward, degrees inverse
  };
  const Row forward[] = {
      {174.7633, -36.8485, 2667665.9324, 6482380.3138, 1e-3},      // [P] Auckland
      {172.6362, -43.5321, 2480614.5269, 5741827.0255, 1e-3},      // [P] Christchurch
      {168.35, -46.9, 2155463.4816, 5357672.3299, 1e-3},           // [P] Stewart Island
      {178.0, -38.0, 2949107.1685, 6343863.8199, 1e-3},            // [P] East Cape
      {172.739194, -34.444066, 2487100.6644, 6751049.7543, 1e-3},  // [P] the first LINZ point
      {173, -41, 2510000, 6023150, 0},                             // the origin, exactly
  };
  const Row inverse[] = {
      {174.76329999974, -36.84849999944, 2667665.9324, 6482380.3138, 1e-9},  // [P]
      {166.49999999958, -45.50000000066, 2002410.1324, 5503189.8334, 1e-9},  // [P]
      {175.1483920770, -37.5840845772, 2700000, 6400000, 1e-9},              // [P]
      {173, -41, 2510000, 6023150, 0},
      // LINZ, "New Zealand map grid transformation formulae", test vectors; the
      // geographic values are rounded to 1e-6 degrees.
      {172.739194, -34.444066, 2487100.638, 6751049.719, 5e-7},
      {172.723106, -40.512409, 2486533.395, 6077263.661, 5e-7},
      {169.172062, -46.651295, 2216746.425, 5388508.765, 5e-7},
  };
  CKvNewZealandMapGrid engine = Nzmg();
  // A clone and an engine of another flattening give the same numbers (the
  // series ignore f); doubling a doubles the distances from the false origin.
  std::unique_ptr<CKvProjection> copy(engine.Clone());
  CKvNewZealandMapGrid flatter = Nzmg("Flatter", CKvEllipsoid("F", "FL", 6378388, 298.257223563));
  CKvNewZealandMapGrid doubled = Nzmg("Doubled", CKvEllipsoid("Big", "BG", 2 * 6378388.0, 297));
  for (const auto& c : forward) {
    SCOPED_TRACE(testing::Message() << c.lon << " " << c.lat);
    double u, v, u2, v2, u3, v3, u4, v4;
    engine.Geo2Proj(c.lon, c.lat, &u, &v);
    copy->Geo2Proj(c.lon, c.lat, &u2, &v2);
    flatter.Geo2Proj(c.lon, c.lat, &u3, &v3);
    doubled.Geo2Proj(c.lon, c.lat, &u4, &v4);
    EXPECT_NEAR(u, c.x, c.tolerance);
    EXPECT_NEAR(v, c.y, c.tolerance);
    EXPECT_TRUE(u2 == u && v2 == v && u3 == u && v3 == v);
    EXPECT_NEAR(u4 - 2510000, 2 * (u - 2510000), 1e-6);
    EXPECT_NEAR(v4 - 6023150, 2 * (v - 6023150), 1e-6);
  }
  for (const auto& c : inverse) {
    double lon, lat;
    engine.Proj2Geo(c.x, c.y, &lon, &lat);
    EXPECT_NEAR(lon, c.lon, c.tolerance) << c.x << " " << c.y;
    EXPECT_NEAR(lat, c.lat, c.tolerance) << c.x << " " << c.y;
  }
}

TEST(NewZealandMapGrid, RoundTripsAcrossTheCountryWellUnderAMillimetre) {
  CKvNewZealandMapGrid engine = Nzmg();
  for (double lon = 166.0; lon <= 179.0; lon += 1.0) {
    for (double lat = -47.5; lat <= -34.0; lat += 0.75) {
      double x, y, lon2, lat2, x2, y2;
      engine.Geo2Proj(lon, lat, &x, &y);
      engine.Proj2Geo(x, y, &lon2, &lat2);
      engine.Geo2Proj(lon2, lat2, &x2, &y2);
      // The D series only approximates the inverse of the A series: up to
      // about 0.1 mm at 47.5 S.
      EXPECT_NEAR(x2, x, 2e-4) << lon << " " << lat;
      EXPECT_NEAR(y2, y, 2e-4) << lon << " " << lat;
    }
  }
}

TEST(NewZealandMapGrid, FarPointsStillReturnWithoutHanging) {
  CKvNewZealandMapGrid engine = Nzmg();
  double x = 0, y = 0, lon = 0, lat = 0;
  engine.Geo2Proj(-7, 51, &x, &y);  // the other side of the world
  EXPECT_TRUE(std::isfinite(x) && std::isfinite(y));
  // Far off the grid Newton's method does not settle; the step limit ends it.
  for (double far : {1e8, -1e8, 1e12}) engine.Proj2Geo(far, -far, &lon, &lat);
  engine.Proj2Geo(NAN, 6023150, &lon, &lat);
  EXPECT_TRUE(std::isnan(lon));
}

TEST(NewZealandMapGrid, ConvergenceAndFixedDefaultArea) {
  CKvNewZealandMapGrid engine = Nzmg();
  // proj -V (parameters above): convergence -1d10'24.834" at Auckland and
  // 1d42'25.739" at 170.5036 E, 45.8788 S; the engine differences over 1'.
  EXPECT_NEAR(engine.GetConvergence(174.7633, -36.8485), -1.17356492, 1e-3);
  EXPECT_NEAR(engine.GetConvergence(170.5036, -45.8788), 1.70714975, 1e-3);
  // The area is fixed, whatever the origin.
  double x0, y0, x1, y1;
  CKvNewZealandMapGrid("Elsewhere", 0, 0, 0, 0, kInternational).GetDefaultArea(&x0, &y0, &x1, &y1);
  EXPECT_TRUE(x0 == 2000000 && y0 == 5300000 && x1 == 3000000 && y1 == 6800000);
}

TEST(NewZealandMapGrid, CatalogueEntryBuildsTheEngineAndWritesItsDefinition) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord record(new CKvNewZealandMapGridProjection("KvNzmg test grid", "NZGD49", "IN",
                                                                 173, -41, 2510000, 6023150));
  std::unique_ptr<CKvProjection> engine(record.get()->CreateProjection());
  ASSERT_NE(dynamic_cast<CKvNewZealandMapGrid*>(engine.get()), nullptr);
  double x, y;
  engine->Geo2Proj(174.7633, -36.8485, &x, &y);
  EXPECT_NEAR(x, 2667665.9324, 1e-3);  // [P], as above
  CKvPRJParser parser(*engine);
  EXPECT_EQ(parser.GetProjectionType(), CKvMapProjData::eNewZealandMapGrid);
  EXPECT_STREQ(parser.GetDatum().GetString(), "NZGD49");
  EXPECT_TRUE(parser.GetCentralMeridian() == 173 && parser.GetLatitudeOfOrigin() == -41 &&
              parser.GetFalseNorthing() == 6023150);
  CString text;
  ASSERT_TRUE(parser.Format(text));
  EXPECT_NE(std::strstr(text.GetString(), "PROJECTION[\"New_Zealand_Map_Grid\"]"), nullptr);
  EXPECT_NE(std::strstr(text.GetString(), "UNIT[\"Meter\",1"), nullptr) << text.GetString();
  CKvNewZealandMapGridProjection set;
  EXPECT_FALSE(Nzmg("Not in any catalogue").GetMapProjection(set));
}

TEST(NewZealandMapGrid, SetWithoutKnownEllipsoidGivesAnUnusableEngine) {
  kvtest::EnsureEllipsoids();
  for (const char* id : {"", "??"}) {
    CKvNewZealandMapGridProjection set("No ellipsoid", "", id, 173, -41, 2510000, 6023150);
    std::unique_ptr<CKvProjection> engine(set.CreateProjection());
    double x = 0, y = 0, lon = 0, lat = 0;
    engine->Geo2Proj(173, -41, &x, &y);
    engine->Proj2Geo(2510000, 6023150, &lon, &lat);
    EXPECT_TRUE(std::isnan(x) && std::isnan(y) && std::isnan(lon) && std::isnan(lat)) << id;
    CKvEllipsoid e("E", "E", 1, 2);
    EXPECT_FALSE(engine->GetAnonymousEllipsoid(e));
    EXPECT_EQ(e.GetMajor(), 1.0);
  }
}

}  // namespace
