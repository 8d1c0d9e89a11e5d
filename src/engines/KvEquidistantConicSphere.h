#pragma once

#include "engines/KvProjInterface.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;

// Equidistant conic on the sphere of radius R = a, the formula variant of
// CKvEquidistantConic (which states method, sources and accuracy): Snyder's
// n, G and rho = R (G - phi), the cone written with r = n rho.
class KVCART_API CKvEquidistantConicSphere final : public CKvProjInterface {
 public:
  // Angles in degrees, false easting and northing in metres.
  CKvEquidistantConicSphere(const CKvEllipsoid& sphere, double parallel1, double parallel2,
                            double originLongitude, double originLatitude, double falseEasting,
                            double falseNorthing);
  ~CKvEquidistantConicSphere() override;

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
  double m_dNG;    // n R G = R cos phi1 + n R phi1, metres: r = n rho
  double m_dPhi0;  // radians
  double m_dR0;    // n rho0, metres
};
