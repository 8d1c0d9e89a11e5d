// Reads a WKT string with the class interface of an installed KvCart, built
// with the flags of pkg-config --cflags --libs kvcart; the catalogue folder
// comes from pkg-config --variable=pkgdatadir kvcart.
//
//   pkgconfig_consumer DATA_FOLDER/
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "KvCart.h"
#include "mapproj/KvMapProjection.h"
#include "wkt/KvPRJParser.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  CARTSETUPLINUX(argv[1], "/nonexistent-kvcart-user-folder/");
  const char* wkt =
      "PROJCS[\"Lambert 2SP\",GEOGCS[\"GRS 1980\",DATUM[\"D\",SPHEROID[\"GRS 1980\",6378137,"
      "298.257222101]],PRIMEM[\"Greenwich\",0],UNIT[\"degree\",0.0174532925199433]],"
      "PROJECTION[\"Lambert_Conformal_Conic_2SP\"],PARAMETER[\"standard_parallel_1\",49],"
      "PARAMETER[\"standard_parallel_2\",44],PARAMETER[\"latitude_of_origin\",46.5],"
      "PARAMETER[\"central_meridian\",3],PARAMETER[\"false_easting\",700000],"
      "PARAMETER[\"false_northing\",6600000],UNIT[\"metre\",1]]";
  // The string class crosses the interface: it is exported in its namespace.
  CString text(wkt);
  CKvPRJParser parser(text);
  if (!parser.Parse(false) || parser.GetProjectionType() != CKvMapProjData::eLambert2SP) {
    std::fprintf(stderr, "the WKT did not parse as Lambert 2SP\n");
    return 1;
  }
  CKvMapProjection lambert(wkt);
  double x = 0, y = 0;
  lambert.Geo2Proj(3, 46.5, &x, &y);
  // The origin maps to the false easting and northing.
  if (std::fabs(x - 700000.0) > 1e-6 || std::fabs(y - 6600000.0) > 1e-6) {
    std::fprintf(stderr, "origin: %.6f %.6f\n", x, y);
    return 1;
  }
  CKvMapProjection texas("NAD27 / Texas South Central");
  if (!texas.GetProjection()) {
    std::fprintf(stderr, "the bundled catalogue did not load from %s\n", argv[1]);
    return 1;
  }
  std::printf("pkg-config consumer: KvCart %s, %s\n", KVCART_VERSION_STRING, lambert.GetName());
  std::fflush(stdout);
  std::_Exit(0);  // not about the library's write of the user's files at exit
}
