/* Calls every C_KVDC_ entry from C through the public header, so that a
 * declaration C cannot read, or a name that does not link, fails the build.
 * KvCartDatumConverterCTest.cpp checks the results. */

#include <stddef.h>

#include "KvCart.h"

/* Creates a converter into a variable holding a marker (*kept: it still
 * does), then destroys through that variable twice; destroyed[] receives the
 * two statuses, returned[] the two results.  Returns the creation status. */
int kvdc_create_destroy(const char* source, const char* target, int* kept, int destroyed[2],
                        int returned[2]) {
  static int marker;
  void* handle = &marker;
  int status = 99;
  C_KVDC_CREATE(source, target, &handle, &status);
  *kept = handle == &marker;
  if (*kept) handle = NULL;
  returned[0] = C_KVDC_DESTROY(&handle, &destroyed[0]);
  returned[1] = C_KVDC_DESTROY(&handle, &destroyed[1]);
  return status;
}

/* Converts p[0..2] (x, y, h) with conversion type `type`: out[0..1] by
 * CONVERTXY, out[2..3] INVCONVERTXY of those, out[4..6] CONVERTXYH,
 * out[7..9] INVCONVERTXYH of those.  Returns the creation status. */
int kvdc_convert(const char* source, const char* target, int type, const double p[3],
                 double out[10]) {
  void* handle = NULL;
  int status = 99, ignored;
  C_KVDC_CREATE(source, target, &handle, &status);
  if (status != 0) return status;
  C_KVDC_SETCONVERSIONTYPE(handle, type);
  out[0] = p[0];
  out[1] = p[1];
  C_KVDC_CONVERTXY(handle, &out[0], &out[1]);
  out[2] = out[0];
  out[3] = out[1];
  C_KVDC_INVCONVERTXY(handle, &out[2], &out[3]);
  out[4] = p[0];
  out[5] = p[1];
  out[6] = p[2];
  C_KVDC_CONVERTXYH(handle, &out[4], &out[5], &out[6]);
  out[7] = out[4];
  out[8] = out[5];
  out[9] = out[6];
  C_KVDC_INVCONVERTXYH(handle, &out[7], &out[8], &out[9]);
  C_KVDC_DESTROY(&handle, &ignored);
  return status;
}

/* DATUMSHIFT of xyz into out[0..2] and INVDATUMSHIFT of xyz into out[3..5];
 * types[] receives their results. */
void kvdc_shift(const char* source, const char* target, const double xyz[3], double out[6],
                int types[2]) {
  void* handle = NULL;
  int ignored;
  C_KVDC_CREATE(source, target, &handle, &ignored);
  out[0] = out[3] = xyz[0];
  out[1] = out[4] = xyz[1];
  out[2] = out[5] = xyz[2];
  types[0] = C_KVDC_DATUMSHIFT(handle, &out[0], &out[1], &out[2]);
  types[1] = C_KVDC_INVDATUMSHIFT(handle, &out[3], &out[4], &out[5]);
  C_KVDC_DESTROY(&handle, &ignored);
}

/* The settings on one converter, in order:
 * out[0] GETBYPASSXYZ as created; out[1] GETBYPASSXYZ after BYPASSXYZ;
 * out[2] GETBYPASSXYZ after SETDATUMSHIFT(type, values, sourceFlag);
 * out[3] RESETBYPASSXYZ; out[4] INVERTORDER after SETCONVERSIONTYPE(1);
 * out[5] INVERTORDER again.  shifted[0..2] is DATUMSHIFT of xyz after the
 * SETDATUMSHIFT. */
void kvdc_settings(const char* source, const char* target, int type, double* values, int sourceFlag,
                   const double xyz[3], int out[6], double shifted[3]) {
  void* handle = NULL;
  int ignored;
  C_KVDC_CREATE(source, target, &handle, &ignored);
  out[0] = C_KVDC_GETBYPASSXYZ(handle);
  C_KVDC_BYPASSXYZ(handle);
  out[1] = C_KVDC_GETBYPASSXYZ(handle);
  C_KVDC_SETDATUMSHIFT(handle, type, values, sourceFlag);
  out[2] = C_KVDC_GETBYPASSXYZ(handle);
  shifted[0] = xyz[0];
  shifted[1] = xyz[1];
  shifted[2] = xyz[2];
  C_KVDC_DATUMSHIFT(handle, &shifted[0], &shifted[1], &shifted[2]);
  out[3] = C_KVDC_RESETBYPASSXYZ(handle);
  C_KVDC_SETCONVERSIONTYPE(handle, 1);
  out[4] = C_KVDC_INVERTORDER(handle);
  out[5] = C_KVDC_INVERTORDER(handle);
  C_KVDC_DESTROY(&handle, &ignored);
}
