/* The header is one of C: this file only has to compile. */
#include "bass.h"

BOOL HeaderIsOneOfC(BASS_CHANNELINFO* info);

BOOL HeaderIsOneOfC(BASS_CHANNELINFO* info)
{
    const DWORD flags = BASS_UNICODE | BASS_STREAM_AUTOFREE;
    info->flags = flags;
    return BASS_ChannelGetInfo(0, info) == BASS_ACTIVE_STOPPED;
}
