#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <string>

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

// Makassar / NEIEZ, EPSG Guidance Note 7-2 example of Mercator variant A.
CKvMercator1SP Neiez(const char* name = "NEIEZ test") {
  return CKvMercator1SP(name, 0.997, 110, 3900000, 900000, kBessel1841);
}

// Pulkovo 1942 / Caspian Sea Mercator, the example of variant B.
CKvMercator2SP CaspianSea(const char* name = "Caspian test") {
  return CKvMercator2SP(name, 42, 51, 0, 0, kKrassovsky);
}

TEST(Mercator, ReproducesGuidanceNoteExamples) {
  CKvMercator1SP neiez = Neiez();
  CKvMercator2SP caspian = CaspianSea();
  struct {
    CKvProjection* engine;
    double lon, lat, x, y;
  } const cases[] = {
      {&neiez, 120, -3, 5009726.58, 569150.82},   // E 5009726.58, N 569150.82
      {&caspian, 53, 53, 165704.29, 5171848.07},  // E 165704.29, N 5171848.07
  };
  for (const auto& c : cases) {
    double x, y, lon, lat;
    c.engine->Geo2Proj(c.lon, c.lat, &x, &y);
    EXPECT_NEAR(x, c.x, 0.01) << c.engine->GetName();
    EXPECT_NEAR(y, c.y, 0.01) << c.engine->GetName();
    c.engine->Proj2Geo(x, y, &lon, &lat);
    EXPECT_NEAR(lon, c.lon, 1e-9) << c.engine->GetName();
    EXPECT_NEAR(lat, c.lat, 1e-9) << c.engine->GetName();
    // The published, rounded coordinates invert to within a centimetre:
    // echo "5009726.58 569150.82" | invproj -f %.10f +proj=merc +lon_0=110
    //   +k_0=0.997 +x_0=3900000 +y_0=900000 +a=6377397.155 +rf=299.1528128
    //   gives 119.9999999705 -2.9999999874;
    // echo "165704.29 5171848.07" | invproj -f %.10f +proj=merc +lat_ts=42
    //   +lon_0=51 +a=6378245 +rf=298.3 gives 52.9999999600 52.9999999789.
    c.engine->Proj2Geo(c.x, c.y, &lon, &lat);
    EXPECT_NEAR(lon, c.lon, 1e-7) << c.engine->GetName();
    EXPECT_NEAR(lat, c.lat, 1e-7) << c.engine->GetName();
  }
}

TEST(Mercator, InverseSeriesRecoversLatitudesUpToThePolarRegions) {
  CKvMercator1SP neiez = Neiez();
  CKvMercator2SP caspian = CaspianSea();
  for (CKvProjection* engine :
       {static_cast<CKvProjection*>(&neiez), static_cast<CKvProjection*>(&caspian)}) {
    for (double lat = -85; lat <= 85; lat += 2.5) {
      double x, y, lon, lat2;
      engine->Geo2Proj(30 + lat, lat, &x, &y);
      engine->Proj2Geo(x, y, &lon, &lat2);
      EXPECT_NEAR(lat2, lat, 1e-9) << engine->GetName();
      EXPECT_NEAR(lon, 30 + lat, 1e-9) << engine->GetName();
    }
  }
}

TEST(Mercator, DerivedScaleIsThatOfTheStandardParallel) {
  // python3 -c "from mpmath import *; mp.dps=30; f=1/mpf('298.3');
  //   e2=f*(2-f); p=mpf(42)*pi/180; print(cos(p)/sqrt(1-e2*sin(p)**2))"
  //   gives 0.744260894171508159014328824641 (EPSG: k0 = 0.744260894).
  CKvMercator2SP caspian = CaspianSea();
  double k0 = -1;
  caspian.GetDerivedParameters(&k0);
  EXPECT_NEAR(k0, 0.744260894171508, 1e-15);
  CKvMercator2SP southern("South test", -42, 51, 0, 0, kKrassovsky);
  southern.GetDerivedParameters(&k0);
  EXPECT_NEAR(k0, 0.744260894171508, 1e-15);
  CKvMercator1SP neiez = Neiez();
  neiez.GetDerivedParameters(&k0);
  EXPECT_EQ(k0, 0.0);
}

TEST(Mercator, StandardParallelOnTheEquatorIsUnitScale) {
  CKvMercator2SP twoSP("Equator test", 0, 25, 1000, 2000, kWgs84);
  CKvMercator1SP oneSP("Equator test", 1.0, 25, 1000, 2000, kWgs84);
  for (double lon : {-150.0, 25.0, 60.5}) {
    for (double lat : {-80.0, -12.5, 0.0, 33.0, 84.0}) {
      double x1, y1, x2, y2, lon1, lat1, lon2, lat2;
      twoSP.Geo2Proj(lon, lat, &x1, &y1);
      oneSP.Geo2Proj(lon, lat, &x2, &y2);
      EXPECT_EQ(x1, x2);
      EXPECT_EQ(y1, y2);
      twoSP.Proj2Geo(x1, y1, &lon1, &lat1);
      oneSP.Proj2Geo(x1, y1, &lon2, &lat2);
      EXPECT_EQ(lon1, lon2);
      EXPECT_EQ(lat1, lat2);
    }
  }
}

TEST(Mercator, DefaultAreaIsTheWorldOnlyForOriginZero) {
  // echo "-180 -60\n180 81" | proj -f %.6f +proj=merc +lon_0=0 +ellps=WGS84
  // echo "7 -3\n13 3" | proj -f %.6f +proj=merc +lon_0=10 +ellps=WGS84
  struct {
    double originLongitude, x0, y0, x1, y1;
  } const cases[] = {
      {0, -20037508.342789, -8362698.548501, 20037508.342789, 16171536.910482},
      {10, -333958.472380, -331876.534213, 333958.472380, 331876.534213},
  };
  for (const auto& c : cases) {
    CKvMercator1SP oneSP("Area test", 1.0, c.originLongitude, 0, 0, kWgs84);
    CKvMercator2SP twoSP("Area test", 0, c.originLongitude, 0, 0, kWgs84);
    for (CKvProjection* engine :
         {static_cast<CKvProjection*>(&oneSP), static_cast<CKvProjection*>(&twoSP)}) {
      double x0, y0, x1, y1;
      engine->GetDefaultArea(&x0, &y0, &x1, &y1);
      EXPECT_NEAR(x0, c.x0, 1e-3) << c.originLongitude;
      EXPECT_NEAR(y0, c.y0, 1e-3) << c.originLongitude;
      EXPECT_NEAR(x1, c.x1, 1e-3) << c.originLongitude;
      EXPECT_NEAR(y1, c.y1, 1e-3) << c.originLongitude;
    }
  }
}

TEST(Mercator, MeridiansStayParallelToTheGridNorth) {
  CKvMercator1SP neiez = Neiez();
  CKvMercator2SP caspian = CaspianSea();
  for (double lon : {-120.0, 51.0, 110.0, 179.0}) {
    for (double lat : {-70.0, 0.0, 53.0}) {
      EXPECT_NEAR(neiez.GetConvergence(lon, lat), 0.0, 1e-9);
      EXPECT_NEAR(caspian.GetConvergence(lon, lat), 0.0, 1e-9);
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
  std::unique_ptr<CKvProjection> engines[] = {
      std::unique_ptr<CKvProjection>(noEllipsoid.CreateProjection()),
      std::unique_ptr<CKvProjection>(unknownEllipsoid.CreateProjection())};
  for (const auto& engine : engines) {
    double x = 1, y = 1, lon = 0, lat = 0;
    engine->Geo2Proj(20, 30, &x, &y);
    EXPECT_EQ(x, 0.0) << engine->GetName();
    EXPECT_EQ(y, 0.0) << engine->GetName();
    engine->Proj2Geo(1000, 2000, &lon, &lat);
    EXPECT_TRUE(std::isnan(lon)) << engine->GetName();
    EXPECT_TRUE(std::isnan(lat)) << engine->GetName();
    CKvEllipsoid e("E", "E", 1, 2);
    EXPECT_TRUE(engine->GetAnonymousEllipsoid(e));
    EXPECT_EQ(e.GetMajor(), 0.0);
  }
}

TEST(Mercator, CloneProjectsBitIdentically) {
  CKvMercator1SP neiez = Neiez();
  CKvMercator2SP caspian = CaspianSea();
  for (CKvProjection* engine :
       {static_cast<CKvProjection*>(&neiez), static_cast<CKvProjection*>(&caspian)}) {
    std::unique_ptr<CKvProjection> copy(engine->Clone());
    double x1, y1, x2, y2, k1 = 1, k2 = 2;
    engine->Geo2Proj(100, 40, &x1, &y1);
    copy->Geo2Proj(100, 40, &x2, &y2);
    EXPECT_EQ(std::memcmp(&x1, &x2, sizeof x1), 0);
    EXPECT_EQ(std::memcmp(&y1, &y2, sizeof y1), 0);
    engine->GetDerivedParameters(&k1);
    copy->GetDerivedParameters(&k2);
    EXPECT_EQ(k1, k2);
  }
}

TEST(Mercator, CatalogueEntriesBuildEnginesAndWriteTheirDefinitions) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord caspianRecord(
      new CKvMercator2SPProjection("KvMerc2 test zone", "Pulkovo 1942", "KA", 42, 51, 0, 0));
  kvtest::ScopedRecord neiezRecord(new CKvMercator1SPProjection("KvMerc1 test zone", "Makassar",
                                                                "BR", 0.997, 110, 3900000, 900000));

  std::unique_ptr<CKvProjection> caspian(caspianRecord.get()->CreateProjection());
  ASSERT_NE(dynamic_cast<CKvMercator2SP*>(caspian.get()), nullptr);
  double x, y;
  caspian->Geo2Proj(53, 53, &x, &y);
  EXPECT_NEAR(x, 165704.29, 0.01);
  EXPECT_NEAR(y, 5171848.07, 0.01);
  CKvPRJParser caspianWkt(*caspian);
  CString text;
  ASSERT_TRUE(caspianWkt.Format(text));
  EXPECT_NE(std::string(text.GetString())
                .find("SPHEROID[\"Krassovsky 1940\",6378245,298.3]]"
                      ",PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
                      "PROJECTION[\"Mercator_2SP\"],PARAMETER[\"False_Easting\",0],"
                      "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",51],"
                      "PARAMETER[\"Standard_Parallel_1\",42],UNIT[\"Meter\",1]]"),
            std::string::npos)
      << text.GetString();
  EXPECT_EQ(caspianWkt.GetProjectionType(), CKvMapProjData::eMercator2SP);

  std::unique_ptr<CKvProjection> neiez(neiezRecord.get()->CreateProjection());
  auto* mercator = dynamic_cast<CKvMercator1SP*>(neiez.get());
  ASSERT_NE(mercator, nullptr);
  mercator->Geo2Proj(120, -3, &x, &y);
  EXPECT_NEAR(x, 5009726.58, 0.01);
  EXPECT_NEAR(y, 569150.82, 0.01);
  CKvPRJParser neiezWkt(*mercator);
  ASSERT_TRUE(neiezWkt.Format(text));
  EXPECT_NE(std::string(text.GetString())
                .find("PROJECTION[\"Mercator_1SP\"],PARAMETER[\"False_Easting\",3900000],"
                      "PARAMETER[\"False_Northing\",900000],PARAMETER[\"Central_Meridian\",110],"
                      "PARAMETER[\"Scale_Factor\",0.997],UNIT[\"Meter\",1]]"),
            std::string::npos)
      << text.GetString();
  CKvMercator1SPProjection set;
  ASSERT_TRUE(mercator->GetMapProjection(set));
  EXPECT_EQ(set.GetScale(), 0.997);
  EXPECT_EQ(set.GetCentre(), 110.0);
  CKvEllipsoid e;
  ASSERT_TRUE(mercator->GetEllipsoid(e));
  EXPECT_EQ(e.GetID(), "BR");

  // An engine outside the catalogue writes no method.
  CKvMercator2SP outside = CaspianSea("Not in any catalogue");
  CKvMercator2SPProjection none;
  EXPECT_FALSE(outside.GetMapProjection(none));
  CKvPRJParser nonProjected(outside);
  EXPECT_EQ(nonProjected.GetProjectionType(), CKvMapProjData::eNonProjected);
  EXPECT_STREQ(nonProjected.GetProjectionTypeName().GetString(), "Non_Projected");
}

}  // namespace
