#pragma once

#include <string>

#include "catalogue/KvRotatedLongitudeLatitudeProjection.h"
#include "datum/Matrix.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Rotated longitude/latitude (rotated-pole grid): the "projected"
// coordinates are a longitude and a latitude in degrees, measured in a
// system whose south pole lies at (lambda_p, phi_p) and which is then turned
// by alpha about its new polar axis.  The grid's meridian 0 (before alpha)
// runs north from the rotated south pole along the geographic meridian
// lambda_p, so the geographic point (lambda_p, phi_p + 90) is the grid's
// (-alpha, 0).
//
// Method: the point is taken to geocentric coordinates on the ellipsoid at
// height 0, rotated there by Mi = R1(0) R2(90 + phi_p) R3(-lambda_p) (Mf,
// its transpose, for the inverse), and read back as geodetic longitude and
// latitude, the height off the ellipsoid being dropped.
//
// Formulas: geocentric coordinates as in EPSG Guidance Note 7-2 (method
// 9602); their inverse after B. R. Bowring, "Transformation from spatial to
// geographical coordinates", Survey Review 23 (1976), in the closed form
// with (1 - f) + e^2 a / r in the auxiliary angle.  It is evaluated in its
// atan2 form, which gives the same angles and stays right on the polar axis.
//
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the
// rotation built geometrically and read back by iterating the latitude
// (mpmath, 40 digits; pole 10 E 40 S, angle 15, the whole globe to 85
// degrees): within 1.4e-11 degrees both ways on WGS 84 (Bowring's closed
// form), 1.3e-13 degrees on a sphere.  The rotated point lies up to some 21
// km (about a - b) off the ellipsoid and the inverse does not restore that
// height, so on an ellipsoid a forward and inverse round trip moves a point
// by up to about 4e-4 degree (40 m) for a pole far from either geographic
// pole (RotatedLongitudeLatitudeTest); on a sphere the two are exact
// inverses.  This is deliberate: the grid is defined by this rotation, not
// by a rotation of the sphere.
//
// Kept on purpose: the grid longitude is x = lon' - alpha with no wrapping
// into -180..180 (Proj2Geo adds alpha back before rotating), and GetOrigin
// returns (lambda_p, phi_p + 90).
// Without an ellipsoid the matrices are built from zero angles and the
// engine is unusable: Geo2Proj and Proj2Geo return NaN and
// GetAnonymousEllipsoid returns false.
class KVCART_API CKvRotatedLongitudeLatitude
    : public CKvEngine<CKvRotatedLongitudeLatitude, CKvRotatedLongitudeLatitudeProjection,
                       EKvEllipsoidRule::eWhenSet> {
 public:
  explicit CKvRotatedLongitudeLatitude(CKvRotatedLongitudeLatitudeProjection* set);
  CKvRotatedLongitudeLatitude(const std::string& name, double southPoleLongitude,
                              double southPoleLatitude, double rotationAngle,
                              const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  // (lambda_p, phi_p + 90): the geographic point on the grid's equator.
  void GetOrigin(double* lon, double* lat) override;
  // Direction of the grid's north from the meridian, in degrees, found from
  // the point and the point 1' north of it.
  double GetConvergence(double lon, double lat) override;
  // The origin +-3 degrees, clamped to +-180 and +-90, in grid coordinates.
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool IsGeographical() override;

  // Geodetic degrees to geocentric metres on the engine's ellipsoid, height 0.
  void Geo2XYZ(double lon, double lat, double* X, double* Y, double* Z);
  // Geocentric metres to geodetic degrees (Bowring), the height dropped.
  void XYZ2Geo(double X, double Y, double Z, double* lon, double* lat);

 private:
  CKvRotatedLongitudeLatitude(const std::string& name, double southPoleLongitude,
                              double southPoleLatitude, double rotationAngle,
                              const CKvEllipsoid* ellipsoid);

  double m_dSouthPoleLongitude = 0.0;  // degrees
  double m_dSouthPoleLatitude = 0.0;   // degrees
  double m_dRotationAngle = 0.0;       // degrees
  CMatrix m_Mf;                  // grid to geographic, used by Proj2Geo
  CMatrix m_Mi;                  // geographic to grid, used by Geo2Proj
  // Derived once: flattening, semi-minor axis, second eccentricity squared.
  double m_dFlattening;
  double m_dMinor;
  double m_dSecondEccentricitySq;
};
