#pragma once

#include <string>
#include <vector>

// `kvcart convert`: points from text files, one per line.
namespace kvcart {

struct SConvertSettings {
  std::string from;  // resolved coordinate-system strings
  std::string to;
  bool height = false;             // lines hold x y h
  int precision = -1;              // decimals; -1: 3 for metres, 9 for degrees
  bool strict = false;             // stop at the first line that fails
  std::vector<std::string> files;  // none or "-": standard input
};

// Converts every file to standard output.  Returns 0 when every line was
// converted, 1 when a line or a file failed (each reported on stderr as
// "FILE:LINE: message").
int RunConvert(const SConvertSettings& settings);

}  // namespace kvcart
