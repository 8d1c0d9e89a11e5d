// The three Hotine oblique Mercator engines beyond their reference cases
// (tests/data/engines/hotine_oblique_mercator.cases, oblique_mercator.cases
// and rectified_skew_orthomorphic.cases): how they relate, their special
// centres and azimuths, convergence and longitudes.
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvHotineObliqueMercatorProjection.h"
#include "engines/KvHotineObliqueMercator.h"
#include "engines/KvObliqueMercator.h"
#include "engines/KvRectifiedSkewOrthomorphic.h"

namespace {

const CKvEllipsoid kBessel("Bessel 1841", "BR", 6377397.155, 299.1528128);
const CKvEllipsoid kGrs80("GRS 1980", "RF", 6378137, 298.257222101);
const CKvEllipsoid kEverest1967("Everest 1830 (1967 Definition)", "EB", 6377298.556, 300.8017);

// CH1903+ / LV95: variant B, azimuth and grid angle 90 degrees.
const double kSwissLon = 7.439583333333333, kSwissLat = 46.95240555555556;

TEST(HotineObliqueMercator, VariantBIsVariantAWithTheFalseOriginMovedByUc) {
  // The centre in variant A coordinates about the natural origin, (uc sin
  // gammac, uc cos gammac):
  //   echo "7.439583333333333 46.95240555555556" | proj -f %.9f +proj=omerc +no_uoff
  //     +lat_0=46.95240555555556 +lonc=7.439583333333333 +alpha=90 +gamma=90 +k=1 +x_0=0
  //     +y_0=0 +ellps=bessel   ->  10019820.590750868 0.000000001
  //   echo "115 4" | proj -f %.9f +proj=omerc +no_uoff +lat_0=4 +lonc=115
  //     +alpha=53.31582047222222 +gamma=53.13010236111111 +k=0.99984 +x_0=0 +y_0=0
  //     +a=6377298.556 +rf=300.8017   ->  590476.875346880 442857.656398163
  CKvObliqueMercator lv95("LV95", 1, kSwissLon, kSwissLat, 90, 2600000, 1200000, kBessel);
  CKvHotineObliqueMercator lv95AtNaturalOrigin("LV95 A", 1, kSwissLon, kSwissLat, 90,
                                               2600000 - 10019820.590750868, 1200000, kBessel);
  // Timbalai 1948 / RSO Borneo, whose variant B text the reader turns into this.
  CKvRectifiedSkewOrthomorphic borneo("Borneo", 0.99984, 115, 4, 53.31582047222222,
                                      53.13010236111111, 590476.87 - 590476.875346880,
                                      442857.65 - 442857.656398163, kEverest1967);
  const double points[][2] = {{8, 47}, {6, 45.8}, {10.5, 47.8}, {-20, 60}};
  for (const auto& p : points) {
    double x1, y1, x2, y2;
    lv95AtNaturalOrigin.Geo2Proj(p[0], p[1], &x1, &y1);
    lv95.Geo2Proj(p[0], p[1], &x2, &y2);
    EXPECT_NEAR(x1, x2, 1e-6) << p[0] << " " << p[1];
    EXPECT_NEAR(y1, y2, 1e-6) << p[0] << " " << p[1];
  }
  // Variant B puts the centre at its false easting and northing.
  double x, y;
  lv95.Geo2Proj(kSwissLon, kSwissLat, &x, &y);
  EXPECT_NEAR(x, 2600000, 1e-6);
  EXPECT_NEAR(y, 1200000, 1e-6);
  borneo.Geo2Proj(115, 4, &x, &y);
  EXPECT_NEAR(x, 590476.87, 1e-6);
  EXPECT_NEAR(y, 442857.65, 1e-6);
}

TEST(HotineObliqueMercator, CentreOnTheEquatorWithAMeridianForInitialLine) {
  // Azimuth 0 on the equator: D = 1, uc = 0, so both variants coincide and
  // the centre is the false origin.
  //   echo "3 0" | proj -f %.6f +proj=omerc +no_uoff +lat_0=0 +lonc=9 +alpha=0 +gamma=0
  //     +k=0.9996 +x_0=500000 +y_0=0 +ellps=WGS84   ->  -168881.670067 0.000000
  const CKvEllipsoid wgs84("WGS 84", "WE", 6378137, 298.257223563);
  CKvHotineObliqueMercator a("Equator A", 0.9996, 9, 0, 0, 500000, 0, wgs84);
  CKvObliqueMercator b("Equator B", 0.9996, 9, 0, 0, 500000, 0, wgs84);
  for (CKvProjection* engine : {static_cast<CKvProjection*>(&a), static_cast<CKvProjection*>(&b)}) {
    double x, y, lon, lat;
    engine->Geo2Proj(3, 0, &x, &y);
    EXPECT_NEAR(x, -168881.670067, 1e-6);
    EXPECT_NEAR(y, 0, 1e-6);
    engine->Geo2Proj(9, 0, &x, &y);
    EXPECT_NEAR(x, 500000, 1e-9);
    EXPECT_NEAR(y, 0, 1e-9);
    engine->Proj2Geo(-168881.670067, 0, &lon, &lat);
    EXPECT_NEAR(lon, 3, 1e-9);
    EXPECT_NEAR(lat, 0, 1e-9);
  }
}

TEST(HotineObliqueMercator, CentreAtAPoleZeroScaleOrNoEllipsoidGivesNaN) {
  CKvHotineObliqueMercator pole("Pole", 1, 0, 90, 30, 0, 0, kGrs80);
  CKvObliqueMercator southPole("South pole", 1, 0, -90, 30, 0, 0, kGrs80);
  CKvRectifiedSkewOrthomorphic noScale("No scale", 0, 10, 50, 30, 31, 0, 0, kGrs80);
  CKvHotineObliqueMercatorProjection unknown("No ellipsoid", "", "??", 1, 10, 50, 30, 0, 0);
  std::unique_ptr<CKvProjection> noEllipsoid(unknown.CreateProjection());
  ASSERT_NE(noEllipsoid, nullptr);
  for (CKvProjection* engine :
       {static_cast<CKvProjection*>(&pole), static_cast<CKvProjection*>(&southPole),
        static_cast<CKvProjection*>(&noScale), noEllipsoid.get()}) {
    double x = 0, y = 0, lon = 0, lat = 0;
    engine->Geo2Proj(10, 50, &x, &y);
    engine->Proj2Geo(1000, 1000, &lon, &lat);
    EXPECT_TRUE(std::isnan(x) && std::isnan(y)) << engine->GetName();
    EXPECT_TRUE(std::isnan(lon) && std::isnan(lat)) << engine->GetName();
  }
}

TEST(HotineObliqueMercator, GeographicPolesMapToFinitePoints) {
  // The poles lie on the aposphere away from the cylinder's singular points.
  //   echo "0 90\n0 -90" | proj -f %.6f +proj=omerc +no_uoff +lat_0=57 +lonc=-133.6666666666667
  //     +alpha=323.1301023611111 +gamma=323.1301023611111 +k=0.9999 +x_0=5000000
  //     +y_0=-5000000 +ellps=GRS80
  CKvHotineObliqueMercator alaska("Alaska", 0.9999, -133.6666666666667, 57, 323.1301023611111, 5e6,
                                  -5e6, kGrs80);
  const double cases[][4] = {{0, 90, 715546.221237, 4325907.992708},
                             {0, -90, 9284453.778763, -14325907.992708}};
  for (const auto& c : cases) {
    double x, y, lon, lat;
    alaska.Geo2Proj(c[0], c[1], &x, &y);
    EXPECT_NEAR(x, c[2], 1e-3) << c[1];
    EXPECT_NEAR(y, c[3], 1e-3) << c[1];
    alaska.Proj2Geo(x, y, &lon, &lat);
    EXPECT_NEAR(lat, c[1], 1e-9);
  }
}

TEST(HotineObliqueMercator, ReducesLongitudesAboutTheCentre) {
  CKvHotineObliqueMercator alaska("Alaska", 0.9999, -133.6666666666667, 57, 323.1301023611111, 5e6,
                                  -5e6, kGrs80);
  double x1, y1, x2, y2, lon, lat;
  alaska.Geo2Proj(-134, 57, &x1, &y1);
  alaska.Geo2Proj(226, 57, &x2, &y2);
  EXPECT_NEAR(x1, x2, 1e-6);
  EXPECT_NEAR(y1, y2, 1e-6);
  alaska.Proj2Geo(x2, y2, &lon, &lat);
  EXPECT_NEAR(lon, -134, 1e-9);  // within 180 degrees of the centre
  // 66.3 degrees west of the centre comes back as itself, not as 160.
  alaska.Geo2Proj(-200, 57, &x1, &y1);
  alaska.Proj2Geo(x1, y1, &lon, &lat);
  EXPECT_NEAR(lon, -200, 1e-9);
}

TEST(HotineObliqueMercator, ConvergenceOriginAndArea) {
  // Meridian convergence from PROJ 9.1.1:
  //   python3: Proj(CRS.from_epsg(c)).get_factors(lon, lat).meridian_convergence
  // 26931 at (-134, 57): -0.27969562037059115; 2056 at (8, 47): 0.40954227049119746
  // (PROJ's own Swiss formulas); 3375 at (102, 4): -0.12200761522113442.  Ours is
  // the bearing of the chord of one arc-minute of meridian north of the point,
  // which turns by up to some 3e-5 degrees over it.
  CKvHotineObliqueMercator alaska("Alaska", 0.9999, -133.66666666666666, 57, 323.1301023611111, 5e6,
                                  -5e6, kGrs80);
  CKvObliqueMercator lv95("LV95", 1, kSwissLon, kSwissLat, 90, 2600000, 1200000, kBessel);
  CKvRectifiedSkewOrthomorphic rso("Peninsula RSO", 0.99984, 102.25, 4, 323.0257964666667,
                                   323.1301023611111, 804671, 0, kGrs80);
  EXPECT_NEAR(alaska.GetConvergence(-134, 57), -0.27969562037059115, 3e-5);
  EXPECT_NEAR(lv95.GetConvergence(8, 47), 0.40954227049119746, 3e-5);
  EXPECT_NEAR(rso.GetConvergence(102, 4), -0.12200761522113442, 3e-5);
  double lon, lat;
  lv95.GetOrigin(&lon, &lat);
  EXPECT_NEAR(lon, kSwissLon, 1e-12);
  EXPECT_NEAR(lat, kSwissLat, 1e-12);
  // The centre +-3 degrees, around the false origin of LV95.
  double x0, y0, x1, y1;
  lv95.GetDefaultArea(&x0, &y0, &x1, &y1);
  EXPECT_LT(x0, 2600000);
  EXPECT_LT(y0, 1200000);
  EXPECT_GT(x1, 2600000);
  EXPECT_GT(y1, 1200000);
  double x, y;
  lv95.Geo2Proj(kSwissLon + 3, kSwissLat + 3, &x, &y);
  EXPECT_EQ(x, x1);
  EXPECT_EQ(y, y1);
}

}  // namespace
