// The flat datum-converter entries: one handle per CKvDatumConverter, every
// other entry forwards to the member of the same name.  The conventions they
// share are described in KvCart.h.

#include "KvCart.h"
#include "datum/KvDatumConverter.h"

namespace {

CKvDatumConverter* AsConverter(void* handle) { return static_cast<CKvDatumConverter*>(handle); }

}  // namespace

void C_KVDC_CREATE(const char* source, const char* target, void** handle, int* status) {
  try {
    CKvDatumConverter* converter = new CKvDatumConverter(source, target);
    *handle = converter;
    *status = 0;
  } catch (...) {
    *status = -1;
  }
}

int C_KVDC_DESTROY(void** handle, int* status) {
  if (!*handle) {
    *status = -1;
    return -1;
  }
  delete AsConverter(*handle);
  *handle = nullptr;
  *status = 0;
  return 0;
}

void C_KVDC_CONVERTXY(void* handle, double* x, double* y) { AsConverter(handle)->Convert(*x, *y); }

void C_KVDC_INVCONVERTXY(void* handle, double* x, double* y) {
  AsConverter(handle)->InvConvert(*x, *y);
}

void C_KVDC_CONVERTXYH(void* handle, double* x, double* y, double* h) {
  AsConverter(handle)->Convert(*x, *y, *h);
}

void C_KVDC_INVCONVERTXYH(void* handle, double* x, double* y, double* h) {
  AsConverter(handle)->InvConvert(*x, *y, *h);
}

int C_KVDC_DATUMSHIFT(void* handle, double* X, double* Y, double* Z) {
  return AsConverter(handle)->DatumShift(*X, *Y, *Z);
}

int C_KVDC_INVDATUMSHIFT(void* handle, double* X, double* Y, double* Z) {
  return AsConverter(handle)->InvDatumShift(*X, *Y, *Z);
}

void C_KVDC_SETCONVERSIONTYPE(void* handle, int type) {
  AsConverter(handle)->SetConversionType(static_cast<CKvDatumConverter::ETypeOfConversion>(type));
}

unsigned char C_KVDC_GETBYPASSXYZ(void* handle) { return AsConverter(handle)->GetBypassXYZ(); }

void C_KVDC_BYPASSXYZ(void* handle) { AsConverter(handle)->BypassXYZ(); }

unsigned char C_KVDC_RESETBYPASSXYZ(void* handle) { return AsConverter(handle)->ResetBypassXYZ(); }

void C_KVDC_SETDATUMSHIFT(void* handle, int type, double* values, int source) {
  AsConverter(handle)->SetDatumShift(static_cast<CKvCartDef::ETypeOfDatumShift>(type), values,
                                     source != 0);
}

int C_KVDC_INVERTORDER(void* handle) { return AsConverter(handle)->InvertOrder(); }
