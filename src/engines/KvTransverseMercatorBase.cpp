#include "engines/KvTransverseMercatorBase.h"

#include <cmath>

#include "platform/KvConstants.h"

namespace KvTransverseMercatorSeries {

// Series for the grid convergence in powers of (lon - central meridian);
// the leading factor is in degrees, so the result is too.
double Convergence(double k0, double a, double b, double centralMeridian, double lon, double lat) {
  const double phi = lat * KvConst::kDegToRad;
  const double dLambdaDeg = lon - centralMeridian;
  const double dLambda = dLambdaDeg * KvConst::kDegToRad;
  const double ka = k0 * a;
  const double kb = k0 * b;
  const double e2 = (ka * ka - kb * kb) / (ka * ka);
  const double sinPhi = std::sin(phi);
  const double cosPhi = std::cos(phi);
  const double sin2 = sinPhi * sinPhi;
  const double cos2 = cosPhi * cosPhi;
  const double eta2 = (1.0 - e2 * sin2) / (1.0 - e2) - 1.0;
  const double t = sin2 / cos2;
  const double l2 = dLambda * dLambda * cos2;
  return dLambdaDeg * sinPhi *
         (1.0 + l2 * ((1.0 + 3.0 * eta2 + 2.0 * eta2 * eta2) / 3.0 + l2 * (2.0 - t) / 15.0));
}

// Kept as the catalogue has always computed it: the L^2 term is not divided
// by 24 and its last term is tan^2(eta^2 * phi), so beyond the first order
// in L the figure is not the textbook point scale.
double PointScale(double k0, double a, double b, double centralMeridian, double lon, double lat) {
  const double phi = lat * KvConst::kDegToRad;
  const double dLambda = (lon - centralMeridian) * KvConst::kDegToRad;
  const double ka = k0 * a;
  const double kb = k0 * b;
  const double e2 = (ka * ka - kb * kb) / (ka * ka);
  const double sinPhi = std::sin(phi);
  const double cosPhi = std::cos(phi);
  const double eta2 = (1.0 - e2 * sinPhi * sinPhi) / (1.0 - e2) - 1.0;
  const double tanPhi = std::tan(phi);
  const double tanEtaPhi = std::tan(eta2 * phi);
  const double l = dLambda * dLambda * cosPhi * cosPhi;
  return k0 * (1.0 + 0.5 * l * (1.0 + eta2) +
               l * l * (5.0 - 4.0 * tanPhi * tanPhi + 14.0 * eta2 - 28.0 * tanEtaPhi * tanEtaPhi));
}

}  // namespace KvTransverseMercatorSeries
