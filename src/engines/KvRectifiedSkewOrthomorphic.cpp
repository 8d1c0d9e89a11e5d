#include "engines/KvRectifiedSkewOrthomorphic.h"

CKvRectifiedSkewOrthomorphic::CKvRectifiedSkewOrthomorphic(
    CKvRectifiedSkewOrthomorphicProjection* set)
    : CKvRectifiedSkewOrthomorphic(set->GetName(), set->GetScale(), set->GetCenterLongitude(),
                                   set->GetCenterLatitude(), set->GetAzimuth(),
                                   set->GetXYPlaneRotation(), set->GetFalseEasting(),
                                   set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvRectifiedSkewOrthomorphic::CKvRectifiedSkewOrthomorphic(
    const std::string& name, double scale, double centerLongitude, double centerLatitude,
    double azimuth, double xyPlaneRotation, double falseEasting, double falseNorthing,
    const CKvEllipsoid& ellipsoid)
    : CKvRectifiedSkewOrthomorphic(name, scale, centerLongitude, centerLatitude, azimuth,
                                   xyPlaneRotation, falseEasting, falseNorthing, &ellipsoid) {}

// Variant A with its own grid angle.
CKvRectifiedSkewOrthomorphic::CKvRectifiedSkewOrthomorphic(
    const std::string& name, double scale, double centerLongitude, double centerLatitude,
    double azimuth, double xyPlaneRotation, double falseEasting, double falseNorthing,
    const CKvEllipsoid* ellipsoid)
    : CKvHotineBase(name, scale, centerLongitude, centerLatitude, azimuth, xyPlaneRotation,
                    falseEasting, falseNorthing, CKvHotineConstants::eNaturalOrigin, ellipsoid) {}
