#pragma once

#include "engines/KvProjInterface.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;

// Lambert azimuthal equal area on the ellipsoid, the formula variant of
// CKvLambertAzimuthalEqualArea (which states method, sources and accuracy):
// Guidance Note 7-2's qP, betaO, Rq, D and B, and its polar formulas.
class KVCART_API CKvLambertAzimuthalEqualAreaEllipsoid final : public CKvProjInterface {
 public:
  // Angles in degrees, false easting and northing in metres.
  CKvLambertAzimuthalEqualAreaEllipsoid(const CKvEllipsoid& ellipsoid, double centreLongitude,
                                        double originLatitude, double falseEasting,
                                        double falseNorthing);
  ~CKvLambertAzimuthalEqualAreaEllipsoid() override;

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;

 private:
  double m_dA;
  double m_dInvF;
  double m_dE;
  double m_dLonO;  // degrees
  double m_dLatO;  // degrees
  double m_dFE;
  double m_dFN;
  double m_dPole;  // +1 north polar, -1 south polar, 0 oblique (and equatorial)
  double m_dQP;
  double m_dSinBetaO;
  double m_dCosBetaO;
  double m_dRq;
  double m_dD;
  double m_adC[3];  // authalic to geodetic latitude
};
