// Per-point cost of the two transverse Mercator engines, forward and
// inverse, over a UTM zone 32 grid of 1024 points (WGS 84).
#include <vector>

#include "EngineBench.h"
#include "catalogue/KvEllipsoid.h"
#include "engines/KvTransverseMercator.h"
#include "engines/KvTransverseMercatorJHS.h"

namespace {

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

// 6 to 12 E and 0 to 80 N.
std::vector<kvbench::SPoint> Zone32() { return kvbench::GeographicGrid(6.0, 12.0, 0.0, 80.0); }

// The origin latitude is the benchmark's argument: 0 for UTM, 49 for a
// national grid such as the British one, which must cost no more.
template <class Engine>
void BM_Forward(benchmark::State& state) {
  Engine engine("UTM 32 bench", 0.9996, 9, static_cast<double>(state.range(0)), 500000, 0, kWgs84);
  kvbench::RunForward(state, engine, Zone32());
}

template <class Engine>
void BM_Inverse(benchmark::State& state) {
  Engine engine("UTM 32 bench", 0.9996, 9, static_cast<double>(state.range(0)), 500000, 0, kWgs84);
  kvbench::RunInverse(state, engine, Zone32());
}

BENCHMARK_TEMPLATE(BM_Forward, CKvTransverseMercator)
    ->Name("TransverseMercator/Forward")
    ->ArgName("lat0")
    ->Arg(0)
    ->Arg(49);
BENCHMARK_TEMPLATE(BM_Inverse, CKvTransverseMercator)
    ->Name("TransverseMercator/Inverse")
    ->ArgName("lat0")
    ->Arg(0)
    ->Arg(49);
BENCHMARK_TEMPLATE(BM_Forward, CKvTransverseMercatorJHS)
    ->Name("TransverseMercatorJHS/Forward")
    ->ArgName("lat0")
    ->Arg(0)
    ->Arg(49);
BENCHMARK_TEMPLATE(BM_Inverse, CKvTransverseMercatorJHS)
    ->Name("TransverseMercatorJHS/Inverse")
    ->ArgName("lat0")
    ->Arg(0)
    ->Arg(49);

}  // namespace
