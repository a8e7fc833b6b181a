#include "DecoderList.h"

#include "BuiltinDecoders.h"

namespace velmo::engine {

std::vector<DecoderEntry> ListDecoders(std::span<const DecoderEntry> ofPlugins)
{
    std::vector<DecoderEntry> list;
    for (const BASS_DECODER* decoder : {&WavDecoder, &AiffDecoder, &VorbisDecoder, &ModuleDecoder})
        list.push_back({.decoder = decoder, .owner = nullptr});
    list.insert(list.end(), ofPlugins.begin(), ofPlugins.end());
    list.push_back({.decoder = &MpegDecoder, .owner = nullptr});
    return list;
}

} // namespace velmo::engine
