#include "engines/KvCassiniSoldner.h"

#include "platform/KvConstants.h"

CKvCassiniSoldner::CKvCassiniSoldner(CKvCassiniSoldnerProjection* set)
    : CKvCassiniSoldner(set->GetName(), set->GetCentralMeridian(), set->GetOriginLatitude(),
                        set->GetFalseEasting(), set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvCassiniSoldner::CKvCassiniSoldner(const std::string& name, double centralMeridian,
                                     double originLatitude, double falseEasting,
                                     double falseNorthing, const CKvEllipsoid& ellipsoid)
    : CKvCassiniSoldner(name, centralMeridian, originLatitude, falseEasting, falseNorthing,
                        &ellipsoid) {}

CKvCassiniSoldner::CKvCassiniSoldner(const std::string& name, double centralMeridian,
                                     double originLatitude, double falseEasting,
                                     double falseNorthing, const CKvEllipsoid* ellipsoid)
    : CKvVariantEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dLambdaO = centralMeridian * KvConst::kDegToRad;
  m_dPhiO = originLatitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  if (m_dInvF > 0.0)
    m_pProj = new CKvCassiniSoldnerEllipsoid(*ellipsoid, centralMeridian, originLatitude,
                                             falseEasting, falseNorthing);
  else
    m_pProj = new CKvCassiniSoldnerSphere(*ellipsoid, centralMeridian, originLatitude, falseEasting,
                                          falseNorthing);
}

double CKvCassiniSoldner::GetConvergence(double lon, double lat) {
  return _MeridianConvergence(lon, lat);
}
