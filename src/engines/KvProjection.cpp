#include "engines/KvProjection.h"

#include <algorithm>
#include <cmath>

#include "platform/KvConstants.h"

void CKvProjection::GetOrigin(double* lon, double* lat) {
  *lon = 0.0;
  *lat = 0.0;
}

double CKvProjection::GetConvergence(double, double) { return 0.0; }

void CKvProjection::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  *x0 = 0.0;
  *y0 = 0.0;
  *x1 = 0.0;
  *y1 = 0.0;
}

bool CKvProjection::IsLocal() { return false; }

bool CKvProjection::IsGeographical() { return false; }

void CKvProjection::free() { delete this; }

void CKvProjection::GetDerivedParameters(double*) {}

bool CKvProjection::GetAnonymousEllipsoid(CKvEllipsoid&) { return false; }

CKvProjection::~CKvProjection() = default;

double CKvProjection::_NumericalConvergence(double lon, double lat) {
  double x1, y1, x2, y2;
  Geo2Proj(lon, lat, &x1, &y1);
  Geo2Proj(lon, lat + 0.016666666666666666, &x2, &y2);
  return std::atan2(x1 - x2, y2 - y1) * KvConst::kRadToDeg;
}

void CKvProjection::_DefaultAreaAroundOrigin(double* x0, double* y0, double* x1, double* y1) {
  double lon0 = 0.0, lat0 = 0.0;
  GetOrigin(&lon0, &lat0);
  Geo2Proj(lon0 - 3.0, std::max(lat0 - 3.0, -90.0), x0, y0);
  Geo2Proj(lon0 + 3.0, std::min(lat0 + 3.0, 90.0), x1, y1);
}
