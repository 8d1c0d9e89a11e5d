/* Calls every flat entry point from C through the public header, so that a
 * declaration C cannot read, or a name that does not link, fails the build.
 * KvCartCTest.cpp checks the results. */

#include <stddef.h>

#include "KvCart.h"

void kvct_set_up(const char* userFolder) {
  static int loaded = 0; /* a second set-up would append every record again */
  if (!loaded) CARTSETUPLINUX(KVCART_DATA_DIR, userFolder);
  loaded = 1;
}

/* Creates coordSys into a variable holding a marker (*kept: it still does),
 * then destroys through that variable twice.  Returns the creation status. */
int kvct_create_destroy(const char* coordSys, int* kept, int destroyed[2]) {
  static int marker;
  void* handle = &marker;
  int status = 99;
  C_KVMP_CREATE(coordSys, &handle, &status);
  *kept = handle == &marker;
  if (*kept) handle = NULL;
  C_KVMP_DESTROY(&handle, &destroyed[0]);
  C_KVMP_DESTROY(&handle, &destroyed[1]);
  return status;
}

/* Every member entry on one object; status[] of GETNAME and
 * GETPROJECTIONSTRING; out[] = Geo2Proj x y, Proj2Geo of them, origin,
 * convergence, default area (4), Geo2XYZ X Y Z, XYZ2Geo of them. */
void kvct_members(const char* coordSys, char* name, int nameSize, char* wkt, int wktSize,
                  int status[2], double lon, double lat, double h, double out[17]) {
  void* handle = NULL;
  int ignored;
  C_KVMP_CREATE(coordSys, &handle, &ignored);
  C_KVMP_GETNAME(handle, name, nameSize, &status[0]);
  C_KVMP_GETPROJECTIONSTRING(handle, wkt, wktSize, &status[1]);
  C_KVMP_GEO2PROJ(handle, lon, lat, &out[0], &out[1]);
  C_KVMP_PROJ2GEO(handle, out[0], out[1], &out[2], &out[3]);
  C_KVMP_GETORIGIN(handle, &out[4], &out[5]);
  out[6] = C_KVMP_GETCONVERGENCE(handle, lon, lat);
  C_KVMP_GETDEFAULTAREA(handle, &out[7], &out[8], &out[9], &out[10]);
  C_KVMP_GEO2XYZ(handle, lon, lat, h, &out[11], &out[12], &out[13]);
  C_KVMP_XYZ2GEO(handle, out[11], out[12], out[13], &out[14], &out[15], &out[16]);
  C_KVMP_DESTROY(&handle, &ignored);
}

/* The caller deletes the engine from C++. */
KvProjectionEngine* kvct_new_projection(const char* coordSys) { return NewKvProjection(coordSys); }

/* HASDATUM, ISVALID, ISLOCAL, ISLONGLAT, ISGEOREFERENCED, ISGEOGRAPHICAL,
 * GETCOORDSYSTYPE, AREIDENTICAL with itself, AREIDENTICAL with other. */
void kvct_queries(const char* coordSys, const char* other, int out[9]) {
  out[0] = S_HASDATUM(coordSys);
  out[1] = S_ISVALID(coordSys);
  out[2] = S_ISLOCAL(coordSys);
  out[3] = S_ISLONGLAT(coordSys);
  out[4] = S_ISGEOREFERENCED(coordSys);
  out[5] = S_ISGEOGRAPHICAL(coordSys);
  out[6] = S_GETCOORDSYSTYPE(coordSys);
  out[7] = S_AREIDENTICAL(coordSys, coordSys);
  out[8] = S_AREIDENTICAL(coordSys, other);
}

int kvct_is_type(const char* coordSys, int mask) { return S_ISTYPE(coordSys, mask); }

/* which: 0 the short name of coordSys, 1 the UTM zone of lon, 2 the Google
 * text, 3 the library's version.  Returns the status. */
int kvct_text(int which, const char* coordSys, double lon, char* buffer, int size) {
  int status = 99;
  if (which == 0) S_PROJECTIONSHORTNAME(coordSys, buffer, size, &status);
  if (which == 1) S_LONGITUDETOUTMZONE(lon, buffer, size, &status);
  if (which == 2) S_GETGOOGLEMAPPROJECTIONSTRING(buffer, size, &status);
  if (which == 3) S_GETVERSIONSTRING(buffer, size, &status);
  return status;
}

int kvct_origin(const char* coordSys, double* lon, double* lat) {
  int status = 99;
  S_PROJECTIONORIGIN(coordSys, lon, lat, &status);
  return status;
}

/* The set-up's last problem into buffer; returns the status. */
int kvct_last_error(char* buffer, int size) {
  int status = 99;
  CARTGETLASTERROR(buffer, size, &status);
  return status;
}

int kvct_save(void) { return CARTSAVEUSERFILES(); }
/* The header's version and the library's: header[0..2] major, minor, patch,
 * header[3] KVCART_VERSION; returns S_GETVERSION(). */
int kvct_version(int header[4], const char** headerText) {
  header[0] = KVCART_VERSION_MAJOR;
  header[1] = KVCART_VERSION_MINOR;
  header[2] = KVCART_VERSION_PATCH;
  header[3] = KVCART_VERSION;
  *headerText = KVCART_VERSION_STRING;
  return S_GETVERSION();
}
