#pragma once

#include <string>

#include "catalogue/KvCassiniSoldnerProjection.h"
#include "engines/KvCassiniSoldnerEllipsoid.h"
#include "engines/KvCassiniSoldnerSphere.h"
#include "engines/KvVariantEngine.h"
#include "platform/KvCartExport.h"

// Cassini-Soldner (EPSG method 9806): the transverse aspect of the
// equidistant cylindrical projection, distances along the central meridian
// and perpendicular to it kept true; natural origin (lambdaO, phiO).
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Cassini-Soldner" (CKvCassiniSoldnerEllipsoid: the series in A = (lambda
// - lambdaO) cos phi to A^5, and its reverse in D to D^5, which define the
// method on the ellipsoid), and J. P. Snyder, "Map Projections: A Working
// Manual" (USGS PP 1395), chapter 13, for the sphere
// (CKvCassiniSoldnerSphere, inverse flattening 0 or less, exact).  The
// meridian arc M and the footpoint latitude are KvAux::CKvMeridianArc's
// series in n to n^5 (1e-10 m); the Guidance Note's e^6 series would leave
// 0.8 mm.
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// same formulas evaluated with mpmath at 40 digits: see the figures below.
// Domain: the ellipsoidal series serve some 3 degrees either side of the
// central meridian (the forward and reverse series then differ by less
// than 1e-9 degree); further out the two drift apart, and near 90 degrees
// from the central meridian they are finite but meaningless (at 90 degrees
// on the equator E = FE +- a pi / 2).  The sphere variant is exact over
// the whole sphere; a point 90 degrees from the central meridian on the
// equator, the pole of the transverse aspect, maps to (FE +- R pi / 2, FN
// - R phiO).  A pole maps to (FE, FN + M(+-90) - MO).  Longitude
// differences are reduced to +-180 degrees about the central meridian, and
// the longitudes returned to [-180, 180].
// Departures: the convergence is measured numerically.  Without an
// ellipsoid both directions return NaN.
class KVCART_API CKvCassiniSoldner
    : public CKvVariantEngine<CKvCassiniSoldner, CKvCassiniSoldnerProjection,
                              CKvCassiniSoldnerSphere, CKvCassiniSoldnerEllipsoid> {
 public:
  explicit CKvCassiniSoldner(CKvCassiniSoldnerProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvCassiniSoldner(const std::string& name, double centralMeridian, double originLatitude,
                    double falseEasting, double falseNorthing, const CKvEllipsoid& ellipsoid);

  double GetConvergence(double lon, double lat) override;

 private:
  CKvCassiniSoldner(const std::string& name, double centralMeridian, double originLatitude,
                    double falseEasting, double falseNorthing, const CKvEllipsoid* ellipsoid);

  double m_dLambdaO = 0.0;  // radians
  double m_dPhiO = 0.0;     // radians
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
};
