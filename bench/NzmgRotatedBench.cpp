// Per-point cost of the New Zealand map grid and the rotated longitude/
// latitude engines, forward and inverse, over grids of 1024 points.
#include <benchmark/benchmark.h>

#include <vector>

#include "catalogue/KvEllipsoid.h"
#include "engines/KvNewZealandMapGrid.h"
#include "engines/KvRotatedLongitudeLatitude.h"

namespace {

struct SPoint {
  double u, v;
};

const CKvEllipsoid kInternational("International 1924", "IN", 6378388, 297);
const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

// 32 x 32 points over the given longitude and latitude ranges.
std::vector<SPoint> GeographicGrid(double lon0, double lon1, double lat0, double lat1) {
  std::vector<SPoint> points;
  for (int i = 0; i < 32; ++i)
    for (int j = 0; j < 32; ++j)
      points.push_back({lon0 + (lon1 - lon0) * i / 31, lat0 + (lat1 - lat0) * j / 31});
  return points;
}

// Seconds per point, printed with an SI prefix (e.g. "85n").
benchmark::Counter PerPoint(std::size_t count) {
  return benchmark::Counter(
      static_cast<double>(count),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void RunForward(benchmark::State& state, CKvProjection& proj, const std::vector<SPoint>& points) {
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

void RunInverse(benchmark::State& state, CKvProjection& proj, std::vector<SPoint> points) {
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

// The country: 166 to 179 E, 47.5 to 34 S.
std::vector<SPoint> NewZealand() { return GeographicGrid(166.0, 179.0, -47.5, -34.0); }

// A limited-area weather-model grid over Europe, south pole at 10 E, 40 S.
std::vector<SPoint> Europe() { return GeographicGrid(-20.0, 40.0, 30.0, 72.0); }

void BM_NzmgForward(benchmark::State& state) {
  CKvNewZealandMapGrid engine("NZMG bench", 173, -41, 2510000, 6023150, kInternational);
  RunForward(state, engine, NewZealand());
}

void BM_NzmgInverse(benchmark::State& state) {
  CKvNewZealandMapGrid engine("NZMG bench", 173, -41, 2510000, 6023150, kInternational);
  RunInverse(state, engine, NewZealand());
}

void BM_RotatedForward(benchmark::State& state) {
  CKvRotatedLongitudeLatitude engine("Rotated bench", 10, -40, 0, kWgs84);
  RunForward(state, engine, Europe());
}

void BM_RotatedInverse(benchmark::State& state) {
  CKvRotatedLongitudeLatitude engine("Rotated bench", 10, -40, 0, kWgs84);
  RunInverse(state, engine, Europe());
}

BENCHMARK(BM_NzmgForward)->Name("NewZealandMapGrid/Forward");
BENCHMARK(BM_NzmgInverse)->Name("NewZealandMapGrid/Inverse");
BENCHMARK(BM_RotatedForward)->Name("RotatedLongitudeLatitude/Forward");
BENCHMARK(BM_RotatedInverse)->Name("RotatedLongitudeLatitude/Inverse");

}  // namespace
