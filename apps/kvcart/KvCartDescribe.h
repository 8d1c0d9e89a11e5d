#pragma once

#include <string>

// `kvcart info`: everything the library knows about one coordinate system.
namespace kvcart {

// Writes the description of `cs` (a resolved coordinate-system string) to
// standard output, as aligned text or as one JSON object.
void Describe(const std::string& cs, bool json);

}  // namespace kvcart
