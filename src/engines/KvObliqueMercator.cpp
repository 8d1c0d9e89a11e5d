#include "engines/KvObliqueMercator.h"

CKvObliqueMercator::CKvObliqueMercator(CKvObliqueMercatorProjection* set)
    : CKvObliqueMercator(set->GetName(), set->GetScale(), set->GetCenterLongitude(),
                         set->GetCenterLatitude(), set->GetAzimuth(), set->GetFalseEasting(),
                         set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvObliqueMercator::CKvObliqueMercator(const std::string& name, double scale,
                                       double centerLongitude, double centerLatitude,
                                       double azimuth, double falseEasting, double falseNorthing,
                                       const CKvEllipsoid& ellipsoid)
    : CKvObliqueMercator(name, scale, centerLongitude, centerLatitude, azimuth, falseEasting,
                         falseNorthing, &ellipsoid) {}

// Variant B, the grid angle being the azimuth.
CKvObliqueMercator::CKvObliqueMercator(const std::string& name, double scale,
                                       double centerLongitude, double centerLatitude,
                                       double azimuth, double falseEasting, double falseNorthing,
                                       const CKvEllipsoid* ellipsoid)
    : CKvHotineBase(name, scale, centerLongitude, centerLatitude, azimuth, azimuth, falseEasting,
                    falseNorthing, CKvHotineConstants::eProjectionCentre, ellipsoid) {}
