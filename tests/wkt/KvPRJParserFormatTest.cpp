// The WKT writer's numbers and its TOWGS84.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "datum/KvDatumShift.h"
#include "wkt/KvPRJParser.h"

namespace {

std::string Written(CKvPRJParser& parser) {
  CString text;
  parser.Format(text);
  return text.GetString();
}

// Every number is written as printf's "%.16g" writes it in the C locale
// (the writer does not call printf, for speed).
TEST(KvPRJParserFormat, WritesNumbersAsPercentSixteenG) {
  std::mt19937_64 rng(18);
  std::vector<double> values = {0.0,
                                -0.0,
                                -1e-35,
                                0.0174532925199433,
                                57.29577951308232,
                                1e16,
                                123456789012345678.0,
                                5e-324,
                                std::numeric_limits<double>::max(),
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity()};
  for (int i = 0; i < 2000; ++i)
    values.push_back(
        std::ldexp(static_cast<double>(rng() % 1000000007), -static_cast<int>(rng() % 80)) *
        ((rng() & 1) ? 1 : -1));
  for (double v : values) {
    CKvPRJParser parser("");
    parser.SetProjectionType(CKvMapProjData::eMercator1SP);
    parser.SetFalseEasting(v);
    char expected[64];
    std::snprintf(expected, sizeof expected, "PARAMETER[\"False_Easting\",%.16g]", v);
    EXPECT_NE(Written(parser).find(expected), std::string::npos) << expected;
  }
}

// A set datum shift, of zeros too, is written inside DATUM after the
// spheroid with all seven values, and read back; none is written otherwise.
TEST(KvPRJParserFormat, WritesTheDatumShiftItWasGiven) {
  CKvPRJParser parser("");
  parser.SetProjectionType(CKvMapProjData::eMercator1SP);
  parser.SetEllipsoid("International 1924", 6378388, 297);
  EXPECT_EQ(Written(parser).find("TOWGS84"), std::string::npos);
  EXPECT_FALSE(parser.HasDatumShift());
  parser.SetDatumShift(CKvDatumShift());
  EXPECT_NE(Written(parser).find("SPHEROID[\"International 1924\",6378388,297],"
                                 "TOWGS84[0,0,0,0,0,0,0]],PRIMEM["),
            std::string::npos)
      << Written(parser);
  double values[7] = {-87, -98, -121, 0.5, 0, -1.25, 2.5};
  parser.SetDatumShift(CKvDatumShift(values));
  const std::string text = Written(parser);
  EXPECT_NE(text.find("TOWGS84[-87,-98,-121,0.5,0,-1.25,2.5]]"), std::string::npos) << text;
  CKvPRJParser back(text.c_str());
  back.Parse(false);
  EXPECT_TRUE(back.HasDatumShift());
  CKvDatumShift shift;
  back.GetDatumShift(shift);
  EXPECT_EQ(shift, CKvDatumShift(values));
}

}  // namespace
