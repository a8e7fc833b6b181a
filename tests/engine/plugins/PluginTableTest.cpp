#include "plugins/PluginTable.h"

#include <gtest/gtest.h>

#include <string>

namespace velmo::engine::test {
namespace {

struct Table
{
    BASS_DECODER decoder = {
        .name = "d",
        .masks = "*.d",
        .kind = BASS_DECODER_STREAM,
        .probe = [](const std::uint8_t*, std::size_t) { return 0; },
        .open = [](const char*, std::uint32_t, BASS_SOURCE_FORMAT*, int*) -> void* { return {}; },
        .read = [](void*, float*, std::size_t) { return std::size_t{0}; },
        .seek = [](void*, std::uint64_t) { return 0; },
        .close = [](void*) {}};
    BASS_PLUGINFORM format = {.ctype = 1, .name = "f", .exts = "*.f"};
    BASS_PLUGIN plugin = {.abi = BASS_PLUGIN_ABI,
                          .size = sizeof(BASS_PLUGIN),
                          .version = 0,
                          .formatCount = 1,
                          .formats = &format,
                          .decoder = &decoder};
};

TEST(PluginTable, IsUsedOnlyIfAllOfItIsThere)
{
    void (*const spoil[])(Table&) = {
        [](Table& table) { table.plugin.abi = 2; },
        [](Table& table) { table.plugin.size = sizeof(BASS_PLUGIN) + 8; },
        [](Table& table) { table.plugin.decoder = nullptr; },
        [](Table& table) { table.plugin.formats = nullptr; },
        [](Table& table) { table.plugin.formatCount = 0xFFFFFFFF; },
        [](Table& table) { table.format.name = nullptr; },
        [](Table& table) { table.format.exts = nullptr; },
        [](Table& table) { table.format.name = "two\nlines"; },
        [](Table& table) {
            static const std::string tooLong(5000, 'x');
            table.format.exts = tooLong.c_str();
        },
        [](Table& table) { table.decoder.name = nullptr; },
        [](Table& table) { table.decoder.masks = nullptr; },
        [](Table& table) { table.decoder.kind = 3; },
        [](Table& table) { table.decoder.probe = nullptr; },
        [](Table& table) { table.decoder.open = nullptr; },
        [](Table& table) { table.decoder.read = nullptr; },
        [](Table& table) { table.decoder.seek = nullptr; },
        [](Table& table) { table.decoder.close = nullptr; },
    };
    Table table;
    EXPECT_TRUE(IsUsablePlugin(&table.plugin, sizeof table.plugin));
    EXPECT_FALSE(IsUsablePlugin(&table.plugin, sizeof table.plugin - 1));
    EXPECT_FALSE(IsUsablePlugin(nullptr, sizeof table.plugin));
    table.plugin.formats = nullptr;
    table.plugin.formatCount = 0;
    EXPECT_TRUE(IsUsablePlugin(&table.plugin, sizeof table.plugin)) << "none is well";
    for (const auto& each : spoil) {
        Table spoilt;
        each(spoilt);
        EXPECT_FALSE(IsUsablePlugin(&spoilt.plugin, sizeof spoilt.plugin)) << &each - spoil;
    }
}

} // namespace
} // namespace velmo::engine::test
