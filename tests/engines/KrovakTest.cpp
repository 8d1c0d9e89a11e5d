// The Krovak engine beyond its reference cases (tests/data/engines/
// krovak.cases): the orientation of its axes, convergence, default area and
// degenerate definitions.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvKrovakProjection.h"
#include "engines/KvKrovak.h"

namespace {

const CKvEllipsoid kBessel("Bessel 1841", "BR", 6377397.155, 299.1528128);

// S-JTSK with the X scale, Y scale and XY plane rotation given.
CKvKrovak SJtsk(double xScale, double yScale, double rotation, double fe = 0, double fn = 0) {
  return CKvKrovak("S-JTSK test", 0.9999, 78.5, 24.83333333333333, 49.5, 30.28813975277778,
                   rotation, xScale, yScale, fe, fn, kBessel);
}

// The Guidance Note's point, 50 12' 32.442" N, 16 50' 59.179" E: southing
// 1050538.63, westing 568990.99 (krovak.cases has the exact values).
const double kLon = 16.849771944444445, kLat = 50.20901166666667;

TEST(Krovak, ScalesAndRotationOrientTheSouthingAndWesting) {
  CKvKrovak southWest = SJtsk(1, 1, 0);
  double S, W;
  southWest.Geo2Proj(kLon, kLat, &S, &W);
  EXPECT_NEAR(S, 1050538.63, 0.01);
  EXPECT_NEAR(W, 568990.99, 0.01);
  // x = sx S cos w - sy W sin w + FE, y = sx S sin w + sy W cos w + FN.
  const struct {
    double sx, sy, rotation, fe, fn;
    double x, y;
  } cases[] = {
      {-1, 1, 90, 0, 0, -W, -S},  // the east-north form, EPSG method 1041
      {1, 1, 180, 0, 0, -S, -W}, {1, -1, 0, 0, 0, S, -W},
      {1, 1, 90, 0, 0, -W, S},   {-1, 1, 90, 1000, -2000, -W + 1000, -S - 2000},
  };
  for (const auto& c : cases) {
    CKvKrovak engine = SJtsk(c.sx, c.sy, c.rotation, c.fe, c.fn);
    double x, y, lon, lat;
    engine.Geo2Proj(kLon, kLat, &x, &y);
    EXPECT_NEAR(x, c.x, 1e-6) << c.sx << " " << c.sy << " " << c.rotation;
    EXPECT_NEAR(y, c.y, 1e-6) << c.sx << " " << c.sy << " " << c.rotation;
    engine.Proj2Geo(x, y, &lon, &lat);
    EXPECT_NEAR(lon, kLon, 1e-10);
    EXPECT_NEAR(lat, kLat, 1e-10);
  }
}

TEST(Krovak, ConvergenceIsTheGridsWhateverItsAxes) {
  // python3: Proj(CRS.from_epsg(5514)).get_factors(16.849771944444445,
  //   50.20901166666667).meridian_convergence  ->  -5.982398786627414 (the same for 5513)
  CKvKrovak southWest = SJtsk(1, 1, 0), eastNorth = SJtsk(-1, 1, 90);
  EXPECT_NEAR(southWest.GetConvergence(kLon, kLat), -5.982398786627414, 2e-7);
  EXPECT_EQ(eastNorth.GetConvergence(kLon, kLat), southWest.GetConvergence(kLon, kLat));
  // On the meridian of origin grid north is true north.
  EXPECT_NEAR(southWest.GetConvergence(24.83333333333333, 49.5), 0, 1e-9);
}

TEST(Krovak, DefaultAreaIsOrderedInEveryOrientation) {
  for (CKvKrovak engine : {SJtsk(1, 1, 0), SJtsk(-1, 1, 90)}) {
    double x0, y0, x1, y1, lon, lat;
    engine.GetDefaultArea(&x0, &y0, &x1, &y1);
    EXPECT_LT(x0, x1);
    EXPECT_LT(y0, y1);
    engine.GetOrigin(&lon, &lat);
    EXPECT_NEAR(lon, 24.83333333333333, 1e-12);
    EXPECT_NEAR(lat, 49.5, 1e-12);
    // The corners are the projected centre +-3 degrees.
    double xa, ya, xb, yb;
    engine.Geo2Proj(lon - 3, lat - 3, &xa, &ya);
    engine.Geo2Proj(lon + 3, lat + 3, &xb, &yb);
    EXPECT_EQ(x0, std::fmin(xa, xb));
    EXPECT_EQ(y1, std::fmax(ya, yb));
  }
}

TEST(Krovak, ReducesLongitudesAboutTheLongitudeOfOrigin) {
  CKvKrovak engine = SJtsk(1, 1, 0);
  double x1, y1, x2, y2, lon, lat;
  engine.Geo2Proj(kLon, kLat, &x1, &y1);
  engine.Geo2Proj(kLon - 360, kLat, &x2, &y2);
  EXPECT_NEAR(x1, x2, 1e-6);
  EXPECT_NEAR(y1, y2, 1e-6);
  engine.Proj2Geo(x2, y2, &lon, &lat);
  EXPECT_NEAR(lon, kLon, 1e-10);
}

TEST(Krovak, DegenerateDefinitionsGiveNaN) {
  // No cone (a pseudo standard parallel on the equator), a zero axis scale,
  // an unknown ellipsoid.
  CKvKrovak noCone("No cone", 0.9999, 0, 24.8, 49.5, 30.3, 0, 1, 1, 0, 0, kBessel);
  CKvKrovak flat = SJtsk(0, 1, 0);
  CKvKrovakProjection unknown("No ellipsoid", "", "??", 0.9999, 78.5, 24.8, 49.5, 30.3, 0, 1, 1, 0,
                              0);
  std::unique_ptr<CKvProjection> noEllipsoid(unknown.CreateProjection());
  ASSERT_NE(noEllipsoid, nullptr);
  double x, y, lon, lat;
  noCone.Geo2Proj(kLon, kLat, &x, &y);
  EXPECT_TRUE(std::isnan(x) && std::isnan(y));
  for (CKvProjection* engine : {static_cast<CKvProjection*>(&noCone),
                                static_cast<CKvProjection*>(&flat), noEllipsoid.get()}) {
    engine->Proj2Geo(1e6, 5e5, &lon, &lat);
    EXPECT_TRUE(std::isnan(lon) && std::isnan(lat)) << engine->GetName();
  }
}

}  // namespace
