#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <string>

#include "TestCatalogue.h"
#include "catalogue/KvLambert2SPProjection.h"
#include "datum/KvDatumConverter.h"
#include "datum/KvDatumShift.h"
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

std::string TransverseMercator(const std::string& geogcs, double fe, double cm, double k) {
  char params[256];
  std::snprintf(params, sizeof params,
                "PARAMETER[\"False_Easting\",%.16g],PARAMETER[\"False_Northing\",0],"
                "PARAMETER[\"Central_Meridian\",%.16g],PARAMETER[\"Scale_Factor\",%.16g],"
                "PARAMETER[\"Latitude_Of_Origin\",0],",
                fe, cm, k);
  return "PROJCS[\"Test TM\"," + geogcs + ",PROJECTION[\"Transverse_Mercator\"]," + params +
         "UNIT[\"Meter\",1]]";
}

const std::string kEd50Geo7 = Geogcs(kIntl, kEd50Seven);
const std::string kDhdnGeo7 = Geogcs(kBessel, kDhdnSeven);
const std::string kEd50Geo3 = Geogcs(kIntl, kEd50Three);
const std::string kEd50Utm32Seven = TransverseMercator(kEd50Geo7, 500000, 9, 0.9996);
const std::string kEd50Utm32Three = TransverseMercator(kEd50Geo3, 500000, 9, 0.9996);
const std::string kDhdnGk3 = TransverseMercator(kDhdnGeo7, 3500000, 9, 1);

// Geographic differences as metres on the ground.
constexpr double kMetresPerDegree = 6378137.0 * 0.017453292519943295;
constexpr double kMm = 1e-3;

void ExpectSameGroundPoint(double lon, double lat, double elon, double elat) {
  EXPECT_NEAR((lat - elat) * kMetresPerDegree, 0.0, kMm) << "latitude " << lat;
  EXPECT_NEAR((lon - elon) * kMetresPerDegree * std::cos(elat * 0.017453292519943295), 0.0, kMm)
      << "longitude " << lon;
}

struct SPoint3 {
  double x, y, h;
};

class KvDatumConverterTest : public ::testing::Test {
 protected:
  void SetUp() override { kvtest::EnsureCatalogue(); }
};

TEST_F(KvDatumConverterTest, SevenParameterShiftBetweenGeographicSystemsMatchesHelmertPipeline) {
  // ED50-like on International 1924 to DHDN-like on Bessel 1841, both with
  // seven parameters.  Expected values:
  // echo "LON LAT H" | cct -d 10 +proj=pipeline +step +proj=cart +ellps=intl
  //   +step +proj=helmert +x=-89.5 +y=-93.8 +z=-123.1 +rx=0 +ry=0 +rz=-0.156 +s=1.2
  //         +convention=position_vector
  //   +step +inv +proj=helmert +x=598.1 +y=73.7 +z=418.2 +rx=0.202 +ry=0.045 +rz=-2.455
  //         +s=6.7 +convention=position_vector
  //   +step +inv +proj=cart +ellps=bessel
  // (cross-checked with mpmath and an iterated geocentric inverse).
  const struct {
    SPoint3 in, out;
  } rows[] = {
      {{9, 50, 0}, {8.9998992176, 50.0003357155, -4.7104136394}},
      {{-3.5, 40.4, 0}, {-3.5017787696, 40.3988480783, 23.9499665136}},
      {{13.4, 52.5, 100}, {13.4006601435, 52.5007130448, 96.3452879330}},
      {{24.9, 60.2, 0}, {24.9032169026, 60.2017570673, 22.3602267047}},
  };
  C converter(kEd50Geo7.c_str(), kDhdnGeo7.c_str());
  converter.SetConversionType(C::eGeoToGeo);
  EXPECT_FALSE(converter.GetBypassXYZ());
  for (const auto& row : rows) {
    SCOPED_TRACE(row.in.y);
    double x = row.in.x, y = row.in.y, h = row.in.h;
    converter.Convert(x, y, h);
    ExpectSameGroundPoint(x, y, row.out.x, row.out.y);
    EXPECT_NEAR(h, row.out.h, kMm);
    // The same point backwards lands on the input.
    converter.InvConvert(x, y, h);
    ExpectSameGroundPoint(x, y, row.in.x, row.in.y);
    EXPECT_NEAR(h, row.in.h, kMm);
  }
}

TEST_F(KvDatumConverterTest, SevenParameterShiftBetweenProjectedSystemsMatchesHelmertPipeline) {
  // ED50-like UTM zone 32 to DHDN-like Gauss-Krüger zone 3 (both transverse
  // Mercator on central meridian 9, within 2 degrees of it).  Expected:
  // echo "E N 0" | cct -d 4 +proj=pipeline +step +inv +proj=utm +zone=32 +ellps=intl
  //   +step +proj=cart +ellps=intl +step <ED50 helmert as above>
  //   +step +inv <DHDN helmert as above> +step +inv +proj=cart +ellps=bessel
  //   +step +proj=tmerc +lon_0=9 +k=1 +x_0=3500000 +ellps=bessel
  const struct {
    SPoint3 in, out;
  } rows[] = {
      {{532000, 5561000, 0}, {3532005.2518, 5562583.6038, -4.8526}},
      {{434000, 5273000, 0}, {3433968.7283, 5274468.9553, -4.8005}},
      {{612000, 6019000, 0}, {3612033.0395, 6020765.2361, -0.1316}},
  };
  C converter(kEd50Utm32Seven.c_str(), kDhdnGk3.c_str());
  for (const auto& row : rows) {
    SCOPED_TRACE(row.in.y);
    double x = row.in.x, y = row.in.y, h = row.in.h;
    converter.Convert(x, y, h);
    EXPECT_NEAR(x, row.out.x, kMm);
    EXPECT_NEAR(y, row.out.y, kMm);
    EXPECT_NEAR(h, row.out.h, kMm);
    // The two-value form starts from height 0 as well.
    double x2 = row.in.x, y2 = row.in.y;
    converter.Convert(x2, y2);
    EXPECT_EQ(x2, x);
    EXPECT_EQ(y2, y);
  }
}

TEST_F(KvDatumConverterTest, MixedEndsConvertBetweenProjectedAndGeographic) {
  // Projected ED50-like UTM 32 to geographic DHDN-like, and geographic
  // ED50-like to DHDN-like Gauss-Krüger zone 3: the pipelines above cut after
  // the inverse cart step, or started at the forward one.
  C toGeographic(kEd50Utm32Seven.c_str(), kDhdnGeo7.c_str());
  toGeographic.SetConversionType(C::eProjToGeo);
  double x = 532000, y = 5561000;
  toGeographic.Convert(x, y);
  ExpectSameGroundPoint(x, y, 9.4483185587, 50.1996780244);
  toGeographic.InvConvert(x, y);
  EXPECT_NEAR(x, 532000, kMm);
  EXPECT_NEAR(y, 5561000, kMm);

  C toProjected(kEd50Geo7.c_str(), kDhdnGk3.c_str());
  toProjected.SetConversionType(C::eGeoToProj);
  x = 9.5;
  y = 50.2;
  toProjected.Convert(x, y);
  EXPECT_NEAR(x, 3535692.9947, kMm);
  EXPECT_NEAR(y, 5562683.7329, kMm);
}

TEST_F(KvDatumConverterTest, ThreeParameterShiftToWgs84MatchesHelmertPipeline) {
  // ED50 translations to WGS 84 (the catalogue systems carry no shift).
  // Geographic: echo "LON LAT H" | cct -d 10 +proj=pipeline +step +proj=cart
  //   +ellps=intl +step +proj=helmert +x=-87 +y=-98 +z=-121
  //   +step +inv +proj=cart +ellps=WGS84
  const struct {
    SPoint3 in, out;
  } geographic[] = {
      {{9, 50, 0}, {8.9988397954, 49.9991886993, 39.6787708206}},
      {{-3.5, 40.4, 0}, {-3.5012147629, 40.3988303043, 72.7000535149}},
      {{13.4, 52.5, 100}, {13.3988931383, 52.4993095646, 132.2225356987}},
      {{24.9, 60.2, 0}, {24.8990577558, 60.1996877381, 17.5324834790}},
  };
  C toLongLat(kEd50Geo3.c_str(), "LONG/LAT");
  toLongLat.SetConversionType(C::eGeoToGeo);
  for (const auto& row : geographic) {
    SCOPED_TRACE(row.in.y);
    double x = row.in.x, y = row.in.y, h = row.in.h;
    toLongLat.Convert(x, y, h);
    ExpectSameGroundPoint(x, y, row.out.x, row.out.y);
    EXPECT_NEAR(h, row.out.h, kMm);
  }
  // Projected: the same with +step +inv +proj=utm +zone=32 +ellps=intl first
  // and +step +proj=utm +zone=32 +ellps=WGS84 last, cct -d 4.
  const struct {
    SPoint3 in, out;
  } projected[] = {
      {{532000, 5561000, 0}, {531916.6530, 5560798.0305, 38.9513}},
      {{434000, 5273000, 0}, {433917.3005, 5272799.9001, 44.4772}},
      {{612000, 6019000, 0}, {611916.2643, 6018795.4113, 32.0249}},
  };
  C toUtm(kEd50Utm32Three.c_str(), "UTM-32");
  for (const auto& row : projected) {
    SCOPED_TRACE(row.in.y);
    double x = row.in.x, y = row.in.y, h = row.in.h;
    toUtm.Convert(x, y, h);
    EXPECT_NEAR(x, row.out.x, kMm);
    EXPECT_NEAR(y, row.out.y, kMm);
    EXPECT_NEAR(h, row.out.h, kMm);
  }
}

TEST_F(KvDatumConverterTest, CatalogueLambertSystemOnClarke1866ConvertsToUtm) {
  // A Lambert conformal conic 2SP record on Clarke 1866 (no TOWGS84) to
  // UTM zone 14 on WGS 84: a change of ellipsoid alone, then with a
  // three-parameter shift set on the source.  Expected:
  // echo "E N 0" | cct -d 4 +proj=pipeline +step +inv +proj=lcc
  //   +lat_1=28.383333333333333 +lat_2=30.283333333333333 +lat_0=27.833333333333333
  //   +lon_0=-99 +x_0=609601.2192 +y_0=0 +ellps=clrk66 +step +proj=cart +ellps=clrk66
  //   [+step +proj=helmert +x=-8 +y=160 +z=176]
  //   +step +inv +proj=cart +ellps=WGS84 +step +proj=utm +zone=14 +ellps=WGS84
  kvtest::ScopedRecord record(new CKvLambert2SPProjection("KvDc Lambert test zone", "NAD27", "CC",
                                                          28 + 23 / 60.0, 30 + 17 / 60.0, -99,
                                                          27 + 50 / 60.0, 609601.2192, 0));
  C converter("KvDc Lambert test zone", "UTM-14");
  EXPECT_FALSE(converter.GetBypassXYZ());
  const struct {
    SPoint3 in, ellipsoidOnly, shifted;
  } rows[] = {
      {{903000, 77600, 0},
       {793395.4141, 3156012.5846, 15.3772},
       {793364.9638, 3156242.2470, -39.7519}},
      {{450000, 250000, 0},
       {340438.0051, 3328482.6634, 9.7917},
       {340403.9016, 3328713.5274, -36.7878}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.in.x);
    double x = row.in.x, y = row.in.y, h = row.in.h;
    converter.Convert(x, y, h);
    EXPECT_NEAR(x, row.ellipsoidOnly.x, kMm);
    EXPECT_NEAR(y, row.ellipsoidOnly.y, kMm);
    EXPECT_NEAR(h, row.ellipsoidOnly.h, kMm);
  }
  double nad27[3] = {-8, 160, 176};
  converter.SetDatumShift(CKvCartDef::e3Parameter, nad27, true);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.in.x);
    double x = row.in.x, y = row.in.y, h = row.in.h;
    converter.Convert(x, y, h);
    EXPECT_NEAR(x, row.shifted.x, kMm);
    EXPECT_NEAR(y, row.shifted.y, kMm);
    EXPECT_NEAR(h, row.shifted.h, kMm);
  }
}

TEST_F(KvDatumConverterTest, ConvertThenInvConvertReturnsThePoint) {
  // In three dimensions translations invert exactly; what is left is the
  // single Bowring step of each geocentric-to-geographic conversion (up to
  // about 1.5 micrometres each, so 3 for the pair) and the projections' own
  // round trips.  Rotations add about r^2 x 6.4e6 m, because the backward
  // shift uses the transposed matrix: 4e-6 m for ED50's 0.156 arc-seconds,
  // 0.5 mm for DHDN's 2.46.
  struct SRow {
    std::string source, target;
    C::ETypeOfConversion type;
    SPoint3 point;
    double metres;
  };
  const SRow rows[] = {
      {kEd50Utm32Three, "UTM-32", C::eProjToProj, {532000, 5561000, 0}, 5e-6},
      {kEd50Utm32Three, "UTM-32", C::eProjToProj, {612000, 6019000, 250}, 5e-6},
      {kEd50Geo3, "LONG/LAT", C::eGeoToGeo, {-70.6, -33.4, 500}, 5e-6},
      {kEd50Geo3, "LONG/LAT", C::eGeoToGeo, {151.2, 75.1, -20}, 5e-6},
      {kEd50Utm32Seven, "UTM-32", C::eProjToProj, {434000, 5273000, 0}, 1e-5},
      {kEd50Utm32Seven, kDhdnGk3, C::eProjToProj, {434000, 5273000, 0}, 1e-3},
  };
  for (const SRow& row : rows) {
    SCOPED_TRACE(row.point.y);
    C converter(row.source.c_str(), row.target.c_str());
    converter.SetConversionType(row.type);
    double x = row.point.x, y = row.point.y, h = row.point.h;
    converter.Convert(x, y, h);
    EXPECT_GT(std::fabs(h - row.point.h), 1.0);  // it did go through the shift
    converter.InvConvert(x, y, h);
    if (row.type == C::eGeoToGeo) {
      const double cosLat = std::cos(row.point.y * 0.017453292519943295);
      EXPECT_NEAR((x - row.point.x) * kMetresPerDegree * cosLat, 0.0, row.metres);
      EXPECT_NEAR((y - row.point.y) * kMetresPerDegree, 0.0, row.metres);
    } else {
      EXPECT_NEAR(x, row.point.x, row.metres);
      EXPECT_NEAR(y, row.point.y, row.metres);
    }
    EXPECT_NEAR(h, row.point.h, row.metres);
  }
}

TEST_F(KvDatumConverterTest, DatumShiftRunsSourceForwardThenTargetBackward) {
  // echo "4000000 600000 4900000" | cct -d 6 +proj=pipeline
  //   +step <ED50 helmert> +step +inv <DHDN helmert>       (DatumShift)
  //   +step <DHDN helmert> +step +inv <ED50 helmert>       (InvDatumShift)
  // with the helmert steps of the geographic test above.
  C converter(kEd50Geo7.c_str(), kDhdnGeo7.c_str());
  double X = 4000000, Y = 600000, Z = 4900000;
  EXPECT_EQ(converter.DatumShift(X, Y, Z), CKvCartDef::e7Parameter);
  EXPECT_NEAR(X, 3999282.650411, 1e-6);
  EXPECT_NEAR(Y, 599878.574316, 1e-6);
  EXPECT_NEAR(Z, 4899432.038893, 1e-6);
  X = 4000000, Y = 600000, Z = 4900000;
  EXPECT_EQ(converter.InvDatumShift(X, Y, Z), CKvCartDef::e7Parameter);
  EXPECT_NEAR(X, 4000717.355638, 1e-6);
  EXPECT_NEAR(Y, 600121.417898, 1e-6);
  EXPECT_NEAR(Z, 4900567.964246, 1e-6);

  // The result is the type of the shift applied last.
  C toWgs84(kEd50Geo3.c_str(), "LONG/LAT");
  X = 1, Y = 2, Z = 3;
  EXPECT_EQ(toWgs84.DatumShift(X, Y, Z), CKvCartDef::eNoShift);
  EXPECT_EQ(X, 1 - 87.0);
  EXPECT_EQ(toWgs84.InvDatumShift(X, Y, Z), CKvCartDef::e3Parameter);
  EXPECT_EQ(X, 1.0);
}

TEST_F(KvDatumConverterTest, ReadsTowgs84RotationsInArcSecondsAndScaleInPpm) {
  // Position vector, one arc-second about x: Y' = Y - rx Z.
  C rotation(Geogcs(kIntl, "TOWGS84[0,0,0,1,0,0,0]").c_str(), "LONG/LAT");
  double X = 0, Y = 0, Z = 1e6;
  rotation.DatumShift(X, Y, Z);
  EXPECT_NEAR(Y, -4.84813681109536e-6 * 1e6, 1e-15);  // pi / 648000 rad
  EXPECT_EQ(X, 0.0);
  EXPECT_EQ(Z, 1e6);

  C scale(Geogcs(kIntl, "TOWGS84[0,0,0,0,0,0,1]").c_str(), "LONG/LAT");
  X = 1e6, Y = 0, Z = 0;
  scale.DatumShift(X, Y, Z);
  EXPECT_NEAR(X, 1e6 + 1, 1e-9);
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

  // Bypassed, the height is not touched, and the point only changes system.
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
  // A target of one arc-second about z, already in radians.
  double values[7] = {0, 0, 0, 0, 0, 4.84813681109536e-6, 0};
  converter.SetDatumShift(CKvCartDef::e7Parameter, values, false);
  EXPECT_FALSE(converter.GetBypassXYZ());
  // The source keeps its ED50 shift; undo it to see the target's alone.
  double sourceNone[7] = {};
  converter.SetDatumShift(CKvCartDef::eNoShift, sourceNone, true);
  double X = 1e6, Y = 0, Z = 0;
  converter.DatumShift(X, Y, Z);
  EXPECT_NEAR(Y, -4.84813681109536, 1e-9);  // backward, transposed: Y' = -rz X
  EXPECT_NEAR(X, 1e6, 1e-4);

  // BypassXYZ and ResetBypassXYZ restore the constructed value, not the
  // recomputed one.
  converter.BypassXYZ();
  EXPECT_TRUE(converter.GetBypassXYZ());
  EXPECT_TRUE(converter.ResetBypassXYZ());
  EXPECT_TRUE(converter.GetBypassXYZ());

  // Equal shifts again on the same ellipsoid: bypassed.
  converter.SetDatumShift(CKvCartDef::eNoShift, nullptr, false);
  EXPECT_TRUE(converter.GetBypassXYZ());
}

TEST_F(KvDatumConverterTest, SetDatumShiftOfThreeValuesKeepsTheOtherFour) {
  C converter("LONG/LAT", "UTM-32");
  double seven[7] = {1, 2, 3, 0, 0, 1e-5, 1e-6};
  converter.SetDatumShift(CKvCartDef::e7Parameter, seven, true);
  double three[3] = {10, 20, 30};
  converter.SetDatumShift(CKvCartDef::e3Parameter, three, true);
  double X = 1e6, Y = 0, Z = 0;
  converter.DatumShift(X, Y, Z);
  EXPECT_EQ(X, 1e6 + 10);  // translations only
  EXPECT_EQ(Y, 20.0);
  // Back to seven parameters without new values: the rotation and scale
  // stored before are still there.
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
  // Inverted, Convert is the former InvConvert (values from the test above).
  double x = 9.4483185587, y = 50.1996780244;
  converter.Convert(x, y);
  EXPECT_NEAR(x, 532000, 2e-3);  // the input has 1e-10 degrees, about 0.1 mm
  EXPECT_NEAR(y, 5561000, 2e-3);

  EXPECT_EQ(converter.InvertOrder(), C::eProjToGeo);
  EXPECT_EQ(converter.GetMapProjection(true), source);
  x = 532000, y = 5561000;
  converter.Convert(x, y);
  ExpectSameGroundPoint(x, y, 9.4483185587, 50.1996780244);

  converter.SetConversionType(C::eProjToProj);
  EXPECT_EQ(converter.InvertOrder(), C::eProjToProj);
  converter.SetConversionType(C::eGeoToGeo);
  EXPECT_EQ(converter.InvertOrder(), C::eGeoToGeo);
}

TEST_F(KvDatumConverterTest, LocalPairsAndUnknownTypesLeavePointsAlone) {
  for (const char* local : {"NON-UTM", " NON-UTM "}) {
    C converter(local, kEd50Utm32Seven.c_str());
    double x = 532000, y = 5561000, h = 7;
    converter.Convert(x, y, h);
    converter.InvConvert(x, y);
    EXPECT_EQ(x, 532000);
    EXPECT_EQ(y, 5561000);
    EXPECT_EQ(h, 7);
  }
  // The object form tests the systems' names.
  CKvMapProjection local("NON-UTM"), utm("UTM-32");
  C objects(&utm, &local);
  double x = 532000, y = 5561000;
  objects.Convert(x, y);
  EXPECT_EQ(x, 532000);

  C converter(kEd50Utm32Seven.c_str(), kDhdnGk3.c_str());
  converter.SetConversionType(static_cast<C::ETypeOfConversion>(4));
  converter.Convert(x, y);
  converter.InvConvert(x, y);
  EXPECT_EQ(x, 532000);
  EXPECT_EQ(y, 5561000);
}

TEST_F(KvDatumConverterTest, ObjectFormRefersToTheCallersSystemsAndCopiesShareThem) {
  CKvMapProjection source(kEd50Utm32Seven), target(kDhdnGk3);
  C converter(&source, &target);
  EXPECT_EQ(converter.GetMapProjection(true), &source);
  EXPECT_FALSE(converter.GetBypassXYZ());
  {
    C copy(converter);
    C assigned(kEd50Geo3.c_str(), "UTM-32");
    assigned = copy;
    EXPECT_EQ(assigned.GetMapProjection(false), &target);
  }  // no system is deleted here (AddressSanitizer would report it below)
  double x = 532000, y = 5561000;
  converter.Convert(x, y);
  EXPECT_NEAR(x, 3532005.2518, kMm);  // the projected pipeline above
  EXPECT_NEAR(y, 5562583.6038, kMm);
}

TEST_F(KvDatumConverterTest, CopyOfAnOwningConverterOwnsItsOwnSystems) {
  C* original = new C(kEd50Utm32Seven.c_str(), kDhdnGk3.c_str());
  C copy(*original);
  EXPECT_NE(copy.GetMapProjection(true), original->GetMapProjection(true));
  C assigned("LONG/LAT", "UTM-32");
  assigned = *original;
  EXPECT_NE(assigned.GetMapProjection(false), original->GetMapProjection(false));
  C& same = assigned;
  assigned = same;  // self-assignment keeps the systems
  delete original;
  for (C* converter : {&copy, &assigned}) {
    double x = 532000, y = 5561000;
    converter->Convert(x, y);
    EXPECT_NEAR(x, 3532005.2518, kMm);
    EXPECT_NEAR(y, 5562583.6038, kMm);
  }
}

TEST_F(KvDatumConverterTest, SystemsWithoutEngineNeverCrash) {
  // Null objects stand for systems without engine: the geocentric step is
  // bypassed and their transforms write nothing.
  CKvMapProjection utm("UTM-32");
  C nulls(nullptr, &utm);
  EXPECT_TRUE(nulls.GetBypassXYZ());
  EXPECT_EQ(nulls.GetMapProjection(true), nullptr);
  nulls.SetConversionType(C::eGeoToProj);
  double x = 9, y = 56;
  nulls.Convert(x, y);
  EXPECT_NEAR(x, 500000, 1e-3);
  EXPECT_NEAR(y, 6206079.587, 1e-3);
  nulls.InvConvert(x, y);
  EXPECT_NEAR(x, 9, 1e-9);
  EXPECT_NEAR(y, 56, 1e-9);

  // Forcing the geocentric step through with a shift still stays defined.
  double shift[7] = {1, 2, 3, 0, 0, 0, 0};
  CKvMapProjection* none = nullptr;
  C both(none, none);
  both.SetDatumShift(CKvCartDef::e3Parameter, shift, true);
  EXPECT_FALSE(both.GetBypassXYZ());
  double h = 5;
  x = 1, y = 2;
  both.Convert(x, y, h);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  C unresolved("No such system", "Nor this one");
  unresolved.SetDatumShift(CKvCartDef::e3Parameter, shift, false);
  unresolved.SetConversionType(C::eGeoToGeo);
  unresolved.Convert(x, y, h);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
}

TEST_F(KvDatumConverterTest, CreationFromStringsRaisesForGenericUtmAndNull) {
  EXPECT_THROW(C("UTM", "UTM-32"), std::out_of_range);
  EXPECT_THROW(C("UTM-32", " UTM "), std::out_of_range);
  EXPECT_THROW(C(static_cast<const char*>(nullptr), "UTM-32"), std::invalid_argument);
  EXPECT_THROW(C("UTM-32", static_cast<const char*>(nullptr)), std::invalid_argument);
}

}  // namespace
