#pragma once

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMapProjData.h"
#include "platform/KvCartExport.h"

// The object through which callers use a coordinate system, and the static
// queries on coordinate-system strings and the catalogues.
class KVCART_API CKvMapProjection {
 public:
  enum EMapProjectionString {
    eNonUtm = 1,          // "NON-UTM"
    eLongLat = 2,         // "LONG/LAT"
    eGoogleMercator = 3,  // WKT of the Google Maps spherical Mercator system
    eWgs84Geographic = 4, // WKT of geographic WGS 84
  };

  // The fixed text of `id`; "" for any other value.
  static const char* IDtoProjectionString(EMapProjectionString id);
  // Exactly "NON-UTM" after trimming white space.
  static bool IsLocal(const char* s);
  // The ellipsoid of the catalogue record named `name`, or null.
  static CKvEllipsoid* Ellipsoid(const char* name);
  // The catalogue record named `name`, or null.  Marks the projection list
  // modified first, since the caller may change the record in place.
  static CKvMapProjData* MapProjection(const char* name);
};
