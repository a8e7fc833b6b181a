/// Hands a plugin's table of any contents to the check that stands before its use. Pointers are
/// null or good: from others nothing can be saved.
#include "plugins/PluginTable.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace {

/// Null, or a text in a block of its own, so that reading behind its end is seen.
const char* Text(FuzzedDataProvider& input, std::vector<std::unique_ptr<char[]>>& texts)
{
    if (!input.ConsumeBool())
        return nullptr;
    std::string text = input.ConsumeRandomLengthString();
    if (input.ConsumeBool())
        text.resize(5000, 'x');
    texts.push_back(std::make_unique<char[]>(text.size() + 1)); // NOLINT(*-avoid-c-arrays)
    std::ranges::copy(text, texts.back().get());
    return texts.back().get();
}

const BASS_DECODER Whole = {
    .name = nullptr,
    .masks = nullptr,
    .kind = 0,
    .probe = [](const std::uint8_t*, std::size_t) { return 0; },
    .open = [](const char*, std::uint32_t, BASS_SOURCE_FORMAT*, int*) -> void* { return nullptr; },
    .read = [](void*, float*, std::size_t) { return std::size_t{0}; },
    .seek = [](void*, std::uint64_t) { return 0; },
    .close = [](void*) {}};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    std::vector<std::unique_ptr<char[]>> texts; // NOLINT(*-avoid-c-arrays)
    const BASS_DECODER decoder = {.name = Text(input, texts),
                                  .masks = Text(input, texts),
                                  .kind = input.ConsumeIntegral<std::uint8_t>(),
                                  .probe = input.ConsumeBool() ? Whole.probe : nullptr,
                                  .open = input.ConsumeBool() ? Whole.open : nullptr,
                                  .read = input.ConsumeBool() ? Whole.read : nullptr,
                                  .seek = input.ConsumeBool() ? Whole.seek : nullptr,
                                  .close = input.ConsumeBool() ? Whole.close : nullptr};
    std::vector<BASS_PLUGINFORM> formats(input.ConsumeIntegral<std::uint8_t>());
    for (BASS_PLUGINFORM& format : formats)
        format = {.ctype = 0, .name = Text(input, texts), .exts = Text(input, texts)};
    const auto count = static_cast<std::uint32_t>(formats.size());
    const BASS_PLUGIN table = {.abi = input.ConsumeIntegral<std::uint8_t>(),
                               .size = input.ConsumeIntegral<std::uint32_t>(),
                               .version = 0,
                               .formatCount = input.ConsumeBool() ? 0xFFFFFFFFU : count,
                               .formats = input.ConsumeBool() ? nullptr : formats.data(),
                               .decoder = input.ConsumeBool() ? nullptr : &decoder};
    // As large as it says, up to what it is; never less than its first number.
    const std::size_t bytes = std::min<std::size_t>(table.size, sizeof table);
    if (!velmo::engine::IsUsablePlugin(&table, bytes))
        return 0;
    const bool isWhole = table.abi == BASS_PLUGIN_ABI && table.decoder != nullptr
                         && decoder.name != nullptr && decoder.close != nullptr
                         && (count == 0 || table.formats != nullptr);
    if (!isWhole || table.formatCount > 256)
        std::abort();
    return 0;
}
