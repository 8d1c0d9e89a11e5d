#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <string>

#include "TestCatalogue.h"
#include "catalogue/KvBufferList.h"
#include "catalogue/KvMapProjData.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"

namespace {

typedef CKvMapProjection M;

const char kUtm32Wkt[] =
    "PROJCS[\"UTM-32\",GEOGCS[\"Unused\",DATUM[\"UTM Projections\",SPHEROID[\"WGS 1984\","
    "6378137,298.257223563]],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
    "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"False_Easting\",500000],"
    "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",9],"
    "PARAMETER[\"Scale_Factor\",0.9996],PARAMETER[\"Latitude_Of_Origin\",0],"
    "UNIT[\"Meter\",1]]";

class KvMapProjectionTest : public ::testing::Test {
 protected:
  void SetUp() override { kvtest::EnsureCatalogue(); }
};

TEST_F(KvMapProjectionTest, BuildsTheCatalogueInItsFixedOrder) {
  CKvMapProjectionList& list = CKvCartSetup::Instance().m_MapProjectionList;
  auto it = list.GetIteratorBegin();
  EXPECT_EQ((*it)->GetName(), "LONG/LAT");
  EXPECT_EQ((*it)->GetBranchName(), "Non UTM Projections");
  EXPECT_EQ((*++it)->GetName(), "UTM-1");
  auto* utm32 = dynamic_cast<CKvMapProjData*>(list.GetMapProjection("UTM-32"));
  std::string label;
  double value = 0;
  CKvMapProjData::EParamType kind;
  ASSERT_TRUE(utm32->GetParameter(1, label, value, kind));
  EXPECT_EQ(value, 9.0);
  EXPECT_FALSE(utm32->CanEdit());
  EXPECT_EQ(list.GetMapProjection("UTM-0"), nullptr);
  EXPECT_EQ(list.GetMapProjection("UTM-61"), nullptr);
  auto last = list.GetIteratorEnd();
  --last;
  EXPECT_EQ((*last)->GetName(), "NON-UTM");
}

TEST_F(KvMapProjectionTest, ResolvesACatalogueNameAndStoresItsWkt) {
  const M utm("UTM-32");
  ASSERT_NE(utm.GetProjection(), nullptr);
  EXPECT_STREQ(utm.GetName(), "UTM-32");
  EXPECT_STREQ(utm.GetProjectionString(), kUtm32Wkt);
  double x = 0, y = 0, lon = 0, lat = 0;
  utm.Geo2Proj(9, 56, &x, &y);
  EXPECT_NEAR(x, 500000.000, 1e-3);  // reference values: see the transverse Mercator tests
  EXPECT_NEAR(y, 6206079.587, 1e-3);
  utm.Proj2Geo(x, y, &lon, &lat);
  EXPECT_NEAR(lon, 9, 1e-9);
  EXPECT_NEAR(lat, 56, 1e-9);
  // The WKT it stores resolves to the same system.
  const M again(utm.GetProjectionString());
  again.Geo2Proj(15, 50, &x, &y);
  EXPECT_NEAR(x, 929865.502, 1e-3);
  EXPECT_NEAR(y, 5555901.554, 1e-3);
  const M copy(utm);
  copy.Geo2Proj(9, 56, &x, &y);
  EXPECT_NEAR(y, 6206079.587, 1e-3);
}

TEST_F(KvMapProjectionTest, RefusesGenericUtmAndReadsEmptyAsNonUtm) {
  try {
    M generic(" UTM ");
    FAIL() << "no exception";
  } catch (const std::out_of_range& e) {
    EXPECT_STREQ(e.what(), "Can't use generic UTM");
  }
  const M empty(""), local("NON-UTM"), longLat(" LONG/LAT ");
  ASSERT_NE(empty.GetProjection(), nullptr);
  EXPECT_STREQ(empty.GetName(), "NON-UTM");
  EXPECT_EQ(std::string(empty.GetProjectionString()).rfind("PROJCS[\"NON-UTM\"", 0), 0u);
  EXPECT_STREQ(local.GetProjectionString(), "NON-UTM");
  EXPECT_STREQ(longLat.GetProjectionString(), " LONG/LAT ");
  EXPECT_TRUE(local.IsLocal());
  EXPECT_TRUE(longLat.IsGeographical());
  double x = 0, y = 0;
  local.Geo2Proj(123.4, 56.7, &x, &y);
  EXPECT_EQ(x, 123.4);
  EXPECT_EQ(y, 56.7);
}

TEST_F(KvMapProjectionTest, AnEngineLessObjectAnswersWithDefaults) {
  const M none("No such system");
  EXPECT_EQ(none.GetProjection(), nullptr);
  EXPECT_STREQ(none.GetName(), "");
  EXPECT_STREQ(none.GetProjectionString(), "");
  double lon = 5, lat = 5;
  none.GetOrigin(&lon, &lat);
  EXPECT_EQ(lon, 0.0);
  EXPECT_EQ(none.GetConvergence(10, 10), 0.0);
  double x = 7, y = 8;
  none.Geo2Proj(1, 2, &x, &y);  // the caller's values, converted as they stand
  EXPECT_EQ(x, 7.0);
  lon = lat = -1;
  none.Proj2Geo(1, 2, &lon, &lat);
  EXPECT_EQ(lon, -1.0);
  double d = 99;
  EXPECT_TRUE(none.GetDistance(1, 2, 1, 2, d));
  EXPECT_EQ(d, 0.0);
  EXPECT_FALSE(none.GetDistance(1, 2, 3, 4, d));
  double a1 = 0, a2 = 0;
  EXPECT_FALSE(none.GetPoint(1, 2, 30, 1000, lon, lat, a1));
  (void)a2;
  const M copy(none);
  EXPECT_EQ(copy.GetProjection(), nullptr);
}

TEST_F(KvMapProjectionTest, GivesDefaultAreasAroundTheProjectedOrigin) {
  const M utm("UTM-32");
  double a[4], b[4];
  utm.GetDefaultArea(&a[0], &a[1], &a[2], &a[3]);
  utm.GetDefaultArea(0, 10, M::eSizeIsX, 1000, &b[0], &b[1], &b[2], &b[3]);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(a[i], b[i]);
  utm.GetDefaultArea(200, 100, M::eSizeIsX, 1000, &b[0], &b[1], &b[2], &b[3]);
  EXPECT_DOUBLE_EQ(b[2] - b[0], 1000.0);
  EXPECT_DOUBLE_EQ(b[3] - b[1], 500.0);
  EXPECT_DOUBLE_EQ(b[0], 500000.0 - 500.0);  // origin (9, 0) projects to (500000, 0)
  utm.GetDefaultArea(200, 100, M::eSizeIsY, 1000, &b[0], &b[1], &b[2], &b[3]);
  EXPECT_DOUBLE_EQ(b[2] - b[0], 2000.0);
  EXPECT_DOUBLE_EQ(b[3] - b[1], 1000.0);
}

// Expected values: WGS 84 geocentric coordinates, X = (N + h) cos(phi)
// cos(lambda) etc.; (0, 0, 0) lies on the semi-major axis and the pole at b.
TEST_F(KvMapProjectionTest, ConvertsToGeocentricAndBack) {
  const M longLat("LONG/LAT");
  double X, Y, Z, lon, lat, h;
  longLat.Geo2XYZ(0, 0, 0, &X, &Y, &Z);
  EXPECT_NEAR(X, 6378137.0, 1e-6);
  EXPECT_NEAR(Y, 0.0, 1e-6);
  longLat.Geo2XYZ(0, 90, 0, &X, &Y, &Z);
  EXPECT_NEAR(Z, 6356752.314245, 1e-6);
  for (double latitude : {-60.0, -1.0, 33.3, 75.0}) {
    longLat.Geo2XYZ(12.5, latitude, 350.0, &X, &Y, &Z);
    longLat.XYZ2Geo(X, Y, Z, &lon, &lat, &h);
    EXPECT_NEAR(lon, 12.5, 1e-12);
    EXPECT_NEAR(lat, latitude, 1e-13);
    EXPECT_NEAR(h, 350.0, 1e-8);
  }
}

TEST_F(KvMapProjectionTest, ClassifiesStrings) {
  EXPECT_FALSE(M::IsValid(""));
  EXPECT_FALSE(M::IsValid("UTM"));
  EXPECT_TRUE(M::IsValid(" NON-UTM "));
  EXPECT_TRUE(M::IsValid("UTM-32"));
  EXPECT_FALSE(M::IsValid("UTM-61"));
  EXPECT_TRUE(M::IsValid(kUtm32Wkt));
  EXPECT_FALSE(M::IsValid("PROJCS[\"x\",PROJECTION[\"Unknown\"],a,b]"));
  EXPECT_TRUE(M::IsLocal("NON-UTM"));
  EXPECT_FALSE(M::IsGeoreferenced("NON-UTM"));
  EXPECT_TRUE(M::IsGeoreferenced("UTM-1"));
  EXPECT_FALSE(M::HasDatum("LONG/LAT"));
  EXPECT_TRUE(M::HasDatum("UTM-5"));
  EXPECT_TRUE(M::IsGeographical("LONG/LAT"));
  EXPECT_FALSE(M::IsGeographical("UTM-5"));
  EXPECT_TRUE(M::IsType(1, "UTM-5"));
  EXPECT_TRUE(M::IsType(1, kUtm32Wkt));
  EXPECT_FALSE(M::IsType(2, "UTM-5"));
  EXPECT_TRUE(M::IsType(4, "LONG/LAT"));
  EXPECT_FALSE(M::IsType(8, "LONG/LAT"));
  EXPECT_FALSE(M::IsType(3, "UTM"));
  EXPECT_TRUE(M::IsProjectionOfType(kUtm32Wkt, CKvMapProjData::eTransverseMercator));
  EXPECT_STREQ(M::LongitudeToUTMZone(9.0), "UTM-32");
  EXPECT_STREQ(M::LongitudeToUTMZone(-180.0), "UTM-1");
  EXPECT_STREQ(M::LongitudeToUTMZone(180.0), "UTM-61");
  EXPECT_STREQ(M::LongitudeToUTMZone(NAN), "UTM-0");
  EXPECT_STREQ(M::ShortName(kUtm32Wkt), "UTM-32");
  EXPECT_TRUE(M::AreIdentical("UTM-32", kUtm32Wkt));
  EXPECT_FALSE(M::AreIdentical("UTM-32", "UTM-33"));
  EXPECT_FALSE(M::AreIdentical("UTM-32", "UTM"));
  long count = -1;
  EXPECT_STREQ(M::EnumMapProjections(12, &count), "LONG/LAT;NON-UTM;");
  EXPECT_EQ(count, 2);
  EXPECT_EQ(M::GetCoordSysType("UTM-32"), 1);  // EAST, NORTH
}

TEST_F(KvMapProjectionTest, TruncatesTheMostRecentlyUsedList) {
  CKvBufferList list;
  for (const char* s : {"LONG/LAT", "UTM-1", "NON-UTM", "UTM-2", "UTM-3"}) list.push_back(s);
  CKvBufferList one = list, zero = list, two = list, many = list;
  zero.TruncateToSize(1, 0);
  one.TruncateToSize(1, 1);
  EXPECT_EQ(zero.size(), 2u);  // up to and including "UTM-1"
  EXPECT_EQ(one.size(), 2u);
  two.TruncateToSize(1, 2);
  EXPECT_EQ(two.size(), 3u);  // "NON-UTM" is a transverse Mercator system too
  many.TruncateToSize(1, 10);
  EXPECT_EQ(many.size(), 5u);
  EXPECT_EQ(list.FindMapProjection(kUtm32Wkt), list.end());
  EXPECT_STREQ(list.FindMapProjection(" NON-UTM")->GetString(), "NON-UTM");
}

}  // namespace
