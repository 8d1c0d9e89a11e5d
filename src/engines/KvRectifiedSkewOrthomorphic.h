#pragma once

#include <string>

#include "catalogue/KvRectifiedSkewOrthomorphicProjection.h"
#include "engines/KvHotineBase.h"
#include "platform/KvCartExport.h"

// Rectified skew orthomorphic: Hotine oblique Mercator variant A (EPSG
// method 9812) with its own angle from the rectified to the skew grid, the
// set's XY plane rotation (Malaysia, Brunei, Sabah and Sarawak).  The false
// easting and northing apply at the natural origin.
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Hotine Oblique Mercator (variant A)", written once for the family in
// CKvHotineConstants.
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the same
// formulas evaluated with mpmath at 40 digits, the reverse's latitude
// iterated (Peninsula RSO on GRS 1980, 92 to 112 E, 6 S to 14 N): forward
// within 1 nanometre, reverse within 1e-13 degrees.  Over the areas of use
// of the Malaysian, Bruneian and Bornean grids it agrees with PROJ 9.1.1
// within 1 micrometre and 1e-10 degrees
// (tests/data/engines/oblique_mercator_krovak_area.cases).
// Variant B texts (the false origin at the centre) with a grid angle of
// their own are read as this method: the reader moves their false origin
// from the centre to the natural origin, Ec - uc sin(gammac) and
// Nc - uc cos(gammac), which is the same projection (Timbalai 1948 / RSO
// Borneo, EPSG:29871 to 29873).
// Domain, longitudes and the engine without an ellipsoid: as
// CKvHotineObliqueMercator.  GetOrigin is the centre.
class KVCART_API CKvRectifiedSkewOrthomorphic
    : public CKvHotineBase<CKvRectifiedSkewOrthomorphic, CKvRectifiedSkewOrthomorphicProjection> {
 public:
  explicit CKvRectifiedSkewOrthomorphic(CKvRectifiedSkewOrthomorphicProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvRectifiedSkewOrthomorphic(const std::string& name, double scale, double centerLongitude,
                               double centerLatitude, double azimuth, double xyPlaneRotation,
                               double falseEasting, double falseNorthing,
                               const CKvEllipsoid& ellipsoid);

 private:
  CKvRectifiedSkewOrthomorphic(const std::string& name, double scale, double centerLongitude,
                               double centerLatitude, double azimuth, double xyPlaneRotation,
                               double falseEasting, double falseNorthing,
                               const CKvEllipsoid* ellipsoid);
};
