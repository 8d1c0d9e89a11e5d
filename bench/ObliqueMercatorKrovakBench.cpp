// Per-point cost of the three Hotine oblique Mercator engines and Krovak,
// forward and inverse, over a grid of 1024 points around each system's
// centre (the areas of use of Alaska zone 1, LV95, Peninsula RSO and S-JTSK).
#include <vector>

#include "EngineBench.h"
#include "catalogue/KvEllipsoid.h"
#include "engines/KvHotineObliqueMercator.h"
#include "engines/KvKrovak.h"
#include "engines/KvObliqueMercator.h"
#include "engines/KvRectifiedSkewOrthomorphic.h"

namespace {

const CKvEllipsoid kGrs80("GRS 1980", "RF", 6378137, 298.257222101);
const CKvEllipsoid kBessel("Bessel 1841", "BR", 6377397.155, 299.1528128);

// Each engine with the grid it is benchmarked on: 32 x 32 points from
// (lon0, lat0) to (lon1, lat1).
struct SHotine {  // NAD83 / Alaska zone 1
  static CKvHotineObliqueMercator Make() {
    return CKvHotineObliqueMercator("Hotine bench", 0.9999, -133.6666666666667, 57,
                                    323.1301023611111, 5000000, -5000000, kGrs80);
  }
  static constexpr double lon0 = -141, lat0 = 54.6, lon1 = -130, lat1 = 60.4;
};
struct SOblique {  // CH1903+ / LV95
  static CKvObliqueMercator Make() {
    return CKvObliqueMercator("Oblique bench", 1, 7.439583333333333, 46.95240555555556, 90, 2600000,
                              1200000, kBessel);
  }
  static constexpr double lon0 = 5.9, lat0 = 45.8, lon1 = 10.5, lat1 = 47.8;
};
struct SSkew {  // GDM2000 / Peninsula RSO
  static CKvRectifiedSkewOrthomorphic Make() {
    return CKvRectifiedSkewOrthomorphic("Skew bench", 0.99984, 102.25, 4, 323.0257964666667,
                                        323.1301023611111, 804671, 0, kGrs80);
  }
  static constexpr double lon0 = 98, lat0 = 1.1, lon1 = 105.8, lat1 = 7.8;
};
struct SKrovak {  // S-JTSK / Krovak
  static CKvKrovak Make() {
    return CKvKrovak("Krovak bench", 0.9999, 78.5, 24.83333333333333, 49.5, 30.28813975277778, 0, 1,
                     1, 0, 0, kBessel);
  }
  static constexpr double lon0 = 12.1, lat0 = 47.7, lon1 = 22.6, lat1 = 51.1;
};

template <class Setup>
std::vector<kvbench::SPoint> Grid() {
  return kvbench::GeographicGrid(Setup::lon0, Setup::lon1, Setup::lat0, Setup::lat1);
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

BENCHMARK_TEMPLATE(BM_Forward, SHotine)->Name("HotineObliqueMercator/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SHotine)->Name("HotineObliqueMercator/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SOblique)->Name("ObliqueMercator/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SOblique)->Name("ObliqueMercator/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SSkew)->Name("RectifiedSkewOrthomorphic/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SSkew)->Name("RectifiedSkewOrthomorphic/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SKrovak)->Name("Krovak/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SKrovak)->Name("Krovak/Inverse");

}  // namespace
