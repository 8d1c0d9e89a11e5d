#pragma once

#include <string>

#include "catalogue/KvAlbersEqualAreaProjection.h"
#include "engines/KvAlbersEqualAreaEllipsoid.h"
#include "engines/KvAlbersEqualAreaSphere.h"
#include "engines/KvVariantEngine.h"
#include "platform/KvCartExport.h"

// Albers equal-area conic (EPSG method 9822): a cone cutting the ellipsoid
// along two standard parallels, areas kept true; coordinates are reckoned
// from a false origin (lambdaF, phiF).
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Albers Equal Area" (CKvAlbersEqualAreaEllipsoid), and J. P. Snyder, "Map
// Projections: A Working Manual" (USGS PP 1395), chapter 14, for the sphere
// (CKvAlbersEqualAreaSphere, inverse flattening 0 or less).  The
// reverse takes the authalic latitude from the grid in closed form and
// returns to the geodetic latitude by the Guidance Note's series and one
// Newton step on q (KvAux::LatitudeFromAuthalic).
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// same formulas evaluated with mpmath at 40 digits (the reverse solving q
// exactly; parallels 29.5 and 45.5, 130 W to 60 W, 15 to 80 N): forward
// within 3 nanometres, reverse within 7e-14 degrees, on WGS 84 and on the
// sphere.  The series alone would leave 2.5e-10 rad (1.6 mm) in the
// reverse on WGS 84.  Within 0.1 mm of PROJ 9.1.1 and 1e-9 degrees of its
// geographic points over the areas of use of EPSG:5070, 3577 and 3338
// (tests/data/engines/albers_equal_area.cases).
// Domain: the whole ellipsoid; longitude differences are reduced to +-180
// degrees about the central meridian, and the longitudes returned to
// [-180, 180].  A point beyond the image of the pole (outside the map)
// returns NaN.
// Departures: the cone is written with r = n rho (KvConeGeometry.h), so
// parallels symmetric about the equator (n = 0) give the limit of the
// cone, Lambert's cylindrical equal-area projection with true scale on the
// standard parallels, rather than a division by zero.  The northing from
// the false origin, rho0 - rho, is formed as a^2 (alpha - alphaF) / (r0 +
// r), which has no cancellation.  The default area is centred on the mean
// of the standard parallels, where the projection is of use, not on the
// false origin (often the equator).  Without an ellipsoid both directions
// return NaN.
class KVCART_API CKvAlbersEqualArea
    : public CKvVariantEngine<CKvAlbersEqualArea, CKvAlbersEqualAreaProjection,
                              CKvAlbersEqualAreaSphere, CKvAlbersEqualAreaEllipsoid> {
 public:
  explicit CKvAlbersEqualArea(CKvAlbersEqualAreaProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvAlbersEqualArea(const std::string& name, double parallel1, double parallel2,
                     double originLongitude, double originLatitude, double falseEasting,
                     double falseNorthing, const CKvEllipsoid& ellipsoid);

  // n times the longitude difference from the central meridian.
  double GetConvergence(double lon, double lat) override;

 private:
  CKvAlbersEqualArea(const std::string& name, double parallel1, double parallel2,
                     double originLongitude, double originLatitude, double falseEasting,
                     double falseNorthing, const CKvEllipsoid* ellipsoid);

  double m_dPhi1 = 0.0;     // radians
  double m_dPhi2 = 0.0;     // radians
  double m_dLambdaF = 0.0;  // radians
  double m_dPhiF = 0.0;     // radians
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
  double m_dN = 0.0;  // the cone constant, the variant's
};
