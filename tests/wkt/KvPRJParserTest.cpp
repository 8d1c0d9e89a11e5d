#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "TestCatalogue.h"
#include "platform/CommaLocale.h"
#include "catalogue/KvGeographicalProjection.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "engines/KvProjection.h"
#include "platform/KvConstants.h"
#include "wkt/KvPRJParser.h"

namespace {

typedef CKvMapProjData D;

const std::string kGeog =
    "GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\",SPHEROID[\"WGS_1984\",6378137,298.257223563]],"
    "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]]";

// A projected system on WGS 84 with `projection` and `parameters` (each
// `"Name",value`), in metres.
std::string Projected(const std::string& projection, std::initializer_list<const char*> parameters,
                      const std::string& unit = "UNIT[\"Meter\",1]") {
  std::string text = "PROJCS[\"Test\"," + kGeog + ",PROJECTION[\"" + projection + "\"]";
  for (const char* p : parameters) text += std::string(",PARAMETER[") + p + "]";
  return text + "," + unit + "]";
}

D::EProjectionType TypeOf(const std::string& text, bool orderParallels = false) {
  CKvPRJParser parser(text.c_str());
  parser.Parse(orderParallels);
  return parser.GetProjectionType();
}

const std::string kUtm32 = Projected(
    "Transverse_Mercator", {"\"False_Easting\",500000", "\"False_Northing\",0",
                            "\"Central_Meridian\",9", "\"Scale_Factor\",0.9996",
                            "\"Latitude_Of_Origin\",0"});

TEST(KvPRJParser, AcceptsOnlyBalancedTextWithEnoughCommasAndASystemKeyword) {
  EXPECT_TRUE(CKvPRJParser::IsPRJ(kUtm32));
  EXPECT_TRUE(CKvPRJParser::IsPRJ(kGeog));
  EXPECT_FALSE(CKvPRJParser::IsPRJ(""));
  EXPECT_FALSE(CKvPRJParser::IsPRJ("GEOGCS[\"a\",b"));         // unclosed
  EXPECT_FALSE(CKvPRJParser::IsPRJ("GEOGCS[\"a\",b,c]]"));     // stray close
  EXPECT_FALSE(CKvPRJParser::IsPRJ("GEOGCS[a,b]"));            // one [ and one ,
  EXPECT_TRUE(CKvPRJParser::IsPRJ("GEOGCS[a,b,c]"));
  EXPECT_FALSE(CKvPRJParser::IsPRJ("geogcs[a,b,c]"));          // keywords are case-sensitive
  EXPECT_FALSE(CKvPRJParser::IsPRJ("LOCAL_CS[a,b,c]"));
  EXPECT_EQ(CKvPRJParser::_MatchBrackets(""), -1);
  EXPECT_EQ(CKvPRJParser::_MatchBrackets("a]b[c]"), 1);
  EXPECT_EQ(CKvPRJParser::_MatchBrackets("[[a]"), 4);
  EXPECT_EQ(CKvPRJParser::_MatchBrackets("[a[b]]"), -1);
  EXPECT_EQ(CKvPRJParser::_GetBracketLevel("A[B[C]],D["), 1);
  EXPECT_EQ(CKvPRJParser::_GetBracketLevel("A]B[["), 0);  // stops below zero
}

TEST(KvPRJParser, ReadsNamesUnitsEllipsoidAndDatumShift) {
  const std::string text =
      "COMPD_CS[\"Compound\",PROJCS[\"Inner\",GEOGCS[\"G\",DATUM[\"D\",SPHEROID[\"S\",6377397.155,"
      "299.1528128],TOWGS84[1,2,3,4,5,6,7]],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\","
      "0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"false_easting\",1],"
      "PARAMETER[\"FALSE_NORTHING\",2],PARAMETER[\"Central_Meridian\",3],"
      "PARAMETER[\"Scale_Factor\",1],PARAMETER[\"Latitude_Of_Origin\",0],"
      "UNIT[\"US survey foot\",0.3048006096012192],AXIS[\"X\",NORTH],AXIS[\"Y\",EAST]],"
      "VERT_CS[\"V\",VERT_DATUM[\"VD\",2005]]]";
  CKvPRJParser parser(text.c_str());
  ASSERT_TRUE(parser.Parse(false));
  EXPECT_EQ(parser.GetProjectionType(), D::eTransverseMercator);
  EXPECT_STREQ(parser.GetProjCSname().GetString(), "Compound");  // the compound name wins
  EXPECT_STREQ(parser.GetGeoCSname().GetString(), "G");
  EXPECT_STREQ(parser.GetDatum().GetString(), "D");
  CString name, direction;
  double a = 0, invF = 0, unit = 0;
  parser.GetEllipsoid(name, a, invF);
  EXPECT_STREQ(name.GetString(), "S");
  EXPECT_EQ(a, 6377397.155);
  EXPECT_EQ(invF, 299.1528128);
  CKvDatumShift shift;
  parser.GetDatumShift(shift);
  EXPECT_EQ(shift.GetType(), CKvCartDef::e7Parameter);
  EXPECT_EQ(shift[6], 7.0);
  EXPECT_EQ(parser.GetFalseEasting(), 1.0);  // parameter names in any case
  EXPECT_EQ(parser.GetFalseNorthing(), 2.0);
  parser.GetProjUnit(name, unit);
  EXPECT_STREQ(name.GetString(), "US survey foot");
  EXPECT_EQ(unit, 0.3048006096012192);
  parser.GetAxisInfo(CKvPRJParser::eAxis1, name, direction);
  EXPECT_STREQ(name.GetString(), "X");
  EXPECT_STREQ(direction.GetString(), "NORTH");
  parser.GetAxisInfo(CKvPRJParser::eAxis2, name, direction);
  EXPECT_STREQ(direction.GetString(), "EAST");
  EXPECT_STREQ(CKvPRJParser::ShortName("UTM-32").GetString(), "UTM-32");
  EXPECT_STREQ(CKvPRJParser::ShortName(" NON-UTM ").GetString(), "Local Coordinates");
  EXPECT_STREQ(CKvPRJParser::DatumName(text.c_str()).GetString(), "D");
}

TEST(KvPRJParser, ReadsAGeographicSystemWithLongitudeLatitudeAxes) {
  CKvPRJParser parser(kGeog.c_str());
  ASSERT_TRUE(parser.Parse(false));
  EXPECT_EQ(parser.GetProjectionType(), D::eGeographical);
  EXPECT_STREQ(parser.GetProjectionTypeName().GetString(), "Geographical");
  EXPECT_STREQ(parser.GetProjCSname().GetString(), "GCS_WGS_1984");
  CString name, direction;
  parser.GetAxisInfo(CKvPRJParser::eAxis1, name, direction);
  EXPECT_STREQ(name.GetString(), "Longitude");
  parser.GetAxisInfo(CKvPRJParser::eAxis2, name, direction);
  EXPECT_STREQ(name.GetString(), "Latitude");
}

TEST(KvPRJParser, DecidesTheTypeByTheParametersPresent) {
  const char* fe = "\"False_Easting\",0";
  const char* fn = "\"False_Northing\",0";
  const char* cm = "\"Central_Meridian\",0";
  const char* lo = "\"Latitude_Of_Origin\",0";
  const char* sf = "\"Scale_Factor\",1";
  const char* sp1 = "\"Standard_Parallel_1\",60";
  const char* sp2 = "\"Standard_Parallel_2\",20";
  const char* az = "\"Azimuth\",30";
  const char* lonc = "\"Longitude_Of_Center\",1";
  const char* latc = "\"Latitude_Of_Center\",2";
  const struct {
    std::string text;
    int type;
  } cases[] = {
      {Projected("Lambert_Conformal_Conic", {fe, fn, cm, sp1, sp2, lo}), 2},
      {Projected("Lambert_Conformal_Conic", {fe, fn, cm, sp1, sf, lo}), 3},
      {Projected("Lambert_Conformal_Conic", {fe, fn, cm, sp1, lo}), 22},
      {Projected("Hotine_Oblique_Mercator", {fe, fn, sf, az, lonc, latc, "\"Rectified_Grid_Angle\",30"}), 6},
      {Projected("Hotine_Oblique_Mercator", {fe, fn, sf, az, lonc, latc, "\"Rectified_Grid_Angle\",31"}), 8},
      {Projected("Hotine_Oblique_Mercator", {fe, fn, sf, az, lonc, latc}), 6},
      {Projected("Transverse_Mercator_South_Orientated", {fe, fn, cm, sf, lo}), 1},
      {Projected("TRANSVERSE_MERCATOR", {fe, fn, cm, sf, lo}), 1},  // names in any case
      {Projected("Transverse_Mercator", {fe, fn, cm, sf}), 22},       // no latitude of origin
      {Projected("Mercator", {fe, fn, cm, sp1}), 10},
      {Projected("Stereographic", {fe, fn, "\"Longitude_Of_Origin\",5", sf, lo}), 4},
      {Projected("Double_Stereographic", {fe, fn, cm, sf, lo}), 4},
      {Projected("oblique_stereographic", {fe, fn, cm, sf, lo}), 4},
      {Projected("Oblique_Stereographic", {fe, fn, cm, lo}), 22},  // no scale factor
      {Projected("Stereographic_North_Pole", {fe, fn, cm, sp1}), 12},
      {Projected("Stereographic_South_Pole", {fe, fn, cm, "\"Standard_Parallel_1\",-71"}), 13},
      {Projected("Stereographic_South_Pole", {fe, fn, cm, lo}), 22},  // no standard parallel
      {Projected("Polar_Stereographic", {fe, fn, cm, sf, lo}), 20},
      {Projected("Polar_Stereographic", {fe, fn, cm, "\"Latitude_Of_Origin\",-71"}), 20},
      {Projected("Polar_Stereographic", {fe, fn, cm, sf}), 22},  // no latitude of origin
      {Projected("Krovak", {fe, fn, lonc, latc, az, sf, "\"Pseudo_Standard_Parallel_1\",78.5"}), 15},
      {Projected("Albers", {fe, fn, lonc, sp1, sp2, latc}), 16},
      {Projected("Rotated_Longitude_Latitude", {"\"Longitude_Of_South_Pole\",10", "\"Latitude_Of_South_Pole\",-30", "\"Angle_Of_Rotation\",0"}), 9},
      {Projected("Non_Projected", {fe, fn, cm, sf, lo}), 21},
      {Projected("Unknown_Method", {fe, fn, cm, sf, lo}), 22},
      {Projected("Transverse_Mercator", {fe, fn, cm, sf, lo}, ""), 22},  // only the angular unit
      {kGeog.substr(0, kGeog.find("UNIT")) + "X[\"a\",1]]", 22},          // no unit at all
  };
  for (const auto& c : cases) EXPECT_EQ(TypeOf(c.text), c.type) << c.text;

  CKvPRJParser hotine(cases[5].text.c_str());
  hotine.Parse(false);
  EXPECT_EQ(hotine.GetXYPlaneRotation(), 30.0);  // the azimuth, copied

  // A polar stereographic without a scale factor has the scale 1, and
  // writes it.
  CKvPRJParser polar(Projected("Polar_Stereographic", {fe, fn, cm, lo}).c_str());
  ASSERT_TRUE(polar.Parse(false));
  EXPECT_EQ(polar.GetScaleFactor(), 1.0);
  CString written;
  ASSERT_TRUE(polar.Format(written));
  EXPECT_NE(std::string(written.GetString()).find("PARAMETER[\"Scale_Factor\",1]"),
            std::string::npos)
      << written.GetString();
}

TEST(KvPRJParser, OrdersTheParallelsOnlyWhenAsked) {
  const std::string albers =
      Projected("Albers_Conic_Equal_Area",
                {"\"False_Easting\",0", "\"False_Northing\",0", "\"Central_Meridian\",0",
                 "\"Standard_Parallel_1\",60", "\"Standard_Parallel_2\",20",
                 "\"Latitude_Of_Origin\",0"});
  CKvPRJParser ordered(albers.c_str()), kept(albers.c_str());
  ordered.Parse(true);
  kept.Parse(false);
  EXPECT_EQ(ordered.GetStandardParallel1(), 20.0);
  EXPECT_EQ(ordered.GetStandardParallel2(), 60.0);
  EXPECT_EQ(kept.GetStandardParallel1(), 60.0);
}

TEST(KvPRJParser, ReadsNumbersInTheCLocaleAndUnparsableOnesAsZero) {
  EXPECT_EQ(CKvPRJParser::GetParam("x,\"A\",1.5e3]", "a", -1), 1500.0);
  EXPECT_EQ(CKvPRJParser::GetParam("x,\"A\",abc]", "A", -1), 0.0);
  EXPECT_EQ(CKvPRJParser::GetParam("x,\"AB\",2]", "A", -1), -1.0);  // whole quoted names only
  EXPECT_EQ(CKvPRJParser::GetParam("\"B\",2],\"C\",3]", {"A", "C", "B"}, -1), 3.0);
}

TEST(KvPRJParser, ReadsAndWritesNumbersWithAFullStopUnderACommaLocale) {
  CommaLocale comma;
  if (!comma.Active()) GTEST_SKIP() << "no comma-decimal locale available";
  CKvPRJParser parser(kUtm32.c_str());
  ASSERT_TRUE(parser.Parse(false));
  EXPECT_EQ(parser.GetScaleFactor(), 0.9996);
  CString text;
  parser.Format(text);
  EXPECT_NE(std::string(text.GetString()).find("298.257223563"), std::string::npos);
}

TEST(KvPRJParser, WritesTheParametersOfEachTypeInOrder) {
  CKvPRJParser mercator(Projected("Mercator_1SP", {"\"False_Easting\",1", "\"False_Northing\",2",
                                                   "\"Central_Meridian\",3", "\"Scale_Factor\",0.5"})
                            .c_str());
  ASSERT_TRUE(mercator.Parse(false));
  CString text;
  ASSERT_TRUE(mercator.Format(text));
  const std::string s = text.GetString();
  EXPECT_NE(s.find("PROJECTION[\"Mercator_1SP\"],PARAMETER[\"False_Easting\",1],"
                   "PARAMETER[\"False_Northing\",2],PARAMETER[\"Central_Meridian\",3],"
                   "PARAMETER[\"Scale_Factor\",0.5],UNIT[\"Meter\",1]]"),
            std::string::npos)
      << s;

  CKvPRJParser krovak("");
  krovak.SetProjectionType(D::eKrovak);
  krovak.SetXYPlaneRotation(90);
  ASSERT_TRUE(krovak.Format(text));
  const std::string k = text.GetString();
  EXPECT_NE(k.find("PARAMETER[\"Y_Scale\",-1e-35],PARAMETER[\"XY_Plane_Rotation\",90],UNIT["),
            std::string::npos)
      << k;

  CKvPRJParser undefined("");
  EXPECT_FALSE(undefined.Format(text));
  EXPECT_EQ(std::string(text.GetString()).substr(text.GetLength() - 15), "PROJECTION[\"\"],");

  CKvPRJParser nonProjected("");
  nonProjected.SetProjectionType(D::eNonProjected);
  EXPECT_EQ(nonProjected.GetProjectionTypeTitle(), "Non projection");
  EXPECT_EQ(nonProjected.GetNoOfParameters(), 0);
}

TEST(KvPRJParser, CopiesIntoABufferOnlyWhenTextAndTerminatorFit) {
  CKvPRJParser parser(kUtm32.c_str());
  ASSERT_TRUE(parser.Parse(false));
  CString text;
  parser.Format(text);
  std::vector<char> buffer(text.GetLength() + 1, 'x');
  EXPECT_FALSE(parser.Format(buffer.data(), text.GetLength()));
  EXPECT_EQ(buffer[0], 'x');
  EXPECT_TRUE(parser.Format(buffer.data(), text.GetLength() + 1));
  EXPECT_STREQ(buffer.data(), text.GetString());
  EXPECT_FALSE(parser.Format(nullptr, 100000));
}

TEST(KvPRJParser, ReportsParametersWithTheirUnits) {
  CKvPRJParser parser(kUtm32.c_str());
  ASSERT_TRUE(parser.Parse(false));
  EXPECT_EQ(parser.GetProjectionTypeTitle(), "Transverse mercator");
  ASSERT_EQ(parser.GetNoOfParameters(), 5);
  CString name, unit;
  double value = 0, factor = 0;
  ASSERT_TRUE(parser.GetParameter(1, name, value, unit, factor));
  EXPECT_STREQ(name.GetString(), "Central meridian:");
  EXPECT_EQ(value, 9.0);
  EXPECT_STREQ(unit.GetString(), "Degree");
  EXPECT_EQ(factor, 0.0174532925199433);
  ASSERT_TRUE(parser.GetParameter(3, name, value, unit, factor));
  EXPECT_EQ(value, 500000.0);
  EXPECT_STREQ(unit.GetString(), "Meter");
  ASSERT_TRUE(parser.GetParameter(0, name, value, unit, factor));
  EXPECT_STREQ(unit.GetString(), "");
  EXPECT_EQ(factor, 1.0);
  EXPECT_FALSE(parser.GetParameter(5, name, value, unit, factor));
}

TEST(KvPRJParser, LaysWktOutOnIndentedLines) {
  CString out;
  CKvPRJParser::FormatAsReadableWKT(
      "PROJCS[\"P\",GEOGCS[\"G\",DATUM[\"D\",SPHEROID[\"S\",1,2]],UNIT[\"u\",1]],UNIT[\"m\",1]]",
      out);
  EXPECT_STREQ(out.GetString(),
               "PROJCS[\"P\",\r\n"
               "    GEOGCS[\"G\",\r\n"
               "        DATUM[\"D\",\r\n"
               "            SPHEROID[\"S\",1,2]],\r\n"
               "        UNIT[\"u\",1]],\r\n"
               "    UNIT[\"m\",\r\n"
               "        1]]");
}

TEST(KvPRJParser, WritesAUtmParameterSetAsOneLineOfWkt) {
  kvtest::EnsureEllipsoids();
  CKvTransverseMercatorProjection utm("UTM-32", "UTM Projections", "WE", 0.9996, 9, 0, 500000, 0);
  CKvPRJParser parser(utm);
  CString text;
  ASSERT_TRUE(parser.Format(text));
  EXPECT_STREQ(text.GetString(),
               "PROJCS[\"UTM-32\",GEOGCS[\"Unused\",DATUM[\"UTM Projections\",SPHEROID[\"WGS 1984\","
               "6378137,298.257223563]],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
               "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"False_Easting\",500000],"
               "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",9],"
               "PARAMETER[\"Scale_Factor\",0.9996],PARAMETER[\"Latitude_Of_Origin\",0],"
               "UNIT[\"Meter\",1]]");

  CKvTransverseMercatorProjection lost("Lost", "B", "??", 1, 2, 3, 4, 5);
  CKvPRJParser nonProjected(lost);
  ASSERT_TRUE(nonProjected.Format(text));
  EXPECT_NE(std::string(text.GetString()).find("SPHEROID[\" \",-1e-35,-1e-35]]"),
            std::string::npos);
  EXPECT_NE(std::string(text.GetString()).find("PROJECTION[\"Non_Projected\"]"),
            std::string::npos);
}

// Written and read again, every set gives the same values back.
TEST(KvPRJParser, EverySetRoundTripsThroughWkt) {
  kvtest::EnsureEllipsoids();
  for (int i = 0; i < D::GetNoOfProjections(); ++i) {
    double values[10];
    for (int k = 0; k < 10; ++k) values[k] = 10.0 * (i + 1) + k + 0.0625;
    const D::EProjectionType type = D::Enum2ProjectionType(i);
    std::unique_ptr<D> record(D::CreateProjection(type, "Name", "Datum", "WE", values));
    CKvPRJParser written(*record);
    CString text;
    ASSERT_TRUE(written.Format(text)) << type;
    CKvPRJParser read(text.GetString());
    read.Parse(false);
    ASSERT_EQ(read.GetProjectionType(), type) << text.GetString();
    std::unique_ptr<D> back(read._CreateProjData());
    ASSERT_NE(back, nullptr);
    EXPECT_EQ(back->GetName(), "Name");
    EXPECT_EQ(back->GetBranchName(), "Datum");
    for (int k = 0; k < record->GetNoOfParameters(); ++k) {
      std::string l1, l2;
      double v1 = 0, v2 = 1;
      D::EParamType t1, t2;
      record->GetParameter(k, l1, v1, t1);
      back->GetParameter(k, l2, v2, t2);
      EXPECT_EQ(v1, v2) << type << " " << l1;
    }
  }
}

// Parse, write, parse again: the same record, for every type with an engine.
// The geographic text is the one the catalogue's engine writes: a GEOGCS
// string has no linear unit, which the writer prints as an empty unit.
TEST(KvPRJParser, WktOfEngineTypesRoundTrips) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord longLat(new CKvGeographicalProjection("LL", "Non UTM Projections", "WE", 0));
  std::unique_ptr<CKvProjection> geographic(longLat.get()->CreateProjection());
  CString geographicText;
  CKvPRJParser(*geographic).Format(geographicText);
  for (const std::string& text : {kUtm32, std::string(geographicText.GetString())}) {
    CKvPRJParser first(text.c_str());
    ASSERT_TRUE(first.Parse(false));
    std::unique_ptr<CKvProjection> engine(first.CreateMapProjection());
    ASSERT_NE(engine, nullptr);
    CString once, twice;
    first.Format(once);
    CKvPRJParser second(once);
    ASSERT_TRUE(second.Parse(false)) << once.GetString();
    second.Format(twice);
    EXPECT_STREQ(once.GetString(), twice.GetString());
    EXPECT_EQ(second.GetProjectionType(), first.GetProjectionType());
  }
}

// Timbalai 1948 / RSO Borneo (m): Hotine variant B, grid angle 53 07' 48.3685"
// against the azimuth 53 18' 56.9537", in the GDAL dialect ("rectified_grid_angle")
// and the ESRI one ("Rectified_Skew_Orthomorphic_Center", "XY_Plane_Rotation"),
// in metres and in British chains (Sears 1922).
std::string Borneo(const char* method, const char* angleName, const char* fe, const char* fn,
                   const char* unit) {
  return std::string("PROJCS[\"Borneo\",GEOGCS[\"Timbalai 1948\",DATUM[\"Timbalai_1948\","
                     "SPHEROID[\"Everest 1830 (1967 Definition)\",6377298.556,300.8017]],"
                     "PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]],PROJECTION[\"") +
         method + "\"],PARAMETER[\"latitude_of_center\",4],PARAMETER[\"longitude_of_center\",115]," +
         "PARAMETER[\"azimuth\",53.3158204722222],PARAMETER[\"" + angleName +
         "\",53.1301023611111],PARAMETER[\"scale_factor\",0.99984],PARAMETER[\"false_easting\"," +
         fe + "],PARAMETER[\"false_northing\"," + fn + "]," + unit + "]";
}

TEST(KvPRJParser, CarriesVariantBWithItsOwnGridAngleAsTheSkewOrthomorphic) {
  // The centre's coordinates about the natural origin, uc (sin, cos) of the
  // grid angle:
  //   echo "115 4" | proj -f %.9f +proj=omerc +no_uoff +lat_0=4 +lonc=115
  //     +alpha=53.3158204722222 +gamma=53.1301023611111 +k=0.99984 +x_0=0 +y_0=0
  //     +a=6377298.556 +rf=300.8017   ->  590476.875346880 442857.656398164
  const double ucEast = 590476.875346880, ucNorth = 442857.656398164;
  const double chain = 20.1167651215526;
  const struct {
    std::string text;
    double east, north;  // the false origin read, in the text's unit
  } cases[] = {
      {Borneo("Hotine_Oblique_Mercator_Azimuth_Center", "rectified_grid_angle", "590476.87",
              "442857.65", "UNIT[\"metre\",1]"),
       590476.87 - ucEast, 442857.65 - ucNorth},
      {Borneo("Rectified_Skew_Orthomorphic_Center", "XY_Plane_Rotation", "590476.87",
              "442857.65", "UNIT[\"Meter\",1]"),
       590476.87 - ucEast, 442857.65 - ucNorth},
      {Borneo("Rectified_Skew_Orthomorphic_Center", "XY_Plane_Rotation", "29352.4763",
              "22014.3572", "UNIT[\"British chain (Sears 1922)\",20.1167651215526]"),
       29352.4763 - ucEast / chain, 22014.3572 - ucNorth / chain},
  };
  for (const auto& c : cases) {
    CKvPRJParser parser(c.text.c_str());
    ASSERT_TRUE(parser.Parse(false)) << c.text;
    EXPECT_EQ(parser.GetProjectionType(), D::eRectifiedSkewOrthomorphic);
    EXPECT_STREQ(parser.GetProjectionTypeName().GetString(),
                 "Rectified_Skew_Orthomorphic_Natural_Origin");
    EXPECT_NEAR(parser.GetFalseEasting(), c.east, 1e-6);
    EXPECT_NEAR(parser.GetFalseNorthing(), c.north, 1e-6);
    EXPECT_EQ(parser.GetXYPlaneRotation(), 53.1301023611111);
    // Written and read again, the record stays where it is.
    CString once, twice;
    ASSERT_TRUE(parser.Format(once));
    CKvPRJParser again(once);
    ASSERT_TRUE(again.Parse(false));
    EXPECT_NEAR(again.GetFalseEasting(), parser.GetFalseEasting(), 1e-15);  // %.16g
    again.Format(twice);
    EXPECT_STREQ(twice.GetString(), once.GetString());
  }
  // The same grids with the grid angle equal to the azimuth stay variant B.
  const std::string unrotated = Borneo("Rectified_Skew_Orthomorphic_Center", "XY_Plane_Rotation",
                                       "590476.87", "442857.65", "UNIT[\"Meter\",1]");
  std::string same = unrotated;
  same.replace(same.find("53.1301023611111"), 16, "53.3158204722222");
  EXPECT_EQ(TypeOf(same), D::eObliqueMercator);
  // Without an ellipsoid the move cannot be made: the text is refused, not
  // read without its angle.
  std::string flat = unrotated;
  flat.replace(flat.find("6377298.556"), 11, "0");
  EXPECT_EQ(TypeOf(flat), D::eUndefined);
}

TEST(KvPRJParser, OrientsKrovakByItsAxesWhenTheTextHasNoScales) {
  const std::string head =
      "PROJCS[\"S-JTSK\",GEOGCS[\"S-JTSK\",DATUM[\"S_JTSK\",SPHEROID[\"Bessel 1841\",6377397.155,"
      "299.1528128]],PRIMEM[\"Greenwich\",0],UNIT[\"";
  const std::string body =
      "PROJECTION[\"Krovak\"],PARAMETER[\"latitude_of_center\",49.5],"
      "PARAMETER[\"longitude_of_center\",24.8333333333333],PARAMETER[\"azimuth\",30.2881397527778],"
      "PARAMETER[\"pseudo_standard_parallel_1\",78.5],PARAMETER[\"scale_factor\",0.9999],"
      "PARAMETER[\"false_easting\",0],PARAMETER[\"false_northing\",0],";
  const std::string degree = "degree\",0.0174532925199433]],";
  const std::string grad = "grad\",0.01570796326794897]],";
  const std::string esri =
      "PARAMETER[\"X_Scale\",1.0],PARAMETER[\"Y_Scale\",1.0],PARAMETER[\"XY_Plane_Rotation\",0],";
  const struct {
    std::string text;
    double xScale, yScale, rotation;  // in the text's angular unit
  } cases[] = {
      // no axes: the method's southing and westing
      {head + degree + body + "UNIT[\"metre\",1]]", 1, 1, 0},
      // axes of its own: the east-north form, which they then orient
      {head + degree + body + "UNIT[\"metre\",1],AXIS[\"Easting\",EAST],AXIS[\"Northing\",NORTH]]",
       -1, 1, 90},
      {head + degree + body + "UNIT[\"metre\",1],AXIS[\"X\",SOUTH],AXIS[\"Y\",WEST]]", -1, 1, 90},
      {head + grad + body + "UNIT[\"metre\",1],AXIS[\"X\",SOUTH],AXIS[\"Y\",WEST]]", -1, 1, 100},
      // the ESRI parameters say it, axes or not
      {head + degree + body + esri + "UNIT[\"metre\",1],AXIS[\"X\",SOUTH],AXIS[\"Y\",WEST]]", 1, 1,
       0},
  };
  for (const auto& c : cases) {
    CKvPRJParser parser(c.text.c_str());
    ASSERT_TRUE(parser.Parse(false)) << c.text;
    EXPECT_EQ(parser.GetXScale(), c.xScale) << c.text;
    EXPECT_EQ(parser.GetYScale(), c.yScale) << c.text;
    EXPECT_NEAR(parser.GetXYPlaneRotation(), c.rotation, 1e-12) << c.text;
  }
}

}  // namespace
