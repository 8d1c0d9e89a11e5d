// The bundled catalogue (some five thousand registry systems in data/): what
// the set-up costs a host program, and creating a map projection object from
// a name near the end of the catalogue once it is loaded.

#include <benchmark/benchmark.h>

#include <iterator>
#include <memory>
#include <string>

#include "cart/KvCartSetup.h"
#include "mapproj/KvMapProjection.h"

namespace {

const char kUserFolder[] = "/nonexistent-kvcart-user-folder/";

// What CKvCartSetup::ReadData does, into a fresh pair of lists each time
// (the set-up object itself exists once per process).  Freeing the lists is
// not counted.
void BM_BundledCatalogueSetUp(benchmark::State& state) {
  std::size_t records = 0;
  for (auto _ : state) {
    auto ellipsoids = std::make_unique<CKvEllipsoidList>();
    auto projections = std::make_unique<CKvMapProjectionList>();
    ellipsoids->ReadEllipsoids(KVCART_DATA_DIR "ellipsoid.tsf", false);
    ellipsoids->ReadEllipsoids(std::string(kUserFolder) + "custom_ellipsoid.tsf", true);
    ellipsoids->GenerateCompleteList();
    projections->InitMapProjections(KVCART_DATA_DIR, kUserFolder);
    state.PauseTiming();
    records = static_cast<std::size_t>(
        std::distance(projections->GetIteratorBegin(), projections->GetIteratorEnd()));
    projections.reset();
    ellipsoids.reset();
    state.ResumeTiming();
  }
  state.counters["records"] = static_cast<double>(records);
}
BENCHMARK(BM_BundledCatalogueSetUp)->Unit(benchmark::kMillisecond);

// Loads the bundled catalogue into the set-up object once, unless another
// benchmark of this program already did.
void EnsureBundledCatalogue() {
  CKvCartSetup& setup = CKvCartSetup::Instance();
  if (setup.m_MapProjectionList.GetMapProjection("UTM-32")) return;
  setup.ReadData(KVCART_DATA_DIR, kUserFolder);
}

// The last transverse Mercator record of the last bundled file.
const char kNearEnd[] = "NAD27 / Wyoming West";

void BM_CreateFromBundledNameNearEnd(benchmark::State& state) {
  EnsureBundledCatalogue();
  for (auto _ : state) {
    CKvMapProjection object(kNearEnd);
    benchmark::DoNotOptimize(object.GetProjection());
  }
}
BENCHMARK(BM_CreateFromBundledNameNearEnd)->Unit(benchmark::kMicrosecond);

// The same system by its code (it is in US survey feet with a datum shift,
// which its WKT says).
void BM_CreateFromBundledCode(benchmark::State& state) {
  EnsureBundledCatalogue();
  for (auto _ : state) {
    CKvMapProjection object("EPSG:32058");
    benchmark::DoNotOptimize(object.GetProjection());
  }
}
BENCHMARK(BM_CreateFromBundledCode)->Unit(benchmark::kMicrosecond);

// A code no record has: the look-up after the index by code is built.
void BM_UnknownBundledCode(benchmark::State& state) {
  EnsureBundledCatalogue();
  for (auto _ : state) {
    CKvMapProjection object("EPSG:1");
    benchmark::DoNotOptimize(object.GetProjection());
  }
}
BENCHMARK(BM_UnknownBundledCode)->Unit(benchmark::kMicrosecond);

}  // namespace
