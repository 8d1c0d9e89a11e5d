#include "catalogue/KvParameterTable.h"

#include <climits>
#include <cmath>

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

enum class EWanted { eNumber, eWhole };

// Whether parameter `index` of `keyword` is a finite number (a whole one
// for eWhole); otherwise the reason.
bool Reads(void* keyword, int index, EWanted wanted, std::string& reason) {
  const char* key = tsfGetName(keyword);
  void* param = tsfParamByNum(keyword, index);
  const std::string where =
      std::string(tsfGetName(tsfGetFile(keyword))) + ":" + std::to_string(tsfGetLine(keyword)) + ": ";
  if (!param) {
    reason = where + "'" + key + "' has no value " + std::to_string(index);
    return false;
  }
  const int type = tsfGetParamType(param);
  const bool number = (type == TSF_PARAM_INT || type == TSF_PARAM_DOUBLE) && std::isfinite(tsfGetDouble(param));
  const bool whole = type == TSF_PARAM_INT && std::fabs(tsfGetDouble(param)) <= INT_MAX;
  if (wanted == EWanted::eWhole ? whole : number) return true;
  reason = where + "'" + key + "' is '" + tsfGetText(param) + "', not " +
           (wanted == EWanted::eWhole ? "a whole number" : "a finite number");
  return false;
}

int FieldOf(const SKvParameterSetInfo& info, int index) {
  return info.reversedDisplay ? info.count - 1 - index : index;
}

}  // namespace

bool CKvParameterTable::Check(void* section, const SKvParameterSetInfo& info, std::string& reason) {
  for (int i = 0; i < info.count; ++i) {
    const SKvParameterRow& row = info.params[i];
    // The key Read takes: the alternative one when the section holds it.
    void* alt = row.altKey ? tsfKeywordByNameNum(section, row.altKey->c_str(), 1) : nullptr;
    if (alt && row.alt == EKvAltKey::eDms) {
      const int count = tsfGetNoParams(alt);
      if (!Reads(alt, 1, EWanted::eWhole, reason)) return false;
      if (count >= 2 && !Reads(alt, 2, EWanted::eWhole, reason)) return false;
      if (count >= 3 && !Reads(alt, 3, EWanted::eNumber, reason)) return false;
      continue;
    }
    void* keyword = alt ? alt : tsfKeywordByNameNum(section, row.key->c_str(), 1);
    if (keyword && !Reads(keyword, 1, EWanted::eNumber, reason)) return false;
    // A scale reduction R gives the scale (R - 1) / R.
    if (alt && row.alt == EKvAltKey::eScaleReduction && tsfGetDouble(tsfParamByNum(alt, 1)) == 0.0) {
      reason = std::string(tsfGetName(tsfGetFile(alt))) + ":" + std::to_string(tsfGetLine(alt)) + ": '" +
               *row.altKey + "' is 0, which gives no scale";
      return false;
    }
  }
  // The registry's details have their own rules: read them on a scratch copy.
  if (!CKvMapProjDetails().Read(section)) {
    reason = std::string(tsfGetName(tsfGetFile(section))) + ":" + std::to_string(tsfGetLine(section)) +
             ": its EPSG code, linear unit or TOWGS84 does not read (a positive whole code, a positive "
             "factor, 3 or 7 numbers)";
    return false;
  }
  return true;
}

bool CKvParameterTable::CheckNumber(void* section, const char* key, std::string& reason) {
  void* keyword = tsfKeywordByNameNum(section, key, 1);
  return !keyword || Reads(keyword, 1, EWanted::eNumber, reason);
}

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
