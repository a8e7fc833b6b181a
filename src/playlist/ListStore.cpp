#include "ListStore.h"

#include "MediaFilter.h"

#include "core/PathRules.h"

namespace velmo {

ListStore::ListStore(ports::Files& files, const std::string& applicationDirectory)
    : m_files(files)
    , m_directory(EnsureTrailingBackslash(EnsureTrailingBackslash(applicationDirectory) + "lists"))
{}

const std::string& ListStore::Directory() const
{
    return m_directory;
}

std::vector<std::string> ListStore::Lists() const
{
    std::vector<std::string> lists = m_files.Walk(m_directory, false);
    std::erase_if(lists, [](const std::string& path) { return !HasKnownExtension(path, {"zvl"}); });
    return lists;
}

ListStore::FreeName ListStore::FindFreeName() const
{
    FreeName name;
    do {
        name.path = m_directory + "list" + std::to_string(name.number) + ".zvl";
    } while (FileExists(name.path, m_files) && ++name.number > 0);
    return name;
}

ports::WriteResult ListStore::Copy(const std::string& source, const std::string& target)
{
    return m_files.MakeDirectory(m_directory) ? m_files.CopyFile(source, target)
                                              : ports::WriteResult::Failed;
}

} // namespace velmo
