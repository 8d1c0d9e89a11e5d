#pragma once

#include <string>

// Coordinate systems written as proj strings ("+proj=utm +zone=32
// +datum=WGS84"), translated into the WKT the library reads.
//
// Methods: longlat (and its spellings latlong, lonlat, latlon), utm, tmerc,
// lcc (one or two standard parallels), merc (with +lat_ts or +k), nzmg, and,
// by the inverse of the library's own proj4 writer, aea, eqdc, laea, cass,
// sterea and the polar forms of stere.  Ellipsoid: +ellps, +a with +b, +rf
// or +f, +R, or +datum=WGS84 or NAD83 (the datums whose shift to WGS 84 is
// zero; GRS 1980 when none is given).  Datum shift: +towgs84 (3 or 7 values).
// Units: +units or +to_meter.  +pm moves +lon_0 of a projected system.
// +axis=neu puts a projected system's northing first.  Everything else (grid shift files, +init, +axis other
// than enu and neu, unknown keys) is refused with a message rather than ignored.
namespace kvcart {

// True when the text's first word starts with '+': a proj string.
bool IsProjString(const std::string& text);

// The WKT for a proj string.  False with `error` set when the string uses
// something that cannot be translated.
bool ProjStringToWkt(const std::string& text, std::string& wkt, std::string& error);

}  // namespace kvcart
