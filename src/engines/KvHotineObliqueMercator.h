#pragma once

#include <string>

#include "catalogue/KvHotineObliqueMercatorProjection.h"
#include "engines/KvHotineBase.h"
#include "platform/KvCartExport.h"

// Hotine oblique Mercator, variant A (EPSG method 9812), with the grid
// angle equal to the azimuth of the initial line: the false easting and
// northing apply at the natural origin, where the initial line crosses the
// equator of the aposphere (Alaska zone 1, Michigan, Oregon).
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Hotine Oblique Mercator (variant A)", written once for the family in
// CKvHotineConstants, whose header gives the rewritings and the special
// cases (azimuth 90 and 0, a centre on the equator or at a pole).  The
// reverse takes the latitude from the conformal latitude by Karney's series
// (CKvConformalLatitude).
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the same
// formulas evaluated with mpmath at 40 digits, the reverse's latitude
// iterated (Alaska zone 1 and Michigan on GRS 1980, some 12 degrees around
// the centre): forward within 3 nanometres, reverse within 1e-13 degrees.
// Over the areas of use of Alaska zone 1, Michigan and Oregon Coast it
// agrees with PROJ 9.1.1 within 1 micrometre and 1e-10 degrees
// (tests/data/engines/oblique_mercator_krovak_area.cases).
// Domain: the whole ellipsoid but the two points 90 degrees from the initial
// line on the aposphere, which lie at infinity; the geographic poles map to
// finite points.  Longitudes are reduced to +-180 degrees about the centre.
// Without an ellipsoid both directions return NaN.
// GetOrigin is the centre, not the natural origin.
class KVCART_API CKvHotineObliqueMercator
    : public CKvHotineBase<CKvHotineObliqueMercator, CKvHotineObliqueMercatorProjection> {
 public:
  explicit CKvHotineObliqueMercator(CKvHotineObliqueMercatorProjection* set);
  // Angles in degrees, false easting and northing in metres.
  CKvHotineObliqueMercator(const std::string& name, double scale, double centerLongitude,
                           double centerLatitude, double azimuth, double falseEasting,
                           double falseNorthing, const CKvEllipsoid& ellipsoid);

 private:
  CKvHotineObliqueMercator(const std::string& name, double scale, double centerLongitude,
                           double centerLatitude, double azimuth, double falseEasting,
                           double falseNorthing, const CKvEllipsoid* ellipsoid);
};
