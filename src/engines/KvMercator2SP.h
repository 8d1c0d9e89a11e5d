#pragma once

#include <string>

#include "engines/KvProjection.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;
class CKvMercator2SPProjection;

// Normal Mercator with a standard parallel phi1 of true scale (EPSG method
// 9805); the scale on the equator is derived from it as
// k0 = cos phi1 / sqrt(1 - e^2 sin^2 phi1).
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Mercator (variant B)"; once k0 is known the arithmetic is that of
// CKvMercator1SP, with the same accuracy, domain and numerical convergence.
// The parallels +-phi1 give the same projection, and phi1 = 0 is the 1SP
// projection with k0 = 1.
// Without an ellipsoid (empty or unknown identifier in the set) every numeric
// member is 0, k0 included: Geo2Proj gives (0, 0) away from the poles and
// Proj2Geo returns NaN.  A parallel at a pole shrinks k0 to about 6e-17 and
// the map to a point; nothing guards it.
class KVCART_API CKvMercator2SP : public CKvProjection {
 public:
  explicit CKvMercator2SP(CKvMercator2SPProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvMercator2SP(const std::string& name, double standardParallel, double originLongitude,
                 double falseEasting, double falseNorthing, const CKvEllipsoid& ellipsoid);

  const char* GetName() override;
  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  double GetConvergence(double lon, double lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  // Writes the derived scale factor on the equator, k0.
  void GetDerivedParameters(double* value) override;
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;
  CKvProjection* Clone() override;
  void TransferParameters(CKvPRJParser& parser) override;

  bool GetMapProjection(CKvMercator2SPProjection& set);
  bool GetEllipsoid(CKvEllipsoid& ellipsoid);

 private:
  void _Init(double standardParallel, double originLongitude, double falseEasting,
             double falseNorthing, const CKvEllipsoid& ellipsoid);

  char m_szName[256] = {};
  double m_dA = 0.0;
  double m_dInvF = 0.0;
  double m_dE = 0.0;
  double m_dE2 = 0.0;
  double m_dPhi1 = 0.0;     // radians
  double m_dLambda0 = 0.0;  // radians
  double m_dFalseEasting = 0.0;
  double m_dFalseNorthing = 0.0;
  double m_adC[4] = {};  // sin 2chi .. sin 8chi coefficients of the reverse
  double m_dK0 = 0.0;
};
