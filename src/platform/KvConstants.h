#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

// Numeric facts the whole library shares, named once.
namespace KvConst {

constexpr double kPi = 3.141592653589793;
constexpr double kHalfPi = 1.5707963267948966;
constexpr double kDegToRad = 0.017453292519943295;   // pi / 180
constexpr double kRadToDeg = 57.29577951308232;      // 180 / pi
constexpr double kUsSurveyFoot = 0.30480060960121924;  // 1200 / 3937 m
constexpr double kArcSecToRad = 4.84813681109536e-6;   // pi / (180 * 3600)
constexpr double kPpmToFraction = 1e-6;
constexpr double kNotSet = -1e-35;                   // a parsed numeric field nobody set
constexpr double kRelativeTolerance = 1e-12;
constexpr int kEpsgWgs84Geographic = 4326;           // the EPSG code of "LONG/LAT"
// What an engine returns where its formulas have no answer (no cone, no
// ellipsoid).
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Two numbers are close when they are equal or differ by at most 1e-12 of
// the larger magnitude.  NaN is close to nothing.
inline bool IsClose(double x, double y) {
  if (x == y) return true;
  const double larger = std::max(std::fabs(x), std::fabs(y));
  return std::fabs(x - y) / larger <= kRelativeTolerance;
}

}  // namespace KvConst
