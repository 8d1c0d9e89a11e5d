#pragma once

#include "engines/KvProjInterface.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;

// Albers equal-area conic on the sphere of radius R = a, the formula variant
// of CKvAlbersEqualArea (which states method, sources and accuracy):
// Snyder's chapter 14, the cone written with r = n rho.
class KVCART_API CKvAlbersEqualAreaSphere final : public CKvProjInterface {
 public:
  // Angles in degrees, false easting and northing in metres.
  CKvAlbersEqualAreaSphere(const CKvEllipsoid& sphere, double parallel1, double parallel2,
                           double originLongitude, double originLatitude, double falseEasting,
                           double falseNorthing);
  ~CKvAlbersEqualAreaSphere() override;

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;

  double GetN() const { return m_dN; }

 private:
  double m_dR;
  double m_dInvF;
  double m_dLon0;  // degrees
  double m_dLat0;  // degrees
  double m_dLat1;  // degrees
  double m_dLat2;  // degrees
  double m_dFE;
  double m_dFN;
  double m_dN;
  double m_dC;
  double m_dSinPhi0;
  double m_dR0;  // n rho0, metres
};
