#pragma once

#include "platform/KvCartExport.h"

class CKvMapProjection;

// A local Cartesian grid placed on a map projection: its origin lies at a
// geographic point and its y axis points at a given orientation, in degrees
// clockwise from true north at that point.  Local x, y are metres along the
// grid axes.
//
// The grid is a plane rotation and shift of the projected coordinates:
// angle = orientation - (meridian convergence at the origin), and
//   east  = cos(angle) x + sin(angle) y + x0
//   north = cos(angle) y - sin(angle) x + y0
// with (x0, y0) the projected origin.  Local and projected coordinates are
// therefore related exactly (to rounding); local and geographic ones are as
// accurate as the projection's engine.  The rotation is fixed at the origin:
// away from it, true north on the grid differs from the orientation by the
// change of convergence (GetTrueNorth).
//
// A name that resolves to no engine gives a grid whose conversions behave as
// the engineless map-projection object does (Proj2Geo writes nothing); the
// grid itself never throws except for what the map-projection object raises.
class KVCART_API CKvCartography {
 public:
  // "UTM" is taken as the UTM zone of lon0; any other name or WKT is
  // resolved by CKvMapProjection.  Generic "UTM" never reaches it, so only
  // a null `projection` raises (std::logic_error).
  CKvCartography(const char* projection, double lon0, double lat0, double orientation);
  // Works on a copy of `projection`.
  CKvCartography(const CKvMapProjection& projection, double lon0, double lat0, double orientation);
  CKvCartography(const CKvCartography& other);
  CKvCartography& operator=(const CKvCartography& other);
  virtual ~CKvCartography();

  const CKvMapProjection& GetProjection() const;
  // The map-projection object's GetName and GetProjectionString.
  const char* GetProjectionName() const;
  const char* GetProjectionString() const;

  void Xy2Proj(double x, double y, double* east, double* north) const;
  // The exact inverse of Xy2Proj.
  void Proj2Xy(double east, double north, double* x, double* y) const;
  void Xy2Geo(double x, double y, double* lon, double* lat) const;
  void Geo2Xy(double lon, double lat, double* x, double* y) const;
  // The map-projection object's own conversions.
  void Geo2Proj(double lon, double lat, double* east, double* north) const;
  void Proj2Geo(double east, double north, double* lon, double* lat) const;

  // The orientation as it is at local (x, y): the angle in degrees from true
  // north there to the grid's y axis, i.e. the meridian convergence at the
  // point plus the grid angle.  At the origin it is the orientation given.
  double GetTrueNorth(double x, double y) const;
  // The grid angle relative to projection north (orientation minus the
  // convergence at the origin).
  double GetProjectionNorth() const;

  // Projected coordinates of `from`'s system to this grid's system, through
  // geographic coordinates; neither grid's origin nor rotation takes part.
  void ConvertFrom(const CKvCartography& from, double east, double north, double* eastOut,
                   double* northOut) const;

  // Turns the vector (x, y) clockwise by `degrees`, the sense of the grid's
  // rotation: (0, 1) turned by 90 gives (1, 0).
  static void _csysrot(double x, double y, double degrees, double* xOut, double* yOut);

 private:
  void _init(double lon0, double lat0, double orientation);
  void _copy(const CKvCartography& other);
  void _dealloc();

  CKvMapProjection* m_pProjection;
  double m_dX0;
  double m_dY0;
  double m_dAngle;  // degrees
  double m_dCos;
  double m_dSin;
  double m_dLon0;
  double m_dLat0;
  double m_dOrientation;  // degrees from true north
};
