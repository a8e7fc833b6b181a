#pragma once

#include <string>
#include <string_view>

namespace velmo {

// Case without the C library's locale: the mappings are tables of our own (`CaseTables.h`), the
// same everywhere.

/// Lower case of an ASCII letter; any other byte as it is.
constexpr char AsciiLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether two names of sections or keys are the same: only the case of ASCII letters is ignored.
bool EqualsIgnoringAsciiCase(std::string_view first, std::string_view second);

/// The text in the form in which texts "without regard to case" are compared: Unicode simple case
/// folding.
std::string FoldCase(std::string_view text);

/// The text in upper case, character by character: "ß" stays as it is.
std::string UpperCase(std::string_view text);

/// Whether two values, extensions or names are the same without regard to case.
bool EqualsIgnoringCase(std::string_view first, std::string_view second);

/// Whether `first` stands before `second`: without regard to case, then by bytes.
bool LessIgnoringCase(std::string_view first, std::string_view second);

/// Whether a setting's value is "true" in any spelling of case.
bool IsTrue(std::string_view value);

/// Whether a setting's value is "false" in any spelling of case. A value may be neither.
bool IsFalse(std::string_view value);

/// Whether `name` matches `pattern` without regard to case: `*` stands for any characters, `?` for
/// one.
bool MatchesPattern(std::string_view name, std::string_view pattern);

} // namespace velmo
