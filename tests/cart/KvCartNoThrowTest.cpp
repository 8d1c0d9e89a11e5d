// No C++ exception crosses the flat interface and no entry brings the host
// down: generic "UTM", null strings, null handles and null outputs each get
// the entry's neutral result.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "KvCart.h"
#include "TestCatalogue.h"

extern "C" {
int kvct_last_error(char* buffer, int size);
int kvct_save(void);
}

namespace {

constexpr char kUnknown[] = "No such system";

}  // namespace

TEST(CEntryNoThrow, GenericUtmIsRefusedLikeNothingKnownByEveryEntry) {
  kvtest::EnsureCatalogue();
  for (const char* utm : {"UTM", " UTM ", "\tUTM\n"}) {
    SCOPED_TRACE(std::string("'") + utm + "'");
    int marker = 0, status = 99;
    void* handle = &marker;
    C_KVMP_CREATE(utm, &handle, &status);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(handle, &marker);
    C_KVDC_CREATE(utm, "LONG/LAT", &handle, &status);
    EXPECT_EQ(status, -1);
    C_KVDC_CREATE("LONG/LAT", utm, &handle, &status);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(handle, &marker);
    EXPECT_EQ(NewKvProjection(utm), nullptr);
    // The queries answer as for a name that is not there.
    EXPECT_EQ(S_GETCOORDSYSTYPE(utm), S_GETCOORDSYSTYPE(kUnknown));
    for (int (*query)(const char*) : {S_HASDATUM, S_ISVALID, S_ISLOCAL, S_ISLONGLAT, S_ISGEOREFERENCED, S_ISGEOGRAPHICAL})
      EXPECT_EQ(query(utm), 0);
    EXPECT_EQ(S_ISTYPE(utm, 15), 0);
    EXPECT_EQ(S_AREIDENTICAL(utm, "UTM-32"), 0);
    EXPECT_EQ(S_AREIDENTICAL("UTM-32", utm), 0);
    double lon = 7, lat = 8;
    S_PROJECTIONORIGIN(utm, &lon, &lat, &status);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(lon, 7);
    char buffer[64] = "kept";
    C_KVC_CONVERT2PROJ4(utm, nullptr, 0, buffer, 63, &status);
    EXPECT_EQ(status, -1);
    EXPECT_STREQ(buffer, "kept");
  }
  // The local grid reads "UTM" exactly as the zone of its origin.
  int status = 99;
  void* grid = nullptr;
  C_KVC_CREATE("UTM", &grid, &status, 9, 56, 0);
  EXPECT_EQ(status, 0);
  C_KVC_DESTROY(&grid, &status);
  C_KVC_CREATE(" UTM ", &grid, &status, 9, 56, 0);
  EXPECT_EQ(status, -1);
}

TEST(CEntryNoThrow, NullPointersGetTheNeutralResult) {
  kvtest::EnsureCatalogue();
  int status = 99;
  double x = 1, y = 2, z = 3;
  char buffer[16] = "kept";
  // Null strings.
  C_KVMP_CREATE(nullptr, nullptr, &status);
  EXPECT_EQ(status, -1);
  EXPECT_EQ(S_ISVALID(nullptr), 0);
  EXPECT_EQ(S_AREIDENTICAL(nullptr, "UTM-32"), 0);
  EXPECT_EQ(S_AREIDENTICAL("UTM-32", nullptr), 0);
  EXPECT_EQ(S_GETCOORDSYSTYPE(nullptr), S_GETCOORDSYSTYPE(kUnknown));
  S_PROJECTIONSHORTNAME(nullptr, buffer, 15, &status);
  EXPECT_EQ(status, -1);
  C_KVC_CREATE(nullptr, nullptr, &status, 0, 0, 0);
  EXPECT_EQ(status, -1);
  C_KVDC_CREATE(nullptr, "LONG/LAT", nullptr, &status);
  EXPECT_EQ(status, -1);
  CARTSETUPLINUX(nullptr, nullptr);  // does nothing
  // Null handles: nothing is written, and the status says so where there is one.
  C_KVMP_GEO2PROJ(nullptr, 9, 56, &x, &y);
  C_KVMP_XYZ2GEO(nullptr, 1, 2, 3, &x, &y, &z);
  C_KVDC_CONVERTXYH(nullptr, &x, &y, &z);
  C_KVC_XY2GEO(nullptr, 1, 2, &x, &y);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  EXPECT_EQ(z, 3);
  C_KVMP_GETNAME(nullptr, buffer, 15, &status);
  EXPECT_EQ(status, -1);
  C_KVC_GETPROJECTIONSTRING(nullptr, buffer, 15, &status);
  EXPECT_EQ(status, -1);
  EXPECT_STREQ(buffer, "kept");
  EXPECT_EQ(C_KVMP_GETCONVERGENCE(nullptr, 9, 56), 0.0);
  EXPECT_EQ(C_KVC_GETPROJECTION(nullptr), nullptr);
  EXPECT_EQ(C_KVDC_DATUMSHIFT(nullptr, &x, &y, &z), -1);
  EXPECT_EQ(C_KVDC_INVERTORDER(nullptr), -1);
  EXPECT_EQ(C_KVDC_GETBYPASSXYZ(nullptr), 0);
  C_KVMP_DESTROY(nullptr, &status);
  EXPECT_EQ(status, -1);
  C_KVMP_DESTROY(nullptr, nullptr);
  EXPECT_EQ(C_KVDC_DESTROY(nullptr, nullptr), -1);

  // Null outputs on a live object, and a null text buffer, which has room
  // for nothing.
  void* handle = nullptr;
  C_KVMP_CREATE("UTM-32", &handle, &status);
  ASSERT_EQ(status, 0);
  C_KVMP_GEO2PROJ(handle, 9, 56, nullptr, &y);
  C_KVMP_GETORIGIN(handle, &x, nullptr);
  EXPECT_EQ(y, 2);
  EXPECT_EQ(x, 1);
  C_KVMP_GETNAME(handle, nullptr, 100, &status);
  EXPECT_EQ(status, 6);  // "UTM-32" did not fit
  C_KVMP_GETNAME(handle, buffer, 15, nullptr);
  EXPECT_STREQ(buffer, "UTM-32");
  C_KVMP_DESTROY(&handle, &status);
}

TEST(CEntryNoThrow, LastErrorAndSaveAreReachableFromC) {
  char buffer[8] = "";
  const int status = kvct_last_error(buffer, 7);
  // "" or a problem with the test machine's user folder: either way the
  // status follows the text rule.
  EXPECT_TRUE(status == 0 || status > 7) << status;
  EXPECT_EQ(kvct_save(), 0);  // the tests' catalogue has no user folder
}
