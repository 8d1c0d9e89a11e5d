#pragma once

#include <string>

#include "catalogue/KvNewZealandMapGridProjection.h"
#include "engines/KvEngine.h"
#include "engines/KvNewZealandMapGridConstants.h"
#include "platform/KvCartExport.h"

// New Zealand map grid (EPSG method 9811): a sixth-order complex polynomial
// in the isometric latitude and longitude differences from the origin,
// designed for the International 1924 ellipsoid and origin 41 S, 173 E.
//
// Formulas: EPSG Guidance Note 7-2, section "New Zealand Map Grid" (after
// Reilly 1973); coefficients in CKvNewZealandMapGridConstants.  The series
// are fixed, so the method is exact only on the ellipsoid they were made for:
// results scale with the semi-major axis a, and the eccentricity of the
// ellipsoid is stored but never used.  The inverse refines the first
// estimate by Newton's method to 1e-12 (at most 100 steps, usually 2 or 3).
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// defining polynomials evaluated with mpmath at 40 digits (166 to 179 E,
// 47.5 to 34 S): forward within 1 nanometre, reverse within 1e-14 degrees.
// The method itself is not exactly invertible, as the D series only
// approximates the inverse of the A series: a forward, reverse and forward
// again moves a point by about 0.1 mm at 47.5 S (NewZealandMapGridTest).
// Domain: nothing limits it, but away from New Zealand the series diverge;
// there the inverse may stop at its step limit and return the last estimate.
// Origin angles are kept in degrees, as the series take them.
// Without an ellipsoid the engine is unusable: Geo2Proj and Proj2Geo
// return NaN and GetAnonymousEllipsoid returns false.  The default area is
// the fixed rectangle E 2000000..3000000, N 5300000..6800000.
class KVCART_API CKvNewZealandMapGrid
    : public CKvEngine<CKvNewZealandMapGrid, CKvNewZealandMapGridProjection,
                       EKvEllipsoidRule::eWhenSet>,
      public CKvNewZealandMapGridConstants {
 public:
  explicit CKvNewZealandMapGrid(CKvNewZealandMapGridProjection* set);
  CKvNewZealandMapGrid(const std::string& name, double originLongitude, double originLatitude,
                       double falseEasting, double falseNorthing, const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  // Direction of grid north from the meridian, in degrees, found from the
  // point and the point 1' north of it.
  double GetConvergence(double lon, double lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;

 private:
  CKvNewZealandMapGrid(const std::string& name, double originLongitude, double originLatitude,
                       double falseEasting, double falseNorthing, const CKvEllipsoid* ellipsoid);

  double m_dOriginLongitude = 0.0;  // degrees
  double m_dOriginLatitude = 0.0;   // degrees
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
};
