/// Hands a plugin's table of any contents to the check that stands before its use. Pointers are
/// null or good: from others nothing can be saved.
#include "plugins/PluginTable.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

/// The bytes that are left.
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size)
        : m_data(data)
        , m_size(size)
    {}

    std::uint32_t Number(std::size_t bytes)
    {
        std::uint32_t number = 0;
        const std::size_t taken = bytes < m_size ? bytes : m_size;
        std::memcpy(&number, m_data, taken);
        m_data += taken;
        m_size -= taken;
        return number;
    }

    /// Null, or a text in a block of its own, so that reading behind its end is seen.
    const char* Text(std::vector<std::unique_ptr<char[]>>& texts) // NOLINT(*-avoid-c-arrays)
    {
        std::uint32_t length = Number(1);
        if (length == 0)
            return nullptr;
        if (length == 0xFF)
            length = 5000;
        auto text = std::make_unique<char[]>(length); // NOLINT(*-avoid-c-arrays)
        for (std::uint32_t i = 0; i + 1 < length; ++i)
            text[i] = static_cast<char>(m_size > 0 ? Number(1) : 'x');
        return texts.emplace_back(std::move(text)).get();
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
};

int Probe(const std::uint8_t*, std::size_t)
{
    return 0;
}

void* Open(const char*, std::uint32_t, BASS_SOURCE_FORMAT*, int*)
{
    return nullptr;
}

std::size_t Read(void*, float*, std::size_t)
{
    return 0;
}

int Seek(void*, std::uint64_t)
{
    return 0;
}

void Close(void*)
{}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    std::vector<std::unique_ptr<char[]>> texts; // NOLINT(*-avoid-c-arrays)
    const std::uint32_t has = input.Number(1);
    const BASS_DECODER decoder = {.name = input.Text(texts),
                                  .masks = input.Text(texts),
                                  .kind = input.Number(1),
                                  .probe = (has & 1U) != 0 ? &Probe : nullptr,
                                  .open = (has & 2U) != 0 ? &Open : nullptr,
                                  .read = (has & 4U) != 0 ? &Read : nullptr,
                                  .seek = (has & 8U) != 0 ? &Seek : nullptr,
                                  .close = (has & 16U) != 0 ? &Close : nullptr};
    std::vector<BASS_PLUGINFORM> formats(input.Number(1));
    for (BASS_PLUGINFORM& format : formats)
        format = {.ctype = 0, .name = input.Text(texts), .exts = input.Text(texts)};
    const auto count = static_cast<std::uint32_t>(formats.size());
    const BASS_PLUGIN table = {.abi = input.Number(1),
                               .size = input.Number(4),
                               .version = 0,
                               .formatCount = (has & 32U) != 0 ? 0xFFFFFFFFU : count,
                               .formats = (has & 64U) != 0 ? nullptr : formats.data(),
                               .decoder = (has & 128U) != 0 ? nullptr : &decoder};
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
