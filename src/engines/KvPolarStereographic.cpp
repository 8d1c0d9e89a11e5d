#include "engines/KvPolarStereographic.h"

#include <cmath>

#include "engines/KvStereographic.h"
#include "engines/KvStereographicNorthPole.h"
#include "engines/KvStereographicSouthPole.h"
#include "platform/KvAssert.h"
#include "platform/KvConstants.h"

CKvPolarStereographic::CKvPolarStereographic(CKvPolarStereographicProjection* set)
    : CKvPolarStereographic(set->GetName(), set->GetScale(), set->GetCentre(),
                            set->GetOriginLatitude(), set->GetFalseEasting(),
                            set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvPolarStereographic::CKvPolarStereographic(const std::string& name, double scale,
                                             double originLongitude, double originLatitude,
                                             double falseEasting, double falseNorthing,
                                             const CKvEllipsoid& ellipsoid)
    : CKvPolarStereographic(name, scale, originLongitude, originLatitude, falseEasting,
                            falseNorthing, &ellipsoid) {}

CKvPolarStereographic::CKvPolarStereographic(const std::string& name, double scale,
                                             double originLongitude, double originLatitude,
                                             double falseEasting, double falseNorthing,
                                             const CKvEllipsoid* ellipsoid)
    : CKvNamedEngine(name) {
  if (!ellipsoid) return;
  // At a pole by the relative difference |lat -+ 90| / max(|lat|, 90).
  if (KvConst::IsClose(originLatitude, 90.0) || KvConst::IsClose(originLatitude, -90.0)) {
    m_pProj = new CKvStereographic(name, scale, originLongitude, originLatitude, falseEasting,
                                   falseNorthing, *ellipsoid);
  } else if (originLatitude >= 0.0) {
    m_pProj = new CKvStereographicNorthPole(name, originLatitude, originLongitude, falseEasting,
                                            falseNorthing, *ellipsoid);
  } else {
    m_pProj = new CKvStereographicSouthPole(name, originLatitude, originLongitude, falseEasting,
                                            falseNorthing, *ellipsoid);
  }
}

CKvPolarStereographic::CKvPolarStereographic(const CKvPolarStereographic& other)
    : CKvNamedEngine(other) {
  _copy(other);
}

CKvPolarStereographic& CKvPolarStereographic::operator=(const CKvPolarStereographic& other) {
  if (this == &other) return *this;
  _dealloc();
  CKvNamedEngine::operator=(other);
  _copy(other);
  return *this;
}

CKvPolarStereographic::~CKvPolarStereographic() { _dealloc(); }

void CKvPolarStereographic::_copy(const CKvPolarStereographic& other) {
  m_pProj = other.m_pProj ? other.m_pProj->Clone() : nullptr;
}

void CKvPolarStereographic::_dealloc() {
  delete m_pProj;
  m_pProj = nullptr;
}

const char* CKvPolarStereographic::GetName() {
  KV_ASSERT(m_pProj);
  return m_pProj->GetName();
}

void CKvPolarStereographic::Geo2Proj(double lon, double lat, double* x, double* y) {
  KV_ASSERT(m_pProj);
  m_pProj->Geo2Proj(lon, lat, x, y);
}

void CKvPolarStereographic::Proj2Geo(double x, double y, double* lon, double* lat) {
  KV_ASSERT(m_pProj);
  m_pProj->Proj2Geo(x, y, lon, lat);
}

void CKvPolarStereographic::GetOrigin(double* lon, double* lat) {
  KV_ASSERT(m_pProj);
  m_pProj->GetOrigin(lon, lat);
}

double CKvPolarStereographic::GetConvergence(double lon, double lat) {
  KV_ASSERT(m_pProj);
  return m_pProj->GetConvergence(lon, lat);
}

void CKvPolarStereographic::GetDefaultArea(double* x0, double* y0, double* x1, double* y1) {
  KV_ASSERT(m_pProj);
  m_pProj->GetDefaultArea(x0, y0, x1, y1);
}

bool CKvPolarStereographic::IsLocal() {
  KV_ASSERT(m_pProj);
  return m_pProj->IsLocal();
}

bool CKvPolarStereographic::IsGeographical() {
  KV_ASSERT(m_pProj);
  return m_pProj->IsGeographical();
}

void CKvPolarStereographic::GetDerivedParameters(double* value) {
  KV_ASSERT(m_pProj);
  m_pProj->GetDerivedParameters(value);
}

bool CKvPolarStereographic::GetAnonymousEllipsoid(CKvEllipsoid& ellipsoid) {
  KV_ASSERT(m_pProj);
  return m_pProj->GetAnonymousEllipsoid(ellipsoid);
}
