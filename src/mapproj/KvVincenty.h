#pragma once

#include "platform/KvCartExport.h"

class CKvEllipsoid;

// Geodesics on an ellipsoid.  The direct problem by Vincenty's nested
// series: from a start point, a start azimuth and a length along the
// geodesic, the end point and the azimuth of travel there.  The inverse
// problem (GetDistance) by Karney's method, see below.
//
// Formulas: T. Vincenty, "Direct and inverse solutions of geodesics on the
// ellipsoid with application of nested equations", Survey Review 23(176),
// 88-93, 1975, equations (1) to (9).  The auxiliary-sphere arc sigma is
// iterated until it changes by at most 1e-12 of its magnitude (at most 100
// steps, usually 3 or 4).  Accurate to about 0.1 mm for any length up to
// half the meridian and beyond.
// Domain: any start point off the poles, any azimuth (clockwise from north),
// any length.  A sphere (f = 0) takes its latitude as the reduced latitude.
// Longitudes are returned as lon1 + L, not brought into -180..180.
// The inverse problem is not Vincenty's: his iteration fails to converge for
// nearly antipodal points, so GetDistance hands over to Karney's method
// (CKvGeodesicInverse), which converges for every pair.
class KVCART_API CKvVincenty {
 public:
  explicit CKvVincenty(const CKvEllipsoid& ellipsoid);
  virtual ~CKvVincenty();

  // Degrees and metres; azimuth2 is the direction of travel at the end point.
  void GetPoint(double lon1, double lat1, double azimuth, double distance, double& lon2,
                double& lat2, double& azimuth2) const;
  // The shortest path between two points (degrees): its length in metres,
  // the azimuth at the first point and the azimuth of travel at the second.
  // NaN for latitudes outside -90..90 or non-finite input.
  void GetDistance(double lon1, double lat1, double lon2, double lat2, double& distance,
                   double& azimuth1, double& azimuth2) const;

  // Vincenty's (3): A = 1 + u2/16384 (4096 + u2 (-768 + u2 (320 - 175 u2))).
  double PolyA(double u2) const;
  // Vincenty's (4): B = u2/1024 (256 + u2 (-128 + u2 (74 - 47 u2))).
  double PolyB(double u2) const;

 private:
  double m_dA;    // semi-major axis, metres
  double m_dB;    // semi-minor axis, metres
  double m_dF;    // flattening, 0 for a sphere
  double m_dEp2;  // second eccentricity squared, (a^2 - b^2) / b^2
};
