#include <gtest/gtest.h>

#include <limits>

#include "platform/KvConstants.h"

TEST(KvConstants, ClosenessIsRelativeToTheLargerMagnitude) {
  using KvConst::IsClose;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  struct Case { double x, y; bool close; } cases[] = {
      {6378137.0, 6378137.000001, true},  // 1.6e-13 relative
      {6378137.0, 6378137.01, false},     // 1.6e-9 relative
      {1e12, 1e12 + 0.5, true},           // 5e-13 relative
      {0.0, -0.0, true},
      {0.0, 1e-300, false},               // relative to the larger: 1
      {inf, inf, true},
      {inf, -inf, false},
      {nan, nan, false},
      {1.0, nan, false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(IsClose(c.x, c.y), c.close) << c.x << " vs " << c.y;
    EXPECT_EQ(IsClose(c.y, c.x), c.close) << c.y << " vs " << c.x;
  }
}

