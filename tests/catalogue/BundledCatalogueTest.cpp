// The bundled catalogue files in data/, written by tools/make_catalogue.py
// from the EPSG registry v10.076 (2022-08-31).  Registry values below are
// quoted as value[unit] ([9102] degrees, [9110] DDD.MMSSsss, [9105] grads,
// [9001] metres, [9003] US survey feet, [9301] British chains of 20.116756 m),
// as read with
//   sqlite3 /usr/share/proj/proj.db "SELECT param1_name, param1_value, param1_uom_code, ...
//     FROM conversion WHERE code = (SELECT conversion_code FROM projected_crs
//     WHERE auth_name = 'EPSG' AND name = '<record name>')"

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "TestCatalogue.h"
#include "catalogue/KvEllipsoidList.h"
#include "catalogue/KvMapProjData.h"
#include "catalogue/KvMapProjectionList.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"
#include "platform/tsf.h"

namespace {

typedef CKvMapProjData D;
using Values = std::vector<double>;

constexpr double kUsFoot = 0.30480060960121924;

double Dms(double d, double m, double s = 0) { return d + (d < 0 ? -1 : 1) * (m / 60 + s / 3600); }

const char* const kFiles[] = {"map_projection.tsf", "state_plane_nad83.tsf",
                              "state_plane_nad27.tsf"};

Values Parameters(CKvMapProjData& record) {
  Values values;
  std::string label;
  double value = 0;
  D::EParamType kind;
  for (int i = 0; record.GetParameter(i, label, value, kind); ++i) values.push_back(value);
  return values;
}

// The ellipsoid file, and each catalogue file in a list of its own, read once
// for the suite (they hold some five thousand records).
struct SBundled {
  CKvEllipsoidList ellipsoids;
  CKvMapProjectionList lists[3];
  int ellipsoidStatus = -1, status[3] = {-1, -1, -1};
  std::vector<CKvMapProjData*> all;  // of the three lists
};

class BundledCatalogue : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    s = std::make_unique<SBundled>();
    s->ellipsoidStatus = s->ellipsoids.ReadEllipsoids(KVCART_DATA_DIR "ellipsoid.tsf", false);
    s->ellipsoids.GenerateCompleteList();
    for (int i = 0; i < 3; ++i) {
      s->status[i] =
          s->lists[i].ReadMapProjections(std::string(KVCART_DATA_DIR) + kFiles[i], false);
      s->all.insert(s->all.end(), s->lists[i].GetIteratorBegin(), s->lists[i].GetIteratorEnd());
    }
  }
  static void TearDownTestSuite() { s.reset(); }
  static std::unique_ptr<SBundled> s;
};

std::unique_ptr<SBundled> BundledCatalogue::s;

// The generator's report for registry v10.076: 5135 projected CRSs, of which
// 110 use methods without a parameter set here.
TEST_F(BundledCatalogue, FilesParseIntoOneRecordPerSupportedRegistrySystem) {
  const std::ptrdiff_t expected[] = {3997, 906, 122};
  std::set<std::string> names;
  for (int i = 0; i < 3; ++i) {
    SCOPED_TRACE(kFiles[i]);
    EXPECT_EQ(s->status[i], TSF_OK);
    EXPECT_EQ(std::distance(s->lists[i].GetIteratorBegin(), s->lists[i].GetIteratorEnd()),
              expected[i]);
  }
  for (CKvMapProjData* r : s->all) {
    EXPECT_FALSE(r->CanEdit()) << r->GetName();  // system files are read-only
    EXPECT_FALSE(r->GetBranchName().empty()) << r->GetName();
    names.insert(r->GetName());
  }
  // No record hides another, and none takes a built-in name.
  EXPECT_EQ(names.size(), 3997u + 906u + 122u);
  for (const char* builtIn : {"LONG/LAT", "UTM-32", "NON-UTM"}) EXPECT_EQ(names.count(builtIn), 0u);
}

TEST_F(BundledCatalogue, EveryRecordNamesABundledEllipsoid) {
  ASSERT_EQ(s->ellipsoidStatus, TSF_OK);
  CKvEllipsoidList& ellipsoids = s->ellipsoids;
  std::vector<CKvEllipsoid*> all(ellipsoids.GetIteratorBegin(CKvEllipsoidList::eAllEllipsoids),
                                 ellipsoids.GetIteratorEnd(CKvEllipsoidList::eAllEllipsoids));
  // The 24 hand-written entries, then 19 registry ellipsoids matching none
  // (the last, the sphere of EPSG:3857).
  EXPECT_EQ(all.size(), 24u + 19u);
  std::set<std::string> ids;
  for (CKvEllipsoid* e : all) EXPECT_TRUE(ids.insert(e->GetID()).second) << e->GetID();

  std::set<std::string> used;
  for (CKvMapProjData* r : s->all) {
    EXPECT_NE(ellipsoids.GetEllipsoid(r->GetEllipsoidID()), nullptr)
        << r->GetName() << " on '" << r->GetEllipsoidID() << "'";
    used.insert(r->GetEllipsoidID());
  }
  // 39 registry ellipsoids (the sphere of EPSG:3857 among them); GRS 1980
  // and CGCS2000 share "RF", the Australian National Spheroid and GRS 1967
  // Modified share "AN".
  EXPECT_EQ(used.size(), 37u);

  // Clarke 1880 (IGN), EPSG 7011: a = 6378249.2 m, b = 6356515.0 m, so
  // 1/f = 6378249.2 / 21734.2 (python3 fractions, rounded once).
  const CKvEllipsoid* ign = ellipsoids.GetEllipsoid("E7011");
  ASSERT_NE(ign, nullptr);
  EXPECT_EQ(ign->GetName(), "Clarke 1880 (IGN)");
  EXPECT_EQ(ign->GetMajor(), 6378249.2);
  EXPECT_EQ(ign->GetInvFlatness(), 293.4660212936294);
  // Clarke 1858, EPSG 7007: a = 20926348, b = 20855233 Clarke's feet (0.3047972654 m).
  const CKvEllipsoid* clarke1858 = ellipsoids.GetEllipsoid("E7007");
  ASSERT_NE(clarke1858, nullptr);
  EXPECT_DOUBLE_EQ(clarke1858->GetMajor(), 20926348 * 0.3047972654);
  EXPECT_DOUBLE_EQ(clarke1858->GetInvFlatness(), 20926348.0 / (20926348 - 20855233));
}

TEST_F(BundledCatalogue, RecordsCarryTheRegistryValuesInDegreesAndMetres) {
  const struct {
    const char* name;
    int file;
    D::EProjectionType type;
    const char* ellipsoid;
    const char* branch;
    Values values;  // in GetParameter order
  } cases[] = {
      // 49[9102], -2[9102], 0.9996012717, 400000[9001], -100000[9001]
      {"OSGB36 / British National Grid", 0, D::eTransverseMercator, "AA",
       "Ordnance Survey of Great Britain 1936", Values{0.9996012717, -2, 49, 400000, -100000}},
      // false origin 27.5, -99.0[9110]; parallels 30.17, 28.23[9110]; 600000, 4000000[9001]
      {"NAD83 / Texas South Central", 1, D::eLambert2SP, "RF", "North American Datum 1983",
       Values{Dms(30, 17), Dms(28, 23), -99, Dms(27, 50), 600000, 4000000}},
      // the same zone of 1927: parallels 28.23, 30.17[9110]; 2000000[9003], 0[9003]
      {"NAD27 / Texas South Central", 2, D::eLambert2SP, "CC", "North American Datum 1927",
       Values{Dms(28, 23), Dms(30, 17), -99, Dms(27, 50), 2000000 * kUsFoot, 0}},
      // 16404166.67[9003] both ways; 57.0, -133.4, 323.07483685[9110] twice
      {"NAD27 / Alaska zone 1", 2, D::eHotineObliqueMercator, "CC", "North American Datum 1927",
       Values{0.9999, Dms(-133, 40), 57, Dms(323, 7, 48.3685), 16404166.67 * kUsFoot,
              -16404166.67 * kUsFoot}},
      // 52.0922178[9110], 5.23155[9110], 0.9999079, 155000, 463000
      {"Amersfoort / RD New", 0, D::eStereographic, "BR", "Amersfoort",
       Values{0.9999079, Dms(5, 23, 15.5), Dms(52, 9, 22.178), 155000, 463000}},
      // 45.1833[9110], -86.0[9110], azimuth = grid angle = 337.25556[9102]
      {"NAD83 / Michigan Oblique Mercator", 0, D::eHotineObliqueMercator, "RF",
       "North American Datum 1983",
       Values{0.9996, -86, Dms(45, 18, 33), 337.25556, 2546731.496, -4354009.816}},
      // 4.0, 115.0[9110]; azimuth 53.18569537[9110], grid angle 53.07483685[9110]
      {"Timbalai 1948 / RSO Sarawak LSD (m)", 0, D::eRectifiedSkewOrthomorphic, "EB",
       "Timbalai 1948",
       Values{0.99984, 115, 4, Dms(53, 18, 56.9537), Dms(53, 7, 48.3685), 2000000, 5000000}},
      // 4.0, 102.15[9110]; 323.01328458, 323.07483685[9110]; 40000[9301], 0[9301]
      {"Kertau (RSO) / RSO Malaya (ch)", 0, D::eRectifiedSkewOrthomorphic, "ED", "Kertau (RSO)",
       Values{0.99984, Dms(102, 15), 4, Dms(323, 1, 32.8458), Dms(323, 7, 48.3685),
              40000 * 20.116756, 0}},
      // 52[9105], 0[9105] east of Paris (2.5969213[9105]), 0.99987742, 600000, 2200000
      {"NTF (Paris) / Lambert zone II", 0, D::eLambert1SP, "E7011",
       "Nouvelle Triangulation Francaise (Paris)",
       Values{0.99987742, 2.5969213 * 0.9, 52 * 0.9, 600000, 2200000}},
      // standard parallel -71[9102], longitude of origin 0[9102]
      {"WGS 84 / Antarctic Polar Stereographic", 0, D::eStereographicSouthPole, "WE",
       "World Geodetic System 1984 ensemble", Values{-71, 0, 0, 0}},
      // variant A: 90[9102], 0[9102], 0.994, 2000000, 2000000
      {"WGS 84 / UPS North (N,E)", 0, D::ePolarStereographic, "WE",
       "World Geodetic System 1984 ensemble", Values{0.994, 0, 90, 2000000, 2000000}},
      // 46.570866, 7.26225, 90.0[9110] (grid angle the same), centre 2600000, 1200000
      {"CH1903+ / LV95", 0, D::eObliqueMercator, "BR", "CH1903+",
       Values{1, Dms(7, 26, 22.5), Dms(46, 57, 8.66), 90, 2600000, 1200000}},
      // 0.9999; 78.3, 42.3 east of Ferro (-17.4), 49.3, 30.171730311[9110]
      {"S-JTSK (Ferro) / Krovak", 0, D::eKrovak, "BR",
       "System of the Unified Trigonometrical Cadastral Network (Ferro)",
       Values{0.9999, 78.5, 42.5 - Dms(17, 40), 49.5, Dms(30, 17, 17.30311), 0, 1, 1, 0, 0}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    CKvMapProjData* record = s->lists[c.file].GetMapProjection(c.name);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->GetProjectionType(), c.type);
    EXPECT_EQ(record->GetEllipsoidID(), c.ellipsoid);
    EXPECT_EQ(record->GetBranchName(), c.branch);
    const Values values = Parameters(*record);
    ASSERT_EQ(values.size(), c.values.size());
    for (std::size_t i = 0; i < values.size(); ++i)
      EXPECT_DOUBLE_EQ(values[i], c.values[i]) << "parameter " << i;
  }
  // Left out: deprecated systems, methods without a parameter set.
  for (const char* absent : {"S-JTSK / Krovak East North", "Hartebeesthoek94 / Lo29"})
    for (CKvMapProjectionList& list : s->lists)
      EXPECT_EQ(list.GetMapProjection(absent), nullptr) << absent;
}

// GetParameter indices of each method's origin longitude and latitude (-1:
// the latitude is `fixedLat`) and of the false easting and northing found
// there (-1: the false origin lies elsewhere, as for the Hotine and rectified
// skew sets, or the axes are the method's own, as for Krovak).
struct SOrigin {
  int lon, lat;
  double fixedLat;
  int east, north;
};
const std::map<int, SOrigin> kOrigins = {
    {D::eTransverseMercator, {1, 2, 0, 3, 4}},
    {D::eLambert2SP, {2, 3, 0, 4, 5}},
    {D::eLambert1SP, {1, 2, 0, 3, 4}},
    {D::eStereographic, {1, 2, 0, 3, 4}},
    {D::eNewZealandMapGrid, {0, 1, 0, 2, 3}},
    {D::eHotineObliqueMercator, {1, 2, 0, -1, -1}},
    {D::eObliqueMercator, {1, 2, 0, 4, 5}},
    {D::eRectifiedSkewOrthomorphic, {1, 2, 0, -1, -1}},
    {D::eMercator2SP, {1, -1, 0, 2, 3}},
    {D::eMercator1SP, {1, -1, 0, 2, 3}},
    {D::eStereographicNorthPole, {1, -1, 90, 2, 3}},
    {D::eStereographicSouthPole, {1, -1, -90, 2, 3}},
    {D::eKrovak, {2, 3, 0, -1, -1}},
    {D::eAlbersEqualArea, {2, 3, 0, 4, 5}},
    {D::eLambertAzimuthalEqualArea, {0, 1, 0, 2, 3}},
    {D::eCassiniSoldner, {0, 1, 0, 2, 3}},
    {D::eEquidistantConic, {2, 3, 0, 4, 5}},
    {D::ePolarStereographic, {1, 2, 0, 3, 4}},
};

// Methods whose origin maps not onto the false origin but onto a line through
// it: the GetParameter indices of the false easting and northing, and the
// grid bearing of the line.  The Hotine variant A centre lies on the initial
// line, whose bearing is the grid angle (the azimuth, or the XY plane
// rotation); the Krovak centre on the image of the meridian of origin, the
// Xp axis, turned by the XY plane rotation.
struct SOriginLine {
  int east, north;
  double (*bearing)(const Values& p);
};
const std::map<int, SOriginLine> kOriginLines = {
    {D::eHotineObliqueMercator, {4, 5, [](const Values& p) { return p[3]; }}},
    {D::eRectifiedSkewOrthomorphic, {5, 6, [](const Values& p) { return p[4]; }}},
    {D::eKrovak, {8, 9, [](const Values& p) { return 90 - p[5]; }}},
};

// A method has an engine when its set's CreateProjection gives one; records
// of methods whose engine is still missing are listed, not failed.
TEST_F(BundledCatalogue, RecordsOfMethodsWithAnEngineBuildOneThatKeepsTheOrigin) {
  kvtest::EnsureEllipsoids();  // engines find their ellipsoid through the set-up
  std::map<int, int> built, missing;
  std::map<int, std::string> title;
  for (CKvMapProjData* record : s->all) {
    const int type = record->GetProjectionType();
    title[type] = record->GetProjectionTypeTitle();
    std::unique_ptr<CKvProjection> engine(record->CreateProjection());
    ++(engine ? built : missing)[type];
    if (!engine) continue;
    SCOPED_TRACE(record->GetName());
    const Values p = Parameters(*record);
    const auto found = kOrigins.find(type);
    ASSERT_NE(found, kOrigins.end()) << title[type];
    const SOrigin& o = found->second;
    const double lon0 = p[o.lon], lat0 = o.lat < 0 ? o.fixedLat : p[o.lat];
    double x = 0, y = 0;
    if (o.east >= 0) {
      engine->Geo2Proj(lon0, lat0, &x, &y);
      EXPECT_NEAR(x, p[o.east], 1e-3);
      EXPECT_NEAR(y, p[o.north], 1e-3);
    }
    const auto line = kOriginLines.find(type);
    if (line != kOriginLines.end()) {
      // The origin's distance from the line through the false origin.
      const SOriginLine& l = line->second;
      const double bearing = l.bearing(p) * 0.017453292519943295;
      engine->Geo2Proj(lon0, lat0, &x, &y);
      EXPECT_NEAR((x - p[l.east]) * std::cos(bearing) - (y - p[l.north]) * std::sin(bearing), 0,
                  1e-3);
    }
    // 0.2 degrees east of the origin and towards the equator, and back.
    const double lon = lon0 + 0.2, lat = lat0 + (lat0 > 0 ? -0.2 : 0.2);
    double lonBack = 0, latBack = 0;
    engine->Geo2Proj(lon, lat, &x, &y);
    engine->Proj2Geo(x, y, &lonBack, &latBack);
    // the same meridian: an engine may give it back in -180..180
    EXPECT_NEAR(std::remainder(lonBack - lon, 360.0), 0.0, 1e-8);
    EXPECT_NEAR(latBack, lat, 1e-8);
  }
  // The transverse Mercator engine exists, and it is most of the catalogue.
  EXPECT_EQ(built[D::eTransverseMercator], 3687);
  // Every record of the stereographic family, the polar grids included.
  EXPECT_EQ(built[D::eStereographic], 19);
  EXPECT_EQ(built[D::eStereographicNorthPole], 3);
  EXPECT_EQ(built[D::eStereographicSouthPole], 23);
  EXPECT_EQ(built[D::ePolarStereographic], 10);
  // Every Albers, Lambert azimuthal equal-area and Cassini-Soldner record
  // (the registry has no equidistant conic system).
  EXPECT_EQ(built[D::eAlbersEqualArea], 36);
  EXPECT_EQ(built[D::eLambertAzimuthalEqualArea], 15);
  EXPECT_EQ(built[D::eCassiniSoldner], 30);

  int withEngine = 0, without = 0;
  std::cout << "Bundled records by method (with engine / without):\n";
  for (const auto& t : title) {
    const int b = built[t.first], m = missing[t.first];
    EXPECT_TRUE(b == 0 || m == 0) << t.second << ": " << b << " records built an engine, " << m
                                  << " did not";
    std::cout << "  " << t.first << " " << t.second << ": " << b << " / " << m << "\n";
    withEngine += b;
    without += m;
  }
  RecordProperty("RecordsWithEngine", withEngine);
  RecordProperty("RecordsWithoutEngine", without);
}

// EPSG Guidance Note 7-2 examples resolved by catalogue name through the
// process-wide set-up, as a host program would; beside each, the published
// values and the PROJ 9.1.1 command that gave ours.
TEST(BundledCatalogueByName, ResolvesPublishedExamples) {
  kvtest::EnsureCatalogue();
  const struct {
    const char* name;
    double lon, lat, east, north;
  } cases[] = {
      // E 577274.99 N 69740.50; echo "50.5 0.5" | cs2cs -f %.4f EPSG:4277 EPSG:27700
      {"OSGB36 / British National Grid", 0.5, 50.5, 577274.9838, 69740.4923},
      // E 2963503.91 N 254759.80 ftUS; echo "28.5 -96" | cs2cs -f %.4f EPSG:4267 EPSG:32040
      // (the system's unit is the US survey foot)
      {"NAD27 / Texas South Central", -96, 28.5, 2963503.9128, 254759.8006},
      // echo "17d55'55.8N 76d56'37.26W" | cs2cs -f %.4f EPSG:4242 EPSG:24200
      {"JAD69 / Jamaica National Grid", -Dms(76, 56, 37.26), Dms(17, 55, 55.8), 255966.5818,
       142493.5110},  // E 255966.58 N 142493.51
      // E 5009726.58 N 569150.82; echo "-3 120" | cs2cs -f %.4f EPSG:4257 EPSG:3002
      {"Makassar / NEIEZ", 120, -3, 5009726.5833, 569150.8186},
      // E 165704.29 N 5171848.07; echo "53 53" | cs2cs -f %.4f EPSG:4284 EPSG:3388 (N E)
      {"Pulkovo 1942 / Caspian Sea Mercator", 53, 53, 165704.2933, 5171848.0729},
      // E 196105.283 N 557057.739; echo "53 6" | cs2cs -f %.4f EPSG:4289 EPSG:28992
      {"Amersfoort / RD New", 6, 53, 196105.2830, 557057.7394},
      // E 3320416.75 N 632668.43; echo "73 44" | cs2cs -f %.4f EPSG:4326 EPSG:5041
      {"WGS 84 / UPS North (E,N)", 44, 73, 3320416.7474, 632668.4313},
      // E 7255380.79 N 7053389.56; echo "-75 120" | cs2cs -f %.4f EPSG:4326 EPSG:3032
      {"WGS 84 / Australian Antarctic Polar Stereographic", 120, -75, 7255380.7933, 7053389.5606},
      // pyproj 3.4.1, Transformer.from_crs(c.geodetic_crs, c, always_xy=True),
      // c = CRS("EPSG:5070"), CRS("EPSG:3577"), CRS("EPSG:3068"), CRS("EPSG:3035")
      // (the catalogue's systems are easting first)
      {"NAD83 / Conus Albers", -96, 40, 0.0, 1886977.5649},
      {"GDA94 / Australian Albers", 135, -25, 299362.2208, -2706085.9795},
      {"DHDN / Soldner Berlin", 13.5, 52.5, 31362.6304, 19059.0668},
      // N 2999718.85, E 3962799.45
      {"ETRS89-extended / LAEA Europe", 5, 50, 3962799.4510, 2999718.8532},
      // E 66644.94, N 82536.22 Clarke's links; the system is in links
      {"Trinidad 1903 / Trinidad Grid", -62, 10, 66644.9404, 82536.2187},
      // E 679245.73 N 596562.78 (variant B, carried as the rectified skew
      // orthomorphic); echo "5d23'14.1129N 115d48'19.8196E" | cs2cs -f %.4f EPSG:4298 EPSG:29873
      {"Timbalai 1948 / RSO Borneo (m)", Dms(115, 48, 19.8196), Dms(5, 23, 14.1129), 679245.7282,
       596562.7775},
      // southing X 1050538.63, westing Y 568990.99;
      // echo "50d12'32.442N 16d50'59.179E" | cs2cs -f %.4f EPSG:4156 EPSG:5513
      {"S-JTSK / Krovak", Dms(16, 50, 59.179), Dms(50, 12, 32.442), 1050538.6308, 568990.9954},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    CKvMapProjection object(c.name);
    ASSERT_NE(object.GetProjection(), nullptr);
    double x = 0, y = 0;
    object.Geo2Proj(c.lon, c.lat, &x, &y);
    EXPECT_NEAR(x, c.east, 1e-3);
    EXPECT_NEAR(y, c.north, 1e-3);
  }
}

}  // namespace
