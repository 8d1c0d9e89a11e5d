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
// - lambdaO) cos phi to A^5, which define the method on the ellipsoid, and
// its reverse series in D), and J. P. Snyder, "Map Projections: A Working
// Manual" (USGS PP 1395), chapter 13, for the sphere
// (CKvCassiniSoldnerSphere, inverse flattening 0 or less, exact).  The
// meridian arc M and the footpoint latitude are KvAux::CKvMeridianArc's
// series in n to n^5 (1e-10 m); the Guidance Note's e^6 series would leave
// 0.96 mm in M on WGS 84, its footpoint series 0.2 mm.
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// same formulas evaluated with mpmath at 40 digits (Bessel, origin 13.5 E
// 52.5 N, 10 degrees either side, 40 to 65 N): forward within 1.7
// nanometres, reverse within 3e-13 degrees of the exact inverse of the
// forward series; the sphere (30 degrees either side) within 1.4
// nanometres and 3e-14 degrees.  Within 0.1 mm of PROJ 9.1.1 and 1e-9
// degrees of its geographic points over the areas of use of EPSG:30200,
// 3068, 3140 and 3380 and out to 5 degrees from the central meridian
// (cassini_soldner.cases).
// Domain: the series define the projection as far out as they are taken;
// beyond some 5 degrees from the central meridian they leave the true
// transverse equidistant cylindrical, and near 90 degrees they are finite
// but meaningless (at 90 degrees on the equator E = FE +- a pi / 2).  The
// sphere variant is exact over the whole sphere; a point 90 degrees from
// the central meridian on the equator, the pole of the transverse aspect,
// maps to (FE +- R pi / 2, FN - R phiO).  A pole maps to (FE, FN + M(+-90)
// - MO).  Longitude differences are reduced to +-180 degrees about the
// central meridian, and the longitudes returned to [-180, 180].
// Departures: the Guidance Note's reverse series is only the start of the
// reverse, which then takes Newton steps on the forward series (usually
// one), so that forward and reverse are each other's inverse to 1e-12
// degree out to 20 degrees; the reverse series alone leaves 1.5e-7 degree
// 3 degrees from the central meridian at 45 N.  The convergence is
// measured numerically.  Without an ellipsoid both directions return NaN.
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
