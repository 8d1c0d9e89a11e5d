// WKT strings and catalogue records of every method with an engine resolve
// end to end: through CKvMapProjection, its units and the flat C entries.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "KvCart.h"
#include "TestCatalogue.h"
#include "catalogue/KvAlbersEqualAreaProjection.h"
#include "catalogue/KvCassiniSoldnerProjection.h"
#include "catalogue/KvEquidistantConicProjection.h"
#include "catalogue/KvHotineObliqueMercatorProjection.h"
#include "catalogue/KvKrovakProjection.h"
#include "catalogue/KvLambert1SPProjection.h"
#include "catalogue/KvLambert2SPProjection.h"
#include "catalogue/KvLambertAzimuthalEqualAreaProjection.h"
#include "catalogue/KvMercator1SPProjection.h"
#include "catalogue/KvMercator2SPProjection.h"
#include "catalogue/KvNewZealandMapGridProjection.h"
#include "catalogue/KvObliqueMercatorProjection.h"
#include "catalogue/KvPolarStereographicProjection.h"
#include "catalogue/KvRectifiedSkewOrthomorphicProjection.h"
#include "catalogue/KvRotatedLongitudeLatitudeProjection.h"
#include "catalogue/KvStereographicNorthPoleProjection.h"
#include "catalogue/KvStereographicProjection.h"
#include "catalogue/KvStereographicSouthPoleProjection.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"

namespace {

std::string Geogcs(const char* datum, const char* spheroid, const char* a, const char* invf) {
  return std::string("GEOGCS[\"") + datum + "\",DATUM[\"" + datum + "\",SPHEROID[\"" + spheroid +
         "\"," + a + "," + invf +
         "]],PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]]";
}

const std::string kClarke = Geogcs("NAD27", "Clarke 1866", "6378206.4", "294.9786982");
const std::string kWgs84 = Geogcs("WGS 84", "WGS 84", "6378137", "298.257223563");

// EPSG Guidance Note 7-2 worked examples (IOGP 373-7-2), each given as the
// .prj text of its system.  The Texas grid is in US survey feet, so the
// object's projected coordinates are too.
struct SCase {
  const char* what;
  std::string wkt;
  double lon, lat, x, y;
  double tolerance;
};

const SCase kCases[] = {
    {"Lambert 2SP, NAD27 / Texas South Central (GN 7-2: E 2963503.91, N 254759.80 ftUS)",
     "PROJCS[\"NAD27 / Texas South Central\"," + kClarke +
         ",PROJECTION[\"Lambert_Conformal_Conic_2SP\"],"
         "PARAMETER[\"standard_parallel_1\",28.38333333333333],"
         "PARAMETER[\"standard_parallel_2\",30.28333333333333],"
         "PARAMETER[\"latitude_of_origin\",27.83333333333333],"
         "PARAMETER[\"central_meridian\",-99],PARAMETER[\"false_easting\",2000000],"
         "PARAMETER[\"false_northing\",0],UNIT[\"US survey foot\",0.3048006096012192]]",
     -96, 28.5, 2963503.91, 254759.80, 0.01},
    {"Lambert 1SP, JAD69 / Jamaica National Grid (GN 7-2: E 255966.58, N 142493.51)",
     "PROJCS[\"JAD69 / Jamaica National Grid\"," + kClarke +
         ",PROJECTION[\"Lambert_Conformal_Conic_1SP\"],"
         "PARAMETER[\"latitude_of_origin\",18],PARAMETER[\"central_meridian\",-77],"
         "PARAMETER[\"scale_factor\",1],PARAMETER[\"false_easting\",250000],"
         "PARAMETER[\"false_northing\",150000],UNIT[\"metre\",1]]",
     -(76 + 56 / 60.0 + 37.26 / 3600), 17 + 55 / 60.0 + 55.80 / 3600, 255966.58, 142493.51, 0.01},
    {"Mercator 1SP, Makassar / NEIEZ (GN 7-2: E 5009726.58, N 569150.82)",
     "PROJCS[\"Makassar / NEIEZ\"," +
         Geogcs("Makassar", "Bessel 1841", "6377397.155", "299.1528128") +
         ",PROJECTION[\"Mercator_1SP\"],PARAMETER[\"central_meridian\",110],"
         "PARAMETER[\"scale_factor\",0.997],PARAMETER[\"false_easting\",3900000],"
         "PARAMETER[\"false_northing\",900000],UNIT[\"metre\",1]]",
     120, -3, 5009726.58, 569150.82, 0.01},
    {"Mercator 2SP, Pulkovo 1942 / Caspian Sea Mercator (GN 7-2: E 165704.29, N 5171848.07)",
     "PROJCS[\"Pulkovo 1942 / Caspian Sea Mercator\"," +
         Geogcs("Pulkovo 1942", "Krassowsky 1940", "6378245", "298.3") +
         ",PROJECTION[\"Mercator_2SP\"],PARAMETER[\"standard_parallel_1\",42],"
         "PARAMETER[\"central_meridian\",51],PARAMETER[\"false_easting\",0],"
         "PARAMETER[\"false_northing\",0],UNIT[\"metre\",1]]",
     53, 53, 165704.29, 5171848.07, 0.01},
    // echo "174.764 -36.848" | proj -f %.4f +proj=nzmg +lat_0=-41 +lon_0=173
    //   +x_0=2510000 +y_0=6023150 +ellps=intl   ->  2667729.4893 6482434.5110
    {"New Zealand map grid (proj +proj=nzmg: 2667729.4893 6482434.5110)",
     "PROJCS[\"NZGD49 / New Zealand Map Grid\"," +
         Geogcs("NZGD49", "International 1924", "6378388", "297") +
         ",PROJECTION[\"New_Zealand_Map_Grid\"],PARAMETER[\"latitude_of_origin\",-41],"
         "PARAMETER[\"central_meridian\",173],PARAMETER[\"false_easting\",2510000],"
         "PARAMETER[\"false_northing\",6023150],UNIT[\"metre\",1]]",
     174.764, -36.848, 2667729.4893, 6482434.5110, 0.001},
    {"Oblique stereographic, Amersfoort / RD New (GN 7-2: E 196105.283, N 557057.739)",
     "PROJCS[\"Amersfoort / RD New\"," +
         Geogcs("Amersfoort", "Bessel 1841", "6377397.155", "299.1528128") +
         ",PROJECTION[\"Double_Stereographic\"],PARAMETER[\"False_Easting\",155000],"
         "PARAMETER[\"False_Northing\",463000],PARAMETER[\"Central_Meridian\",5.38763888888889],"
         "PARAMETER[\"Scale_Factor\",0.9999079],PARAMETER[\"Latitude_Of_Origin\",52.15616055555556],"
         "UNIT[\"Meter\",1]]",
     6, 53, 196105.283, 557057.739, 0.01},
    {"Polar stereographic (A), WGS 84 / UPS North (GN 7-2: E 3320416.75, N 632668.43)",
     "PROJCS[\"WGS 84 / UPS North (E,N)\"," + kWgs84 +
         ",PROJECTION[\"Polar_Stereographic\"],PARAMETER[\"latitude_of_origin\",90],"
         "PARAMETER[\"central_meridian\",0],PARAMETER[\"scale_factor\",0.994],"
         "PARAMETER[\"false_easting\",2000000],PARAMETER[\"false_northing\",2000000],"
         "UNIT[\"metre\",1]]",
     44, 73, 3320416.75, 632668.43, 0.01},
    // Variant B as exported without a scale factor: the latitude of origin is
    // the latitude of true scale.
    {"Polar stereographic (B), WGS 84 / Australian Antarctic (GN 7-2: E 7255380.79, N 7053389.56)",
     "PROJCS[\"WGS 84 / Australian Antarctic Polar Stereographic\"," + kWgs84 +
         ",PROJECTION[\"Polar_Stereographic\"],PARAMETER[\"latitude_of_origin\",-71],"
         "PARAMETER[\"central_meridian\",70],PARAMETER[\"false_easting\",6000000],"
         "PARAMETER[\"false_northing\",6000000],UNIT[\"metre\",1]]",
     120, -75, 7255380.79, 7053389.56, 0.01},
    // echo "-75 120" | cs2cs -f %.4f EPSG:4326 EPSG:3031  ->  1419227.9158 -819391.6192
    {"Stereographic south pole, WGS 84 / Antarctic Polar Stereographic (cs2cs)",
     "PROJCS[\"WGS 84 / Antarctic Polar Stereographic\"," + kWgs84 +
         ",PROJECTION[\"Stereographic_South_Pole\"],PARAMETER[\"False_Easting\",0],"
         "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",0],"
         "PARAMETER[\"Standard_Parallel_1\",-71],UNIT[\"Meter\",1]]",
     120, -75, 1419227.9158, -819391.6192, 0.001},
    // echo "75 30" | cs2cs -f %.4f EPSG:4326 EPSG:3413  ->  1578206.4037 -422879.1313
    {"Stereographic north pole, WGS 84 / NSIDC Sea Ice Polar Stereographic North (cs2cs)",
     "PROJCS[\"WGS 84 / NSIDC Sea Ice Polar Stereographic North\"," + kWgs84 +
         ",PROJECTION[\"Stereographic_North_Pole\"],PARAMETER[\"False_Easting\",0],"
         "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",-45],"
         "PARAMETER[\"Standard_Parallel_1\",70],UNIT[\"Meter\",1]]",
     30, 75, 1578206.4037, -422879.1313, 0.001},
    // pyproj 3.4.1 on EPSG:5070: 96 W, 40 N is E 0.000, N 1886977.565; the
    // parameters under the names .prj files often give them
    {"Albers, NAD83 / Conus Albers (pyproj: E 0.000, N 1886977.565)",
     "PROJCS[\"NAD_1983_Contiguous_USA_Albers\"," +
         Geogcs("NAD83", "GRS 1980", "6378137", "298.257222101") +
         ",PROJECTION[\"Albers\"],PARAMETER[\"False_Easting\",0],"
         "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",-96],"
         "PARAMETER[\"Standard_Parallel_1\",29.5],PARAMETER[\"Standard_Parallel_2\",45.5],"
         "PARAMETER[\"Latitude_Of_Origin\",23],UNIT[\"Meter\",1]]",
     -96, 40, 0.0, 1886977.565, 0.001},
    // The Guidance Note's northing first, as EPSG:3035 orders its axes.
    {"LAEA, ETRS89-extended / LAEA Europe (GN 7-2: N 2999718.85, E 3962799.45)",
     "PROJCS[\"ETRS89-extended / LAEA Europe\"," +
         Geogcs("ETRS89", "GRS 1980", "6378137", "298.257222101") +
         ",PROJECTION[\"Lambert_Azimuthal_Equal_Area\"],PARAMETER[\"latitude_of_center\",52],"
         "PARAMETER[\"longitude_of_center\",10],PARAMETER[\"false_easting\",4321000],"
         "PARAMETER[\"false_northing\",3210000],UNIT[\"metre\",1],AXIS[\"Northing\",NORTH],"
         "AXIS[\"Easting\",EAST]]",
     5, 50, 2999718.85, 3962799.45, 0.01},
    // In Clarke's links: 1 cm is 0.05 link.
    {"Cassini-Soldner, Trinidad 1903 / Trinidad Grid (GN 7-2: E 66644.94, N 82536.22 links)",
     "PROJCS[\"Trinidad 1903 / Trinidad Grid\"," +
         Geogcs("Trinidad 1903", "Clarke 1858", "6378293.645208759", "294.2606763692606") +
         ",PROJECTION[\"Cassini_Soldner\"],PARAMETER[\"latitude_of_origin\",10.44166666666667],"
         "PARAMETER[\"central_meridian\",-61.33333333333334],"
         "PARAMETER[\"false_easting\",430000],PARAMETER[\"false_northing\",325000],"
         "UNIT[\"Clarke's link\",0.201166195164]]",
     -62, 10, 66644.94, 82536.22, 0.05},
    // pyproj 3.4.1 on +proj=eqdc +lat_1=20 +lat_2=60 +lat_0=40 +lon_0=-96
    // +datum=WGS84: 100 W, 45 N is E -296528.434, N 561938.465
    {"Equidistant conic, North America Equidistant Conic (pyproj: E -296528.434, N 561938.465)",
     "PROJCS[\"North_America_Equidistant_Conic\"," +
         Geogcs("WGS 84", "WGS 84", "6378137", "298.257223563") +
         ",PROJECTION[\"Equidistant_Conic\"],PARAMETER[\"False_Easting\",0],"
         "PARAMETER[\"False_Northing\",0],PARAMETER[\"Longitude_Of_Center\",-96],"
         "PARAMETER[\"Standard_Parallel_1\",20],PARAMETER[\"Standard_Parallel_2\",60],"
         "PARAMETER[\"Latitude_Of_Center\",40],UNIT[\"Meter\",1]]",
     -100, 45, -296528.434, 561938.465, 0.001},
    // python3: Transformer.from_crs(c.geodetic_crs, c, always_xy=True).transform(-134, 57)
    //   with c = CRS.from_epsg(26931)  ->  798421.423803 575147.120069
    {"Hotine variant A, NAD83 / Alaska zone 1 (PROJ: 798421.4238 575147.1201)",
     "PROJCS[\"NAD83 / Alaska zone 1\"," +
         Geogcs("NAD83", "GRS 1980", "6378137", "298.257222101") +
         ",PROJECTION[\"Hotine_Oblique_Mercator\"],PARAMETER[\"latitude_of_center\",57],"
         "PARAMETER[\"longitude_of_center\",-133.6666666666667],"
         "PARAMETER[\"azimuth\",323.1301023611111],"
         "PARAMETER[\"rectified_grid_angle\",323.1301023611111],PARAMETER[\"scale_factor\",0.9999],"
         "PARAMETER[\"false_easting\",5000000],PARAMETER[\"false_northing\",-5000000],"
         "UNIT[\"metre\",1]]",
     -134, 57, 798421.4238, 575147.1201, 0.001},
    // the same with CRS.from_epsg(2056) at (8, 47)  ->  2642617.528075 1205442.813900
    {"Hotine variant B, CH1903+ / LV95 (PROJ: 2642617.5281 1205442.8139)",
     "PROJCS[\"CH1903+_LV95\"," + Geogcs("CH1903+", "Bessel_1841", "6377397.155", "299.1528128") +
         ",PROJECTION[\"Hotine_Oblique_Mercator_Azimuth_Center\"],"
         "PARAMETER[\"False_Easting\",2600000.0],PARAMETER[\"False_Northing\",1200000.0],"
         "PARAMETER[\"Scale_Factor\",1.0],PARAMETER[\"Azimuth\",90.0],"
         "PARAMETER[\"Longitude_Of_Center\",7.43958333333333],"
         "PARAMETER[\"Latitude_Of_Center\",46.9524055555556],UNIT[\"Meter\",1.0]]",
     8, 47, 2642617.5281, 1205442.8139, 0.001},
    {"Variant B with its own grid angle, Timbalai 1948 / RSO Borneo (GN 7-2: E 679245.73, N "
     "596562.78)",
     "PROJCS[\"Timbalai_1948_RSO_Borneo_Meters\"," +
         Geogcs("Timbalai_1948", "Everest_Definition_1967", "6377298.556", "300.8017") +
         ",PROJECTION[\"Rectified_Skew_Orthomorphic_Center\"],PARAMETER[\"False_Easting\",590476.87],"
         "PARAMETER[\"False_Northing\",442857.65],PARAMETER[\"Scale_Factor\",0.99984],"
         "PARAMETER[\"Azimuth\",53.3158204722222],PARAMETER[\"Longitude_Of_Center\",115.0],"
         "PARAMETER[\"Latitude_Of_Center\",4.0],PARAMETER[\"XY_Plane_Rotation\",53.1301023611111],"
         "UNIT[\"Meter\",1.0]]",
     115 + 48 / 60.0 + 19.8196 / 3600, 5 + 23 / 60.0 + 14.1129 / 3600, 679245.73, 596562.78, 0.01},
    {"Krovak east-north, S-JTSK (GN 7-2: southing 1050538.63, westing 568990.99)",
     "PROJCS[\"S-JTSK_Krovak_East_North\"," +
         Geogcs("S_JTSK", "Bessel_1841", "6377397.155", "299.1528128") +
         ",PROJECTION[\"Krovak\"],PARAMETER[\"False_Easting\",0.0],"
         "PARAMETER[\"False_Northing\",0.0],PARAMETER[\"Pseudo_Standard_Parallel_1\",78.5],"
         "PARAMETER[\"Scale_Factor\",0.9999],PARAMETER[\"Azimuth\",30.2881397527778],"
         "PARAMETER[\"Longitude_Of_Center\",24.8333333333333],"
         "PARAMETER[\"Latitude_Of_Center\",49.5],PARAMETER[\"X_Scale\",-1.0],"
         "PARAMETER[\"Y_Scale\",1.0],PARAMETER[\"XY_Plane_Rotation\",90.0],UNIT[\"Meter\",1.0]]",
     16 + 50 / 60.0 + 59.179 / 3600, 50 + 12 / 60.0 + 32.442 / 3600, -568990.99, -1050538.63,
     0.01},
};

TEST(ResolvesEngineMethods, WktOfEachMethodProjectsThePublishedExamples) {
  for (const SCase& c : kCases) {
    SCOPED_TRACE(c.what);
    ASSERT_TRUE(CKvMapProjection::IsValid(c.wkt.c_str()));
    CKvMapProjection object(c.wkt);
    ASSERT_NE(object.GetProjection(), nullptr);
    double x = 0, y = 0, lon = 0, lat = 0;
    object.Geo2Proj(c.lon, c.lat, &x, &y);
    EXPECT_NEAR(x, c.x, c.tolerance);
    EXPECT_NEAR(y, c.y, c.tolerance);
    object.Proj2Geo(x, y, &lon, &lat);
    EXPECT_NEAR(lon, c.lon, 1e-9);
    EXPECT_NEAR(lat, c.lat, 1e-9);

    // The same through the flat entries.
    void* handle = nullptr;
    int status = -1;
    C_KVMP_CREATE(c.wkt.c_str(), &handle, &status);
    ASSERT_EQ(status, 0);
    double cx = 0, cy = 0;
    C_KVMP_GEO2PROJ(handle, c.lon, c.lat, &cx, &cy);
    EXPECT_EQ(cx, x);
    EXPECT_EQ(cy, y);
    C_KVMP_DESTROY(&handle, &status);
    EXPECT_EQ(status, 0);
  }
}

// A catalogue record of each method builds the engine its WKT builds, and
// the engine's own WKT leads back to the same numbers.
TEST(ResolvesEngineMethods, CatalogueRecordsAgreeWithTheirWkt) {
  kvtest::EnsureCatalogue();
  kvtest::ScopedRecord records[] = {
      kvtest::ScopedRecord(new CKvLambert2SPProjection("Resolve LCC2", "B", "CC", 28.38333333333333,
                                                       30.28333333333333, -99, 27.83333333333333,
                                                       609601.2192024384, 0)),
      kvtest::ScopedRecord(
          new CKvLambert1SPProjection("Resolve LCC1", "B", "CC", 1, -77, 18, 250000, 150000)),
      kvtest::ScopedRecord(
          new CKvMercator1SPProjection("Resolve Merc1", "B", "BR", 0.997, 110, 3900000, 900000)),
      kvtest::ScopedRecord(new CKvMercator2SPProjection("Resolve Merc2", "B", "KA", 42, 51, 0, 0)),
      kvtest::ScopedRecord(new CKvNewZealandMapGridProjection("Resolve NZMG", "B", "IN", 173, -41,
                                                              2510000, 6023150)),
      kvtest::ScopedRecord(new CKvRotatedLongitudeLatitudeProjection("Resolve rotated", "B", "XY",
                                                                     10, -40, 15)),
      kvtest::ScopedRecord(new CKvStereographicProjection(
          "Resolve stereo", "B", "BR", 0.9999079, 5.38763888888889, 52.15616055555556, 155000,
          463000)),
      kvtest::ScopedRecord(
          new CKvStereographicNorthPoleProjection("Resolve north pole", "B", "WE", 70, -45, 0, 0)),
      kvtest::ScopedRecord(new CKvStereographicSouthPoleProjection("Resolve south pole", "B", "WE",
                                                                   -71, 70, 6e6, 6e6)),
      kvtest::ScopedRecord(new CKvPolarStereographicProjection("Resolve polar A", "B", "WE", 0.994,
                                                               0, 90, 2e6, 2e6)),
      kvtest::ScopedRecord(
          new CKvPolarStereographicProjection("Resolve polar B", "B", "WE", 1, 0, -71, 0, 0)),
      kvtest::ScopedRecord(new CKvAlbersEqualAreaProjection("Resolve Albers", "B", "RF", -18, -36,
                                                            132, 0, 0, 0)),
      kvtest::ScopedRecord(new CKvLambertAzimuthalEqualAreaProjection(
          "Resolve LAEA", "B", "WE", -45, -90, 0, 0)),
      kvtest::ScopedRecord(new CKvCassiniSoldnerProjection("Resolve Cassini", "B", "BR",
                                                           13.627203666666666, 52.41864827777778,
                                                           40000, 10000)),
      kvtest::ScopedRecord(new CKvEquidistantConicProjection("Resolve eqdc", "B", "WE", 20, 60,
                                                             -96, 40, 0, 0)),
      kvtest::ScopedRecord(new CKvHotineObliqueMercatorProjection(
          "Resolve Hotine", "B", "RF", 0.9999, -133.6666666666667, 57, 323.1301023611111, 5e6, -5e6)),
      kvtest::ScopedRecord(new CKvObliqueMercatorProjection(
          "Resolve oblique", "B", "BR", 1, 7.439583333333333, 46.95240555555556, 90, 2600000,
          1200000)),
      kvtest::ScopedRecord(new CKvRectifiedSkewOrthomorphicProjection(
          "Resolve skew", "B", "RF", 0.99984, 102.25, 4, 323.0257964666667, 323.1301023611111,
          804671, 0)),
      kvtest::ScopedRecord(new CKvKrovakProjection("Resolve Krovak", "B", "BR", 0.9999, 78.5,
                                                   24.83333333333333, 49.5, 30.28813975277778, 90,
                                                   -1, 1, 0, 0)),
  };
  for (const kvtest::ScopedRecord& record : records) {
    const std::string name = record.get()->GetName();
    SCOPED_TRACE(name);
    ASSERT_TRUE(CKvMapProjection::IsValid(name.c_str()));
    CKvMapProjection byName(name);
    ASSERT_NE(byName.GetProjection(), nullptr);
    EXPECT_EQ(byName.GetProjection()->GetName(), name);
    // The object keeps a catalogue name as the engine's WKT.
    const std::string wkt = byName.GetProjectionString();
    ASSERT_EQ(wkt.rfind("PROJCS[", 0), 0u) << wkt;
    CKvMapProjection byWkt(wkt);
    ASSERT_NE(byWkt.GetProjection(), nullptr);
    // A point half a degree from the system's origin.
    double lon = 0, lat = 0, x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    byName.GetOrigin(&lon, &lat);
    lon += 0.5;
    lat = lat > 0 ? lat - 0.5 : lat + 0.5;
    byName.Geo2Proj(lon, lat, &x1, &y1);
    byWkt.Geo2Proj(lon, lat, &x2, &y2);
    EXPECT_NEAR(x1, x2, 1e-6);
    EXPECT_NEAR(y1, y2, 1e-6);
    EXPECT_TRUE(CKvMapProjection::AreIdentical(name.c_str(), wkt.c_str()));
  }
}

}  // namespace
