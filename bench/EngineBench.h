#pragma once

// The per-point loop every engine benchmark runs: a 32 x 32 grid of
// geographic points, converted through the engine interface as callers do,
// reported as seconds per point (printed with an SI prefix, e.g. "85n").

#include <benchmark/benchmark.h>

#include <vector>

#include "engines/KvProjection.h"

namespace kvbench {

struct SPoint {
  double u, v;
};

inline std::vector<SPoint> GeographicGrid(double lon0, double lon1, double lat0, double lat1) {
  std::vector<SPoint> points;
  for (int i = 0; i < 32; ++i)
    for (int j = 0; j < 32; ++j)
      points.push_back({lon0 + (lon1 - lon0) * i / 31, lat0 + (lat1 - lat0) * j / 31});
  return points;
}

inline benchmark::Counter PerPoint(std::size_t count) {
  return benchmark::Counter(
      static_cast<double>(count),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

inline void RunForward(benchmark::State& state, CKvProjection& proj,
                       const std::vector<SPoint>& points) {
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

// Projects the points first, then times their inverse.
inline void RunInverse(benchmark::State& state, CKvProjection& proj, std::vector<SPoint> points) {
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

}  // namespace kvbench
