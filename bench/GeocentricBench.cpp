// Per-point cost of geocentric to geographic on WGS 84 (two Bowring steps),
// over 1024 points from 10 km below the ground to 30,000 km above it, and of
// the exact forward conversion for comparison.
#include <benchmark/benchmark.h>

#include <vector>

#include "mapproj/KvGeocentric.h"

namespace {

struct SXyz {
  double X, Y, Z;
};

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137.0, 298.257223563);

std::vector<SXyz> Points() {
  std::vector<SXyz> points;
  for (int i = 0; i < 32; ++i)
    for (int j = 0; j < 32; ++j) {
      SXyz p;
      const double h = j < 24 ? -10000.0 + 20000.0 * j / 23 : 30000000.0 * (j - 23) / 8;
      CKvGeocentric::Geo2XYZ(kWgs84, 11.25 * i, -89.0 + 178.0 * j / 31, h, &p.X, &p.Y, &p.Z);
      points.push_back(p);
    }
  return points;
}

benchmark::Counter PerPoint(std::size_t count) {
  return benchmark::Counter(static_cast<double>(count),
                            benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_GeocentricToGeographic(benchmark::State& state) {
  const std::vector<SXyz> points = Points();
  for (auto _ : state) {
    for (const SXyz& p : points) {
      double lon, lat, h;
      CKvGeocentric::XYZ2Geo(kWgs84, p.X, p.Y, p.Z, &lon, &lat, &h);
      benchmark::DoNotOptimize(lat);
      benchmark::DoNotOptimize(h);
    }
  }
  state.counters["per_point"] = PerPoint(points.size());
}
BENCHMARK(BM_GeocentricToGeographic);

void BM_GeographicToGeocentric(benchmark::State& state) {
  for (auto _ : state) {
    for (int i = 0; i < 1024; ++i) {
      double X, Y, Z;
      CKvGeocentric::Geo2XYZ(kWgs84, 0.3 * i, -80.0 + 0.15 * i, 100.0, &X, &Y, &Z);
      benchmark::DoNotOptimize(Z);
    }
  }
  state.counters["per_point"] = PerPoint(1024);
}
BENCHMARK(BM_GeographicToGeocentric);

}  // namespace
