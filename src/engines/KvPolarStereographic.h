#pragma once

#include <string>

#include "catalogue/KvPolarStereographicProjection.h"
#include "engines/KvEngine.h"
#include "platform/KvCartExport.h"

// Polar stereographic by origin latitude and scale: an engine that holds
// the engine doing the arithmetic and forwards every question to it.
//
// The inner engine is chosen from the origin latitude, compared with +-90
// by the relative difference |lat -+ 90| / max(|lat|, 90) <= 1e-12:
// - at a pole, CKvStereographic with that origin and the scale factor,
//   whose limit there is EPSG method 9810 (variant A);
// - elsewhere the origin latitude is the latitude of true scale (variant
//   B, EPSG method 9829) and the scale factor is not used:
//   CKvStereographicNorthPole for a latitude >= 0, CKvStereographicSouthPole
//   below 0.
// A set whose ellipsoid identifier is empty or unknown gives no inner
// engine; every forwarding slot then stops the process with the assertion
// "m_pProj" (an engine that cannot exist must not compute).  The name, the
// catalogue look-ups and TransferParameters are the wrapper's own, so the
// WKT written is "Polar_Stereographic" with the set's values, not the inner
// engine's method.  Accuracy and domain are the inner engine's.
// A text read as "Polar_Stereographic" without a scale factor has the scale
// 1: variant B exports carry only the latitude of true scale.
class KVCART_API CKvPolarStereographic
    : public CKvNamedEngine<CKvPolarStereographic, CKvPolarStereographicProjection> {
 public:
  explicit CKvPolarStereographic(CKvPolarStereographicProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvPolarStereographic(const std::string& name, double scale, double originLongitude,
                        double originLatitude, double falseEasting, double falseNorthing,
                        const CKvEllipsoid& ellipsoid);
  // The inner engine is cloned.
  CKvPolarStereographic(const CKvPolarStereographic& other);
  CKvPolarStereographic& operator=(const CKvPolarStereographic& other);
  ~CKvPolarStereographic() override;

  const char* GetName() override;
  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;
  void GetOrigin(double* lon, double* lat) override;
  double GetConvergence(double lon, double lat) override;
  void GetDefaultArea(double* x0, double* y0, double* x1, double* y1) override;
  bool IsLocal() override;
  bool IsGeographical() override;
  void GetDerivedParameters(double* value) override;
  bool GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) override;

 private:
  CKvPolarStereographic(const std::string& name, double scale, double originLongitude,
                        double originLatitude, double falseEasting, double falseNorthing,
                        const CKvEllipsoid* ellipsoid);
  void _copy(const CKvPolarStereographic& other);
  void _dealloc();

  CKvProjection* m_pProj = nullptr;  // owned
};
