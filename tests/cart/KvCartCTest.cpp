#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

#include "KvCart.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"

// Defined in KvCartCTest.c.
extern "C" {
void kvct_set_up(const char* userFolder);
int kvct_create_destroy(const char* coordSys, int* kept, int destroyed[2]);
void kvct_members(const char* coordSys, char* name, int nameSize, char* wkt, int wktSize,
                  int status[2], double lon, double lat, double h, double out[17]);
CKvProjection* kvct_new_projection(const char* coordSys);
void kvct_queries(const char* coordSys, const char* other, int out[9]);
int kvct_is_type(const char* coordSys, int mask);
int kvct_text(int which, const char* coordSys, double lon, char* buffer, int size);
int kvct_origin(const char* coordSys, double* lon, double* lat);
int kvct_version(int header[4], const char** headerText);
}

namespace {

// The bundled catalogue; a fresh user folder receives whatever is written at exit.
void LoadCatalogue() {
  static const std::string user = [] {
    char folder[] = "/tmp/kvcart-centry-XXXXXX";
    return std::string(mkdtemp(folder)) + "/";
  }();
  kvct_set_up(user.c_str());
}

constexpr char kUnknown[] = "No such system";

TEST(CEntryHandles, CreationFailsOnlyByAnExceptionAndDestroyNullsTheHandle) {
  LoadCatalogue();
  struct Row {
    const char* coordSys;
    int status, kept, destroyed0, destroyed1;
  };
  const Row rows[] = {
      {"UTM", -1, 1, -1, -1},  // "Can't use generic UTM"
      {nullptr, -1, 1, -1, -1},
      {kUnknown, 0, 0, 0, -1},  // an object without engine
      {"UTM-32", 0, 0, 0, -1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.coordSys ? row.coordSys : "(null)");
    int kept = 99, destroyed[2] = {99, 99};
    EXPECT_EQ(kvct_create_destroy(row.coordSys, &kept, destroyed), row.status);
    EXPECT_EQ(kept, row.kept);
    EXPECT_EQ(destroyed[0], row.destroyed0);
    EXPECT_EQ(destroyed[1], row.destroyed1);
  }
}

TEST(CEntryHandles, ForwardEveryMemberInItsArgumentOrder) {
  LoadCatalogue();
  char name[8] = "x", wkt[4096] = "";
  int status[2] = {99, 99};
  double out[17] = {};
  kvct_members(kUnknown, name, 7, wkt, 4095, status, 9, 56, 100, out);
  EXPECT_EQ(status[0], 0);
  EXPECT_STREQ(name, "");

  kvct_members("UTM-32", name, 7, wkt, 4095, status, 9, 56, 100, out);
  ASSERT_EQ(status[0], 0);
  ASSERT_EQ(status[1], 0);
  EXPECT_STREQ(name, "UTM-32");
  EXPECT_EQ(std::string(wkt).rfind("PROJCS[", 0), 0u);
  // On the central meridian y is 0.9996 times the WGS 84 meridian arc to 56
  // degrees: mpmath quad(a (1-e2) / (1 - e2 sin^2 p)^1.5, [0, 56 deg]).
  const double expected[] = {500000, 6206079.5872521561, 9, 56, 9, 0, 0};
  for (int i = 0; i < 7; ++i) EXPECT_NEAR(out[i], expected[i], 1e-3) << i;
  EXPECT_LT(out[7], out[9]);
  EXPECT_LT(out[8], out[10]);
  // (N + h) cos(lat) cos(lon), (N + h) cos(lat) sin(lon), (N (1 - e2) + h) sin(lat)
  // on WGS 84 in mpmath, then back.
  const double xyz[] = {3530885.4664873824, 559237.31845964331, 5264525.1399287320, 9, 56, 100};
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(out[11 + i], xyz[i], 1e-6) << i;
}

TEST(CEntryHandles, NewKvProjectionGivesAnOwnedEngineOrNull) {
  LoadCatalogue();
  std::unique_ptr<CKvProjection> engine(kvct_new_projection("UTM-32"));
  ASSERT_NE(engine, nullptr);
  EXPECT_STREQ(engine->GetName(), "UTM-32");
  EXPECT_EQ(kvct_new_projection(kUnknown), nullptr);
  // Generic "UTM" resolves to nothing a C caller can use, and no exception
  // crosses the C frames.
  EXPECT_EQ(NewKvProjection("UTM"), nullptr);
  EXPECT_EQ(NewKvProjection(" UTM\t"), nullptr);
  EXPECT_EQ(NewKvProjection(nullptr), nullptr);
}

TEST(CEntryText, SizeCountsCharactersWithoutTheTerminator) {
  char buffer[9];
  std::memset(buffer, 'x', sizeof buffer);
  // Neither WKT nor a special name: the text is its own short name.
  EXPECT_EQ(kvct_text(0, "ABCDEFG", 0, buffer, 6), 7);
  EXPECT_EQ(std::memcmp(buffer, "xxxxxxxxx", 9), 0);
  EXPECT_EQ(kvct_text(0, "ABCDEFG", 0, buffer, 7), 0);
  EXPECT_EQ(std::memcmp(buffer, "ABCDEFG\0x", 9), 0);  // 8 bytes written

  EXPECT_EQ(kvct_text(1, nullptr, 180, buffer, 5), 6);  // "UTM-61"
  EXPECT_EQ(kvct_text(1, nullptr, -180, buffer, 5), 0);
  EXPECT_EQ(std::memcmp(buffer, "UTM-1\0", 6), 0);
}

TEST(CEntryText, GoogleTextIsCopiedOnlyWhenItFits) {
  std::string text(11, 'x');
  const int length = kvct_text(2, nullptr, 0, &text[0], 10);
  EXPECT_GT(length, 10);
  EXPECT_EQ(text, "xxxxxxxxxxx");
  text.assign(static_cast<std::size_t>(length) + 1, 'x');
  ASSERT_EQ(kvct_text(2, nullptr, 0, &text[0], length), 0);
  EXPECT_EQ(std::strlen(text.c_str()), static_cast<std::size_t>(length));
  EXPECT_EQ(text.rfind("PROJCS[\"Google Maps - Mercator\"", 0), 0u);
}

TEST(CEntryText, VersionAgreesWithTheHeaderInNumberAndText) {
  int header[4];
  const char* headerText = nullptr;
  EXPECT_EQ(kvct_version(header, &headerText), header[3]);
  EXPECT_EQ(header[3], header[0] * 10000 + header[1] * 100 + header[2]);
  const std::string expected = std::to_string(header[0]) + "." + std::to_string(header[1]) + "." +
                               std::to_string(header[2]);
  EXPECT_EQ(headerText, expected);
  char buffer[16];
  std::memset(buffer, 'x', sizeof buffer);
  const int length = static_cast<int>(expected.size());
  EXPECT_EQ(kvct_text(3, nullptr, 0, buffer, length - 1), length);
  EXPECT_EQ(buffer[0], 'x');
  ASSERT_EQ(kvct_text(3, nullptr, 0, buffer, length), 0);
  EXPECT_EQ(std::string(buffer), expected);
}

TEST(CEntryQueries, AnswerForTheSpecialNamesAndCatalogueEntries) {
  LoadCatalogue();
  EXPECT_EQ(kvct_is_type("LONG/LAT", 4), 1);
  EXPECT_EQ(kvct_is_type("LONG/LAT", 8), 0);  // no method test without bits 1 and 2
  struct Row {
    const char* coordSys;
    const char* other;
    int expected[6];  // HASDATUM ISVALID ISLOCAL ISLONGLAT ISGEOREFERENCED ISGEOGRAPHICAL
  };
  const Row rows[] = {
      {"LONG/LAT", "NON-UTM", {0, 1, 0, 1, 1, 1}},
      {"NON-UTM", "LONG/LAT", {0, 1, 1, 0, 0, 0}},
      {"UTM-32", "UTM-33", {1, 1, 0, 0, 1, 0}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.coordSys ? row.coordSys : "(null)");
    int out[9];
    kvct_queries(row.coordSys, row.other, out);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(out[i], row.expected[i]) << i;
    EXPECT_EQ(out[6], CKvMapProjection::GetCoordSysType(row.coordSys));
    EXPECT_EQ(out[7], 1);
    EXPECT_EQ(out[8], 0);
  }
}

TEST(CEntryQueries, ProjectionOriginCatchesEverything) {
  LoadCatalogue();
  double lon = 7, lat = 7;
  EXPECT_EQ(kvct_origin("UTM", &lon, &lat), -1);
  EXPECT_EQ(kvct_origin(nullptr, &lon, &lat), -1);
  EXPECT_EQ(lon, 7);
  EXPECT_EQ(lat, 7);
  EXPECT_EQ(kvct_origin(kUnknown, &lon, &lat), 0);
  EXPECT_EQ(lon, 0);
  EXPECT_EQ(kvct_origin("UTM-33", &lon, &lat), 0);
  EXPECT_EQ(lon, 15);  // 6 * 33 - 183
  EXPECT_EQ(lat, 0);
}

}  // namespace
