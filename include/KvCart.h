#ifndef KVCART_H
#define KVCART_H

/*
 * The flat interface of libKvCart, usable from C and C++.
 *
 * Handles.  C_KVMP_CREATE, C_KVC_CREATE and C_KVDC_CREATE hand out the
 * address of a heap map-projection object, local grid or datum converter as
 * a void*.  The library keeps no table of handles and checks nothing but
 * null: every other entry of a family takes a live handle from its CREATE
 * as its first argument and forwards the rest unchanged.
 *
 * Status.  Entries with an int* status write it and return nothing:
 *   0   success;
 *   -1  creation failed (an exception was raised inside; the handle variable
 *       keeps what it held), or there was no object to destroy, or the
 *       entry could not do its work (something raised inside, a null
 *       string or handle);
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
 * Failures.  No entry lets a C++ exception reach its caller, and none ends
 * the process (the only deliberate stops are the internal consistency
 * checks of the polar stereographic engine and the matrices, and the
 * unfinished gnomic engine).  When something is raised inside, an entry with
 * a status sets it to -1 (creation: the handle variable keeps what it
 * held); an entry without one gives its neutral result: 0 for the S_
 * booleans, the answer for an unknown name from S_GETCOORDSYSTYPE, null
 * from NewKvProjection and C_KVC_GETPROJECTION, 0.0 from the angle
 * entries, -1 from the int entries of the converter, 0 from its byte
 * entries, and outputs left as they were by the point conversions.  So
 * "UTM" without a zone gives status -1 from C_KVMP_CREATE and null from
 * NewKvProjection.  Null strings, handles and output pointers are answered
 * the same way; a handle must otherwise be a live one of its family.
 *
 * Threads.  CARTSETUPLINUX must return before any other call starts, in
 * any thread, and must not run again while other calls run.  After it,
 * every entry may be called from any number of threads at once: creating,
 * converting with, querying and destroying objects, each thread with its
 * own handles or sharing a handle for the conversions and queries (never
 * destroying a handle another thread still uses).  Texts that the S_
 * entries build are kept per thread.  CARTSAVEUSERFILES and
 * CARTGETLASTERROR may also run at any time.  Editing the catalogues
 * through the class interface (adding, editing, deleting records or
 * ellipsoids) must not overlap any other call.
 *
 * The user's files.  Changes to the user's catalogues (made through the
 * class interface) are saved when the process ends, or earlier with
 * CARTSAVEUSERFILES: this process's own additions, edits and deletions are
 * merged into the files as they are then, under a lock on the folder, so
 * that processes sharing a folder lose nothing.  A process that changed
 * nothing never writes.  A custom file that cannot be read whole is left
 * as it is, and when a save has to rewrite it a copy is kept beside it
 * ("<name>.damaged-<time>").  Problems are told by CARTGETLASTERROR, and at
 * exit on the standard error.
 */

/* The version of this header.  KVCART_VERSION is 10000 x major + 100 x
 * minor + patch (200 for 0.2.0); S_GETVERSION gives the same number for the
 * library actually loaded, so a caller can check that the two agree.  Within
 * 0.x a minor release may change the interface. */
#define KVCART_VERSION_MAJOR 0
#define KVCART_VERSION_MINOR 2
#define KVCART_VERSION_PATCH 0
#define KVCART_VERSION \
  (KVCART_VERSION_MAJOR * 10000 + KVCART_VERSION_MINOR * 100 + KVCART_VERSION_PATCH)
#define KVCART_VERSION_TEXT_(n) #n
#define KVCART_VERSION_TEXT(n) KVCART_VERSION_TEXT_(n)
#define KVCART_VERSION_STRING                                                    \
  KVCART_VERSION_TEXT(KVCART_VERSION_MAJOR) "." KVCART_VERSION_TEXT(KVCART_VERSION_MINOR) \
  "." KVCART_VERSION_TEXT(KVCART_VERSION_PATCH)

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
 * catalogue empty; the readable records of a damaged custom file are taken
 * and the problem is told by CARTGETLASTERROR.  Calling it again appends
 * the files' contents once more.  A null folder makes the call do nothing. */
KVCART_C_API void CARTSETUPLINUX(const char* systemFolder, const char* userFolder);

/* The latest problem with the user's custom files ("" when none), by the
 * text rule above: a file that could not be read whole, a save that failed,
 * a damaged file kept aside. */
KVCART_C_API void CARTGETLASTERROR(char* buffer, int size, int* status);

/* Saves the changes to the user's catalogues now instead of at exit:
 * 0 when the files hold them (or there was nothing to save), -1 when a save
 * failed (CARTGETLASTERROR says why). */
KVCART_C_API int CARTSAVEUSERFILES(void);
/* ---- version ---------------------------------------------------------- */

/* The loaded library's version as KVCART_VERSION counts it. */
KVCART_C_API int S_GETVERSION(void);
/* The loaded library's version as text ("0.2.0"), by the text rule above. */
KVCART_C_API void S_GETVERSIONSTRING(char* buffer, int size, int* status);

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
 * string resolves to none (or is "UTM" without a zone).  The caller owns it;
 * from C++ delete it (its destructor is virtual). */
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
 * exception raised inside gives status -1 and leaves *handle as it was. */
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
 * and leaves *handle as it was. */
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
 * A null string or generic "UTM" gives status -1 and leaves the buffer
 * untouched. */
KVCART_C_API void C_KVC_CONVERT2PROJ4(const char* coordSys, double* towgs84, int count,
                                      char* buffer, int size, int* status);

#ifdef __cplusplus
}  /* extern "C" */
#endif

#endif /* KVCART_H */
