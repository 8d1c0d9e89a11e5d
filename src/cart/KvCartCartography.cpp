// The flat entry points of the local grid and the proj4 translation.  The
// conventions they share are described in KvCart.h; every entry catches and
// checks its pointers.

#include <string>

#include "KvCart.h"
#include "cart/KvCartTextInternal.h"
#include "mapproj/KvCartography.h"
#include "mapproj/KvMapProjection.h"
#include "wkt/KvProjTranslator.h"

namespace {

CKvCartography* AsCartography(void* handle) { return static_cast<CKvCartography*>(handle); }

using kvcart_c::CopyText;
using kvcart_c::GuardStatus;
using kvcart_c::GuardValue;
using kvcart_c::GuardVoid;
using kvcart_c::SetStatus;

void CopyText(const std::string& text, char* buffer, int size, int* status) {
  CopyText(text.c_str(), text.size(), buffer, size, status);
}

}  // namespace

void C_KVC_CREATE(const char* coordSys, void** handle, int* status, double lon0, double lat0,
                  double orientation) {
  GuardStatus(status, [&] {
    if (!coordSys || !handle) return SetStatus(status, -1);
    *handle = new CKvCartography(coordSys, lon0, lat0, orientation);
    SetStatus(status, 0);
  });
}

void C_KVC_DESTROY(void** handle, int* status) {
  if (!handle || !*handle) {
    SetStatus(status, -1);
    return;
  }
  delete AsCartography(*handle);
  *handle = nullptr;
  SetStatus(status, 0);
}

void* C_KVC_GETPROJECTION(void* handle) {
  // Handed out as a C_KVMP_ handle; the C_KVMP_ entries other than destroy
  // only read through it.
  return handle ? const_cast<CKvMapProjection*>(&AsCartography(handle)->GetProjection()) : nullptr;
}

void C_KVC_GETPROJECTIONNAME(void* handle, char* buffer, int size, int* status) {
  GuardStatus(status, [&] {
    if (!handle) return SetStatus(status, -1);
    CopyText(AsCartography(handle)->GetProjectionName(), buffer, size, status);
  });
}

void C_KVC_GETPROJECTIONSTRING(void* handle, char* buffer, int size, int* status) {
  GuardStatus(status, [&] {
    if (!handle) return SetStatus(status, -1);
    CopyText(AsCartography(handle)->GetProjectionString(), buffer, size, status);
  });
}

double C_KVC_GETTRUENORTH(void* handle, double x, double y) {
  return GuardValue(0.0, [&] { return handle ? AsCartography(handle)->GetTrueNorth(x, y) : 0.0; });
}

double C_KVC_GETPROJNORTH(void* handle) {
  return GuardValue(0.0, [&] { return handle ? AsCartography(handle)->GetProjectionNorth() : 0.0; });
}

namespace {

// The six point conversions: `member` of a live grid with both outputs.
template <class Member>
void Convert(void* handle, double a, double b, double* outA, double* outB, Member member) {
  GuardVoid([&] {
    if (handle && outA && outB) (AsCartography(handle)->*member)(a, b, outA, outB);
  });
}

}  // namespace

void C_KVC_GEO2PROJ(void* handle, double lon, double lat, double* east, double* north) {
  Convert(handle, lon, lat, east, north, &CKvCartography::Geo2Proj);
}

void C_KVC_PROJ2GEO(void* handle, double east, double north, double* lon, double* lat) {
  Convert(handle, east, north, lon, lat, &CKvCartography::Proj2Geo);
}

void C_KVC_XY2GEO(void* handle, double x, double y, double* lon, double* lat) {
  Convert(handle, x, y, lon, lat, &CKvCartography::Xy2Geo);
}

void C_KVC_GEO2XY(void* handle, double lon, double lat, double* x, double* y) {
  Convert(handle, lon, lat, x, y, &CKvCartography::Geo2Xy);
}

void C_KVC_XY2PROJ(void* handle, double x, double y, double* east, double* north) {
  Convert(handle, x, y, east, north, &CKvCartography::Xy2Proj);
}

void C_KVC_PROJ2XY(void* handle, double east, double north, double* x, double* y) {
  Convert(handle, east, north, x, y, &CKvCartography::Proj2Xy);
}

void C_KVC_CONVERT2PROJ4(const char* coordSys, double* towgs84, int count, char* buffer, int size,
                         int* status) {
  GuardStatus(status, [&] {
    if (!coordSys) return SetStatus(status, -1);
    // Values the caller says are there but gave no array for are none.
    CopyText(CKvProjTranslator().Convert2Proj4(coordSys, towgs84, towgs84 ? count : 0),
             buffer, size, status);
  });
}
