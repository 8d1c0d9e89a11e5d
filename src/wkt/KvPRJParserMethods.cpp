#include "wkt/KvPRJParserMethods.h"

#include <stdlib.h>

#include "platform/KvCLocale.h"
#include "wkt/KvPRJParser.h"

double KvWktToDouble(const CString& text) {
  return strtod_l(text.GetString(), nullptr, KvCLocale());
}

namespace {

typedef CKvMapProjData D;
typedef EKvWktMissing M;

#define KV_WKT_PARAM(Name, Alt, Field, Required, Missing, Written)                      \
  {                                                                                     \
    Name, Alt, &CKvPRJParser::Get##Field, &CKvPRJParser::Set##Field, Required, Missing, \
        Written                                                                         \
  }

// The parameters most methods share, required and written.
#define KV_WKT(Name, Field) KV_WKT_PARAM(Name, nullptr, Field, true, M::eNotSet, true)

constexpr SKvWktParameter kFE = KV_WKT("False_Easting", FalseEasting);
constexpr SKvWktParameter kFN = KV_WKT("False_Northing", FalseNorthing);
constexpr SKvWktParameter kCM = KV_WKT("Central_Meridian", CentralMeridian);
constexpr SKvWktParameter kSF = KV_WKT("Scale_Factor", ScaleFactor);
constexpr SKvWktParameter kLO = KV_WKT("Latitude_Of_Origin", LatitudeOfOrigin);
constexpr SKvWktParameter kSP1 = KV_WKT("Standard_Parallel_1", StandardParallel1);
constexpr SKvWktParameter kSP2 = KV_WKT("Standard_Parallel_2", StandardParallel2);
constexpr SKvWktParameter kAz = KV_WKT("Azimuth", Azimuth);
constexpr SKvWktParameter kLonC = KV_WKT("Longitude_Of_Center", LongitudeOfCenter);
constexpr SKvWktParameter kLatC = KV_WKT("Latitude_Of_Center", LatitudeOfCenter);
constexpr SKvWktParameter kXYRot = KV_WKT("XY_Plane_Rotation", XYPlaneRotation);

// Each method's parameters in the order they are written and read.
constexpr SKvWktParameter kTransverse[] = {kFE, kFN, kCM, kSF, kLO};
// The scale is read so that a text without parallels can still be read as
// the one-parallel cone, but it is not written.
constexpr SKvWktParameter kLambert2SP[] = {
    kFE, kFN, kCM, kSP1, kSP2,
    KV_WKT_PARAM("Scale_Factor", nullptr, ScaleFactor, false, M::eNotSet, false), kLO};
constexpr SKvWktParameter kStereographic[] = {
    kFE, kFN,
    KV_WKT_PARAM("Central_Meridian", "Longitude_Of_Origin", CentralMeridian, true, M::eNotSet,
                 true),
    kSF, kLO};
// Variant B exports name only the latitude of true scale: no scale is 1.
constexpr SKvWktParameter kPolar[] = {
    kFE, kFN, kCM, KV_WKT_PARAM("Scale_Factor", nullptr, ScaleFactor, false, M::eOne, true), kLO};
constexpr SKvWktParameter kNewZealand[] = {
    kFE, kFN,
    KV_WKT_PARAM("Longitude_Of_Origin", "Central_Meridian", CentralMeridian, true, M::eNotSet,
                 true),
    kLO};
// The grid angle, when missing, is the azimuth: an unrotated grid.  The
// ESRI dialect names it "XY_Plane_Rotation".
constexpr SKvWktParameter kHotine[] = {
    kFE, kFN, kSF, kAz, kLonC, kLatC,
    KV_WKT_PARAM("Rectified_Grid_Angle", "XY_Plane_Rotation", XYPlaneRotation, true, M::eAzimuth,
                 false)};
constexpr SKvWktParameter kSkew[] = {kFE, kFN, kSF, kAz, kLonC, kLatC, kXYRot};
constexpr SKvWktParameter kRotated[] = {
    KV_WKT("Longitude_Of_South_Pole", LongitudeOfSouthPole),
    KV_WKT("Latitude_Of_South_Pole", LatitudeOfSouthPole),
    KV_WKT("Angle_Of_Rotation", AngleOfRotation)};
constexpr SKvWktParameter kParallel[] = {kFE, kFN, kCM, kSP1};
constexpr SKvWktParameter kMercator1SP[] = {kFE, kFN, kCM, kSF};
constexpr SKvWktParameter kKrovak[] = {
    kFE, kFN, KV_WKT("Pseudo_Standard_Parallel_1", PseudoParallel), kSF, kAz, kLonC, kLatC,
    KV_WKT_PARAM("X_Scale", nullptr, XScale, false, M::eOne, true),
    KV_WKT_PARAM("Y_Scale", nullptr, YScale, false, M::eOne, true),
    KV_WKT_PARAM("XY_Plane_Rotation", nullptr, XYPlaneRotation, true, M::eZero, true)};
// Centre and origin may also be given under the names of the centre.
constexpr SKvWktParameter kCentreCM =
    KV_WKT_PARAM("Central_Meridian", "Longitude_Of_Center", CentralMeridian, true, M::eNotSet,
                 true);
constexpr SKvWktParameter kCentreLO =
    KV_WKT_PARAM("Latitude_Of_Origin", "Latitude_Of_Center", LatitudeOfOrigin, true, M::eNotSet,
                 true);
constexpr SKvWktParameter kConic[] = {kFE, kFN, kCentreCM, kSP1, kSP2, kCentreLO};
constexpr SKvWktParameter kAzimuthal[] = {kFE, kFN, kCentreCM, kCentreLO};
constexpr SKvWktParameter kCassini[] = {kFE, kFN, kCM, kLO};

#undef KV_WKT
#undef KV_WKT_PARAM

#define KV_WKT_METHOD(Type, Params, TwoParallels) \
  { D::Type, Params, static_cast<int>(sizeof Params / sizeof Params[0]), TwoParallels }

// Indexed by projection type - 1; the geographical type has no parameters.
constexpr SKvWktMethod kMethods[] = {
    KV_WKT_METHOD(eTransverseMercator, kTransverse, false),
    KV_WKT_METHOD(eLambert2SP, kLambert2SP, true),
    KV_WKT_METHOD(eLambert1SP, kTransverse, false),
    KV_WKT_METHOD(eStereographic, kStereographic, false),
    KV_WKT_METHOD(eNewZealandMapGrid, kNewZealand, false),
    KV_WKT_METHOD(eHotineObliqueMercator, kHotine, false),
    KV_WKT_METHOD(eObliqueMercator, kHotine, false),
    KV_WKT_METHOD(eRectifiedSkewOrthomorphic, kSkew, false),
    KV_WKT_METHOD(eRotatedLongitudeLatitude, kRotated, false),
    KV_WKT_METHOD(eMercator2SP, kParallel, false),
    KV_WKT_METHOD(eMercator1SP, kMercator1SP, false),
    KV_WKT_METHOD(eStereographicNorthPole, kParallel, false),
    KV_WKT_METHOD(eStereographicSouthPole, kParallel, false),
    {D::eGeographical, nullptr, 0, false},
    KV_WKT_METHOD(eKrovak, kKrovak, false),
    KV_WKT_METHOD(eAlbersEqualArea, kConic, true),
    KV_WKT_METHOD(eLambertAzimuthalEqualArea, kAzimuthal, false),
    KV_WKT_METHOD(eCassiniSoldner, kCassini, false),
    KV_WKT_METHOD(eEquidistantConic, kConic, true),
    KV_WKT_METHOD(ePolarStereographic, kPolar, false),
    // "Non_Projected" keeps the values of a transverse Mercator text.
    KV_WKT_METHOD(eNonProjected, kTransverse, false),
};

#undef KV_WKT_METHOD

}  // namespace

const SKvWktMethod* KvWktMethod(CKvMapProjData::EProjectionType type) {
  const int index = static_cast<int>(type) - 1;
  if (index < 0 || index >= static_cast<int>(sizeof kMethods / sizeof kMethods[0])) return nullptr;
  const SKvWktMethod& method = kMethods[index];
  return method.count > 0 ? &method : nullptr;
}
