#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

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

class KvCartography : public ::testing::Test {
 protected:
  void SetUp() override { kvtest::EnsureCatalogue(); }
};

TEST_F(KvCartography, GenericUtmTakesTheZoneOfTheOrigin) {
  // "UTM-61" is not in the catalogue: from 180 on, a grid without engine.
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    double lon0;
    const char* name;
  } rows[] = {{9, "UTM-32"}, {-177, "UTM-1"},   {-180, "UTM-1"}, {3, "UTM-31"}, {-0.5, "UTM-30"},
              {0, "UTM-31"}, {179.9, "UTM-60"}, {180, ""},       {nan, ""},     {1e300, ""}};
  for (const auto& row : rows) {
    EXPECT_STREQ(CKvCartography("UTM", row.lon0, 10, 0).GetProjectionName(), row.name) << row.lon0;
  }
  // Only the exact text "UTM" names the origin's zone; the map-projection
  // object refuses generic "UTM" with blanks around it.
  EXPECT_THROW(CKvCartography(" UTM", 9, 56, 0), std::out_of_range);
  EXPECT_THROW(CKvCartography(static_cast<const char*>(nullptr), 9, 56, 0), std::logic_error);
}

TEST_F(KvCartography, RoundTripsOverAHundredKilometreGridRotatedThirtyDegrees) {
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

TEST_F(KvCartography, PlacesTheOriginAndTurnsTheAxesFromTrueNorth) {
  const CKvCartography grid("UTM-32", 12, 56, 30);
  double east, north, lon, lat;
  grid.Xy2Proj(0, 0, &east, &north);
  EXPECT_NEAR(east, kOriginEast, 1e-4);
  EXPECT_NEAR(north, kOriginNorth, 1e-4);
  EXPECT_NEAR(grid.GetProjectionNorth(), 30 - kOriginConvergence, 1e-7);
  // The grid turned by 30 - 2.48782790 degrees and shifted to the origin
  // (python3 math), then proj -I -f %.10f $P for (lon, lat) and
  // echo "lon lat" | proj -V $P for the convergence there; true north is
  // that convergence plus 30 - 2.48782790.
  const struct {
    double x, y, lon, lat, convergence;
  } rows[] = {
      {0, 10000, 12.0802984118, 56.0777501614, 2.55678990},
      {10000, 0, 12.1386352340, 55.9550181648, 2.60148830},
      {-25000, 40000, 11.9733339867, 56.4233653140, 2.47790818},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.x);
    grid.Xy2Geo(row.x, row.y, &lon, &lat);
    EXPECT_NEAR(lon, row.lon, 1e-8);
    EXPECT_NEAR(lat, row.lat, 1e-8);
    EXPECT_NEAR(grid.GetTrueNorth(row.x, row.y), row.convergence + 30 - kOriginConvergence, 1e-6);
  }
}

TEST_F(KvCartography, TrueNorthAtTheOriginIsTheOrientation) {
  const struct {
    const char* system;
    double lon0, lat0, orientation;
  } rows[] = {
      {"UTM-32", 12, 56, 30},   {"UTM-32", 6.5, -40, -75},   {"UTM", -70.2, -33.4, 181},
      {"LONG/LAT", 5, 5, 12.5}, {"No such system", 5, 5, 7},
  };
  for (const auto& row : rows) {
    const CKvCartography grid(row.system, row.lon0, row.lat0, row.orientation);
    EXPECT_NEAR(grid.GetTrueNorth(0, 0), row.orientation, 1e-12) << row.system;
  }
}

TEST_F(KvCartography, OrientationEqualToTheConvergenceIsAPureShift) {
  const CKvCartography grid("UTM-32", 12, 56, CKvMapProjection("UTM-32").GetConvergence(12, 56));
  EXPECT_EQ(grid.GetProjectionNorth(), 0.0);
  double x0, y0, east, north;
  grid.Geo2Proj(12, 56, &x0, &y0);
  grid.Xy2Proj(1234.5, -6789.25, &east, &north);
  EXPECT_EQ(east, x0 + 1234.5);
  EXPECT_EQ(north, y0 - 6789.25);
}

TEST_F(KvCartography, ConvertFromGoesThroughGeographicAndIgnoresTheGrids) {
  const CKvCartography from("UTM-32", 12, 56, 30), to("UTM-33", 14, 50, -45);
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

TEST_F(KvCartography, CopiesOwnTheirProjectionAndKeepTheGrid) {
  CKvCartography original("UTM-32", 12, 56, 30), copy(original), assigned("UTM-1", -177, 0, 0);
  assigned = original;
  const CKvCartography& same = assigned;
  assigned = same;  // self-assignment keeps the projection
  EXPECT_NE(copy.GetProjection().GetProjection(), original.GetProjection().GetProjection());
  // A grid built from a map-projection object works on its own copy.
  const CKvMapProjection projection("UTM-32");
  CKvCartography fromObject(projection, 12, 56, 30);
  EXPECT_NE(fromObject.GetProjection().GetProjection(), projection.GetProjection());
  for (const CKvCartography* grid : {&copy, &assigned, &fromObject}) {
    EXPECT_STREQ(grid->GetProjectionString(), original.GetProjectionString());
    double e1, n1, e2, n2;
    grid->Xy2Proj(1000, 2000, &e1, &n1);
    original.Xy2Proj(1000, 2000, &e2, &n2);
    EXPECT_EQ(e1, e2);
    EXPECT_EQ(n1, n2);
    EXPECT_EQ(grid->GetTrueNorth(500, 0), original.GetTrueNorth(500, 0));
  }
}

TEST_F(KvCartography, WithoutEngineBehavesAsTheEnginelessObject) {
  const CKvCartography grid("No such system", 12, 56, 30), copy(grid);
  EXPECT_STREQ(copy.GetProjectionName(), "");
  EXPECT_STREQ(grid.GetProjectionString(), "");
  EXPECT_EQ(grid.GetProjectionNorth(), 30.0);
  double lon = -1, lat = -1, x, y;
  grid.Xy2Geo(100, 200, &lon, &lat);
  EXPECT_EQ(lon, -1);  // not written
  EXPECT_EQ(lat, -1);
  // An engineless Geo2Proj leaves the projected values as it finds them
  // (zero), which is also where the origin was put.
  grid.Geo2Xy(12, 56, &x, &y);
  EXPECT_EQ(x, 0.0);
  EXPECT_EQ(y, 0.0);
}

TEST_F(KvCartography, CsysrotTurnsClockwiseByDegrees) {
  const double r2 = std::sqrt(2.0);
  const struct {
    double x, y, degrees, xOut, yOut;
  } rows[] = {{0, 1, 90, 1, 0},   {1, 0, 90, 0, -1}, {0, 1, -90, -1, 0},
              {2, 0, 180, -2, 0}, {1, 1, 45, r2, 0}, {3, 4, 0, 3, 4}};
  for (const auto& row : rows) {
    double x, y;
    CKvCartography::_csysrot(row.x, row.y, row.degrees, &x, &y);
    EXPECT_NEAR(x, row.xOut, 1e-15);
    EXPECT_NEAR(y, row.yOut, 1e-15);
  }
}

}  // namespace
