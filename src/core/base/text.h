// Text: UTF-8 in memory, Windows-1252 on disk. Fixed texts hold exactly their
// declared number of characters: cut when longer, blank-padded when shorter.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ira {

// Characters Windows-1252 cannot hold become '?'.
std::string Utf8ToCp1252(std::string_view utf8);
std::string Cp1252ToUtf8(std::string_view cp1252);

// Number of characters (code points) of a UTF-8 text.
std::size_t CharCount(std::string_view utf8);
// Cut to `width` characters, or pad with blanks on the right to `width`.
std::string FixedText(std::string_view utf8, std::size_t width);

std::string RTrim(std::string_view s);
std::string LTrim(std::string_view s);
std::string Trim(std::string_view s);
std::string ToLower(std::string_view s);  // ASCII letters only

// A number "as a number": its shortest decimal form (10, 10.5, 0, -0.01).
std::string NumberText(float value);
std::string NumberText(double value);

// Right-aligns in a field of `width` characters; a longer text is left whole.
std::string PadLeft(std::string_view s, std::size_t width);
std::string PadRight(std::string_view s, std::size_t width);

}  // namespace ira
