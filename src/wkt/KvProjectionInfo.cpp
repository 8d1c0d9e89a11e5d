#include "wkt/KvProjectionInfo.h"

#include <cstring>
#include <utility>

#include "platform/KvConstants.h"
#include "wkt/KvPRJParser.h"

namespace {

template <std::size_t N>
void CopyBounded(char (&buffer)[N], const char* text) {
  const std::size_t n = text ? strnlen(text, N - 1) : 0;
  std::memcpy(buffer, text, n);
  buffer[n] = '\0';
}

bool CopyUnit(double factor, const char* stored, double* outFactor, char* outName) {
  if (outFactor) *outFactor = factor;
  if (outName) std::strcpy(outName, stored);  // both buffers hold 64 bytes
  return factor != KvConst::kNotSet;
}

bool SwapsAxes(CKvProjectionInfo::CAxis::EType first) {
  return first == CKvProjectionInfo::CAxis::NORTH || first == CKvProjectionInfo::CAxis::SOUTH;
}

}  // namespace

// --- CAxis ----------------------------------------------------------------

CKvProjectionInfo::CAxis::CAxis() : m_eType(EAST), m_dFactor(1.0) { m_szName[0] = '\0'; }

CKvProjectionInfo::CAxis::CAxis(EType type, const char* name) : m_eType(EAST), m_dFactor(1.0) {
  m_szName[0] = '\0';
  SetProperties(type, name);
}

CKvProjectionInfo::CAxis::CAxis(const CAxis& other) { _copy(other); }

CKvProjectionInfo::CAxis& CKvProjectionInfo::CAxis::operator=(const CAxis& other) {
  if (this != &other) _copy(other);
  return *this;
}

CKvProjectionInfo::CAxis::~CAxis() = default;

void CKvProjectionInfo::CAxis::_copy(const CAxis& other) {
  m_eType = other.m_eType;
  m_dFactor = other.m_dFactor;
  std::memcpy(m_szName, other.m_szName, sizeof m_szName);
}

void CKvProjectionInfo::CAxis::SetProperties(EType type, const char* name) {
  static const double kFactors[] = {1.0, 1.0, -1.0, -1.0};
  m_eType = type;
  if (type >= EAST && type <= SOUTH) m_dFactor = kFactors[type];
  CopyBounded(m_szName, name);
}

CKvProjectionInfo::CAxis::EType CKvProjectionInfo::CAxis::StringToType(const char* word) {
  static const char* const kWords[] = {"EAST", "NORTH", "WEST", "SOUTH"};
  for (int i = 0; i < 4; ++i)
    if (word && strcasecmp(word, kWords[i]) == 0) return static_cast<EType>(i);
  return EAST;
}

// --- CKvProjectionInfo ------------------------------------------------------

CKvProjectionInfo::CKvProjectionInfo()
    : m_dProjUnitFactor(KvConst::kNotSet),
      m_dAngularUnitFactor(KvConst::kNotSet),
      m_Axis1(CAxis::EAST, "Easting"),
      m_Axis2(CAxis::NORTH, "Northing") {
  m_szProjUnitName[0] = '\0';
  m_szAngularUnitName[0] = '\0';
}

CKvProjectionInfo::CKvProjectionInfo(const CKvProjectionInfo& other) { _copy(other); }

CKvProjectionInfo& CKvProjectionInfo::operator=(const CKvProjectionInfo& other) {
  if (this != &other) _copy(other);
  return *this;
}

CKvProjectionInfo::~CKvProjectionInfo() = default;

void CKvProjectionInfo::_copy(const CKvProjectionInfo& other) {
  m_dProjUnitFactor = other.m_dProjUnitFactor;
  m_dAngularUnitFactor = other.m_dAngularUnitFactor;
  std::memcpy(m_szProjUnitName, other.m_szProjUnitName, sizeof m_szProjUnitName);
  std::memcpy(m_szAngularUnitName, other.m_szAngularUnitName, sizeof m_szAngularUnitName);
  m_DatumShift = other.m_DatumShift;
  m_Axis1 = other.m_Axis1;
  m_Axis2 = other.m_Axis2;
}

void CKvProjectionInfo::SetProjectionInfo(const CKvPRJParser& parser) {
  CString name;
  parser.GetProjUnit(name, m_dProjUnitFactor);
  CopyBounded(m_szProjUnitName, name.GetString());
  parser.GetAngularUnit(name, m_dAngularUnitFactor);
  CopyBounded(m_szAngularUnitName, name.GetString());
  parser.GetDatumShift(m_DatumShift);
  CString direction;
  parser.GetAxisInfo(CKvPRJParser::eAxis1, name, direction);
  m_Axis1.SetProperties(CAxis::StringToType(direction.GetString()), name.GetString());
  parser.GetAxisInfo(CKvPRJParser::eAxis2, name, direction);
  m_Axis2.SetProperties(CAxis::StringToType(direction.GetString()), name.GetString());
}

bool CKvProjectionInfo::GetProjUnit(double* factor, char* name) const {
  return CopyUnit(m_dProjUnitFactor, m_szProjUnitName, factor, name);
}

bool CKvProjectionInfo::GetAngularUnit(double* factor, char* name) const {
  return CopyUnit(m_dAngularUnitFactor, m_szAngularUnitName, factor, name);
}

void CKvProjectionInfo::GetDatumShift(CKvDatumShift& shift) const { shift = m_DatumShift; }

void CKvProjectionInfo::SetDatumShift(const CKvDatumShift& shift) { m_DatumShift = shift; }

void CKvProjectionInfo::GetAxisTypes(CAxis::EType& first, CAxis::EType& second) const {
  first = m_Axis1.GetType();
  second = m_Axis2.GetType();
}

int CKvProjectionInfo::Convert(double& x, double& y) const {
  if (m_dProjUnitFactor != KvConst::kNotSet) {
    x /= m_dProjUnitFactor;
    y /= m_dProjUnitFactor;
  }
  x *= m_Axis1.GetFactor();
  y *= m_Axis2.GetFactor();
  if (!SwapsAxes(m_Axis1.GetType())) return 0;
  std::swap(x, y);
  return 1;
}

int CKvProjectionInfo::InvConvert(double& x, double& y) const {
  const bool swapped = SwapsAxes(m_Axis1.GetType());
  if (swapped) std::swap(x, y);
  x *= m_Axis1.GetFactor();
  y *= m_Axis2.GetFactor();
  if (m_dProjUnitFactor != KvConst::kNotSet) {
    x *= m_dProjUnitFactor;
    y *= m_dProjUnitFactor;
  }
  return swapped ? 1 : 0;
}
