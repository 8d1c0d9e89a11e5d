#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <utility>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvLambert1SPProjection.h"
#include "catalogue/KvLambert2SPProjection.h"
#include "engines/KvLambert1SP.h"
#include "engines/KvLambert2SP.h"
#include "platform/KvConstants.h"
#include "wkt/KvPRJParser.h"

namespace {

// The ellipsoid constants as EPSG gives them.
const CKvEllipsoid kClarke1866("Clarke 1866", "CC", 6378206.4, 294.9786982);
const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

double Dms(double d, double m, double s) {
  return std::copysign(std::fabs(d) + m / 60 + s / 3600, d);
}

CKvLambert1SP JamaicaGrid(const char* name = "Jamaica test") {
  return CKvLambert1SP(name, 1.0, -77, 18, 250000, 150000, kClarke1866);
}

// The reference values of both engines, the Guidance Note's examples and a
// southern cone, are in tests/data/engines/lambert_conformal_conic.cases.

TEST(Lambert, ConvergenceIsTheConeConstantTimesTheLongitudeDifference) {
  // EPSG Guidance Note 7-2 example: NAD27 / Texas South Central.
  CKvLambert2SP texas("Texas test", Dms(28, 23, 0), Dms(30, 17, 0), -99, Dms(27, 50, 0),
                      2000000 * KvConst::kUsSurveyFoot, 0, kClarke1866);
  CKvLambert2SP south("South test", -30, -40, 145, -35, 1000000, 2000000, kWgs84);
  // Convergence is n (lon - lon0), whatever the latitude; n < 0 turns it for the southern cone.
  // echo "-96 28.5" | proj -V (Texas parameters): Convergence : 1d28'11.056" [ 1.46973789 ]
  EXPECT_NEAR(texas.GetConvergence(-96, 28.5), 1.46973789, 1e-8);
  EXPECT_NEAR(texas.GetConvergence(-96, -10), 1.46973789, 1e-8);
  EXPECT_EQ(texas.GetConvergence(-99, 28.5), 0.0);
  EXPECT_LT(south.GetConvergence(150, -33), 0.0);
}

TEST(Lambert, EqualParallelsAreTheOneParallelConeAtUnitScale) {
  CKvLambert2SP tangent("Tangent test", 45, 45, 10, 45, 500000, 100000, kWgs84);
  CKvLambert1SP natural("Natural test", 1.0, 10, 45, 500000, 100000, kWgs84);
  for (double lon : {-20.0, 10.0, 37.5}) {
    for (double lat : {-30.0, 0.0, 45.0, 71.25, 90.0}) {
      double x1, y1, x2, y2;
      tangent.Geo2Proj(lon, lat, &x1, &y1);
      natural.Geo2Proj(lon, lat, &x2, &y2);
      EXPECT_NEAR(x1, x2, 1e-6) << lon << " " << lat;
      EXPECT_NEAR(y1, y2, 1e-6) << lon << " " << lat;
    }
  }
  EXPECT_EQ(tangent.GetConvergence(20, 0), natural.GetConvergence(20, 0));
}

TEST(Lambert, NorthernApexMapsToFalseEastingAndRadiusOfOrigin) {
  // echo "-77 90" | proj -f %.6f +proj=lcc +lat_1=18 +lat_0=18 +lon_0=-77 +k_0=1 +x_0=250000
  // +y_0=150000 +a=6378206.4 +rf=294.9786982 gives 250000.000000 19786447.862154 for every
  // longitude; beyond the pole (90.5) t would turn negative and is clamped to the apex.
  CKvLambert1SP engine = JamaicaGrid();
  const double points[][2] = {{-77, 90}, {-60, 90}, {100, 90}, {-70, 90.5}};
  for (const auto& p : points) {
    double x, y;
    engine.Geo2Proj(p[0], p[1], &x, &y);
    EXPECT_NEAR(x, 250000, 1e-6) << p[0] << " " << p[1];
    EXPECT_NEAR(y, 19786447.862154, 1e-3) << p[0] << " " << p[1];
  }
  double lon, lat;
  engine.Proj2Geo(250000, 19786447.862154, &lon, &lat);
  EXPECT_NEAR(lat, 90, 1e-9);
}

TEST(Lambert, ConeWithoutConeConstantYieldsNaN) {
  CKvLambert1SP equator1("Equator test", 1.0, 0, 0, 0, 0, kWgs84);
  CKvLambert2SP equator2("Equator test", 0, 0, 0, 0, 0, 0, kWgs84);
  CKvLambert2SP symmetric("Symmetric test", 30, -30, 0, 0, 0, 0, kWgs84);
  CKvLambert1SPProjection noEllipsoid("No ellipsoid", "", "", 1, 0, 45, 0, 0);
  CKvLambert2SPProjection unknownEllipsoid("Unknown ellipsoid", "", "??", 30, 60, 0, 45, 0, 0);
  std::unique_ptr<CKvProjection> missing1(noEllipsoid.CreateProjection());
  std::unique_ptr<CKvProjection> missing2(unknownEllipsoid.CreateProjection());
  CKvProjection* const engines[] = {&equator1, &equator2, &symmetric, missing1.get(),
                                    missing2.get()};
  for (CKvProjection* engine : engines) {
    SCOPED_TRACE(engine->GetName());
    double x = 0, y = 0, lon = 0, lat = 0;
    engine->Geo2Proj(10, 20, &x, &y);
    engine->Proj2Geo(1000, 2000, &lon, &lat);
    EXPECT_TRUE(std::isnan(x) && std::isnan(y) && std::isnan(lon) && std::isnan(lat));
    EXPECT_EQ(engine->GetConvergence(10, 20), 0.0);
  }
  CKvEllipsoid e("E", "E", 1, 2);
  EXPECT_TRUE(missing1->GetAnonymousEllipsoid(e));
  EXPECT_EQ(e.GetMajor(), 0.0);
  // An origin at the north pole flattens the cone into a plane: t0 = 0.
  CKvLambert1SP pole("Pole test", 1.0, 0, 90, 0, 0, kWgs84);
  double x = 0, y = 0;
  pole.Geo2Proj(10, 80, &x, &y);
  EXPECT_TRUE(std::isnan(x) && std::isnan(y));
}

TEST(Lambert, DefaultAreaSurroundsTheOriginWithinThePoles) {
  // lowerLat, upperLat: the corners' latitudes, 3 degrees either side of the
  // origin (or of the mean parallel for a polar false origin), clamped at the pole.
  struct {
    std::shared_ptr<CKvProjection> engine;
    double lowerLat, upperLat;
  } const cases[] = {
      {std::make_shared<CKvLambert2SP>("Area", 28, 30, 20, 27, 0, 0, kWgs84), 24, 30},
      {std::make_shared<CKvLambert2SP>("Area", 60, 70, 20, 90, 0, 0, kWgs84), 62, 68},
      {std::make_shared<CKvLambert2SP>("Area", -60, -70, 20, -90, 0, 0, kWgs84), -68, -62},
      {std::make_shared<CKvLambert2SP>("Area", 80, 85, 20, 89, 0, 0, kWgs84), 86, 90},
      {std::make_shared<CKvLambert1SP>("Area", 1.0, 20, 89, 0, 0, kWgs84), 86, 90},
  };
  for (const auto& c : cases) {
    double area[4], corners[4];
    c.engine->GetDefaultArea(&area[0], &area[1], &area[2], &area[3]);
    c.engine->Geo2Proj(17, c.lowerLat, &corners[0], &corners[1]);
    c.engine->Geo2Proj(23, c.upperLat, &corners[2], &corners[3]);
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(area[k], corners[k], 1e-6) << c.lowerLat << " " << k;
  }
}

TEST(Lambert, CatalogueEntriesBuildEnginesAndWriteTheirDefinitions) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord texas(new CKvLambert2SPProjection("KvLcc2 test zone", "NAD27", "CC",
                                                         Dms(28, 23, 0), Dms(30, 17, 0), -99,
                                                         Dms(27, 50, 0), 609601.2192, 0));
  kvtest::ScopedRecord jamaica(
      new CKvLambert1SPProjection("KvLcc1 test zone", "JAD69", "CC", 1.0, -77, 18, 250000, 150000));
  // Numbers with sixteen significant digits, as the writer has them.
  const std::pair<CKvMapProjData*, const char*> cases[] = {
      {texas.get(),
       "DATUM[\"NAD27\",SPHEROID[\"Clarke 1866\",6378206.4,294.9786982]],"
       "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
       "PROJECTION[\"Lambert_Conformal_Conic_2SP\"],PARAMETER[\"False_Easting\",609601.2192000001],"
       "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",-99],"
       "PARAMETER[\"Standard_Parallel_1\",28.38333333333333],"
       "PARAMETER[\"Standard_Parallel_2\",30.28333333333333],"
       "PARAMETER[\"Latitude_Of_Origin\",27.83333333333333],UNIT[\"Meter\",1]]"},
      {jamaica.get(),
       "PROJECTION[\"Lambert_Conformal_Conic_1SP\"],PARAMETER[\"False_Easting\",250000],"
       "PARAMETER[\"False_Northing\",150000],PARAMETER[\"Central_Meridian\",-77],"
       "PARAMETER[\"Scale_Factor\",1],PARAMETER[\"Latitude_Of_Origin\",18],UNIT[\"Meter\",1]]"},
  };
  for (const auto& c : cases) {
    std::unique_ptr<CKvProjection> engine(c.first->CreateProjection());
    ASSERT_NE(engine, nullptr);
    CString text;
    ASSERT_TRUE(CKvPRJParser(*engine).Format(text));
    EXPECT_NE(std::string(text.GetString()).find(c.second), std::string::npos) << text.GetString();
  }

  // Under the 2SP record's name a 1SP engine finds no definition of its
  // method, though the ellipsoid, which goes by the name alone, is found.
  CKvLambert1SP other = JamaicaGrid("KvLcc2 test zone");
  CKvLambert1SPProjection set;
  EXPECT_FALSE(other.GetMapProjection(set));
  CKvEllipsoid e;
  EXPECT_TRUE(other.GetEllipsoid(e));
  EXPECT_EQ(e.GetID(), "CC");
}

}  // namespace
