#include "catalogue/KvEllipsoid.h"

#include <cmath>

#include "platform/KvConstants.h"

CKvEllipsoid::CKvEllipsoid() : m_dMajor(1.0), m_dInvFlattening(1.0) {}

CKvEllipsoid::CKvEllipsoid(const std::string& name, const std::string& id, double major, double invFlattening)
    : m_strName(name), m_strID(id), m_dMajor(major), m_dInvFlattening(invFlattening) {}

CKvEllipsoid::CKvEllipsoid(const CKvEllipsoid& other) { _copy(other); }

CKvEllipsoid& CKvEllipsoid::operator=(const CKvEllipsoid& other) {
  if (this != &other) _copy(other);
  return *this;
}

CKvEllipsoid::~CKvEllipsoid() = default;

void CKvEllipsoid::_copy(const CKvEllipsoid& other) {
  m_strName = other.m_strName;
  m_strID = other.m_strID;
  m_dMajor = other.m_dMajor;
  m_dInvFlattening = other.m_dInvFlattening;
}

std::string CKvEllipsoid::GetName() const { return m_strName; }
std::string CKvEllipsoid::GetID() const { return m_strID; }
double CKvEllipsoid::GetMajor() const { return m_dMajor; }
double CKvEllipsoid::GetInvFlatness() const { return m_dInvFlattening; }

void CKvEllipsoid::SetParams(double major, double invFlattening) {
  m_dMajor = major;
  m_dInvFlattening = invFlattening;
}

double CKvEllipsoid::GetMinor() const {
  if (m_dInvFlattening <= 0.0) return m_dMajor;
  return m_dMajor * (m_dInvFlattening - 1.0) / m_dInvFlattening;
}

double CKvEllipsoid::GetFlatness() const {
  if (m_dInvFlattening <= 0.0) return 0.0;
  return 1.0 / m_dInvFlattening;
}

double CKvEllipsoid::GetEccentricity() const {
  const double a = m_dMajor;
  const double b = GetMinor();
  return std::sqrt((a * a - b * b) / (a * a));
}

bool CKvEllipsoid::operator==(const CKvEllipsoid& other) const {
  if (this == &other) return true;
  return m_strName == other.m_strName && m_strID == other.m_strID && IsEquivalent(other);
}

bool CKvEllipsoid::IsEquivalent(const CKvEllipsoid& other) const {
  if (this == &other) return true;
  return KvConst::IsClose(m_dMajor, other.m_dMajor) && KvConst::IsClose(m_dInvFlattening, other.m_dInvFlattening);
}
