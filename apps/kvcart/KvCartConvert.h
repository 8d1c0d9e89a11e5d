#pragma once

#include <string>
#include <vector>

// `kvcart convert`: points from text files, one per line.
namespace kvcart {

struct SConvertSettings {
  std::string from;  // resolved coordinate-system strings
  std::string to;
  bool inverse = false;            // convert from `to` to `from` (swapped before resolving)
  bool height = false;             // lines hold x y h
  bool ellipsoidalHeight = false;  // h is ellipsoidal and goes through the datum shift
  int precision = -1;              // decimals; -1: 3 for metres, 9 for degrees
  bool strict = false;             // stop at the first line that fails
  int skipLines = 0;               // lines of each input copied unchanged
  std::vector<std::string> files;  // none or "-": standard input
};

// Converts every file to standard output.  Returns 0 when every line was
// converted, 1 when a line or a file failed (each reported on stderr as
// "FILE:LINE: message"): a line that holds no point, a latitude outside
// -90..90 or a value that is not finite in a geographic source, a decimal
// comma or fields separated by semicolons, a point outside the systems'
// domain.  The first `skipLines` lines of each input, and the first line
// that is neither blank nor a comment when it does not start with a number
// (a column header), are copied unchanged.  Warns once on stderr when the
// two systems lie on different ellipsoids and neither says its datum shift
// to WGS 84.
//
// Heights are kept as they are unless `ellipsoidalHeight`: a modeller's
// heights and depths are above or below sea level, not the ellipsoid, and
// the shift between two datums does not change them (the points still move
// as the height says, as cs2cs does between two 2D systems).
int RunConvert(const SConvertSettings& settings);

}  // namespace kvcart
