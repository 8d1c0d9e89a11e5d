#pragma once

#include <string>
#include <vector>

// Coordinate-system arguments: a catalogue name (any letter case when only
// one name matches), a WKT text, a proj string ("+proj=..."), or "@FILE" of a
// .prj file.
namespace kvcart {

// The coordinate-system string an argument stands for: the catalogue name as
// the catalogue spells it, the WKT of a proj string, for "@FILE" the file's
// text with line breaks joined.  False with `error` set when the file cannot
// be read or the string names no system the library can build, saying why.
bool ResolveCs(const std::string& argument, std::string& cs, std::string& error);

// Up to `count` catalogue names closest to `wanted` (letter case ignored):
// names containing it first, then by edit distance.
std::vector<std::string> ClosestNames(const std::string& wanted, size_t count);

}  // namespace kvcart
