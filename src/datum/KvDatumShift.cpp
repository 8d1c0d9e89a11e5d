#include "datum/KvDatumShift.h"

#include "platform/KvConstants.h"

namespace {

// Positions in the TOWGS84 order: three translations, then three rotations
// and the scale.
constexpr int kTranslationCount = 3;

}  // namespace

CKvDatumShift::CKvDatumShift() { Reset(); }

CKvDatumShift::CKvDatumShift(double* pdValues) { SetParameters(pdValues); }

CKvDatumShift::CKvDatumShift(ETypeOfDatumShift eType, double dx, double dy, double dz,
                             double rx, double ry, double rz, double scale)
    : m_eType(eType), m_adValues{dx, dy, dz, rx, ry, rz, scale} {}

CKvDatumShift::~CKvDatumShift() = default;

void CKvDatumShift::Reset() {
  m_eType = eNoShift;
  for (double& d : m_adValues) d = 0.0;
}

void CKvDatumShift::SetParameters(double* pdValues) {
  // Callers pass whatever a parser found; no values means no shift.
  if (pdValues == nullptr) {
    Reset();
    return;
  }
  m_eType = eNoShift;
  for (int i = 0; i < kValueCount; ++i) {
    m_adValues[i] = pdValues[i];
    if (pdValues[i] == 0.0) continue;
    // A rotation or scale needs the full Helmert transformation whatever the
    // translations are; a translation alone is the three-parameter shift.
    if (i >= kTranslationCount)
      m_eType = e7Parameter;
    else if (m_eType == eNoShift)
      m_eType = e3Parameter;
  }
}

double* CKvDatumShift::GetParameters() { return m_adValues; }

const double* CKvDatumShift::GetParameters() const { return m_adValues; }

double CKvDatumShift::operator[](long i) const {
  if (i < 0 || i >= kValueCount) return 0.0;
  return m_adValues[i];
}

CKvCartDef::ETypeOfDatumShift CKvDatumShift::GetType() const { return m_eType; }

const char* CKvDatumShift::GetTypeAsText() const {
  switch (m_eType) {
    case eNoShift:
      return "None";
    case e3Parameter:
      return "3 parameter";
    case e7Parameter:
      return "7 parameter";
  }
  return "";
}

bool CKvDatumShift::operator==(const CKvDatumShift& other) const {
  // Checked first so that a shift holding NaN still equals itself.
  if (this == &other) return true;
  if (m_eType != other.m_eType) return false;
  int nCompared = kValueCount;  // a type we do not know: trust no value
  if (m_eType == eNoShift)
    nCompared = 0;  // the stored values take no part in the conversion
  else if (m_eType == e3Parameter)
    nCompared = kTranslationCount;
  for (int i = 0; i < nCompared; ++i)
    if (!KvConst::IsClose(m_adValues[i], other.m_adValues[i])) return false;
  return true;
}

bool CKvDatumShift::operator!=(const CKvDatumShift& other) const { return !(*this == other); }
