#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmo {

// Texts are bytes, UTF-8 by convention. A byte that belongs to no well-formed sequence is a stray
// byte; it counts as one character and passes through every rule unchanged.

/// One character of a text.
struct Character
{
    char32_t code = 0;      ///< the code point; of a stray byte its value, 0x80 to 0xFF
    std::size_t length = 0; ///< in bytes
    bool stray = false;
};

/// The character at byte `position`, which must lie inside the text.
Character CharacterAt(std::string_view text, std::size_t position);

/// How many ASCII characters follow each other from byte `position` on.
std::size_t CountAscii(std::string_view text, std::size_t position);

/// Appends a code point as UTF-8. A surrogate is written in three bytes like any other.
void AppendUtf8(std::string& text, char32_t code);

/// Whether the text has no stray byte.
bool IsValidUtf8(std::string_view text);

/// Number of characters.
std::size_t CountCharacters(std::string_view text);

/// The first `count` characters, or all if there are fewer.
std::string FirstCharacters(std::string_view text, std::size_t count);

/// The last `count` characters, or all if there are fewer.
std::string LastCharacters(std::string_view text, std::size_t count);

} // namespace velmo
