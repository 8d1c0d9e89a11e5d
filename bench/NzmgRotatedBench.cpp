// Per-point cost of the New Zealand map grid and the rotated longitude/
// latitude engines, forward and inverse, over grids of 1024 points.
#include <vector>

#include "EngineBench.h"
#include "catalogue/KvEllipsoid.h"
#include "engines/KvNewZealandMapGrid.h"
#include "engines/KvRotatedLongitudeLatitude.h"

namespace {

using kvbench::GeographicGrid;
using kvbench::RunForward;
using kvbench::RunInverse;
using kvbench::SPoint;

const CKvEllipsoid kInternational("International 1924", "IN", 6378388, 297);
const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);

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
