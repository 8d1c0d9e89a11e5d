// Converts a point with the class interface of an installed KvCart, its
// catalogue found through the package's KvCart_DATA_DIR.
#include <cmath>
#include <cstdio>

#include "KvCart.h"
#include "datum/KvDatumConverter.h"
#include "mapproj/KvMapProjection.h"

int main() {
  if (S_GETVERSION() != KVCART_VERSION) {
    std::fprintf(stderr, "header %d, library %d\n", KVCART_VERSION, S_GETVERSION());
    return 1;
  }
  CARTSETUPLINUX(KVCART_DATA, "/nonexistent-kvcart-user-folder/");
  CKvMapProjection utm("UTM-32");
  double x = 0, y = 0;
  utm.Geo2Proj(9, 56, &x, &y);
  // echo 9 56 | cs2cs +proj=longlat +datum=WGS84 +to +proj=utm +zone=32 +datum=WGS84 -f %.3f
  // gives 500000.000 6206079.587.
  if (std::fabs(x - 500000.0) > 1e-3 || std::fabs(y - 6206079.587) > 1e-3) {
    std::fprintf(stderr, "UTM-32 of 9 56: %.3f %.3f\n", x, y);
    return 1;
  }
  // A record read from the bundled files, not one of the built-in zones.
  CKvMapProjection texas("NAD27 / Texas South Central");
  if (!texas.GetProjection()) {
    std::fprintf(stderr, "the bundled catalogue did not load from %s\n", KVCART_DATA);
    return 1;
  }
  std::printf("cmake consumer: KvCart %s, UTM-32 %.3f %.3f\n", KVCART_VERSION_STRING, x, y);
  std::fflush(stdout);
  std::_Exit(0);  // not about the library's write of the user's files at exit
}
