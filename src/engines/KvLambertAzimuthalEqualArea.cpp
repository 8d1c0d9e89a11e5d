#include "engines/KvLambertAzimuthalEqualArea.h"

#include "platform/KvConstants.h"

CKvLambertAzimuthalEqualArea::CKvLambertAzimuthalEqualArea(
    CKvLambertAzimuthalEqualAreaProjection* set)
    : CKvLambertAzimuthalEqualArea(set->GetName(), set->GetCentre(), set->GetOriginLatitude(),
                                   set->GetFalseEasting(), set->GetFalseNorthing(),
                                   _FindEllipsoid(*set)) {}

CKvLambertAzimuthalEqualArea::CKvLambertAzimuthalEqualArea(
    const std::string& name, double centreLongitude, double originLatitude, double falseEasting,
    double falseNorthing, const CKvEllipsoid& ellipsoid)
    : CKvLambertAzimuthalEqualArea(name, centreLongitude, originLatitude, falseEasting,
                                   falseNorthing, &ellipsoid) {}

CKvLambertAzimuthalEqualArea::CKvLambertAzimuthalEqualArea(
    const std::string& name, double centreLongitude, double originLatitude, double falseEasting,
    double falseNorthing, const CKvEllipsoid* ellipsoid)
    : CKvVariantEngine(name) {
  if (!ellipsoid) return;
  _SetEllipsoid(*ellipsoid);
  m_dLambdaO = centreLongitude * KvConst::kDegToRad;
  m_dPhiO = originLatitude * KvConst::kDegToRad;
  m_dFalseEasting = falseEasting;
  m_dFalseNorthing = falseNorthing;
  if (m_dInvF > 0.0)
    m_pProj = new CKvLambertAzimuthalEqualAreaEllipsoid(*ellipsoid, centreLongitude, originLatitude,
                                                        falseEasting, falseNorthing);
  else
    m_pProj = new CKvLambertAzimuthalEqualAreaSphere(*ellipsoid, centreLongitude, originLatitude,
                                                     falseEasting, falseNorthing);
}

double CKvLambertAzimuthalEqualArea::GetConvergence(double lon, double lat) {
  return _MeridianConvergence(lon, lat);
}
