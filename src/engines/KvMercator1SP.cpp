#include "engines/KvMercator1SP.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvMapProjData.h"
#include "catalogue/KvMercator1SPProjection.h"
#include "engines/KvEngineCatalogue.h"
#include "platform/KvConstants.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kQuarterPi = KvConst::kPi / 4.0;

}  // namespace

CKvMercator1SP::CKvMercator1SP(CKvMercator1SPProjection* set) {
  CKvEngineCatalogue::CopyName(m_szName, set->GetName());
  // Without an ellipsoid every number stays 0 (see the class comment).
  if (const CKvEllipsoid* ellipsoid = CKvEngineCatalogue::FindEllipsoid(set->GetEllipsoidID()))
    _Init(set->GetScale(), set->GetCentre(), set->GetFalseEasting(), set->GetFalseNorthing(),
          *ellipsoid);
}

CKvMercator1SP::CKvMercator1SP(const std::string& name, double scale, double originLongitude,
                               double falseEasting, double falseNorthing,
                               const CKvEllipsoid& ellipsoid) {
  CKvEngineCatalogue::CopyName(m_szName, name);
  _Init(scale, originLongitude, falseEasting, falseNorthing, ellipsoid);
}

void CKvMercator1SP::_Init(double scale, double originLongitude, double falseEasting,
                           double falseNorthing, const CKvEllipsoid& ellipsoid) {
  m_dA = ellipsoid.GetMajor();
  m_dInvF = ellipsoid.GetInvFlatness();
  m_dE = ellipsoid.GetEccentricity();
  m_dE2 = m_dE * m_dE;
  m_dLambda0 = originLongitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  CKvMapProjData::ComputeFourierCoefficients(CKvMapProjData::eMercator1SP, false, m_dE2, m_adC);
  m_dK0 = scale;
}

// EPSG Guidance Note 7-2, Mercator forward (both variants once k0 is known).
void CKvMercator1SP::_Forward(double a, double e, double k0, double lambda0, double FE, double FN,
                              double lon, double lat, double* x, double* y) {
  const double phi = lat * KvConst::kDegToRad;
  const double eSinPhi = e * std::sin(phi);
  *x = (lon * KvConst::kDegToRad - lambda0) * k0 * a + FE;
  *y = std::log(std::tan(kQuarterPi + 0.5 * phi) *
                std::pow((1.0 - eSinPhi) / (1.0 + eSinPhi), 0.5 * e)) *
           a * k0 +
       FN;
}

// EPSG Guidance Note 7-2, Mercator reverse: t and the conformal latitude chi
// in closed form, then phi = chi + c1 sin 2chi + c2 sin 4chi + c3 sin 6chi +
// c4 sin 8chi, summed by Clenshaw's recurrence from sin 2chi and cos 2chi.
void CKvMercator1SP::_Inverse(double a, double k0, double lambda0, double FE, double FN,
                              const double* c, double x, double y, double* lon, double* lat) {
  const double k0a = k0 * a;
  if (k0a == 0.0) {  // no ellipsoid, or a zero scale: nothing to divide by
    *lon = kNaN;
    *lat = kNaN;
    return;
  }
  const double t = std::exp((FN - y) / k0a);
  const double chi = KvConst::kHalfPi - 2.0 * std::atan(t);

  const double sin2Chi = std::sin(2.0 * chi);
  const double twoCos2Chi = 2.0 * std::cos(2.0 * chi);
  const double b3 = twoCos2Chi * c[3] + c[2];
  const double b2 = twoCos2Chi * b3 - c[3] + c[1];
  const double b1 = twoCos2Chi * b2 - b3 + c[0];
  const double phi = chi + sin2Chi * b1;

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

const char* CKvMercator1SP::GetName() { return m_szName; }

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

bool CKvMercator1SP::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dA, m_dInvF);
  return true;
}

CKvProjection* CKvMercator1SP::Clone() { return new CKvMercator1SP(*this); }

void CKvMercator1SP::TransferParameters(CKvPRJParser& parser) {
  CKvMercator1SPProjection set;
  GetMapProjection(set);
  CKvEngineCatalogue::Transfer(m_szName, set, parser);
}

bool CKvMercator1SP::GetMapProjection(CKvMercator1SPProjection& set) {
  return CKvEngineCatalogue::GetMapProjection(m_szName, set);
}

bool CKvMercator1SP::GetEllipsoid(CKvEllipsoid& ellipsoid) {
  return CKvEngineCatalogue::GetEllipsoid(m_szName, ellipsoid);
}
