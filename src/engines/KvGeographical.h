#pragma once

#include <string>

#include "engines/KvProjection.h"
#include "platform/KvCartExport.h"

class CKvEllipsoid;
class CKvGeographicalProjection;

// Longitude/latitude on an ellipsoid: no projection at all.  x is the
// longitude counted from the prime meridian, y the latitude, both degrees.
// Kept on purpose: no range reduction or wrapping of longitudes, and a
// default area that stops at 60 S and 81 N.
class KVCART_API CKvGeographical : public CKvProjection {
 public:
  // With an empty or unknown ellipsoid identifier the ellipsoid and the
  // prime meridian are all zero.
  explicit CKvGeographical(CKvGeographicalProjection* set);
  CKvGeographical(const std::string& name, double primeMeridian, const CKvEllipsoid& ellipsoid);

  const char* GetName() override;
  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool IsGeographical() override;
  // Only when the engine has an ellipsoid (a > 0).
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;
  CKvProjection* Clone() override;
  void TransferParameters(CKvPRJParser& parser) override;

  // The catalogue's definition of this engine's name (strings only).
  bool GetMapProjection(CKvGeographicalProjection& set);
  bool GetEllipsoid(CKvEllipsoid& ellipsoid);

 private:
  void _SetEllipsoid(const CKvEllipsoid& ellipsoid);

  char m_szName[256];
  double m_dMajor;
  double m_dInvFlattening;
  double m_dEccentricity;
  double m_dEccentricitySq;
  double m_dPrimeMeridian;
};
