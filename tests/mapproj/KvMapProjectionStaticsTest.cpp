#include <gtest/gtest.h>


#include "TestCatalogue.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "mapproj/KvMapProjection.h"

namespace {

typedef CKvMapProjection M;

TEST(KvMapProjectionStatics, GivesTheFixedTexts) {
  EXPECT_STREQ(M::IDtoProjectionString(M::eNonUtm), "NON-UTM");
  EXPECT_STREQ(M::IDtoProjectionString(M::eLongLat), "LONG/LAT");
  EXPECT_STREQ(M::IDtoProjectionString(static_cast<M::EMapProjectionString>(0)), "");
  EXPECT_STREQ(M::IDtoProjectionString(static_cast<M::EMapProjectionString>(5)), "");
  EXPECT_STREQ(M::IDtoProjectionString(M::eWgs84Geographic),
               "GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137,"
               "298.257223563]],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.017453292519943295]]");
  const std::string google = M::IDtoProjectionString(M::eGoogleMercator);
  EXPECT_EQ(google.rfind("PROJCS[\"Google Maps - Mercator\",GEOGCS[\"GCS_Google_Maps\",", 0), 0u);
  EXPECT_NE(google.find("UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Mercator\"]"),
            std::string::npos);
  EXPECT_TRUE(M::IsLocal(" NON-UTM\t"));
  EXPECT_FALSE(M::IsLocal("non-utm"));
  EXPECT_FALSE(M::IsLocal(nullptr));
}

TEST(KvMapProjectionStatics, FindsRecordsAndTheirEllipsoids) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord known(
      new CKvTransverseMercatorProjection("Statics A", "B", "AA", 1, 0, 0, 0, 0));
  kvtest::ScopedRecord unknown(
      new CKvTransverseMercatorProjection("Statics B", "B", "??", 1, 0, 0, 0, 0));
  CKvCartSetup& setup = CKvCartSetup::Instance();
  setup.m_bMapProjectionListModified = false;
  EXPECT_EQ(M::MapProjection("Statics A"), known.get());
  EXPECT_TRUE(setup.m_bMapProjectionListModified);  // even a read marks it
  ASSERT_NE(M::Ellipsoid("Statics A"), nullptr);
  EXPECT_EQ(M::Ellipsoid("Statics A")->GetName(), "Airy 1830");
  EXPECT_EQ(M::Ellipsoid("Statics B"), nullptr);
  EXPECT_EQ(M::Ellipsoid("Statics C"), nullptr);
  EXPECT_EQ(M::MapProjection("Statics C"), nullptr);
  setup.m_bMapProjectionListModified = false;
}

}  // namespace
