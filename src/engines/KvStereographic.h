#pragma once

#include <string>

#include "catalogue/KvStereographicProjection.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Oblique stereographic (EPSG method 9809, the "double" stereographic): the
// ellipsoid is mapped conformally onto the Gauss sphere of radius R =
// sqrt(rho0 nu0), and the sphere stereographically from the image of the
// origin, with the scale k0 there.
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Oblique Stereographic" (R, n, c, chi0 and the forward), with c written as
// a logarithm that stays finite at the poles.  The reverse on the sphere is
// J. P. Snyder, "Map Projections: A Working Manual" (USGS PP 1395), eqs.
// 20-14, 20-15 and 21-15 in place of the Guidance Note's g, h, i, j, which
// divide by zero at a polar origin; the geodetic latitude comes from the
// conformal one by Karney's series (KvAuxiliaryLatitudes.h) in place of the
// Guidance Note's iteration.
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// Guidance Note's formulas evaluated with mpmath at 40 digits: forward
// within 2 nanometres and reverse within 3e-14 degrees up to 1000 km from
// an origin at 52 N (Bessel 1841), within 3 nanometres and 3e-14 degrees
// about an origin at the south pole (WGS 84, 50 to 90 S).
// Domain: the origin anywhere, the poles included: at latitude of origin
// +-90 the formulas' limit (n = 1, c = ((1 + e) / (1 - e))^e) is the polar
// stereographic of EPSG method 9810 (variant A) with the same k0.  The
// point opposite the origin maps to infinity.  Longitudes are reduced to
// +-180 degrees about the central meridian, and the reverse returns them in
// -180..180.  Without an ellipsoid every member is 0: Geo2Proj gives (0, 0)
// and Proj2Geo, which would divide by 2 R k0 = 0, NaN; so does Proj2Geo
// with a zero scale.
// Kept on purpose: whatever name a WKT text gives the method
// ("Stereographic", "Double_Stereographic", "Oblique_Stereographic"), this
// is the engine, as the catalogue writes its records "Stereographic".  A
// writer that meant by plain "Stereographic" the single-projection
// ellipsoidal stereographic (and the proj4 text "+proj=stere" that name is
// written as) differs from it by 2.5 to 2.6 m at 100 km from an origin at
// 46 to 52 N, 0.9 m at 80 N, 1.4 cm on the equator and not at all about a
// pole.
class KVCART_API CKvStereographic : public CKvEngine<CKvStereographic, CKvStereographicProjection> {
 public:
  explicit CKvStereographic(CKvStereographicProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvStereographic(const std::string& name, double scale, double originLongitude,
                   double originLatitude, double falseEasting, double falseNorthing,
                   const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  // The convergence of the stereographic on the Gauss sphere, whose
  // conformal mapping keeps meridians and north.
  double GetConvergence(double lon, double lat) override;
  // The origin +-3 degrees; about a polar origin, the square whose corners
  // lie 3 degrees from the pole.
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;

 private:
  CKvStereographic(const std::string& name, double scale, double originLongitude,
                   double originLatitude, double falseEasting, double falseNorthing,
                   const CKvEllipsoid* ellipsoid);
  // The image of (lon, lat) on the Gauss sphere: sin and cos of chi and
  // the longitude Lambda - Lambda0.
  void _Sphere(double lon, double lat, double* sinChi, double* cosChi, double* dLambda) const;

  double m_dLambda0 = 0.0;  // radians
  double m_dPhi0 = 0.0;     // radians
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
  double m_dK0 = 0.0;
  double m_dR = 0.0;        // radius of the Gauss sphere
  double m_dN = 0.0;        // n
  double m_dHalfLnC = 0.0;  // ln(c) / 2, the isometric latitude the sphere adds
  double m_dSinChi0 = 0.0;  // sin chi0 = sin phi0 / n
  double m_dCosChi0 = 0.0;
  double m_dTwoRk0 = 0.0;  // 2 R k0
  KvAux::CKvConformalLatitude m_Conformal;
};
