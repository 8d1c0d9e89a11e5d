#include "engines/KvHotineObliqueMercator.h"

CKvHotineObliqueMercator::CKvHotineObliqueMercator(CKvHotineObliqueMercatorProjection* set)
    : CKvHotineObliqueMercator(set->GetName(), set->GetScale(), set->GetCenterLongitude(),
                               set->GetCenterLatitude(), set->GetAzimuth(), set->GetFalseEasting(),
                               set->GetFalseNorthing(), _FindEllipsoid(*set)) {}

CKvHotineObliqueMercator::CKvHotineObliqueMercator(const std::string& name, double scale,
                                                   double centerLongitude, double centerLatitude,
                                                   double azimuth, double falseEasting,
                                                   double falseNorthing,
                                                   const CKvEllipsoid& ellipsoid)
    : CKvHotineObliqueMercator(name, scale, centerLongitude, centerLatitude, azimuth, falseEasting,
                               falseNorthing, &ellipsoid) {}

// Variant A, the grid angle being the azimuth.
CKvHotineObliqueMercator::CKvHotineObliqueMercator(const std::string& name, double scale,
                                                   double centerLongitude, double centerLatitude,
                                                   double azimuth, double falseEasting,
                                                   double falseNorthing,
                                                   const CKvEllipsoid* ellipsoid)
    : CKvHotineBase(name, scale, centerLongitude, centerLatitude, azimuth, azimuth, falseEasting,
                    falseNorthing, CKvHotineConstants::eNaturalOrigin, ellipsoid) {}
