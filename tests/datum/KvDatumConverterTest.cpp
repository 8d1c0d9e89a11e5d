#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <string>

#include "TestCatalogue.h"
#include "catalogue/KvLambert2SPProjection.h"
#include "datum/KvDatumConverter.h"
#include "mapproj/KvMapProjection.h"

namespace {

typedef CKvDatumConverter C;

// Shifts to WGS 84 in TOWGS84 units (m, arc-seconds, ppm; position vector).
const char kEd50Seven[] = "TOWGS84[-89.5,-93.8,-123.1,0,0,-0.156,1.2]";
const char kDhdnSeven[] = "TOWGS84[598.1,73.7,418.2,0.202,0.045,-2.455,6.7]";
const char kEd50Three[] = "TOWGS84[-87,-98,-121,0,0,0,0]";
const char kIntl[] = "SPHEROID[\"International 1924\",6378388,297]";
const char kBessel[] = "SPHEROID[\"Bessel 1841\",6377397.155,299.1528128]";

std::string Geogcs(const char* spheroid, const char* towgs84) {
  return std::string("GEOGCS[\"Test\",DATUM[\"Test\",") + spheroid + "," + towgs84 +
         "],PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]]";
}

// Transverse Mercator on central meridian 9.
std::string TransverseMercator(const std::string& geogcs, const char* fe, const char* k) {
  return "PROJCS[\"Test TM\"," + geogcs + ",PROJECTION[\"Transverse_Mercator\"]," +
         "PARAMETER[\"False_Easting\"," + fe + "],PARAMETER[\"False_Northing\",0]," +
         "PARAMETER[\"Central_Meridian\",9],PARAMETER[\"Scale_Factor\"," + k + "]," +
         "PARAMETER[\"Latitude_Of_Origin\",0],UNIT[\"Meter\",1]]";
}

const std::string kEd50Geo7 = Geogcs(kIntl, kEd50Seven);
const std::string kDhdnGeo7 = Geogcs(kBessel, kDhdnSeven);
const std::string kEd50Geo3 = Geogcs(kIntl, kEd50Three);
const std::string kEd50Utm32Seven = TransverseMercator(kEd50Geo7, "500000", "0.9996");
const std::string kEd50Utm32Three = TransverseMercator(kEd50Geo3, "500000", "0.9996");
const std::string kDhdnGk3 = TransverseMercator(kDhdnGeo7, "3500000", "1");

constexpr double kRad = 0.017453292519943295;
constexpr double kMetresPerDegree = 6378137.0 * kRad;
constexpr double kMm = 1e-3;

struct SPoint3 {
  double x, y, h;
};

// Compares in metres; geographic (degree) differences are taken on the ground.
void ExpectNear(const SPoint3& got, const SPoint3& want, bool geographic, double metres) {
  const double kx = geographic ? kMetresPerDegree * std::cos(want.y * kRad) : 1.0;
  const double ky = geographic ? kMetresPerDegree : 1.0;
  EXPECT_NEAR((got.x - want.x) * kx, 0.0, metres) << "x " << got.x;
  EXPECT_NEAR((got.y - want.y) * ky, 0.0, metres) << "y " << got.y;
  EXPECT_NEAR(got.h, want.h, metres);
}

SPoint3 Converted(const C& converter, SPoint3 p, bool inverse = false) {
  inverse ? converter.InvConvert(p.x, p.y, p.h) : converter.Convert(p.x, p.y, p.h);
  return p;
}

class KvDatumConverterTest : public ::testing::Test {
 protected:
  void SetUp() override { kvtest::EnsureCatalogue(); }
};

TEST_F(KvDatumConverterTest, ConversionsMatchHelmertPipelinesAndReturn) {
  // Oracle: cct pipelines, with these steps:
  //   H3  = +proj=helmert +x=-87 +y=-98 +z=-121
  //   H7e = +proj=helmert +x=-89.5 +y=-93.8 +z=-123.1 +rx=0 +ry=0 +rz=-0.156 +s=1.2
  //         +convention=position_vector
  //   H7d = +proj=helmert +x=598.1 +y=73.7 +z=418.2 +rx=0.202 +ry=0.045 +rz=-2.455 +s=6.7
  //         +convention=position_vector
  //   U32 = +proj=utm +zone=32 +ellps=intl
  //   LCC = +proj=lcc +lat_1=28.383333333333333 +lat_2=30.283333333333333
  //         +lat_0=27.833333333333333 +lon_0=-99 +x_0=609601.2192 +y_0=0 +ellps=clrk66
  // a: echo "LON LAT H" | cct -d 10 +proj=pipeline +step +proj=cart +ellps=intl +step H7e
  //      +step +inv H7d +step +inv +proj=cart +ellps=bessel   (also checked with mpmath)
  // b: echo "E N H" | cct -d 4 +proj=pipeline +step +inv U32 +step +proj=cart +ellps=intl
  //      +step H7e +step +inv H7d +step +inv +proj=cart +ellps=bessel
  //      +step +proj=tmerc +lon_0=9 +k=1 +x_0=3500000 +ellps=bessel
  // c: b ending after the inverse cart step (cct -d 10); d: b starting at the forward cart step
  // e: echo "LON LAT H" | cct -d 10 +proj=pipeline +step +proj=cart +ellps=intl +step H3
  //      +step +inv +proj=cart +ellps=WGS84
  // f: echo "E N H" | cct -d 4 +proj=pipeline +step +inv U32 +step +proj=cart +ellps=intl
  //      +step H3 +step +inv +proj=cart +ellps=WGS84 +step +proj=utm +zone=32 +ellps=WGS84
  // g: f with H7e in place of H3
  // h: echo "E N 0" | cct -d 4 +proj=pipeline +step +inv LCC +step +proj=cart +ellps=clrk66
  //      +step +inv +proj=cart +ellps=WGS84 +step +proj=utm +zone=14 +ellps=WGS84
  // i: h with +step +proj=helmert +x=-8 +y=160 +z=176 after the forward cart step
  // Backwards: a Bowring step per geocentric inverse (3 um a pair), the projections' round
  // trips, and r^2 x 6.4e6 m from the transposed rotation matrix (0.5 mm for DHDN).
  double nad27[3] = {-8, 160, 176};
  struct SSetup {
    std::string source, target;
    C::ETypeOfConversion type;
    double* sourceShift;  // three parameters set on the source first
    double back;          // round-trip tolerance, metres
  };
  const SSetup setups[] = {
      {kEd50Geo7, kDhdnGeo7, C::eGeoToGeo, nullptr, kMm},                  // a
      {kEd50Utm32Seven, kDhdnGk3, C::eProjToProj, nullptr, kMm},           // b
      {kEd50Utm32Seven, kDhdnGeo7, C::eProjToGeo, nullptr, kMm},           // c
      {kEd50Geo7, kDhdnGk3, C::eGeoToProj, nullptr, kMm},                  // d
      {kEd50Geo3, "LONG/LAT", C::eGeoToGeo, nullptr, 5e-6},                // e
      {kEd50Utm32Three, "UTM-32", C::eProjToProj, nullptr, 5e-6},          // f
      {kEd50Utm32Seven, "UTM-32", C::eProjToProj, nullptr, 1e-5},          // g
      {"KvDc Lambert test zone", "UTM-14", C::eProjToProj, nullptr, kMm},  // h
      {"KvDc Lambert test zone", "UTM-14", C::eProjToProj, nad27, kMm},    // i
  };
  const struct {
    char setup;
    SPoint3 in, out;
  } rows[] = {
      {'a', {9, 50, 0}, {8.9998992176, 50.0003357155, -4.7104136394}},
      {'a', {-3.5, 40.4, 0}, {-3.5017787696, 40.3988480783, 23.9499665136}},
      {'a', {13.4, 52.5, 100}, {13.4006601435, 52.5007130448, 96.3452879330}},
      {'a', {24.9, 60.2, 0}, {24.9032169026, 60.2017570673, 22.3602267047}},
      {'b', {532000, 5561000, 0}, {3532005.2518, 5562583.6038, -4.8526}},
      {'b', {434000, 5273000, 0}, {3433968.7283, 5274468.9553, -4.8005}},
      {'b', {612000, 6019000, 0}, {3612033.0395, 6020765.2361, -0.1316}},
      {'c', {532000, 5561000, 0}, {9.4483185587, 50.1996780244, -4.8525846656}},
      {'d', {9.5, 50.2, 0}, {3535692.9947, 5562683.7329, -4.8822}},
      {'e', {9, 50, 0}, {8.9988397954, 49.9991886993, 39.6787708206}},
      {'e', {-3.5, 40.4, 0}, {-3.5012147629, 40.3988303043, 72.7000535149}},
      {'e', {13.4, 52.5, 100}, {13.3988931383, 52.4993095646, 132.2225356987}},
      {'e', {24.9, 60.2, 0}, {24.8990577558, 60.1996877381, 17.5324834790}},
      {'e', {-70.6, -33.4, 500}, {-70.6012318365, -33.3998392719, 843.0310639953}},
      {'e', {151.2, 75.1, -20}, {151.2044501979, 75.0990619188, 36.2262255969}},
      {'f', {532000, 5561000, 0}, {531916.6530, 5560798.0305, 38.9513}},
      {'f', {434000, 5273000, 0}, {433917.3005, 5272799.9001, 44.4772}},
      {'f', {612000, 6019000, 0}, {611916.2643, 6018795.4113, 32.0249}},
      {'f', {612000, 6019000, 250}, {611916.2674, 6018795.4142, 282.0249}},
      {'g', {434000, 5273000, 0}, {433918.5521, 5272799.8340, 49.2977}},
      {'h', {903000, 77600, 0}, {793395.4141, 3156012.5846, 15.3772}},
      {'h', {450000, 250000, 0}, {340438.0051, 3328482.6634, 9.7917}},
      {'i', {903000, 77600, 0}, {793364.9638, 3156242.2470, -39.7519}},
      {'i', {450000, 250000, 0}, {340403.9016, 3328713.5274, -36.7878}},
  };
  kvtest::ScopedRecord record(new CKvLambert2SPProjection("KvDc Lambert test zone", "NAD27", "CC",
                                                          28 + 23 / 60.0, 30 + 17 / 60.0, -99,
                                                          27 + 50 / 60.0, 609601.2192, 0));
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(1, row.setup) + " " + std::to_string(row.in.y));
    const SSetup& setup = setups[row.setup - 'a'];
    C converter(setup.source.c_str(), setup.target.c_str());
    converter.SetConversionType(setup.type);
    if (setup.sourceShift)
      converter.SetDatumShift(CKvCartDef::e3Parameter, setup.sourceShift, true);
    const SPoint3 out = Converted(converter, row.in);
    ExpectNear(out, row.out, setup.type & 1, kMm);
    ExpectNear(Converted(converter, out, true), row.in, setup.type & 2, setup.back);
    if (row.in.h == 0) {  // the two-value form starts from height 0 too
      double x = row.in.x, y = row.in.y;
      converter.Convert(x, y);
      EXPECT_EQ(x, out.x);
      EXPECT_EQ(y, out.y);
    }
  }
}

TEST_F(KvDatumConverterTest, DatumShiftRunsSourceForwardThenTargetBackward) {
  // ed50 to dhdn: echo "4000000 600000 4900000" | cct -d 6 +proj=pipeline +step H7e
  //   +step +inv H7d, and +step H7d +step +inv H7e backwards (steps of the test above).
  // rotation: one arc-second about x is pi / 648000 rad, Y' = Y - rx Z; ppm: 1e-6 of 1e6 m.
  // Each returns the type of the shift it applies last.
  const std::string &ed50 = kEd50Geo7, &ed50t = kEd50Geo3;
  const std::string rotation = Geogcs(kIntl, "TOWGS84[0,0,0,1,0,0,0]");
  const std::string ppm = Geogcs(kIntl, "TOWGS84[0,0,0,0,0,0,1]");
  const struct {
    const std::string& source;
    bool inverse;
    double in[3], out[3];
    int type;
    double tolerance;
  } rows[] = {
      {ed50, false, {4e6, 6e5, 4.9e6}, {3999282.650411, 599878.574316, 4899432.038893}, 2, 1e-6},
      {ed50, true, {4e6, 6e5, 4.9e6}, {4000717.355638, 600121.417898, 4900567.964246}, 2, 1e-6},
      {ed50t, false, {1, 2, 3}, {1 - 87.0, 2 - 98.0, 3 - 121.0}, 0, 0},
      {ed50t, true, {1 - 87.0, 2 - 98.0, 3 - 121.0}, {1, 2, 3}, 1, 0},
      {rotation, false, {0, 0, 1e6}, {0, -4.84813681109536e-6 * 1e6, 1e6}, 0, 1e-15},
      {ppm, false, {1e6, 0, 0}, {1e6 + 1, 0, 0}, 0, 1e-9},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.source.substr(0, 80));
    C converter(row.source.c_str(), &row.source == &ed50 ? kDhdnGeo7.c_str() : "LONG/LAT");
    double X = row.in[0], Y = row.in[1], Z = row.in[2];
    EXPECT_EQ(row.inverse ? converter.InvDatumShift(X, Y, Z) : converter.DatumShift(X, Y, Z),
              row.type);
    EXPECT_NEAR(X, row.out[0], row.tolerance);
    EXPECT_NEAR(Y, row.out[1], row.tolerance);
    EXPECT_NEAR(Z, row.out[2], row.tolerance);
  }
}

TEST_F(KvDatumConverterTest, SameEllipsoidAndEqualShiftsSkipTheGeocentricStep) {
  struct SRow {
    std::string source, target;
    bool bypass;
  };
  const SRow rows[] = {
      {"UTM-32", "LONG/LAT", true},  // both WGS 84, no shift
      {kEd50Utm32Seven, kEd50Geo7, true},
      {kEd50Utm32Three, kEd50Geo7, false},  // same ellipsoid, other shift
      {kEd50Geo3, Geogcs(kBessel, kEd50Three), false},
      {"No such system", "UTM-32", true},  // no engine: nothing to shift with
  };
  for (const SRow& row : rows) {
    C converter(row.source.c_str(), row.target.c_str());
    EXPECT_EQ(converter.GetBypassXYZ(), row.bypass) << row.source << " " << row.target;
  }
  // Bypassed, the point only changes system and the height is not touched.
  C converter("UTM-32", "LONG/LAT");
  converter.SetConversionType(C::eProjToGeo);
  double x = 500000, y = 6206079.5872521561, h = 123.25;  // 9 E 56 N, see KvMapProjectionTest
  converter.Convert(x, y, h);
  EXPECT_NEAR(x, 9, 1e-9);
  EXPECT_NEAR(y, 56, 1e-9);
  EXPECT_EQ(h, 123.25);
}

TEST_F(KvDatumConverterTest, SetDatumShiftTakesRadiansAndRecomputesTheBypass) {
  C converter(kEd50Geo7.c_str(), kEd50Utm32Seven.c_str());
  ASSERT_TRUE(converter.GetBypassXYZ());
  // The target turned one arc-second about z, given in radians; the source's
  // ED50 shift cleared so that the target's shows alone.
  double values[7] = {0, 0, 0, 0, 0, 4.84813681109536e-6, 0}, none[7] = {};
  converter.SetDatumShift(CKvCartDef::e7Parameter, values, false);
  EXPECT_FALSE(converter.GetBypassXYZ());
  converter.SetDatumShift(CKvCartDef::eNoShift, none, true);
  double X = 1e6, Y = 0, Z = 0;
  converter.DatumShift(X, Y, Z);
  EXPECT_NEAR(Y, -4.84813681109536, 1e-9);  // backward, transposed: Y' = -rz X
  EXPECT_NEAR(X, 1e6, 1e-4);
  // BypassXYZ and ResetBypassXYZ restore the constructed value, not the recomputed one.
  converter.BypassXYZ();
  EXPECT_TRUE(converter.GetBypassXYZ());
  EXPECT_TRUE(converter.ResetBypassXYZ());
  EXPECT_TRUE(converter.GetBypassXYZ());
  converter.SetDatumShift(CKvCartDef::eNoShift, nullptr, false);  // equal shifts again
  EXPECT_TRUE(converter.GetBypassXYZ());
}

TEST_F(KvDatumConverterTest, SetDatumShiftOfThreeValuesKeepsTheOtherFour) {
  C converter("LONG/LAT", "UTM-32");
  double seven[7] = {1, 2, 3, 0, 0, 1e-5, 1e-6}, three[3] = {10, 20, 30};
  converter.SetDatumShift(CKvCartDef::e7Parameter, seven, true);
  converter.SetDatumShift(CKvCartDef::e3Parameter, three, true);
  double X = 1e6, Y = 0, Z = 0;
  converter.DatumShift(X, Y, Z);
  EXPECT_EQ(X, 1e6 + 10);  // translations only
  EXPECT_EQ(Y, 20.0);
  // Back to seven without new values: the stored rotation and scale return.
  converter.SetDatumShift(CKvCartDef::e7Parameter, nullptr, true);
  X = 1e6, Y = 0, Z = 0;
  converter.DatumShift(X, Y, Z);
  EXPECT_NEAR(X, 1e6 * (1 + 1e-6) + 10, 1e-9);
  EXPECT_NEAR(Y, 1e-5 * 1e6 * (1 + 1e-6) + 20, 1e-9);
}

TEST_F(KvDatumConverterTest, InvertOrderExchangesTheEndsAndTwiceRestoresThem) {
  C converter(kEd50Utm32Seven.c_str(), kDhdnGeo7.c_str());
  CKvMapProjection* source = converter.GetMapProjection(true);
  CKvMapProjection* target = converter.GetMapProjection(false);
  converter.SetConversionType(C::eProjToGeo);
  EXPECT_EQ(converter.InvertOrder(), C::eGeoToProj);
  EXPECT_EQ(converter.GetMapProjection(true), target);
  EXPECT_EQ(converter.GetMapProjection(false), source);
  // Inverted, Convert is the former InvConvert (row c of the first test).
  double x = 9.4483185587, y = 50.1996780244;
  converter.Convert(x, y);
  EXPECT_NEAR(x, 532000, 2e-3);  // the input has 1e-10 degrees, about 0.1 mm
  EXPECT_NEAR(y, 5561000, 2e-3);
  EXPECT_EQ(converter.InvertOrder(), C::eProjToGeo);
  EXPECT_EQ(converter.GetMapProjection(true), source);
  for (C::ETypeOfConversion type : {C::eProjToProj, C::eGeoToGeo}) {
    converter.SetConversionType(type);
    EXPECT_EQ(converter.InvertOrder(), type);
  }
}

TEST_F(KvDatumConverterTest, LocalPairsAndUnknownTypesLeavePointsAlone) {
  CKvMapProjection local("NON-UTM"), utm("UTM-32");
  C fromObjects(&utm, &local);  // the object form tests the systems' names
  C unknownType(kEd50Utm32Seven.c_str(), kDhdnGk3.c_str());
  unknownType.SetConversionType(static_cast<C::ETypeOfConversion>(4));
  C plain("NON-UTM", kEd50Utm32Seven.c_str()), padded(" NON-UTM ", kEd50Utm32Seven.c_str());
  for (const C* converter : {&plain, &padded, &fromObjects, &unknownType}) {
    double x = 532000, y = 5561000, h = 7;
    converter->Convert(x, y, h);
    converter->InvConvert(x, y);
    EXPECT_EQ(x, 532000);
    EXPECT_EQ(y, 5561000);
    EXPECT_EQ(h, 7);
  }
}

TEST_F(KvDatumConverterTest, CopiesShareCallersSystemsAndDuplicateOwnedOnes) {
  CKvMapProjection source(kEd50Utm32Seven), target(kDhdnGk3);
  C referring(&source, &target);
  C referringCopy(referring), toReferring(kEd50Geo3.c_str(), "UTM-32");
  toReferring = referringCopy;
  EXPECT_EQ(referringCopy.GetMapProjection(true), &source);
  EXPECT_EQ(toReferring.GetMapProjection(false), &target);

  C* owning = new C(kEd50Utm32Seven.c_str(), kDhdnGk3.c_str());
  C owningCopy(*owning), assigned("LONG/LAT", "UTM-32");
  assigned = *owning;
  C& same = assigned;
  assigned = same;  // self-assignment keeps the systems
  EXPECT_NE(owningCopy.GetMapProjection(true), owning->GetMapProjection(true));
  EXPECT_NE(assigned.GetMapProjection(false), owning->GetMapProjection(false));
  delete owning;  // AddressSanitizer reports any later use of its systems
  for (const C* converter : {&referring, &toReferring, &owningCopy, &assigned}) {
    double x = 532000, y = 5561000;
    converter->Convert(x, y);
    EXPECT_NEAR(x, 3532005.2518, kMm);  // row b of the first test
    EXPECT_NEAR(y, 5562583.6038, kMm);
  }
}

TEST_F(KvDatumConverterTest, SystemsWithoutEngineNeverCrash) {
  // A null object stands for a system without engine: bypassed, writes nothing.
  CKvMapProjection utm("UTM-32");
  C nulls(nullptr, &utm);
  EXPECT_TRUE(nulls.GetBypassXYZ());
  nulls.SetConversionType(C::eGeoToProj);
  double x = 9, y = 56, h = 5;
  nulls.Convert(x, y);
  EXPECT_NEAR(x, 500000, 1e-3);
  EXPECT_NEAR(y, 6206079.587, 1e-3);
  nulls.InvConvert(x, y);
  EXPECT_NEAR(x, 9, 1e-9);
  EXPECT_NEAR(y, 56, 1e-9);

  // Forcing the geocentric step through with a shift still stays defined.
  double shift[7] = {1, 2, 3, 0, 0, 0, 0};
  CKvMapProjection* none = nullptr;
  C both(none, none), unresolved("No such system", "Nor this one");
  both.SetDatumShift(CKvCartDef::e3Parameter, shift, true);
  EXPECT_FALSE(both.GetBypassXYZ());
  unresolved.SetDatumShift(CKvCartDef::e3Parameter, shift, false);
  unresolved.SetConversionType(C::eGeoToGeo);
  for (const C* converter : {&both, &unresolved}) {
    x = 1, y = 2;
    converter->Convert(x, y, h);
    EXPECT_EQ(x, 1);
    EXPECT_EQ(y, 2);
  }
}

TEST_F(KvDatumConverterTest, CreationFromStringsRaisesForGenericUtmAndNull) {
  EXPECT_THROW(C("UTM", "UTM-32"), std::out_of_range);
  EXPECT_THROW(C("UTM-32", " UTM "), std::out_of_range);
  EXPECT_THROW(C(static_cast<const char*>(nullptr), "UTM-32"), std::invalid_argument);
  EXPECT_THROW(C("UTM-32", static_cast<const char*>(nullptr)), std::invalid_argument);
}

}  // namespace
