// Loading speed of the parameter-file reader and look-up speed of the
// ellipsoid catalogue.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "catalogue/KvEllipsoidList.h"
#include "platform/tsf.h"

namespace {

// A catalogue-shaped file of 20,000 sections, 5 MB.
const std::string& LargeFile() {
  static const std::string path = [] {
    std::string p = "/tmp/kvcart-bench-" + std::to_string(getpid()) + ".tsf";
    std::string text =
        "// 20,000 projection definitions for the load benchmark\n[MAP_PROJECTION_DEFINITION]\n";
    char line[512];
    for (int i = 0; i < 20000; ++i) {
      std::snprintf(line, sizeof line,
                    "   [TRANSVERSE_MERCATOR_PROJECTION]\n"
                    "      Projection_Name = 'Grid %05d / O''Brien'\n"
                    "      Branch_Name = 'Datum %d'\n"
                    "      Ellipsoid = 'WE'\n"
                    "      Origin_Longitude_dms = %d, %d, %.4f\n"
                    "      Origin_Latitude = %.6f\n"
                    "      Feast = %.1f\n"
                    "      Fnorth = %.1f\n"
                    "   EndSect\n",
                    i, i % 97, i % 180 - 90, i % 60, (i % 3600) / 60.0, (i % 170) * 0.5 - 42.0,
                    500000.0 + i, 10000000.0 - i);
      text += line;
    }
    text += "EndSect  // MAP_PROJECTION_DEFINITION\n";
    FILE* f = std::fopen(p.c_str(), "wb");
    std::fwrite(text.data(), 1, text.size(), f);
    std::fclose(f);
    return p;
  }();
  static const struct Remover {
    ~Remover() { std::remove(path.c_str()); }
  } remover;
  return path;
}

void BM_TsfLoad20000Sections(benchmark::State& state) {
  const std::string& path = LargeFile();
  std::size_t bytes = 0;
  for (auto _ : state) {
    void* file = tsfLoadFile(path.c_str(), 1);
    if (!file) state.SkipWithError(tsfGetErrorMessageGlb());
    benchmark::DoNotOptimize(file);
    tsfClose(&file);
  }
  if (FILE* f = std::fopen(path.c_str(), "rb")) {
    std::fseek(f, 0, SEEK_END);
    bytes = static_cast<std::size_t>(std::ftell(f));
    std::fclose(f);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
  state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(BM_TsfLoad20000Sections)->Unit(benchmark::kMillisecond);

// Walking every section by name and occurrence, as the catalogue readers do.
void BM_TsfWalkByOccurrence(benchmark::State& state) {
  void* file = tsfLoadFile(LargeFile().c_str(), 1);
  void* target = tsfTargetByNum(file, 1);
  for (auto _ : state) {
    const int n =
        tsfGetNoInstances(tsfSectionByNameNum(target, "TRANSVERSE_MERCATOR_PROJECTION", 1));
    double sum = 0;
    for (int i = 1; i <= n; ++i) {
      double feast = 0;
      tsfGetParam(tsfSectionByNameNum(target, "TRANSVERSE_MERCATOR_PROJECTION", i), "Feast", feast);
      sum += feast;
    }
    benchmark::DoNotOptimize(sum);
  }
  tsfClose(&file);
}
BENCHMARK(BM_TsfWalkByOccurrence)->Unit(benchmark::kMillisecond);

void BM_EllipsoidLookupLastCode(benchmark::State& state) {
  CKvEllipsoidList list;
  list.ReadEllipsoids(KVCART_DATA_DIR "ellipsoid.tsf", false);
  list.GenerateCompleteList();
  for (auto _ : state) benchmark::DoNotOptimize(list.GetEllipsoid("XY"));
}
BENCHMARK(BM_EllipsoidLookupLastCode);

}  // namespace
