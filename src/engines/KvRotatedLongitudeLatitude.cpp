#include "engines/KvRotatedLongitudeLatitude.h"

#include <algorithm>
#include <cmath>

#include "platform/KvConstants.h"

namespace {

// Half the side of the default area around the origin, degrees.
constexpr double kAreaHalfSide = 3.0;

}  // namespace

CKvRotatedLongitudeLatitude::CKvRotatedLongitudeLatitude(CKvRotatedLongitudeLatitudeProjection* set)
    : CKvRotatedLongitudeLatitude(set->GetName(), set->GetLongitudeOfSouthPole(),
                                  set->GetLatitudeOfSouthPole(), set->GetAngleOfRotation(),
                                  _FindEllipsoid(*set)) {}

CKvRotatedLongitudeLatitude::CKvRotatedLongitudeLatitude(const std::string& name,
                                                         double southPoleLongitude,
                                                         double southPoleLatitude,
                                                         double rotationAngle,
                                                         const CKvEllipsoid& ellipsoid)
    : CKvRotatedLongitudeLatitude(name, southPoleLongitude, southPoleLatitude, rotationAngle,
                                  &ellipsoid) {}

// Mf = R3(lambda_p) R2(-90 - phi_p) R1(0) and Mi = R1(0) R2(90 + phi_p)
// R3(-lambda_p); R1(0) is the identity and is kept so that the products read
// as the rotation sequence they stand for.  Without an ellipsoid the angles
// are 0 and the matrices are still proper rotations.
CKvRotatedLongitudeLatitude::CKvRotatedLongitudeLatitude(const std::string& name,
                                                         double southPoleLongitude,
                                                         double southPoleLatitude,
                                                         double rotationAngle,
                                                         const CKvEllipsoid* ellipsoid)
    : CKvEngine(name) {
  if (ellipsoid) {
    _SetEllipsoid(*ellipsoid);
    m_dSouthPoleLongitude = southPoleLongitude;
    m_dSouthPoleLatitude = southPoleLatitude;
    m_dRotationAngle = rotationAngle;
  }
  const double lambdaP = m_dSouthPoleLongitude;
  const double phiP = m_dSouthPoleLatitude;
  m_Mf = CMatrix(lambdaP, CMatrix::eRotateZ) * CMatrix(-90.0 - phiP, CMatrix::eRotateY) *
         CMatrix(0.0, CMatrix::eRotateX);
  m_Mi = CMatrix(0.0, CMatrix::eRotateX) * CMatrix(90.0 + phiP, CMatrix::eRotateY) *
         CMatrix(-lambdaP, CMatrix::eRotateZ);

  // An inverse flattening of 0 or less marks a sphere.
  m_dFlattening = m_dInvF > 0.0 ? 1.0 / m_dInvF : 0.0;
  m_dMinor = m_dA * (1.0 - m_dFlattening);
  m_dSecondEccentricitySq =
      m_dMinor > 0.0 ? (m_dA * m_dA - m_dMinor * m_dMinor) / (m_dMinor * m_dMinor) : 0.0;
}
void CKvRotatedLongitudeLatitude::Geo2XYZ(double lon, double lat, double* X, double* Y, double* Z) {
  const double phi = lat * KvConst::kDegToRad;
  const double lambda = lon * KvConst::kDegToRad;
  const double sinPhi = std::sin(phi);
  const double cosPhi = std::cos(phi);
  const double N = m_dA / std::sqrt(1.0 - m_dE2 * sinPhi * sinPhi);
  *X = N * cosPhi * std::cos(lambda);
  *Y = N * cosPhi * std::sin(lambda);
  *Z = (1.0 - m_dE2) * N * sinPhi;
}

// Bowring's closed form:
//   u = atan((Z / p) ((1 - f) + e^2 a / r)),
//   phi = atan((Z + e'^2 b sin^3 u) / (p - e^2 a cos^3 u)).
// Both are taken as atan2 of numerator and denominator, and sin u, cos u
// straight from the two parts of u's argument: the same angles wherever p > 0
// (both denominators are then positive), no further trigonometric calls, and
// the right latitude of +-90 on the polar axis (p = 0), where the quotients
// are infinite.
void CKvRotatedLongitudeLatitude::XYZ2Geo(double X, double Y, double Z, double* lon, double* lat) {
  const double a = m_dA;
  const double b = m_dMinor;
  const double e2 = m_dE2;
  const double ep2 = m_dSecondEccentricitySq;
  const double p = std::sqrt(X * X + Y * Y);
  const double r = std::sqrt(p * p + Z * Z);
  const double tu = Z * ((1.0 - m_dFlattening) + e2 * a / r);  // tan u = tu / p
  const double hyp = std::sqrt(tu * tu + p * p);
  const double sinU = tu / hyp;
  const double cosU = p / hyp;
  const double phi = std::atan2(Z + ep2 * b * sinU * sinU * sinU, p - e2 * a * cosU * cosU * cosU);
  const double lambda = std::atan2(Y, X);
  *lon = lambda * KvConst::kRadToDeg;
  *lat = phi * KvConst::kRadToDeg;
}

// The products go through CMatrix temporaries, as the rotation is defined;
// they cost about 60 ns of the 150 to 200 ns per point.
void CKvRotatedLongitudeLatitude::Geo2Proj(double lon, double lat, double* x, double* y) {
  if (!(m_dA > 0.0)) {
    *x = *y = KvConst::kNaN;
    return;
  }
  double X, Y, Z;
  Geo2XYZ(lon, lat, &X, &Y, &Z);
  const CMatrix v = m_Mi * CMatrix(X, Y, Z);
  XYZ2Geo(v(0, 0), v(0, 1), v(0, 2), x, y);
  *x -= m_dRotationAngle;
}

void CKvRotatedLongitudeLatitude::Proj2Geo(double x, double y, double* lon, double* lat) {
  if (!(m_dA > 0.0)) {
    *lon = *lat = KvConst::kNaN;
    return;
  }
  double X, Y, Z;
  Geo2XYZ(x + m_dRotationAngle, y, &X, &Y, &Z);
  const CMatrix v = m_Mf * CMatrix(X, Y, Z);
  XYZ2Geo(v(0, 0), v(0, 1), v(0, 2), lon, lat);
}

void CKvRotatedLongitudeLatitude::GetOrigin(double* lon, double* lat) {
  *lon = m_dSouthPoleLongitude;
  *lat = m_dSouthPoleLatitude + 90.0;
}

double CKvRotatedLongitudeLatitude::GetConvergence(double lon, double lat) {
  return _NumericalConvergence(lon, lat);
}

void CKvRotatedLongitudeLatitude::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  double lon0 = 0.0, lat0 = 0.0;
  GetOrigin(&lon0, &lat0);
  Geo2Proj(std::max(lon0 - kAreaHalfSide, -180.0), std::max(lat0 - kAreaHalfSide, -90.0), x0, y0);
  Geo2Proj(std::min(lon0 + kAreaHalfSide, 180.0), std::min(lat0 + kAreaHalfSide, 90.0), x1, y1);
}

bool CKvRotatedLongitudeLatitude::IsGeographical() { return true; }
