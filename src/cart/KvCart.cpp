// The flat entry points: each wraps one object behind a handle or forwards
// one call.  The conventions they share are described in KvCart.h; every
// entry catches (KvCartTextInternal.h) and checks its pointers, so that
// neither an exception nor a null pointer brings the host down.

#include "KvCart.h"

#include <cstring>
#include <string>

#include "cart/KvCartSetup.h"
#include "cart/KvCartTextInternal.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"
#include "wkt/KvProjectionInfo.h"

namespace {

CKvMapProjection* AsMapProjection(void* handle) { return static_cast<CKvMapProjection*>(handle); }

using kvcart_c::CopyText;
using kvcart_c::GuardStatus;
using kvcart_c::GuardValue;
using kvcart_c::GuardVoid;
using kvcart_c::SetStatus;

// What S_GETCOORDSYSTYPE answers for a string that names nothing: the axes
// of an object without engine.
int UnknownCoordSysType() {
  CKvProjectionInfo info;
  CKvProjectionInfo::CAxis::EType first, second;
  info.GetAxisTypes(first, second);
  return 4 * first + second;
}

}  // namespace

// --- set-up

void CARTSETUPLINUX(const char* systemFolder, const char* userFolder) {
  GuardVoid([&] {
    if (!systemFolder || !userFolder) return;
    CKvCartSetup::Instance().ReadData(systemFolder, userFolder);
  });
}

void CARTGETLASTERROR(char* buffer, int size, int* status) {
  GuardStatus(status, [&] {
    const std::string text = CKvCartSetup::Instance().GetLastError();
    CopyText(text.c_str(), text.size(), buffer, size, status);
  });
}

int CARTSAVEUSERFILES(void) {
  return GuardValue(-1, [] { return CKvCartSetup::Instance().SaveUserFiles() == 0 ? 0 : -1; });
}

// --- map-projection handles

void C_KVMP_CREATE(const char* coordSys, void** handle, int* status) {
  GuardStatus(status, [&] {
    if (!coordSys || !handle) {
      SetStatus(status, -1);
      return;
    }
    // The string form of the constructor: an allocation failure while
    // resolving is an exception here, reported as -1, not the end of the
    // process.
    *handle = new CKvMapProjection(std::string(coordSys));
    SetStatus(status, 0);
  });
}

void C_KVMP_DESTROY(void** handle, int* status) {
  if (!handle || !*handle) {
    SetStatus(status, -1);
    return;
  }
  delete AsMapProjection(*handle);
  *handle = nullptr;
  SetStatus(status, 0);
}

void C_KVMP_GETNAME(void* handle, char* buffer, int size, int* status) {
  GuardStatus(status, [&] {
    if (!handle) return SetStatus(status, -1);
    CopyText(AsMapProjection(handle)->GetName(), buffer, size, status);
  });
}

void C_KVMP_GETPROJECTIONSTRING(void* handle, char* buffer, int size, int* status) {
  GuardStatus(status, [&] {
    if (!handle) return SetStatus(status, -1);
    CopyText(AsMapProjection(handle)->GetProjectionString(), buffer, size, status);
  });
}

void C_KVMP_GEO2PROJ(void* handle, double lon, double lat, double* x, double* y) {
  GuardVoid([&] {
    if (handle && x && y) AsMapProjection(handle)->Geo2Proj(lon, lat, x, y);
  });
}

void C_KVMP_PROJ2GEO(void* handle, double x, double y, double* lon, double* lat) {
  GuardVoid([&] {
    if (handle && lon && lat) AsMapProjection(handle)->Proj2Geo(x, y, lon, lat);
  });
}

void C_KVMP_GETORIGIN(void* handle, double* lon, double* lat) {
  GuardVoid([&] {
    if (handle && lon && lat) AsMapProjection(handle)->GetOrigin(lon, lat);
  });
}

double C_KVMP_GETCONVERGENCE(void* handle, double lon, double lat) {
  return GuardValue(0.0, [&] { return handle ? AsMapProjection(handle)->GetConvergence(lon, lat) : 0.0; });
}

void C_KVMP_GETDEFAULTAREA(void* handle, double* xmin, double* ymin, double* xmax, double* ymax) {
  GuardVoid([&] {
    if (handle && xmin && ymin && xmax && ymax) AsMapProjection(handle)->GetDefaultArea(xmin, ymin, xmax, ymax);
  });
}

void C_KVMP_XYZ2GEO(void* handle, double X, double Y, double Z, double* lon, double* lat,
                    double* h) {
  GuardVoid([&] {
    if (handle && lon && lat && h) AsMapProjection(handle)->XYZ2Geo(X, Y, Z, lon, lat, h);
  });
}

void C_KVMP_GEO2XYZ(void* handle, double lon, double lat, double h, double* X, double* Y,
                    double* Z) {
  GuardVoid([&] {
    if (handle && X && Y && Z) AsMapProjection(handle)->Geo2XYZ(lon, lat, h, X, Y, Z);
  });
}

CKvProjection* NewKvProjection(const char* coordSys) {
  return GuardValue(static_cast<CKvProjection*>(nullptr), [&]() -> CKvProjection* {
    return coordSys ? CKvMapProjection::GetProjection(coordSys, nullptr) : nullptr;
  });
}

// --- queries on coordinate-system strings

namespace {

// A boolean query: 0 for a null string or when anything was raised.
int Ask(const char* coordSys, bool (*query)(const char*)) {
  return GuardValue(0, [&] { return coordSys && query(coordSys) ? 1 : 0; });
}

}  // namespace

int S_HASDATUM(const char* coordSys) { return Ask(coordSys, CKvMapProjection::HasDatum); }
int S_ISVALID(const char* coordSys) { return Ask(coordSys, CKvMapProjection::IsValid); }
int S_ISLOCAL(const char* coordSys) { return Ask(coordSys, CKvMapProjection::IsLocal); }
int S_ISLONGLAT(const char* coordSys) { return Ask(coordSys, CKvMapProjection::IsLongLat); }
int S_ISGEOREFERENCED(const char* coordSys) { return Ask(coordSys, CKvMapProjection::IsGeoreferenced); }
int S_ISGEOGRAPHICAL(const char* coordSys) { return Ask(coordSys, CKvMapProjection::IsGeographical); }

// The entry takes the string first, the class the mask first.
int S_ISTYPE(const char* coordSys, int mask) {
  return GuardValue(0, [&] { return coordSys && CKvMapProjection::IsType(mask, coordSys) ? 1 : 0; });
}

int S_AREIDENTICAL(const char* first, const char* second) {
  return GuardValue(0, [&] { return first && second && CKvMapProjection::AreIdentical(first, second) ? 1 : 0; });
}

int S_GETCOORDSYSTYPE(const char* coordSys) {
  return GuardValue(UnknownCoordSysType(), [&] {
    return coordSys ? CKvMapProjection::GetCoordSysType(coordSys) : UnknownCoordSysType();
  });
}

void S_PROJECTIONSHORTNAME(const char* coordSys, char* buffer, int size, int* status) {
  GuardStatus(status, [&] {
    if (!coordSys) return SetStatus(status, -1);
    CopyText(CKvMapProjection::ShortName(coordSys), buffer, size, status);
  });
}

void S_LONGITUDETOUTMZONE(double lon, char* buffer, int size, int* status) {
  GuardStatus(status, [&] { CopyText(CKvMapProjection::LongitudeToUTMZone(lon), buffer, size, status); });
}

void S_GETGOOGLEMAPPROJECTIONSTRING(char* buffer, int size, int* status) {
  GuardStatus(status, [&] {
    CopyText(CKvMapProjection::IDtoProjectionString(CKvMapProjection::eGoogleMercator), buffer, size, status);
  });
}

void S_PROJECTIONORIGIN(const char* coordSys, double* lon, double* lat, int* status) {
  GuardStatus(status, [&] {
    if (!coordSys || !lon || !lat) return SetStatus(status, -1);
    const CKvMapProjection projection{std::string(coordSys)};
    projection.GetOrigin(lon, lat);
    SetStatus(status, 0);
  });
}
