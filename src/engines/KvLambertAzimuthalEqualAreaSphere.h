#pragma once

#include "engines/KvProjInterface.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;

// Lambert azimuthal equal area on the sphere of radius R = a, the formula
// variant of CKvLambertAzimuthalEqualArea (which states method, sources and
// accuracy): Snyder's k', one set of formulas for every aspect.
class KVCART_API CKvLambertAzimuthalEqualAreaSphere final : public CKvProjInterface {
 public:
  // Angles in degrees, false easting and northing in metres.
  CKvLambertAzimuthalEqualAreaSphere(const CKvEllipsoid& sphere, double centreLongitude,
                                     double originLatitude, double falseEasting,
                                     double falseNorthing);
  ~CKvLambertAzimuthalEqualAreaSphere() override;

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;

 private:
  double m_dR;
  double m_dInvF;
  double m_dLon0;  // degrees
  double m_dLat1;  // degrees, the centre's latitude (Snyder's phi1)
  double m_dFE;
  double m_dFN;
  double m_dSinPhi1;
  double m_dCosPhi1;
};
