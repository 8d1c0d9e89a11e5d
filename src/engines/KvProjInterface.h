#pragma once

#include "platform/KvCartExport.h"

class CKvEllipsoid;

// A sphere or ellipsoid formula variant of one method, held by the engines
// whose published formulas differ between the two (equal-area and
// equidistant methods).  Units as in CKvProjection.  The order of the
// virtual functions is part of the binary interface.
class KVCART_API CKvProjInterface {
 public:
  virtual ~CKvProjInterface();
  virtual void Geo2Proj(double lon, double lat, double* x, double* y) = 0;
  virtual void Proj2Geo(double x, double y, double* lon, double* lat) = 0;
  virtual void GetOrigin(double* lon, double* lat) = 0;
  virtual void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) = 0;
  virtual bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) = 0;
};
