#pragma once

#include <string>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvEllipsoidList.h"
#include "catalogue/KvMapProjData.h"
#include "platform/KvCartExport.h"
#include "wkt/KvProjectionInfo.h"

class CKvProjection;

// The object through which callers use a coordinate system: it resolves a
// coordinate-system string (WKT, a catalogue name, "EPSG:<code>" of a
// catalogue record, "NON-UTM" or "LONG/LAT") once to an engine and keeps the
// units, axes and datum shift that came with it; a catalogue system's come
// from its record (its unit and datum shift, which the WKT it is stored as
// says).  A string that resolves to nothing still gives a valid object
// without an engine, whose operations answer with fixed defaults.
//
// The static functions classify coordinate-system strings and give access to
// the process-wide catalogues.
class KVCART_API CKvMapProjection {
 public:
  enum EMapProjectionInfo {
    eProjectedUnit = 1,
    eAngularUnit = 2,
  };
  enum EMapProjectionString {
    eNonUtm = 1,           // "NON-UTM"
    eLongLat = 2,          // "LONG/LAT"
    eGoogleMercator = 3,   // WKT of the Google Maps spherical Mercator system
    eWgs84Geographic = 4,  // WKT of geographic WGS 84
  };
  enum ESizeParam {
    eSizeIsX = 1,  // the given size is the extent in x
    eSizeIsY = 2,  // the given size is the extent in y
  };

  // Resolve `string`.  Only std::out_of_range ("Can't use generic UTM")
  // leaves the const char* form; any other exception ends the process.
  explicit CKvMapProjection(const char* string);
  explicit CKvMapProjection(const std::string& string);
  // The source must hold an engine: copies clone it.
  CKvMapProjection(const CKvMapProjection& other);
  CKvMapProjection& operator=(const CKvMapProjection& other);
  virtual ~CKvMapProjection();

  // A new engine for `string`, owned by the caller, or null; fills `info`
  // (when not null) from a WKT string.
  static CKvProjection* GetProjection(const char* string, CKvProjectionInfo* info);
  // The fixed text of `id`; "" for any other value.
  static const char* IDtoProjectionString(EMapProjectionString id);

  CKvProjection* GetProjection() const;
  const char* GetName() const;
  const char* GetProjectionString() const;
  void GetOrigin(double* lon, double* lat) const;
  double GetConvergence(double lon, double lat) const;
  void GetDefaultArea(double* xmin, double* ymin, double* xmax, double* ymax) const;
  void GetDefaultArea(int nx, int ny, ESizeParam which, double size, double* xmin, double* ymin,
                      double* xmax, double* ymax) const;
  bool IsLocal() const;
  bool IsGeographical() const;
  bool GetUnit(EMapProjectionInfo which, double* factor, char* name) const;
  void GetDatumShift(CKvDatumShift& shift) const;
  // 4 x first axis type + second axis type.
  int GetCoordSysType() const;

  void Geo2Proj(double lon, double lat, double* x, double* y) const;
  void Proj2Geo(double x, double y, double* lon, double* lat) const;
  void Geo2XYZ(double lon, double lat, double h, double* X, double* Y, double* Z) const;
  void XYZ2Geo(double X, double Y, double Z, double* lon, double* lat, double* h) const;
  bool GetDistance(double lon1, double lat1, double lon2, double lat2, double& distance,
                   double& azimuth12, double& azimuth21) const;
  bool GetDistance(double lon1, double lat1, double lon2, double lat2, double& distance) const;
  bool GetPoint(double lon1, double lat1, double azimuth, double distance, double& lon2,
                double& lat2, double& azimuth21) const;

  // --- queries on coordinate-system strings (white space around is trimmed)
  // Bits of `mask`: 1 projected, 2 geographic, 4 "LONG/LAT", 8 "NON-UTM".
  static bool IsType(int mask, const char* s);
  static bool IsLocal(const char* s);
  static bool IsLongLat(const char* s);
  static bool IsGeographical(const char* s);
  static bool IsValid(const char* s);
  static bool IsGeoreferenced(const char* s);
  static bool HasDatum(const char* s);
  static bool IsProjectionOfType(const char* s, CKvMapProjData::EProjectionType type);
  static bool AreIdentical(const char* a, const char* b);
  static int GetCoordSysType(const char* s);

  // Texts kept per thread, valid until the same function is next called in
  // the same thread.
  static const char* ShortName(const char* s);
  static const char* LongitudeToUTMZone(double longitude);
  // The catalogue entries passing IsType(mask, name), each followed by ";":
  // a special name as itself, any other as the WKT its record writes.
  static const char* EnumMapProjections(int mask, long* count);
  // The ellipsoids of one list of the catalogue, each entry written
  // "ID|name|semi-major axis|inverse flattening;" with the numbers in
  // "%.16g" (C locale), in catalogue order.
  static const char* EnumEllipsoids(CKvEllipsoidList::EEllipsoidTypes type, long* count);

  // --- the catalogues
  // The ellipsoid of the catalogue record named `name`, or null.
  static CKvEllipsoid* Ellipsoid(const char* name);
  static CKvEllipsoid* EllipsoidFromID(const char* id);
  static CKvEllipsoid* EllipsoidFromName(const char* name);
  // The catalogue record named `name`, or null.  Marks the projection list
  // modified first, since the caller may change the record in place.
  static CKvMapProjData* MapProjection(const char* name);
  static void AddMapProjection(CKvMapProjData* record);
  static void DeleteMapProjection(CKvMapProjData* record);
  static void AddEllipsoid(CKvEllipsoid* ellipsoid);
  static void DeleteEllipsoid(CKvEllipsoid* ellipsoid);
  static void EditEllipsoid(CKvEllipsoid* ellipsoid);

 private:
  static CKvProjection* _FindMapProjection(const char* name);
  static bool _Exists(const char* name, int mask);
  void _Resolve(const char* string);

  CKvProjection* m_pProjection;
  CKvProjectionInfo m_ProjectionInfo;
  std::string m_strProjectionString;
};
