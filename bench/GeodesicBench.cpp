// Per-pair cost of the inverse geodesic problem (CKvVincenty::GetDistance) on
// WGS 84: 1024 pairs spread over the globe, and 1024 nearly antipodal pairs
// (the second point within half a degree of the antipode of the first),
// where the start comes from the astroid and Newton needs more steps.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "catalogue/KvEllipsoid.h"
#include "mapproj/KvVincenty.h"

namespace {

struct SPair {
  double lon1, lat1, lon2, lat2;
};

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

double RandomLatitude(std::mt19937_64& rng) {
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  return std::asin(u(rng)) * 57.29577951308232;
}

std::vector<SPair> GlobalPairs() {
  std::mt19937_64 rng(1);
  std::uniform_real_distribution<double> lon(-180.0, 180.0);
  std::vector<SPair> pairs;
  for (int i = 0; i < 1024; ++i) {
    const double lat1 = RandomLatitude(rng);
    const double lon1 = lon(rng);
    pairs.push_back({lon1, lat1, lon(rng), RandomLatitude(rng)});
  }
  return pairs;
}

std::vector<SPair> NearlyAntipodalPairs() {
  std::mt19937_64 rng(2);
  std::uniform_real_distribution<double> lon(-180.0, 180.0);
  std::uniform_real_distribution<double> offset(-0.5, 0.5);
  std::vector<SPair> pairs;
  for (int i = 0; i < 1024; ++i) {
    const double lat1 = RandomLatitude(rng);
    const double lon1 = lon(rng);
    pairs.push_back({lon1, lat1, lon1 + 180.0 + offset(rng), -lat1 + offset(rng)});
  }
  return pairs;
}

// Seconds per pair, printed with an SI prefix (e.g. "850n").
benchmark::Counter PerPair(std::size_t count) {
  return benchmark::Counter(
      static_cast<double>(count),
      benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Inverse(benchmark::State& state, const std::vector<SPair>& pairs) {
  const CKvVincenty geodesic(kWgs84);
  for (auto _ : state) {
    for (const SPair& p : pairs) {
      double s12, azi1, azi2;
      geodesic.GetDistance(p.lon1, p.lat1, p.lon2, p.lat2, s12, azi1, azi2);
      benchmark::DoNotOptimize(s12);
      benchmark::DoNotOptimize(azi1);
      benchmark::DoNotOptimize(azi2);
    }
  }
  state.counters["per_pair"] = PerPair(pairs.size());
}

void BM_InverseGlobal(benchmark::State& state) { Inverse(state, GlobalPairs()); }
void BM_InverseNearlyAntipodal(benchmark::State& state) { Inverse(state, NearlyAntipodalPairs()); }

BENCHMARK(BM_InverseGlobal)->Name("Geodesic/Inverse");
BENCHMARK(BM_InverseNearlyAntipodal)->Name("Geodesic/InverseNearlyAntipodal");

}  // namespace
