#include "engines/KvTransverseMercatorJHS.h"

#include <cmath>

#include "catalogue/KvMapProjData.h"
#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

namespace {

// Hyperbolic functions for the reverse direction, each from one exp or log.
// The library's versions go through expm1 and log1p to keep their relative
// accuracy near 0; here every result is added to terms of order 1 (or, in
// the latitude iteration, multiplied by e), so an absolute error of about
// 1e-16 is all that matters, and these are two to three times cheaper.
inline void SinhCosh(double x, double* sh, double* ch) {
  const double ex = std::exp(x);
  const double inv = 1.0 / ex;
  *sh = 0.5 * (ex - inv);
  *ch = 0.5 * (ex + inv);
}

inline double Sinh(double x) {
  const double ex = std::exp(x);
  return 0.5 * (ex - 1.0 / ex);
}

inline double Tanh(double x) { return 1.0 - 2.0 / (std::exp(2.0 * x) + 1.0); }

// |x| < 1
inline double Atanh(double x) { return 0.5 * std::log((1.0 + x) / (1.0 - x)); }

inline double Asinh(double x) {
  return std::copysign(std::log(std::fabs(x) + std::sqrt(x * x + 1.0)), x);
}

}  // namespace

CKvTransverseMercatorJHS::CKvTransverseMercatorJHS(CKvTransverseMercatorProjection* set)
    : CKvTransverseMercatorJHS(set->GetName(), set->GetScale(), set->GetCentre(),
                               set->GetOriginLatitude(), set->GetFalseEasting(),
                               set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvTransverseMercatorJHS::CKvTransverseMercatorJHS(const std::string& name, double scale,
                                                   double centralMeridian, double originLatitude,
                                                   double falseEasting, double falseNorthing,
                                                   const CKvEllipsoid& ellipsoid)
    : CKvTransverseMercatorJHS(name, scale, centralMeridian, originLatitude, falseEasting,
                               falseNorthing, &ellipsoid) {}

// Without an ellipsoid e stays 0 with a, b and f: B is 0, every projected
// coordinate is the false origin and Proj2Geo divides by 0.
CKvTransverseMercatorJHS::CKvTransverseMercatorJHS(const std::string& name, double scale,
                                                   double centralMeridian, double originLatitude,
                                                   double falseEasting, double falseNorthing,
                                                   const CKvEllipsoid* ellipsoid)
    : CKvTransverseMercatorBase(name, scale, centralMeridian, originLatitude, falseEasting,
                                falseNorthing, ellipsoid),
      m_dE(ellipsoid ? ellipsoid->GetEccentricity() : 0.0),
      m_bLocal(false) {
  _Coeffs();
  m_bLocal = _NameIsLocal();
}

// Constants of the projection, EPSG Guidance Note 7-2, method 9807: n, B,
// h1..h4, h'1..h'4 and the meridian arc M0 of the origin latitude.
void CKvTransverseMercatorJHS::_Coeffs() {
  const double n = m_dF / (2.0 - m_dF);
  m_dN = n;
  m_dBigB = m_dA * (1.0 + n * n / 4.0 + n * n * n * n / 64.0) / (1.0 + n);
  CKvMapProjData::ComputeFourierCoefficients(CKvMapProjData::eTransverseMercator, true, n, m_adH);
  CKvMapProjData::ComputeFourierCoefficients(CKvMapProjData::eTransverseMercator, false, n,
                                             m_adHInv);

  // The general formula breaks down at the poles (tan phi0 is infinite), so
  // they take the quarter meridian directly.
  const double phi0 = m_dOriginLatitude * KvConst::kDegToRad;
  if (phi0 == 0.0) {
    m_dM0 = 0.0;
  } else if (KvConst::IsClose(phi0, KvConst::kHalfPi)) {
    m_dM0 = m_dBigB * KvConst::kHalfPi;
  } else if (KvConst::IsClose(phi0, -KvConst::kHalfPi)) {
    m_dM0 = -m_dBigB * KvConst::kHalfPi;
  } else {
    double sinPhi0, cosPhi0;
    KvAux::SinCosDeg(m_dOriginLatitude, &sinPhi0, &cosPhi0);
    const double Q0 = KvAux::IsometricLatitude(sinPhi0, cosPhi0, m_dE);
    const double beta0 = std::atan(std::sinh(Q0));
    const double xi00 = std::asin(std::sin(beta0));
    const double xi0 =
        xi00 + KvAux::ClenshawSin(m_adH, 4, std::sin(2.0 * xi00), std::cos(2.0 * xi00));
    m_dM0 = m_dBigB * xi0;
  }
}

// EPSG Guidance Note 7-2, method 9807, forward.  The auxiliary angles beta,
// eta0 and xi0 are the Guidance Note's; only their sines, cosines and the
// hyperbolic functions of eta0 enter the series, and those follow from
// tan(beta) = sinh(Q) and tanh(eta0) = cos(beta) sin(dLambda) without
// further trigonometric calls.
void CKvTransverseMercatorJHS::Geo2Proj(double lon, double lat, double* x, double* y) {
  if (m_bLocal) {
    *x = lon;
    *y = lat;
    return;
  }
  const double dLambda = (lon - m_dCentralMeridian) * KvConst::kDegToRad;
  double sinPhi, cosPhi;
  KvAux::SinCosDeg(lat, &sinPhi, &cosPhi);

  const double Q = KvAux::IsometricLatitude(sinPhi, cosPhi, m_dE);
  // beta = atan(sinh Q)
  const double sinBeta = std::tanh(Q);
  const double cosBeta = 1.0 / std::cosh(Q);
  // eta0 = atanh(cos(beta) sin(dLambda))
  const double w = cosBeta * std::sin(dLambda);
  const double eta0 = std::atanh(w);
  const double coshEta0 = 1.0 / std::sqrt((1.0 - w) * (1.0 + w));
  // xi0 = asin(sin(beta) cosh(eta0)); its cosine is cos(beta) cos(dLambda)
  // cosh(eta0), which stays accurate where the sine approaches 1.  atan2
  // gives the same angle wherever |dLambda| < 90 degrees.
  const double sinXi0 = sinBeta * coshEta0;
  const double cosXi0 = cosBeta * std::cos(dLambda) * coshEta0;
  const double xi0 = std::atan2(sinXi0, cosXi0);

  // xi = xi0 + sum h_k sin(2k xi0) cosh(2k eta0)
  // eta = eta0 + sum h_k cos(2k xi0) sinh(2k eta0)
  // The double angles come from the half angles without further calls:
  // sinh(2 eta0) = 2 w cosh^2(eta0), cosh(2 eta0) = (1 + w^2) cosh^2(eta0).
  const double coshSq = coshEta0 * coshEta0;
  double dXi, dEta;
  KvAux::ClenshawSinComplex(m_adH, 4, 2.0 * sinXi0 * cosXi0, (cosXi0 - sinXi0) * (cosXi0 + sinXi0),
                            2.0 * w * coshSq, (1.0 + w * w) * coshSq, &dXi, &dEta);
  const double xi = xi0 + dXi;
  const double eta = eta0 + dEta;

  *x = m_dFalseEasting + m_dK0 * m_dBigB * eta;
  *y = m_dFalseNorthing + m_dK0 * (m_dBigB * xi - m_dM0);
}

// EPSG Guidance Note 7-2, method 9807, reverse.  As in the forward
// direction, beta' is used through tan(beta') and cos(beta'), formed from
// xi0' and eta0' directly.
void CKvTransverseMercatorJHS::Proj2Geo(double x, double y, double* lon, double* lat) {
  if (m_bLocal) {
    *lon = x;
    *lat = y;
    return;
  }
  const double kB = m_dBigB * m_dK0;
  const double etaP = (x - m_dFalseEasting) / kB;
  const double xiP = ((y - m_dFalseNorthing) + m_dK0 * m_dM0) / kB;

  // xi0' = xi' - sum h'_k sin(2k xi') cosh(2k eta')
  // eta0' = eta' - sum h'_k cos(2k xi') sinh(2k eta')
  double sinh2EtaP, cosh2EtaP;
  SinhCosh(2.0 * etaP, &sinh2EtaP, &cosh2EtaP);
  double dXi, dEta;
  KvAux::ClenshawSinComplex(m_adHInv, 4, std::sin(2.0 * xiP), std::cos(2.0 * xiP), sinh2EtaP,
                            cosh2EtaP, &dXi, &dEta);
  const double xi0P = xiP - dXi;
  const double eta0P = etaP - dEta;

  // beta' = asin(sin(xi0') / cosh(eta0')), so that
  // cos(beta') cosh(eta0') = sqrt(sinh^2(eta0') + cos^2(xi0')) =: r.
  const double sinXi0P = std::sin(xi0P);
  const double cosXi0P = std::cos(xi0P);
  double sinhEta0P, coshEta0P;
  SinhCosh(eta0P, &sinhEta0P, &coshEta0P);
  const double r = std::sqrt(sinhEta0P * sinhEta0P + cosXi0P * cosXi0P);
  const double QP = Asinh(sinXi0P / r);  // asinh(tan(beta'))

  // Q'' = Q' + e atanh(e tanh Q''), which the Guidance Note solves by direct
  // iteration (each step gains only a factor of about e^2, some seven steps
  // in all).  Newton's method on the same equation converges quadratically
  // with a constant below e^2, so once a step is under 1e-7 the error left
  // is under 1e-16: two steps for terrestrial ellipsoids.
  // The derivative 1 - e^2 (1 - th^2) / (1 - e^2 th^2) is (1 - e^2) / (1 -
  // e^2 th^2), so a step costs a multiplication where it would cost two
  // divisions.
  const double e = m_dE;
  const double e2 = e * e;
  const double invOneMinusE2 = 1.0 / (1.0 - e2);
  double Q = QP;
  double th = sinXi0P / coshEta0P;  // tanh(Q') = sin(beta')
  for (int i = 0; i < 10; ++i) {
    const double g = Q - QP - e * Atanh(e * th);
    const double step = g * (1.0 - e2 * th * th) * invOneMinusE2;
    Q -= step;
    if (!(std::fabs(step) >= 1e-7)) break;
    th = Tanh(Q);
  }

  *lat = std::atan(Sinh(Q)) * KvConst::kRadToDeg;  // phi = atan(sinh Q'')
  // dLambda = asin(tanh(eta0') / cos(beta')) = atan2(sinh(eta0'), cos(xi0'))
  *lon = m_dCentralMeridian + std::atan2(sinhEta0P, cosXi0P) * KvConst::kRadToDeg;
}

bool CKvTransverseMercatorJHS::IsLocal() { return m_bLocal; }
