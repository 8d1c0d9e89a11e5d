#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvGeographicalProjection.h"
#include "engines/KvGeographical.h"
#include "engines/KvGnomic.h"
#include "engines/KvIsoMetric.h"
#include "wkt/KvPRJParser.h"

namespace {

TEST(Geographical, ShiftsLongitudesByThePrimeMeridian) {
  const CKvEllipsoid wgs84("WGS 84", "WE", 6378137, 298.257223563);
  CKvGeographical engine("Paris", 10, wgs84);
  double x = 0, y = 0, lon = 0, lat = 0;
  engine.Geo2Proj(15, 50, &x, &y);
  EXPECT_EQ(x, 5.0);
  EXPECT_EQ(y, 50.0);
  engine.Proj2Geo(5, 50, &lon, &lat);
  EXPECT_EQ(lon, 15.0);
  EXPECT_EQ(lat, 50.0);
  double x0, y0, x1, y1;
  engine.GetDefaultArea(&x0, &y0, &x1, &y1);
  EXPECT_EQ(x0, -190.0);
  EXPECT_EQ(y0, -60.0);
  EXPECT_EQ(x1, 170.0);
  EXPECT_EQ(y1, 81.0);
  EXPECT_TRUE(engine.IsGeographical());
  CKvEllipsoid e;
  ASSERT_TRUE(engine.GetAnonymousEllipsoid(e));
  EXPECT_EQ(e.GetInvFlatness(), 298.257223563);
  std::unique_ptr<CKvProjection> copy(engine.Clone());
  copy->Geo2Proj(15, 50, &x, &y);
  EXPECT_EQ(x, 5.0);
}

TEST(Geographical, SetWithoutEllipsoidGivesAnEngineWithoutOne) {
  CKvGeographicalProjection set("G", "B", "", 10);
  std::unique_ptr<CKvProjection> engine(set.CreateProjection());
  CKvEllipsoid e("E", "E", 1, 2);
  EXPECT_FALSE(engine->GetAnonymousEllipsoid(e));
  EXPECT_EQ(e.GetMajor(), 1.0);
  double x = 0, y = 0;
  engine->Geo2Proj(15, 50, &x, &y);  // the prime meridian is zero as well
  EXPECT_EQ(x, 15.0);
  EXPECT_EQ(y, 50.0);
}

TEST(Geographical, CatalogueEntryWritesItsDefinition) {
  kvtest::EnsureEllipsoids();
  kvtest::ScopedRecord record(new CKvGeographicalProjection("Geo test", "My datum", "WE", 0));
  std::unique_ptr<CKvProjection> engine(record.get()->CreateProjection());
  CKvPRJParser parser(*engine);
  EXPECT_EQ(parser.GetProjectionType(), CKvMapProjData::eGeographical);
  EXPECT_STREQ(parser.GetDatum().GetString(), "My datum");
  CKvGeographical unknown("Not in the catalogue", 0, CKvEllipsoid());
  CKvGeographicalProjection set;
  EXPECT_FALSE(unknown.GetMapProjection(set));
  CKvEllipsoid e;
  EXPECT_FALSE(unknown.GetEllipsoid(e));
  CKvPRJParser orphan(unknown);
  EXPECT_EQ(orphan.GetProjectionType(), CKvMapProjData::eNonProjected);
}

// The library never instantiates these two abstract engines; tests do.
class IsoMetric : public CKvIsoMetric {
 public:
  using CKvIsoMetric::CKvIsoMetric;
  CKvProjection* Clone() override { return nullptr; }
  void TransferParameters(CKvPRJParser&) override {}
};

class Gnomic : public CKvGnomic {
 public:
  CKvProjection* Clone() override { return nullptr; }
  void TransferParameters(CKvPRJParser&) override {}
};

TEST(IsoMetric, ProjectsOntoEachAxisAndIsOneWay) {
  IsoMetric grid(0, 0, 100, 0, 0, 200, 10, 50, 11, 52);
  double lon = 0, lat = 0;
  grid.Proj2Geo(50, 100, &lon, &lat);
  EXPECT_DOUBLE_EQ(lon, 10.5);
  EXPECT_DOUBLE_EQ(lat, 51.0);
  // Oblique axes: each coordinate is the projection on its own axis.
  IsoMetric oblique(0, 0, 3, 4, 0, 10, 0, 0, 5, 10);
  oblique.Proj2Geo(3, 4, &lon, &lat);
  EXPECT_DOUBLE_EQ(lon, 5.0);
  EXPECT_DOUBLE_EQ(lat, 4.0);
  double x = 7, y = 8;
  grid.Geo2Proj(10.5, 51, &x, &y);
  EXPECT_EQ(x, 7.0);
  EXPECT_EQ(y, 8.0);
  EXPECT_STREQ(grid.GetName(), "Isometric");
}

TEST(GnomicDeathTest, StopsTheProcessWithItsMessage) {
  // The message goes to standard output; send it where the death test looks.
  EXPECT_DEATH(
      {
        dup2(2, 1);
        Gnomic g;
      },
      "Gnomic projection not implemented yet");
}

}  // namespace
