#include "catalogue/KvParameterTable.h"

#include "cart/KvCartSetup.h"
#include "catalogue/KvMapProjDetails.h"
#include "datum/KvDatumShift.h"
#include "platform/KvConstants.h"
#include "platform/tsf.h"
#include "wkt/KvPRJParser.h"

namespace {

// A missing key leaves `value` at 0.0 rather than at whatever the record held.
double ReadValue(void* section, const SKvParameterRow& row) {
  double value = 0.0;
  switch (row.alt) {
    case EKvAltKey::eDms: {
      int degrees = 0, minutes = 0;
      double seconds = 0.0;
      if (CKvMapProjData::tsfGetParamDMS(section, row.altKey->c_str(), &degrees, &minutes,
                                         &seconds))
        return CKvParameterTable::DmsToDegrees(degrees, minutes, seconds);
      break;
    }
    case EKvAltKey::eFootUs:
      if (tsfGetParam(section, row.altKey->c_str(), value) == TSF_OK)
        return value * KvConst::kUsSurveyFoot;
      break;
    case EKvAltKey::eScaleReduction:
      if (tsfGetParam(section, row.altKey->c_str(), value) == TSF_OK) return (value - 1.0) / value;
      break;
    case EKvAltKey::eNone:
      break;
  }
  value = 0.0;
  tsfGetParam(section, row.key->c_str(), value);
  return value;
}

int FieldOf(const SKvParameterSetInfo& info, int index) {
  return info.reversedDisplay ? info.count - 1 - index : index;
}

}  // namespace

double CKvParameterTable::DmsToDegrees(int degrees, int minutes, double seconds) {
  const double sign = degrees < 0 ? -1.0 : 1.0;
  return degrees + sign * minutes / 60.0 + sign * seconds / 3600.0;
}

void CKvParameterTable::Read(void* section, const SKvParameterSetInfo& info, std::string& name,
                             std::string& branch, std::string& ellipsoid, double* values,
                             CKvMapProjDetails& details) {
  name.clear();
  branch.clear();
  ellipsoid.clear();
  tsfGetParam(section, CKvMapProjDataIDs::ID_PROJECTION_NAME.c_str(), name);
  tsfGetParam(section, CKvMapProjDataIDs::ID_BRANCH_NAME.c_str(), branch);
  tsfGetParam(section, CKvMapProjDataIDs::ID_ELLIPSOID_ID.c_str(), ellipsoid);
  for (int i = 0; i < info.count; ++i) values[i] = ReadValue(section, info.params[i]);
  details.Read(section);
}

void CKvParameterTable::Write(void* handle, const SKvParameterSetInfo& info,
                              const std::string& name, const std::string& branch,
                              const std::string& ellipsoid, const double* values,
                              const CKvMapProjDetails& details) {
  void* section = tsfAddSection(handle, info.section->c_str());
  if (!section) return;
  tsfPutParam(section, CKvMapProjDataIDs::ID_PROJECTION_NAME.c_str(), name);
  tsfPutParam(section, CKvMapProjDataIDs::ID_BRANCH_NAME.c_str(), branch);
  tsfPutParam(section, CKvMapProjDataIDs::ID_ELLIPSOID_ID.c_str(), ellipsoid);
  for (int i = 0; i < info.count; ++i) tsfPutParam(section, info.params[i].key->c_str(), values[i]);
  details.Write(section);
  tsfEndSection(section);
}

void CKvParameterTable::Transfer(CKvPRJParser& parser, const SKvParameterSetInfo& info,
                                 const std::string& name, const std::string& branch,
                                 const CKvEllipsoid* found, const double* values,
                                 const char* unitName, const CKvMapProjDetails& details) {
  TransferHead(parser, info, name, branch, found);
  TransferValues(parser, info, values, details);
  TransferTail(parser, info, unitName, details);
}

// A linear unit of the details applies to the lengths of a projected set.
static bool HasOwnUnit(const SKvParameterSetInfo& info, const CKvMapProjDetails& details) {
  return details.HasLinearUnit() && !info.angularUnit;
}

void CKvParameterTable::TransferHead(CKvPRJParser& parser, const SKvParameterSetInfo& info,
                                     const std::string& name, const std::string& branch,
                                     const CKvEllipsoid* found) {
  parser.SetProjCSname(name);
  parser.SetGeoCSname("Unused");
  parser.SetDatum(branch);
  parser.SetPrimeMeridian("Greenwich", 0.0);
  parser.SetAngularUnit("Degree", KvConst::kDegToRad);
  if (found) {
    parser.SetEllipsoid(found->GetName(), found->GetMajor(), found->GetInvFlatness());
    parser.SetProjectionType(info.type);
    parser.SetProjectionTypeName(info.wktName);
  } else {
    parser.SetEllipsoid(" ", KvConst::kNotSet, KvConst::kNotSet);
    parser.SetProjectionType(CKvMapProjData::eNonProjected);
    parser.SetProjectionTypeName("Non_Projected");
  }
}

void CKvParameterTable::TransferValues(CKvPRJParser& parser, const SKvParameterSetInfo& info,
                                       const double* values, const CKvMapProjDetails& details) {
  // The WKT gives lengths in its linear unit.
  const double unit = HasOwnUnit(info, details) ? details.GetLinearUnitFactor() : 1.0;
  for (int i = 0; i < info.count; ++i) {
    const SKvParameterRow& row = info.params[i];
    (parser.*row.transfer)(row.kind == CKvMapProjData::eParamLength ? values[i] / unit : values[i]);
  }
}

void CKvParameterTable::TransferTail(CKvPRJParser& parser, const SKvParameterSetInfo& info,
                                     const char* unitName, const CKvMapProjDetails& details) {
  if (HasOwnUnit(info, details))
    parser.SetProjUnit(details.GetLinearUnitName(), details.GetLinearUnitFactor());
  else
    parser.SetProjUnit(unitName, 1.0);
  if (details.HasDatumShift()) {
    CKvDatumShift shift;
    details.GetDatumShift(shift);
    parser.SetDatumShift(shift);
  }
}

const CKvEllipsoid* CKvParameterTable::FindEllipsoid(const std::string& id) {
  if (id.empty()) return nullptr;
  return CKvCartSetup::Instance().m_EllipsoidList.GetEllipsoid(id);
}

bool CKvParameterTable::GetParameter(const SKvParameterSetInfo& info, const double* values,
                                     int index, std::string& label, double& value,
                                     CKvMapProjData::EParamType& kind) {
  if (index < 0 || index >= info.count) return false;
  const int field = FieldOf(info, index);
  label = info.params[field].label;
  value = values[field];
  kind = info.params[field].kind;
  return true;
}
