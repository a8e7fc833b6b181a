#include "LineReader.h"

#include <algorithm>
#include <cstring>

namespace velmo {

LineReader::LineReader(std::string_view text)
    : m_text(text)
    , m_lineFeed(Find('\n'))
    , m_return(Find('\r'))
{}

std::string_view LineReader::Next()
{
    if (AtEnd())
        return {};
    if (m_lineFeed < m_at)
        m_lineFeed = Find('\n');
    if (m_return < m_at)
        m_return = Find('\r');
    const std::size_t end = std::min(m_lineFeed, m_return);
    const std::string_view line = m_text.substr(m_at, end - m_at);
    m_at = end + (m_lineFeed == m_return + 1 ? 2 : 1);
    return line;
}

/// Where `c` stands next; the text's end if it does not.
std::size_t LineReader::Find(char c) const
{
    if (AtEnd())
        return m_text.size();
    const char* const from = m_text.data() + m_at;
    const void* const found = std::memchr(from, c, m_text.size() - m_at);
    return found == nullptr
               ? m_text.size()
               : static_cast<std::size_t>(static_cast<const char*>(found) - m_text.data());
}

} // namespace velmo
