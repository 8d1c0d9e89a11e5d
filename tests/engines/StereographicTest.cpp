// The stereographic family beyond its reference cases (those are in
// tests/data/engines/stereographic*.cases): the polar wrapper's choice of
// engine and its ownership, the derived scale, convergence, default areas,
// the limit at a polar origin and longitudes beyond +-180.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <string>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvPolarStereographicProjection.h"
#include "catalogue/KvStereographicNorthPoleProjection.h"
#include "catalogue/KvStereographicProjection.h"
#include "catalogue/KvStereographicSouthPoleProjection.h"
#include "engines/KvPolarStereographic.h"
#include "engines/KvStereographic.h"
#include "engines/KvStereographicNorthPole.h"
#include "engines/KvStereographicSouthPole.h"
#include "wkt/KvPRJParser.h"

namespace {

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);
const CKvEllipsoid kBessel("Bessel 1841", "BR", 6377397.155, 299.1528128);

bool SameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

// Whether two engines project a few points to bit-identical coordinates.
bool ProjectAlike(CKvProjection& a, CKvProjection& b) {
  const double points[][2] = {{10, 80}, {-120, 60}, {175, -75}, {30, -89}, {0, 0}};
  for (const auto& p : points) {
    double xa, ya, xb, yb;
    a.Geo2Proj(p[0], p[1], &xa, &ya);
    b.Geo2Proj(p[0], p[1], &xb, &yb);
    if (!SameBits(xa, xb) || !SameBits(ya, yb)) return false;
  }
  return true;
}

TEST(PolarStereographic, ChoosesItsEngineByTheOriginLatitudeWithinOneInATrillion) {
  // The scale 0.5 shows whether it is used (variant A) or not (variant B).
  const double nearNorth = 90 * (1 - 1e-13), offNorth = 90 * (1 - 1e-11);
  const struct {
    double originLatitude;
    std::unique_ptr<CKvProjection> expected;
  } cases[] = {
      {90, std::make_unique<CKvStereographic>("P", 0.5, 20, 90, 1000, 2000, kWgs84)},
      {nearNorth, std::make_unique<CKvStereographic>("P", 0.5, 20, nearNorth, 1000, 2000, kWgs84)},
      {offNorth,
       std::make_unique<CKvStereographicNorthPole>("P", offNorth, 20, 1000, 2000, kWgs84)},
      {-90, std::make_unique<CKvStereographic>("P", 0.5, 20, -90, 1000, 2000, kWgs84)},
      {-71, std::make_unique<CKvStereographicSouthPole>("P", -71, 20, 1000, 2000, kWgs84)},
      {60, std::make_unique<CKvStereographicNorthPole>("P", 60, 20, 1000, 2000, kWgs84)},
      // true scale on the equator counts as north
      {0, std::make_unique<CKvStereographicNorthPole>("P", 0, 20, 1000, 2000, kWgs84)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.originLatitude);
    CKvPolarStereographic polar("P", 0.5, 20, c.originLatitude, 1000, 2000, kWgs84);
    EXPECT_TRUE(ProjectAlike(polar, *c.expected));
    // Everything is the inner engine's, the derived scale included.
    double k = -1, kExpected = -1, lon, lat, lonExpected, latExpected;
    polar.GetDerivedParameters(&k);
    c.expected->GetDerivedParameters(&kExpected);
    EXPECT_TRUE(SameBits(k, kExpected));
    polar.Proj2Geo(1e5, -3e5, &lon, &lat);
    c.expected->Proj2Geo(1e5, -3e5, &lonExpected, &latExpected);
    EXPECT_TRUE(SameBits(lon, lonExpected) && SameBits(lat, latExpected));
    EXPECT_EQ(polar.GetConvergence(50, 70), c.expected->GetConvergence(50, 70));
    EXPECT_STREQ(polar.GetName(), "P");
    EXPECT_FALSE(polar.IsLocal() || polar.IsGeographical());
    CKvEllipsoid ellipsoid;
    EXPECT_TRUE(polar.GetAnonymousEllipsoid(ellipsoid));
    EXPECT_EQ(ellipsoid.GetMajor(), 6378137.0);
  }
}

TEST(PolarStereographic, CopiesOwnTheirInnerEngine) {
  auto original = std::make_unique<CKvPolarStereographic>("P", 0.994, 0, 90, 2e6, 2e6, kWgs84);
  std::unique_ptr<CKvProjection> clone(original->Clone());
  CKvPolarStereographic assigned("Q", 1, 0, -71, 0, 0, kWgs84);
  assigned = *original;
  assigned = assigned;  // to itself: nothing changes
  CKvPolarStereographic reference("P", 0.994, 0, 90, 2e6, 2e6, kWgs84);
  original.reset();  // the copies must not share what it owned
  EXPECT_TRUE(ProjectAlike(*clone, reference));
  EXPECT_TRUE(ProjectAlike(assigned, reference));
  EXPECT_STREQ(assigned.GetName(), "P");
}

// The name, the catalogue look-ups, Clone, free and TransferParameters are
// the wrapper's own and work without an inner engine; every slot that
// forwards stops the process, naming the slot.
TEST(PolarStereographicDeathTest, WithoutEllipsoidEveryForwardingSlotStops) {
  CKvPolarStereographicProjection set("No ellipsoid", "B", "not an ellipsoid", 1, 0, 90, 0, 0);
  std::unique_ptr<CKvProjection> engine(set.CreateProjection());
  ASSERT_NE(engine, nullptr);
  std::unique_ptr<CKvProjection> clone(engine->Clone());
  CKvPRJParser parser(*engine);
  EXPECT_EQ(parser.GetProjectionType(), CKvMapProjData::eNonProjected);
  CKvProjection& p = *engine;
  double a, b, c, d;
  CKvEllipsoid e;
  const std::string prefix = "KvPolarStereographic:[0-9]+: .*CKvPolarStereographic::";
  const std::string suffix = ".*Assertion `m_pProj' failed";
  EXPECT_DEATH(p.GetName(), prefix + "GetName\\(\\)" + suffix);
  EXPECT_DEATH(p.Geo2Proj(0, 0, &a, &b),
               prefix + "Geo2Proj\\(double, double, double\\*, double\\*\\)" + suffix);
  EXPECT_DEATH(p.Proj2Geo(0, 0, &a, &b), prefix + "Proj2Geo\\(" + ".*" + suffix);
  EXPECT_DEATH(p.GetOrigin(&a, &b), prefix + "GetOrigin\\(" + ".*" + suffix);
  EXPECT_DEATH(p.GetConvergence(0, 0), prefix + "GetConvergence\\(" + ".*" + suffix);
  EXPECT_DEATH(p.GetDefaultArea(&a, &b, &c, &d), prefix + "GetDefaultArea\\(" + ".*" + suffix);
  EXPECT_DEATH(p.IsLocal(), prefix + "IsLocal\\(\\)" + suffix);
  EXPECT_DEATH(p.IsGeographical(), prefix + "IsGeographical\\(\\)" + suffix);
  EXPECT_DEATH(p.GetDerivedParameters(&a), prefix + "GetDerivedParameters\\(" + ".*" + suffix);
  EXPECT_DEATH(p.GetAnonymousEllipsoid(e), prefix + "GetAnonymousEllipsoid\\(" + ".*" + suffix);
  clone.release()->free();
}

TEST(StereographicPoles, DeriveTheScaleAtThePoleFromTheLatitudeOfTrueScale) {
  // k0 = mF sqrt((1 + e)^(1 + e) (1 - e)^(1 - e)) / (2 tF), EPSG Guidance Note
  // 7-2, variant B (its example: k0 = 0.972769012 for 71 S); evaluated with
  // /usr/bin/python3 mpmath at 30 digits on WGS 84:
  // 71: 0.972769012891796936601076630333, 70: 0.969858190326351831043103867712
  // 80.23861111111111: 0.99276188978926704352625423329
  const struct {
    std::unique_ptr<CKvProjection> engine;
    double k0;
  } cases[] = {
      {std::make_unique<CKvStereographicSouthPole>("S", -71, 70, 0, 0, kWgs84), 0.9727690128917969},
      {std::make_unique<CKvStereographicNorthPole>("N", 71, 0, 0, 0, kWgs84), 0.9727690128917969},
      {std::make_unique<CKvStereographicNorthPole>("N", 70, -45, 0, 0, kWgs84), 0.9698581903263518},
      {std::make_unique<CKvStereographicSouthPole>("S", -80.23861111111111, 0, 0, 0, kWgs84),
       0.9927618897892670},
      // true scale at the pole: variant A with k0 = 1
      {std::make_unique<CKvStereographicNorthPole>("N", 90, 0, 0, 0, kWgs84), 1},
      {std::make_unique<CKvStereographicSouthPole>("S", -90, 0, 0, 0, kWgs84), 1},
  };
  for (const auto& c : cases) {
    double k0 = 0;
    c.engine->GetDerivedParameters(&k0);
    EXPECT_NEAR(k0, c.k0, 2e-16) << c.engine->GetName();
  }
  // True scale at the pole is variant A with k0 = 1: the oblique engine at
  // the pole, within rounding.
  CKvStereographicNorthPole pole("N", 90, 0, 0, 0, kWgs84);
  CKvStereographic obliqueAtPole("A", 1, 0, 90, 0, 0, kWgs84);
  for (double lat : {60.0, 75.5, 89.9}) {
    double x1, y1, x2, y2;
    pole.Geo2Proj(33, lat, &x1, &y1);
    obliqueAtPole.Geo2Proj(33, lat, &x2, &y2);
    EXPECT_NEAR(x1, x2, 1e-8);
    EXPECT_NEAR(y1, y2, 1e-8);
  }
}

// The meridian convergence against PROJ 9.1.1's, from /usr/bin/python3:
//   Proj(P).get_factors(lon, lat).meridian_convergence
TEST(Stereographic, ConvergenceIsTheMeridiansTurnFromGridNorth) {
  const CKvStereographic rd("RD", 0.9999079, 5.38763888888889, 52.15616055555556, 155000, 463000,
                            kBessel);
  const CKvStereographic south("S", 1, 70, -60, 0, 0, kWgs84);
  const CKvStereographicNorthPole nsidc("N", 70, -45, 0, 0, kWgs84);
  const CKvStereographicSouthPole aaps("A", -71, 70, 6e6, 6e6, kWgs84);
  const struct {
    const CKvProjection& engine;
    double lon, lat, convergence;
  } cases[] = {
      // P = +proj=sterea +lat_0=52.15616055555556 +lon_0=5.38763888888889
      //     +k=0.9999079 +x_0=155000 +y_0=463000 +ellps=bessel
      {rd, 6, 53, 0.4863413909918799},
      {rd, 3, 51, -1.8708109214909283},
      {rd, 7.5, 50.5, 1.649445939466574},
      {rd, 5.38763888888889, 53, 0},
      // P = +proj=sterea +lat_0=-60 +lon_0=70 +k=1 +ellps=WGS84
      {south, 80, -50, -8.229933009894497},
      // P = +proj=stere +lat_0=90 +lat_ts=70 +lon_0=-45 +ellps=WGS84; 75 east
      {nsidc, 30, 75, 75.00000000003136},
      // P = +proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=70 +ellps=WGS84
      {aaps, 120, -75, -50.00000000001814},
  };
  for (const auto& c : cases) {
    CKvProjection& engine = const_cast<CKvProjection&>(c.engine);
    EXPECT_NEAR(engine.GetConvergence(c.lon, c.lat), c.convergence, 1e-9)
        << engine.GetName() << " " << c.lon << " " << c.lat;
  }
  // Reduced about the central meridian: 200 degrees east of 45 W is 160 west.
  CKvStereographicNorthPole north = nsidc;
  EXPECT_NEAR(north.GetConvergence(155, 80), -160, 1e-12);
}

// Corners 3 degrees from a polar origin, from PROJ 9.1.1:
//   printf -- "-90 87\n90 87\n" | proj -f %.6f +proj=stere +lat_0=90 +lat_ts=70
//     +lon_0=-45 +ellps=WGS84
//   printf -- "-65 -87\n115 -87\n" | proj -f %.6f +proj=stere +lat_0=-90
//     +lat_ts=-71 +lon_0=70 +x_0=6000000 +y_0=6000000 +ellps=WGS84
//   printf -- "-45 87\n135 87\n" | proj -f %.6f +proj=stere +lat_0=90 +k=0.994
//     +lon_0=0 +x_0=2000000 +y_0=2000000 +ellps=WGS84
TEST(StereographicPoles, DefaultAreaIsTheSquareThreeDegreesAroundThePole) {
  CKvStereographicNorthPole nsidc("N", 70, -45, 0, 0, kWgs84);
  CKvStereographicSouthPole aaps("A", -71, 70, 6e6, 6e6, kWgs84);
  CKvStereographic ups("U", 0.994, 0, 90, 2e6, 2e6, kWgs84);
  CKvPolarStereographic polar("U", 0.994, 0, 90, 2e6, 2e6, kWgs84);
  const struct {
    CKvProjection& engine;
    double area[4];
  } cases[] = {
      {nsidc, {-229847.341154, -229847.341154, 229847.341154, 229847.341154}},
      {aaps, {5769462.821060, 5769462.821060, 6230537.178940, 6230537.178940}},
      {ups, {1764431.275226, 1764431.275226, 2235568.724774, 2235568.724774}},
      {polar, {1764431.275226, 1764431.275226, 2235568.724774, 2235568.724774}},
  };
  for (const auto& c : cases) {
    double area[4];
    c.engine.GetDefaultArea(&area[0], &area[1], &area[2], &area[3]);
    for (int k = 0; k < 4; ++k) EXPECT_NEAR(area[k], c.area[k], 1e-6) << c.engine.GetName() << k;
  }
  // An oblique origin keeps the origin +-3 degrees; one a little off the pole too.
  CKvStereographic nearPole("P", 0.994, 0, 89, 0, 0, kWgs84);
  double x0, y0, x1, y1, x, y;
  nearPole.GetDefaultArea(&x0, &y0, &x1, &y1);
  nearPole.Geo2Proj(3, 90, &x, &y);
  EXPECT_EQ(x1, x);
  EXPECT_EQ(y1, y);
  EXPECT_TRUE(std::isfinite(x0) && std::isfinite(y0) && x0 < x1 && y0 < y1);
}

// The oblique formulas divide by zero at a polar origin; their limit there
// joins the oblique origins near it without a jump: an origin 9e-11 degrees
// (10 micrometres) off the pole moves the grid by as much.
TEST(Stereographic, PolarOriginIsTheLimitOfOriginsApproachingIt) {
  for (double pole : {90.0, -90.0}) {
    CKvStereographic at("P", 0.994, 10, pole, 2e6, 2e6, kWgs84);
    CKvStereographic near("P", 0.994, 10, pole * (1 - 1e-12), 2e6, 2e6, kWgs84);
    for (double lat : {60.0, 80.0, 89.999, 90.0}) {
      double x1, y1, x2, y2, lon, back;
      at.Geo2Proj(55, pole > 0 ? lat : -lat, &x1, &y1);
      near.Geo2Proj(55, pole > 0 ? lat : -lat, &x2, &y2);
      EXPECT_NEAR(x1, x2, 2e-5) << pole << " " << lat;
      EXPECT_NEAR(y1, y2, 2e-5) << pole << " " << lat;
      at.Proj2Geo(x1, y1, &lon, &back);
      EXPECT_NEAR(back, pole > 0 ? lat : -lat, 1e-12);
    }
  }
}

TEST(Stereographic, LongitudesAreReducedAboutTheCentralMeridian) {
  CKvStereographic oblique("O", 0.9999, 170, 45, 0, 0, kWgs84);
  CKvStereographicNorthPole north("N", 70, -170, 0, 0, kWgs84);
  CKvStereographicSouthPole south("S", -71, 175, 0, 0, kWgs84);
  CKvPolarStereographic polar("P", 0.994, -175, -90, 0, 0, kWgs84);
  for (CKvProjection* engine :
       std::initializer_list<CKvProjection*>{&oblique, &north, &south, &polar}) {
    const double lat = engine == &oblique ? 44.0 : engine == &north ? 80.0 : -80.0;
    for (double lon : {-178.0, 176.5, 179.0}) {
      double x1, y1, x2, y2, x3, y3, lonBack, latBack;
      engine->Geo2Proj(lon, lat, &x1, &y1);
      engine->Geo2Proj(lon + 360, lat, &x2, &y2);
      engine->Geo2Proj(lon - 720, lat, &x3, &y3);
      EXPECT_NEAR(x2, x1, 1e-6);
      EXPECT_NEAR(y2, y1, 1e-6);
      EXPECT_NEAR(x3, x1, 1e-6);
      EXPECT_NEAR(y3, y1, 1e-6);
      // and come back in -180..180
      engine->Proj2Geo(x1, y1, &lonBack, &latBack);
      EXPECT_NEAR(lonBack, lon, 1e-9) << engine->GetName();
      EXPECT_NEAR(latBack, lat, 1e-9) << engine->GetName();
    }
  }
}

TEST(Stereographic, EnginesWithoutEllipsoidGiveTheFalseOriginAndNaN) {
  CKvStereographicProjection oblique("No ellipsoid", "", "", 0.9999, 5, 52, 100, 200);
  CKvStereographicNorthPoleProjection north("No ellipsoid", "", "??", 70, 0, 100, 200);
  CKvStereographicSouthPoleProjection south("No ellipsoid", "", "??", -70, 0, 100, 200);
  for (CKvMapProjData* set :
       {static_cast<CKvMapProjData*>(&oblique), static_cast<CKvMapProjData*>(&north),
        static_cast<CKvMapProjData*>(&south)}) {
    std::unique_ptr<CKvProjection> engine(set->CreateProjection());
    SCOPED_TRACE(set->GetProjectionTypeTitle());
    double x, y, lon, lat;
    engine->Geo2Proj(10, 60, &x, &y);
    EXPECT_EQ(x, 0.0);  // the members are all 0, the false origin too
    EXPECT_EQ(y, 0.0);
    engine->Proj2Geo(100, 200, &lon, &lat);
    EXPECT_TRUE(std::isnan(lon) && std::isnan(lat));
    CKvEllipsoid ellipsoid;
    EXPECT_TRUE(engine->GetAnonymousEllipsoid(ellipsoid));
  }
}

}  // namespace
