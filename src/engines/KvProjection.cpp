#include "engines/KvProjection.h"

#include <algorithm>

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

void CKvProjection::_DefaultAreaAroundOrigin(double* x0, double* y0, double* x1, double* y1) {
  double lon0 = 0.0, lat0 = 0.0;
  GetOrigin(&lon0, &lat0);
  Geo2Proj(lon0 - 3.0, std::max(lat0 - 3.0, -90.0), x0, y0);
  Geo2Proj(lon0 + 3.0, std::min(lat0 + 3.0, 90.0), x1, y1);
}
