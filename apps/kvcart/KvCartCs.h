#pragma once

#include <string>
#include <vector>

// Coordinate-system arguments: a catalogue name, a WKT text, or "@FILE" of
// a .prj file.
namespace kvcart {

// The coordinate-system string an argument stands for; for "@FILE" the
// file's text with line breaks joined.  False with `error` set when the
// file cannot be read or the string names no system the library can build.
bool ResolveCs(const std::string& argument, std::string& cs, std::string& error);

// Up to `count` catalogue names closest to `wanted` (letter case ignored):
// names containing it first, then by edit distance.
std::vector<std::string> ClosestNames(const std::string& wanted, size_t count);

}  // namespace kvcart
