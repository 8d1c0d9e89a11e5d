// Per-point cost of a datum conversion between two projected systems on
// different ellipsoids with seven-parameter shifts at both ends: UTM zone 32
// on International 1924 to a Gauss-Krüger zone on Bessel 1841, both from
// WKT, over 1024 points.  Each point runs an inverse and a forward
// transverse Mercator, two geocentric conversions and two Helmert shifts.
#include <benchmark/benchmark.h>

#include <vector>

#include "datum/KvDatumConverter.h"

namespace {

struct SPoint {
  double x, y;
};

const char kSource[] =
    "PROJCS[\"ED50 UTM 32\",GEOGCS[\"ED50\",DATUM[\"ED50\",SPHEROID[\"International 1924\","
    "6378388,297],TOWGS84[-89.5,-93.8,-123.1,0,0,-0.156,1.2]],PRIMEM[\"Greenwich\",0],"
    "UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
    "PARAMETER[\"False_Easting\",500000],PARAMETER[\"False_Northing\",0],"
    "PARAMETER[\"Central_Meridian\",9],PARAMETER[\"Scale_Factor\",0.9996],"
    "PARAMETER[\"Latitude_Of_Origin\",0],UNIT[\"Meter\",1]]";
const char kTarget[] =
    "PROJCS[\"DHDN GK 3\",GEOGCS[\"DHDN\",DATUM[\"DHDN\",SPHEROID[\"Bessel 1841\","
    "6377397.155,299.1528128],TOWGS84[598.1,73.7,418.2,0.202,0.045,-2.455,6.7]],"
    "PRIMEM[\"Greenwich\",0],UNIT[\"Degree\",0.0174532925199433]],"
    "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"False_Easting\",3500000],"
    "PARAMETER[\"False_Northing\",0],PARAMETER[\"Central_Meridian\",9],"
    "PARAMETER[\"Scale_Factor\",1],PARAMETER[\"Latitude_Of_Origin\",0],UNIT[\"Meter\",1]]";

// 32 x 32 points, eastings 300 to 700 km, northings 5200 to 6100 km.
std::vector<SPoint> ProjectedGrid() {
  std::vector<SPoint> points;
  for (int i = 0; i < 32; ++i)
    for (int j = 0; j < 32; ++j)
      points.push_back({300000.0 + 400000.0 * i / 31, 5200000.0 + 900000.0 * j / 31});
  return points;
}

// Seconds per point, printed with an SI prefix (e.g. "300n").
benchmark::Counter PerPoint(std::size_t count) {
  return benchmark::Counter(
      static_cast<double>(count),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_DatumConvertProjectedSevenParameter(benchmark::State& state) {
  const CKvDatumConverter converter(kSource, kTarget);
  const std::vector<SPoint> points = ProjectedGrid();
  for (auto _ : state) {
    for (const SPoint& p : points) {
      double x = p.x, y = p.y, h = 0.0;
      converter.Convert(x, y, h);
      benchmark::DoNotOptimize(x);
      benchmark::DoNotOptimize(y);
      benchmark::DoNotOptimize(h);
    }
  }
  state.counters["per_point"] = PerPoint(points.size());
}
BENCHMARK(BM_DatumConvertProjectedSevenParameter);

void BM_DatumInvConvertProjectedSevenParameter(benchmark::State& state) {
  const CKvDatumConverter converter(kSource, kTarget);
  std::vector<SPoint> points = ProjectedGrid();
  for (SPoint& p : points) converter.Convert(p.x, p.y);
  for (auto _ : state) {
    for (const SPoint& p : points) {
      double x = p.x, y = p.y;
      converter.InvConvert(x, y);
      benchmark::DoNotOptimize(x);
      benchmark::DoNotOptimize(y);
    }
  }
  state.counters["per_point"] = PerPoint(points.size());
}
BENCHMARK(BM_DatumInvConvertProjectedSevenParameter);

}  // namespace
