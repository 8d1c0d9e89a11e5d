#pragma once

#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvProjInterface.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;

// Cassini-Soldner on the ellipsoid, the formula variant of CKvCassiniSoldner
// (which states method, sources and accuracy): Guidance Note 7-2's series
// in A and D about the meridian arc M.
class KVCART_API CKvCassiniSoldnerEllipsoid final : public CKvProjInterface {
 public:
  // Angles in degrees, false easting and northing in metres.
  CKvCassiniSoldnerEllipsoid(const CKvEllipsoid& ellipsoid, double centralMeridian,
                             double originLatitude, double falseEasting, double falseNorthing);
  ~CKvCassiniSoldnerEllipsoid() override;

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;

 private:
  // The forward series from the longitude difference (radians, as it
  // stands) and the latitude (radians, with its sine and cosine): easting
  // and northing from the natural origin, and with `jacobian` their
  // derivatives.
  void _Forward(double dLambda, double phi, double sinPhi, double cosPhi, double* dx, double* dy,
                double* jacobian) const;
  // The Guidance Note's reverse series: the longitude difference and the
  // latitude (radians) of the offsets from the natural origin.
  void _Reverse(double dx, double dy, double* dLambda, double* phi) const;

  double m_dA;
  double m_dInvF;
  double m_dE2;
  double m_dLonO;  // degrees
  double m_dLatO;  // degrees
  double m_dFE;
  double m_dFN;
  double m_dMO;  // the meridian arc of the origin, metres
  KvAux::CKvMeridianArc m_arc;
};
