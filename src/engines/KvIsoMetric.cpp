#include "engines/KvIsoMetric.h"

#include <cmath>

CKvIsoMetric::CKvIsoMetric() = default;

CKvIsoMetric::CKvIsoMetric(double x0, double y0, double xA, double yA, double xB, double yB,
                           double lon0, double lat0, double lonA, double latB)
    : m_dX0(x0), m_dY0(y0), m_dLon0(lon0), m_dLat0(lat0) {
  const double lengthA = std::hypot(xA - x0, yA - y0);
  const double lengthB = std::hypot(xB - x0, yB - y0);
  m_adU[0] = (xA - x0) / lengthA;
  m_adU[1] = (yA - y0) / lengthA;
  m_adV[0] = (xB - x0) / lengthB;
  m_adV[1] = (yB - y0) / lengthB;
  m_dScaleLon = (lonA - lon0) / lengthA;
  m_dScaleLat = (latB - lat0) / lengthB;
}

const char* CKvIsoMetric::GetName() { return "Isometric"; }

void CKvIsoMetric::Geo2Proj(double, double, double*, double*) {}

void CKvIsoMetric::Proj2Geo(double x, double y, double* lon, double* lat) {
  const double dx = x - m_dX0, dy = y - m_dY0;
  *lon = m_dLon0 + m_dScaleLon * (m_adU[0] * dx + m_adU[1] * dy);
  *lat = m_dLat0 + m_dScaleLat * (m_adV[0] * dx + m_adV[1] * dy);
}
