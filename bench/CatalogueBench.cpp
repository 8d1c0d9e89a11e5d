// Resolving coordinate-system strings against a catalogue of 10,000
// records: the look-ups every resolution by name makes.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <memory>

#include "cart/KvCartSetup.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "mapproj/KvMapProjection.h"

namespace {

constexpr int kRecords = 10000;

// The built-in catalogue followed by 10,000 transverse Mercator records
// named "Synthetic Grid 00001" to "Synthetic Grid 10000".
void EnsureSyntheticCatalogue() {
  static const bool ready = [] {
    CKvCartSetup& setup = CKvCartSetup::Instance();
    setup.m_EllipsoidList.ReadEllipsoids(KVCART_DATA_DIR "ellipsoid.tsf", false);
    setup.m_EllipsoidList.GenerateCompleteList();
    setup.m_MapProjectionList.InitMapProjections(KVCART_DATA_DIR,
                                                 "/nonexistent-kvcart-user-folder/");
    for (int i = 1; i <= kRecords; ++i) {
      char name[32];
      std::snprintf(name, sizeof name, "Synthetic Grid %05d", i);
      setup.m_MapProjectionList.AddMapProjection(new CKvTransverseMercatorProjection(
          name, "Synthetic", "WE", 0.9996, -180.0 + 0.036 * i, 0.0, 500000.0, 0.0));
    }
    return true;
  }();
  benchmark::DoNotOptimize(ready);
}

const char kNearEnd[] = "Synthetic Grid 09990";

// A UTM system as .prj files give it; its name is not in the catalogue, so
// every look-up of it runs through the whole list.
const char kUtmWkt[] =
    "PROJCS[\"WGS_1984_UTM_Zone_32N\",GEOGCS[\"GCS_WGS_1984\",DATUM[\"D_WGS_1984\","
    "SPHEROID[\"WGS_1984\",6378137.0,298.257223563]],PRIMEM[\"Greenwich\",0.0],"
    "UNIT[\"Degree\",0.0174532925199433]],PROJECTION[\"Transverse_Mercator\"],"
    "PARAMETER[\"False_Easting\",500000.0],PARAMETER[\"False_Northing\",0.0],"
    "PARAMETER[\"Central_Meridian\",9.0],PARAMETER[\"Scale_Factor\",0.9996],"
    "PARAMETER[\"Latitude_Of_Origin\",0.0],UNIT[\"Meter\",1.0]]";

void BM_CreateFromCatalogueNameNearEnd(benchmark::State& state) {
  EnsureSyntheticCatalogue();
  for (auto _ : state) {
    CKvMapProjection object(kNearEnd);
    benchmark::DoNotOptimize(object.GetProjection());
  }
}
BENCHMARK(BM_CreateFromCatalogueNameNearEnd);

void BM_CreateFromUtmWkt(benchmark::State& state) {
  EnsureSyntheticCatalogue();
  for (auto _ : state) {
    CKvMapProjection object(kUtmWkt);
    benchmark::DoNotOptimize(object.GetProjection());
  }
}
BENCHMARK(BM_CreateFromUtmWkt);

void BM_IsValidCatalogueName(benchmark::State& state) {
  EnsureSyntheticCatalogue();
  for (auto _ : state) benchmark::DoNotOptimize(CKvMapProjection::IsValid(kNearEnd));
}
BENCHMARK(BM_IsValidCatalogueName);

void BM_IsTypeCatalogueName(benchmark::State& state) {
  EnsureSyntheticCatalogue();
  for (auto _ : state) benchmark::DoNotOptimize(CKvMapProjection::IsType(1, kNearEnd));
}
BENCHMARK(BM_IsTypeCatalogueName);

void BM_MapProjectionLookUp(benchmark::State& state) {
  EnsureSyntheticCatalogue();
  for (auto _ : state) benchmark::DoNotOptimize(CKvMapProjection::MapProjection(kNearEnd));
}
BENCHMARK(BM_MapProjectionLookUp);

}  // namespace
