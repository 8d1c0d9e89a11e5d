// The flat datum-converter entries: one handle per CKvDatumConverter, every
// other entry forwards to the member of the same name.  The conventions they
// share are described in KvCart.h; every entry catches and checks its
// pointers.

#include "KvCart.h"
#include "cart/KvCartTextInternal.h"
#include "datum/KvDatumConverter.h"

namespace {

CKvDatumConverter* AsConverter(void* handle) { return static_cast<CKvDatumConverter*>(handle); }

using kvcart_c::GuardStatus;
using kvcart_c::GuardValue;
using kvcart_c::GuardVoid;
using kvcart_c::SetStatus;

}  // namespace

void C_KVDC_CREATE(const char* source, const char* target, void** handle, int* status) {
  GuardStatus(status, [&] {
    if (!source || !target || !handle) return SetStatus(status, -1);
    *handle = new CKvDatumConverter(source, target);
    SetStatus(status, 0);
  });
}

int C_KVDC_DESTROY(void** handle, int* status) {
  if (!handle || !*handle) {
    SetStatus(status, -1);
    return -1;
  }
  delete AsConverter(*handle);
  *handle = nullptr;
  SetStatus(status, 0);
  return 0;
}

void C_KVDC_CONVERTXY(void* handle, double* x, double* y) {
  GuardVoid([&] {
    if (handle && x && y) AsConverter(handle)->Convert(*x, *y);
  });
}

void C_KVDC_INVCONVERTXY(void* handle, double* x, double* y) {
  GuardVoid([&] {
    if (handle && x && y) AsConverter(handle)->InvConvert(*x, *y);
  });
}

void C_KVDC_CONVERTXYH(void* handle, double* x, double* y, double* h) {
  GuardVoid([&] {
    if (handle && x && y && h) AsConverter(handle)->Convert(*x, *y, *h);
  });
}

void C_KVDC_INVCONVERTXYH(void* handle, double* x, double* y, double* h) {
  GuardVoid([&] {
    if (handle && x && y && h) AsConverter(handle)->InvConvert(*x, *y, *h);
  });
}

// The shift type is 0, 1 or 2; -1 says that nothing was shifted.
int C_KVDC_DATUMSHIFT(void* handle, double* X, double* Y, double* Z) {
  return GuardValue(-1, [&] { return handle && X && Y && Z ? AsConverter(handle)->DatumShift(*X, *Y, *Z) : -1; });
}

int C_KVDC_INVDATUMSHIFT(void* handle, double* X, double* Y, double* Z) {
  return GuardValue(-1, [&] { return handle && X && Y && Z ? AsConverter(handle)->InvDatumShift(*X, *Y, *Z) : -1; });
}

void C_KVDC_SETCONVERSIONTYPE(void* handle, int type) {
  GuardVoid([&] {
    if (handle) AsConverter(handle)->SetConversionType(static_cast<CKvDatumConverter::ETypeOfConversion>(type));
  });
}

unsigned char C_KVDC_GETBYPASSXYZ(void* handle) {
  return GuardValue<unsigned char>(0, [&] { return handle && AsConverter(handle)->GetBypassXYZ() ? 1 : 0; });
}

void C_KVDC_BYPASSXYZ(void* handle) {
  GuardVoid([&] {
    if (handle) AsConverter(handle)->BypassXYZ();
  });
}

unsigned char C_KVDC_RESETBYPASSXYZ(void* handle) {
  return GuardValue<unsigned char>(0, [&] { return handle && AsConverter(handle)->ResetBypassXYZ() ? 1 : 0; });
}

void C_KVDC_SETDATUMSHIFT(void* handle, int type, double* values, int source) {
  GuardVoid([&] {
    if (handle) AsConverter(handle)->SetDatumShift(static_cast<CKvCartDef::ETypeOfDatumShift>(type), values, source != 0);
  });
}

// The new conversion type; -1 without a converter.
int C_KVDC_INVERTORDER(void* handle) {
  return GuardValue(-1, [&] { return handle ? static_cast<int>(AsConverter(handle)->InvertOrder()) : -1; });
}
