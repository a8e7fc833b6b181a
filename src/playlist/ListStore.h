#pragma once

#include "ports/Files.h"

#include <optional>
#include <string>
#include <vector>

namespace velmo {

/// The directory of stored lists, "lists" in the application directory. It has no index: what lies
/// there is stored. User-interface thread only.
class ListStore final
{
public:
    ListStore(ports::Files& files, const std::string& applicationDirectory);

    /// The directory, with its separator. It need not exist.
    const std::string& Directory() const;

    /// The files of the directory with the extension "zvl", as full paths.
    std::vector<std::string> Lists() const;

    /// A list's place in the store under a free number.
    struct FreeName
    {
        int number = 0;
        std::string path; ///< ".../lists/list<number>.zvl"
    };

    /// The first of `list0.zvl`, `list1.zvl` and so on that is not there.
    FreeName FindFreeName() const;

    /// Copies the file `source` to `target` in the directory, which is made if need be; a file of
    /// that name is replaced. Nothing happens if both are one file.
    ports::WriteResult Copy(const std::string& source, const std::string& target);

private:
    ports::Files& m_files;
    std::string m_directory;
};

} // namespace velmo
