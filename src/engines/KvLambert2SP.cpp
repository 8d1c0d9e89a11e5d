#include "engines/KvLambert2SP.h"

#include <algorithm>
#include <cmath>

#include "engines/KvAuxiliaryLatitudes.h"
#include "engines/KvLambert1SP.h"
#include "platform/KvConstants.h"

namespace {

// The two-parallel cone has unit scale on its parallels.
constexpr double kUnitScale = 1.0;

}  // namespace

CKvLambert2SP::CKvLambert2SP(CKvLambert2SPProjection* set)
    : CKvLambert2SP(set->GetName(), set->GetParallel1(), set->GetParallel2(),
                    set->GetOriginLongitude(), set->GetOriginLatitude(), set->GetFalseEasting(),
                    set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvLambert2SP::CKvLambert2SP(const std::string& name, double parallel1, double parallel2,
                             double originLongitude, double originLatitude, double falseEasting,
                             double falseNorthing, const CKvEllipsoid& ellipsoid)
    : CKvLambert2SP(name, parallel1, parallel2, originLongitude, originLatitude, falseEasting,
                    falseNorthing, &ellipsoid) {}

// EPSG Guidance Note 7-2, method 9802: m1, m2, t1, t2, tF, n, F and rF.
CKvLambert2SP::CKvLambert2SP(const std::string& name, double parallel1, double parallel2,
                             double originLongitude, double originLatitude, double falseEasting,
                             double falseNorthing, const CKvEllipsoid* ellipsoid)
    : CKvEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dPhi1 = parallel1 * KvConst::kDegToRad;
  m_dPhi2 = parallel2 * KvConst::kDegToRad;
  m_dLambdaF = originLongitude * KvConst::kDegToRad;
  m_dPhiF = originLatitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;

  const double a = m_dA, e = m_dE, e2 = m_dE2;
  double sin1, cos1, sin2, cos2;
  KvAux::SinCosDeg(parallel1, &sin1, &cos1);
  KvAux::SinCosDeg(parallel2, &sin2, &cos2);
  const double m1 = KvAux::ParallelRadius(sin1, cos1, e2);
  const double m2 = KvAux::ParallelRadius(sin2, cos2, e2);
  const double t1 = KvAux::ConformalT(parallel1, e);
  const double t2 = KvAux::ConformalT(parallel2, e);
  double tF = KvAux::ConformalT(originLatitude, e);
  if (tF <= 0.0) tF = 0.0;

  // Parallels too close for the logarithms to tell apart are the tangent
  // cone, the limit of the quotient, rather than 0/0.
  const double lnT1T2 = std::log(t1) - std::log(t2);
  double n;
  if (m_dPhi1 != m_dPhi2 && lnT1T2 != 0.0)
    n = (std::log(m1) - std::log(m2)) / lnT1T2;
  else
    n = std::sin(m_dPhi1);

  // Parallels on or symmetric about the equator (n = 0) have no cone, a
  // first parallel at a pole (t1 = 0) a degenerate one: F and rF stay NaN
  // rather than come from a division by 0.
  double F = KvConst::kNaN, rF = KvConst::kNaN;
  const double t1n = std::pow(t1, n);
  if (n * t1n != 0.0) {
    F = m1 / (n * t1n);
    rF = a * F * std::pow(tF, n);
  }
  m_dM1 = m1;
  m_dM2 = m2;
  m_dT1 = t1;
  m_dT2 = t2;
  m_dTF = tF;
  m_dN = n;
  m_dF = F;
  m_dRF = rF;
}

void CKvLambert2SP::Geo2Proj(double lon, double lat, double* x, double* y) {
  CKvLambert1SP::_Forward(m_dA, m_dE, kUnitScale, m_dN, m_dF, m_dRF, m_dLambdaF, m_dFalseEasting,
                          m_dFalseNorthing, lon, lat, x, y);
}

void CKvLambert2SP::Proj2Geo(double x, double y, double* lon, double* lat) {
  CKvLambert1SP::_Inverse(m_dA, m_dE, kUnitScale, m_dN, m_dF, m_dRF, m_dLambdaF, m_dFalseEasting,
                          m_dFalseNorthing, x, y, lon, lat);
}

void CKvLambert2SP::GetOrigin(double* lon, double* lat) {
  *lon = m_dLambdaF * KvConst::kRadToDeg;
  *lat = m_dPhiF * KvConst::kRadToDeg;
}

double CKvLambert2SP::GetConvergence(double lon, double) {
  return (lon - m_dLambdaF * KvConst::kRadToDeg) * m_dN;
}

// The origin +-3 degrees, latitudes clamped to +-90; a false origin at a
// pole, common for polar cones, would show only the apex, so the area is
// centred on the mean parallel instead.
void CKvLambert2SP::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  double lon0 = 0.0, lat0 = 0.0;
  GetOrigin(&lon0, &lat0);
  if (KvConst::IsClose(lat0, 90.0) || KvConst::IsClose(lat0, -90.0))
    lat0 = 0.5 * (m_dPhi1 + m_dPhi2) * KvConst::kRadToDeg;
  Geo2Proj(lon0 - 3.0, std::max(lat0 - 3.0, -90.0), x0, y0);
  Geo2Proj(lon0 + 3.0, std::min(lat0 + 3.0, 90.0), x1, y1);
}
