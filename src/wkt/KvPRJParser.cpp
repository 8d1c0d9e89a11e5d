#include "wkt/KvPRJParser.h"

#include "engines/KvProjection.h"
#include "platform/KvConstants.h"

// Construction and the accessors of the record; reading, building and
// writing are in KvPRJParserRead.cpp, KvPRJParserBuild.cpp and
// KvPRJParserWrite.cpp.

namespace {

typedef CKvMapProjData D;

}  // namespace

CKvPRJParser::CKvPRJParser(const CString& text) {
  _initialize();
  m_strSource = text;
}

CKvPRJParser::CKvPRJParser(const char* text) {
  _initialize();
  m_strSource = text;
}

CKvPRJParser::CKvPRJParser(CKvProjection& engine) {
  _initialize();
  engine.TransferParameters(*this);
}

CKvPRJParser::CKvPRJParser(CKvMapProjData& record) {
  _initialize();
  record.TransferParameters(*this);
}

CKvPRJParser::~CKvPRJParser() = default;

void CKvPRJParser::_initialize() {
  m_dPrimeMeridian = m_dAngularUnit = m_dMajor = m_dInvFlattening = KvConst::kNotSet;
  m_DatumShift.Reset();
  m_bHasDatumShift = false;
  m_eProjectionType = D::eUndefined;
  m_dFalseEasting = m_dFalseNorthing = m_dCentralMeridian = KvConst::kNotSet;
  m_dStandardParallel1 = m_dStandardParallel2 = m_dLatitudeOfOrigin = KvConst::kNotSet;
  m_dLongitudeOfCenter = m_dLatitudeOfCenter = m_dAzimuth = KvConst::kNotSet;
  m_dXYPlaneRotation = m_dScaleFactor = KvConst::kNotSet;
  m_dLongitudeOfSouthPole = m_dLatitudeOfSouthPole = m_dAngleOfRotation = KvConst::kNotSet;
  m_dPseudoParallel = m_dXScale = m_dYScale = KvConst::kNotSet;
  m_dProjUnit = KvConst::kNotSet;
  m_strAxis1Name = "Easting";
  m_strAxis1Direction = "EAST";
  m_strAxis2Name = "Northing";
  m_strAxis2Direction = "NORTH";
}

// ---------------------------------------------------------------------------
// Accessors

void CKvPRJParser::GetPrimeMeridian(CString& name, double& value) const {
  name = m_strPrimeMeridian;
  value = m_dPrimeMeridian;
}

void CKvPRJParser::SetPrimeMeridian(const CString& name, double value) {
  m_strPrimeMeridian = name;
  m_dPrimeMeridian = value;
}

void CKvPRJParser::GetAngularUnit(CString& name, double& value) const {
  name = m_strAngularUnit;
  value = m_dAngularUnit;
}

void CKvPRJParser::SetAngularUnit(const CString& name, double value) {
  m_strAngularUnit = name;
  m_dAngularUnit = value;
}

void CKvPRJParser::GetEllipsoid(CString& name, double& major, double& invFlattening) const {
  name = m_strEllipsoid;
  major = m_dMajor;
  invFlattening = m_dInvFlattening;
}

void CKvPRJParser::SetEllipsoid(const CString& name, double major, double invFlattening) {
  m_strEllipsoid = name;
  m_dMajor = major;
  m_dInvFlattening = invFlattening;
}

void CKvPRJParser::GetDatumShift(CKvDatumShift& shift) const {
  shift.SetParameters(const_cast<double*>(m_DatumShift.GetParameters()));
}

void CKvPRJParser::SetDatumShift(const CKvDatumShift& shift) {
  m_DatumShift.SetParameters(const_cast<double*>(shift.GetParameters()));
  m_bHasDatumShift = true;
}

void CKvPRJParser::GetProjUnit(CString& name, double& value) const {
  name = m_strProjUnit;
  value = m_dProjUnit;
}

void CKvPRJParser::SetProjUnit(const CString& name, double value) {
  m_strProjUnit = name;
  m_dProjUnit = value;
}

void CKvPRJParser::GetAxisInfo(EAxisType axis, CString& name, CString& direction) const {
  if (axis == eAxis1) {
    name = m_strAxis1Name;
    direction = m_strAxis1Direction;
  } else if (axis == eAxis2) {
    name = m_strAxis2Name;
    direction = m_strAxis2Direction;
  }
}

void CKvPRJParser::SetAxisInfo(EAxisType axis, const CString& name, const CString& direction) {
  if (axis == eAxis1) {
    m_strAxis1Name = name;
    m_strAxis1Direction = direction;
  } else if (axis == eAxis2) {
    m_strAxis2Name = name;
    m_strAxis2Direction = direction;
  }
}
