#include "engines/KvMercator1SP.h"

#include <algorithm>
#include <cmath>

#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

CKvMercator1SP::CKvMercator1SP(CKvMercator1SPProjection* set)
    : CKvMercator1SP(set->GetName(), set->GetScale(), set->GetCentre(), set->GetFalseEasting(),
                     set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvMercator1SP::CKvMercator1SP(const std::string& name, double scale, double originLongitude,
                               double falseEasting, double falseNorthing,
                               const CKvEllipsoid& ellipsoid)
    : CKvMercator1SP(name, scale, originLongitude, falseEasting, falseNorthing, &ellipsoid) {}

CKvMercator1SP::CKvMercator1SP(const std::string& name, double scale, double originLongitude,
                               double falseEasting, double falseNorthing,
                               const CKvEllipsoid* ellipsoid)
    : CKvEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dLambda0 = originLongitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  CKvMapProjData::ComputeFourierCoefficients(CKvMapProjData::eMercator1SP, false, m_dE2, m_adC);
  m_dK0 = scale;
}

// EPSG Guidance Note 7-2, Mercator forward (both variants once k0 is
// known): y = a k0 ln(tan(pi/4 + phi/2) ((1 - e sin phi) / (1 + e sin
// phi))^(e/2)), which is -a k0 ln t.
void CKvMercator1SP::_Forward(double a, double e, double k0, double lambda0, double FE, double FN,
                              double lon, double lat, double* x, double* y) {
  *x = (lon * KvConst::kDegToRad - lambda0) * k0 * a + FE;
  *y = -std::log(KvAux::ConformalT(lat, e)) * a * k0 + FN;
}

// EPSG Guidance Note 7-2, Mercator reverse: t and the conformal latitude chi
// in closed form, then phi = chi + c1 sin 2chi + c2 sin 4chi + c3 sin 6chi +
// c4 sin 8chi.
void CKvMercator1SP::_Inverse(double a, double k0, double lambda0, double FE, double FN,
                              const double* c, double x, double y, double* lon, double* lat) {
  const double k0a = k0 * a;
  if (k0a == 0.0) {  // no ellipsoid, or a zero scale: nothing to divide by
    *lon = KvConst::kNaN;
    *lat = KvConst::kNaN;
    return;
  }
  const double t = std::exp((FN - y) / k0a);
  const double chi = KvConst::kHalfPi - 2.0 * std::atan(t);
  const double phi = chi + KvAux::ClenshawSin(c, 4, std::sin(2.0 * chi), std::cos(2.0 * chi));
  *lat = phi * KvConst::kRadToDeg;
  *lon = ((x - FE) / k0a + lambda0) * KvConst::kRadToDeg;
}

void CKvMercator1SP::_DefaultArea(CKvProjection& engine, double* x0, double* y0, double* x1,
                                  double* y1) {
  double lon0 = 0.0, lat0 = 0.0;
  engine.GetOrigin(&lon0, &lat0);
  if (lon0 == 0.0 && lat0 == 0.0) {
    // The world, as the geographic engines show it: 60 S to 81 N.
    engine.Geo2Proj(-180.0, -60.0, x0, y0);
    engine.Geo2Proj(180.0, 81.0, x1, y1);
    return;
  }
  engine.Geo2Proj(lon0 - 3.0, std::max(lat0 - 3.0, -90.0), x0, y0);
  engine.Geo2Proj(lon0 + 3.0, std::min(lat0 + 3.0, 90.0), x1, y1);
}

void CKvMercator1SP::Geo2Proj(double lon, double lat, double* x, double* y) {
  _Forward(m_dA, m_dE, m_dK0, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, lon, lat, x, y);
}

void CKvMercator1SP::Proj2Geo(double x, double y, double* lon, double* lat) {
  _Inverse(m_dA, m_dK0, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, m_adC, x, y, lon, lat);
}

void CKvMercator1SP::GetOrigin(double* lon, double* lat) {
  *lon = m_dLambda0 * KvConst::kRadToDeg;
  *lat = 0.0;
}

double CKvMercator1SP::GetConvergence(double lon, double lat) {
  return _NumericalConvergence(lon, lat);
}

void CKvMercator1SP::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  _DefaultArea(*this, x0, y0, x1, y1);
}

void CKvMercator1SP::GetDerivedParameters(double* value) { *value = 0.0; }
