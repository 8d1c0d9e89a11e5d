#pragma once

#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvProjInterface.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;

// Equidistant conic on the ellipsoid, the formula variant of
// CKvEquidistantConic (which states method, sources and accuracy):
// Snyder's n, G and rho = a G - M, the cone written with r = n rho.
class KVCART_API CKvEquidistantConicEllipsoid final : public CKvProjInterface {
 public:
  // Angles in degrees, false easting and northing in metres.
  CKvEquidistantConicEllipsoid(const CKvEllipsoid& ellipsoid, double parallel1, double parallel2,
                               double originLongitude, double originLatitude, double falseEasting,
                               double falseNorthing);
  ~CKvEquidistantConicEllipsoid() override;

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;

  double GetN() const { return m_dN; }

 private:
  double m_dA;
  double m_dInvF;
  double m_dLonF;  // degrees
  double m_dLatF;  // degrees
  double m_dLat1;  // degrees
  double m_dLat2;  // degrees
  double m_dFE;
  double m_dFN;
  double m_dN;
  double m_dNG;  // n a G = a m1 + n M1, metres: r = n rho = n a G - n M
  double m_dMF;  // the meridian arc of the false origin, metres
  double m_dR0;  // n rho0, metres
  KvAux::CKvMeridianArc m_arc;
};
