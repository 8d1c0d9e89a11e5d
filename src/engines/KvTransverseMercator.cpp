#include "engines/KvTransverseMercator.h"

#include <algorithm>
#include <cmath>

#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvTransverseMercatorProjection.h"
#include "engines/KvEngineCatalogue.h"
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
    : m_szName{},
      m_dA(0.0),
      m_dB(0.0),
      m_dK0(set->GetScale()),
      m_dF(0.0),
      m_dFalseEasting(set->GetFalseEasting()),
      m_dFalseNorthing(set->GetFalseNorthing()),
      m_dCentralMeridian(set->GetCentre()),
      m_dOriginLatitude(set->GetOriginLatitude()),
      m_bLocal(false) {
  CKvEngineCatalogue::CopyName(m_szName, set->GetName());
  if (m_szName[0] == '\0')
    CKvEngineCatalogue::CopyName(m_szName,
                                 CKvMapProjection::IDtoProjectionString(CKvMapProjection::eNonUtm));
  // Without an ellipsoid a, b and f stay 0: the series degenerate to n = 0
  // and every northing and easting is 0 (Proj2Geo then divides by 0).
  if (const CKvEllipsoid* ellipsoid = CKvEngineCatalogue::FindEllipsoid(set->GetEllipsoidID())) {
    m_dA = ellipsoid->GetMajor();
    m_dB = ellipsoid->GetMinor();
    m_dF = ellipsoid->GetFlatness();
  }
  _Coeffs();
  m_bLocal = CKvMapProjection::IsLocal(m_szName);
}

CKvTransverseMercator::CKvTransverseMercator(const std::string& name, double scale,
                                             double centralMeridian, double originLatitude,
                                             double falseEasting, double falseNorthing,
                                             const CKvEllipsoid& ellipsoid)
    : m_szName{},
      m_dA(ellipsoid.GetMajor()),
      m_dB(ellipsoid.GetMinor()),
      m_dK0(scale),
      m_dF(ellipsoid.GetFlatness()),
      m_dFalseEasting(falseEasting),
      m_dFalseNorthing(falseNorthing),
      m_dCentralMeridian(centralMeridian),
      m_dOriginLatitude(originLatitude),
      m_bLocal(false) {
  CKvEngineCatalogue::CopyName(m_szName, name);
  if (m_szName[0] == '\0')
    CKvEngineCatalogue::CopyName(m_szName,
                                 CKvMapProjection::IDtoProjectionString(CKvMapProjection::eNonUtm));
  _Coeffs();
  m_bLocal = CKvMapProjection::IsLocal(m_szName);
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
  const double t = 2.0 * std::cos(2.0 * arg);
  double h1 = 0.0;
  double h2 = 0.0;
  for (int k = count - 1; k >= 0; --k) {
    const double h0 = t * h1 - h2 + c[k];
    h2 = h1;
    h1 = h0;
  }
  return std::sin(2.0 * arg) * h1;
}

// The same sum at the complex argument (argReal + i argImag).
void CKvTransverseMercator::_Cksin(const double* c, int count, double argReal, double argImag,
                                   double* real, double* imag) {
  const double sin2u = std::sin(2.0 * argReal);
  const double cos2u = std::cos(2.0 * argReal);
  const double sinh2v = std::sinh(2.0 * argImag);
  const double cosh2v = std::cosh(2.0 * argImag);
  // 2 cos(2(u + jv)) = r + j i, with j the imaginary unit
  const double r = 2.0 * cos2u * cosh2v;
  const double i = -2.0 * sin2u * sinh2v;
  double hr1 = 0.0, hi1 = 0.0, hr2 = 0.0, hi2 = 0.0;
  for (int k = count - 1; k >= 0; --k) {
    const double hr0 = r * hr1 - i * hi1 - hr2 + c[k];
    const double hi0 = i * hr1 + r * hi1 - hi2;
    hr2 = hr1;
    hi2 = hi1;
    hr1 = hr0;
    hi1 = hi0;
  }
  // times sin(2(u + jv))
  const double sr = sin2u * cosh2v;
  const double si = cos2u * sinh2v;
  *real = sr * hr1 - si * hi1;
  *imag = sr * hi1 + si * hr1;
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

const char* CKvTransverseMercator::GetName() { return m_szName; }

// The northing of a non-zero origin latitude is found by projecting the
// origin itself rather than from a separate meridian-arc formula, so the two
// can never disagree.
void CKvTransverseMercator::Geo2Proj(double lon, double lat, double* x, double* y) {
  _Geo2Proj(lon, lat, m_dFalseEasting, m_dFalseNorthing, x, y);
  if (m_dOriginLatitude != 0.0) {
    double x0 = 0.0;
    double y0 = 0.0;
    _Geo2Proj(m_dCentralMeridian, m_dOriginLatitude, m_dFalseEasting, 0.0, &x0, &y0);
    *y -= y0;
  }
}

void CKvTransverseMercator::Proj2Geo(double x, double y, double* lon, double* lat) {
  if (m_dOriginLatitude != 0.0) {
    double x0 = 0.0;
    double y0 = 0.0;
    _Geo2Proj(m_dCentralMeridian, m_dOriginLatitude, m_dFalseEasting, 0.0, &x0, &y0);
    y += y0;
  }
  _Proj2Geo(x, y, m_dFalseEasting, m_dFalseNorthing, lon, lat);
}

void CKvTransverseMercator::GetOrigin(double* lon, double* lat) {
  *lon = m_dCentralMeridian;
  *lat = m_dOriginLatitude;
}

// Series for the grid convergence in powers of (lon - central meridian);
// the leading factor is in degrees, so the result is too.
double CKvTransverseMercator::_Convergence(double k0, double a, double b, double centralMeridian,
                                           double lon, double lat) {
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
double CKvTransverseMercator::_PointScale(double k0, double a, double b, double centralMeridian,
                                          double lon, double lat) {
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

double CKvTransverseMercator::GetConvergence(double lon, double lat) {
  if (m_bLocal) return 0.0;
  return _Convergence(m_dK0, m_dA, m_dB, m_dCentralMeridian, lon, lat);
}

double CKvTransverseMercator::GetScaleFactor(double lon, double lat) {
  return _PointScale(m_dK0, m_dA, m_dB, m_dCentralMeridian, lon, lat);
}

void CKvTransverseMercator::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  if (IsLocal()) {
    *x0 = 0.0;
    *y0 = 0.0;
    *x1 = 10000.0;
    *y1 = 10000.0;
    return;
  }
  _DefaultAreaAroundOrigin(x0, y0, x1, y1);
}

bool CKvTransverseMercator::IsLocal() { return m_bLocal; }

bool CKvTransverseMercator::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  if (!(m_dA > 0.0)) return false;
  ellipsoid.SetParams(m_dA, m_dF == 0.0 ? 0.0 : 1.0 / m_dF);
  return true;
}

CKvProjection* CKvTransverseMercator::Clone() { return new CKvTransverseMercator(*this); }

void CKvTransverseMercator::TransferParameters(CKvPRJParser& parser) {
  CKvTransverseMercatorProjection set;
  GetMapProjection(set);
  CKvEngineCatalogue::Transfer(m_szName, set, parser);
}

// The central meridian reported is this engine's own, not the catalogue's:
// an engine set up for one zone of a catalogue entry reports that zone.
bool CKvTransverseMercator::GetMapProjection(CKvTransverseMercatorProjection& set) {
  if (!CKvEngineCatalogue::GetMapProjection(m_szName, set)) return false;
  set.SetCentre(m_dCentralMeridian);
  return true;
}

bool CKvTransverseMercator::GetEllipsoid(CKvEllipsoid& ellipsoid) {
  return CKvEngineCatalogue::GetEllipsoid(m_szName, ellipsoid);
}
