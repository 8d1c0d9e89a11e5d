#pragma once

#include <string>

#include "catalogue/KvEquidistantConicProjection.h"
#include "engines/KvEquidistantConicEllipsoid.h"
#include "engines/KvEquidistantConicSphere.h"
#include "engines/KvVariantEngine.h"
#include "platform/KvCartExport.h"

// Equidistant conic with two standard parallels (EPSG method 1119): a cone
// on which the meridians keep their true length and the two standard
// parallels their true scale; coordinates are reckoned from a false origin
// (lambdaF, phiF).
//
// Formulas: J. P. Snyder, "Map Projections: A Working Manual" (USGS PP
// 1395), chapter 16, "Equidistant Conic", on the ellipsoid
// (CKvEquidistantConicEllipsoid: n, G, rho = a G - M) and on the sphere
// (CKvEquidistantConicSphere, inverse flattening 0 or less).  The
// meridian arc M and its inverse are KvAux::CKvMeridianArc's series in n to
// n^5 (1e-10 m); the e^6 series of the manual would leave 0.8 mm.
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// same formulas evaluated with mpmath at 40 digits (parallels 20 and 60,
// 140 W to 50 W, 5 to 85 N): forward within 3 nanometres, reverse within
// 5e-14 degrees, on WGS 84 and on the sphere.  Within 0.1 mm of PROJ 9.1.1
// and 1e-9 degrees of its geographic points on North America Equidistant
// Conic, a tangent and a southern cone and the sphere
// (equidistant_conic.cases).
// Domain: the whole ellipsoid; longitude differences are reduced to +-180
// degrees about the central meridian, and the longitudes returned to
// [-180, 180].
// Departures: the cone is written with r = n rho (KvConeGeometry.h), so
// parallels symmetric about the equator (n = 0) give the limit of the
// cone, the equidistant cylindrical projection with true scale on the
// standard parallels, rather than a division by zero; the northing from the
// false origin is M - MF, and the reverse finds M from rho0 - rho formed
// without cancellation.  The default area is centred on the mean of the
// standard parallels, not on the false origin.  Without an ellipsoid both
// directions return NaN.
class KVCART_API CKvEquidistantConic
    : public CKvVariantEngine<CKvEquidistantConic, CKvEquidistantConicProjection,
                              CKvEquidistantConicSphere, CKvEquidistantConicEllipsoid> {
 public:
  explicit CKvEquidistantConic(CKvEquidistantConicProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvEquidistantConic(const std::string& name, double parallel1, double parallel2,
                      double originLongitude, double originLatitude, double falseEasting,
                      double falseNorthing, const CKvEllipsoid& ellipsoid);

  // n times the longitude difference from the central meridian.
  double GetConvergence(double lon, double lat) override;

 private:
  CKvEquidistantConic(const std::string& name, double parallel1, double parallel2,
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
