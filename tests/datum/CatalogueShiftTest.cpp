// Bundled systems reached from "LONG/LAT" through the datum converter, in
// their own units and with their records' datum shifts, against PROJ.
//
// Every expected value is cs2cs of PROJ 9.1.1 with no grid installed, that
// is with PROJ_DATA naming a folder that holds only its proj.db and
// proj.ini: the command is written beside each (cs2cs takes latitude first
// for EPSG:4326 and prints in the system's axis order, northing first where
// the comment says so; the table holds easting first).  cs2cs chooses among
// PROJ's candidate transformations at each point, so it may apply another
// one than the record's (PROJ's default for the system's whole area): the
// table says where, and how far apart the two results are.

#include <gtest/gtest.h>

#include <cmath>
#include <iostream>
#include <memory>
#include <string>

#include "TestCatalogue.h"
#include "datum/KvDatumConverter.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"

namespace {

// The point's result in metres: within 1 mm of cs2cs where PROJ applies the
// record's shift, otherwise this many metres from it.
constexpr double kSame = 0.0;

struct SCase {
  int code;
  double lon, lat;     // WGS 84, degrees
  double east, north;  // cs2cs, in the system's unit
  double metresApart;  // kSame, or how far PROJ's other choice lands
};

// Converts (lon, lat) from "LONG/LAT" to EPSG:<code>; false when the system
// has no engine yet.
bool FromLongLat(int code, double lon, double lat, double& x, double& y, double& unit) {
  const std::string name = "EPSG:" + std::to_string(code);
  CKvMapProjection target(name);
  if (!target.GetProjection()) return false;
  char unitName[64] = "";
  unit = 1.0;
  target.GetUnit(CKvMapProjection::eProjectedUnit, &unit, unitName);
  CKvDatumConverter converter("LONG/LAT", name.c_str());
  converter.SetConversionType(CKvDatumConverter::eGeoToProj);
  x = lon;
  y = lat;
  converter.Convert(x, y);
  return true;
}

void Check(const SCase& c) {
  SCOPED_TRACE("EPSG:" + std::to_string(c.code));
  double x = 0, y = 0, unit = 1;
  ASSERT_TRUE(FromLongLat(c.code, c.lon, c.lat, x, y, unit));
  const double apart = std::hypot(x - c.east, y - c.north) * unit;
  if (c.metresApart == kSame) {
    EXPECT_LT(apart, 1e-3);
  } else {
    // PROJ resolves this point otherwise; the distance is pinned so that a
    // change of either side shows.
    EXPECT_NEAR(apart, c.metresApart, 5e-3);
    std::cout << "EPSG:" << c.code << ": PROJ applies another transformation here, " << apart
              << " m apart\n";
  }
}

TEST(CatalogueSystemsFromLongLat, AgreeWithCs2csWherePROJAppliesTheSameShift) {
  kvtest::EnsureCatalogue();
  const SCase cases[] = {
      // NAD83 / Texas South Central (ftUS)
      // echo "29.23 -99.38" | cs2cs -f %.6f EPSG:4326 EPSG:2278
      {2278, -99.38, 29.23, 1847307.774984, 13631362.635487, kSame},
      // NAD83 / New York Long Island (ftUS)
      // echo "40.88 -73.03" | cs2cs -f %.6f EPSG:4326 EPSG:2263
      {2263, -73.03, 40.88, 1252480.724589, 261370.686319, kSame},
      // NAD83 / Florida East (ftUS)
      // echo "27.62 -81.15" | cs2cs -f %.6f EPSG:4326 EPSG:2236
      {2236, -81.15, 27.62, 607594.413748, 1194584.937402, kSame},
      // NAD83 / California zone 3 (ftUS)
      // echo "37.72 -120.42" | cs2cs -f %.6f EPSG:4326 EPSG:2227
      {2227, -120.42, 37.72, 6584805.497225, 2084640.253002, kSame},
      // NAD83 / Connecticut (ftUS)
      // echo "41.52 -72.75" | cs2cs -f %.6f EPSG:4326 EPSG:2234
      {2234, -72.75, 41.52, 1000000.000000, 750196.356727, kSame},
      // NAD27 / Texas South Central
      // echo "29.23 -99.2" | cs2cs -f %.6f EPSG:4326 EPSG:32040
      {32040, -99.2, 29.23, 1936322.425143, 507780.888624, kSame},
      // NAD27 / Alabama East
      // echo "32.99 -85.84" | cs2cs -f %.6f EPSG:4326 EPSG:26729
      {26729, -85.84, 32.99, 497943.871630, 905704.616690, kSame},
      // NAD27 / California zone III
      // echo "37.72 -120.42" | cs2cs -f %.6f EPSG:4326 EPSG:26743
      {26743, -120.42, 37.72, 2023426.118950, 444247.111797, kSame},
      // NAD83 / Arizona East (ft)
      // echo "34.17 -110.38" | cs2cs -f %.6f EPSG:4326 EPSG:2222
      {2222, -110.38, 34.17, 635474.225402, 1153312.321937, kSame},
      // NAD83 / Michigan North (ft)
      // echo "46.7 -86.93" | cs2cs -f %.6f EPSG:4326 EPSG:2251
      {2251, -86.93, 46.7, 26264282.366583, 698921.731079, kSame},
      // NAD83 / Oregon South (ft)
      // echo "43.27 -120.75" | cs2cs -f %.6f EPSG:4326 EPSG:2270
      {2270, -120.75, 43.27, 4854679.729683, 584424.375690, kSame},
      // NAD83 / Montana (ft)
      // echo "46.68 -110.06" | cs2cs -f %.6f EPSG:4326 EPSG:2256
      {2256, -110.06, 46.68, 1828020.631130, 886411.453721, kSame},
      // Sibun Gorge 1922 / Colony Grid
      // echo "17.18 -88.47" | cs2cs -f %.6f EPSG:4326 EPSG:5589
      // PROJ applies a ballpark conversion, no datum change
      {5589, -88.47, 17.18, 273754.198793, 488616.564877, 163.768},
      // Jamaica 1875 / Jamaica (Old Grid)
      // echo "18.11 -77.3" | cs2cs -f %.6f EPSG:4326 EPSG:24100
      // PROJ applies a ballpark conversion, no datum change
      {24100, -77.3, 18.11, 445824.171711, 440025.541339, 205.950},
      // Accra / Ghana National Grid
      // echo "7.92 -1.01" | cs2cs -f %.6f EPSG:4326 EPSG:2136
      {2136, -1.01, 7.92, 896284.780047, 1179065.030536, kSame},
      // Kalianpur 1880 / India zone I
      // echo "31.8 71.25" | cs2cs -f %.6f EPSG:4326 EPSG:24371
      // PROJ applies a ballpark conversion, no datum change
      {24371, 71.25, 31.8, 3336096.732162, 920342.085634, 164.073},
      // NZGD49 / North Island Grid
      // echo "-37.89 175.31" | cs2cs -f %.6f EPSG:4326 EPSG:27291
      {27291, 175.31, -37.89, 281704.260242, 534519.037908, kSame},
      // ED50 / UTM zone 30N
      // echo "40.4 -3.7" | cs2cs -f %.6f EPSG:4326 EPSG:23030
      // PROJ applies ED50 to WGS 84 (28)
      {23030, -3.7, 40.4, 440707.182401, 4472597.434580, 7.458},
      // ED50 / UTM zone 31N
      // echo "60.51 3.0" | cs2cs -f %.6f EPSG:4326 EPSG:23031
      {23031, 3.0, 60.51, 500093.275596, 6708426.778507, kSame},
      // ED50 / UTM zone 32N
      // echo "60.43 9.0" | cs2cs -f %.6f EPSG:4326 EPSG:23032
      // PROJ applies ED50 to WGS 84 (7)
      {23032, 9.0, 60.43, 500080.188855, 6699508.554199, 2.963},
      // ED50 / UTM zone 33N
      // echo "59.45 15.01" | cs2cs -f %.6f EPSG:4326 EPSG:23033
      // PROJ applies ED50 to WGS 84 (7)
      {23033, 15.01, 59.45, 500636.229363, 6590362.014915, 2.901},
      // ED50 / UTM zone 35N
      // echo "55.22 27.01" | cs2cs -f %.6f EPSG:4326 EPSG:23035
      {23035, 27.01, 55.22, 500683.985002, 6119461.351354, kSame},
      // OSGB36 / British National Grid
      // echo "55.38 -3.5" | cs2cs -f %.6f EPSG:4326 EPSG:27700
      {27700, -3.5, 55.38, 305055.405510, 610582.448192, kSame},
      // NTF (Paris) / Lambert zone II
      // echo "46.73 1.68" | cs2cs -f %.6f EPSG:4326 EPSG:27572
      {27572, 1.68, 46.73, 549821.983488, 2192434.967429, kSame},
      // NTF (Paris) / Lambert zone I
      // echo "49.64 1.68" | cs2cs -f %.6f EPSG:4326 EPSG:27571
      {27571, 1.68, 49.64, 552587.595573, 1215784.194578, kSame},
      // DHDN / 3-degree Gauss-Kruger zone 2 (cs2cs prints northing first)
      // echo "51.46 6.68" | cs2cs -f %.6f EPSG:4326 EPSG:31466
      {31466, 6.68, 51.46, 2547302.210836, 5703042.460257, kSame},
      // DHDN / 3-degree Gauss-Kruger zone 3 (cs2cs prints northing first)
      // echo "51.18 9.0" | cs2cs -f %.6f EPSG:4326 EPSG:31467
      {31467, 9.0, 51.18, 3500073.401756, 5671670.894949, kSame},
      // DHDN / 3-degree Gauss-Kruger zone 4 (cs2cs prints northing first)
      // echo "50.99 12.0" | cs2cs -f %.6f EPSG:4326 EPSG:31468
      // PROJ applies DHDN to WGS 84 (3)
      {31468, 12.0, 50.99, 4500105.571627, 5650531.052526, 0.718},
      // DHDN / 3-degree Gauss-Kruger zone 5 (cs2cs prints northing first)
      // echo "48.74 13.67" | cs2cs -f %.6f EPSG:4326 EPSG:31469
      {31469, 13.67, 48.74, 5402315.567720, 5401121.631402, kSame},
      // Tokyo / Japan Plane Rectangular CS IX (cs2cs prints northing first)
      // echo "33.64 139.75" | cs2cs -f %.6f EPSG:4326 EPSG:30169
      {30169, 139.75, 33.64, -7437.087703, -262139.663643, kSame},
      // Tokyo / Japan Plane Rectangular CS VI (cs2cs prints northing first)
      // echo "34.86 135.93" | cs2cs -f %.6f EPSG:4326 EPSG:30166
      {30166, 135.93, 34.86, -6137.228039, -126812.007601, kSame},
      // Tokyo / Japan Plane Rectangular CS XIV (cs2cs prints northing first)
      // echo "26.23 141.76" | cs2cs -f %.6f EPSG:4326 EPSG:30174
      {30174, 141.76, 26.23, -23669.141368, 25024.740627, kSame},
      // Pulkovo 1942 / Gauss-Kruger zone 4 (cs2cs prints northing first)
      // echo "53.7 21.79" | cs2cs -f %.6f EPSG:4326 EPSG:28404
      // PROJ applies Pulkovo 1942 to WGS 84 (20)
      {28404, 21.79, 53.7, 4552305.011571, 5952951.281147, 1.595},
      // Pulkovo 1942 / Gauss-Kruger zone 8 (cs2cs prints northing first)
      // echo "40.5 44.5" | cs2cs -f %.6f EPSG:4326 EPSG:28408
      {28408, 44.5, 40.5, 8457721.054143, 4485259.686550, kSame},
      // Pulkovo 1942 / Gauss-Kruger zone 10 (cs2cs prints northing first)
      // echo "59.48 57.0" | cs2cs -f %.6f EPSG:4326 EPSG:28410
      // PROJ applies Pulkovo 1942 to WGS 84 (20)
      {28410, 57.0, 59.48, 10500091.883386, 6596209.290401, 2.077},
      // AGD66 / AMG zone 55
      // echo "-24.25 147.0" | cs2cs -f %.6f EPSG:4326 EPSG:20255
      {20255, 147.0, -24.25, 499886.200963, 7317913.548723, kSame},
      // AGD66 / AMG zone 56
      // echo "-24.38 153.0" | cs2cs -f %.6f EPSG:4326 EPSG:20256
      {20256, 153.0, -24.38, 499894.900850, 7303515.731661, kSame},
      // AGD66 / Vicgrid66
      // echo "-36.59 145.5" | cs2cs -f %.6f EPSG:4326 EPSG:3110
      // PROJ applies AGD66 to WGS 84 (13)
      {3110, 145.5, -36.59, 2544622.404514, 4545207.301102, 0.570},
      // NAD27 / UTM zone 11N
      // echo "52.53 -117.0" | cs2cs -f %.6f EPSG:4326 EPSG:26711
      // PROJ applies NAD27 to WGS 84 (13)
      {26711, -117.0, 52.53, 500068.592818, 5819772.926565, 13.594},
      // NAD27 / UTM zone 14N
      // echo "48.16 -99.0" | cs2cs -f %.6f EPSG:4326 EPSG:26714
      // PROJ applies NAD27 to WGS 84 (6)
      {26714, -99.0, 48.16, 500032.761292, 5333868.646350, 1.411},
      // NAD27 / UTM zone 16N
      // echo "45.91 -87.0" | cs2cs -f %.6f EPSG:4326 EPSG:26716
      // PROJ applies NAD27 to WGS 84 (4)
      {26716, -87.0, 45.91, 499999.615439, 5083830.340981, 6.633},
  };
  int same = 0;
  for (const SCase& c : cases) {
    Check(c);
    same += c.metresApart == kSame;
  }
  EXPECT_EQ(same, 28);
  RecordProperty("AgreeWithinOneMillimetre", same);
}

// The Clarke's link, link and Clarke's foot systems that carry a shift are
// Cassini-Soldner grids.
TEST(CatalogueSystemsFromLongLat, CassiniSystemsInLinksAndClarkesFeet) {
  kvtest::EnsureCatalogue();
  const SCase cases[] = {
      // Trinidad 1903 / Trinidad Grid
      // echo "10.67 -61.05" | cs2cs -f %.6f EPSG:4326 EPSG:30200
      // PROJ applies Trinidad 1903 to WGS 84 (1), the record's own
      {30200, -61.05, 10.67, 583684.905399, 448573.871173, kSame},
      // Viti Levu 1912 / Viti Levu Grid (cs2cs prints northing first)
      // echo "-17.79 177.97" | cs2cs -f %.6f EPSG:4326 EPSG:3140
      // PROJ applies Viti Levu 1912 to WGS 84 (2), the record's own
      {3140, 177.97, -17.79, 530142.259067, 818752.888011, kSame},
      // Trinidad 1903 / Trinidad Grid (ftCla)
      // echo "10.67 -61.05" | cs2cs -f %.6f EPSG:4326 EPSG:2314
      // PROJ applies Trinidad 1903 to WGS 84 (1), the record's own
      {2314, -61.05, 10.67, 385232.037563, 296058.754974, kSame},
  };
  for (const SCase& c : cases) Check(c);
}

}  // namespace
