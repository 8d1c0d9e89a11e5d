// Parsing a typical projected .prj string and building its engine.

#include <benchmark/benchmark.h>

#include <memory>

#include "engines/KvProjection.h"
#include "wkt/KvPRJParser.h"

namespace {

// A national grid with a datum shift and axes (513 characters).
const char kWkt[] =
    "PROJCS[\"OSGB 1936 / British National Grid\",GEOGCS[\"OSGB 1936\",DATUM[\"OSGB_1936\","
    "SPHEROID[\"Airy 1830\",6377563.396,299.3249646],TOWGS84[446.448,-125.157,542.06,0.15,"
    "0.247,0.842,-20.489]],PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]],"
    "PROJECTION[\"Transverse_Mercator\"],PARAMETER[\"latitude_of_origin\",49],"
    "PARAMETER[\"central_meridian\",-2],PARAMETER[\"scale_factor\",0.9996012717],"
    "PARAMETER[\"false_easting\",400000],PARAMETER[\"false_northing\",-100000],"
    "UNIT[\"metre\",1],AXIS[\"Easting\",EAST],AXIS[\"Northing\",NORTH]]";

void BM_ParseWktAndBuildEngine(benchmark::State& state) {
  for (auto _ : state) {
    CKvPRJParser parser(kWkt);
    parser.Parse(false);
    std::unique_ptr<CKvProjection> engine(parser.CreateMapProjection());
    benchmark::DoNotOptimize(engine.get());
  }
  state.SetLabel(std::to_string(sizeof kWkt - 1) + " characters");
}
BENCHMARK(BM_ParseWktAndBuildEngine);

void BM_FormatWkt(benchmark::State& state) {
  CKvPRJParser parser(kWkt);
  parser.Parse(false);
  for (auto _ : state) {
    CString text;
    parser.Format(text);
    benchmark::DoNotOptimize(text.GetString());
  }
}
BENCHMARK(BM_FormatWkt);

}  // namespace
