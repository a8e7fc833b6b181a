#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace velmo {

/// The values of one profile file. Immutable; sections and keys are found without regard to the
/// case of ASCII letters.
///
/// A line, without the blanks and tabs around it, is empty; a comment, if it begins with ";"; a
/// section, from "[" to "]"; a key, if it holds "=", with its value behind the first of them;
/// anything else is passed over. Only the first section of a name counts, and in it the first key
/// of a name.
class ProfileText final
{
public:
    /// `bytes` is the file's content, in any of the encodings that `DecodeFileText` takes.
    explicit ProfileText(std::string_view bytes);

    /// The value without one pair of equal quotes around it, cut to 254 characters. Empty if it is
    /// absent or empty. Valid as long as this object.
    std::string_view Value(std::string_view section, std::string_view key) const;

private:
    std::unordered_map<std::string, std::string> m_values;
};

/// The file's content with `key` set: its first line in the first section of that name gets the
/// value, else a line is added behind the section's last line that is not blank, else the section
/// is added at the end. All other bytes stay, but a byte-order mark goes with the first change. The
/// value ends at its first CR or LF. Line ends are CR LF unless the file uses LF throughout.
/// Nothing if the bytes would be the same, or if section and key have no form in which they could
/// be read back.
std::optional<std::string> ChangeProfile(std::string_view bytes,
                                         std::string_view section,
                                         std::string_view key,
                                         std::string_view value);

} // namespace velmo
