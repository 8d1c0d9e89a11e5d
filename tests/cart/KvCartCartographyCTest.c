/* Calls every local-grid entry point and the proj4 entry from C through the
 * public header, so that a declaration C cannot read, or a name that does
 * not link, fails the build.  KvCartCartographyCTest.cpp checks the results. */

#include <stddef.h>

#include "KvCart.h"

/* Creates a grid into a variable holding a marker (*kept: it still does),
 * then destroys through that variable twice.  Returns the creation status. */
int kvcc_create_destroy(const char* coordSys, double lon0, double lat0, double orientation,
                        int* kept, int destroyed[2]) {
  static int marker;
  void* handle = &marker;
  int status = 99;
  C_KVC_CREATE(coordSys, &handle, &status, lon0, lat0, orientation);
  *kept = handle == &marker;
  if (*kept) handle = NULL;
  C_KVC_DESTROY(&handle, &destroyed[0]);
  C_KVC_DESTROY(&handle, &destroyed[1]);
  return status;
}

/* Every member entry on one grid.  status[] of GETPROJECTIONNAME,
 * GETPROJECTIONSTRING and of C_KVMP_GETNAME on GETPROJECTION's object;
 * out[] = GEO2PROJ(lon, lat), PROJ2GEO of that, XY2PROJ(x, y), PROJ2XY of
 * that, XY2GEO(x, y), GEO2XY of that, GETTRUENORTH(x, y), GETPROJNORTH,
 * and C_KVMP_GEO2PROJ(lon, lat) on GETPROJECTION's object. */
void kvcc_members(const char* coordSys, double lon0, double lat0, double orientation, double lon,
                  double lat, double x, double y, char* name, int nameSize, char* wkt, int wktSize,
                  char* mpName, int status[3], double out[16]) {
  void* handle = NULL;
  void* projection;
  int ignored;
  C_KVC_CREATE(coordSys, &handle, &ignored, lon0, lat0, orientation);
  C_KVC_GETPROJECTIONNAME(handle, name, nameSize, &status[0]);
  C_KVC_GETPROJECTIONSTRING(handle, wkt, wktSize, &status[1]);
  C_KVC_GEO2PROJ(handle, lon, lat, &out[0], &out[1]);
  C_KVC_PROJ2GEO(handle, out[0], out[1], &out[2], &out[3]);
  C_KVC_XY2PROJ(handle, x, y, &out[4], &out[5]);
  C_KVC_PROJ2XY(handle, out[4], out[5], &out[6], &out[7]);
  C_KVC_XY2GEO(handle, x, y, &out[8], &out[9]);
  C_KVC_GEO2XY(handle, out[8], out[9], &out[10], &out[11]);
  out[12] = C_KVC_GETTRUENORTH(handle, x, y);
  out[13] = C_KVC_GETPROJNORTH(handle);
  projection = C_KVC_GETPROJECTION(handle);
  C_KVMP_GETNAME(projection, mpName, nameSize, &status[2]);
  C_KVMP_GEO2PROJ(projection, lon, lat, &out[14], &out[15]);
  C_KVC_DESTROY(&handle, &ignored);
}

/* C_KVC_CONVERT2PROJ4; returns the status. */
int kvcc_proj4(const char* coordSys, double* towgs84, int count, char* buffer, int size) {
  int status = 99;
  C_KVC_CONVERT2PROJ4(coordSys, towgs84, count, buffer, size, &status);
  return status;
}
