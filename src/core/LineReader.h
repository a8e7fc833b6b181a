#pragma once

#include <cstddef>
#include <string_view>

namespace velmo {

/// Takes the lines of a text one by one; CR LF, LF and a lone CR end one. A last line without line
/// end counts, a line end at the very end begins no further line. The text must outlive the reader.
class LineReader final
{
public:
    explicit LineReader(std::string_view text);

    bool AtEnd() const { return m_at >= m_text.size(); }

    /// The next line without its line end; empty at the end. Points into the text.
    std::string_view Next();

private:
    std::size_t Find(char c) const;

    std::string_view m_text;
    std::size_t m_at = 0;
    // The next of each kind, kept so that a text that lacks one of them is not searched line by
    // line.
    std::size_t m_lineFeed;
    std::size_t m_return;
};

} // namespace velmo
