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

/* With conversion type `type`: out[0..1] CONVERTXY of p[0..1], out[2..3]
 * INVCONVERTXY of those, out[4..6] CONVERTXYH of p, out[7..9] INVCONVERTXYH
 * of those; shifted[0..2] DATUMSHIFT and shifted[3..5] INVDATUMSHIFT of xyz,
 * types[] their results.  Returns the creation status. */
int kvdc_convert(const char* source, const char* target, int type, const double p[3],
                 const double xyz[3], double out[10], double shifted[6], int types[2]) {
  void* handle = NULL;
  int status = 99, ignored, i;
  C_KVDC_CREATE(source, target, &handle, &status);
  if (status != 0) return status;
  C_KVDC_SETCONVERSIONTYPE(handle, type);
  for (i = 0; i < 3; ++i) out[i] = out[4 + i] = p[i];
  for (i = 0; i < 3; ++i) shifted[i] = shifted[3 + i] = xyz[i];
  C_KVDC_CONVERTXY(handle, &out[0], &out[1]);
  out[2] = out[0];
  out[3] = out[1];
  C_KVDC_INVCONVERTXY(handle, &out[2], &out[3]);
  C_KVDC_CONVERTXYH(handle, &out[4], &out[5], &out[6]);
  for (i = 0; i < 3; ++i) out[7 + i] = out[4 + i];
  C_KVDC_INVCONVERTXYH(handle, &out[7], &out[8], &out[9]);
  types[0] = C_KVDC_DATUMSHIFT(handle, &shifted[0], &shifted[1], &shifted[2]);
  types[1] = C_KVDC_INVDATUMSHIFT(handle, &shifted[3], &shifted[4], &shifted[5]);
  C_KVDC_DESTROY(&handle, &ignored);
  return status;
}

/* The settings on one converter, in order: out[0] GETBYPASSXYZ as created;
 * out[1] after BYPASSXYZ; out[2] after SETDATUMSHIFT(type, values,
 * sourceFlag); out[3] RESETBYPASSXYZ; out[4] INVERTORDER after
 * SETCONVERSIONTYPE(1); out[5] INVERTORDER again.  shifted[0..2] is
 * DATUMSHIFT of xyz after the SETDATUMSHIFT. */
void kvdc_settings(const char* source, const char* target, int type, double* values, int sourceFlag,
                   const double xyz[3], int out[6], double shifted[3]) {
  void* handle = NULL;
  int ignored, i;
  C_KVDC_CREATE(source, target, &handle, &ignored);
  out[0] = C_KVDC_GETBYPASSXYZ(handle);
  C_KVDC_BYPASSXYZ(handle);
  out[1] = C_KVDC_GETBYPASSXYZ(handle);
  C_KVDC_SETDATUMSHIFT(handle, type, values, sourceFlag);
  out[2] = C_KVDC_GETBYPASSXYZ(handle);
  for (i = 0; i < 3; ++i) shifted[i] = xyz[i];
  C_KVDC_DATUMSHIFT(handle, &shifted[0], &shifted[1], &shifted[2]);
  out[3] = C_KVDC_RESETBYPASSXYZ(handle);
  C_KVDC_SETCONVERSIONTYPE(handle, 1);
  out[4] = C_KVDC_INVERTORDER(handle);
  out[5] = C_KVDC_INVERTORDER(handle);
  C_KVDC_DESTROY(&handle, &ignored);
}
