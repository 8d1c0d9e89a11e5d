// What a catalogue record knows besides its parameters (EPSG code, linear
// unit, datum shift): reading and writing it in catalogue files, resolving
// "EPSG:<code>", and the system a name gives once its record says them.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

#include "KvCart.h"
#include "TestCatalogue.h"
#include "catalogue/KvLambert2SPProjection.h"
#include "catalogue/KvMapProjDetails.h"
#include "catalogue/KvMapProjectionList.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "datum/KvDatumConverter.h"
#include "datum/KvDatumShift.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"
#include "platform/tsf.h"
#include "wkt/KvProjTranslator.h"

namespace {

// The US survey foot as the bundled records give it: the double nearest
// 1200 / 3937 m, one unit in the last place below the "_ft_us" constant.
constexpr double kUsFoot = 1200.0 / 3937.0;

std::string TempPath(const char* name) {
  return std::string(::testing::TempDir()) + name + std::to_string(::getpid());
}

std::string ReadText(const std::string& path) {
  std::ifstream in(path);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

CKvMapProjDetails Details(int code, const char* unit, double factor, const double* shift,
                          int count) {
  CKvMapProjDetails d;
  d.SetEpsgCode(code);
  if (unit) d.SetLinearUnit(unit, factor);
  if (shift) d.SetDatumShift(shift, count);
  return d;
}

TEST(KvMapProjDetails, ReadsCodeNamesInAnyCaseWithBlanks) {
  const struct {
    const char* text;
    int code;
  } cases[] = {
      {"EPSG:2278", 2278},
      {"epsg:2278", 2278},
      {" EPSG : 2278 ", 2278},
      {"Epsg:\t4326", 4326},
      {"EPSG:2147483647", 2147483647},
      {"EPSG:", 0},
      {"EPSG:abc", 0},
      {"EPSG:12x", 0},
      {"EPSG:0", 0},
      {"EPSG:-5", 0},
      {"EPSG::2278", 0},
      {"EPSG 2278", 0},
      {"ESRI:102100", 0},
      {"EPSG:2147483648", 0},
      {"EPSG:99999999999999999999", 0},
      {"", 0},
      {"UTM-32", 0},
  };
  for (const auto& c : cases) EXPECT_EQ(CKvMapProjDetails::ParseCodeName(c.text), c.code) << c.text;
  EXPECT_EQ(CKvMapProjDetails::ParseCodeName(nullptr), 0);
}

TEST(KvMapProjDetails, RefusesUnitsAndShiftsThatAreNoNumbers) {
  CKvMapProjDetails d;
  EXPECT_FALSE(d.SetLinearUnit("foot", 0.0));
  EXPECT_FALSE(d.SetLinearUnit("foot", -0.3048));
  EXPECT_FALSE(d.SetLinearUnit("foot", NAN));
  EXPECT_FALSE(d.HasLinearUnit());
  EXPECT_EQ(d.GetLinearUnitFactor(), 1.0);
  const double values[7] = {1, 2, 3, 4, 5, 6, 7};
  EXPECT_FALSE(d.SetDatumShift(values, 5));
  EXPECT_FALSE(d.SetDatumShift(nullptr, 3));
  const double bad[3] = {1, INFINITY, 3};
  EXPECT_FALSE(d.SetDatumShift(bad, 3));
  EXPECT_FALSE(d.HasDatumShift());
  EXPECT_TRUE(d.SetDatumShift(values, 3));
  CKvDatumShift shift;
  d.GetDatumShift(shift);
  EXPECT_EQ(shift.GetType(), CKvCartDef::e3Parameter);  // the unused four stay 0
  EXPECT_EQ(shift[3], 0.0);
  d.SetEpsgCode(-3);
  EXPECT_EQ(d.GetEpsgCode(), 0);
}

// A custom file written with the new keys reads back identically; one
// written before them (and values that do not read as their kind) still
// reads, without the details.
TEST(KvMapProjDetails, CustomFileKeepsTheDetailsAndOldFilesStillRead) {
  const std::string path = TempPath("kvcart_details.tsf");
  const double helmert[7] = {598.1, 73.7, 418.2, 0.202, 0.045, -2.455, 6.7};
  const double translation[3] = {-87, -98, -121};
  {
    CKvMapProjectionList list;
    auto* feet = new CKvLambert2SPProjection("My feet", "North American Datum 1983", "RF", 30, 28,
                                             -99, 27.8, 600000, 4000000, true, true);
    feet->SetDetails(Details(2278, "US survey foot", kUsFoot, translation, 3));
    auto* seven = new CKvTransverseMercatorProjection("My seven", "DHDN", "BR", 1, 9, 0, 3500000, 0,
                                                      true, true);
    seven->SetDetails(Details(0, nullptr, 0, helmert, 7));
    list.AddMapProjection(feet);
    list.AddMapProjection(seven);
    list.AddMapProjection(
        new CKvTransverseMercatorProjection("Plain", "B", "WE", 1, 3, 0, 0, 0, true, true));
    ASSERT_EQ(list.WriteCustomMapProjections(path), TSF_OK);
  }
  const std::string text = ReadText(path);
  EXPECT_NE(text.find("EPSG_Code = 2278"), std::string::npos) << text;
  EXPECT_NE(text.find("Linear_Unit = 'US survey foot'"), std::string::npos);
  EXPECT_NE(text.find("Linear_Unit_Factor = 0.3048006096012192"), std::string::npos);
  EXPECT_NE(text.find("TOWGS84 = -87.0, -98.0, -121.0\n"), std::string::npos) << text;
  EXPECT_NE(text.find("TOWGS84 = 598.1, 73.7, 418.2, 0.202, 0.045, -2.455, 6.7"),
            std::string::npos);

  CKvMapProjectionList back;
  ASSERT_EQ(back.ReadMapProjections(path, true), TSF_OK);
  std::remove(path.c_str());
  const CKvMapProjDetails* feet = CKvParameterSetBase::DetailsOf(back.GetMapProjection("My feet"));
  const CKvMapProjDetails* seven =
      CKvParameterSetBase::DetailsOf(back.GetMapProjection("My seven"));
  const CKvMapProjDetails* plain = CKvParameterSetBase::DetailsOf(back.GetMapProjection("Plain"));
  ASSERT_TRUE(feet && seven && plain);
  EXPECT_EQ(*feet, Details(2278, "US survey foot", kUsFoot, translation, 3));
  EXPECT_EQ(*seven, Details(0, nullptr, 0, helmert, 7));
  EXPECT_EQ(*plain, CKvMapProjDetails());
  EXPECT_EQ(back.GetMapProjection("EPSG:2278"), back.GetMapProjection("My feet"));

  // A file of before, and keys whose values are not of their kind.
  const char old[] =
      "[MAP_PROJECTION_DEFINITION]\n"
      "   [UTM_PROJECTION]\n"
      "      Projection_Name = 'Old'\n      Branch_Name = 'B'\n      Ellipsoid = 'WE'\n"
      "      Scale = 1\n      Centre = 3\n      Origin_Latitude = 0\n"
      "      Feast = 1\n      Fnorth = 2\n"
      "   EndSect\n"
      "   [UTM_PROJECTION]\n"
      "      Projection_Name = 'Broken'\n      Branch_Name = 'B'\n      Ellipsoid = 'WE'\n"
      "      Scale = 1\n      Centre = 3\n      Origin_Latitude = 0\n"
      "      Feast = 1\n      Fnorth = 2\n"
      "      EPSG_Code = 'abc'\n      Linear_Unit = 'foot'\n      Linear_Unit_Factor = 0\n"
      "      TOWGS84 = 1, 2\n"
      "   EndSect\n"
      "EndSect\n";
  void* file = tsfLoadBuffer(old, sizeof old - 1, "old", 1);
  ASSERT_NE(file, nullptr);
  void* section = tsfSectionByNum(tsfTargetByNameNum(file, "MAP_PROJECTION_DEFINITION", 1), 1);
  CKvTransverseMercatorProjection record;
  record.ReadFromHandle(section, true);
  EXPECT_EQ(record.GetName(), "Old");
  EXPECT_EQ(record.GetFalseNorthing(), 2.0);
  EXPECT_EQ(record.GetDetails(), CKvMapProjDetails());
  CKvMapProjDetails broken;
  EXPECT_FALSE(
      broken.Read(tsfSectionByNum(tsfTargetByNameNum(file, "MAP_PROJECTION_DEFINITION", 1), 2)));
  EXPECT_EQ(broken, CKvMapProjDetails());
  tsfClose(&file);
}

// The index by code follows additions, deletions and changes of code.
TEST(KvMapProjDetails, CodeLookUpFollowsTheCatalogue) {
  CKvMapProjectionList list;
  auto* a = new CKvTransverseMercatorProjection("A", "B", "WE", 1, 3, 0, 0, 0, true, true);
  auto* b = new CKvTransverseMercatorProjection("B", "B", "WE", 1, 9, 0, 0, 0, true, true);
  a->SetDetails(Details(100, nullptr, 0, nullptr, 0));
  list.AddMapProjection(a);
  EXPECT_EQ(list.GetMapProjection("EPSG:100"), a);
  list.AddMapProjection(b);
  EXPECT_EQ(list.GetMapProjectionByCode(200), nullptr);
  b->SetDetails(Details(200, nullptr, 0, nullptr, 0));
  EXPECT_EQ(list.GetMapProjection("epsg: 200"), b);
  b->SetDetails(Details(100, nullptr, 0, nullptr, 0));  // the first in list order wins
  EXPECT_EQ(list.GetMapProjectionByCode(100), a);
  EXPECT_EQ(list.GetMapProjectionByCode(200), nullptr);
  list.DeleteMapProjection(a);
  EXPECT_EQ(list.GetMapProjectionByCode(100), b);
  // A record named like a code is found by its name first.
  auto* named = new CKvTransverseMercatorProjection("EPSG:100", "B", "WE", 1, 9, 0, 0, 0);
  list.AddMapProjection(named);
  EXPECT_EQ(list.GetMapProjection("EPSG:100"), named);
  EXPECT_EQ(list.GetMapProjection(" EPSG : 100 "), b);
}

// "EPSG:2278", "epsg:2278" and the record's name give identical objects;
// an unknown code is an unknown name, everywhere a name is taken.
TEST(ResolvesCodes, CodesAndNamesGiveIdenticalObjects) {
  kvtest::EnsureCatalogue();
  const char* const forms[] = {"EPSG:2278", "epsg:2278", " EPSG : 2278 ",
                               "NAD83 / Texas South Central (ftUS)"};
  const CKvMapProjection reference(forms[3]);
  ASSERT_NE(reference.GetProjection(), nullptr);
  double rx = 0, ry = 0;
  reference.Geo2Proj(-99.38, 29.23, &rx, &ry);
  for (const char* form : forms) {
    SCOPED_TRACE(form);
    const CKvMapProjection object(form);
    ASSERT_NE(object.GetProjection(), nullptr);
    EXPECT_STREQ(object.GetName(), reference.GetName());
    EXPECT_STREQ(object.GetProjectionString(), reference.GetProjectionString());
    double x = 0, y = 0;
    object.Geo2Proj(-99.38, 29.23, &x, &y);
    EXPECT_EQ(x, rx);
    EXPECT_EQ(y, ry);
    EXPECT_TRUE(CKvMapProjection::IsValid(form));
    EXPECT_TRUE(CKvMapProjection::IsType(1, form));
    EXPECT_TRUE(CKvMapProjection::HasDatum(form));
    EXPECT_TRUE(CKvMapProjection::AreIdentical(form, forms[3]));
    EXPECT_EQ(S_ISVALID(form), 1);
    void* handle = nullptr;
    int status = -1;
    C_KVMP_CREATE(form, &handle, &status);
    ASSERT_EQ(status, 0);
    double cx = 0, cy = 0;
    C_KVMP_GEO2PROJ(handle, -99.38, 29.23, &cx, &cy);
    EXPECT_EQ(cx, rx);
    C_KVMP_DESTROY(&handle, &status);
  }
  // echo "29.23 -99.38" | cs2cs -f %.6f EPSG:4269 EPSG:2278: 1847307.774984 13631362.635487
  EXPECT_NEAR(rx, 1847307.774984, 1e-5);
  EXPECT_NEAR(ry, 13631362.635487, 1e-5);
  EXPECT_STREQ(CKvMapProjection("EPSG:4326").GetName(), "LONG/LAT");
  for (const char* unknown : {"EPSG:1", "EPSG:999999", "EPSG:abc", "EPSG:"}) {
    SCOPED_TRACE(unknown);
    EXPECT_EQ(CKvMapProjection(unknown).GetProjection(), nullptr);
    EXPECT_STREQ(CKvMapProjection(unknown).GetProjectionString(), "");
    EXPECT_FALSE(CKvMapProjection::IsValid(unknown));
    EXPECT_FALSE(CKvMapProjection::HasDatum(unknown));
    EXPECT_EQ(CKvMapProjection::MapProjection(unknown), nullptr);
  }
}

// The WKT written for a name says its unit and shift, lengths in that unit,
// and everything built from it follows.
TEST(ResolvesCodes, TheWktOfANameSaysItsUnitAndShift) {
  kvtest::EnsureCatalogue();
  const CKvMapProjection feet("EPSG:2278");
  EXPECT_STREQ(feet.GetProjectionString(),
               "PROJCS[\"NAD83 / Texas South Central (ftUS)\",GEOGCS[\"Unused\","
               "DATUM[\"North American Datum 1983\",SPHEROID[\"GRS 1980\",6378137,298.257222101],"
               "TOWGS84[0,0,0,0,0,0,0]],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\","
               "0.0174532925199433]],PROJECTION[\"Lambert_Conformal_Conic_2SP\"],"
               "PARAMETER[\"False_Easting\",1968500],PARAMETER[\"False_Northing\",13123333.333],"
               "PARAMETER[\"Central_Meridian\",-99],PARAMETER[\"Standard_Parallel_1\","
               "30.28333333333333],PARAMETER[\"Standard_Parallel_2\",28.38333333333333],"
               "PARAMETER[\"Latitude_Of_Origin\",27.83333333333333],"
               "UNIT[\"US survey foot\",0.3048006096012192]]");
  double factor = 0;
  char name[64] = "";
  ASSERT_TRUE(feet.GetUnit(CKvMapProjection::eProjectedUnit, &factor, name));
  EXPECT_STREQ(name, "US survey foot");
  EXPECT_EQ(factor, kUsFoot);
  // The unit is applied both ways: the false origin is 600000 m, 3999999.9999 m.
  double lon = 0, lat = 0;
  feet.Proj2Geo(1968500, 13123333.333, &lon, &lat);
  EXPECT_NEAR(lon, -99, 1e-11);
  EXPECT_NEAR(lat, 27.833333333333333, 1e-11);

  const CKvMapProjection ed50("EPSG:23032");
  CKvDatumShift shift;
  ed50.GetDatumShift(shift);
  EXPECT_EQ(shift.GetType(), CKvCartDef::e3Parameter);
  EXPECT_EQ(shift[0], -87.0);
  EXPECT_EQ(shift[2], -121.0);
  const std::string wkt = ed50.GetProjectionString();
  EXPECT_NE(
      wkt.find("SPHEROID[\"International 1924\",6378388,297],TOWGS84[-87,-98,-121,0,0,0,0]],"),
      std::string::npos)
      << wkt;
  const std::string proj4 = CKvProjTranslator().Convert2Proj4("EPSG:23032", nullptr, 0);
  EXPECT_NE(proj4.find("+towgs84=-87,-98,-121,0,0,0,0 +units=m "), std::string::npos) << proj4;
  EXPECT_NE(CKvProjTranslator()
                .Convert2Proj4("EPSG:2278", nullptr, 0)
                .find("+to_meter=0.3048006096012192 "),
            std::string::npos);
  // A system without details keeps its text exactly.
  EXPECT_EQ(std::string(CKvMapProjection(" UTM-32").GetProjectionString()).find("TOWGS84"),
            std::string::npos);
}

// Two systems of one datum whose records carry different shifts (each the
// transformation chosen for its area) convert without any shift, as PROJ
// does; a text that borrows a record's name but says another shift does not.
TEST(ResolvesCodes, SystemsOfOneDatumNeedNoShift) {
  kvtest::EnsureCatalogue();
  // NAD27 to WGS 84 (6) and (4): the two records' shifts differ.
  CKvDatumConverter converter("NAD27 / Texas South Central", "NAD27 / UTM zone 14N");
  EXPECT_TRUE(converter.GetBypassXYZ());
  double x = 2000000, y = 500000;
  converter.Convert(x, y);
  // echo "2000000 500000" | cs2cs -f %.4f EPSG:32040 EPSG:26714: 500000.0000 3230910.4394
  EXPECT_NEAR(x, 500000.0, 1e-4);
  EXPECT_NEAR(y, 3230910.4394, 1e-4);
  const std::string borrowed =
      "PROJCS[\"NAD27 / UTM zone 14N\",GEOGCS[\"g\",DATUM[\"North American Datum 1927\","
      "SPHEROID[\"Clarke 1866\",6378206.4,294.9786982],TOWGS84[1,2,3,0,0,0,0]],"
      "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.017453292519943295]],"
      "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"False_Easting\",500000],"
      "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",-99],"
      "PARAMETER[\"Scale_Factor\",0.9996],PARAMETER[\"Latitude_Of_Origin\",0],"
      "UNIT[\"Meter\",1]]";
  EXPECT_FALSE(CKvDatumConverter("NAD27 / Texas South Central", borrowed.c_str()).GetBypassXYZ());
  EXPECT_FALSE(CKvDatumConverter("NAD27 / Texas South Central", "LONG/LAT").GetBypassXYZ());
}

// EPSG:3857 resolves to the Mercator on the sphere of radius a: projecting
// WGS 84 longitudes and latitudes directly gives Web Mercator.  (Through the
// datum converter from "LONG/LAT" the sphere still counts as another datum.)
TEST(ResolvesCodes, WebMercatorByCode) {
  kvtest::EnsureCatalogue();
  const CKvMapProjection web("EPSG:3857");
  ASSERT_NE(web.GetProjection(), nullptr);
  EXPECT_STREQ(web.GetName(), "WGS 84 / Pseudo-Mercator");
  const struct {
    double lon, lat, x, y;
  } cases[] = {
      {9, 56, 1001875.4171, 7558415.6561},  // echo "56 9" | cs2cs -f %.4f EPSG:4326 EPSG:3857
      {-179, -85, -19926188.8520, -19971868.8804},  // echo "-85 -179" | cs2cs ...
  };
  for (const auto& c : cases) {
    double x = 0, y = 0;
    web.Geo2Proj(c.lon, c.lat, &x, &y);
    EXPECT_NEAR(x, c.x, 1e-4);
    EXPECT_NEAR(y, c.y, 1e-4);
  }
}

}  // namespace
