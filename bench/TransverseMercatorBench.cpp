// Per-point cost of the two transverse Mercator engines, forward and
// inverse, over a UTM zone 32 grid of 1024 points (WGS 84).
#include <benchmark/benchmark.h>

#include <vector>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvTransverseMercator.h"
#include "engines/KvTransverseMercatorJHS.h"

namespace {

struct SPoint {
  double u, v;
};

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

// 32 x 32 points, 6 to 12 E and 0 to 80 N.
std::vector<SPoint> GeographicGrid() {
  std::vector<SPoint> points;
  for (int i = 0; i < 32; ++i)
    for (int j = 0; j < 32; ++j) points.push_back({6.0 + 6.0 * i / 31, 80.0 * j / 31});
  return points;
}

// Seconds per point, printed with an SI prefix (e.g. "85n").
benchmark::Counter PerPoint(std::size_t count) {
  return benchmark::Counter(
      static_cast<double>(count),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

template <class Engine>
void BM_Forward(benchmark::State& state) {
  Engine engine("UTM 32 bench", 0.9996, 9, 0, 500000, 0, kWgs84);
  CKvProjection& proj = engine;  // through the interface, as callers do
  const std::vector<SPoint> points = GeographicGrid();
  for (auto _ : state) {
    for (const SPoint& p : points) {
      double x, y;
      proj.Geo2Proj(p.u, p.v, &x, &y);
      benchmark::DoNotOptimize(x);
      benchmark::DoNotOptimize(y);
    }
  }
  state.counters["per_point"] = PerPoint(points.size());
}

template <class Engine>
void BM_Inverse(benchmark::State& state) {
  Engine engine("UTM 32 bench", 0.9996, 9, 0, 500000, 0, kWgs84);
  CKvProjection& proj = engine;
  std::vector<SPoint> points = GeographicGrid();
  for (SPoint& p : points) proj.Geo2Proj(p.u, p.v, &p.u, &p.v);
  for (auto _ : state) {
    for (const SPoint& p : points) {
      double lon, lat;
      proj.Proj2Geo(p.u, p.v, &lon, &lat);
      benchmark::DoNotOptimize(lon);
      benchmark::DoNotOptimize(lat);
    }
  }
  state.counters["per_point"] = PerPoint(points.size());
}

BENCHMARK_TEMPLATE(BM_Forward, CKvTransverseMercator)->Name("TransverseMercator/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, CKvTransverseMercator)->Name("TransverseMercator/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, CKvTransverseMercatorJHS)->Name("TransverseMercatorJHS/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, CKvTransverseMercatorJHS)->Name("TransverseMercatorJHS/Inverse");

}  // namespace
