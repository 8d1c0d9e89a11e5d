#include "datum/KvDatumConverter.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include "cart/KvCartSetup.h"
#include "catalogue/KvEllipsoid.h"
#include "catalogue/KvParameterSet.h"
#include "datum/KvDatumShift.h"
#include "engines/KvProjection.h"
#include "mapproj/KvMapProjection.h"
#include "platform/KvConstants.h"

namespace {

typedef CKvCartDef::ETypeOfDatumShift EShift;

constexpr int kCount = CKvDatumShift::kValueCount;
constexpr int kTranslations = 3;

// A null system stands for one without engine; the transforms of an
// engineless CKvMapProjection write nothing either (Geo2Proj applies its
// default, identity units).
void Proj2Geo(const CKvMapProjection* system, double x, double y, double* lon, double* lat) {
  if (system) system->Proj2Geo(x, y, lon, lat);
}

void Geo2Proj(const CKvMapProjection* system, double lon, double lat, double* x, double* y) {
  if (system) system->Geo2Proj(lon, lat, x, y);
}

void Geo2XYZ(const CKvMapProjection* system, double lon, double lat, double h, double* X, double* Y,
             double* Z) {
  if (system) system->Geo2XYZ(lon, lat, h, X, Y, Z);
}

void XYZ2Geo(const CKvMapProjection* system, double X, double Y, double Z, double* lon, double* lat,
             double* h) {
  if (system) system->XYZ2Geo(X, Y, Z, lon, lat, h);
}

// The engine's own ellipsoid; false when there is no engine or it knows none.
bool EngineEllipsoid(const CKvMapProjection* system, CKvEllipsoid& ellipsoid) {
  CKvProjection* engine = system ? system->GetProjection() : nullptr;
  return engine && engine->GetAnonymousEllipsoid(ellipsoid);
}

CKvDatumShift SystemShift(const CKvMapProjection* system) {
  CKvDatumShift shift;
  if (system) system->GetDatumShift(shift);
  return shift;
}

// TOWGS84 units (metres, arc-seconds, ppm) to the ones the shift formulas
// use (metres, radians, a fraction).
void StoreShift(const CKvDatumShift& shift, EShift& type, double* p) {
  type = shift.GetType();
  for (int i = 0; i < kCount; ++i) p[i] = 0.0;
  if (type == CKvCartDef::e7Parameter) {
    for (int i = 0; i < kTranslations; ++i) p[i] = shift[i];
    for (int i = kTranslations; i < 6; ++i) p[i] = shift[i] * KvConst::kArcSecToRad;
    p[6] = shift[6] * KvConst::kPpmToFraction;
  } else if (type == CKvCartDef::e3Parameter) {
    for (int i = 0; i < kTranslations; ++i) p[i] = shift[i];
  }
}

// To WGS 84: X' = (1 + s) R X + T with the position-vector small-angle R.
void ShiftForward(EShift type, const double* p, double& X, double& Y, double& Z) {
  const double tx = p[0], ty = p[1], tz = p[2];
  if (type == CKvCartDef::e7Parameter) {
    const double rx = p[3], ry = p[4], rz = p[5];
    const double k = 1.0 + p[6];
    const double X1 = (X - rz * Y + ry * Z) * k + tx;
    const double Y1 = (rz * X + Y - rx * Z) * k + ty;
    const double Z1 = (-ry * X + rx * Y + Z) * k + tz;
    X = X1;
    Y = Y1;
    Z = Z1;
  } else if (type == CKvCartDef::e3Parameter) {
    X += tx;
    Y += ty;
    Z += tz;
  }
}

// From WGS 84: X = R^T (X' - T) / (1 + s); R^T stands in for R^-1.
void ShiftBackward(EShift type, const double* p, double& X, double& Y, double& Z) {
  const double tx = p[0], ty = p[1], tz = p[2];
  if (type == CKvCartDef::e7Parameter) {
    const double rx = p[3], ry = p[4], rz = p[5];
    const double k = 1.0 + p[6];
    const double dX = X - tx, dY = Y - ty, dZ = Z - tz;
    X = (dX + rz * dY - ry * dZ) / k;
    Y = (-rz * dX + dY + rx * dZ) / k;
    Z = (ry * dX - rx * dY + dZ) / k;
  } else if (type == CKvCartDef::e3Parameter) {
    X -= tx;
    Y -= ty;
    Z -= tz;
  }
}

// The catalogue record a system was resolved from: the record of its name,
// provided the system carries that record's own datum shift (a WKT text that
// merely borrows a record's name and says another shift is not the record).
const CKvMapProjData* CatalogueRecord(const CKvMapProjection* system) {
  if (!system || !system->GetProjection()) return nullptr;
  const CKvMapProjData* record =
      CKvCartSetup::Instance().m_MapProjectionList.GetMapProjection(system->GetName());
  const CKvMapProjDetails* details = CKvParameterSetBase::DetailsOf(record);
  if (!details) return nullptr;
  CKvDatumShift own;
  details->GetDatumShift(own);
  return own == SystemShift(system) ? record : nullptr;
}

// Two catalogue systems on one datum need no shift between them, as the
// registry intends, even when each record carries the transformation to
// WGS 84 chosen for its own area of use.
bool OnOneCatalogueDatum(const CKvMapProjection* a, const CKvMapProjection* b) {
  const CKvMapProjData* ra = CatalogueRecord(a);
  const CKvMapProjData* rb = CatalogueRecord(b);
  if (!ra || !rb) return false;
  const std::string datum = ra->GetBranchName();
  return !datum.empty() && datum == rb->GetBranchName();
}

// A stored end as a CKvDatumShift, for that class's equality rule.
CKvDatumShift AsShift(EShift type, const double* p) {
  return CKvDatumShift(type, p[0], p[1], p[2], p[3], p[4], p[5], p[6]);
}

}  // namespace

// ---------------------------------------------------------------------------
// Construction

CKvDatumConverter::CKvDatumConverter(const char* source, const char* target)
    : m_pSource(nullptr), m_pTarget(nullptr), m_bOwnsSystems(true) {
  if (!source || !target) throw std::invalid_argument("null coordinate-system string");
  m_bLocal = CKvMapProjection::IsLocal(source) || CKvMapProjection::IsLocal(target);
  // The source must not leak when the target raises ("UTM" alone).
  // The string form lets an allocation failure reach the caller instead of
  // ending the process.
  std::unique_ptr<CKvMapProjection> s(new CKvMapProjection(std::string(source)));
  std::unique_ptr<CKvMapProjection> t(new CKvMapProjection(std::string(target)));
  m_pSource = s.release();
  m_pTarget = t.release();
  _init();
}

CKvDatumConverter::CKvDatumConverter(CKvMapProjection* source, CKvMapProjection* target)
    : m_pSource(source), m_pTarget(target), m_bOwnsSystems(false) {
  m_bLocal = (source && CKvMapProjection::IsLocal(source->GetName())) ||
             (target && CKvMapProjection::IsLocal(target->GetName()));
  _init();
}

CKvDatumConverter::CKvDatumConverter(const CKvDatumConverter& other)
    : CKvCartDef(other), m_pSource(nullptr), m_pTarget(nullptr), m_bOwnsSystems(false) {
  _copy(other);
}

CKvDatumConverter& CKvDatumConverter::operator=(const CKvDatumConverter& other) {
  if (this == &other) return *this;
  _dealloc();
  _copy(other);
  return *this;
}

CKvDatumConverter::~CKvDatumConverter() { _dealloc(); }

void CKvDatumConverter::_init() {
  m_eConversionType = eProjToProj;
  CKvEllipsoid sourceEllipsoid, targetEllipsoid;
  const bool haveBoth =
      EngineEllipsoid(m_pSource, sourceEllipsoid) && EngineEllipsoid(m_pTarget, targetEllipsoid);
  const CKvDatumShift sourceShift = SystemShift(m_pSource), targetShift = SystemShift(m_pTarget);
  if (!haveBoth) {
    m_bSameEllipsoid = true;
    m_bBypassXYZ = true;
  } else {
    m_bSameEllipsoid = sourceEllipsoid.IsEquivalent(targetEllipsoid);
    m_bBypassXYZ = m_bSameEllipsoid &&
                   (sourceShift == targetShift || OnOneCatalogueDatum(m_pSource, m_pTarget));
  }
  m_bBypassXYZConstructed = m_bBypassXYZ;
  StoreShift(sourceShift, m_eSourceShiftType, m_adSourceShift);
  StoreShift(targetShift, m_eTargetShiftType, m_adTargetShift);
}

void CKvDatumConverter::_copy(const CKvDatumConverter& other) {
  if (other.m_bOwnsSystems) {
    // Both copies are made before either is kept, so a failure leaks none.
    std::unique_ptr<CKvMapProjection> s(new CKvMapProjection(*other.m_pSource));
    std::unique_ptr<CKvMapProjection> t(new CKvMapProjection(*other.m_pTarget));
    m_pSource = s.release();
    m_pTarget = t.release();
  } else {
    m_pSource = other.m_pSource;
    m_pTarget = other.m_pTarget;
  }
  m_bOwnsSystems = other.m_bOwnsSystems;
  m_eConversionType = other.m_eConversionType;
  m_bSameEllipsoid = other.m_bSameEllipsoid;
  m_bBypassXYZ = other.m_bBypassXYZ;
  m_bBypassXYZConstructed = other.m_bBypassXYZConstructed;
  m_bLocal = other.m_bLocal;
  m_eSourceShiftType = other.m_eSourceShiftType;
  m_eTargetShiftType = other.m_eTargetShiftType;
  for (int i = 0; i < kCount; ++i) {
    m_adSourceShift[i] = other.m_adSourceShift[i];
    m_adTargetShift[i] = other.m_adTargetShift[i];
  }
}

void CKvDatumConverter::_dealloc() {
  if (m_bOwnsSystems) {
    delete m_pSource;
    delete m_pTarget;
  }
  m_pSource = nullptr;
  m_pTarget = nullptr;
  m_bOwnsSystems = false;
}

// ---------------------------------------------------------------------------
// Conversions

void CKvDatumConverter::_Transform(const CKvMapProjection* from, const CKvMapProjection* to,
                                   bool fromProjected, bool toProjected, bool forward, double& x,
                                   double& y, double& h) const {
  double lon = x, lat = y;
  if (fromProjected) Proj2Geo(from, x, y, &lon, &lat);
  if (!m_bBypassXYZ) {
    double X = 0.0, Y = 0.0, Z = 0.0;
    Geo2XYZ(from, lon, lat, h, &X, &Y, &Z);
    if (forward) {
      DatumShift(X, Y, Z);
    } else {
      InvDatumShift(X, Y, Z);
    }
    XYZ2Geo(to, X, Y, Z, &lon, &lat, &h);
  }
  if (toProjected) {
    Geo2Proj(to, lon, lat, &x, &y);
  } else {
    x = lon;
    y = lat;
  }
}

void CKvDatumConverter::Convert(double& x, double& y) const {
  double h = 0.0;
  Convert(x, y, h);
}

void CKvDatumConverter::Convert(double& x, double& y, double& h) const {
  if (m_bLocal) return;
  const ETypeOfConversion t = m_eConversionType;
  if (t < eProjToProj || t > eGeoToGeo) return;
  _Transform(m_pSource, m_pTarget, t == eProjToProj || t == eProjToGeo,
             t == eProjToProj || t == eGeoToProj, true, x, y, h);
}

void CKvDatumConverter::InvConvert(double& x, double& y) const {
  double h = 0.0;
  InvConvert(x, y, h);
}

void CKvDatumConverter::InvConvert(double& x, double& y, double& h) const {
  if (m_bLocal) return;
  const ETypeOfConversion t = m_eConversionType;
  if (t < eProjToProj || t > eGeoToGeo) return;
  // The input lies in the target system: projected for types 0 and 2.
  _Transform(m_pTarget, m_pSource, t == eProjToProj || t == eGeoToProj,
             t == eProjToProj || t == eProjToGeo, false, x, y, h);
}

int CKvDatumConverter::DatumShift(double& X, double& Y, double& Z) const {
  ShiftForward(m_eSourceShiftType, m_adSourceShift, X, Y, Z);
  ShiftBackward(m_eTargetShiftType, m_adTargetShift, X, Y, Z);
  return m_eTargetShiftType;
}

int CKvDatumConverter::InvDatumShift(double& X, double& Y, double& Z) const {
  ShiftForward(m_eTargetShiftType, m_adTargetShift, X, Y, Z);
  ShiftBackward(m_eSourceShiftType, m_adSourceShift, X, Y, Z);
  return m_eSourceShiftType;
}

// ---------------------------------------------------------------------------
// Settings

void CKvDatumConverter::SetConversionType(ETypeOfConversion type) { m_eConversionType = type; }

bool CKvDatumConverter::GetBypassXYZ() const { return m_bBypassXYZ; }

void CKvDatumConverter::BypassXYZ() { m_bBypassXYZ = true; }

bool CKvDatumConverter::ResetBypassXYZ() {
  m_bBypassXYZ = m_bBypassXYZConstructed;
  return m_bBypassXYZ;
}

void CKvDatumConverter::SetDatumShift(ETypeOfDatumShift type, double* values, bool source) {
  double* p = source ? m_adSourceShift : m_adTargetShift;
  (source ? m_eSourceShiftType : m_eTargetShiftType) = type;
  if (values) {
    const int count = type == e7Parameter ? kCount : type == e3Parameter ? kTranslations : 0;
    for (int i = 0; i < count; ++i) p[i] = values[i];
  }
  m_bBypassXYZ = m_bSameEllipsoid && _ShiftsEqual();
}

// Equal as CKvDatumShift defines it: same type, and the values that type
// uses agree to 1e-12 relative.
bool CKvDatumConverter::_ShiftsEqual() const {
  return AsShift(m_eSourceShiftType, m_adSourceShift) ==
         AsShift(m_eTargetShiftType, m_adTargetShift);
}

CKvDatumConverter::ETypeOfConversion CKvDatumConverter::InvertOrder() {
  std::swap(m_pSource, m_pTarget);
  std::swap(m_eSourceShiftType, m_eTargetShiftType);
  for (int i = 0; i < kCount; ++i) std::swap(m_adSourceShift[i], m_adTargetShift[i]);
  if (m_eConversionType == eProjToGeo) {
    m_eConversionType = eGeoToProj;
  } else if (m_eConversionType == eGeoToProj) {
    m_eConversionType = eProjToGeo;
  }
  return m_eConversionType;
}

CKvMapProjection* CKvDatumConverter::GetMapProjection(bool source) const {
  return source ? m_pSource : m_pTarget;
}
