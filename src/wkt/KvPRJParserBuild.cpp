#include "wkt/KvPRJParser.h"

#include <memory>
#include <vector>

#include "catalogue/KvParameterSetFactory.h"
#include "engines/KvEngineTable.h"

// Building: the engine and the parameter set of a record, and the questions
// answered through the set.

namespace {

typedef CKvMapProjData D;

}  // namespace

CKvProjection* CKvPRJParser::CreateMapProjection() const {
  if (m_eProjectionType == D::eUndefined) return nullptr;
  return CKvEngineTable::Create(*this);
}

CKvMapProjData* CKvPRJParser::_CreateProjData() const {
  const SKvParameterSetInfo* info = CKvParameterSetFactory::InfoOf(m_eProjectionType);
  if (!info) return nullptr;
  // The record takes the values as they stand in the WKT, in its field order.
  std::vector<double> values(info->count > 0 ? info->count : 1, m_dPrimeMeridian);
  for (int i = 0; i < info->count; ++i) values[i] = (this->*info->params[i].fetch)();
  return CKvParameterSetFactory::Create(m_eProjectionType, m_strProjCSName.GetString(),
                                        m_strDatum.GetString(), "", values.data(), true, true);
}

std::string CKvPRJParser::GetProjectionTypeTitle() const {
  std::unique_ptr<CKvMapProjData> record(_CreateProjData());
  return record ? record->GetProjectionTypeTitle() : std::string("Non projection");
}

int CKvPRJParser::GetNoOfParameters() const {
  std::unique_ptr<CKvMapProjData> record(_CreateProjData());
  return record ? record->GetNoOfParameters() : 0;
}

bool CKvPRJParser::GetParameter(int index, CString& name, double& value, CString& unitName,
                                double& unitFactor) const {
  std::unique_ptr<CKvMapProjData> record(_CreateProjData());
  if (!record) return false;
  std::string label;
  double v = 0.0;
  D::EParamType kind = D::eParamNumber;
  if (!record->GetParameter(index, label, v, kind)) return false;
  name = label;
  value = v;
  switch (kind) {
    case D::eParamLength:
      unitName = m_strProjUnit;
      unitFactor = m_dProjUnit;
      break;
    case D::eParamAngle:
      unitName = m_strAngularUnit;
      unitFactor = m_dAngularUnit;
      break;
    default:
      unitName = "";
      unitFactor = 1.0;
      break;
  }
  return true;
}
