#include "engines/KvRotatedLongitudeLatitude.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvRotatedLongitudeLatitudeProjection.h"
#include "engines/KvEngineCatalogue.h"
#include "platform/KvConstants.h"

namespace {

// One minute of latitude, the step of the numerical convergence.

// Half the side of the default area around the origin, degrees.
constexpr double kAreaHalfSide = 3.0;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace

CKvRotatedLongitudeLatitude::CKvRotatedLongitudeLatitude(CKvRotatedLongitudeLatitudeProjection* set)
    : m_szName{},
      m_dMajor(0.0),
      m_dInvFlattening(0.0),
      m_dEccentricity(0.0),
      m_dEccentricitySq(0.0),
      m_dSouthPoleLongitude(0.0),
      m_dSouthPoleLatitude(0.0),
      m_dRotationAngle(0.0) {
  CKvEngineCatalogue::CopyName(m_szName, set->GetName());
  if (const CKvEllipsoid* ellipsoid = CKvEngineCatalogue::FindEllipsoid(set->GetEllipsoidID())) {
    _SetEllipsoid(*ellipsoid);
    m_dSouthPoleLongitude = set->GetLongitudeOfSouthPole();
    m_dSouthPoleLatitude = set->GetLatitudeOfSouthPole();
    m_dRotationAngle = set->GetAngleOfRotation();
  }
  _Derive();
}

CKvRotatedLongitudeLatitude::CKvRotatedLongitudeLatitude(const std::string& name,
                                                         double southPoleLongitude,
                                                         double southPoleLatitude,
                                                         double rotationAngle,
                                                         const CKvEllipsoid& ellipsoid)
    : m_szName{},
      m_dSouthPoleLongitude(southPoleLongitude),
      m_dSouthPoleLatitude(southPoleLatitude),
      m_dRotationAngle(rotationAngle) {
  CKvEngineCatalogue::CopyName(m_szName, name);
  _SetEllipsoid(ellipsoid);
  _Derive();
}

void CKvRotatedLongitudeLatitude::_SetEllipsoid(const CKvEllipsoid& ellipsoid) {
  m_dMajor = ellipsoid.GetMajor();
  m_dInvFlattening = ellipsoid.GetInvFlatness();
  m_dEccentricity = ellipsoid.GetEccentricity();
  m_dEccentricitySq = m_dEccentricity * m_dEccentricity;
}

// Mf = R3(lambda_p) R2(-90 - phi_p) R1(0) and Mi = R1(0) R2(90 + phi_p)
// R3(-lambda_p); R1(0) is the identity and is kept so that the products read
// as the rotation sequence they stand for.  Without an ellipsoid the angles
// are 0 and the matrices are still proper rotations.
void CKvRotatedLongitudeLatitude::_Derive() {
  const double lambdaP = m_dSouthPoleLongitude;
  const double phiP = m_dSouthPoleLatitude;
  m_Mf = CMatrix(lambdaP, CMatrix::eRotateZ) * CMatrix(-90.0 - phiP, CMatrix::eRotateY) *
         CMatrix(0.0, CMatrix::eRotateX);
  m_Mi = CMatrix(0.0, CMatrix::eRotateX) * CMatrix(90.0 + phiP, CMatrix::eRotateY) *
         CMatrix(-lambdaP, CMatrix::eRotateZ);

  // An inverse flattening of 0 or less marks a sphere.
  m_dFlattening = m_dInvFlattening > 0.0 ? 1.0 / m_dInvFlattening : 0.0;
  m_dMinor = m_dMajor * (1.0 - m_dFlattening);
  m_dSecondEccentricitySq =
      m_dMinor > 0.0 ? (m_dMajor * m_dMajor - m_dMinor * m_dMinor) / (m_dMinor * m_dMinor) : 0.0;
}

const char* CKvRotatedLongitudeLatitude::GetName() { return m_szName; }

void CKvRotatedLongitudeLatitude::Geo2XYZ(double lon, double lat, double* X, double* Y, double* Z) {
  const double phi = lat * KvConst::kDegToRad;
  const double lambda = lon * KvConst::kDegToRad;
  const double sinPhi = std::sin(phi);
  const double cosPhi = std::cos(phi);
  const double N = m_dMajor / std::sqrt(1.0 - m_dEccentricitySq * sinPhi * sinPhi);
  *X = N * cosPhi * std::cos(lambda);
  *Y = N * cosPhi * std::sin(lambda);
  *Z = (1.0 - m_dEccentricitySq) * N * sinPhi;
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
  const double a = m_dMajor;
  const double b = m_dMinor;
  const double e2 = m_dEccentricitySq;
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
  if (!(m_dMajor > 0.0)) {
    *x = *y = kNaN;
    return;
  }
  double X, Y, Z;
  Geo2XYZ(lon, lat, &X, &Y, &Z);
  const CMatrix v = m_Mi * CMatrix(X, Y, Z);
  XYZ2Geo(v(0, 0), v(0, 1), v(0, 2), x, y);
  *x -= m_dRotationAngle;
}

void CKvRotatedLongitudeLatitude::Proj2Geo(double x, double y, double* lon, double* lat) {
  if (!(m_dMajor > 0.0)) {
    *lon = *lat = kNaN;
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

bool CKvRotatedLongitudeLatitude::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  if (!(m_dMajor > 0.0)) return false;
  ellipsoid.SetParams(m_dMajor, m_dInvFlattening);
  return true;
}

CKvProjection* CKvRotatedLongitudeLatitude::Clone() {
  return new CKvRotatedLongitudeLatitude(*this);
}

// The engine writes the unit "Meter" where the parameter set writes
// "Degree": kept as the catalogue's writers have always had it.
void CKvRotatedLongitudeLatitude::TransferParameters(CKvPRJParser& parser) {
  CKvRotatedLongitudeLatitudeProjection set;
  GetMapProjection(set);
  CKvEngineCatalogue::Transfer(m_szName, set, parser);
}

bool CKvRotatedLongitudeLatitude::GetMapProjection(CKvRotatedLongitudeLatitudeProjection& set) {
  return CKvEngineCatalogue::GetMapProjection(m_szName, set);
}

bool CKvRotatedLongitudeLatitude::GetEllipsoid(CKvEllipsoid& ellipsoid) {
  return CKvEngineCatalogue::GetEllipsoid(m_szName, ellipsoid);
}
