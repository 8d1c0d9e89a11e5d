#pragma once

#include <string>

#include "catalogue/KvGeographicalProjection.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Longitude/latitude on an ellipsoid: no projection at all.  x is the
// longitude counted from the prime meridian, y the latitude, both degrees.
// Exact: two additions.
// Without an ellipsoid the prime meridian is 0 as well, and the engine has
// no anonymous ellipsoid.
// Kept on purpose: no range reduction or wrapping of longitudes, and a
// default area that stops at 60 S and 81 N.
class KVCART_API CKvGeographical
    : public CKvEngine<CKvGeographical, CKvGeographicalProjection, EKvEllipsoidRule::eWhenSet> {
 public:
  explicit CKvGeographical(CKvGeographicalProjection* set);
  CKvGeographical(const std::string& name, double primeMeridian, const CKvEllipsoid& ellipsoid);

  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool IsGeographical() override;

 private:
  CKvGeographical(const std::string& name, double primeMeridian, const CKvEllipsoid* ellipsoid);

  double m_dPrimeMeridian = 0.0;  // degrees
};
