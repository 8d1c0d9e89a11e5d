#include <gtest/gtest.h>

#include <cmath>

#include "catalogue/KvEllipsoid.h"

TEST(KvEllipsoid, DerivedGeometryMatchesPublishedValues) {
  struct Case { CKvEllipsoid e; double minor, flattening, eccentricity; } cases[] = {
      // NIMA TR 8350.2 (3rd ed.), Table 3.3: b = 6356752.3142, e = 8.1819190842622e-2.
      {CKvEllipsoid("WGS 1984", "WE", 6378137.0, 298.257223563), 6356752.314245179, 1 / 298.257223563,
       0.0818191908426215},
      // Moritz, "Geodetic Reference System 1980", Bull. Geod. 54: b = 6356752.3141, e = 0.0818191910428.
      {CKvEllipsoid("GRS 1980", "RF", 6378137.0, 298.257222101), 6356752.314140356, 1 / 298.257222101,
       0.0818191910428158},
      // A sphere: inverse flattening 0 or negative.
      {CKvEllipsoid("Sphere", "XY", 6371229.0, 0.0), 6371229.0, 0.0, 0.0},
      {CKvEllipsoid("Sphere", "XY", 6371229.0, -1.0), 6371229.0, 0.0, 0.0},
      // Default: a = 1 and 1/f = 1, a degenerate flat disc.
      {CKvEllipsoid(), 0.0, 1.0, 1.0},
  };
  for (const Case& c : cases) {
    EXPECT_NEAR(c.e.GetMinor(), c.minor, 1e-6) << c.e.GetName();
    EXPECT_DOUBLE_EQ(c.e.GetFlatness(), c.flattening) << c.e.GetName();
    EXPECT_NEAR(c.e.GetEccentricity(), c.eccentricity, 1e-15) << c.e.GetName();
  }
  CKvEllipsoid sphere("Sphere", "XY", 6371229.0, 0.0);
  EXPECT_EQ(sphere.GetMinor(), sphere.GetMajor());  // exactly, not nearly
  EXPECT_EQ(sphere.GetEccentricity(), 0.0);
}

TEST(KvEllipsoid, EqualityUsesNamesIdsAndTheClosenessRule) {
  const CKvEllipsoid wgs("WGS 1984", "WE", 6378137.0, 298.257223563);
  struct Case { CKvEllipsoid other; bool equal, equivalent; } cases[] = {
      {CKvEllipsoid("WGS 1984", "WE", 6378137.0, 298.257223563), true, true},
      {CKvEllipsoid("WGS 1984", "WE", 6378137.000001, 298.257223563), true, true},  // 1.6e-13 relative
      {CKvEllipsoid("WGS 1984", "WE", 6378137.01, 298.257223563), false, false},    // 1.6e-9 relative
      {CKvEllipsoid("WGS 1984", "WE", 6378137.0, 298.257222101), false, false},     // GRS 1980's 1/f
      {CKvEllipsoid("WGS 1984", "we", 6378137.0, 298.257223563), false, true},      // case matters
      {CKvEllipsoid("WGS 84", "WE", 6378137.0, 298.257223563), false, true},
      {CKvEllipsoid("WGS 1984", "WE ", 6378137.0, 298.257223563), false, true},     // whole string
  };
  for (const Case& c : cases) {
    EXPECT_EQ(wgs == c.other, c.equal) << c.other.GetName() << "/" << c.other.GetID() << " " << c.other.GetMajor();
    EXPECT_EQ(c.other == wgs, c.equal);
    EXPECT_EQ(wgs.IsEquivalent(c.other), c.equivalent) << c.other.GetMajor();
  }
  // The same object is equal to itself, even when its numbers are NaN.
  CKvEllipsoid broken("x", "x", std::nan(""), 1.0);
  EXPECT_TRUE(broken == broken);
  EXPECT_FALSE(broken == CKvEllipsoid(broken));
  EXPECT_FALSE(broken.IsEquivalent(CKvEllipsoid(broken)));
}

