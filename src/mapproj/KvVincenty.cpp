#include "mapproj/KvVincenty.h"

#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "mapproj/KvGeodesicInverse.h"
#include "platform/KvConstants.h"

namespace {

constexpr int kMaxIterations = 100;
constexpr double kInv16384 = 6.103515625e-5;  // 1 / 16384
constexpr double kInv1024 = 0.0009765625;     // 1 / 1024

}  // namespace

CKvVincenty::CKvVincenty(const CKvEllipsoid& ellipsoid)
    : m_dA(ellipsoid.GetMajor()),
      m_dB(ellipsoid.GetMinor()),
      m_dF(ellipsoid.GetFlatness()),
      m_dEp2((m_dA * m_dA - m_dB * m_dB) / (m_dB * m_dB)) {}

CKvVincenty::~CKvVincenty() = default;

double CKvVincenty::PolyA(double u2) const {
  return 1.0 + u2 * kInv16384 * (4096.0 + u2 * (-768.0 + u2 * (320.0 - 175.0 * u2)));
}

double CKvVincenty::PolyB(double u2) const {
  return u2 * kInv1024 * (256.0 + u2 * (-128.0 + u2 * (74.0 - 47.0 * u2)));
}

void CKvVincenty::GetPoint(double lon1, double lat1, double azimuth, double distance,
                           double& lon2, double& lat2, double& azimuth2) const {
  const double f = m_dF;
  const double b = m_dB;
  const double s = distance;
  const double phi1 = lat1 * KvConst::kDegToRad;
  const double alpha1 = azimuth * KvConst::kDegToRad;
  const double sinAlpha1 = std::sin(alpha1);
  const double cosAlpha1 = std::cos(alpha1);

  // (1 - f) tan(phi) would be tan(phi) for a sphere anyway; skipping the
  // round trip through tan keeps the start latitude exact.
  const double U1 = f > 0.0 ? std::atan((1.0 - f) * std::tan(phi1)) : phi1;
  const double sinU1 = std::sin(U1);
  const double cosU1 = std::cos(U1);

  const double sigma1 = std::atan2(std::tan(U1), cosAlpha1);
  const double sinAlpha = cosU1 * sinAlpha1;
  const double cos2Alpha = 1.0 - sinAlpha * sinAlpha;
  const double u2 = m_dEp2 * cos2Alpha;
  const double A = PolyA(u2);
  const double B = PolyB(u2);

  const double sigma0 = s / (b * A);
  double sigma = sigma0;
  double cos2SigmaM = 0.0;
  // Vincenty's (5), (6), (7): one refinement of sigma from the previous one.
  auto refine = [&]() {
    const double twoSigmaM = 2.0 * sigma1 + sigma;
    cos2SigmaM = std::cos(twoSigmaM);
    const double sinSigma = std::sin(sigma);
    const double cosSigma = std::cos(sigma);
    const double c2 = cos2SigmaM * cos2SigmaM;
    const double deltaSigma =
        B * sinSigma *
        (cos2SigmaM + B / 4.0 *
                          (cosSigma * (2.0 * c2 - 1.0) -
                           B / 6.0 * cos2SigmaM * (4.0 * sinSigma * sinSigma - 3.0) *
                               (4.0 * c2 - 3.0)));
    sigma = sigma0 + deltaSigma;
  };
  bool converged = false;
  for (int i = 0; i < kMaxIterations && !converged; ++i) {
    const double previous = sigma;
    refine();
    converged = KvConst::IsClose(sigma, previous);
  }
  // Out of steps (only for input such as NaN): take one more refinement so
  // that cos 2sigma_m and sigma at least come from the same pass.
  if (!converged) refine();

  const double sinSigma = std::sin(sigma);
  const double cosSigma = std::cos(sigma);

  // (8)
  const double t = sinU1 * sinSigma - cosU1 * cosSigma * cosAlpha1;
  const double phi2 = std::atan2(sinU1 * cosSigma + cosU1 * sinSigma * cosAlpha1,
                                 (1.0 - f) * std::sqrt(sinAlpha * sinAlpha + t * t));
  // (9), (10), (11)
  const double lambda =
      std::atan2(sinSigma * sinAlpha1, cosU1 * cosSigma - sinU1 * sinSigma * cosAlpha1);
  const double C = f / 16.0 * cos2Alpha * (4.0 + f * (4.0 - 3.0 * cos2Alpha));
  const double L =
      lambda - (1.0 - C) * f * sinAlpha *
                   (sigma + C * sinSigma *
                                (cos2SigmaM + C * cosSigma * (2.0 * cos2SigmaM * cos2SigmaM - 1.0)));
  // (12)
  const double alpha2 =
      std::atan2(sinAlpha, cosU1 * cosSigma * cosAlpha1 - sinU1 * sinSigma);

  lat2 = phi2 * KvConst::kRadToDeg;
  lon2 = lon1 + L * KvConst::kRadToDeg;
  azimuth2 = alpha2 * KvConst::kRadToDeg;
}

void CKvVincenty::GetDistance(double lon1, double lat1, double lon2, double lat2, double& distance,
                              double& azimuth1, double& azimuth2) const {
  CKvGeodesicInverse(m_dA, m_dF).Solve(lon1, lat1, lon2, lat2, distance, azimuth1, azimuth2);
}
