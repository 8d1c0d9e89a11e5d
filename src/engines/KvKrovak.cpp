#include "engines/KvKrovak.h"

#include <algorithm>
#include <cmath>

#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

namespace {

// Half an arc-minute of latitude, the step each way of the numerical
// convergence.
constexpr double kHalfArcMinute = 0.008333333333333333;

}  // namespace

CKvKrovak::CKvKrovak(CKvKrovakProjection* set)
    : CKvKrovak(set->GetName(), set->GetScaleAtPseudoParallel(), set->GetPseudoParallel(),
                set->GetCenterLongitude(), set->GetCenterLatitude(), set->GetAzimuth(),
                set->GetXYPlaneRotation(), set->GetXScale(), set->GetYScale(),
                set->GetFalseEasting(), set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvKrovak::CKvKrovak(const std::string& name, double scaleAtPseudoParallel, double pseudoParallel,
                     double centerLongitude, double centerLatitude, double azimuth,
                     double xyPlaneRotation, double xScale, double yScale, double falseEasting,
                     double falseNorthing, const CKvEllipsoid& ellipsoid)
    : CKvKrovak(name, scaleAtPseudoParallel, pseudoParallel, centerLongitude, centerLatitude,
                azimuth, xyPlaneRotation, xScale, yScale, falseEasting, falseNorthing, &ellipsoid) {
}

// EPSG Guidance Note 7-2, Krovak: A, B, gamma0, t0, n and r0.
CKvKrovak::CKvKrovak(const std::string& name, double scaleAtPseudoParallel, double pseudoParallel,
                     double centerLongitude, double centerLatitude, double azimuth,
                     double xyPlaneRotation, double xScale, double yScale, double falseEasting,
                     double falseNorthing, const CKvEllipsoid* ellipsoid)
    : CKvEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dKP = scaleAtPseudoParallel;
  m_dPhiP = pseudoParallel * KvConst::kDegToRad;
  m_dLambdaO = centerLongitude * KvConst::kDegToRad;
  m_dPhiC = centerLatitude * KvConst::kDegToRad;
  m_dAlphaC = azimuth * KvConst::kDegToRad;
  m_dOmega = xyPlaneRotation * KvConst::kDegToRad;
  m_dXScale = xScale;
  m_dYScale = yScale;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;

  const double e = m_dE, e2 = m_dE2;
  double sinPhiC, cosPhiC, sinPhiP, cosPhiP;
  KvAux::SinCosDeg(centerLatitude, &sinPhiC, &cosPhiC);
  KvAux::SinCosDeg(pseudoParallel, &sinPhiP, &cosPhiP);
  const double w2 = 1.0 - e2 * sinPhiC * sinPhiC;
  const double A = m_dA * std::sqrt(1.0 - e2) / w2;
  const double B = std::sqrt(1.0 + e2 * cosPhiC * cosPhiC * cosPhiC * cosPhiC / (1.0 - e2));
  const double sinGamma0 = sinPhiC / B;
  // ln t0 = ln tan(pi/4 + gamma0/2) - B ln(tan(pi/4 + phiC/2) ((1 - e sin phiC) / (1 + e sin
  // phiC))^(e/2)): the isometric latitudes of gamma0 on the sphere and phiC on the ellipsoid.
  m_dLnT0 = std::atanh(sinGamma0) - B * KvAux::IsometricLatitude(sinPhiC, cosPhiC, e);
  m_dB = B;
  m_dN = sinPhiP;
  // r0 = kP A / tan phiP, kept as r0 tan^n(pi/4 + phiP/2) = r0 exp(n psiP).  A
  // pseudo standard parallel on the equator has no cone (n = 0): NaN.
  m_dR0 = sinPhiP == 0.0 ? KvConst::kNaN
                         : m_dKP * A * cosPhiP / sinPhiP * std::exp(m_dN * std::atanh(sinPhiP));
  KvAux::SinCosDeg(azimuth, &m_dSinAlphaC, &m_dCosAlphaC);
  KvAux::SinCosDeg(xyPlaneRotation, &m_dSinOmega, &m_dCosOmega);
  m_dLonO = centerLongitude;
  m_Phi = KvAux::CKvConformalLatitude(m_dInvF > 0.0 ? 1.0 / m_dInvF : 0.0);
}

// EPSG Guidance Note 7-2, Krovak forward, to Xp and Yp.
void CKvKrovak::_Forward(double lon, double lat, double* Xp, double* Yp) const {
  if (!(m_dB > 0.0)) {  // no ellipsoid
    *Xp = *Yp = KvConst::kNaN;
    return;
  }
  double sinPhi, cosPhi;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  // U on the Gauss sphere, tan(U/2 + pi/4) = t0 (tan(phi/2 + pi/4) ((1 - e sin phi) / (1 + e
  // sin phi))^(e/2))^B.
  double sinU, cosU;
  KvAux::SinCosOfIsometric(m_dLnT0 + m_dB * KvAux::IsometricLatitude(sinPhi, cosPhi, m_dE), &sinU,
                           &cosU);
  const double V = m_dB * KvAux::ReducedLongitude((m_dLonO - lon) * KvConst::kDegToRad);
  const double sinV = std::sin(V), cosV = std::cos(V);
  // T and D on the sphere turned about the cone's axis.
  const double sinT = m_dCosAlphaC * sinU + m_dSinAlphaC * cosU * cosV;
  const double D = std::atan2(cosU * sinV, m_dCosAlphaC * cosU * cosV - m_dSinAlphaC * sinU);
  const double theta = m_dN * D;
  // r = r0 tan^n(pi/4 + phiP/2) / tan^n(T/2 + pi/4)
  const double r = m_dR0 * std::exp(-m_dN * std::atanh(sinT));
  *Xp = r * std::cos(theta);
  *Yp = r * std::sin(theta);
}

void CKvKrovak::Geo2Proj(double lon, double lat, double* x, double* y) {
  double Xp, Yp;
  _Forward(lon, lat, &Xp, &Yp);
  const double sx = m_dXScale * Xp, sy = m_dYScale * Yp;
  *x = sx * m_dCosOmega - sy * m_dSinOmega + m_dFalseEasting;
  *y = sx * m_dSinOmega + sy * m_dCosOmega + m_dFalseNorthing;
}

// EPSG Guidance Note 7-2, Krovak reverse, from the Gauss sphere in closed
// form.
void CKvKrovak::Proj2Geo(double x, double y, double* lon, double* lat) {
  if (m_dXScale == 0.0 || m_dYScale == 0.0 || m_dN == 0.0 || m_dR0 == 0.0 || !(m_dB > 0.0)) {
    *lon = *lat = KvConst::kNaN;
    return;
  }
  const double dx = x - m_dFalseEasting, dy = y - m_dFalseNorthing;
  const double Xp = (dx * m_dCosOmega + dy * m_dSinOmega) / m_dXScale;
  const double Yp = (dy * m_dCosOmega - dx * m_dSinOmega) / m_dYScale;
  const double rP = std::hypot(Xp, Yp);
  const double DP = std::atan2(Yp, Xp) / m_dN;
  // T' from r' = r0 tan^n(pi/4 + phiP/2) / tan^n(T'/2 + pi/4).
  double sinT, cosT;
  KvAux::SinCosOfIsometric(-std::log(rP / m_dR0) / m_dN, &sinT, &cosT);
  const double sinD = std::sin(DP), cosD = std::cos(DP);
  const double sinU = m_dCosAlphaC * sinT - m_dSinAlphaC * cosT * cosD;
  const double VP = std::atan2(cosT * sinD, m_dCosAlphaC * cosT * cosD + m_dSinAlphaC * sinT);
  const double psi = (std::atanh(sinU) - m_dLnT0) / m_dB;
  double sinChi, cosChi;
  KvAux::SinCosOfIsometric(psi, &sinChi, &cosChi);
  *lat = m_Phi.Geodetic(sinChi, cosChi) * KvConst::kRadToDeg;
  *lon = m_dLonO + KvAux::ReducedLongitude(-VP / m_dB) * KvConst::kRadToDeg;
}

void CKvKrovak::GetOrigin(double* lon, double* lat) {
  *lon = m_dLambdaO * KvConst::kRadToDeg;
  *lat = m_dPhiC * KvConst::kRadToDeg;
}

// Grid north is -Xp, grid east -Yp, whatever the engine's output axes; the
// meridian's direction from the points half an arc-minute south and north.
double CKvKrovak::GetConvergence(double lon, double lat) {
  double X1, Y1, X2, Y2;
  _Forward(lon, lat - kHalfArcMinute, &X1, &Y1);
  _Forward(lon, lat + kHalfArcMinute, &X2, &Y2);
  return std::atan2(Y2 - Y1, X1 - X2) * KvConst::kRadToDeg;
}

void CKvKrovak::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  double xa, ya, xb, yb;
  _DefaultAreaAroundOrigin(&xa, &ya, &xb, &yb);
  *x0 = std::min(xa, xb);
  *x1 = std::max(xa, xb);
  *y0 = std::min(ya, yb);
  *y1 = std::max(ya, yb);
}
