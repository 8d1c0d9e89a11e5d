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

// The reference values, both ways, are in tests/data/engines/
// new_zealand_map_grid.cases.

TEST(NewZealandMapGrid, ScalesWithTheSemiMajorAxisOnlyAndClonesExactly) {
  CKvNewZealandMapGrid engine = Nzmg();
  // A clone and an engine of another flattening give the same numbers (the
  // series ignore f); doubling a doubles the distances from the false origin.
  std::unique_ptr<CKvProjection> copy(engine.Clone());
  CKvNewZealandMapGrid flatter = Nzmg("Flatter", CKvEllipsoid("F", "FL", 6378388, 298.257223563));
  CKvNewZealandMapGrid doubled = Nzmg("Doubled", CKvEllipsoid("Big", "BG", 2 * 6378388.0, 297));
  const double points[][2] = {{174.7633, -36.8485}, {168.35, -46.9}, {178.0, -38.0}, {173, -41}};
  for (const auto& p : points) {
    SCOPED_TRACE(testing::Message() << p[0] << " " << p[1]);
    double u, v, u2, v2, u3, v3, u4, v4;
    engine.Geo2Proj(p[0], p[1], &u, &v);
    copy->Geo2Proj(p[0], p[1], &u2, &v2);
    flatter.Geo2Proj(p[0], p[1], &u3, &v3);
    doubled.Geo2Proj(p[0], p[1], &u4, &v4);
    EXPECT_TRUE(u2 == u && v2 == v && u3 == u && v3 == v);
    EXPECT_NEAR(u4 - 2510000, 2 * (u - 2510000), 1e-6);
    EXPECT_NEAR(v4 - 6023150, 2 * (v - 6023150), 1e-6);
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
