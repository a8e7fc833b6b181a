#pragma once

#include <string>
#include <vector>

namespace velmo {

/// How far a walk goes down.
enum class WalkDepth
{
    OneFolder,
    AllFolders,
};

/// The regular files below `directory`, in the order and with the exceptions of
/// `ports::Files::Walk`. `shownAs` stands for `directory` in the result and has its separator at
/// the end; the same separator parts the folders below it.
std::vector<std::string> WalkFolder(const std::string& directory,
                                    const std::string& shownAs,
                                    WalkDepth depth);

} // namespace velmo
