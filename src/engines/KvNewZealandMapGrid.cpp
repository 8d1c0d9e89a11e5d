#include "engines/KvNewZealandMapGrid.h"

#include <cmath>
#include <complex>

#include "platform/KvConstants.h"

namespace {

typedef std::complex<double> Complex;

// The series count latitude in units of 1e5 arc-seconds.
constexpr double kDegToSeriesUnit = 0.036;              // 3600 / 100000
constexpr double kSeriesUnitToDeg = 27.77777777777778;  // 100000 / 3600

// Newton's method stops when a step is shorter than 1e-12 (compared
// squared, which saves the square root of the modulus) or after 100 steps.
constexpr double kStepSq = 1e-24;
constexpr int kMaxSteps = 100;

// The view of the whole country the grid was made for.
constexpr double kAreaX0 = 2000000.0;
constexpr double kAreaY0 = 5300000.0;
constexpr double kAreaX1 = 3000000.0;
constexpr double kAreaY1 = 6800000.0;

inline Complex Coefficient(const double* series, int n) {
  return Complex(series[2 * (n - 1)], series[2 * (n - 1) + 1]);
}

// sum_{n=1..count} c_n z^n in Horner form, c_n complex.
inline Complex ComplexSeries(const double* series, int count, Complex z) {
  Complex sum = 0.0;
  for (int n = count; n >= 1; --n) sum = (sum + Coefficient(series, n)) * z;
  return sum;
}

// sum_{n=1..count} c_n x^n in Horner form, c_n real.
inline double RealSeries(const double* series, int count, double x) {
  double sum = 0.0;
  for (int n = count; n >= 1; --n) sum = (sum + series[n - 1]) * x;
  return sum;
}

}  // namespace

CKvNewZealandMapGrid::CKvNewZealandMapGrid(CKvNewZealandMapGridProjection* set)
    : CKvNewZealandMapGrid(set->GetName(), set->GetOriginLongitude(), set->GetOriginLatitude(),
                           set->GetFalseEasting(), set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvNewZealandMapGrid::CKvNewZealandMapGrid(const std::string& name, double originLongitude,
                                           double originLatitude, double falseEasting,
                                           double falseNorthing, const CKvEllipsoid& ellipsoid)
    : CKvNewZealandMapGrid(name, originLongitude, originLatitude, falseEasting, falseNorthing,
                           &ellipsoid) {}

CKvNewZealandMapGrid::CKvNewZealandMapGrid(const std::string& name, double originLongitude,
                                           double originLatitude, double falseEasting,
                                           double falseNorthing, const CKvEllipsoid* ellipsoid)
    : CKvEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dOriginLongitude = originLongitude;
  m_dOriginLatitude = originLatitude;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
}

// EPSG Guidance Note 7-2, method 9811, forward: delta phi in 1e5 arc-seconds,
// delta psi = sum A_n delta phi^n, z = delta psi + i delta lambda,
// zeta = sum B_n z^n; easting from Im zeta, northing from Re zeta.
void CKvNewZealandMapGrid::Geo2Proj(double lon, double lat, double* x, double* y) {
  if (!(m_dA > 0.0)) {
    *x = *y = KvConst::kNaN;
    return;
  }
  const double dPhi = (lat - m_dOriginLatitude) * kDegToSeriesUnit;
  const double dPsi = RealSeries(A, kNumA, dPhi);
  const double dLambda = (lon - m_dOriginLongitude) * KvConst::kDegToRad;
  const Complex zeta = ComplexSeries(B, kNumB, Complex(dPsi, dLambda));
  *x = m_dFalseEasting + m_dA * zeta.imag();
  *y = m_dFalseNorthing + m_dA * zeta.real();
}

// EPSG Guidance Note 7-2, method 9811, reverse: theta = sum C_n z^n as the
// first estimate, then Newton's method on sum B_n theta^n = z, written as
// theta <- (z + sum_{n=2..6} (n - 1) B_n theta^n) / (sum_{n=1..6} n B_n theta^(n-1)).
void CKvNewZealandMapGrid::Proj2Geo(double x, double y, double* lon, double* lat) {
  if (!(m_dA > 0.0)) {
    *lon = *lat = KvConst::kNaN;
    return;
  }
  const Complex z((y - m_dFalseNorthing) / m_dA, (x - m_dFalseEasting) / m_dA);
  Complex theta = ComplexSeries(C, kNumC, z);
  for (int step = 0; step < kMaxSteps; ++step) {
    Complex num = 0.0;  // sum_{n=2..6} (n - 1) B_n theta^(n-1)
    Complex den = 0.0;  // sum_{n=2..6} n B_n theta^(n-1)
    for (int n = kNumB; n >= 2; --n) {
      const Complex Bn = Coefficient(B, n);
      num = (num + static_cast<double>(n - 1) * Bn) * theta;
      den = (den + static_cast<double>(n) * Bn) * theta;
    }
    const Complex next = (z + num * theta) / (den + Coefficient(B, 1));
    const double changeSq = std::norm(next - theta);
    theta = next;
    // A NaN step ends the iteration as well.
    if (!(changeSq >= kStepSq)) break;
  }
  const double dPsi = theta.real();
  const double dLambda = theta.imag();
  const double dPhi = RealSeries(D, kNumD, dPsi);
  *lat = m_dOriginLatitude + dPhi * kSeriesUnitToDeg;
  *lon = m_dOriginLongitude + dLambda * KvConst::kRadToDeg;
}

void CKvNewZealandMapGrid::GetOrigin(double* lon, double* lat) {
  *lon = m_dOriginLongitude;
  *lat = m_dOriginLatitude;
}

double CKvNewZealandMapGrid::GetConvergence(double lon, double lat) {
  return _NumericalConvergence(lon, lat);
}

void CKvNewZealandMapGrid::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  *x0 = kAreaX0;
  *y0 = kAreaY0;
  *x1 = kAreaX1;
  *y1 = kAreaY1;
}
