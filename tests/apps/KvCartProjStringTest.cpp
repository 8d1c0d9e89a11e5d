#include <gtest/gtest.h>

#include <string>

#include "KvCartProjString.h"
#include "catalogue/KvMapProjData.h"
#include "datum/KvDatumShift.h"
#include "platform/KvConstants.h"
#include "wkt/KvPRJParser.h"

namespace {

using kvcart::ProjStringToWkt;
constexpr double kUnset = KvConst::kNotSet;

// The WKT parameters a proj string must give, as the library's reader finds
// them: false easting and northing in the system's unit, angles in degrees.
struct SCase {
  const char* proj;
  CKvMapProjData::EProjectionType type;
  double falseEasting, falseNorthing, centralMeridian, parallel1, parallel2, latitudeOfOrigin,
      scale, unit;
};

TEST(KvCartProjString, MapsEachMethodOntoTheParametersOfItsWktMethod) {
  using P = CKvMapProjData;
  const SCase cases[] = {
      {"+proj=utm +zone=32", P::eTransverseMercator, 500000, 0, 9, kUnset, kUnset, 0, 0.9996, 1},
      {"+proj=utm +zone=1 +south", P::eTransverseMercator, 500000, 1e7, -177, kUnset, kUnset, 0,
       0.9996, 1},
      {"+proj=tmerc +lat_0=49 +lon_0=-2 +k_0=0.9996012717 +x_0=400000 +y_0=-100000",
       P::eTransverseMercator, 400000, -100000, -2, kUnset, kUnset, 49, 0.9996012717, 1},
      // proj's false easting is in metres whatever the unit: 1000 m is 1 km.
      {"+proj=tmerc +x_0=1000 +units=km", P::eTransverseMercator, 1, 0, 0, kUnset, kUnset, 0, 1,
       1000},
      // The prime meridian moves the central meridian to Greenwich.
      {"+proj=tmerc +lon_0=1 +pm=paris", P::eTransverseMercator, 0, 0, 3.33722917, kUnset,
       kUnset, 0, 1, 1},
      {"+proj=lcc +lat_1=49 +lat_2=44 +lat_0=46.5 +lon_0=3", P::eLambert2SP, 0, 0, 3, 49, 44,
       46.5, kUnset, 1},
      // A tangent cone with its origin elsewhere stays a two-parallel system.
      {"+proj=lcc +lat_1=45 +lon_0=3", P::eLambert2SP, 0, 0, 3, 45, 45, 0, kUnset, 1},
      {"+proj=lcc +lat_1=18 +lat_0=18 +k=0.99 +lon_0=-77", P::eLambert1SP, 0, 0, -77, kUnset,
       kUnset, 18, 0.99, 1},
      {"+proj=merc +lat_ts=33 +lon_0=100", P::eMercator2SP, 0, 0, 100, 33, kUnset, kUnset,
       kUnset, 1},
      {"+proj=merc +k=0.997 +lon_0=110 +to_meter=0.3048", P::eMercator1SP, 0, 0, 110, kUnset,
       kUnset, kUnset, 0.997, 0.3048},
      {"+proj=aea +lat_1=29.5 +lat_2=45.5 +lat_0=23 +lon_0=-96", P::eAlbersEqualArea, 0, 0, -96,
       29.5, 45.5, 23, kUnset, 1},
      {"+proj=eqdc +lat_1=20 +lat_2=60 +lat_0=40 +lon_0=10 +x_0=5", P::eEquidistantConic, 5, 0,
       10, 20, 60, 40, kUnset, 1},
      {"+proj=laea +lat_0=52 +lon_0=10 +x_0=4321000 +y_0=3210000",
       P::eLambertAzimuthalEqualArea, 4321000, 3210000, 10, kUnset, kUnset, 52, kUnset, 1},
      {"+proj=cass +lat_0=10.44 +lon_0=-61.33", P::eCassiniSoldner, 0, 0, -61.33, kUnset, kUnset,
       10.44, kUnset, 1},
      {"+proj=sterea +lat_0=52.15 +lon_0=5.38 +k=0.9999079", P::eStereographic, 0, 0, 5.38,
       kUnset, kUnset, 52.15, 0.9999079, 1},
      // Polar stereographic: true scale at +lat_ts, read as the latitude of origin.
      {"+proj=stere +lat_0=-90 +lat_ts=-71 +lon_0=0", P::ePolarStereographic, 0, 0, 0, kUnset,
       kUnset, -71, 1, 1},
      {"+proj=stere +lat_0=90 +k=0.994 +lon_0=-45", P::ePolarStereographic, 0, 0, -45, kUnset,
       kUnset, 90, 0.994, 1},
  };
  for (const SCase& c : cases) {
    SCOPED_TRACE(c.proj);
    std::string wkt, error;
    ASSERT_TRUE(ProjStringToWkt(c.proj, wkt, error)) << error;
    CKvPRJParser parser(wkt.c_str());
    ASSERT_TRUE(parser.Parse(false)) << wkt;
    EXPECT_EQ(parser.GetProjectionType(), c.type);
    EXPECT_DOUBLE_EQ(parser.GetFalseEasting(), c.falseEasting);
    EXPECT_DOUBLE_EQ(parser.GetFalseNorthing(), c.falseNorthing);
    EXPECT_DOUBLE_EQ(parser.GetCentralMeridian(), c.centralMeridian);
    const bool twoParallels = c.type == P::eLambert2SP || c.type == P::eAlbersEqualArea ||
                              c.type == P::eEquidistantConic || c.type == P::eMercator2SP;
    if (twoParallels) {
      EXPECT_DOUBLE_EQ(parser.GetStandardParallel1(), c.parallel1);
    }
    if (c.type != P::eMercator2SP && twoParallels) {
      EXPECT_DOUBLE_EQ(parser.GetStandardParallel2(), c.parallel2);
    }
    if (c.latitudeOfOrigin != kUnset) {
      EXPECT_DOUBLE_EQ(parser.GetLatitudeOfOrigin(), c.latitudeOfOrigin);
    }
    if (c.scale != kUnset) {
      EXPECT_DOUBLE_EQ(parser.GetScaleFactor(), c.scale);
    }
    CString unitName;
    double unit = 0;
    parser.GetProjUnit(unitName, unit);
    EXPECT_DOUBLE_EQ(unit, c.unit);
  }
}

TEST(KvCartProjString, ReadsTheEllipsoidAndTheShiftToWgs84) {
  struct {
    const char* proj;
    double a, rf;
    CKvCartDef::ETypeOfDatumShift shift;
  } cases[] = {
      // GRS 1980 when nothing is said, as proj does.
      {"+proj=longlat", 6378137, 298.257222101, CKvCartDef::eNoShift},
      {"+proj=longlat +ellps=intl", 6378388, 297, CKvCartDef::eNoShift},
      {"+proj=longlat +datum=WGS84", 6378137, 298.257223563, CKvCartDef::eNoShift},
      // +ellps wins over the datum's ellipsoid, +a over both.
      {"+proj=longlat +datum=NAD83 +ellps=clrk66", 6378206.4, 294.97869821390583,
       CKvCartDef::eNoShift},
      {"+proj=longlat +ellps=intl +a=6378000 +b=6356000", 6378000, 6378000.0 / 22000.0,
       CKvCartDef::eNoShift},
      {"+proj=longlat +R=6371000", 6371000, 0, CKvCartDef::eNoShift},
      {"+proj=longlat +a=6378137 +f=0.0033528106647474805", 6378137, 298.257223563,
       CKvCartDef::eNoShift},
      {"+proj=longlat +ellps=bessel +towgs84=598.1,73.7,418.2", 6377397.155, 299.1528128,
       CKvCartDef::e3Parameter},
      {"+proj=longlat +ellps=airy +towgs84=446.448,-125.157,542.06,0.15,0.247,0.842,-20.489",
       6377563.396, 299.3249646, CKvCartDef::e7Parameter},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.proj);
    std::string wkt, error;
    ASSERT_TRUE(ProjStringToWkt(c.proj, wkt, error)) << error;
    CKvPRJParser parser(wkt.c_str());
    ASSERT_TRUE(parser.Parse(false)) << wkt;
    EXPECT_EQ(parser.GetProjectionType(), CKvMapProjData::eGeographical);
    CString name;
    double a = 0, rf = 0;
    parser.GetEllipsoid(name, a, rf);
    EXPECT_DOUBLE_EQ(a, c.a);
    EXPECT_NEAR(rf, c.rf, 1e-9 * c.rf);
    CKvDatumShift shift;
    parser.GetDatumShift(shift);
    EXPECT_EQ(shift.GetType(), c.shift);
  }
}

TEST(KvCartProjString, RefusesWhatItCannotHonour) {
  const char* cases[][2] = {
      {"+proj=utm", "+proj=utm needs +zone=1 to +zone=60"},
      {"+proj=utm +zone=32.5", "+proj=utm needs +zone=1 to +zone=60"},
      {"+proj=utm +zone=32 +lon_0=9", "+lon_0 does not apply to +proj=utm"},
      {"+proj=tmerc +k=1 +k_0=1", "+k and +k_0 are the same parameter; give one"},
      {"+proj=tmerc +lon_0=3 +lon_0=4", "+lon_0 is given twice"},
      {"+proj=lcc +lat_0=45", "+proj=lcc needs +lat_1"},
      {"+proj=lcc +lat_1=45 +k=0.99",
       "+proj=lcc with a scale factor other than 1 needs +lat_0 equal to +lat_1 and no other "
       "+lat_2"},
      {"+proj=merc +lat_ts=10 +k=1", "+proj=merc takes either +lat_ts or +k, not both"},
      {"+proj=stere +lat_0=45", "+proj=stere is read only in its polar forms"},
      {"+proj=tmerc +a=6378137", "+a needs +b, +rf or +f (or give +R for a sphere)"},
      {"+proj=tmerc +ellps=nonsense", "unknown ellipsoid +ellps=nonsense"},
      {"+proj=tmerc +units=furlong", "unknown unit +units=furlong"},
      {"+proj=tmerc +towgs84=1,2", "+towgs84 takes 3 or 7 values"},
      {"+proj=tmerc +towgs84=1,2,x", "+towgs84=1,2,x is not a list of numbers"},
      {"+proj=tmerc +datum=NAD27", "+datum=NAD27 is not read"},
      {"+proj=tmerc +init=epsg:4326", "+init files are not read"},
      {"+proj=tmerc lon_0=3", "'lon_0=3' is not a +key or +key=value entry"},
      {"+lon_0=3", "a proj string needs +proj="},
      {"+proj=tmerc +lon_0=nan", "+lon_0=nan is not a decimal number"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c[0]);
    std::string wkt, error;
    EXPECT_FALSE(ProjStringToWkt(c[0], wkt, error));
    EXPECT_EQ(error.rfind(c[1], 0), 0u) << error;
  }
}

}  // namespace
