#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvLambert1SPProjection.h"
#include "catalogue/KvLambert2SPProjection.h"
#include "catalogue/KvMercator1SPProjection.h"
#include "catalogue/KvMercator2SPProjection.h"
#include "catalogue/KvNewZealandMapGridProjection.h"
#include "catalogue/KvPolarStereographicProjection.h"
#include "catalogue/KvRotatedLongitudeLatitudeProjection.h"
#include "mapproj/KvMapProjection.h"
#include "platform/CommaLocale.h"
#include "wkt/KvPRJParser.h"
#include "wkt/KvProjTranslator.h"

namespace {

const char kFullDegree[] = "0.017453292519943295";
const char kShortDegree[] = "0.0174532925199433";

std::string Geogcs(const char* degree = kFullDegree, const char* primem = "\"Greenwich\",0",
                   const char* datumExtra = "") {
  return std::string(
             "GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137,"
             "298.257223563]") +
         datumExtra + "],PRIMEM[" + primem + "],UNIT[\"Degree\"," + degree + "]]";
}

// A projected system on WGS 84; `parameters` are `"Name",value` pairs.
std::string Projcs(const char* method, std::initializer_list<const char*> parameters,
                   const char* unit = "\"Meter\",1", const std::string& geogcs = Geogcs()) {
  std::string text = "PROJCS[\"Test\"," + geogcs + ",PROJECTION[\"" + method + "\"]";
  for (const char* p : parameters) text += std::string(",PARAMETER[") + p + "]";
  return text + ",UNIT[" + unit + "]]";
}

const std::initializer_list<const char*> kUtm32Parameters = {
    "\"False_Easting\",500000", "\"False_Northing\",0", "\"Central_Meridian\",9",
    "\"Scale_Factor\",0.9996", "\"Latitude_Of_Origin\",0"};

// The closing part of every string on WGS 84 in metres.
const std::string kWgs84Metres = "+a=6378137 +b=6356752.314245179 +units=m +no_defs  no_defs <>";

std::string Proj4(const std::string& system, double* towgs84 = nullptr, int count = 0) {
  return CKvProjTranslator().Convert2Proj4(system, towgs84, count);
}

TEST(KvProjTranslator, WritesTheKeysOfEachMethodInOrder) {
  // Parsed records on WGS 84, whether or not the method has an engine yet.
  struct Row {
    std::string wkt;
    std::string expected;
  };
  const Row rows[] = {
      {Projcs("Transverse_Mercator", kUtm32Parameters),
       "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 " + kWgs84Metres},
      // Non-projected is computed with the transverse Mercator engine.
      {Projcs("Non_Projected", kUtm32Parameters),
       "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 " + kWgs84Metres},
      {Projcs("Lambert_Conformal_Conic_2SP",
              {"\"False_Easting\",700000", "\"False_Northing\",200000", "\"Central_Meridian\",10",
               "\"Standard_Parallel_1\",48", "\"Standard_Parallel_2\",56",
               "\"Latitude_Of_Origin\",45"}),
       "+proj=lcc +lat_1=48 +lat_2=56 +lat_0=45 +lon_0=10 +x_0=700000 +y_0=200000 " + kWgs84Metres},
      // One parallel: the latitude of origin is also +lat_1.
      {Projcs("Lambert_Conformal_Conic",
              {"\"False_Easting\",250000", "\"False_Northing\",150000", "\"Central_Meridian\",-77",
               "\"Scale_Factor\",1", "\"Latitude_Of_Origin\",18"}),
       "+proj=lcc +lat_1=18 +lat_0=18 +lon_0=-77 +k=1 +x_0=250000 +y_0=150000 " + kWgs84Metres},
      {Projcs("Double_Stereographic",
              {"\"False_Easting\",155000", "\"False_Northing\",463000",
               "\"Central_Meridian\",5.38763888888889", "\"Scale_Factor\",0.9999079",
               "\"Latitude_Of_Origin\",52.15616055555555"}),
       "+proj=sterea +lat_0=52.15616055555555 +lon_0=5.38763888888889 +k=0.9999079 "
       "+x_0=155000 +y_0=463000 " +
           kWgs84Metres},
      {Projcs("oblique_stereographic",
              {"\"False_Easting\",0", "\"False_Northing\",0", "\"Central_Meridian\",25",
               "\"Scale_Factor\",0.9999", "\"Latitude_Of_Origin\",46"}),
       "+proj=sterea +lat_0=46 +lon_0=25 +k=0.9999 +x_0=0 +y_0=0 " + kWgs84Metres},
      {Projcs("Stereographic",
              {"\"False_Easting\",0", "\"False_Northing\",0", "\"Longitude_Of_Origin\",25",
               "\"Scale_Factor\",0.9999", "\"Latitude_Of_Origin\",46"}),
       "+proj=stere +lat_0=46 +lon_0=25 +k=0.9999 +x_0=0 +y_0=0 " + kWgs84Metres},
      {Projcs("New_Zealand_Map_Grid",
              {"\"False_Easting\",2510000", "\"False_Northing\",6023150",
               "\"Longitude_Of_Origin\",173", "\"Latitude_Of_Origin\",-41"}),
       "+proj=nzmg +lat_0=-41 +lon_0=173 +x_0=2510000 +y_0=6023150 " + kWgs84Metres},
      {Projcs("Hotine_Oblique_Mercator_Azimuth_Natural_Origin",
              {"\"False_Easting\",590476.87", "\"False_Northing\",442857.65",
               "\"Scale_Factor\",0.99984", "\"Azimuth\",53.31582047222222",
               "\"Longitude_Of_Center\",115", "\"Latitude_Of_Center\",4"}),
       "+proj=omerc +lat_0=4 +lon_0=115 +alpha=53.31582047222222 +k=0.99984 +x_0=590476.87 "
       "+y_0=442857.65 " +
           kWgs84Metres},
      {Projcs("Rectified_Skew_Orthomorphic_Natural_Origin",
              {"\"False_Easting\",590476.87", "\"False_Northing\",442857.65",
               "\"Scale_Factor\",0.99984", "\"Azimuth\",53.31582047222222",
               "\"Longitude_Of_Center\",115", "\"Latitude_Of_Center\",4",
               "\"XY_Plane_Rotation\",53.13010236111111"}),
       "+proj=omerc +lat_0=4 +lon_0=115 +alpha=53.31582047222222 +gamma=53.13010236111111 "
       "+k=0.99984 +x_0=590476.87 +y_0=442857.65 " +
           kWgs84Metres},
      {Projcs("Rotated_Longitude_Latitude",
              {"\"Longitude_Of_South_Pole\",10", "\"Latitude_Of_South_Pole\",-40",
               "\"Angle_Of_Rotation\",0"}),
       "+proj=undef "},
      // The 2SP set has no scale and the 1SP set no parallel: a key whose
      // value the WKT does not give is left out.
      {Projcs("Mercator_2SP", {"\"False_Easting\",0", "\"False_Northing\",0",
                               "\"Central_Meridian\",51", "\"Standard_Parallel_1\",42"}),
       "+proj=merc +lat_ts=42 +lon_0=51 +x_0=0 +y_0=0 " + kWgs84Metres},
      {Projcs("Mercator_1SP", {"\"False_Easting\",3900000", "\"False_Northing\",900000",
                               "\"Central_Meridian\",110", "\"Scale_Factor\",0.997"}),
       "+proj=merc +lon_0=110 +k=0.997 +x_0=3900000 +y_0=900000 " + kWgs84Metres},
      {Projcs("Stereographic_North_Pole",
              {"\"False_Easting\",0", "\"False_Northing\",0", "\"Central_Meridian\",-45",
               "\"Standard_Parallel_1\",70"}),
       "+proj=stere +lat_0=90 +lat_ts=70 +lon_0=-45 +x_0=0 +y_0=0 " + kWgs84Metres},
      {Projcs("Stereographic_South_Pole",
              {"\"False_Easting\",0", "\"False_Northing\",0", "\"Central_Meridian\",140",
               "\"Standard_Parallel_1\",-71"}),
       "+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=140 +x_0=0 +y_0=0 " + kWgs84Metres},
      {Projcs("Krovak",
              {"\"False_Easting\",0", "\"False_Northing\",0", "\"Pseudo_Standard_Parallel_1\",78.5",
               "\"Scale_Factor\",0.9999", "\"Azimuth\",30.28813972222222",
               "\"Longitude_Of_Center\",24.83333333333333", "\"Latitude_Of_Center\",49.5"}),
       "+proj=krovak +lat_0=49.5 +lon_0=24.83333333333333 +alpha=30.28813972222222 +k=0.9999 "
       "+x_0=0 +y_0=0 " +
           kWgs84Metres},
      {Projcs("Albers", {"\"False_Easting\",0", "\"False_Northing\",0", "\"Central_Meridian\",-96",
                         "\"Standard_Parallel_1\",29.5", "\"Standard_Parallel_2\",45.5",
                         "\"Latitude_Of_Origin\",23"}),
       "+proj=aea +lat_1=29.5 +lat_2=45.5 +lat_0=23 +lon_0=-96 +x_0=0 +y_0=0 " + kWgs84Metres},
      {Projcs("Equidistant_Conic", {"\"False_Easting\",0", "\"False_Northing\",0",
                                    "\"Central_Meridian\",-96", "\"Standard_Parallel_1\",29.5",
                                    "\"Standard_Parallel_2\",45.5", "\"Latitude_Of_Origin\",23"}),
       "+proj=eqdc +lat_1=29.5 +lat_2=45.5 +lat_0=23 +lon_0=-96 +x_0=0 +y_0=0 " + kWgs84Metres},
      {Projcs("Lambert_Azimuthal_Equal_Area",
              {"\"False_Easting\",4321000", "\"False_Northing\",3210000", "\"Central_Meridian\",10",
               "\"Latitude_Of_Origin\",52"}),
       "+proj=laea +lat_0=52 +lon_0=10 +x_0=4321000 +y_0=3210000 " + kWgs84Metres},
      {Projcs("Cassini_Soldner", {"\"False_Easting\",430000", "\"False_Northing\",325000",
                                  "\"Central_Meridian\",-61.5", "\"Latitude_Of_Origin\",10.5"}),
       "+proj=cass +lat_0=10.5 +lon_0=-61.5 +x_0=430000 +y_0=325000 " + kWgs84Metres},
      // The pole follows the sign of the latitude of origin; zero is north.
      {Projcs("Polar_Stereographic",
              {"\"False_Easting\",0", "\"False_Northing\",0", "\"Central_Meridian\",0",
               "\"Scale_Factor\",1", "\"Latitude_Of_Origin\",-71"}),
       "+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=0 +k=1 +x_0=0 +y_0=0 " + kWgs84Metres},
      {Projcs("Polar_Stereographic",
              {"\"False_Easting\",0", "\"False_Northing\",0", "\"Central_Meridian\",0",
               "\"Scale_Factor\",1", "\"Latitude_Of_Origin\",0"}),
       "+proj=stere +lat_0=90 +lat_ts=0 +lon_0=0 +k=1 +x_0=0 +y_0=0 " + kWgs84Metres},
      // A geographic system has no false origin and no linear unit.
      {Geogcs(), "+proj=longlat +a=6378137 +b=6356752.314245179 +no_defs  no_defs <>"},
      {Projcs("No_Such_Method", kUtm32Parameters), "+proj=undef "},
      {"not a coordinate system", "+proj=undef "},
  };
  const CKvEllipsoid wgs84("WGS 84", "WE", 6378137, 298.257223563);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.wkt);
    CKvPRJParser parser(row.wkt.c_str());
    parser.Parse(false);
    EXPECT_EQ(CKvProjTranslator::Format(parser, wgs84, nullptr, 0), row.expected);
  }
}

TEST(KvProjTranslator, AppliesTheDegreeFactorAndPrimeMeridianAsTheEnginesDo) {
  kvtest::EnsureCatalogue();
  struct Row {
    std::string system;
    std::string expected;
  };
  const Row rows[] = {
      {Projcs("Transverse_Mercator", kUtm32Parameters),
       "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 " + kWgs84Metres},
      // The 15-digit degree times 57.29577951308232 is 1.0000000000000002.
      {Projcs("Transverse_Mercator", kUtm32Parameters, "\"Meter\",1", Geogcs(kShortDegree)),
       "+proj=tmerc +lat_0=0 +lon_0=9.000000000000002 +k=0.9996 +x_0=500000 +y_0=0 " +
           kWgs84Metres},
      // The prime meridian is added to the central meridian (in binary, 3 +
      // 2.33722917 is 5.337229170000001 to 16 digits).
      {Projcs("Transverse_Mercator",
              {"\"False_Easting\",0", "\"False_Northing\",0", "\"Central_Meridian\",3",
               "\"Scale_Factor\",1", "\"Latitude_Of_Origin\",0"},
              "\"Meter\",1", Geogcs(kFullDegree, "\"Paris\",2.33722917")),
       "+proj=tmerc +lat_0=0 +lon_0=5.337229170000001 +k=1 +x_0=0 +y_0=0 " + kWgs84Metres},
      // The system's own shift, all seven values as parsed.
      {Geogcs(kFullDegree, "\"Greenwich\",0", ",TOWGS84[565.4,50.3,465.6,-0.4,0.3,-1.9,4.1]"),
       "+proj=longlat +a=6378137 +b=6356752.314245179 "
       "+towgs84=565.4,50.3,465.6,-0.4,0.3,-1.9,4.1 +no_defs  no_defs <>"},
      // A zero shift is no shift.
      {Geogcs(kFullDegree, "\"Greenwich\",0", ",TOWGS84[0,0,0,0,0,0,0]"),
       "+proj=longlat +a=6378137 +b=6356752.314245179 +no_defs  no_defs <>"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.system);
    EXPECT_EQ(Proj4(row.system), row.expected);
  }
}

TEST(KvProjTranslator, GivesEmptyOrUndefinedForWhatItCannotDescribe) {
  kvtest::EnsureCatalogue();
  kvtest::ScopedRecord rotated(
      new CKvRotatedLongitudeLatitudeProjection("KvP4 rotated grid", "Model", "WE", 10, -40, 0));
  kvtest::ScopedRecord polar(
      new CKvPolarStereographicProjection("KvP4 polar", "Antarctic", "WE", 1, 0, -71, 0, 0));
  ASSERT_NE(CKvMapProjection("KvP4 rotated grid").GetProjection(), nullptr);
  EXPECT_EQ(Proj4("KvP4 rotated grid"), "+proj=undef ");
  // The reserved names are kept as names, not WKT, so the reader finds no method.
  EXPECT_EQ(Proj4("LONG/LAT"), "+proj=undef ");
  EXPECT_EQ(Proj4("NON-UTM"), "+proj=undef ");
  // No engine: nothing is written.
  EXPECT_EQ(Proj4("No such system"), "");
  EXPECT_EQ(CKvMapProjection("KvP4 polar").GetProjection(), nullptr)
      << "a polar stereographic engine exists now: expect +lat_0=-90 +lat_ts=-71 here";
  EXPECT_EQ(Proj4("KvP4 polar"), "");
  EXPECT_EQ(Proj4(Projcs("Polar_Stereographic",
                         {"\"False_Easting\",0", "\"False_Northing\",0", "\"Central_Meridian\",0",
                          "\"Scale_Factor\",1", "\"Latitude_Of_Origin\",-71"})),
            "");
  EXPECT_THROW(Proj4("UTM"), std::out_of_range);
}

TEST(KvProjTranslator, CallerShiftReplacesTheSystemsOwnAndIsPaddedWithZeros) {
  const std::string shifted =
      Geogcs(kFullDegree, "\"Greenwich\",0", ",TOWGS84[-87,-98,-121,0,0,0,0]");
  const std::string head = "+proj=longlat +a=6378137 +b=6356752.314245179 ";
  const std::string tail = "+no_defs  no_defs <>";
  double values[] = {1.5, -2.25, 3, 0.1, 0.2, 0.3, 7.5, 99};
  struct Row {
    double* values;
    int count;
    std::string shift;
  };
  const Row rows[] = {
      {values, 3, "+towgs84=1.5,-2.25,3,0,0,0,0 "},
      {values, 1, "+towgs84=1.5,0,0,0,0,0,0 "},
      {values, 7, "+towgs84=1.5,-2.25,3,0.1,0.2,0.3,7.5 "},
      {values, 8, "+towgs84=1.5,-2.25,3,0.1,0.2,0.3,7.5 "},  // at most seven are read
      {values, 0, "+towgs84=-87,-98,-121,0,0,0,0 "},         // the system's own
      {values, -4, "+towgs84=-87,-98,-121,0,0,0,0 "},
      {nullptr, 3, "+towgs84=-87,-98,-121,0,0,0,0 "},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.count);
    EXPECT_EQ(Proj4(shifted, row.values, row.count), head + row.shift + tail);
  }
  // A caller's shift of zeros is still written.
  double zeros[3] = {0, 0, 0};
  EXPECT_EQ(Proj4(Geogcs(), zeros, 3), head + "+towgs84=0,0,0,0,0,0,0 " + tail);
}

TEST(KvProjTranslator, WritesAFullStopWhateverTheProcessLocale) {
  CommaLocale comma;
  if (!comma.Active()) GTEST_SKIP() << "no comma-decimal locale available";
  char check[16];
  std::snprintf(check, sizeof check, "%.1f", 0.5);
  ASSERT_STREQ(check, "0,5");
  double values[] = {1.5, -2.25, 3.125};
  EXPECT_EQ(Proj4(Projcs("Transverse_Mercator",
                         {"\"False_Easting\",250000", "\"False_Northing\",-1000",
                          "\"Central_Meridian\",-3.5", "\"Scale_Factor\",0.9999",
                          "\"Latitude_Of_Origin\",49"},
                         "\"Foot\",0.3048"),
                  values, 3),
            "+proj=tmerc +lat_0=49 +lon_0=-3.5 +k=0.9999 +x_0=76200 +y_0=-304.8 +a=6378137 "
            "+b=6356752.314245179 +towgs84=1.5,-2.25,3.125,0,0,0,0 +to_meter=0.3048 "
            "+no_defs  no_defs <>");
}

TEST(KvProjTranslator, ReadsTheFirstLineOfAPrjFile) {
  char path[] = "/tmp/kvcart-proj4-XXXXXX";
  const int fd = mkstemp(path);
  ASSERT_GE(fd, 0);
  close(fd);
  {
    std::ofstream file(path);
    file << Projcs("Transverse_Mercator", kUtm32Parameters) << "\nGEOGCS[\"second line\"]\n";
  }
  CKvProjTranslator translator;
  EXPECT_EQ(translator.ConvertPRJFile2Proj4(path, nullptr, 0),
            "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 " + kWgs84Metres);
  double shift[] = {1, 2, 3};
  EXPECT_EQ(translator.ConvertPRJFile2Proj4(path, shift, 3),
            "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 +a=6378137 "
            "+b=6356752.314245179 +towgs84=1,2,3,0,0,0,0 +units=m +no_defs  no_defs <>");
  std::remove(path);
  EXPECT_EQ(translator.ConvertPRJFile2Proj4(path, nullptr, 0), "");
  EXPECT_EQ(translator.ConvertPRJFile2Proj4("/", nullptr, 0), "");  // a folder
  {
    std::ofstream file(path);  // empty: no line to read
  }
  EXPECT_EQ(translator.ConvertPRJFile2Proj4(path, nullptr, 0), "");
  std::remove(path);
}

// Each string below, without the trailing "no_defs <>" (which PROJ reads as
// file names), was given to PROJ 9.1.1 as
//   echo "lon lat" | proj -f %.4f <string>
// and PROJ's easting and northing are written beside it.  Our own projection
// of the point must agree to 1 mm, so the string means what the library
// computes.
TEST(KvProjTranslator, StringsMeanWhatTheLibraryComputes) {
  kvtest::EnsureCatalogue();
  kvtest::ScopedRecord lcc1(
      new CKvLambert1SPProjection("KvP4 lcc1", "JAD69", "CC", 1.0, -77, 18, 250000, 150000));
  kvtest::ScopedRecord lcc2(
      new CKvLambert2SPProjection("KvP4 lcc2", "Europe", "WE", 48, 56, 10, 45, 700000, 200000));
  kvtest::ScopedRecord merc1(
      new CKvMercator1SPProjection("KvP4 merc1", "Equator", "WE", 0.997, 110, 3900000, 900000));
  kvtest::ScopedRecord merc2(
      new CKvMercator2SPProjection("KvP4 merc2", "Caspian", "WE", 42, 51, 0, 0));
  kvtest::ScopedRecord nzmg(
      new CKvNewZealandMapGridProjection("KvP4 nzmg", "NZGD49", "IN", 173, -41, 2510000, 6023150));
  struct Row {
    std::string system;
    std::string proj4;
    double lon, lat;
    double east, north;  // PROJ
  };
  const Row rows[] = {
      {"UTM-32",
       "+proj=tmerc +lat_0=0 +lon_0=9.000000000000002 +k=0.9996 +x_0=500000 +y_0=0 " + kWgs84Metres,
       12, 56, 687071.4391, 6210141.3269},
      // False origin in feet is written in metres, the unit as +to_meter.
      {Projcs("Transverse_Mercator",
              {"\"False_Easting\",250000", "\"False_Northing\",-1000", "\"Central_Meridian\",-3.5",
               "\"Scale_Factor\",0.9999", "\"Latitude_Of_Origin\",49"},
              "\"Foot\",0.3048"),
       "+proj=tmerc +lat_0=49 +lon_0=-3.5 +k=0.9999 +x_0=76200 +y_0=-304.8 +a=6378137 "
       "+b=6356752.314245179 +to_meter=0.3048 +no_defs  no_defs <>",
       -2, 50, 602791.1936, 367394.5700},
      {Projcs("Non_Projected", kUtm32Parameters),
       "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 " + kWgs84Metres, 7.5, -33,
       359869.6867, -3652286.1149},
      {"KvP4 lcc1",
       "+proj=lcc +lat_1=18 +lat_0=18 +lon_0=-77.00000000000001 +k=1 +x_0=250000 +y_0=150000 "
       "+a=6378206.4 +b=6356583.799998981 +units=m +no_defs  no_defs <>",
       -76.5, 17.9, 302983.0365, 139004.0418},
      {"KvP4 lcc2",
       "+proj=lcc +lat_1=48.00000000000001 +lat_2=56.00000000000001 +lat_0=45.00000000000001 "
       "+lon_0=10 +x_0=700000 +y_0=200000 " +
           kWgs84Metres,
       12, 52, 837004.7657, 980303.3227},
      {"KvP4 merc1", "+proj=merc +lon_0=110 +k=0.997 +x_0=3900000 +y_0=900000 " + kWgs84Metres, 120,
       -3, 5009855.3232, 569119.0954},
      {"KvP4 merc2",
       "+proj=merc +lat_ts=42.00000000000001 +lon_0=51.00000000000001 +x_0=0 +y_0=0 " +
           kWgs84Metres,
       53, 53, 165701.5232, 5171757.9695},
      {"KvP4 nzmg",
       "+proj=nzmg +lat_0=-41.00000000000001 +lon_0=173 +x_0=2510000 +y_0=6023150 +a=6378388 "
       "+b=6356911.946127946 +units=m +no_defs  no_defs <>",
       175, -37, 2688385.7666, 6465113.3487},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.system);
    ASSERT_EQ(Proj4(row.system), row.proj4);
    double east = 0, north = 0;
    CKvMapProjection(row.system).Geo2Proj(row.lon, row.lat, &east, &north);
    EXPECT_NEAR(east, row.east, 1e-3);
    EXPECT_NEAR(north, row.north, 1e-3);
  }
}

}  // namespace
