#include "engines/KvEquidistantConic.h"

#include "engines/KvAuxiliaryLatitudes.h"
#include "platform/KvConstants.h"

CKvEquidistantConic::CKvEquidistantConic(CKvEquidistantConicProjection* set)
    : CKvEquidistantConic(set->GetName(), set->GetParallel1(), set->GetParallel2(),
                          set->GetCentralMeridian(), set->GetOriginLatitude(),
                          set->GetFalseEasting(), set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvEquidistantConic::CKvEquidistantConic(const std::string& name, double parallel1,
                                         double parallel2, double originLongitude,
                                         double originLatitude, double falseEasting,
                                         double falseNorthing, const CKvEllipsoid& ellipsoid)
    : CKvEquidistantConic(name, parallel1, parallel2, originLongitude, originLatitude, falseEasting,
                          falseNorthing, &ellipsoid) {}

CKvEquidistantConic::CKvEquidistantConic(const std::string& name, double parallel1,
                                         double parallel2, double originLongitude,
                                         double originLatitude, double falseEasting,
                                         double falseNorthing, const CKvEllipsoid* ellipsoid)
    : CKvVariantEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dPhi1 = parallel1 * KvConst::kDegToRad;
  m_dPhi2 = parallel2 * KvConst::kDegToRad;
  m_dLambdaF = originLongitude * KvConst::kDegToRad;
  m_dPhiF = originLatitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  if (m_dInvF > 0.0) {
    auto* variant =
        new CKvEquidistantConicEllipsoid(*ellipsoid, parallel1, parallel2, originLongitude,
                                         originLatitude, falseEasting, falseNorthing);
    m_dN = variant->GetN();
    m_pProj = variant;
  } else {
    auto* variant = new CKvEquidistantConicSphere(*ellipsoid, parallel1, parallel2, originLongitude,
                                                  originLatitude, falseEasting, falseNorthing);
    m_dN = variant->GetN();
    m_pProj = variant;
  }
}

double CKvEquidistantConic::GetConvergence(double lon, double) {
  double lon0 = 0.0, lat0 = 0.0;
  GetOrigin(&lon0, &lat0);
  return KvAux::ReducedLongitudeDeg(lon - lon0) * m_dN;
}
