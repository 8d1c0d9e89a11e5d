#pragma once

#include "engines/KvProjection.h"
#include "platform/KvCartExport.h"

// An affine grid fixed by three points: the origin O = (x0, y0) with
// geographic value (lon0, lat0), a point A on the longitude axis with
// longitude lonA and a point B on the latitude axis with latitude latB.
// Each geographic coordinate is the projection of (x - x0, y - y0) onto its
// own axis, so the axes need not be perpendicular.
// Kept on purpose: the grid is one-way (Geo2Proj leaves its outputs alone),
// and the class stays abstract (no Clone, no TransferParameters).
class KVCART_API CKvIsoMetric : public CKvProjection {
 public:
  // Leaves every member unset.
  CKvIsoMetric();
  CKvIsoMetric(double x0, double y0, double xA, double yA, double xB, double yB, double lon0,
               double lat0, double lonA, double latB);

  const char* GetName() override;
  void Geo2Proj(double lon, double lat, double* x, double* y) override;
  void Proj2Geo(double x, double y, double* lon, double* lat) override;

 private:
  double m_dX0;
  double m_dY0;
  double m_dLon0;
  double m_dLat0;
  double m_adU[2];  // unit vector along the longitude axis
  double m_adV[2];  // unit vector along the latitude axis
  double m_dScaleLon;
  double m_dScaleLat;
};
