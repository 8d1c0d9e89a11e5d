#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "TestCatalogue.h"

// Defined in KvCartCartographyCTest.c.
extern "C" {
int kvcc_create_destroy(const char* coordSys, double lon0, double lat0, double orientation,
                        int* kept, int destroyed[2]);
void kvcc_members(const char* coordSys, double lon0, double lat0, double orientation, double lon,
                  double lat, double x, double y, char* name, int nameSize, char* wkt, int wktSize,
                  char* mpName, int status[3], double out[16]);
int kvcc_proj4(const char* coordSys, double* towgs84, int count, char* buffer, int size);
}

namespace {

TEST(CEntryLocalGrid, CreationFailsOnlyByAnExceptionAndDestroyNullsTheHandle) {
  kvtest::EnsureCatalogue();
  struct Row {
    const char* coordSys;
    int status, kept, destroyed0, destroyed1;
  };
  const Row rows[] = {
      {"UTM-32", 0, 0, 0, -1},         {"UTM", 0, 0, 0, -1},  // the zone of the origin
      {"No such system", 0, 0, 0, -1},                        // a grid without engine
      {" UTM ", -1, 1, -1, -1},                               // "Can't use generic UTM"
      {nullptr, -1, 1, -1, -1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.coordSys ? row.coordSys : "(null)");
    int kept = 99, destroyed[2] = {99, 99};
    EXPECT_EQ(kvcc_create_destroy(row.coordSys, 9, 56, 30, &kept, destroyed), row.status);
    EXPECT_EQ(kept, row.kept);
    EXPECT_EQ(destroyed[0], row.destroyed0);
    EXPECT_EQ(destroyed[1], row.destroyed1);
  }
}

TEST(CEntryLocalGrid, ForwardEveryMemberInItsArgumentOrder) {
  kvtest::EnsureCatalogue();
  char name[8] = "", mpName[8] = "", wkt[4096] = "";
  int status[3] = {99, 99, 99};
  double out[16] = {};
  kvcc_members("UTM-32", 12, 56, 30, 13, 55.5, 10000, 0, name, 7, wkt, 4095, mpName, status, out);
  EXPECT_EQ(status[0], 0);
  EXPECT_EQ(status[1], 0);
  EXPECT_EQ(status[2], 0);
  EXPECT_STREQ(name, "UTM-32");
  EXPECT_STREQ(mpName, "UTM-32");
  EXPECT_EQ(std::string(wkt).rfind("PROJCS[\"UTM-32\"", 0), 0u);
  // PROJ 9.1.1, P="+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 +ellps=WGS84":
  //   echo "13 55.5" | proj -f %.4f $P -> 752608.8604 6157704.9881
  // The local point (10000, 0) on the grid at (12, 56) turned by 30 degrees:
  // the origin 687071.439107 6210141.326872 and convergence 2.48782790
  // (proj -V) give, by the rotation, 695940.566281 6205521.956432, and
  //   proj -I -f %.10f $P -> 12.1386352340 55.9550181648, convergence there
  //   (proj -V) 2.60148830.
  const double trueNorth = 2.60148830 + 30 - 2.48782790, projNorth = 30 - 2.48782790;
  const struct {
    double value, tolerance;
  } expected[] = {{752608.8604, 1e-3},   {6157704.9881, 1e-3},   {13, 1e-9},    {55.5, 1e-9},
                  {695940.566281, 1e-3}, {6205521.956432, 1e-3}, {10000, 1e-6}, {0, 1e-6},
                  {12.1386352340, 1e-8}, {55.9550181648, 1e-8},  {10000, 1e-6}, {0, 1e-6},
                  {trueNorth, 1e-6},     {projNorth, 1e-7}};
  for (int i = 0; i < 14; ++i) EXPECT_NEAR(out[i], expected[i].value, expected[i].tolerance) << i;
  // The grid's object answers as a map-projection handle.
  EXPECT_EQ(out[14], out[0]);
  EXPECT_EQ(out[15], out[1]);
}

TEST(CEntryLocalGrid, CopiesTextsOnlyWhenTheyFitTheSizeWithoutTerminator) {
  kvtest::EnsureCatalogue();
  char name[8] = "x", mpName[8] = "x", wkt[8] = "x";
  int status[3] = {99, 99, 99};
  double out[16] = {};
  // "UTM-32" has 6 characters: size 6 receives it with its zero.
  kvcc_members("UTM-32", 12, 56, 30, 13, 55.5, 0, 0, name, 6, wkt, 6, mpName, status, out);
  EXPECT_EQ(status[0], 0);
  EXPECT_STREQ(name, "UTM-32");
  EXPECT_GT(status[1], 6);  // the WKT does not fit and is left alone
  EXPECT_STREQ(wkt, "x");
  std::strcpy(name, "x");
  kvcc_members("UTM-32", 12, 56, 30, 13, 55.5, 0, 0, name, 5, wkt, -1, mpName, status, out);
  EXPECT_EQ(status[0], 6);
  EXPECT_STREQ(name, "x");
  EXPECT_GT(status[1], 6);
}

TEST(CEntryLocalGrid, Convert2Proj4CopiesTheTextByTheSameRule) {
  kvtest::EnsureCatalogue();
  const std::string utm32 =
      "+proj=tmerc +lat_0=0 +lon_0=9.000000000000002 +k=0.9996 +x_0=500000 +y_0=0 +a=6378137 "
      "+b=6356752.314245179 +units=m +no_defs  no_defs <>";
  const int length = static_cast<int>(utm32.size());
  char buffer[512];

  const struct {
    const char* coordSys;
    int size, status;
    std::string buffer;
  } rows[] = {
      {"UTM-32", length, 0, utm32},
      {"UTM-32", length - 1, length, "x"},  // too small: left alone, the length returned
      {"UTM-32", -1, length, "x"},
      {"No such system", 0, 0, ""},
      {"UTM", 511, -1, "x"},  // generic "UTM" raises inside
      {nullptr, 511, -1, "x"},
  };
  for (const auto& row : rows) {
    std::strcpy(buffer, "x");
    EXPECT_EQ(kvcc_proj4(row.coordSys, nullptr, 0, buffer, row.size), row.status) << row.size;
    EXPECT_EQ(buffer, row.buffer);
  }
  double shift[] = {1, 2, 3};
  EXPECT_EQ(kvcc_proj4("UTM-32", shift, 3, buffer, 511), 0);
  EXPECT_NE(std::string(buffer).find(" +towgs84=1,2,3,0,0,0,0 +units=m "), std::string::npos);
}

}  // namespace
