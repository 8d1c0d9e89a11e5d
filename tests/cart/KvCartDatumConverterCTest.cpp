// Checks the datum-converter entries as called from C in
// KvCartDatumConverterCTest.c.
#include <gtest/gtest.h>

#include <string>

#include "TestCatalogue.h"

// Defined in KvCartDatumConverterCTest.c.
extern "C" {
int kvdc_create_destroy(const char* source, const char* target, int* kept, int destroyed[2],
                        int returned[2]);
int kvdc_convert(const char* source, const char* target, int type, const double p[3],
                 const double xyz[3], double out[10], double shifted[6], int types[2]);
void kvdc_settings(const char* source, const char* target, int type, double* values, int sourceFlag,
                   const double xyz[3], int out[6], double shifted[3]);
}

namespace {

const std::string kEd50Geo7 =
    "GEOGCS[\"ED50\",DATUM[\"ED50\",SPHEROID[\"International 1924\",6378388,297],"
    "TOWGS84[-89.5,-93.8,-123.1,0,0,-0.156,1.2]],PRIMEM[\"Greenwich\",0],"
    "UNIT[\"Degree\",0.0174532925199433]]";
const std::string kDhdnGeo7 =
    "GEOGCS[\"DHDN\",DATUM[\"DHDN\",SPHEROID[\"Bessel 1841\",6377397.155,299.1528128],"
    "TOWGS84[598.1,73.7,418.2,0.202,0.045,-2.455,6.7]],PRIMEM[\"Greenwich\",0],"
    "UNIT[\"Degree\",0.0174532925199433]]";
const std::string kEd50Utm32Three =
    "PROJCS[\"ED50 UTM 32\",GEOGCS[\"ED50\",DATUM[\"ED50\",SPHEROID[\"International 1924\","
    "6378388,297],TOWGS84[-87,-98,-121,0,0,0,0]],PRIMEM[\"Greenwich\",0],"
    "UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
    "PARAMETER[\"False_Easting\",500000],PARAMETER[\"False_Northing\",0],"
    "PARAMETER[\"Central_Meridian\",9],PARAMETER[\"Scale_Factor\",0.9996],"
    "PARAMETER[\"Latitude_Of_Origin\",0],UNIT[\"Meter\",1]]";

constexpr double kMm = 1e-3;
constexpr double kMmInDegrees = 1e-3 / 111319.49;

TEST(CEntryDatumConverter, CreationFailsOnlyByAnExceptionAndDestroyNullsTheHandle) {
  kvtest::EnsureCatalogue();
  struct Row {
    const char* source;
    const char* target;
    int status, kept;
  };
  const Row rows[] = {
      {"UTM", "UTM-32", -1, 1},  // "Can't use generic UTM"
      {"UTM-32", nullptr, -1, 1},
      {"No such system", "Nor this", 0, 0},  // systems without engine
      {"UTM-32", "LONG/LAT", 0, 0},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.source);
    int kept = 99, destroyed[2] = {99, 99}, returned[2] = {99, 99};
    EXPECT_EQ(kvdc_create_destroy(row.source, row.target, &kept, destroyed, returned), row.status);
    EXPECT_EQ(kept, row.kept);
    // A created handle is destroyed once; the nulled variable then gives -1.
    EXPECT_EQ(destroyed[0], row.kept ? -1 : 0);
    EXPECT_EQ(returned[0], destroyed[0]);
    EXPECT_EQ(destroyed[1], -1);
    EXPECT_EQ(returned[1], -1);
  }
}

TEST(CEntryDatumConverter, ConvertsAndShiftsBothWays) {
  kvtest::EnsureCatalogue();
  // out[]: CONVERTXY, its INVCONVERTXY, CONVERTXYH, its INVCONVERTXYH.
  const double xyz[3] = {4e6, 6e5, 4.9e6};
  double out[10], shifted[6];
  int types[2];
  // U = +proj=pipeline +step +inv +proj=utm +zone=32 +ellps=intl +step +proj=cart +ellps=intl
  //   +step +proj=helmert +x=-87 +y=-98 +z=-121 +step +inv +proj=cart +ellps=WGS84
  //   +step +proj=utm +zone=32 +ellps=WGS84
  // echo "532000 5561000 0" | cct -d 6 $U; back in 2D: echo "E N 0" | cct -d 6 -I $U
  const double p[3] = {532000, 5561000, 0}, t[3] = {-87, -98, -121};
  ASSERT_EQ(kvdc_convert(kEd50Utm32Three.c_str(), "UTM-32", 0, p, xyz, out, shifted, types), 0);
  const double utm[10] = {
      531916.653022,  5560798.030496, 532000.000499, 5561000.000547, 531916.653022,
      5560798.030496, 38.951300,      532000,        5561000,        0};
  for (int i = 0; i < 10; ++i) EXPECT_NEAR(out[i], utm[i], i < 2 || (i > 3 && i < 7) ? kMm : 1e-5);
  for (int i = 0; i < 3; ++i) {  // the translations alone, the target having no shift
    EXPECT_EQ(shifted[i], xyz[i] + t[i]);
    EXPECT_EQ(shifted[3 + i], xyz[i] - t[i]);
  }
  EXPECT_EQ(types[0], 0);
  EXPECT_EQ(types[1], 1);

  // G = +proj=pipeline +step +proj=cart +ellps=intl +step H7e +step +inv H7d +step +inv
  //   +proj=cart +ellps=bessel, with
  //   H7e = +proj=helmert +x=-89.5 +y=-93.8 +z=-123.1 +rx=0 +ry=0 +rz=-0.156 +s=1.2
  //         +convention=position_vector
  //   H7d = +proj=helmert +x=598.1 +y=73.7 +z=418.2 +rx=0.202 +ry=0.045 +rz=-2.455 +s=6.7
  //         +convention=position_vector
  // echo "13.4 52.5 H" | cct -d 10 $G, H = 0 and 100; back in 2D: echo "LON LAT 0" | cct
  //   -d 10 -I $G; shifts: echo "4000000 600000 4900000" | cct -d 6 +proj=pipeline
  //   +step H7e +step +inv H7d, and +step H7d +step +inv H7e
  const double q[3] = {13.4, 52.5, 100};
  ASSERT_EQ(kvdc_convert(kEd50Geo7.c_str(), kDhdnGeo7.c_str(), 3, q, xyz, out, shifted, types), 0);
  const double geo[10] = {13.4006601427, 52.5007130560, 13.4, 52.4999999963, 13.4006601435,
                          52.5007130448, 96.3452879330, 13.4, 52.5,          100};
  for (int i = 0; i < 10; ++i) EXPECT_NEAR(out[i], geo[i], i == 6 || i == 9 ? kMm : kMmInDegrees);
  const double dhdn[6] = {3999282.650411, 599878.574316, 4899432.038893,
                          4000717.355638, 600121.417898, 4900567.964246};
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(shifted[i], dhdn[i], 1e-6) << i;
  EXPECT_EQ(types[0], 2);
  EXPECT_EQ(types[1], 2);
}

TEST(CEntryDatumConverter, SettingsForwardTheirArguments) {
  kvtest::EnsureCatalogue();
  // Both ends WGS 84 without shift: bypassed as created.
  const double xyz[3] = {1e6, 0, 0};
  double values[3] = {10, 20, 30};
  struct Row {
    int sourceFlag;
    double shifted[3];
  };
  const Row rows[] = {
      {0, {1e6 - 10, -20, -30}},  // the target's shift, applied backwards
      {7, {1e6 + 10, 20, 30}},    // any non-zero flag is the source
  };
  for (const Row& row : rows) {
    int out[6] = {};
    double shifted[3] = {};
    kvdc_settings("LONG/LAT", "UTM-32", 1, values, row.sourceFlag, xyz, out, shifted);
    // Bypassed as created and after BYPASSXYZ; not once the shifts differ;
    // RESETBYPASSXYZ restores the created value; INVERTORDER turns 1 to 2 and back.
    const int expected[6] = {1, 1, 0, 1, 2, 1};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(out[i], expected[i]) << i;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(shifted[i], row.shifted[i]) << i;
  }
}

}  // namespace
