#pragma once

#include "platform/KvCartExport.h"

class CKvEllipsoid;
class CKvPRJParser;

// A projection engine: the arithmetic of one method on one ellipsoid.
// Geographic coordinates are decimal degrees, longitude first; projected
// coordinates are metres, easting first; convergence is in degrees.  Engines
// report no errors: out-of-domain input gives what the formulas give.
// An engine is immutable after construction.  The order of the virtual
// functions is part of the binary interface and must not change.
class KVCART_API CKvProjection {
 public:
  virtual const char* GetName() = 0;
  virtual void Geo2Proj(double lon, double lat, double* x, double* y) = 0;
  virtual void Proj2Geo(double x, double y, double* lon, double* lat) = 0;
  // Default: (0, 0).
  virtual void GetOrigin(double* lon, double* lat);
  // Default: 0.
  virtual double GetConvergence(double lon, double lat);
  // Lower-left (x0, y0) and upper-right (x1, y1) corners of a sensible view.
  // Default: all zero.
  virtual void GetDefaultArea(double* x0, double* y0, double* x1, double* y1);
  // Default: false.
  virtual bool IsLocal();
  // Default: false.
  virtual bool IsGeographical();
  // Deletes the engine; the owner's way of releasing one.
  virtual void free();
  // Writes one number the method derives from its parameters; default none.
  virtual void GetDerivedParameters(double* value);
  // Sets the engine's own semi-major axis and inverse flattening into
  // `ellipsoid`; default false, argument untouched.
  virtual bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid);
  // A copy of this engine, owned by the caller.
  virtual CKvProjection* Clone() = 0;
  // Hands the definition to the WKT writer.
  virtual void TransferParameters(CKvPRJParser& parser) = 0;
  virtual ~CKvProjection();

 protected:
  // The default area most engines share: the projected corners of the
  // origin +-3 degrees, latitudes clamped to +-90.
  void _DefaultAreaAroundOrigin(double* x0, double* y0, double* x1, double* y1);
  // The convergence engines without a closed formula report: the direction
  // of grid north between the point and the point one arc-minute north of
  // it, in degrees.
  double _NumericalConvergence(double lon, double lat);
};
