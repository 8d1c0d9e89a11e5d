#include <gtest/gtest.h>

#include <string>

#include "wkt/KvPRJParser.h"
#include "wkt/KvProjectionInfo.h"

namespace {

typedef CKvProjectionInfo::CAxis Axis;

CKvProjectionInfo InfoOf(const std::string& unit, const std::string& axes) {
  const std::string text =
      "PROJCS[\"P\",GEOGCS[\"G\",DATUM[\"D\",SPHEROID[\"S\",6378137,298.257223563],"
      "TOWGS84[-87,-98,-121,0,0,0,0]],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\","
      "0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"False_Easting\",0],"
      "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",0],"
      "PARAMETER[\"Scale_Factor\",1],PARAMETER[\"Latitude_Of_Origin\",0]," +
      unit + axes + "]";
  CKvPRJParser parser(text.c_str());
  EXPECT_TRUE(parser.Parse(false)) << text;
  CKvProjectionInfo info;
  info.SetProjectionInfo(parser);
  return info;
}

TEST(KvProjectionInfo, ExchangesWhenTheFirstAxisPointsNorth) {
  const CKvProjectionInfo info =
      InfoOf("UNIT[\"Meter\",1]", ",AXIS[\"X\",NORTH],AXIS[\"Y\",EAST]");
  Axis::EType first, second;
  info.GetAxisTypes(first, second);
  EXPECT_EQ(first, Axis::NORTH);
  EXPECT_EQ(second, Axis::EAST);
  double x = 100, y = 200;
  EXPECT_EQ(info.Convert(x, y), 1);
  EXPECT_EQ(x, 200.0);
  EXPECT_EQ(y, 100.0);
  EXPECT_EQ(info.InvConvert(x, y), 1);
  EXPECT_EQ(x, 100.0);
  EXPECT_EQ(y, 200.0);
  CKvDatumShift shift;
  info.GetDatumShift(shift);
  EXPECT_EQ(shift.GetType(), CKvCartDef::e3Parameter);
  EXPECT_EQ(shift[0], -87.0);
}

TEST(KvProjectionInfo, NegatesWestAndSouthAndInvertsExactly) {
  const CKvProjectionInfo info =
      InfoOf("UNIT[\"Meter\",1]", ",AXIS[\"W\",west],AXIS[\"S\",SOUTH]");
  double x = 3.25, y = -7.5;
  EXPECT_NE(info.Convert(x, y), 1);
  EXPECT_EQ(x, -3.25);
  EXPECT_EQ(y, 7.5);
  info.InvConvert(x, y);
  EXPECT_EQ(x, 3.25);
  EXPECT_EQ(y, -7.5);
}

// A system in US survey feet: engine metres become feet and back.
TEST(KvProjectionInfo, ConvertsEngineMetresToTheLinearUnit) {
  const CKvProjectionInfo info = InfoOf("UNIT[\"US survey foot\",0.3048006096012192]", "");
  double factor = 0;
  char name[64];
  ASSERT_TRUE(info.GetProjUnit(&factor, name));
  EXPECT_STREQ(name, "US survey foot");
  double x = 1200.0, y = -1200.0;
  info.Convert(x, y);
  EXPECT_NEAR(x, 3937.0, 1e-9);
  EXPECT_NEAR(y, -3937.0, 1e-9);
  info.InvConvert(x, y);
  EXPECT_NEAR(x, 1200.0, 1e-9);
  ASSERT_TRUE(info.GetAngularUnit(&factor, name));
  EXPECT_STREQ(name, "Degree");
}

TEST(KvProjectionInfo, UnsetInfoHasNoUnitsAndChangesNothing) {
  CKvProjectionInfo info;
  double factor = 0;
  char name[64] = "untouched";
  EXPECT_FALSE(info.GetProjUnit(&factor, name));
  EXPECT_STREQ(name, "");
  EXPECT_FALSE(info.GetAngularUnit(nullptr, nullptr));
  double x = 1.5, y = 2.5;
  EXPECT_EQ(info.Convert(x, y), 0);
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, 2.5);
}

TEST(KvProjectionInfo, TruncatesLongNamesAndReadsDirectionsInAnyCase) {
  const std::string longName(100, 'n');
  const CKvProjectionInfo info = InfoOf("UNIT[\"" + longName + "\",1]",
                                        ",AXIS[\"" + longName + "\",North],AXIS[\"y\",up]");
  char name[64];
  info.GetProjUnit(nullptr, name);
  EXPECT_EQ(std::string(name), longName.substr(0, 63));
  Axis::EType first, second;
  info.GetAxisTypes(first, second);
  EXPECT_EQ(first, Axis::NORTH);
  EXPECT_EQ(second, Axis::EAST);  // an unknown word
  const Axis axis(Axis::SOUTH, longName.c_str());
  EXPECT_EQ(std::string(axis.GetName()), longName.substr(0, 31));
  EXPECT_EQ(axis.GetFactor(), -1.0);
  EXPECT_EQ(Axis::StringToType("wEsT"), Axis::WEST);
}

}  // namespace
