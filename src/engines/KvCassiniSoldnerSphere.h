#pragma once

#include "engines/KvProjInterface.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;

// Cassini-Soldner on the sphere of radius R = a, the formula variant of
// CKvCassiniSoldner (which states method, sources and accuracy): Snyder's
// closed formulas, exact on the whole sphere.
class KVCART_API CKvCassiniSoldnerSphere final : public CKvProjInterface {
 public:
  // Angles in degrees, false easting and northing in metres.
  CKvCassiniSoldnerSphere(const CKvEllipsoid& sphere, double centralMeridian, double originLatitude,
                          double falseEasting, double falseNorthing);
  ~CKvCassiniSoldnerSphere() override;

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;

 private:
  double m_dR;
  double m_dInvF;
  double m_dLon0;  // degrees
  double m_dLat0;  // degrees
  double m_dFE;
  double m_dFN;
  double m_dPhi0;  // radians
};
