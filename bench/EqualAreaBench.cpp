// Per-point cost of the equal-area and equidistant engines (Albers, Lambert
// azimuthal equal area, Cassini-Soldner, equidistant conic), forward and
// inverse, on the ellipsoid and on the sphere, over a grid of 1024 points
// around each engine's origin.
#include <vector>

#include "EngineBench.h"
#include "catalogue/KvEllipsoid.h"
#include "engines/KvAlbersEqualArea.h"
#include "engines/KvCassiniSoldner.h"
#include "engines/KvEquidistantConic.h"
#include "engines/KvLambertAzimuthalEqualArea.h"

namespace {

const CKvEllipsoid kGrs80("GRS 1980", "RF", 6378137, 298.257222101);
const CKvEllipsoid kBessel("Bessel 1841", "BR", 6377397.155, 299.1528128);
const CKvEllipsoid kWgs84("WGS 84", "WE", 6378137, 298.257223563);
const CKvEllipsoid kSphere("Sphere", "", 6371000, 0);

// Each engine with the grid it is benchmarked on: 32 x 32 points, lon0 +-
// halfWidth degrees and latitudes lat0 to lat1.  The systems are those of the
// accuracy cases: EPSG:5070, EPSG:3035, EPSG:3068 and North America
// Equidistant Conic.
struct SAlbers {
  static CKvAlbersEqualArea Make() {
    return CKvAlbersEqualArea("Conus Albers bench", 29.5, 45.5, -96, 23, 0, 0, kGrs80);
  }
  static constexpr double lon0 = -96, halfWidth = 25, lat0 = 25, lat1 = 49;
};
struct SAlbersSphere {
  static CKvAlbersEqualArea Make() {
    return CKvAlbersEqualArea("Albers sphere bench", 29.5, 45.5, -96, 23, 0, 0, kSphere);
  }
  static constexpr double lon0 = -96, halfWidth = 25, lat0 = 25, lat1 = 49;
};
struct SLaea {
  static CKvLambertAzimuthalEqualArea Make() {
    return CKvLambertAzimuthalEqualArea("LAEA Europe bench", 10, 52, 4321000, 3210000, kGrs80);
  }
  static constexpr double lon0 = 10, halfWidth = 30, lat0 = 30, lat1 = 75;
};
struct SLaeaSphere {
  static CKvLambertAzimuthalEqualArea Make() {
    return CKvLambertAzimuthalEqualArea("LAEA sphere bench", 10, 52, 4321000, 3210000, kSphere);
  }
  static constexpr double lon0 = 10, halfWidth = 30, lat0 = 30, lat1 = 75;
};
struct SCassini {
  static CKvCassiniSoldner Make() {
    return CKvCassiniSoldner("Soldner Berlin bench", 13.627203666666666, 52.41864827777778, 40000,
                             10000, kBessel);
  }
  static constexpr double lon0 = 13.6, halfWidth = 2, lat0 = 50.5, lat1 = 54.5;
};
struct SCassiniSphere {
  static CKvCassiniSoldner Make() {
    return CKvCassiniSoldner("Cassini sphere bench", 13.627203666666666, 52.41864827777778, 40000,
                             10000, kSphere);
  }
  static constexpr double lon0 = 13.6, halfWidth = 2, lat0 = 50.5, lat1 = 54.5;
};
struct SEqdc {
  static CKvEquidistantConic Make() {
    return CKvEquidistantConic("NA equidistant conic bench", 20, 60, -96, 40, 0, 0, kWgs84);
  }
  static constexpr double lon0 = -96, halfWidth = 30, lat0 = 15, lat1 = 75;
};
struct SEqdcSphere {
  static CKvEquidistantConic Make() {
    return CKvEquidistantConic("Eqdc sphere bench", 20, 60, -96, 40, 0, 0, kSphere);
  }
  static constexpr double lon0 = -96, halfWidth = 30, lat0 = 15, lat1 = 75;
};

template <class Setup>
std::vector<kvbench::SPoint> Grid() {
  return kvbench::GeographicGrid(Setup::lon0 - Setup::halfWidth, Setup::lon0 + Setup::halfWidth,
                                 Setup::lat0, Setup::lat1);
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

BENCHMARK_TEMPLATE(BM_Forward, SAlbers)->Name("AlbersEqualArea/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SAlbers)->Name("AlbersEqualArea/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SAlbersSphere)->Name("AlbersEqualAreaSphere/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SAlbersSphere)->Name("AlbersEqualAreaSphere/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SLaea)->Name("LambertAzimuthalEqualArea/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SLaea)->Name("LambertAzimuthalEqualArea/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SLaeaSphere)->Name("LambertAzimuthalEqualAreaSphere/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SLaeaSphere)->Name("LambertAzimuthalEqualAreaSphere/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SCassini)->Name("CassiniSoldner/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SCassini)->Name("CassiniSoldner/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SCassiniSphere)->Name("CassiniSoldnerSphere/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SCassiniSphere)->Name("CassiniSoldnerSphere/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SEqdc)->Name("EquidistantConic/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SEqdc)->Name("EquidistantConic/Inverse");
BENCHMARK_TEMPLATE(BM_Forward, SEqdcSphere)->Name("EquidistantConicSphere/Forward");
BENCHMARK_TEMPLATE(BM_Inverse, SEqdcSphere)->Name("EquidistantConicSphere/Inverse");

}  // namespace
