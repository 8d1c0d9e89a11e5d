// libFuzzer target for the WKT reader: parse, build the engine, use it, and
// write the record back in both forms.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "engines/KvProjection.h"
#include "wkt/KvPRJParser.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  CKvPRJParser parser(text.c_str());
  parser.Parse(size % 2 == 0);
  std::unique_ptr<CKvProjection> engine(parser.CreateMapProjection());
  if (engine) {
    double x = 0, y = 0, lon = 0, lat = 0;
    engine->Geo2Proj(10, 50, &x, &y);
    engine->Proj2Geo(x, y, &lon, &lat);
  }
  CString out, readable;
  parser.Format(out);
  CKvPRJParser::FormatAsReadableWKT(out, readable);
  CKvPRJParser::FormatAsReadableWKT(text.c_str(), readable);
  (void)CKvPRJParser::ShortName(text.c_str());
  return 0;
}
