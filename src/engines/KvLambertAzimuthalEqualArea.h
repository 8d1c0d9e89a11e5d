#pragma once

#include <string>

#include "catalogue/KvLambertAzimuthalEqualAreaProjection.h"
#include "engines/KvLambertAzimuthalEqualAreaEllipsoid.h"
#include "engines/KvLambertAzimuthalEqualAreaSphere.h"
#include "engines/KvVariantEngine.h"
#include "platform/KvCartExport.h"

// Lambert azimuthal equal area (EPSG method 9820), in its polar, equatorial
// and oblique aspects: areas kept true, directions from the centre (lambdaO,
// phiO) true.
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Lambert Azimuthal Equal Area", oblique and polar
// (CKvLambertAzimuthalEqualAreaEllipsoid), and J. P. Snyder, "Map
// Projections: A Working Manual" (USGS PP 1395), chapter 24, for the sphere
// (CKvLambertAzimuthalEqualAreaSphere, inverse flattening 0 or less).  The
// reverse returns from the authalic to the geodetic latitude by the
// Guidance Note's series and one Newton step on q
// (KvAux::LatitudeFromAuthalic).
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// same formulas evaluated with mpmath at 40 digits (the reverse solving q
// exactly; centre 10 E 52 N over 30 W to 50 E, 10 to 85 N, and centre at
// the north pole over 40 to 85 N): on WGS 84 forward within 3 nanometres
// (6 at the polar centre), reverse within 2e-13 degrees; on the sphere
// within 1.1 nanometres and 4e-14 degrees.  The series alone would leave
// 1.6 mm in the reverse.  Within 0.1 mm of PROJ 9.1.1 and 1e-9 degrees of
// its geographic points over the area of use of EPSG:3035 and in the
// polar, equatorial and spherical cases of lambert_azimuthal_equal_area.
// cases.
// Domain: the whole ellipsoid; longitude differences are reduced to +-180
// degrees about the centre, and the longitudes returned to [-180, 180].
// The antipode of the centre, whose image is the whole boundary, maps to
// the bottom of it, (FE, FN - 2 Rq / D) (the limit along the central
// meridian through the pole below the centre); the reverse takes that
// point back to the antipode.  A grid point beyond the boundary returns
// NaN.  A centre at a pole (within 1e-12 relative) takes the polar
// formulas.
// Departures: 1 + sin betaO sin beta + cos betaO cos beta cos(lambda -
// lambdaO) is formed as half the squared distance from the antipode on the
// unit sphere, so that it keeps its relative accuracy next to the
// antipode, where the Guidance Note's sum cancels; the reverse takes cos
// beta' from the point's unit vector, accurate at the poles.  The
// convergence is measured numerically.  The default area is the centre +-3
// degrees; at a polar centre, the square about the pole that holds its
// 3-degree cap.  Without an ellipsoid both directions return NaN.
class KVCART_API CKvLambertAzimuthalEqualArea
    : public CKvVariantEngine<CKvLambertAzimuthalEqualArea, CKvLambertAzimuthalEqualAreaProjection,
                              CKvLambertAzimuthalEqualAreaSphere,
                              CKvLambertAzimuthalEqualAreaEllipsoid> {
 public:
  explicit CKvLambertAzimuthalEqualArea(CKvLambertAzimuthalEqualAreaProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvLambertAzimuthalEqualArea(const std::string& name, double centreLongitude,
                               double originLatitude, double falseEasting, double falseNorthing,
                               const CKvEllipsoid& ellipsoid);

  double GetConvergence(double lon, double lat) override;

 private:
  CKvLambertAzimuthalEqualArea(const std::string& name, double centreLongitude,
                               double originLatitude, double falseEasting, double falseNorthing,
                               const CKvEllipsoid* ellipsoid);

  double m_dLambdaO = 0.0;  // radians
  double m_dPhiO = 0.0;     // radians
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
};
