#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

#include "TestCatalogue.h"
#include "mapproj/KvCartography.h"
#include "mapproj/KvMapProjection.h"

namespace {

// PROJ 9.1.1 for the zone of "UTM-32":
//   P="+proj=tmerc +lat_0=0 +lon_0=9 +k=0.9996 +x_0=500000 +y_0=0 +ellps=WGS84"
//   echo "12 56" | proj -f %.6f $P        -> 687071.439107 6210141.326872
//   echo "12 56" | proj -V $P             -> Convergence 2.48782790
const double kOriginEast = 687071.439107, kOriginNorth = 6210141.326872;
const double kOriginConvergence = 2.48782790;

TEST(KvCartography, GenericUtmTakesTheZoneOfTheOrigin) {
  kvtest::EnsureCatalogue();
  struct Row {
    double lon0;
    const char* name;
  };
  const Row rows[] = {
      {9, "UTM-32"},
      {-177, "UTM-1"},
      {-180, "UTM-1"},
      {3, "UTM-31"},
      {-0.5, "UTM-30"},
      {0, "UTM-31"},
      {179.9, "UTM-60"},
      {180, ""},  // "UTM-61" is not in the catalogue: a grid without engine
      {std::numeric_limits<double>::quiet_NaN(), ""},
      {1e300, ""},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.lon0);
    const CKvCartography grid("UTM", row.lon0, 10, 0);
    EXPECT_STREQ(grid.GetProjectionName(), row.name);
  }
  // Only the exact text "UTM" names the origin's zone; the map-projection
  // object refuses generic "UTM" with blanks around it.
  EXPECT_THROW(CKvCartography(" UTM", 9, 56, 0), std::out_of_range);
  EXPECT_THROW(CKvCartography(static_cast<const char*>(nullptr), 9, 56, 0), std::logic_error);
}

TEST(KvCartography, RoundTripsOverAHundredKilometreGridRotatedThirtyDegrees) {
  kvtest::EnsureCatalogue();
  const CKvCartography grid("UTM-32", 12, 56, 30);
  double worstProj = 0, worstGeo = 0;
  for (double x = -50000; x <= 50000; x += 5000) {
    for (double y = -50000; y <= 50000; y += 5000) {
      double east, north, x1, y1, lon, lat, x2, y2;
      grid.Xy2Proj(x, y, &east, &north);
      grid.Proj2Xy(east, north, &x1, &y1);
      worstProj = std::fmax(worstProj, std::hypot(x1 - x, y1 - y));
      grid.Xy2Geo(x, y, &lon, &lat);
      grid.Geo2Xy(lon, lat, &x2, &y2);
      worstGeo = std::fmax(worstGeo, std::hypot(x2 - x, y2 - y));
    }
  }
  EXPECT_LT(worstProj, 1e-6);
  EXPECT_LT(worstGeo, 1e-6);
}

TEST(KvCartography, PlacesTheOriginAndTurnsTheAxesFromTrueNorth) {
  kvtest::EnsureCatalogue();
  const CKvCartography grid("UTM-32", 12, 56, 30);
  double east, north, lon, lat;
  grid.Xy2Proj(0, 0, &east, &north);
  EXPECT_NEAR(east, kOriginEast, 1e-4);
  EXPECT_NEAR(north, kOriginNorth, 1e-4);
  EXPECT_NEAR(grid.GetProjectionNorth(), 30 - kOriginConvergence, 1e-7);
  EXPECT_NEAR(grid.GetTrueNorth(0, 0), 30, 1e-12);

  // Expected positions: the grid turned by 30 - 2.48782790 degrees and
  // shifted to the origin above (python3 math), then
  //   proj -I -f %.10f $P                     (lon, lat)
  //   echo "lon lat" | proj -V $P             (convergence there)
  // True north is that convergence plus 30 - 2.48782790.
  struct Row {
    double x, y, lon, lat, convergence;
  };
  const Row rows[] = {
      {0, 10000, 12.0802984118, 56.0777501614, 2.55678990},
      {10000, 0, 12.1386352340, 55.9550181648, 2.60148830},
      {-25000, 40000, 11.9733339867, 56.4233653140, 2.47790818},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.x);
    grid.Xy2Geo(row.x, row.y, &lon, &lat);
    EXPECT_NEAR(lon, row.lon, 1e-8);
    EXPECT_NEAR(lat, row.lat, 1e-8);
    EXPECT_NEAR(grid.GetTrueNorth(row.x, row.y), row.convergence + 30 - kOriginConvergence, 1e-6);
  }
}

TEST(KvCartography, TrueNorthAtTheOriginIsTheOrientation) {
  kvtest::EnsureCatalogue();
  struct Row {
    const char* system;
    double lon0, lat0, orientation;
  };
  const Row rows[] = {
      {"UTM-32", 12, 56, 30},   {"UTM-32", 6.5, -40, -75},   {"UTM", -70.2, -33.4, 181},
      {"LONG/LAT", 5, 5, 12.5}, {"No such system", 5, 5, 7},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.system);
    const CKvCartography grid(row.system, row.lon0, row.lat0, row.orientation);
    EXPECT_NEAR(grid.GetTrueNorth(0, 0), row.orientation, 1e-12);
  }
}

TEST(KvCartography, OrientationEqualToTheConvergenceIsAPureShift) {
  kvtest::EnsureCatalogue();
  const double convergence = CKvMapProjection("UTM-32").GetConvergence(12, 56);
  EXPECT_NEAR(convergence, kOriginConvergence, 1e-7);
  const CKvCartography grid("UTM-32", 12, 56, convergence);
  EXPECT_EQ(grid.GetProjectionNorth(), 0.0);
  double x0, y0, east, north;
  grid.Geo2Proj(12, 56, &x0, &y0);
  grid.Xy2Proj(1234.5, -6789.25, &east, &north);
  EXPECT_EQ(east, x0 + 1234.5);
  EXPECT_EQ(north, y0 - 6789.25);
}

TEST(KvCartography, ConvertFromGoesThroughGeographicAndIgnoresTheGrids) {
  kvtest::EnsureCatalogue();
  const CKvCartography from("UTM-32", 12, 56, 30);
  const CKvCartography to("UTM-33", 14, 50, -45);
  double east, north;
  // cs2cs -f %.4f <UTM-32 as $P> +to <the same with +lon_0=15>
  //   687071.439107 6210141.326872 -> 312928.5609 6210141.3269
  to.ConvertFrom(from, kOriginEast, kOriginNorth, &east, &north);
  EXPECT_NEAR(east, 312928.5609, 1e-3);
  EXPECT_NEAR(north, 6210141.3269, 1e-3);

  for (double e : {420000.0, 610000.0}) {
    for (double n : {5000000.0, 6900000.0}) {
      double lon, lat, e2, n2;
      from.Proj2Geo(e, n, &lon, &lat);
      to.Geo2Proj(lon, lat, &e2, &n2);
      to.ConvertFrom(from, e, n, &east, &north);
      EXPECT_EQ(east, e2);
      EXPECT_EQ(north, n2);
    }
  }
}

TEST(KvCartography, CopiesOwnTheirProjectionAndKeepTheGrid) {
  kvtest::EnsureCatalogue();
  CKvCartography original("UTM-32", 12, 56, 30);
  CKvCartography copy(original);
  CKvCartography assigned("UTM-1", -177, 0, 0);
  assigned = original;
  const CKvCartography& same = assigned;
  assigned = same;
  EXPECT_NE(&copy.GetProjection(), &original.GetProjection());
  EXPECT_NE(copy.GetProjection().GetProjection(), original.GetProjection().GetProjection());
  for (const CKvCartography* grid : {&copy, &assigned}) {
    EXPECT_STREQ(grid->GetProjectionName(), "UTM-32");
    EXPECT_STREQ(grid->GetProjectionString(), original.GetProjectionString());
    double e1, n1, e2, n2;
    grid->Xy2Proj(1000, 2000, &e1, &n1);
    original.Xy2Proj(1000, 2000, &e2, &n2);
    EXPECT_EQ(e1, e2);
    EXPECT_EQ(n1, n2);
    EXPECT_EQ(grid->GetTrueNorth(0, 0), original.GetTrueNorth(0, 0));
  }
  // A grid built from a map-projection object works on its own copy.
  const CKvMapProjection projection("UTM-32");
  const CKvCartography fromObject(projection, 12, 56, 30);
  EXPECT_NE(fromObject.GetProjection().GetProjection(), projection.GetProjection());
  EXPECT_EQ(fromObject.GetProjectionNorth(), original.GetProjectionNorth());
}

TEST(KvCartography, WithoutEngineBehavesAsTheEnginelessObject) {
  kvtest::EnsureCatalogue();
  const CKvCartography grid("No such system", 12, 56, 30);
  EXPECT_STREQ(grid.GetProjectionName(), "");
  EXPECT_STREQ(grid.GetProjectionString(), "");
  // The origin projects to what the object leaves behind: (0, 0).
  EXPECT_EQ(grid.GetProjectionNorth(), 30.0);
  double lon = -1, lat = -1, x, y;
  grid.Xy2Geo(100, 200, &lon, &lat);
  EXPECT_EQ(lon, -1);  // not written
  EXPECT_EQ(lat, -1);
  // An engineless object's Geo2Proj leaves the projected values as it finds
  // them (zero), which is where the origin was put.
  grid.Geo2Xy(12, 56, &x, &y);
  EXPECT_EQ(x, 0.0);
  EXPECT_EQ(y, 0.0);
  CKvCartography copy(grid);
  EXPECT_STREQ(copy.GetProjectionName(), "");
}

TEST(KvCartography, CsysrotTurnsClockwiseByDegrees) {
  struct Row {
    double x, y, degrees, xOut, yOut;
  };
  const Row rows[] = {
      {0, 1, 90, 1, 0},
      {1, 0, 90, 0, -1},
      {0, 1, -90, -1, 0},
      {2, 0, 180, -2, 0},
      {1, 1, 45, std::sqrt(2.0), 0},
      {3, 4, 0, 3, 4},
  };
  for (const Row& row : rows) {
    double x, y;
    CKvCartography::_csysrot(row.x, row.y, row.degrees, &x, &y);
    EXPECT_NEAR(x, row.xOut, 1e-15);
    EXPECT_NEAR(y, row.yOut, 1e-15);
  }
}

}  // namespace
