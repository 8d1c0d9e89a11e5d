#include "engines/KvLambert1SP.h"

#include <cmath>
#include <limits>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvLambert1SPProjection.h"
#include "engines/KvEngineCatalogue.h"
#include "platform/KvConstants.h"

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kQuarterPi = KvConst::kPi / 4.0;
// The reverse stops when two successive latitudes differ by less than this
// (radians), or after kMaxIterations steps.
constexpr double kTolerance = 1e-12;
constexpr int kMaxIterations = 100;

}  // namespace

CKvLambert1SP::CKvLambert1SP(CKvLambert1SPProjection* set) {
  CKvEngineCatalogue::CopyName(m_szName, set->GetName());
  // Without an ellipsoid every number stays 0 (see the class comment).
  if (const CKvEllipsoid* ellipsoid = CKvEngineCatalogue::FindEllipsoid(set->GetEllipsoidID()))
    _Init(set->GetScale(), set->GetOriginLongitude(), set->GetOriginLatitude(),
          set->GetFalseEasting(), set->GetFalseNorthing(), *ellipsoid);
}

CKvLambert1SP::CKvLambert1SP(const std::string& name, double scale, double originLongitude,
                             double originLatitude, double falseEasting, double falseNorthing,
                             const CKvEllipsoid& ellipsoid) {
  CKvEngineCatalogue::CopyName(m_szName, name);
  _Init(scale, originLongitude, originLatitude, falseEasting, falseNorthing, ellipsoid);
}

// EPSG Guidance Note 7-2, method 9801: m0, t0, n, F and r0.
void CKvLambert1SP::_Init(double scale, double originLongitude, double originLatitude,
                          double falseEasting, double falseNorthing,
                          const CKvEllipsoid& ellipsoid) {
  m_dA = ellipsoid.GetMajor();
  m_dInvF = ellipsoid.GetInvFlatness();
  m_dE = ellipsoid.GetEccentricity();
  m_dE2 = m_dE * m_dE;
  m_dLambda0 = originLongitude * KvConst::kDegToRad;
  m_dPhi0 = originLatitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  m_dK0 = scale;

  const double a = m_dA, k0 = m_dK0;
  const double m0 = _M(m_dPhi0, m_dE2);
  double t0 = _T(m_dPhi0, m_dE);
  if (t0 <= 0.0) t0 = 0.0;  // the north pole: tan(pi/4 - phi/2) rounds to 0 or below
  const double n = std::sin(m_dPhi0);
  // An origin on the equator (n = 0) has no cone, one at a pole (t0 = 0) a
  // degenerate one: F and r0 stay NaN rather than come from a division by 0.
  double F = kNaN, r0 = kNaN;
  const double t0n = std::pow(t0, n);
  if (n * t0n != 0.0) {
    F = m0 / (n * t0n);
    r0 = a * k0 * F * t0n;
  }
  m_dM0 = m0;
  m_dT0 = t0;
  m_dN = n;
  m_dF = F;
  m_dR0 = r0;
}

double CKvLambert1SP::_M(double phi, double e2) {
  const double sinPhi = std::sin(phi);
  return std::cos(phi) / std::sqrt(1.0 - e2 * sinPhi * sinPhi);
}

double CKvLambert1SP::_T(double phi, double e) {
  const double eSinPhi = e * std::sin(phi);
  return std::tan(kQuarterPi - 0.5 * phi) * std::pow((1.0 - eSinPhi) / (1.0 + eSinPhi), -0.5 * e);
}

// EPSG Guidance Note 7-2, method 9801, forward.
void CKvLambert1SP::_Forward(double a, double e, double k0, double n, double F, double r0,
                             double lambda0, double FE, double FN, double lon, double lat,
                             double* x, double* y) {
  if (n == 0.0) {
    *x = kNaN;
    *y = kNaN;
    return;
  }
  double t = _T(lat * KvConst::kDegToRad, e);
  if (t <= 0.0) t = 0.0;
  const double r = F * a * k0 * std::pow(t, n);
  const double theta = n * (lon * KvConst::kDegToRad - lambda0);
  *x = r * std::sin(theta) + FE;
  *y = (r0 + FN) - r * std::cos(theta);
}

// EPSG Guidance Note 7-2, method 9801, reverse.  On a southern cone (n < 0)
// r' takes the sign of n and theta' is measured from the negated axes.
void CKvLambert1SP::_Inverse(double a, double e, double k0, double n, double F, double r0,
                             double lambda0, double FE, double FN, double x, double y, double* lon,
                             double* lat) {
  const double akF = k0 * a * F;
  if (n == 0.0 || akF == 0.0) {
    *lon = kNaN;
    *lat = kNaN;
    return;
  }
  const double dx = x - FE;
  const double dy = r0 - (y - FN);
  double thetaP, rP;
  if (n >= 0.0) {
    thetaP = std::atan2(dx, dy);
    rP = std::hypot(dx, dy);
  } else {
    thetaP = std::atan2(-dx, -dy);
    rP = -std::hypot(dx, dy);
  }
  const double tP = std::pow(rP / akF, 1.0 / n);

  // phi = pi/2 - 2 atan(t' ((1 - e sin phi) / (1 + e sin phi))^(e/2)),
  // solved by direct iteration from the spherical value.  The negated test
  // also stops at once on NaN.
  const double halfE = 0.5 * e;
  double phi = KvConst::kHalfPi - 2.0 * std::atan(tP);
  for (int i = 0; i < kMaxIterations; ++i) {
    const double eSinPhi = e * std::sin(phi);
    const double next =
        KvConst::kHalfPi - 2.0 * std::atan(tP * std::pow((1.0 - eSinPhi) / (1.0 + eSinPhi), halfE));
    const bool converged = !(std::fabs(next - phi) >= kTolerance);
    phi = next;
    if (converged) break;
  }

  *lon = (thetaP / n + lambda0) * KvConst::kRadToDeg;
  *lat = phi * KvConst::kRadToDeg;
}

const char* CKvLambert1SP::GetName() { return m_szName; }

void CKvLambert1SP::Geo2Proj(double lon, double lat, double* x, double* y) {
  _Forward(m_dA, m_dE, m_dK0, m_dN, m_dF, m_dR0, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, lon,
           lat, x, y);
}

void CKvLambert1SP::Proj2Geo(double x, double y, double* lon, double* lat) {
  _Inverse(m_dA, m_dE, m_dK0, m_dN, m_dF, m_dR0, m_dLambda0, m_dFalseEasting, m_dFalseNorthing, x,
           y, lon, lat);
}

void CKvLambert1SP::GetOrigin(double* lon, double* lat) {
  *lon = m_dLambda0 * KvConst::kRadToDeg;
  *lat = m_dPhi0 * KvConst::kRadToDeg;
}

double CKvLambert1SP::GetConvergence(double lon, double) {
  return (lon - m_dLambda0 * KvConst::kRadToDeg) * m_dN;
}

void CKvLambert1SP::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  _DefaultAreaAroundOrigin(x0, y0, x1, y1);
}

bool CKvLambert1SP::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  ellipsoid.SetParams(m_dA, m_dInvF);
  return true;
}

CKvProjection* CKvLambert1SP::Clone() { return new CKvLambert1SP(*this); }

void CKvLambert1SP::TransferParameters(CKvPRJParser& parser) {
  CKvLambert1SPProjection set;
  GetMapProjection(set);
  CKvEngineCatalogue::Transfer(m_szName, set, parser);
}

bool CKvLambert1SP::GetMapProjection(CKvLambert1SPProjection& set) {
  return CKvEngineCatalogue::GetMapProjection(m_szName, set);
}

bool CKvLambert1SP::GetEllipsoid(CKvEllipsoid& ellipsoid) {
  return CKvEngineCatalogue::GetEllipsoid(m_szName, ellipsoid);
}
