// The flat entry points: each wraps one object behind a handle or forwards
// one call.  The conventions they share are described in KvCart.h.

#include "KvCart.h"

#include <cstring>
#include <string>

#include "cart/KvCartSetup.h"
#include "cart/KvCartTextInternal.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"

namespace {

CKvMapProjection* AsMapProjection(void* handle) { return static_cast<CKvMapProjection*>(handle); }

using kvcart_c::CopyText;

}  // namespace

// --- set-up

void CARTSETUPLINUX(const char* systemFolder, const char* userFolder) {
  // std::string from a null pointer raises std::logic_error; let it through.
  CKvCartSetup::Instance().ReadData(std::string(systemFolder), std::string(userFolder));
}

// --- map-projection handles

void C_KVMP_CREATE(const char* coordSys, void** handle, int* status) {
  // The object's constructor would end the process on a null string; a
  // caller of the flat interface gets a failed creation instead.
  if (!coordSys) {
    *status = -1;
    return;
  }
  try {
    CKvMapProjection* projection = new CKvMapProjection(coordSys);
    *handle = projection;
    *status = 0;
  } catch (...) {
    *status = -1;
  }
}

void C_KVMP_DESTROY(void** handle, int* status) {
  if (!*handle) {
    *status = -1;
    return;
  }
  delete AsMapProjection(*handle);
  *handle = nullptr;
  *status = 0;
}

void C_KVMP_GETNAME(void* handle, char* buffer, int size, int* status) {
  CopyText(AsMapProjection(handle)->GetName(), buffer, size, status);
}

void C_KVMP_GETPROJECTIONSTRING(void* handle, char* buffer, int size, int* status) {
  CopyText(AsMapProjection(handle)->GetProjectionString(), buffer, size, status);
}

void C_KVMP_GEO2PROJ(void* handle, double lon, double lat, double* x, double* y) {
  AsMapProjection(handle)->Geo2Proj(lon, lat, x, y);
}

void C_KVMP_PROJ2GEO(void* handle, double x, double y, double* lon, double* lat) {
  AsMapProjection(handle)->Proj2Geo(x, y, lon, lat);
}

void C_KVMP_GETORIGIN(void* handle, double* lon, double* lat) {
  AsMapProjection(handle)->GetOrigin(lon, lat);
}

double C_KVMP_GETCONVERGENCE(void* handle, double lon, double lat) {
  return AsMapProjection(handle)->GetConvergence(lon, lat);
}

void C_KVMP_GETDEFAULTAREA(void* handle, double* xmin, double* ymin, double* xmax, double* ymax) {
  AsMapProjection(handle)->GetDefaultArea(xmin, ymin, xmax, ymax);
}

void C_KVMP_XYZ2GEO(void* handle, double X, double Y, double Z, double* lon, double* lat,
                    double* h) {
  AsMapProjection(handle)->XYZ2Geo(X, Y, Z, lon, lat, h);
}

void C_KVMP_GEO2XYZ(void* handle, double lon, double lat, double h, double* X, double* Y,
                    double* Z) {
  AsMapProjection(handle)->Geo2XYZ(lon, lat, h, X, Y, Z);
}

CKvProjection* NewKvProjection(const char* coordSys) {
  return CKvMapProjection::GetProjection(coordSys, nullptr);
}

// --- queries on coordinate-system strings

int S_HASDATUM(const char* coordSys) { return CKvMapProjection::HasDatum(coordSys); }
int S_ISVALID(const char* coordSys) { return CKvMapProjection::IsValid(coordSys); }
int S_ISLOCAL(const char* coordSys) { return CKvMapProjection::IsLocal(coordSys); }
int S_ISLONGLAT(const char* coordSys) { return CKvMapProjection::IsLongLat(coordSys); }
int S_ISGEOREFERENCED(const char* coordSys) { return CKvMapProjection::IsGeoreferenced(coordSys); }
int S_ISGEOGRAPHICAL(const char* coordSys) { return CKvMapProjection::IsGeographical(coordSys); }

// The entry takes the string first, the class the mask first.
int S_ISTYPE(const char* coordSys, int mask) { return CKvMapProjection::IsType(mask, coordSys); }

int S_AREIDENTICAL(const char* first, const char* second) {
  return CKvMapProjection::AreIdentical(first, second);
}

int S_GETCOORDSYSTYPE(const char* coordSys) { return CKvMapProjection::GetCoordSysType(coordSys); }

void S_PROJECTIONSHORTNAME(const char* coordSys, char* buffer, int size, int* status) {
  CopyText(CKvMapProjection::ShortName(coordSys), buffer, size, status);
}

void S_LONGITUDETOUTMZONE(double lon, char* buffer, int size, int* status) {
  CopyText(CKvMapProjection::LongitudeToUTMZone(lon), buffer, size, status);
}

void S_GETGOOGLEMAPPROJECTIONSTRING(char* buffer, int size, int* status) {
  CopyText(CKvMapProjection::IDtoProjectionString(CKvMapProjection::eGoogleMercator), buffer, size,
           status);
}

void S_PROJECTIONORIGIN(const char* coordSys, double* lon, double* lat, int* status) {
  if (!coordSys) {
    *status = -1;
    return;
  }
  try {
    const CKvMapProjection projection(coordSys);
    projection.GetOrigin(lon, lat);
    *status = 0;
  } catch (...) {
    *status = -1;
  }
}
