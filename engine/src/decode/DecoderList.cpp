#include "DecoderList.h"

#include "BuiltinDecoders.h"

namespace velmo::engine {

std::vector<DecoderEntry> ListDecoders(std::span<const DecoderEntry> ofPlugins)
{
    std::vector<DecoderEntry> list;
    const auto add = [&list](const BuiltinDecoder& own) {
        list.push_back({.decoder = &own.table, .owner = nullptr, .openSound = own.openSound});
    };
    for (const BuiltinDecoder* own : {&WavDecoder, &AiffDecoder, &VorbisDecoder, &ModuleDecoder})
        add(*own);
    list.insert(list.end(), ofPlugins.begin(), ofPlugins.end());
    add(MpegDecoder);
    return list;
}

} // namespace velmo::engine
