#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <string>

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

// NAD27 / Texas South Central, EPSG Guidance Note 7-2 example of method 9802:
// false easting 2000000 US survey feet.
CKvLambert2SP TexasSouthCentral(const char* name = "Texas test") {
  return CKvLambert2SP(name, Dms(28, 23, 0), Dms(30, 17, 0), -99, Dms(27, 50, 0),
                       2000000 * KvConst::kUsSurveyFoot, 0, kClarke1866);
}

// JAD69 / Jamaica National Grid, EPSG Guidance Note 7-2 example of method 9801.
CKvLambert1SP JamaicaGrid(const char* name = "Jamaica test") {
  return CKvLambert1SP(name, 1.0, -77, 18, 250000, 150000, kClarke1866);
}

// Southern cone for the comparisons with PROJ below.
CKvLambert2SP SouthernCone() {
  return CKvLambert2SP("South test", -30, -40, 145, -35, 1000000, 2000000, kWgs84);
}

void ExpectRoundTrip(CKvProjection& engine, double lon, double lat) {
  double x, y, lon2, lat2;
  engine.Geo2Proj(lon, lat, &x, &y);
  engine.Proj2Geo(x, y, &lon2, &lat2);
  EXPECT_NEAR(lon2, lon, 1e-9) << lon << " " << lat;
  EXPECT_NEAR(lat2, lat, 1e-9) << lon << " " << lat;
}

TEST(Lambert, ReproducesGuidanceNoteExamples) {
  CKvLambert2SP texas = TexasSouthCentral();
  CKvLambert1SP jamaica = JamaicaGrid();
  struct {
    CKvProjection* engine;
    double lon, lat, x, y;  // metres
  } const cases[] = {
      // Texas: E 2963503.91, N 254759.80 US survey feet.
      {&texas, -96, 28.5, 2963503.91 * KvConst::kUsSurveyFoot, 254759.80 * KvConst::kUsSurveyFoot},
      // Jamaica: 76 56' 37.26" W, 17 55' 55.80" N gives E 255966.58, N 142493.51.
      {&jamaica, Dms(-76, 56, 37.26), Dms(17, 55, 55.80), 255966.58, 142493.51},
  };
  for (const auto& c : cases) {
    double x, y, lon, lat;
    c.engine->Geo2Proj(c.lon, c.lat, &x, &y);
    EXPECT_NEAR(x, c.x, 0.01) << c.engine->GetName();
    EXPECT_NEAR(y, c.y, 0.01) << c.engine->GetName();
    ExpectRoundTrip(*c.engine, c.lon, c.lat);
    // The published grid coordinates, rounded to the centimetre (or 0.01
    // ft), invert to within that of the published point.
    c.engine->Proj2Geo(c.x, c.y, &lon, &lat);
    EXPECT_NEAR(lon, c.lon, 2e-7) << c.engine->GetName();
    EXPECT_NEAR(lat, c.lat, 2e-7) << c.engine->GetName();
  }
}

TEST(Lambert, SouthernConeInvertsThroughNegatedRadius) {
  // echo "LON LAT" | proj -f %.6f +proj=lcc +lat_1=-30 +lat_2=-40 +lat_0=-35
  //   +lon_0=145 +x_0=1000000 +y_0=2000000 +ellps=WGS84
  struct {
    double lon, lat, x, y;
  } const forward[] = {
      {150, -33, 1465595.125575, 2209382.074623}, {145, -35, 1000000.000000, 2000000.000000},
      {140, -45, 601181.994150, 878124.044796},   {160, -20, 2609814.897102, 3553185.105546},
      {130, -60, 70902.146550, -939993.503979},   {145, -89, 1000000.000000, -6204337.606284},
  };
  CKvLambert2SP engine = SouthernCone();
  for (const auto& c : forward) {
    double x, y;
    engine.Geo2Proj(c.lon, c.lat, &x, &y);
    EXPECT_NEAR(x, c.x, 1e-3) << c.lon << " " << c.lat;
    EXPECT_NEAR(y, c.y, 1e-3) << c.lon << " " << c.lat;
    ExpectRoundTrip(engine, c.lon, c.lat);
  }
  // echo "X Y" | invproj -f %.12f (same parameters)
  struct {
    double x, y, lon, lat;
  } const inverse[] = {
      {1500000, 2500000, 150.206091940892, -30.361279042781},
      {700000, 1000000, 141.294269532821, -43.953898711965},
      {1000000, 0, 145.000000000000, -52.761576122098},
      {2200000, 3400000, 156.381596174228, -21.813409880886},
  };
  for (const auto& c : inverse) {
    double lon, lat;
    engine.Proj2Geo(c.x, c.y, &lon, &lat);
    EXPECT_NEAR(lon, c.lon, 1e-9) << c.x << " " << c.y;
    EXPECT_NEAR(lat, c.lat, 1e-9) << c.x << " " << c.y;
  }
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
  // echo "-77 90" | proj -f %.6f +proj=lcc +lat_1=18 +lat_0=18 +lon_0=-77
  //   +k_0=1 +x_0=250000 +y_0=150000 +a=6378206.4 +rf=294.9786982
  //   gives 250000.000000 19786447.862154, for every longitude.
  CKvLambert1SP engine = JamaicaGrid();
  for (double lon : {-77.0, -60.0, 100.0}) {
    double x, y;
    engine.Geo2Proj(lon, 90, &x, &y);
    EXPECT_NEAR(x, 250000, 1e-6) << lon;
    EXPECT_NEAR(y, 19786447.862154, 1e-3) << lon;
  }
  double lon, lat;
  engine.Proj2Geo(250000, 19786447.862154, &lon, &lat);
  EXPECT_NEAR(lat, 90, 1e-9);
  // Beyond the pole t would turn negative; it is clamped to the apex.
  double x, y;
  engine.Geo2Proj(-70, 90.5, &x, &y);
  EXPECT_NEAR(x, 250000, 1e-6);
  EXPECT_NEAR(y, 19786447.862154, 1e-3);
}

TEST(Lambert, ConvergenceIsConeConstantTimesLongitudeDifference) {
  // echo "-96 28.5" | proj -V (Texas parameters as above):
  //   Convergence : 1d28'11.056" [ 1.46973789 ]
  CKvLambert2SP texas = TexasSouthCentral();
  EXPECT_NEAR(texas.GetConvergence(-96, 28.5), 1.46973789, 1e-8);
  EXPECT_NEAR(texas.GetConvergence(-96, -10), 1.46973789, 1e-8);  // latitude unused
  EXPECT_EQ(texas.GetConvergence(-99, 28.5), 0.0);
  CKvLambert2SP south = SouthernCone();
  EXPECT_LT(south.GetConvergence(150, -33), 0.0);
}

TEST(Lambert, ConeWithoutConeConstantYieldsNaN) {
  CKvLambert1SP equator1("Equator test", 1.0, 0, 0, 0, 0, kWgs84);
  CKvLambert2SP equator2("Equator test", 0, 0, 0, 0, 0, 0, kWgs84);
  CKvLambert2SP symmetric("Symmetric test", 30, -30, 0, 0, 0, 0, kWgs84);
  CKvLambert1SPProjection noEllipsoid("No ellipsoid", "", "", 1, 0, 45, 0, 0);
  CKvLambert2SPProjection unknownEllipsoid("Unknown ellipsoid", "", "??", 30, 60, 0, 45, 0, 0);
  std::unique_ptr<CKvProjection> missing1(noEllipsoid.CreateProjection());
  std::unique_ptr<CKvProjection> missing2(unknownEllipsoid.CreateProjection());
  for (CKvProjection* engine :
       {static_cast<CKvProjection*>(&equator1), static_cast<CKvProjection*>(&equator2),
        static_cast<CKvProjection*>(&symmetric), missing1.get(), missing2.get()}) {
    double x = 0, y = 0, lon = 0, lat = 0;
    engine->Geo2Proj(10, 20, &x, &y);
    EXPECT_TRUE(std::isnan(x)) << engine->GetName();
    EXPECT_TRUE(std::isnan(y)) << engine->GetName();
    engine->Proj2Geo(1000, 2000, &lon, &lat);
    EXPECT_TRUE(std::isnan(lon)) << engine->GetName();
    EXPECT_TRUE(std::isnan(lat)) << engine->GetName();
    EXPECT_EQ(engine->GetConvergence(10, 20), 0.0) << engine->GetName();
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
  struct {
    double parallel1, parallel2, originLatitude;
    double lowerLat, upperLat;
  } const cases[] = {
      {28, 30, 27, 24, 30},       // origin +-3 degrees
      {60, 70, 90, 62, 68},       // polar false origin: around the mean parallel 65
      {-60, -70, -90, -68, -62},  // likewise in the south
      {80, 85, 89, 86, 90},       // clamped at the pole
  };
  for (const auto& c : cases) {
    CKvLambert2SP engine("Area test", c.parallel1, c.parallel2, 20, c.originLatitude, 0, 0, kWgs84);
    double x0, y0, x1, y1, x, y;
    engine.GetDefaultArea(&x0, &y0, &x1, &y1);
    engine.Geo2Proj(17, c.lowerLat, &x, &y);
    EXPECT_NEAR(x0, x, 1e-6) << c.originLatitude;
    EXPECT_NEAR(y0, y, 1e-6) << c.originLatitude;
    engine.Geo2Proj(23, c.upperLat, &x, &y);
    EXPECT_NEAR(x1, x, 1e-6) << c.originLatitude;
    EXPECT_NEAR(y1, y, 1e-6) << c.originLatitude;
  }
  CKvLambert1SP polar("Polar test", 1.0, 20, 89, 0, 0, kWgs84);
  double x0, y0, x1, y1, x, y;
  polar.GetDefaultArea(&x0, &y0, &x1, &y1);
  polar.Geo2Proj(17, 86, &x, &y);
  EXPECT_NEAR(y0, y, 1e-6);
  polar.Geo2Proj(23, 90, &x, &y);
  EXPECT_NEAR(y1, y, 1e-6);
}

TEST(Lambert, CloneProjectsBitIdentically) {
  CKvLambert2SP texas = TexasSouthCentral();
  CKvLambert1SP jamaica = JamaicaGrid();
  for (CKvProjection* engine :
       {static_cast<CKvProjection*>(&texas), static_cast<CKvProjection*>(&jamaica)}) {
    std::unique_ptr<CKvProjection> copy(engine->Clone());
    double x1, y1, x2, y2;
    engine->Geo2Proj(-80, 25, &x1, &y1);
    copy->Geo2Proj(-80, 25, &x2, &y2);
    EXPECT_EQ(std::memcmp(&x1, &x2, sizeof x1), 0);
    EXPECT_EQ(std::memcmp(&y1, &y2, sizeof y1), 0);
    EXPECT_STREQ(copy->GetName(), engine->GetName());
  }
}

TEST(Lambert, CatalogueEntriesBuildEnginesAndWriteTheirDefinitions) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord texasRecord(new CKvLambert2SPProjection("KvLcc2 test zone", "NAD27", "CC",
                                                               Dms(28, 23, 0), Dms(30, 17, 0), -99,
                                                               Dms(27, 50, 0), 609601.2192, 0));
  kvtest::ScopedRecord jamaicaRecord(
      new CKvLambert1SPProjection("KvLcc1 test zone", "JAD69", "CC", 1.0, -77, 18, 250000, 150000));

  std::unique_ptr<CKvProjection> texas(texasRecord.get()->CreateProjection());
  ASSERT_NE(dynamic_cast<CKvLambert2SP*>(texas.get()), nullptr);
  double x, y;
  texas->Geo2Proj(-96, 28.5, &x, &y);
  EXPECT_NEAR(x, 2963503.91 * KvConst::kUsSurveyFoot, 0.01);  // the Texas example
  CKvPRJParser texasWkt(*texas);
  CString text;
  ASSERT_TRUE(texasWkt.Format(text));
  // Numbers with sixteen significant digits, as the writer has them.
  EXPECT_NE(std::string(text.GetString())
                .find("DATUM[\"NAD27\",SPHEROID[\"Clarke 1866\",6378206.4,294.9786982]],"
                      "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
                      "PROJECTION[\"Lambert_Conformal_Conic_2SP\"],"
                      "PARAMETER[\"False_Easting\",609601.2192000001],"
                      "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",-99],"
                      "PARAMETER[\"Standard_Parallel_1\",28.38333333333333],"
                      "PARAMETER[\"Standard_Parallel_2\",30.28333333333333],"
                      "PARAMETER[\"Latitude_Of_Origin\",27.83333333333333],UNIT[\"Meter\",1]]"),
            std::string::npos)
      << text.GetString();

  std::unique_ptr<CKvProjection> jamaica(jamaicaRecord.get()->CreateProjection());
  auto* lambert = dynamic_cast<CKvLambert1SP*>(jamaica.get());
  ASSERT_NE(lambert, nullptr);
  CKvLambert1SPProjection set;
  ASSERT_TRUE(lambert->GetMapProjection(set));
  EXPECT_EQ(set.GetOriginLongitude(), -77.0);
  EXPECT_EQ(set.GetFalseNorthing(), 150000.0);
  CKvPRJParser jamaicaWkt(*lambert);
  ASSERT_TRUE(jamaicaWkt.Format(text));
  EXPECT_NE(std::string(text.GetString())
                .find("PROJECTION[\"Lambert_Conformal_Conic_1SP\"],"
                      "PARAMETER[\"False_Easting\",250000],PARAMETER[\"False_Northing\",150000],"
                      "PARAMETER[\"Central_Meridian\",-77],PARAMETER[\"Scale_Factor\",1],"
                      "PARAMETER[\"Latitude_Of_Origin\",18],UNIT[\"Meter\",1]]"),
            std::string::npos)
      << text.GetString();

  // Under the 2SP record's name a 1SP engine finds no definition of its
  // method, though the ellipsoid, which goes by the name alone, is found.
  CKvLambert1SP other("KvLcc2 test zone", 1.0, -77, 18, 0, 0, kClarke1866);
  EXPECT_FALSE(other.GetMapProjection(set));
  CKvEllipsoid e;
  EXPECT_TRUE(other.GetEllipsoid(e));
  EXPECT_EQ(e.GetID(), "CC");
  // Outside the catalogue: no method at all.
  CKvLambert1SP outside = JamaicaGrid("Not in any catalogue");
  CKvPRJParser nonProjected(outside);
  EXPECT_EQ(nonProjected.GetProjectionType(), CKvMapProjData::eNonProjected);
  EXPECT_STREQ(nonProjected.GetProjectionTypeName().GetString(), "Non_Projected");
}

}  // namespace
