/* Converts a point and back through the flat C interface of an installed
 * KvCart, and checks the library's version against the header's. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "KvCart.h"

int main(void) {
  char version[32];
  int status = -1;
  void* handle = NULL;
  double x = 0, y = 0, lon = 0, lat = 0;

  S_GETVERSIONSTRING(version, (int)sizeof version - 1, &status);
  if (status != 0 || strcmp(version, KVCART_VERSION_STRING) != 0 || S_GETVERSION() != KVCART_VERSION) {
    fprintf(stderr, "header %s, library %s\n", KVCART_VERSION_STRING, version);
    return 1;
  }
  CARTSETUPLINUX(KVCART_DATA, "/nonexistent-kvcart-user-folder/");
  C_KVMP_CREATE("UTM-32", &handle, &status);
  if (status != 0) return 1;
  C_KVMP_GEO2PROJ(handle, 9, 56, &x, &y);
  C_KVMP_PROJ2GEO(handle, x, y, &lon, &lat);
  C_KVMP_DESTROY(&handle, &status);
  /* echo 9 56 | cs2cs +proj=longlat +datum=WGS84 +to +proj=utm +zone=32 +datum=WGS84 -f %.3f
   * gives 500000.000 6206079.587. */
  if (fabs(x - 500000.0) > 1e-3 || fabs(y - 6206079.587) > 1e-3 || fabs(lon - 9) > 1e-9 ||
      fabs(lat - 56) > 1e-9) {
    fprintf(stderr, "UTM-32 of 9 56: %.3f %.3f, back %.9f %.9f\n", x, y, lon, lat);
    return 1;
  }
  printf("c99 consumer: KvCart %s, UTM-32 %.3f %.3f\n", version, x, y);
  fflush(stdout);
  _Exit(0); /* not about the library's write of the user's files at exit */
}
