#include "engines/KvTransverseMercator.h"

#include <cmath>

#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

namespace {

// Northing added for latitudes continued over the pole.  A round figure for
// half a meridian, used whatever the ellipsoid (see the class comment).
constexpr double kHalfMeridian = 20000000.0;
// |northing - false northing| from which Proj2Geo takes a point to be
// continued over the pole.
constexpr double kQuarterMeridian = 10000000.0;

// Qn = k0 a (1 + arcFactor) / (1 + n), the rectifying radius scaled by k0,
// in the arrangement the engine's results have always been computed with
// (it can differ from the plain product in the last bit).
inline double RectifyingRadius(double a, double k0, double n, double arcFactor) {
  return ((-1.0 - n + k0 + arcFactor * k0) * a) / (1.0 + n) + a;
}

}  // namespace

CKvTransverseMercator::CKvTransverseMercator(CKvTransverseMercatorProjection* set)
    : CKvTransverseMercator(set->GetName(), set->GetScale(), set->GetCentre(),
                            set->GetOriginLatitude(), set->GetFalseEasting(),
                            set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvTransverseMercator::CKvTransverseMercator(const std::string& name, double scale,
                                             double centralMeridian, double originLatitude,
                                             double falseEasting, double falseNorthing,
                                             const CKvEllipsoid& ellipsoid)
    : CKvTransverseMercator(name, scale, centralMeridian, originLatitude, falseEasting,
                            falseNorthing, &ellipsoid) {}

// The northing of a non-zero origin latitude is found by projecting the
// origin itself rather than from a separate meridian-arc formula, so the two
// can never disagree; it is done once, here.
CKvTransverseMercator::CKvTransverseMercator(const std::string& name, double scale,
                                             double centralMeridian, double originLatitude,
                                             double falseEasting, double falseNorthing,
                                             const CKvEllipsoid* ellipsoid)
    : CKvTransverseMercatorBase(name, scale, centralMeridian, originLatitude, falseEasting,
                                falseNorthing, ellipsoid),
      m_bLocal(false),
      m_dOriginNorthing(0.0) {
  _Coeffs();
  m_bLocal = _NameIsLocal();
  if (m_dOriginLatitude != 0.0) {
    double x0 = 0.0;
    _Geo2Proj(m_dCentralMeridian, m_dOriginLatitude, m_dFalseEasting, 0.0, &x0, &m_dOriginNorthing);
  }
}

// Krueger's series in the third flattening n, in Horner form, to n^4
// (Engsager & Poder 2007, table 1).  cbg/cgb: geodetic <-> Gaussian
// latitude; gtu/utg: Gaussian (spherical) <-> ellipsoidal transverse
// Mercator.
void CKvTransverseMercator::_Coeffs() {
  const double n = m_dF / (2.0 - m_dF);
  const double n2 = n * n;
  const double n3 = n2 * n;
  const double n4 = n3 * n;
  m_dN = n;
  m_dArcFactor = n2 / 4.0 + n4 / 64.0;

  m_adCbg[0] = n * (-2.0 + n * (2.0 / 3.0 + n * (4.0 / 3.0 - 82.0 / 45.0 * n)));
  m_adCbg[1] = n2 * (5.0 / 3.0 + n * (-16.0 / 15.0 - 13.0 / 9.0 * n));
  m_adCbg[2] = n3 * (-26.0 / 15.0 + 34.0 / 21.0 * n);
  m_adCbg[3] = 1237.0 / 630.0 * n4;

  m_adCgb[0] = n * (2.0 + n * (-2.0 / 3.0 + n * (-2.0 + 116.0 / 45.0 * n)));
  m_adCgb[1] = n2 * (7.0 / 3.0 + n * (-8.0 / 5.0 - 227.0 / 45.0 * n));
  m_adCgb[2] = n3 * (56.0 / 15.0 - 136.0 / 35.0 * n);
  m_adCgb[3] = 4279.0 / 630.0 * n4;

  m_adGtu[0] = n * (1.0 / 2.0 + n * (-2.0 / 3.0 + n * (5.0 / 16.0 + 41.0 / 180.0 * n)));
  m_adGtu[1] = n2 * (13.0 / 48.0 + n * (-3.0 / 5.0 + 557.0 / 1440.0 * n));
  m_adGtu[2] = n3 * (61.0 / 240.0 - 103.0 / 140.0 * n);
  m_adGtu[3] = 49561.0 / 161280.0 * n4;

  // The n^4 coefficient of the second term is one unit in the last place
  // above 437/1440; the stored figure is kept so that results do not move.
  m_adUtg[0] = n * (-1.0 / 2.0 + n * (2.0 / 3.0 + n * (-37.0 / 96.0 + 1.0 / 360.0 * n)));
  m_adUtg[1] = n2 * (-1.0 / 48.0 + n * (-1.0 / 15.0 + 0.30347222222222225 * n));
  m_adUtg[2] = n3 * (-17.0 / 480.0 + 37.0 / 840.0 * n);
  m_adUtg[3] = -4397.0 / 161280.0 * n4;
}

// Sum of c[k] sin(2(k+1) arg), k = 0..count-1, by Clenshaw's recurrence.
double CKvTransverseMercator::_Csin(const double* c, int count, double arg) {
  return KvAux::ClenshawSin(c, count, std::sin(2.0 * arg), std::cos(2.0 * arg));
}

// The same sum at the complex argument (argReal + i argImag).
void CKvTransverseMercator::_Cksin(const double* c, int count, double argReal, double argImag,
                                   double* real, double* imag) {
  KvAux::ClenshawSinComplex(c, count, std::sin(2.0 * argReal), std::cos(2.0 * argReal),
                            std::sinh(2.0 * argImag), std::cosh(2.0 * argImag), real, imag);
}

void CKvTransverseMercator::_Geo2Proj(double lon, double lat, double falseEasting,
                                      double falseNorthing, double* x, double* y) {
  if (m_bLocal) {
    *x = lon;
    *y = lat;
    return;
  }
  // The northern hemisphere only; the sign is put back at the end.
  const double phi = std::fabs(lat * KvConst::kPi) / 180.0;
  const double phiG = phi + _Csin(m_adCbg, 4, phi);
  const double dLambda = (lon - m_dCentralMeridian) * KvConst::kDegToRad;

  const double sinPhiG = std::sin(phiG);
  const double cosPhiG = std::cos(phiG);
  const double cn = std::atan2(sinPhiG, std::cos(dLambda) * cosPhiG);
  const double ce = std::atanh(std::sin(dLambda) * cosPhiG);
  double dCn = 0.0;
  double dCe = 0.0;
  _Cksin(m_adGtu, 4, cn, ce, &dCn, &dCe);

  const double qn = RectifyingRadius(m_dA, m_dK0, m_dN, m_dArcFactor);
  double northing = qn * (cn + dCn);
  *x = qn * (ce + dCe) + falseEasting;

  if (lat > 90.0) northing = kHalfMeridian - northing;
  if (lat < -90.0)
    northing = northing - kHalfMeridian;
  else if (lat < 0.0)
    northing = -northing;
  *y = northing + falseNorthing;
}

void CKvTransverseMercator::_Proj2Geo(double x, double y, double falseEasting, double falseNorthing,
                                      double* lon, double* lat) {
  if (m_bLocal) {
    *lon = x;
    *lat = y;
    return;
  }
  const double qn = RectifyingRadius(m_dA, m_dK0, m_dN, m_dArcFactor);
  const double dN = y - falseNorthing;
  double cn = std::fabs(dN) / qn;
  double ce = (x - falseEasting) / qn;
  double dCn = 0.0;
  double dCe = 0.0;
  _Cksin(m_adUtg, 4, cn, ce, &dCn, &dCe);
  cn += dCn;
  ce += dCe;

  const double cosCn = std::cos(cn);
  const double dLambda = std::atan2(std::sinh(ce), cosCn);
  const double phiG = std::atan2(std::cos(dLambda) * std::sin(cn), cosCn);
  const double phi = phiG + _Csin(m_adCgb, 4, phiG);
  double latitude = phi * KvConst::kRadToDeg;

  if (dN >= kQuarterMeridian)
    latitude = latitude + 180.0;
  else if (dN <= -kQuarterMeridian)
    latitude = -180.0 - latitude;
  else if (dN < 0.0)
    latitude = -latitude;
  *lat = latitude;
  *lon = dLambda * KvConst::kRadToDeg + m_dCentralMeridian;
}

void CKvTransverseMercator::Geo2Proj(double lon, double lat, double* x, double* y) {
  _Geo2Proj(lon, lat, m_dFalseEasting, m_dFalseNorthing, x, y);
  if (m_dOriginLatitude != 0.0) *y -= m_dOriginNorthing;
}

void CKvTransverseMercator::Proj2Geo(double x, double y, double* lon, double* lat) {
  if (m_dOriginLatitude != 0.0) y += m_dOriginNorthing;
  _Proj2Geo(x, y, m_dFalseEasting, m_dFalseNorthing, lon, lat);
}

bool CKvTransverseMercator::IsLocal() { return m_bLocal; }

bool CKvTransverseMercator::GetMapProjection(CKvTransverseMercatorProjection& set) {
  if (!CKvNamedEngine::GetMapProjection(set)) return false;
  set.SetCentre(m_dCentralMeridian);
  return true;
}
