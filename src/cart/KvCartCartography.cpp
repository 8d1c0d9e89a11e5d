// The flat entry points of the local grid and the proj4 translation.  The
// conventions they share are described in KvCart.h.

#include <string>

#include "KvCart.h"
#include "cart/KvCartTextInternal.h"
#include "mapproj/KvCartography.h"
#include "mapproj/KvMapProjection.h"
#include "wkt/KvProjTranslator.h"

namespace {

CKvCartography* AsCartography(void* handle) { return static_cast<CKvCartography*>(handle); }

using kvcart_c::CopyText;

void CopyText(const std::string& text, char* buffer, int size, int* status) {
  CopyText(text.c_str(), text.size(), buffer, size, status);
}

}  // namespace

void C_KVC_CREATE(const char* coordSys, void** handle, int* status, double lon0, double lat0,
                  double orientation) {
  if (!coordSys) {
    *status = -1;
    return;
  }
  try {
    CKvCartography* grid = new CKvCartography(coordSys, lon0, lat0, orientation);
    *handle = grid;
    *status = 0;
  } catch (...) {
    *status = -1;
  }
}

void C_KVC_DESTROY(void** handle, int* status) {
  if (!*handle) {
    *status = -1;
    return;
  }
  delete AsCartography(*handle);
  *handle = nullptr;
  *status = 0;
}

void* C_KVC_GETPROJECTION(void* handle) {
  // Handed out as a C_KVMP_ handle; the C_KVMP_ entries other than destroy
  // only read through it.
  return const_cast<CKvMapProjection*>(&AsCartography(handle)->GetProjection());
}

void C_KVC_GETPROJECTIONNAME(void* handle, char* buffer, int size, int* status) {
  CopyText(AsCartography(handle)->GetProjectionName(), buffer, size, status);
}

void C_KVC_GETPROJECTIONSTRING(void* handle, char* buffer, int size, int* status) {
  CopyText(AsCartography(handle)->GetProjectionString(), buffer, size, status);
}

double C_KVC_GETTRUENORTH(void* handle, double x, double y) {
  return AsCartography(handle)->GetTrueNorth(x, y);
}

double C_KVC_GETPROJNORTH(void* handle) { return AsCartography(handle)->GetProjectionNorth(); }

void C_KVC_GEO2PROJ(void* handle, double lon, double lat, double* east, double* north) {
  AsCartography(handle)->Geo2Proj(lon, lat, east, north);
}

void C_KVC_PROJ2GEO(void* handle, double east, double north, double* lon, double* lat) {
  AsCartography(handle)->Proj2Geo(east, north, lon, lat);
}

void C_KVC_XY2GEO(void* handle, double x, double y, double* lon, double* lat) {
  AsCartography(handle)->Xy2Geo(x, y, lon, lat);
}

void C_KVC_GEO2XY(void* handle, double lon, double lat, double* x, double* y) {
  AsCartography(handle)->Geo2Xy(lon, lat, x, y);
}

void C_KVC_XY2PROJ(void* handle, double x, double y, double* east, double* north) {
  AsCartography(handle)->Xy2Proj(x, y, east, north);
}

void C_KVC_PROJ2XY(void* handle, double east, double north, double* x, double* y) {
  AsCartography(handle)->Proj2Xy(east, north, x, y);
}

void C_KVC_CONVERT2PROJ4(const char* coordSys, double* towgs84, int count, char* buffer, int size,
                         int* status) {
  // Generic "UTM" raises inside; a C caller cannot catch it.
  if (!coordSys) {
    *status = -1;
    return;
  }
  try {
    CopyText(CKvProjTranslator().Convert2Proj4(coordSys, towgs84, count), buffer, size, status);
  } catch (...) {
    *status = -1;
  }
}
