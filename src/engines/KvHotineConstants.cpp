#include "engines/KvHotineConstants.h"

#include <algorithm>
#include <cmath>

#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

namespace {

// Q = exp(w) as the two ratios the formulas use, S / T and 1 / T, so that
// a point at the aposphere's pole of the initial line (w infinite: a
// geographic pole) gives their limits instead of infinity over infinity.
void Ratios(double w, double* sOverT, double* oneOverT) {
  const double Q = std::exp(w);
  if (std::isinf(Q) || Q == 0.0) {
    *sOverT = w > 0.0 ? 1.0 : -1.0;
    *oneOverT = 0.0;
    return;
  }
  const double Qi = 1.0 / Q;
  *oneOverT = 2.0 / (Q + Qi);
  *sOverT = 0.5 * (Q - Qi) * *oneOverT;
}

double Sign(double x) { return x > 0.0 ? 1.0 : (x < 0.0 ? -1.0 : 0.0); }

}  // namespace

// EPSG Guidance Note 7-2, Hotine oblique Mercator: the constants.
CKvHotineConstants::CKvHotineConstants(double a, double e, double kc, double centerLongitude,
                                       double centerLatitude, double azimuth, double gridAngle,
                                       double falseEasting, double falseNorthing,
                                       EFalseOrigin origin) {
  const double e2 = e * e;
  double sinPhiC, cosPhiC;
  KvAux::SinCosDeg(centerLatitude, &sinPhiC, &cosPhiC);
  if (!(cosPhiC > 0.0) || !(kc != 0.0)) {
    // A centre at a pole (or not a number) has no initial line, a zero scale
    // no map.
    m_dB = m_dAOverB = m_dBOverA = m_dUc = m_dFE = m_dFN = KvConst::kNaN;
    return;
  }
  const double w2 = 1.0 - e2 * sinPhiC * sinPhiC;
  const double B = std::sqrt(1.0 + e2 * cosPhiC * cosPhiC * cosPhiC * cosPhiC / (1.0 - e2));
  const double A = a * B * kc * std::sqrt(1.0 - e2) / w2;
  // G = sqrt(D^2 - 1) SIGN(phic), D = sqrt(1 + G^2), F = D + G.
  const double G = sinPhiC / cosPhiC * std::sqrt((1.0 - e2) / w2);
  const double D = std::sqrt(1.0 + G * G);
  double sinAlpha, cosAlpha;
  KvAux::SinCosDeg(azimuth, &sinAlpha, &cosAlpha);
  // gamma0 = asin(sin alphac / D), in [-90, 90] degrees.
  const double cosGamma0 = std::sqrt(G * G + cosAlpha * cosAlpha) / D;
  // asin(G tan gamma0), with G tan gamma0 = +-1 at an azimuth of 90 degrees
  // (clamped against rounding) and 0 on the equator.
  const double gTanGamma0 =
      G == 0.0 ? 0.0 : std::clamp(G * sinAlpha / std::sqrt(G * G + cosAlpha * cosAlpha), -1.0, 1.0);

  m_dE = e;
  m_dB = B;
  m_dAOverB = A / B;
  m_dBOverA = B / A;
  m_dLnF = std::asinh(G);
  m_dPsiC = KvAux::IsometricLatitude(sinPhiC, cosPhiC, e);
  m_dSinGamma0 = sinAlpha / D;
  m_dCosGamma0 = cosGamma0;
  m_dLonC = centerLongitude;
  m_dLambda0FromCentre = -std::asin(gTanGamma0) / B;
  m_dUc = m_dAOverB * std::atan2(std::fabs(G), cosAlpha) * Sign(centerLatitude);
  KvAux::SinCosDeg(gridAngle, &m_dSinGammaC, &m_dCosGammaC);
  m_dFE = falseEasting;
  m_dFN = falseNorthing;
  if (origin == eProjectionCentre) {
    m_dFE -= m_dUc * m_dSinGammaC;
    m_dFN -= m_dUc * m_dCosGammaC;
  }
  m_Phi = KvAux::CKvConformalLatitude(1.0 - std::sqrt(1.0 - e2));  // the flattening
}

// EPSG Guidance Note 7-2, Hotine oblique Mercator (variant A), forward:
// Q, S, T, V, U, then v and u on the aposphere, turned by gammac.
void CKvHotineConstants::Forward(double lon, double lat, double* x, double* y) const {
  if (!(m_dB > 0.0)) {
    *x = *y = KvConst::kNaN;
    return;
  }
  double sinPhi, cosPhi;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);
  double sOverT, oneOverT;
  Ratios(m_dLnF + m_dB * (KvAux::IsometricLatitude(sinPhi, cosPhi, m_dE) - m_dPsiC), &sOverT,
         &oneOverT);
  const double dLambda =
      KvAux::ReducedLongitude((lon - m_dLonC) * KvConst::kDegToRad) - m_dLambda0FromCentre;
  const double V = std::sin(m_dB * dLambda);
  const double cosBdLambda = std::cos(m_dB * dLambda);
  const double U = sOverT * m_dSinGamma0 - V * oneOverT * m_dCosGamma0;
  const double v = -m_dAOverB * std::atanh(U);  // A ln((1 - U) / (1 + U)) / 2B
  // atan2 of both arguments divided by T, which leaves the angle as it is.
  const double u = m_dAOverB * std::atan2(sOverT * m_dCosGamma0 + V * oneOverT * m_dSinGamma0,
                                          cosBdLambda * oneOverT);
  *x = v * m_dCosGammaC + u * m_dSinGammaC + m_dFE;
  *y = u * m_dCosGammaC - v * m_dSinGammaC + m_dFN;
}

// EPSG Guidance Note 7-2, Hotine oblique Mercator (variant A), reverse.
void CKvHotineConstants::Inverse(double x, double y, double* lon, double* lat) const {
  if (!(m_dB > 0.0)) {
    *lon = *lat = KvConst::kNaN;
    return;
  }
  const double dx = x - m_dFE, dy = y - m_dFN;
  const double vP = dx * m_dCosGammaC - dy * m_dSinGammaC;
  const double uP = dy * m_dCosGammaC + dx * m_dSinGammaC;
  double sOverT, oneOverT;
  Ratios(-m_dBOverA * vP, &sOverT, &oneOverT);
  const double VP = std::sin(m_dBOverA * uP);
  const double cosBuA = std::cos(m_dBOverA * uP);
  const double UP = VP * oneOverT * m_dCosGamma0 + sOverT * m_dSinGamma0;
  // t' = (H / sqrt((1 + U') / (1 - U')))^(1 / B), as an isometric latitude.
  const double psi = m_dPsiC + (std::atanh(UP) - m_dLnF) / m_dB;
  double sinChi, cosChi;
  KvAux::SinCosOfIsometric(psi, &sinChi, &cosChi);
  *lat = m_Phi.Geodetic(sinChi, cosChi) * KvConst::kRadToDeg;
  const double dLambda =
      m_dLambda0FromCentre -
      std::atan2(sOverT * m_dCosGamma0 - VP * oneOverT * m_dSinGamma0, cosBuA * oneOverT) / m_dB;
  *lon = m_dLonC + KvAux::ReducedLongitude(dLambda) * KvConst::kRadToDeg;
}
