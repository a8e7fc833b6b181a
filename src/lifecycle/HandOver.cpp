#include "HandOver.h"

#include "StartCore.h"

namespace velmo {

void ReceiveHandOver(const ports::HandOverRecord& record, ports::Files& files, Adding& adding)
{
    const std::string path = PathOfCommandLine(record.bytes, files);
    if (!path.empty())
        adding.EnqueueFromCommandLine(path);
}

} // namespace velmo
