#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMercator1SPProjection.h"
#include "catalogue/KvMercator2SPProjection.h"
#include "engines/KvMercator1SP.h"
#include "engines/KvMercator2SP.h"
#include "wkt/KvPRJParser.h"

namespace {

// The ellipsoid constants as EPSG gives them.
const CKvEllipsoid kBessel1841("Bessel 1841", "BR", 6377397.155, 299.1528128);
const CKvEllipsoid kKrassovsky("Krassovsky 1940", "KA", 6378245, 298.3);
const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

// EPSG Guidance Note 7-2 examples: Makassar / NEIEZ (variant A) and
// Pulkovo 1942 / Caspian Sea Mercator (variant B).
const CKvMercator1SP kNeiez("NEIEZ test", 0.997, 110, 3900000, 900000, kBessel1841);
const CKvMercator2SP kCaspian("Caspian test", 42, 51, 0, 0, kKrassovsky);

// The Guidance Note's examples are in tests/data/engines/mercator.cases.
TEST(Mercator, DerivesTheScaleAndRoundTripsToThePolarRegions) {
  CKvMercator1SP neiez = kNeiez;
  CKvMercator2SP caspian = kCaspian;
  CKvMercator2SP southern("South test", -42, 51, 0, 0, kKrassovsky);  // mirrors the example
  // k0: the scale derived from the standard parallel, 0 for variant A.
  // python3 -c "from mpmath import *; mp.dps=30; f=1/mpf('298.3'); e2=f*(2-f); p=mpf(42)*pi/180;
  // print(cos(p)/sqrt(1-e2*sin(p)**2))"
  //   gives 0.744260894171508159014328824641 (EPSG: k0 = 0.744260894).
  struct {
    CKvProjection* engine;
    double lon, lat, k0;
  } const cases[] = {
      {&neiez, 120, -3, 0},
      {&caspian, 53, 53, 0.744260894171508},
      {&southern, 53, -53, 0.744260894171508},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.engine->GetName());
    double x, y, lon, lat, k1 = 1, k2 = 2;
    std::unique_ptr<CKvProjection> copy(c.engine->Clone());
    c.engine->GetDerivedParameters(&k1);
    copy->GetDerivedParameters(&k2);
    EXPECT_NEAR(k1, c.k0, 1e-15);
    EXPECT_EQ(k2, k1);
    // Round trips at the example and up to the polar regions; meridians run along grid north.
    std::vector<std::pair<double, double>> points = {{c.lon, c.lat}};
    for (double t = -85; t <= 85; t += 2.5) points.push_back({30 + t, t});
    for (const auto& p : points) {
      c.engine->Geo2Proj(p.first, p.second, &x, &y);
      c.engine->Proj2Geo(x, y, &lon, &lat);
      EXPECT_NEAR(lon, p.first, 1e-9) << p.second;
      EXPECT_NEAR(lat, p.second, 1e-9) << p.second;
      EXPECT_NEAR(c.engine->GetConvergence(p.first, p.second), 0.0, 1e-9) << p.second;
    }
  }
}

TEST(Mercator, StandardParallelOnTheEquatorIsUnitScale) {
  CKvMercator2SP twoSP("Equator test", 0, 25, 1000, 2000, kWgs84);
  CKvMercator1SP oneSP("Equator test", 1.0, 25, 1000, 2000, kWgs84);
  for (double lon : {-150.0, 25.0, 60.5}) {
    for (double lat : {-80.0, -12.5, 0.0, 33.0, 84.0}) {
      double x1, y1, x2, y2, lon1, lat1, lon2, lat2;
      twoSP.Geo2Proj(lon, lat, &x1, &y1);
      oneSP.Geo2Proj(lon, lat, &x2, &y2);
      twoSP.Proj2Geo(x1, y1, &lon1, &lat1);
      oneSP.Proj2Geo(x1, y1, &lon2, &lat2);
      EXPECT_TRUE(x1 == x2 && y1 == y2 && lon1 == lon2 && lat1 == lat2) << lon << " " << lat;
    }
  }
}

TEST(Mercator, DefaultAreaIsTheWorldOnlyForOriginZero) {
  // echo "-180 -60\n180 81" | proj -f %.6f +proj=merc +lon_0=0 +ellps=WGS84
  // echo "7 -3\n13 3" | proj -f %.6f +proj=merc +lon_0=10 +ellps=WGS84
  const double cases[][5] = {
      {0, -20037508.342789, -8362698.548501, 20037508.342789, 16171536.910482},
      {10, -333958.472380, -331876.534213, 333958.472380, 331876.534213},
  };
  for (const auto& c : cases) {
    CKvMercator1SP oneSP("Area test", 1.0, c[0], 0, 0, kWgs84);
    CKvMercator2SP twoSP("Area test", 0, c[0], 0, 0, kWgs84);
    for (CKvProjection* engine :
         {static_cast<CKvProjection*>(&oneSP), static_cast<CKvProjection*>(&twoSP)}) {
      double area[4];
      engine->GetDefaultArea(&area[0], &area[1], &area[2], &area[3]);
      for (int k = 0; k < 4; ++k) EXPECT_NEAR(area[k], c[k + 1], 1e-3) << c[0] << " " << k;
    }
  }
}

TEST(Mercator, PolesLieFarOutAndInvertFromInfinity) {
  CKvMercator1SP engine("Pole test", 1.0, 0, 0, 0, kWgs84);
  double x, y, lon, lat;
  engine.Geo2Proj(5, -90, &x, &y);
  EXPECT_TRUE(std::isinf(y) && y < 0);
  engine.Geo2Proj(5, 90, &x, &y);  // tan(pi/2) rounds to 1.6e16: far, not infinite
  EXPECT_GT(y, 2e8);
  engine.Proj2Geo(0, -INFINITY, &lon, &lat);
  EXPECT_EQ(lat, -90.0);
  engine.Proj2Geo(0, INFINITY, &lon, &lat);
  EXPECT_EQ(lat, 90.0);
}

TEST(Mercator, EngineWithoutEllipsoidReturnsNaNFromTheInverse) {
  CKvMercator1SPProjection noEllipsoid("No ellipsoid", "", "", 1, 10, 0, 0);
  CKvMercator2SPProjection unknownEllipsoid("Unknown ellipsoid", "", "??", 42, 51, 0, 0);
  for (CKvMapProjData* set : {static_cast<CKvMapProjData*>(&noEllipsoid),
                              static_cast<CKvMapProjData*>(&unknownEllipsoid)}) {
    std::unique_ptr<CKvProjection> engine(set->CreateProjection());
    SCOPED_TRACE(engine->GetName());
    double x = 1, y = 1, lon = 0, lat = 0;
    engine->Geo2Proj(20, 30, &x, &y);
    engine->Proj2Geo(1000, 2000, &lon, &lat);
    EXPECT_TRUE(x == 0 && y == 0 && std::isnan(lon) && std::isnan(lat));
    CKvEllipsoid e("E", "E", 1, 2);
    EXPECT_TRUE(engine->GetAnonymousEllipsoid(e));
    EXPECT_EQ(e.GetMajor(), 0.0);
  }
}

TEST(Mercator, CatalogueEntriesBuildEnginesAndWriteTheirDefinitions) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord caspian(
      new CKvMercator2SPProjection("KvMerc2 test zone", "Pulkovo 1942", "KA", 42, 51, 0, 0));
  kvtest::ScopedRecord neiez(new CKvMercator1SPProjection("KvMerc1 test zone", "Makassar", "BR",
                                                          0.997, 110, 3900000, 900000));
  const std::pair<CKvMapProjData*, const char*> cases[] = {
      {caspian.get(),
       "SPHEROID[\"Krassovsky 1940\",6378245,298.3]],PRIMEM[\"Greenwich\",0],"
       "UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Mercator_2SP\"],"
       "PARAMETER[\"False_Easting\",0],PARAMETER[\"False_Northing\",0],"
       "PARAMETER[\"Central_Meridian\",51],PARAMETER[\"Standard_Parallel_1\",42],"
       "UNIT[\"Meter\",1]]"},
      {neiez.get(),
       "PROJECTION[\"Mercator_1SP\"],PARAMETER[\"False_Easting\",3900000],"
       "PARAMETER[\"False_Northing\",900000],PARAMETER[\"Central_Meridian\",110],"
       "PARAMETER[\"Scale_Factor\",0.997],UNIT[\"Meter\",1]]"},
  };
  for (const auto& c : cases) {
    std::unique_ptr<CKvProjection> engine(c.first->CreateProjection());
    ASSERT_NE(engine, nullptr);
    CString text;
    ASSERT_TRUE(CKvPRJParser(*engine).Format(text));
    EXPECT_NE(std::string(text.GetString()).find(c.second), std::string::npos) << text.GetString();
  }
  CKvMercator2SP outside("Not in any catalogue", 42, 51, 0, 0, kKrassovsky);
  CKvMercator2SPProjection none;
  EXPECT_FALSE(outside.GetMapProjection(none));
}

}  // namespace
