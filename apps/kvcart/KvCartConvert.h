#pragma once

#include <string>
#include <vector>

// `kvcart convert`: points from text files, one per line.
namespace kvcart {

struct SConvertSettings {
  std::string from;  // resolved coordinate-system strings
  std::string to;
  bool height = false;             // lines hold x y h
  bool ellipsoidalHeight = false;  // h is ellipsoidal and goes through the datum shift
  int precision = -1;              // decimals; -1: 3 for metres, 9 for degrees
  bool strict = false;             // stop at the first line that fails
  std::vector<std::string> files;  // none or "-": standard input
};

// Converts every file to standard output.  Returns 0 when every line was
// converted, 1 when a line or a file failed (each reported on stderr as
// "FILE:LINE: message").  Warns once on stderr when the two systems lie on
// different ellipsoids and neither says its datum shift to WGS 84.
//
// Heights are kept as they are unless `ellipsoidalHeight`: a modeller's
// heights and depths are above or below sea level, not the ellipsoid, and
// the shift between two datums does not change them (the points still move
// as the height says, as cs2cs does between two 2D systems).
int RunConvert(const SConvertSettings& settings);

}  // namespace kvcart
