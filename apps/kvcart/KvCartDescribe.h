#pragma once

#include <string>

// `kvcart info`: everything the library knows about one coordinate system.
namespace kvcart {

// Writes the description of `cs` (a resolved coordinate-system string) to
// standard output, as aligned text or as one JSON object; texts are written
// as UTF-8 whatever the encoding of the string (Latin-1 bytes are read as
// such).  The proj4 text is given in the form cs2cs accepts, or with
// `exactProj4` exactly as the library writes it (JSON holds both).
void Describe(const std::string& cs, bool json, bool exactProj4);

}  // namespace kvcart
