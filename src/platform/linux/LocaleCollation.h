#pragma once

#include "ports/Collation.h"

#include <clocale>
#include <string>

namespace velmo {

/// The order of a locale of the C library, with the case of all letters folded before. A locale
/// that has no order of its own ("C", "POSIX"), is not there or does not speak UTF-8 gives the
/// order of the folded code points.
class LocaleCollation final : public ports::Collation
{
public:
    /// `locale` is a name of the C library's; empty is the user's, from LC_ALL, LC_COLLATE or LANG.
    explicit LocaleCollation(const std::string& locale = {});
    LocaleCollation(const LocaleCollation&) = delete;
    LocaleCollation& operator=(const LocaleCollation&) = delete;
    ~LocaleCollation() override;

    std::string SortKey(std::string_view text) override;

private:
    locale_t m_locale; ///< null for the order of the code points
    std::string m_key; ///< room for a key, kept from call to call
};

} // namespace velmo
