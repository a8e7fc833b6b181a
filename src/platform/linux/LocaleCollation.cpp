#include "LocaleCollation.h"

#include "core/CaseRules.h"

#include <langinfo.h>

#include <algorithm>
#include <cstring>

namespace velmo {

namespace {

/// What the letters of one locale are ordered by; null if the order of code points does as well.
locale_t OpenLocale(const std::string& name)
{
    const locale_t opened = ::newlocale(LC_COLLATE_MASK | LC_CTYPE_MASK, name.c_str(), nullptr);
    if (opened == nullptr)
        return nullptr;
    const bool speaksUtf8 = std::strcmp(::nl_langinfo_l(CODESET, opened), "UTF-8") == 0;
    // Where no letter with an accent comes between plain ones the locale has no order of its own.
    const bool hasOrder = ::strcoll_l("\xC3\xA9", "z", opened) < 0;
    if (speaksUtf8 && hasOrder)
        return opened;
    ::freelocale(opened);
    return nullptr;
}

} // namespace

LocaleCollation::LocaleCollation(const std::string& locale)
    : m_locale(OpenLocale(locale))
{}

LocaleCollation::~LocaleCollation()
{
    if (m_locale != nullptr)
        ::freelocale(m_locale);
}

std::string LocaleCollation::SortKey(std::string_view text)
{
    std::string folded = FoldCase(text);
    if (m_locale == nullptr)
        return folded;
    // A key has no room for NUL; nothing of a title stands behind one.
    std::replace(folded.begin(), folded.end(), '\0', ' ');
    constexpr std::size_t UsualFactor = 4;
    m_key.resize(std::max(m_key.size(), folded.size() * UsualFactor + 1));
    std::size_t size = ::strxfrm_l(m_key.data(), folded.c_str(), m_key.size(), m_locale);
    if (size >= m_key.size()) {
        m_key.resize(size + 1);
        size = ::strxfrm_l(m_key.data(), folded.c_str(), m_key.size(), m_locale);
    }
    return m_key.substr(0, size);
}

} // namespace velmo
