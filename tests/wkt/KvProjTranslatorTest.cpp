#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "TestCatalogue.h"
#include "catalogue/KvAlbersEqualAreaProjection.h"
#include "catalogue/KvCassiniSoldnerProjection.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvEquidistantConicProjection.h"
#include "engines/KvHotineConstants.h"
#include "catalogue/KvLambert1SPProjection.h"
#include "catalogue/KvLambert2SPProjection.h"
#include "catalogue/KvLambertAzimuthalEqualAreaProjection.h"
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

std::string Geogcs(const char* degree = kFullDegree, const char* primem = "\"Greenwich\",0",
                   const char* datumExtra = "") {
  return std::string(
             "GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137,"
             "298.257223563]") +
         datumExtra + "],PRIMEM[" + primem + "],UNIT[\"Degree\"," + degree + "]]";
}

// A projected system on WGS 84 from "key=value" words; the usual keys have
// short names, others are written as given.
std::string Projcs(const char* method, const std::string& parameters,
                   const char* unit = "\"Meter\",1", const std::string& geogcs = Geogcs()) {
  static const char* const kNames[] = {
      "fe",   "False_Easting",       "fn",   "False_Northing",      "cm",   "Central_Meridian",
      "k",    "Scale_Factor",        "lat0", "Latitude_Of_Origin",  "lon0", "Longitude_Of_Origin",
      "sp1",  "Standard_Parallel_1", "sp2",  "Standard_Parallel_2", "az",   "Azimuth",
      "lonc", "Longitude_Of_Center", "latc", "Latitude_Of_Center"};
  std::string text = "PROJCS[\"Test\"," + geogcs + ",PROJECTION[\"" + method + "\"]";
  std::istringstream words(parameters);
  for (std::string word; words >> word;) {
    std::string name = word.substr(0, word.find('='));
    for (std::size_t i = 0; i < std::size(kNames); i += 2)
      if (name == kNames[i]) name = kNames[i + 1];
    text += ",PARAMETER[\"" + name + "\"," + word.substr(word.find('=') + 1) + "]";
  }
  return text + ",UNIT[" + unit + "]]";
}

const char kUtm32[] = "fe=500000 fn=0 cm=9 k=0.9996 lat0=0";
const std::string kFootTm =
    Projcs("Transverse_Mercator", "fe=250000 fn=-1000 cm=-3.5 k=0.9999 lat0=49", "\"Foot\",0.3048");
const char kSouthPolar[] = "fe=0 fn=0 cm=0 k=1 lat0=-71";

// The closing parts of strings on WGS 84.
const std::string kNoDefs = "+no_defs  no_defs <>";
const std::string kLongLat = "+proj=longlat +a=6378137 +b=6356752.314245179 ";
const std::string kWgs84Metres = "+a=6378137 +b=6356752.314245179 +units=m " + kNoDefs;

std::string Proj4(const std::string& system, double* towgs84 = nullptr, int count = 0) {
  return CKvProjTranslator().Convert2Proj4(system, towgs84, count);
}

// Methods without an engine yet, straight from the parsed WKT; those with one
// are checked through Convert2Proj4 in StringsMeanWhatTheLibraryComputes.
TEST(KvProjTranslator, WritesTheKeysOfEachMethodInOrder) {
  const struct {
    const char* method;
    std::string parameters;
    const char* keys;  // followed by kWgs84Metres
  } rows[] = {
      {"Double_Stereographic",
       "fe=155000 fn=463000 cm=5.38763888888889 k=0.9999079 lat0=52.15616055555555",
       "+proj=sterea +lat_0=52.15616055555555 +lon_0=5.38763888888889 +k=0.9999079 +x_0=155000 "
       "+y_0=463000 "},
      {"oblique_stereographic", "fe=0 fn=0 cm=25 k=0.9999 lat0=46",
       "+proj=sterea +lat_0=46 +lon_0=25 +k=0.9999 +x_0=0 +y_0=0 "},
      {"Stereographic", "fe=0 fn=0 lon0=25 k=0.9999 lat0=46",
       "+proj=stere +lat_0=46 +lon_0=25 +k=0.9999 +x_0=0 +y_0=0 "},
      {"Stereographic_North_Pole", "fe=0 fn=0 cm=-45 sp1=70",
       "+proj=stere +lat_0=90 +lat_ts=70 +lon_0=-45 +x_0=0 +y_0=0 "},
      {"Stereographic_South_Pole", "fe=0 fn=0 cm=140 sp1=-71",
       "+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=140 +x_0=0 +y_0=0 "},
      // The pole follows the sign of the latitude of origin; zero is north.
      {"Polar_Stereographic", kSouthPolar,
       "+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=0 +k=1 +x_0=0 +y_0=0 "},
      {"Polar_Stereographic", "fe=0 fn=0 cm=0 k=1 lat0=0",
       "+proj=stere +lat_0=90 +lat_ts=0 +lon_0=0 +k=1 +x_0=0 +y_0=0 "},
  };
  const CKvEllipsoid wgs84("WGS 84", "WE", 6378137, 298.257223563);
  const auto format = [&wgs84](const std::string& wkt) {
    CKvPRJParser parser(wkt.c_str());
    parser.Parse(false);
    return CKvProjTranslator::Format(parser, wgs84, nullptr, 0);
  };
  for (const auto& row : rows)
    EXPECT_EQ(format(Projcs(row.method, row.parameters)), row.keys + kWgs84Metres) << row.method;
  // A geographic system has no false origin and no linear unit.
  EXPECT_EQ(format(Geogcs()), kLongLat + kNoDefs);
  EXPECT_EQ(format(Projcs("No_Such_Method", kUtm32)), "+proj=undef ");
  EXPECT_EQ(format("not a coordinate system"), "+proj=undef ");
}

TEST(KvProjTranslator, GivesEmptyOrUndefinedForWhatItCannotDescribe) {
  kvtest::EnsureCatalogue();
  kvtest::ScopedRecord rotated(
      new CKvRotatedLongitudeLatitudeProjection("KvP4 rotated grid", "Model", "WE", 10, -40, 0));
  ASSERT_NE(CKvMapProjection("KvP4 rotated grid").GetProjection(), nullptr);
  const std::string rows[][2] = {
      {"KvP4 rotated grid", "+proj=undef "},
      // The reserved names are kept as names, not WKT, so the reader finds no method.
      {"LONG/LAT", "+proj=undef "},
      {"NON-UTM", "+proj=undef "},
      // No engine: nothing is written.
      {"No such system", ""},
      {Projcs("Polar_Stereographic", "fe=0 fn=0 cm=0 k=1"), ""},  // no latitude of origin
  };
  for (const auto& row : rows) EXPECT_EQ(Proj4(row[0]), row[1]) << row[0];
  EXPECT_THROW(Proj4("UTM"), std::out_of_range);
}

TEST(KvProjTranslator, CallerShiftReplacesTheSystemsOwnAndIsPaddedWithZeros) {
  const std::string shifted =
      Geogcs(kFullDegree, "\"Greenwich\",0", ",TOWGS84[565.4,50.3,465.6,-0.4,0.3,-1.9,4.1]");
  const std::string own = "+towgs84=565.4,50.3,465.6,-0.4,0.3,-1.9,4.1 ";
  double values[] = {1.5, -2.25, 3, 0.1, 0.2, 0.3, 7.5, 99};
  const std::pair<int, std::string> rows[] = {
      {1, "+towgs84=1.5,0,0,0,0,0,0 "},
      {7, "+towgs84=1.5,-2.25,3,0.1,0.2,0.3,7.5 "},
      {8, "+towgs84=1.5,-2.25,3,0.1,0.2,0.3,7.5 "},  // at most seven are read
      // No values: the system's own, all seven as parsed.
      {0, own},
      {-4, own},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Proj4(shifted, values, row.first), kLongLat + row.second + kNoDefs) << row.first;
  EXPECT_EQ(Proj4(shifted, nullptr, 3), kLongLat + own + kNoDefs);
  // A system's zero shift is none; a caller's shift of zeros is still written.
  const std::string zeroShift = Geogcs(kFullDegree, "\"Greenwich\",0", ",TOWGS84[0,0,0,0,0,0,0]");
  EXPECT_EQ(Proj4(zeroShift), kLongLat + kNoDefs);
  double zeros[3] = {0, 0, 0};
  EXPECT_EQ(Proj4(zeroShift, zeros, 3), kLongLat + "+towgs84=0,0,0,0,0,0,0 " + kNoDefs);
}

TEST(KvProjTranslator, WritesAFullStopWhateverTheProcessLocale) {
  CommaLocale comma;
  if (!comma.Active()) GTEST_SKIP() << "no comma-decimal locale available";
  double values[] = {1.5, -2.25, 3.125};
  EXPECT_EQ(Proj4(kFootTm, values, 3),
            "+proj=tmerc +lat_0=49 +lon_0=-3.5 +k=0.9999 +x_0=76200 +y_0=-304.8 +a=6378137 "
            "+b=6356752.314245179 +towgs84=1.5,-2.25,3.125,0,0,0,0 +to_meter=0.3048 " +
                kNoDefs);
}

TEST(KvProjTranslator, ReadsTheFirstLineOfAPrjFile) {
  char path[] = "/tmp/kvcart-proj4-XXXXXX";
  const int fd = mkstemp(path);
  ASSERT_GE(fd, 0);
  close(fd);
  {
    std::ofstream file(path);
    file << Projcs("Transverse_Mercator", kUtm32) << "\nGEOGCS[\"second line\"]\n";
  }
  CKvProjTranslator translator;
  double shift[] = {1, 2, 3};
  EXPECT_EQ(translator.ConvertPRJFile2Proj4(path, shift, 3),
            "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 +a=6378137 "
            "+b=6356752.314245179 +towgs84=1,2,3,0,0,0,0 +units=m " +
                kNoDefs);
  std::remove(path);
  EXPECT_EQ(translator.ConvertPRJFile2Proj4(path, nullptr, 0), "");
  EXPECT_EQ(translator.ConvertPRJFile2Proj4("/", nullptr, 0), "");  // a folder
  std::ofstream{path};                                              // empty: no line to read
  EXPECT_EQ(translator.ConvertPRJFile2Proj4(path, nullptr, 0), "");
  std::remove(path);
}

// Our projection of each point must agree to 1 mm with PROJ 9.1.1's, given the
// string without the trailing "no_defs <>" (PROJ reads it as file names):
//   echo "lon lat" | proj -f %.4f <string>
TEST(KvProjTranslator, StringsMeanWhatTheLibraryComputes) {
  kvtest::EnsureCatalogue();
  using kvtest::ScopedRecord;
  ScopedRecord lcc1(
      new CKvLambert1SPProjection("KvP4 lcc1", "B", "CC", 1, -77, 18, 250000, 150000));
  ScopedRecord lcc2(new CKvLambert2SPProjection("KvP4 lcc2", "B", "WE", 48, 56, 10, 45, 7e5, 2e5));
  ScopedRecord merc1(new CKvMercator1SPProjection("KvP4 merc1", "B", "WE", 0.997, 110, 39e5, 9e5));
  ScopedRecord merc2(new CKvMercator2SPProjection("KvP4 merc2", "B", "WE", 42, 51, 0, 0));
  ScopedRecord nzmg(
      new CKvNewZealandMapGridProjection("KvP4 nzmg", "B", "IN", 173, -41, 2510000, 6023150));
  ScopedRecord polar(
      new CKvPolarStereographicProjection("KvP4 polar", "Antarctic", "WE", 1, 0, -71, 0, 0));
  ScopedRecord aea(
      new CKvAlbersEqualAreaProjection("KvP4 aea", "B", "RF", 29.5, 45.5, -96, 23, 1e6, -5e5));
  ScopedRecord laea(new CKvLambertAzimuthalEqualAreaProjection("KvP4 laea", "B", "RF", 10, 52,
                                                               4321000, 3210000));
  ScopedRecord cass(new CKvCassiniSoldnerProjection("KvP4 cass", "B", "BR", 13.627203666666666,
                                                    52.41864827777778, 40000, 10000));
  ScopedRecord eqdc(
      new CKvEquidistantConicProjection("KvP4 eqdc", "B", "WE", 20, 60, -96, 40, 0, 0));
  struct Row {
    std::string system;
    double lon, lat, east, north;  // east and north from PROJ
    std::string proj4;
  };
  const Row rows[] = {
      // The catalogue's WKT has the 15-digit degree, which times 57.29577951308232
      // is 1.0000000000000002.
      {"UTM-32", 12, 56, 687071.4391, 6210141.3269,
       "+proj=tmerc +lat_0=0 +lon_0=9.000000000000002 +k=0.9996 +x_0=500000 +y_0=0 " +
           kWgs84Metres},
      // False origin in feet is written in metres, the unit as +to_meter.
      {kFootTm, -2, 50, 602791.1936, 367394.5700,
       "+proj=tmerc +lat_0=49 +lon_0=-3.5 +k=0.9999 +x_0=76200 +y_0=-304.8 +a=6378137 "
       "+b=6356752.314245179 +to_meter=0.3048 +no_defs  no_defs <>"},
      {Projcs("Non_Projected", kUtm32), 7.5, -33, 359869.6867, -3652286.1149,
       "+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 " + kWgs84Metres},
      // The prime meridian is added to the central meridian (in binary, 3 +
      // 2.33722917 is 5.337229170000001 to 16 digits).
      {Projcs("Transverse_Mercator", "fe=0 fn=0 cm=3 k=1 lat0=0", "\"Meter\",1",
              Geogcs(kFullDegree, "\"Paris\",2.33722917")),
       6, 45, 52257.3843, 4985158.1019,
       "+proj=tmerc +lat_0=0 +lon_0=5.337229170000001 +k=1 +x_0=0 +y_0=0 " + kWgs84Metres},
      // One parallel: the latitude of origin is also +lat_1.
      {"KvP4 lcc1", -76.5, 17.9, 302983.0365, 139004.0418,
       "+proj=lcc +lat_1=18 +lat_0=18 +lon_0=-77.00000000000001 +k=1 +x_0=250000 +y_0=150000 "
       "+a=6378206.4 +b=6356583.799998981 +units=m +no_defs  no_defs <>"},
      {"KvP4 lcc2", 12, 52, 837004.7657, 980303.3227,
       "+proj=lcc +lat_1=48.00000000000001 +lat_2=56.00000000000001 +lat_0=45.00000000000001 "
       "+lon_0=10 +x_0=700000 +y_0=200000 " +
           kWgs84Metres},
      // The 1SP set has no parallel and the 2SP set no scale: the key is left out.
      {"KvP4 merc1", 120, -3, 5009855.3232, 569119.0954,
       "+proj=merc +lon_0=110 +k=0.997 +x_0=3900000 +y_0=900000 " + kWgs84Metres},
      {"KvP4 merc2", 53, 53, 165701.5232, 5171757.9695,
       "+proj=merc +lat_ts=42.00000000000001 +lon_0=51.00000000000001 +x_0=0 +y_0=0 " +
           kWgs84Metres},
      {"KvP4 nzmg", 175, -37, 2688385.7666, 6465113.3487,
       "+proj=nzmg +lat_0=-41.00000000000001 +lon_0=173 +x_0=2510000 +y_0=6023150 +a=6378388 "
       "+b=6356911.946127946 +units=m +no_defs  no_defs <>"},
      // The stereographic family.  A polar stereographic off the pole is
      // placed at the pole of its sign, true to scale at its latitude of
      // origin (PROJ then leaves +k aside); at the pole it is variant A.
      {Projcs("Polar_Stereographic", kSouthPolar), 120, -75, 1419227.9158, -819391.6192,
       "+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=0 +k=1 +x_0=0 +y_0=0 " + kWgs84Metres},
      // (the catalogue's 15-digit degree again)
      {"KvP4 polar", 120, -75, 1419227.9158, -819391.6192,
       "+proj=stere +lat_0=-90 +lat_ts=-71.00000000000001 +lon_0=0 +k=1 +x_0=0 +y_0=0 " +
           kWgs84Metres},
      // without a scale factor the scale is 1
      {Projcs("Polar_Stereographic", "fe=0 fn=0 cm=70 lat0=-71"), 120, -75, 1255380.7933,
       1053389.5606, "+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=70 +k=1 +x_0=0 +y_0=0 " +
       kWgs84Metres},
      {Projcs("Polar_Stereographic", "fe=2000000 fn=2000000 cm=0 k=0.994 lat0=90"), 44, 73,
       3320416.7474, 632668.4313,
       "+proj=stere +lat_0=90 +lat_ts=90 +lon_0=0 +k=0.994 +x_0=2000000 +y_0=2000000 " +
           kWgs84Metres},
      {Projcs("Stereographic_North_Pole", "fe=0 fn=0 cm=-45 sp1=70"), 30, 75, 1578206.4037,
       -422879.1313, "+proj=stere +lat_0=90 +lat_ts=70 +lon_0=-45 +x_0=0 +y_0=0 " + kWgs84Metres},
      {Projcs("Stereographic_South_Pole", "fe=6000000 fn=6000000 cm=70 sp1=-71"), 120, -75,
       7255380.7933, 7053389.5606,
       "+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=70 +x_0=6000000 +y_0=6000000 " + kWgs84Metres},
      {Projcs("Double_Stereographic",
              "fe=155000 fn=463000 cm=5.38763888888889 k=0.9999079 lat0=52.15616055555556"),
       6, 53, 196110.3151, 557068.5458,
       "+proj=sterea +lat_0=52.15616055555556 +lon_0=5.38763888888889 +k=0.9999079 "
       "+x_0=155000 +y_0=463000 " +
           kWgs84Metres},
      {Projcs("Oblique_Stereographic", "fe=2000000 fn=2000000 cm=0 k=0.994 lat0=-90"), 100, -80,
       3096042.9084, 1806738.0632,
       "+proj=sterea +lat_0=-90 +lon_0=0 +k=0.994 +x_0=2000000 +y_0=2000000 " + kWgs84Metres},
      // Plain "Stereographic" is written +proj=stere, which means the same
      // as this library's engine only about a pole (see KvStereographic.h).
      {Projcs("Stereographic", "fe=2000000 fn=2000000 cm=0 k=0.994 lat0=90"), 44, 73,
       3320416.7474, 632668.4313,
       "+proj=stere +lat_0=90 +lon_0=0 +k=0.994 +x_0=2000000 +y_0=2000000 " + kWgs84Metres},
      // The equal-area and equidistant methods, on the parameters of
      // EPSG:5070 (with a false origin), EPSG:3035, EPSG:3068 and North
      // America Equidistant Conic.
      {"KvP4 aea", -100, 45, 685120.2768, 1952348.4095,
       "+proj=aea +lat_1=29.50000000000001 +lat_2=45.50000000000001 +lat_0=23 "
       "+lon_0=-96.00000000000003 +x_0=1000000 +y_0=-500000 +a=6378137 +b=6356752.314140356 "
       "+units=m +no_defs  no_defs <>"},
      {"KvP4 laea", 5, 50, 3962799.4510, 2999718.8532,
       "+proj=laea +lat_0=52.00000000000001 +lon_0=10 +x_0=4321000 +y_0=3210000 +a=6378137 "
       "+b=6356752.314140356 +units=m +no_defs  no_defs <>"},
      {"KvP4 cass", 13.5, 52.5, 31362.6304, 19059.0668,
       "+proj=cass +lat_0=52.41864827777779 +lon_0=13.62720366666667 +x_0=40000 +y_0=10000 "
       "+a=6377397.155 +b=6356078.962818188 +units=m +no_defs  no_defs <>"},
      {"KvP4 eqdc", -100, 45, -296528.4341, 561938.4646,
       "+proj=eqdc +lat_1=20 +lat_2=60.00000000000001 +lat_0=40.00000000000001 "
       "+lon_0=-96.00000000000003 +x_0=0 +y_0=0 " +
           kWgs84Metres},
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

// The oblique Mercator texts name the centre's longitude +lon_0, which PROJ's
// omerc does not read: it takes the centre from +lonc, 0 when absent, and
// without +no_uoff it is variant B.  So each text means to PROJ 9.1.1 the
// variant B projection about a centre on the meridian 0 (with +gamma, when
// written, for the grid angle), and puts points of the system's own area
// 565 km (LV95) to 15000 km (Peninsula RSO) away from the library (values from
//   echo "LON LAT" | proj -f %.4f <text without "no_defs <>">).
// Krovak's text has no axes and PROJ reads it in the east-north form: it
// agrees with the east-north systems, and swaps and negates the southing and
// westing of the others.
TEST(KvProjTranslator, ObliqueMercatorAndKrovakTextsAsProjReadsThem) {
  kvtest::EnsureCatalogue();
  struct Row {
    std::string system;
    double lon, lat;
    std::string proj4;
    double projX, projY;  // what proj makes of the text
    double k, latC, azimuth, gridAngle, fe, fn, a, invF;
  };
  const std::string esriEastNorth =
      "PROJCS[\"S-JTSK_Krovak_East_North\",GEOGCS[\"GCS_S_JTSK\",DATUM[\"D_S_JTSK\","
      "SPHEROID[\"Bessel_1841\",6377397.155,299.1528128]],PRIMEM[\"Greenwich\",0.0],"
      "UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Krovak\"],PARAMETER[\"False_Easting\",0.0],"
      "PARAMETER[\"False_Northing\",0.0],PARAMETER[\"Pseudo_Standard_Parallel_1\",78.5],"
      "PARAMETER[\"Scale_Factor\",0.9999],PARAMETER[\"Azimuth\",30.28813975277778],"
      "PARAMETER[\"Longitude_Of_Center\",24.83333333333333],PARAMETER[\"Latitude_Of_Center\",49.5],"
      "PARAMETER[\"X_Scale\",-1.0],PARAMETER[\"Y_Scale\",1.0],PARAMETER[\"XY_Plane_Rotation\",90.0],"
      "UNIT[\"Meter\",1.0]]";
  const Row omerc[] = {
      {"NAD83 / Alaska zone 1", -134, 57,
       "+proj=omerc +lat_0=57.00000000000001 +lon_0=-133.6666666666667 +alpha=323.1301023611111 "
       "+k=0.9999 +x_0=5000000 +y_0=-5000000 +a=6378137 +b=6356752.314140356 "
       "+units=m " + kNoDefs,
       1776508.9203, 921211.6154, 0.9999, 57, 323.1301023611111, 323.1301023611111, 5e6, -5e6,
       6378137, 298.257222101},
      {"CH1903+ / LV95", 8, 47,
       "+proj=omerc +lat_0=46.95240555555556 +lon_0=7.439583333333335 +alpha=90.00000000000001 "
       "+k=1 +x_0=2600000 +y_0=1200000 +a=6377397.155 +b=6356078.962818188 "
       "+towgs84=674.374,15.056,405.346,0,0,0,0 +units=m " + kNoDefs,
       3207323.3671, 1236278.7919, 1, 46.95240555555556, 90, 90, 2600000, 1200000, 6377397.155,
       299.1528128},
      {"GDM2000 / Peninsula RSO", 102, 4,
       "+proj=omerc +lat_0=4.000000000000001 +lon_0=102.25 +alpha=323.0257964666667 "
       "+gamma=323.1301023611111 +k=0.99984 +x_0=804671 +y_0=0 +a=6378137 +b=6356752.314140356 "
       "+units=m " + kNoDefs,
       14276095.8877, -5403185.1796, 0.99984, 4, 323.0257964666667, 323.1301023611111, 804671, 0,
       6378137, 298.257222101},
  };
  for (const Row& row : omerc) {
    SCOPED_TRACE(row.system);
    ASSERT_EQ(Proj4(row.system), row.proj4);
    const CKvEllipsoid ellipsoid("", "", row.a, row.invF);
    const CKvHotineConstants asProjReadsIt(row.a, ellipsoid.GetEccentricity(), row.k, 0, row.latC,
                                           row.azimuth, row.gridAngle, row.fe, row.fn,
                                           CKvHotineConstants::eProjectionCentre);
    double x = 0, y = 0;
    asProjReadsIt.Forward(row.lon, row.lat, &x, &y);
    EXPECT_NEAR(x, row.projX, 1e-3);
    EXPECT_NEAR(y, row.projY, 1e-3);
    CKvMapProjection(row.system).Geo2Proj(row.lon, row.lat, &x, &y);
    EXPECT_GT(std::hypot(x - row.projX, y - row.projY), 5e5);
  }

  // proj reads both Krovak texts in the east-north form: -568990.9954 -1050538.6308.
  const std::string krovakText =
      "+proj=krovak +lat_0=49.50000000000001 +lon_0=24.83333333333334 +alpha=30.28813975277779 "
      "+k=0.9999 +x_0=0 +y_0=0 +a=6377397.155 +b=6356078.962818188 ";
  const double lon = 16.849771944444445, lat = 50.20901166666667;
  ASSERT_EQ(Proj4(esriEastNorth), krovakText + "+units=m " + kNoDefs);
  ASSERT_EQ(Proj4("S-JTSK / Krovak"),
            krovakText + "+towgs84=589,76,480,0,0,0,0 +units=m " + kNoDefs);
  double x = 0, y = 0;
  CKvMapProjection(esriEastNorth).Geo2Proj(lon, lat, &x, &y);
  EXPECT_NEAR(x, -568990.9954, 1e-3);
  EXPECT_NEAR(y, -1050538.6308, 1e-3);
  CKvMapProjection("S-JTSK / Krovak").Geo2Proj(lon, lat, &x, &y);
  EXPECT_NEAR(-y, -568990.9954, 1e-3);
  EXPECT_NEAR(-x, -1050538.6308, 1e-3);
}

}  // namespace
