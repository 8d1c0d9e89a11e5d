#include "catalogue/KvMapProjDetails.h"

#include <strings.h>

#include <atomic>
#include <cctype>
#include <climits>
#include <cmath>
#include <cstring>

#include "catalogue/KvMapProjDataIDs.h"
#include "datum/KvDatumShift.h"
#include "platform/tsf.h"

namespace {

std::atomic<std::uint64_t>& CodeGeneration() {
  static std::atomic<std::uint64_t> generation{0};
  return generation;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

}  // namespace

CKvMapProjDetails::CKvMapProjDetails()
    : m_nEpsgCode(0), m_dUnitFactor(0.0), m_nShiftCount(0), m_adShift{} {}

// A new object is in no index yet, so copying one is no code change.
CKvMapProjDetails::CKvMapProjDetails(const CKvMapProjDetails& other)
    : m_nEpsgCode(other.m_nEpsgCode),
      m_strUnitName(other.m_strUnitName),
      m_dUnitFactor(other.m_dUnitFactor),
      m_nShiftCount(other.m_nShiftCount) {
  std::memcpy(m_adShift, other.m_adShift, sizeof m_adShift);
}

CKvMapProjDetails& CKvMapProjDetails::operator=(const CKvMapProjDetails& other) {
  if (this == &other) return *this;
  _ChangeCode(other.m_nEpsgCode);
  CopyUnlisted(other);
  return *this;
}

void CKvMapProjDetails::CopyUnlisted(const CKvMapProjDetails& other) {
  if (this == &other) return;
  m_nEpsgCode = other.m_nEpsgCode;
  m_strUnitName = other.m_strUnitName;
  m_dUnitFactor = other.m_dUnitFactor;
  m_nShiftCount = other.m_nShiftCount;
  std::memcpy(m_adShift, other.m_adShift, sizeof m_adShift);
}

void CKvMapProjDetails::_ChangeCode(int code) {
  if (code == m_nEpsgCode) return;
  m_nEpsgCode = code;
  CodeGeneration().fetch_add(1, std::memory_order_relaxed);
}

void CKvMapProjDetails::SetEpsgCode(int code) { _ChangeCode(code > 0 ? code : 0); }

bool CKvMapProjDetails::SetLinearUnit(const std::string& name, double factor) {
  if (!std::isfinite(factor) || factor <= 0.0) {
    ClearLinearUnit();
    return false;
  }
  m_strUnitName = name;
  m_dUnitFactor = factor;
  return true;
}

void CKvMapProjDetails::ClearLinearUnit() {
  m_strUnitName.clear();
  m_dUnitFactor = 0.0;
}

void CKvMapProjDetails::GetDatumShift(CKvDatumShift& shift) const {
  double values[kMaxShiftValues] = {};
  for (int i = 0; i < m_nShiftCount; ++i) values[i] = m_adShift[i];
  shift.SetParameters(values);
}

bool CKvMapProjDetails::SetDatumShift(const double* values, int count) {
  ClearDatumShift();
  if (!values || (count != 3 && count != kMaxShiftValues)) return false;
  for (int i = 0; i < count; ++i)
    if (!std::isfinite(values[i])) return false;
  for (int i = 0; i < count; ++i) m_adShift[i] = values[i];
  m_nShiftCount = count;
  return true;
}

void CKvMapProjDetails::ClearDatumShift() {
  m_nShiftCount = 0;
  for (double& v : m_adShift) v = 0.0;
}

bool CKvMapProjDetails::operator==(const CKvMapProjDetails& other) const {
  if (m_nEpsgCode != other.m_nEpsgCode || m_strUnitName != other.m_strUnitName ||
      m_dUnitFactor != other.m_dUnitFactor || m_nShiftCount != other.m_nShiftCount)
    return false;
  for (int i = 0; i < m_nShiftCount; ++i)
    if (m_adShift[i] != other.m_adShift[i]) return false;
  return true;
}

bool CKvMapProjDetails::Read(void* section) {
  typedef CKvMapProjDataIDs K;
  bool readable = true;
  int code = 0;
  if (tsfKeywordByNameNum(section, K::ID_EPSG_CODE.c_str(), 1)) {
    if (tsfGetParam(section, K::ID_EPSG_CODE.c_str(), code) != TSF_OK || code <= 0) {
      code = 0;
      readable = false;
    }
  }
  _ChangeCode(code);

  ClearLinearUnit();
  if (tsfKeywordByNameNum(section, K::ID_LINEAR_UNIT_FACTOR.c_str(), 1)) {
    std::string name;
    double factor = 0.0;
    tsfGetParam(section, K::ID_LINEAR_UNIT.c_str(), name);
    if (tsfGetParam(section, K::ID_LINEAR_UNIT_FACTOR.c_str(), factor) != TSF_OK ||
        !SetLinearUnit(name, factor))
      readable = false;
  }

  ClearDatumShift();
  if (void* keyword = tsfKeywordByNameNum(section, K::ID_TOWGS84.c_str(), 1)) {
    const int count = tsfGetNoParams(keyword);
    double values[kMaxShiftValues] = {};
    bool numbers = count == 3 || count == kMaxShiftValues;
    for (int i = 0; numbers && i < count; ++i)
      numbers = tsfGetParam(section, K::ID_TOWGS84.c_str(), values[i], i + 1) == TSF_OK;
    if (!numbers || !SetDatumShift(values, count)) readable = false;
  }
  return readable;
}

void CKvMapProjDetails::Write(void* handle) const {
  typedef CKvMapProjDataIDs K;
  if (m_nEpsgCode > 0) tsfPutParam(handle, K::ID_EPSG_CODE.c_str(), static_cast<int>(m_nEpsgCode));
  if (HasLinearUnit()) {
    tsfPutParam(handle, K::ID_LINEAR_UNIT.c_str(), m_strUnitName);
    tsfPutParam(handle, K::ID_LINEAR_UNIT_FACTOR.c_str(), m_dUnitFactor);
  }
  if (HasDatumShift()) {
    void* keyword = tsfAddKeyword(handle, K::ID_TOWGS84.c_str());
    for (int i = 0; i < m_nShiftCount; ++i) tsfAddParam(keyword, m_adShift[i]);
  }
}

int CKvMapProjDetails::ParseCodeName(const char* text) {
  if (!text) return 0;
  const char* p = text;
  while (IsBlank(*p)) ++p;
  if (strncasecmp(p, "EPSG", 4) != 0) return 0;
  p += 4;
  while (IsBlank(*p)) ++p;
  if (*p != ':') return 0;
  ++p;
  while (IsBlank(*p)) ++p;
  if (!std::isdigit(static_cast<unsigned char>(*p))) return 0;
  long long code = 0;
  for (; std::isdigit(static_cast<unsigned char>(*p)); ++p) {
    code = code * 10 + (*p - '0');
    if (code > INT_MAX) return 0;
  }
  while (IsBlank(*p)) ++p;
  return *p == '\0' ? static_cast<int>(code) : 0;
}

std::uint64_t CKvMapProjDetails::GetCodeGeneration() {
  return CodeGeneration().load(std::memory_order_relaxed);
}
