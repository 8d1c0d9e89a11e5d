// Per-point cost of the Lambert conformal conic and Mercator engines, forward
// and inverse, over a grid of 1024 points around each engine's origin.
#include <vector>

#include "EngineBench.h"
#include "catalogue/KvEllipsoid.h"
#include "engines/KvLambert1SP.h"
#include "engines/KvLambert2SP.h"
#include "engines/KvMercator1SP.h"
#include "engines/KvMercator2SP.h"

namespace {

const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

// Each engine on WGS 84 with the grid it is benchmarked on: 32 x 32 points,
// lon0 +- 10 degrees and latitudes lat0 to lat1.
struct SLambert1SP {
  static CKvLambert1SP Make() {
    return CKvLambert1SP("LCC 1SP bench", 0.9996, 10, 50, 0, 0, kWgs84);
  }
  static constexpr double lon0 = 10, lat0 = 35, lat1 = 65;
};
struct SLambert2SP {
  static CKvLambert2SP Make() {
    return CKvLambert2SP("LCC 2SP bench", 45, 55, 10, 50, 700000, 6600000, kWgs84);
  }
  static constexpr double lon0 = 10, lat0 = 35, lat1 = 65;
};
struct SMercator1SP {
  static CKvMercator1SP Make() {
    return CKvMercator1SP("Mercator 1SP bench", 0.997, 110, 3900000, 900000, kWgs84);
  }
  static constexpr double lon0 = 110, lat0 = -80, lat1 = 80;
};
struct SMercator2SP {
  static CKvMercator2SP Make() {
    return CKvMercator2SP("Mercator 2SP bench", 42, 51, 0, 0, kWgs84);
  }
  static constexpr double lon0 = 51, lat0 = -80, lat1 = 80;
};

template <class Setup>
std::vector<kvbench::SPoint> Grid() {
  return kvbench::GeographicGrid(Setup::lon0 - 10.0, Setup::lon0 + 10.0, Setup::lat0, Setup::lat1);
}

template <class Setup>
void BM_Forward(benchmark::State& state) {
  auto engine = Setup::Make();
  kvbench::RunForward(state, engine, Grid<Setup>());
}

template <class Setup>
void BM_Inverse(benchmark::State& state) {
  auto engine = Setup::Make();
  kvbench::RunInverse(state, engine, Grid<Setup>());
}

BENCHMARK_TEMPLATE(BM_Forward, SLambert1SP)->Name("Lambert1SP/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SLambert1SP)->Name("Lambert1SP/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SLambert2SP)->Name("Lambert2SP/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SLambert2SP)->Name("Lambert2SP/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SMercator1SP)->Name("Mercator1SP/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SMercator1SP)->Name("Mercator1SP/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SMercator2SP)->Name("Mercator2SP/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SMercator2SP)->Name("Mercator2SP/Inverse");

}  // namespace
