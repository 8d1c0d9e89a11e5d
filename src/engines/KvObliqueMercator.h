#pragma once

#include <string>

#include "catalogue/KvObliqueMercatorProjection.h"
#include "engines/KvHotineBase.h"
#include "platform/KvCartExport.h"

// Hotine oblique Mercator, variant B (EPSG method 9815), with the grid
// angle equal to the azimuth of the initial line: the false easting and
// northing are the coordinates of the projection centre (Switzerland,
// Hungary, Madagascar's Laborde approximation).
//
// Formulas: IOGP Publication 373-7-2 (EPSG Guidance Note 7-2), section
// "Hotine Oblique Mercator (variant B)", written once for the family in
// CKvHotineConstants: variant A with its false origin moved by uc along the
// initial line, exact in real arithmetic.  An azimuth of 90 degrees (the
// Swiss and Hungarian grids) needs no formula of its own there.
// Accuracy, as measured by tools/measure_engine_accuracy.sh against the same
// formulas evaluated with mpmath at 40 digits, the reverse's latitude
// iterated (LV95, 0 to 16 E, 40 to 54 N; Madagascar's Laborde
// approximation, 40 to 54 E, 28 to 10 S): forward within 3 nanometres,
// reverse within 1e-13 degrees.  Over the areas of use of the bundled
// variant B grids it agrees with PROJ 9.1.1 within 1 micrometre and 1e-10
// degrees (tests/data/engines/oblique_mercator_krovak_area.cases).  PROJ
// computes the Swiss and Hungarian grids with its own oblique cylindrical
// formulas, from which Hotine's with an azimuth of 90 degrees differ by less
// than 10 nanometres over those countries: the same projection.
// Domain, longitudes and the engine without an ellipsoid: as
// CKvHotineObliqueMercator.  GetOrigin is the centre, which maps to the
// false origin.
// A text whose grid angle differs from its azimuth is not built here: the
// reader makes it the rectified skew orthomorphic with its false origin
// moved to the natural origin, which is the same projection.
class KVCART_API CKvObliqueMercator
    : public CKvHotineBase<CKvObliqueMercator, CKvObliqueMercatorProjection> {
 public:
  explicit CKvObliqueMercator(CKvObliqueMercatorProjection* set);
  // Angles in degrees; the easting and northing of the centre in metres.
  CKvObliqueMercator(const std::string& name, double scale, double centerLongitude,
                     double centerLatitude, double azimuth, double falseEasting,
                     double falseNorthing, const CKvEllipsoid& ellipsoid);

 private:
  CKvObliqueMercator(const std::string& name, double scale, double centerLongitude,
                     double centerLatitude, double azimuth, double falseEasting,
                     double falseNorthing, const CKvEllipsoid* ellipsoid);
};
