// Per-point cost of the stereographic engines, forward and inverse, over a
// grid of 1024 points about each engine's origin.
#include <vector>

#include "EngineBench.h"
#include "catalogue/KvEllipsoid.h"
#include "engines/KvPolarStereographic.h"
#include "engines/KvStereographic.h"
#include "engines/KvStereographicNorthPole.h"
#include "engines/KvStereographicSouthPole.h"

namespace {

const CKvEllipsoid kBessel("Bessel 1841", "BR", 6377397.155, 299.1528128);
const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

// Each engine with the grid it is benchmarked on: 32 x 32 points, lon0 +-
// dLon degrees and latitudes lat0 to lat1.
struct SOblique {  // Amersfoort / RD New
  static CKvStereographic Make() {
    return CKvStereographic("Oblique bench", 0.9999079, 5.38763888888889, 52.15616055555556, 155000,
                            463000, kBessel);
  }
  static constexpr double lon0 = 5.38763888888889, dLon = 5, lat0 = 48, lat1 = 56;
};
struct SObliqueAtPole {  // WGS 84 / UPS North (E,N), as an oblique origin at the pole
  static CKvStereographic Make() {
    return CKvStereographic("Oblique pole bench", 0.994, 0, 90, 2000000, 2000000, kWgs84);
  }
  static constexpr double lon0 = 0, dLon = 180, lat0 = 60, lat1 = 89.5;
};
struct SNorthPole {  // WGS 84 / NSIDC Sea Ice Polar Stereographic North
  static CKvStereographicNorthPole Make() {
    return CKvStereographicNorthPole("North pole bench", 70, -45, 0, 0, kWgs84);
  }
  static constexpr double lon0 = -45, dLon = 180, lat0 = 60, lat1 = 89.5;
};
struct SSouthPole {  // WGS 84 / Australian Antarctic Polar Stereographic
  static CKvStereographicSouthPole Make() {
    return CKvStereographicSouthPole("South pole bench", -71, 70, 6000000, 6000000, kWgs84);
  }
  static constexpr double lon0 = 70, dLon = 180, lat0 = -89.5, lat1 = -60;
};
struct SPolar {  // WGS 84 / Antarctic Polar Stereographic through the wrapper
  static CKvPolarStereographic Make() {
    return CKvPolarStereographic("Polar bench", 1, 0, -71, 0, 0, kWgs84);
  }
  static constexpr double lon0 = 0, dLon = 180, lat0 = -89.5, lat1 = -60;
};

template <class Setup>
std::vector<kvbench::SPoint> Grid() {
  return kvbench::GeographicGrid(Setup::lon0 - Setup::dLon, Setup::lon0 + Setup::dLon, Setup::lat0,
                                 Setup::lat1);
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

BENCHMARK_TEMPLATE(BM_Forward, SOblique)->Name("Stereographic/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SOblique)->Name("Stereographic/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SObliqueAtPole)->Name("StereographicAtPole/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SObliqueAtPole)->Name("StereographicAtPole/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SNorthPole)->Name("StereographicNorthPole/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SNorthPole)->Name("StereographicNorthPole/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SSouthPole)->Name("StereographicSouthPole/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SSouthPole)->Name("StereographicSouthPole/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SPolar)->Name("PolarStereographic/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SPolar)->Name("PolarStereographic/Inverse");

}  // namespace
