#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <limits>

#include "datum/KvDatumShift.h"

namespace {

using EType = CKvCartDef::ETypeOfDatumShift;

// Host programs read the type and the seven values straight out of the
// object: vtable pointer, 32-bit type (padded to 8), seven doubles.
static_assert(sizeof(CKvCartDef::ETypeOfDatumShift) == 4, "type is 32-bit");
static_assert(sizeof(CKvDatumShift) == sizeof(void*) + 8 + 7 * sizeof(double),
              "datum-shift layout");

TEST(KvDatumShift, TypeFollowsTheNonZeroParameters) {
  // TOWGS84 order: tx, ty, tz, rx, ry, rz, scale.
  struct Case {
    double values[7];
    EType type;
    const char* text;
  } cases[] = {
      {{0, 0, 0, 0, 0, 0, 0}, CKvCartDef::eNoShift, "None"},
      {{-0.0, 0, 0, 0, 0, 0, -0.0}, CKvCartDef::eNoShift, "None"},  // -0 == 0
      {{0, 0, 0, 0, 0, 0, 1e-300}, CKvCartDef::e7Parameter, "7 parameter"},  // zero tested exactly
      {{0, 0, 0, 0, 0, 0, 1.5}, CKvCartDef::e7Parameter, "7 parameter"},    // scale alone
      {{0, 0, 0, 0.2, 0, 0, 0}, CKvCartDef::e7Parameter, "7 parameter"},    // rotation alone
      {{-87, -98, -121, 0, 0, 0, 0}, CKvCartDef::e3Parameter, "3 parameter"},  // ED50 TOWGS84
      {{0, 0, 5, 0, 0, 0, 0}, CKvCartDef::e3Parameter, "3 parameter"},      // last translation
      // OSGB36 TOWGS84 (EPSG:1314): translations plus rotations and scale.
      {{446.448, -125.157, 542.06, 0.15, 0.247, 0.842, -20.489},
       CKvCartDef::e7Parameter, "7 parameter"},
  };
  for (Case& c : cases) {
    CKvDatumShift constructed(c.values);
    CKvDatumShift set(CKvCartDef::e7Parameter, 1, 2, 3, 4, 5, 6, 7);
    set.SetParameters(c.values);
    for (const CKvDatumShift* p : {&constructed, &set}) {
      EXPECT_EQ(p->GetType(), c.type) << c.text;
      EXPECT_STREQ(p->GetTypeAsText(), c.text);
      EXPECT_EQ(std::memcmp(p->GetParameters(), c.values, sizeof c.values), 0) << c.text;
    }
  }
}

TEST(KvDatumShift, NullParametersResetAndAnExplicitTypeIsKept) {
  CKvDatumShift shift(CKvCartDef::e7Parameter, 1, 2, 3, 4, 5, 6, 7);
  shift.SetParameters(nullptr);
  EXPECT_TRUE(shift == CKvDatumShift(CKvCartDef::eNoShift, 0, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(shift[6], 0.0);
  EXPECT_EQ(CKvDatumShift(static_cast<double*>(nullptr)).GetType(), CKvCartDef::eNoShift);
  // A scale alone would derive type 2; the handed type wins.
  EXPECT_STREQ(CKvDatumShift(CKvCartDef::e3Parameter, 0, 0, 0, 0, 0, 0, 4.5).GetTypeAsText(),
               "3 parameter");
  for (int32_t raw : {-1, 3, INT32_MAX})  // no text outside the three known types
    EXPECT_STREQ(CKvDatumShift(static_cast<EType>(raw), 0, 0, 0, 0, 0, 0, 0).GetTypeAsText(), "");
}

TEST(KvDatumShift, IndexGivesTowgs84OrderAndZeroOutsideIt) {
  CKvDatumShift shift(CKvCartDef::e7Parameter, 10, 20, 30, 40, 50, 60, 70);
  struct Case { long index; double value; } cases[] = {
      {0, 10}, {2, 30}, {3, 40}, {6, 70},           // tx, tz, rx, scale
      {-1, 0}, {7, 0}, {LONG_MIN, 0}, {LONG_MAX, 0},  // outside: 0, never a read
  };
  for (const Case& c : cases) EXPECT_EQ(shift[c.index], c.value) << c.index;
}

TEST(KvDatumShift, EqualityComparesTheValuesTheTypeUses) {
  using S = CKvDatumShift;
  const EType t0 = CKvCartDef::eNoShift, t1 = CKvCartDef::e3Parameter,
              t2 = CKvCartDef::e7Parameter, t5 = static_cast<EType>(5);
  const double big = 1e12, r = 0.5 * (1 + 1e-9);  // r: 1e-9 relative from 0.5
  struct Case {
    const char* what;
    S a, b;
    bool equal;
  } cases[] = {
      {"type 0 ignores values", S(t0, 1, 2, 3, 4, 5, 6, 7), S(t0, 9, 9, 9, 9, 9, 9, 9), true},
      {"5e-13 relative", S(t1, big, 0, 0, 0, 0, 0, 0), S(t1, big + 0.5, 0, 0, 0, 0, 0, 0), true},
      {"1.5e-12 relative", S(t1, 0, big, 0, 0, 0, 0, 0), S(t1, 0, big + 1.5, 0, 0, 0, 0, 0), false},
      {"last translation", S(t1, 1, 2, 3, 0, 0, 0, 0), S(t1, 1, 2, 4, 0, 0, 0, 0), false},
      {"type 1 ignores rotation", S(t1, 1, 2, 3, 0.5, 0, 0, 0), S(t1, 1, 2, 3, r, 0, 0, 8), true},
      {"type 2 sees rotation", S(t2, 1, 2, 3, 0.5, 0, 0, 0), S(t2, 1, 2, 3, r, 0, 0, 0), false},
      {"type 2 scale", S(t2, 0, 0, 0, 0, 0, 0, -20.48), S(t2, 0, 0, 0, 0, 0, 0, -20.49), false},
      {"type 2 same", S(t2, 446.448, -125.157, 542.06, 0.15, 0.247, 0.842, -20.489),
       S(t2, 446.448, -125.157, 542.06, 0.15, 0.247, 0.842, -20.489), true},
      {"types 1 and 2", S(t1, 1, 2, 3, 0, 0, 0, 0), S(t2, 1, 2, 3, 0, 0, 0, 0), false},
      {"types 0 and 1", S(t0, 0, 0, 0, 0, 0, 0, 0), S(t1, 0, 0, 0, 0, 0, 0, 0), false},
      {"unknown type: all seven", S(t5, 0, 0, 0, 0, 0, 0, 1), S(t5, 0, 0, 0, 0, 0, 0, 2), false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.a == c.b, c.equal) << c.what;
    EXPECT_EQ(c.b == c.a, c.equal) << c.what;
    EXPECT_EQ(c.a != c.b, !c.equal) << c.what;
  }
}

TEST(KvDatumShift, ShiftHoldingNanEqualsOnlyItself) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  CKvDatumShift shift(CKvCartDef::e3Parameter, nan, 0, 0, 0, 0, 0, 0);
  CKvDatumShift copy(shift);
  EXPECT_TRUE(shift == shift);
  EXPECT_FALSE(shift != shift);
  EXPECT_FALSE(shift == copy);  // NaN is close to nothing
}

}  // namespace
