#ifndef KVCART_H
#define KVCART_H

/*
 * The flat interface of libKvCart, usable from C and C++.
 *
 * Handles.  C_KVMP_CREATE, C_KVC_CREATE and C_KVDC_CREATE hand out the
 * address of a heap map-projection object, local grid or datum converter as
 * a void*.  The library keeps no table of handles and checks none: every
 * other entry of a family takes a live handle from its CREATE as its first
 * argument and forwards the rest unchanged.
 *
 * Status.  Entries with an int* status write it and return nothing:
 *   0   success;
 *   -1  creation failed (an exception was raised inside; the handle variable
 *       keeps what it held), or there was no object to destroy, or
 *       S_PROJECTIONORIGIN could not build its temporary object;
 *   >0  a text did not fit: the value is the text's length (see below).
 * Callers rely on the status argument only.
 *
 * Text.  Entries that return text take a buffer, a size and a status.  The
 * size counts characters WITHOUT the terminating zero: a text of length L is
 * copied, zero included, when L <= size, so the buffer must hold size + 1
 * bytes.  Otherwise the buffer is left untouched and the status is L, so the
 * caller can retry with size = L.  A negative size never receives text.
 *
 * Units.  Angles are decimal degrees, longitude first; projected
 * coordinates are in the coordinate system's own units, easting first.
 *
 * Exceptions.  Only the three CREATE entries, S_PROJECTIONORIGIN and
 * C_KVC_CONVERT2PROJ4 catch.  The others let a C++ exception pass, which a C caller cannot handle: give
 * them non-null strings, and do not pass "UTM" (a zone is required) to
 * NewKvProjection.
 *
 * Threads.  Call CARTSETUPLINUX once before any other thread uses the
 * library; the catalogues are shared without locks.
 */

#if defined(KVCART_BUILDING)
#define KVCART_C_API __attribute__((visibility("default")))
#else
#define KVCART_C_API
#endif

#ifdef __cplusplus
class CKvProjection;
typedef CKvProjection KvProjectionEngine;
extern "C" {
#else
/* Opaque in C; an engine object of the library's class interface. */
typedef struct CKvProjection KvProjectionEngine;
#endif

/* ---- set-up ---------------------------------------------------------- */

/* Loads the ellipsoid and projection catalogues from systemFolder and the
 * user's custom files from userFolder.  Folders are joined to file names as
 * given, so each must end with '/'.  Missing files leave their part of the
 * catalogue empty.  Calling it again appends the files' contents once more.
 * A null folder raises std::logic_error, which is not caught. */
KVCART_C_API void CARTSETUPLINUX(const char* systemFolder, const char* userFolder);

/* ---- map-projection handles ------------------------------------------ */

/* Builds a map-projection object for a coordinate-system string (WKT, a
 * catalogue name, or "EPSG:<code>" of a catalogue record).  A string that
 * names nothing known still gives a handle (an object without engine) and
 * status 0; "UTM" without a zone gives status -1. */
KVCART_C_API void C_KVMP_CREATE(const char* coordSys, void** handle, int* status);
/* Deletes *handle and sets it to null (status 0); a null *handle gives
 * status -1, so destroying twice through one variable is safe. */
KVCART_C_API void C_KVMP_DESTROY(void** handle, int* status);

/* Texts by the rule above; an object without engine has the name "". */
KVCART_C_API void C_KVMP_GETNAME(void* handle, char* buffer, int size, int* status);
KVCART_C_API void C_KVMP_GETPROJECTIONSTRING(void* handle, char* buffer, int size, int* status);

KVCART_C_API void C_KVMP_GEO2PROJ(void* handle, double lon, double lat, double* x, double* y);
KVCART_C_API void C_KVMP_PROJ2GEO(void* handle, double x, double y, double* lon, double* lat);
KVCART_C_API void C_KVMP_GETORIGIN(void* handle, double* lon, double* lat);
/* Meridian convergence at (lon, lat), degrees. */
KVCART_C_API double C_KVMP_GETCONVERGENCE(void* handle, double lon, double lat);
KVCART_C_API void C_KVMP_GETDEFAULTAREA(void* handle, double* xmin, double* ymin, double* xmax,
                                        double* ymax);
/* Geocentric X, Y, Z in metres; ellipsoidal height in metres. */
KVCART_C_API void C_KVMP_XYZ2GEO(void* handle, double X, double Y, double Z, double* lon,
                                 double* lat, double* h);
KVCART_C_API void C_KVMP_GEO2XYZ(void* handle, double lon, double lat, double h, double* X,
                                 double* Y, double* Z);

/* A new projection engine for a coordinate-system string, or null when the
 * string resolves to none.  The caller owns it; from C++ delete it (its
 * destructor is virtual).  Does not catch: "UTM" raises std::out_of_range. */
KVCART_C_API KvProjectionEngine* NewKvProjection(const char* coordSys);

/* ---- queries on coordinate-system strings ---------------------------- */

/* Booleans are returned as 0 or 1. */
KVCART_C_API int S_HASDATUM(const char* coordSys);
KVCART_C_API int S_ISVALID(const char* coordSys);
KVCART_C_API int S_ISLOCAL(const char* coordSys);
KVCART_C_API int S_ISLONGLAT(const char* coordSys);
KVCART_C_API int S_ISGEOREFERENCED(const char* coordSys);
KVCART_C_API int S_ISGEOGRAPHICAL(const char* coordSys);
/* mask bits: 1 projected methods, 2 geographical and rotated
 * longitude/latitude, 4 the name "LONG/LAT", 8 the name "NON-UTM". */
KVCART_C_API int S_ISTYPE(const char* coordSys, int mask);
KVCART_C_API int S_AREIDENTICAL(const char* first, const char* second);
/* 4 x first axis type + second axis type. */
KVCART_C_API int S_GETCOORDSYSTYPE(const char* coordSys);

/* Texts by the rule above. */
KVCART_C_API void S_PROJECTIONSHORTNAME(const char* coordSys, char* buffer, int size,
                                        int* status);
KVCART_C_API void S_LONGITUDETOUTMZONE(double lon, char* buffer, int size, int* status);
/* The WKT of the Google Maps spherical Mercator system. */
KVCART_C_API void S_GETGOOGLEMAPPROJECTIONSTRING(char* buffer, int size, int* status);

/* The origin of a coordinate system, through a temporary object.  Status 0
 * on success (0, 0 for a string that names nothing), -1 if anything was
 * raised, and then lon and lat are not written. */
KVCART_C_API void S_PROJECTIONORIGIN(const char* coordSys, double* lon, double* lat,
                                     int* status);

/* ---- datum converters ------------------------------------------------ */

/* Builds a converter between a source and a target coordinate-system string
 * (WKT or catalogue names).  Strings that name nothing known still give a
 * handle and status 0; "UTM" without a zone, a null string or any other
 * exception raised inside gives status -1 and leaves *handle as it was.
 * This entry catches; the other C_KVDC_ entries check nothing. */
KVCART_C_API void C_KVDC_CREATE(const char* source, const char* target, void** handle,
                                int* status);
/* Deletes *handle and sets it to null: status and result 0.  A null *handle
 * gives status and result -1. */
KVCART_C_API int C_KVDC_DESTROY(void** handle, int* status);

/* Replace the point by its conversion from source to target (INV: target to
 * source).  x and y are projected units or longitude and latitude in
 * degrees, as the conversion type says; h is the ellipsoidal height in
 * metres.  The XY forms start from height 0. */
KVCART_C_API void C_KVDC_CONVERTXY(void* handle, double* x, double* y);
KVCART_C_API void C_KVDC_INVCONVERTXY(void* handle, double* x, double* y);
KVCART_C_API void C_KVDC_CONVERTXYH(void* handle, double* x, double* y, double* h);
KVCART_C_API void C_KVDC_INVCONVERTXYH(void* handle, double* x, double* y, double* h);

/* Geocentric metres: the source shift forwards then the target shift
 * backwards; returns the target shift's type (0, 1 or 2).  The INV form
 * runs the other way and returns the source shift's type. */
KVCART_C_API int C_KVDC_DATUMSHIFT(void* handle, double* X, double* Y, double* Z);
KVCART_C_API int C_KVDC_INVDATUMSHIFT(void* handle, double* X, double* Y, double* Z);

/* 0 projected to projected (the initial type), 1 projected to geographic,
 * 2 geographic to projected, 3 geographic to geographic; any other value
 * leaves points unconverted. */
KVCART_C_API void C_KVDC_SETCONVERSIONTYPE(void* handle, int type);

/* The geocentric-step bypass, 0 or 1.  BYPASSXYZ sets it; RESETBYPASSXYZ
 * restores the value computed at creation and returns it. */
KVCART_C_API unsigned char C_KVDC_GETBYPASSXYZ(void* handle);
KVCART_C_API void C_KVDC_BYPASSXYZ(void* handle);
KVCART_C_API unsigned char C_KVDC_RESETBYPASSXYZ(void* handle);

/* Replaces the shift of the source end (source non-zero) or of the target
 * end.  type 0 takes no value, 1 the three translations, 2 all seven:
 * tx, ty, tz in metres, rx, ry, rz in RADIANS and the scale as a fraction
 * (not the arc-seconds and ppm of TOWGS84). */
KVCART_C_API void C_KVDC_SETDATUMSHIFT(void* handle, int type, double* values, int source);

/* Exchanges source and target; returns the new conversion type (1 and 2
 * trade places). */
KVCART_C_API int C_KVDC_INVERTORDER(void* handle);

/* ---- local grids and proj4 text -------------------------------------- */

/* Builds a local grid on a coordinate-system string: origin at lon0, lat0
 * (degrees), y axis turned by orientation degrees clockwise from true north
 * there.  "UTM" alone takes the UTM zone of lon0.  A string that names
 * nothing known still gives a handle and status 0; a null string or an
 * exception raised inside (" UTM " with blanks, for one) gives status -1
 * and leaves *handle as it was.  This entry catches. */
KVCART_C_API void C_KVC_CREATE(const char* coordSys, void** handle, int* status, double lon0,
                               double lat0, double orientation);
/* Deletes *handle and sets it to null (status 0); a null *handle gives
 * status -1. */
KVCART_C_API void C_KVC_DESTROY(void** handle, int* status);

/* The grid's map-projection object, usable as a C_KVMP_ handle while the
 * grid lives.  The grid owns it: never pass it to C_KVMP_DESTROY. */
KVCART_C_API void* C_KVC_GETPROJECTION(void* handle);
/* Texts by the rule above. */
KVCART_C_API void C_KVC_GETPROJECTIONNAME(void* handle, char* buffer, int size, int* status);
KVCART_C_API void C_KVC_GETPROJECTIONSTRING(void* handle, char* buffer, int size, int* status);

/* Degrees from true north at local (x, y) to the grid's y axis (the
 * orientation at the origin); PROJNORTH: the same from projection north,
 * fixed over the grid. */
KVCART_C_API double C_KVC_GETTRUENORTH(void* handle, double x, double y);
KVCART_C_API double C_KVC_GETPROJNORTH(void* handle);

/* Local x, y are metres along the grid axes; projected coordinates are in
 * the system's units. */
KVCART_C_API void C_KVC_GEO2PROJ(void* handle, double lon, double lat, double* east,
                                 double* north);
KVCART_C_API void C_KVC_PROJ2GEO(void* handle, double east, double north, double* lon,
                                 double* lat);
KVCART_C_API void C_KVC_XY2GEO(void* handle, double x, double y, double* lon, double* lat);
KVCART_C_API void C_KVC_GEO2XY(void* handle, double lon, double lat, double* x, double* y);
KVCART_C_API void C_KVC_XY2PROJ(void* handle, double x, double y, double* east, double* north);
KVCART_C_API void C_KVC_PROJ2XY(void* handle, double east, double north, double* x, double* y);

/* The proj4 parameter string of a coordinate-system string, by the text
 * rule above; "" for a string that resolves to no engine.  towgs84 with
 * count >= 1 replaces the system's datum shift (missing values are 0).
 * This entry catches: a null string or generic "UTM" gives status -1 and
 * leaves the buffer untouched. */
KVCART_C_API void C_KVC_CONVERT2PROJ4(const char* coordSys, double* towgs84, int count,
                                      char* buffer, int size, int* status);

#ifdef __cplusplus
}  /* extern "C" */
#endif

#endif /* KVCART_H */
