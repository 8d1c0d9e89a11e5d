#pragma once

#include <string>

// Text helpers shared by kvcart's commands.
namespace kvcart {

// The shortest text that reads back as `value`, in the C locale, without an
// exponent for the magnitudes coordinates and parameters have; "nan" and
// "inf" for non-finite values.
std::string Number(double value);

// `text` as UTF-8: valid UTF-8 sequences are kept, every other byte is read
// as Latin-1 (the encoding of most .prj files that are not UTF-8).
std::string ToUtf8(const std::string& text);

// Letters folded to lower case, ASCII only, whatever the locale.
std::string Lower(std::string text);

}  // namespace kvcart
