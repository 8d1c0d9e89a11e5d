#include "engines/KvEngineTable.h"

#include <string>

#include "catalogue/KvEllipsoid.h"
#include "platform/KvConstants.h"
#include "wkt/KvPRJParser.h"

// The engines, by family; each family keeps its includes in its own block.
#include "engines/KvGeographical.h"
#include "engines/KvNewZealandMapGrid.h"
#include "engines/KvRotatedLongitudeLatitude.h"

// transverse Mercator, Lambert and Mercator
#include "engines/KvLambert1SP.h"
#include "engines/KvLambert2SP.h"
#include "engines/KvMercator1SP.h"
#include "engines/KvMercator2SP.h"
#include "engines/KvTransverseMercatorJHS.h"

// stereographic family
#include "engines/KvPolarStereographic.h"
#include "engines/KvStereographic.h"
#include "engines/KvStereographicNorthPole.h"
#include "engines/KvStereographicSouthPole.h"

// oblique Mercator family and Krovak
#include "engines/KvHotineObliqueMercator.h"
#include "engines/KvKrovak.h"
#include "engines/KvObliqueMercator.h"
#include "engines/KvRectifiedSkewOrthomorphic.h"

// equal-area and equidistant family
#include "engines/KvAlbersEqualArea.h"
#include "engines/KvCassiniSoldner.h"
#include "engines/KvEquidistantConic.h"
#include "engines/KvLambertAzimuthalEqualArea.h"

namespace {

typedef CKvMapProjData D;

// A parsed record's values in the units of the engines' explicit
// constructors: angles in degrees, lengths in metres.  Longitudes of a
// central meridian or centre have the prime meridian added as it stands.
struct SValues {
  std::string name;
  CKvEllipsoid ellipsoid;
  double falseEasting, falseNorthing;
  double centralMeridian, originLatitude, parallel1, parallel2, scale;
  double centerLongitude, centerLatitude, azimuth, xyPlaneRotation;
  double pseudoParallel, xScale, yScale;
  double southPoleLongitude, southPoleLatitude, rotationAngle;
  double primeMeridian;
};

SValues ValuesOf(const CKvPRJParser& r) {
  CString ellipsoidName, unit;
  double major = 0.0, invFlattening = 0.0, angularUnit = 0.0, projUnit = 0.0;
  r.GetEllipsoid(ellipsoidName, major, invFlattening);
  r.GetAngularUnit(unit, angularUnit);
  r.GetProjUnit(unit, projUnit);
  CString primeMeridianName;
  double primeMeridian = 0.0;
  r.GetPrimeMeridian(primeMeridianName, primeMeridian);
  auto deg = [&](double v) { return v * angularUnit * KvConst::kRadToDeg; };
  auto metres = [&](double v) { return v * projUnit; };
  SValues v{r.GetProjCSname().GetString(),
            CKvEllipsoid(ellipsoidName.GetString(), "", major, invFlattening),
            metres(r.GetFalseEasting()),
            metres(r.GetFalseNorthing()),
            deg(r.GetCentralMeridian()) + primeMeridian,
            deg(r.GetLatitudeOfOrigin()),
            deg(r.GetStandardParallel1()),
            deg(r.GetStandardParallel2()),
            r.GetScaleFactor(),
            deg(r.GetLongitudeOfCenter()) + primeMeridian,
            deg(r.GetLatitudeOfCenter()),
            deg(r.GetAzimuth()),
            deg(r.GetXYPlaneRotation()),
            deg(r.GetPseudoParallel()),
            r.GetXScale(),
            r.GetYScale(),
            deg(r.GetLongitudeOfSouthPole()),
            deg(r.GetLatitudeOfSouthPole()),
            deg(r.GetAngleOfRotation()),
            primeMeridian};
  return v;
}

struct SRow {
  CKvProjection* (*fromSet)(CKvMapProjData& set);
  CKvProjection* (*fromValues)(const SValues& v);
};

// The engine of a set, built from it; null if the set is not the engine's.
template <class Engine>
CKvProjection* FromSet(CKvMapProjData& set) {
  auto* own = dynamic_cast<typename Engine::ParameterSet*>(&set);
  return own ? new Engine(own) : nullptr;
}

#define KV_NO_ENGINE \
  { nullptr, nullptr }

// Indexed by projection type - 1.
const SRow kRows[] = {
    // 1 transverse Mercator: the Guidance Note's formulation, from the
    // catalogue and from WKT alike
    {FromSet<CKvTransverseMercatorJHS>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvTransverseMercatorJHS(v.name, v.scale, v.centralMeridian, v.originLatitude,
                                           v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 2 Lambert conformal conic, two standard parallels
    {FromSet<CKvLambert2SP>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvLambert2SP(v.name, v.parallel1, v.parallel2, v.centralMeridian,
                                v.originLatitude, v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 3 Lambert conformal conic, one standard parallel
    {FromSet<CKvLambert1SP>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvLambert1SP(v.name, v.scale, v.centralMeridian, v.originLatitude,
                                v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 4 oblique stereographic
    {FromSet<CKvStereographic>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvStereographic(v.name, v.scale, v.centralMeridian, v.originLatitude,
                                   v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 5 New Zealand map grid
    {FromSet<CKvNewZealandMapGrid>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvNewZealandMapGrid(v.name, v.centralMeridian, v.originLatitude,
                                       v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 6 Hotine oblique Mercator
    {FromSet<CKvHotineObliqueMercator>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvHotineObliqueMercator(v.name, v.scale, v.centerLongitude, v.centerLatitude,
                                           v.azimuth, v.falseEasting, v.falseNorthing,
                                           v.ellipsoid);
     }},
    // 7 oblique Mercator: a grid angle other than the azimuth was read as type 8
    {FromSet<CKvObliqueMercator>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvObliqueMercator(v.name, v.scale, v.centerLongitude, v.centerLatitude,
                                     v.azimuth, v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 8 rectified skew orthomorphic
    {FromSet<CKvRectifiedSkewOrthomorphic>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvRectifiedSkewOrthomorphic(v.name, v.scale, v.centerLongitude,
                                               v.centerLatitude, v.azimuth, v.xyPlaneRotation,
                                               v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 9 rotated longitude/latitude
    {FromSet<CKvRotatedLongitudeLatitude>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvRotatedLongitudeLatitude(v.name, v.southPoleLongitude, v.southPoleLatitude,
                                              v.rotationAngle, v.ellipsoid);
     }},
    // 10 Mercator, standard parallel
    {FromSet<CKvMercator2SP>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvMercator2SP(v.name, v.parallel1, v.centralMeridian, v.falseEasting,
                                 v.falseNorthing, v.ellipsoid);
     }},
    // 11 Mercator, scale factor
    {FromSet<CKvMercator1SP>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvMercator1SP(v.name, v.scale, v.centralMeridian, v.falseEasting,
                                 v.falseNorthing, v.ellipsoid);
     }},
    // 12 stereographic north pole, true scale at the first parallel
    {FromSet<CKvStereographicNorthPole>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvStereographicNorthPole(v.name, v.parallel1, v.centralMeridian,
                                            v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 13 stereographic south pole, true scale at the first parallel
    {FromSet<CKvStereographicSouthPole>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvStereographicSouthPole(v.name, v.parallel1, v.centralMeridian,
                                            v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 14 geographical
    {FromSet<CKvGeographical>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvGeographical(v.name, v.primeMeridian, v.ellipsoid);
     }},
    // 15 Krovak
    {FromSet<CKvKrovak>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvKrovak(v.name, v.scale, v.pseudoParallel, v.centerLongitude, v.centerLatitude,
                            v.azimuth, v.xyPlaneRotation, v.xScale, v.yScale, v.falseEasting,
                            v.falseNorthing, v.ellipsoid);
     }},
    // 16 Albers equal area
    {FromSet<CKvAlbersEqualArea>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvAlbersEqualArea(v.name, v.parallel1, v.parallel2, v.centralMeridian,
                                     v.originLatitude, v.falseEasting, v.falseNorthing,
                                     v.ellipsoid);
     }},
    // 17 Lambert azimuthal equal area
    {FromSet<CKvLambertAzimuthalEqualArea>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvLambertAzimuthalEqualArea(v.name, v.centralMeridian, v.originLatitude,
                                               v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
    // 18 Cassini-Soldner
    {FromSet<CKvCassiniSoldner>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvCassiniSoldner(v.name, v.centralMeridian, v.originLatitude, v.falseEasting,
                                    v.falseNorthing, v.ellipsoid);
     }},
    // 19 equidistant conic
    {FromSet<CKvEquidistantConic>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvEquidistantConic(v.name, v.parallel1, v.parallel2, v.centralMeridian,
                                      v.originLatitude, v.falseEasting, v.falseNorthing,
                                      v.ellipsoid);
     }},
    // 20 polar stereographic, by origin latitude and scale
    {FromSet<CKvPolarStereographic>,
     [](const SValues& v) -> CKvProjection* {
       return new CKvPolarStereographic(v.name, v.scale, v.centralMeridian, v.originLatitude,
                                        v.falseEasting, v.falseNorthing, v.ellipsoid);
     }},
};

#undef KV_NO_ENGINE

const SRow* RowOf(D::EProjectionType type) {
  const int index = static_cast<int>(type) - 1;
  if (index < 0 || index >= static_cast<int>(sizeof kRows / sizeof kRows[0])) return nullptr;
  return &kRows[index];
}

}  // namespace

CKvProjection* CKvEngineTable::Create(CKvMapProjData& set) {
  const SRow* row = RowOf(set.GetProjectionType());
  return row && row->fromSet ? row->fromSet(set) : nullptr;
}

CKvProjection* CKvEngineTable::Create(const CKvPRJParser& record) {
  D::EProjectionType type = record.GetProjectionType();
  // A record read as "Non_Projected" keeps its transverse Mercator values
  // and builds that engine, deliberately.
  if (type == D::eNonProjected) type = D::eTransverseMercator;
  const SRow* row = RowOf(type);
  if (!row || !row->fromValues) return nullptr;
  CKvProjection* engine = row->fromValues(ValuesOf(record));
  // The engines that derive a number from their parameters are asked for it
  // once, as every caller that builds them from values does.
  double scratch = 0.0;
  engine->GetDerivedParameters(&scratch);
  return engine;
}
