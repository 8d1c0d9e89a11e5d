#pragma once

#include <string>

#include "platform/KvCartExport.h"

class CKvEllipsoid;
class CKvPRJParser;

// Writes a coordinate system the library accepts (a catalogue name or WKT) as
// a proj4 parameter string: "+key=value " entries, numbers in "%.16g" with a
// full stop whatever the process locale, closed by "+no_defs  no_defs <>".
//
// The string is built from the system's WKT form read back by the WKT
// reader, so it says what that reader understood: WKT angles are multiplied
// by (angular unit x 57.29577951308232) exactly as the engines are, so a
// 15-digit degree factor shows in the last digit (+lon_0=9.000000000000002);
// the prime meridian is added to +lon_0; false easting and northing are
// converted to metres; +a and +b are the engine's ellipsoid (the text's
// SPHEROID for an engine that has none).
//
// Kept on purpose:
// - A system without engine gives "".  Rotated longitude/latitude and
//   anything the reader does not take for WKT (the reserved names "NON-UTM"
//   and "LONG/LAT" among them, which are kept as names rather than WKT)
//   give "+proj=undef " and nothing more.
// - A key whose value the WKT does not give is left out rather than written
//   with the reader's not-set value: Mercator 1SP has no +lat_ts and
//   Mercator 2SP no +k, and a consumer that takes k0 from +lat_ts, or
//   refuses k <= 0, would otherwise read them differently from what this
//   library computes.  A missing prime meridian counts as 0.
// - A non-projected system (type 21) is computed by this library with the
//   transverse Mercator engine, so it is written as "+proj=tmerc " with the
//   transverse Mercator keys.
class KVCART_API CKvProjTranslator {
 public:
  CKvProjTranslator();
  virtual ~CKvProjTranslator();

  // `towgs84` with `count` >= 1 replaces the system's datum shift: values
  // beyond `count` (at most seven are read) are written as 0.  Otherwise the
  // system's own shift is written when it has one.  Generic "UTM" raises
  // std::out_of_range, as the map-projection object does.
  std::string Convert2Proj4(const std::string& coordinateSystem, double* towgs84, int count) const;
  // Convert2Proj4 of the first line of the file at `path`; "" when no line
  // can be read (a missing, unreadable or empty file, a folder).
  std::string ConvertPRJFile2Proj4(const std::string& path, double* towgs84, int count) const;

  // The string for a parsed record on `ellipsoid`: what Convert2Proj4 writes
  // once it has an engine.
  static std::string Format(const CKvPRJParser& parser, const CKvEllipsoid& ellipsoid,
                            const double* towgs84, int count);
};
