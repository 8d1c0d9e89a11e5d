#pragma once

#include "catalogue/KvEllipsoid.h"
#include "platform/KvCartExport.h"

// Geodetic longitude, latitude and ellipsoidal height <-> geocentric X, Y, Z
// on an ellipsoid of revolution (or a sphere).
//
// Forward: the closed form of EPSG Guidance Note 7-2, section
// "Geographic/Geocentric conversions" (method 9602); exact.
// Inverse: Bowring's formula (B. R. Bowring, "Transformation from spatial to
// geographical coordinates", Survey Review 23(181), 1976; as given in the
// same section of Guidance Note 7-2) taken twice: the parametric latitude of
// the first result starts the second step.  Measured against an exact
// nearest-point solution in extended precision every 0.01 degrees of
// latitude, and against PROJ's cct on the test points: within 1e-14 degrees
// and 2e-8 m from 3,000 km below to 1,000,000 km above the ellipsoid.  One
// step alone is 1.4e-11 degrees (1.5 mm) off near the surface.
// Domain: every finite point.  Within a quarter of the semi-major axis of
// the centre, where the Bowring steps lose their way near the evolute of the
// meridian ellipse (up to 370 km out), the foot of the point on the
// ellipsoid is found by bisection instead (D. Eberly, "Distance from a point
// to an ellipse, an ellipsoid, or a hyperellipsoid", Geometric Tools 2013),
// so that points deep inside still get a defined answer: the nearest point
// of the ellipsoid and minus the distance to it.  Inside the evolute a point
// on the equatorial plane has two such feet and gets the northern one (the
// southern one for Z = -0); the centre gives latitude +90 and height -b.
// On the polar axis the latitude is +-90 exactly and the height |Z| - b.
class KVCART_API CKvGeocentric {
 public:
  // Degrees and metres in, metres out.
  static void Geo2XYZ(const CKvEllipsoid& ellipsoid, double lon, double lat, double h, double* X,
                      double* Y, double* Z);
  // Metres in, degrees and metres out.
  static void XYZ2Geo(const CKvEllipsoid& ellipsoid, double X, double Y, double Z, double* lon,
                      double* lat, double* h);
};
