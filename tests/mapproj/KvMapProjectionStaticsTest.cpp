#include <gtest/gtest.h>

#include <string>

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

// The list format is "ID|name|a|1/f;" per entry, numbers with 16
// significant digits; a custom ellipsoid appears in the custom and complete
// lists as soon as it is added, with its edited values after EditEllipsoid,
// and in neither once deleted.
TEST(KvMapProjectionStatics, ListsAndEditsEllipsoidsThroughTheStatics) {
  kvtest::EnsureEllipsoids();
  CKvCartSetup& setup = CKvCartSetup::Instance();
  typedef CKvEllipsoidList L;
  long count = -1;
  const std::string predefined = M::EnumEllipsoids(L::ePredefinedEllipsoids, &count);
  EXPECT_GT(count, 10);
  EXPECT_NE(predefined.find("WE|WGS 1984|6378137|298.257223563;"), std::string::npos);
  EXPECT_EQ(predefined.back(), ';');

  setup.m_bEllipsoidListModified = false;
  CKvEllipsoid* custom = new CKvEllipsoid("Statics sphere", "Q7", 6371000.5, 0);
  M::AddEllipsoid(custom);
  EXPECT_TRUE(setup.m_bEllipsoidListModified);
  long customCount = -1;
  std::string customs = M::EnumEllipsoids(L::eCustomEllipsoids, &customCount);
  EXPECT_NE(customs.find("Q7|Statics sphere|6371000.5|0;"), std::string::npos);
  long all = -1;
  M::EnumEllipsoids(L::eAllEllipsoids, &all);
  EXPECT_EQ(all, count + customCount);

  custom->SetParams(6371001, 300);
  M::EditEllipsoid(custom);
  customs = M::EnumEllipsoids(L::eCustomEllipsoids, &customCount);
  EXPECT_NE(customs.find("Q7|Statics sphere|6371001|300;"), std::string::npos);
  EXPECT_EQ(M::EllipsoidFromID("Q7"), custom);

  M::DeleteEllipsoid(custom);
  customs = M::EnumEllipsoids(L::eCustomEllipsoids, &customCount);
  EXPECT_EQ(customs.find("Q7|"), std::string::npos);
  EXPECT_EQ(M::EllipsoidFromID("Q7"), nullptr);
  EXPECT_EQ(M::EllipsoidFromName("Statics sphere"), nullptr);
  // A predefined ellipsoid is never deleted.
  M::DeleteEllipsoid(M::EllipsoidFromID("WE"));
  EXPECT_NE(M::EllipsoidFromID("WE"), nullptr);
  setup.m_bEllipsoidListModified = false;
}

}  // namespace

// Resolution trims the string, so every query answers for " UTM-32 " what it
// answers for "UTM-32".
TEST(KvMapProjectionStatics, EveryQueryTrimsAsResolutionDoes) {
  kvtest::EnsureCatalogue();
  const char* const names[] = {"UTM-32", "LONG/LAT", "NON-UTM", "No such system",
                               "PROJCS[\"x\",GEOGCS[\"g\",DATUM[\"d\",SPHEROID[\"s\",6378137,298.257223563]],"
                               "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
                               "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"Central_Meridian\",9],"
                               "PARAMETER[\"Scale_Factor\",0.9996],UNIT[\"Meter\",1]]"};
  for (const char* name : names) {
    for (const std::string& padded : {" " + std::string(name) + " ", "\t" + std::string(name) + "\r\n"}) {
      SCOPED_TRACE("'" + padded + "'");
      const char* p = padded.c_str();
      EXPECT_EQ(M::IsValid(p), M::IsValid(name));
      EXPECT_EQ(M::HasDatum(p), M::HasDatum(name));
      EXPECT_EQ(M::IsGeoreferenced(p), M::IsGeoreferenced(name));
      EXPECT_EQ(M::IsGeographical(p), M::IsGeographical(name));
      EXPECT_EQ(M::IsLocal(p), M::IsLocal(name));
      EXPECT_EQ(M::IsLongLat(p), M::IsLongLat(name));
      for (int mask : {1, 2, 3, 4, 8, 12, 15}) EXPECT_EQ(M::IsType(mask, p), M::IsType(mask, name)) << mask;
      EXPECT_EQ(M::IsProjectionOfType(p, CKvMapProjData::eTransverseMercator),
                M::IsProjectionOfType(name, CKvMapProjData::eTransverseMercator));
      EXPECT_EQ(M::GetCoordSysType(p), M::GetCoordSysType(name));
      EXPECT_EQ(M::AreIdentical(p, name), M::IsValid(name));
      EXPECT_EQ(M::AreIdentical(name, p), M::IsValid(name));
      EXPECT_EQ(std::string(M::ShortName(p)), std::string(M::ShortName(name)));
      EXPECT_EQ(M::Ellipsoid(p), M::Ellipsoid(name));
      EXPECT_EQ(M::MapProjection(p), M::MapProjection(name));
    }
  }
  // The catalogue name answers as itself, not as a string that names nothing.
  EXPECT_TRUE(M::IsValid(" UTM-32 "));
  EXPECT_TRUE(M::AreIdentical(" UTM-32 ", "UTM-32"));
  EXPECT_NE(M::Ellipsoid(" UTM-32 "), nullptr);
  CKvCartSetup::Instance().m_bMapProjectionListModified = false;
}
