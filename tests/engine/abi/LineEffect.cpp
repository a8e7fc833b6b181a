#include "LineEffect.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace velmo::engine::test {

namespace {

struct LineEffect
{
    std::array<std::atomic<float>, 2> line = {1.0f, 0.0f};
};

std::atomic<int> lineEffects = 0; // NOLINT(*-avoid-non-const-global-variables): counts for all

LineEffect& LineOf(void* effect)
{
    return *static_cast<LineEffect*>(effect);
}

} // namespace

int LineEffects()
{
    return lineEffects;
}

const BASS_EFFECT& LineTable()
{
    static const BASS_EFFECT Table = {
        .abi = BASS_EFFECT_ABI,
        .size = sizeof(BASS_EFFECT),
        .type = LineType,
        .create = [](uint32_t) -> void* {
            ++lineEffects;
            return new LineEffect;
        },
        .set = [](void* effect, const void* record) -> int {
            const Line& line = *static_cast<const Line*>(record);
            if (std::isnan(line[0]))
                return BASS_ERROR_ILLPARAM;
            std::copy(line.begin(), line.end(), LineOf(effect).line.begin());
            return BASS_OK;
        },
        .get = [](void* effect, void* record) -> int {
            for (std::size_t i = 0; i < 2; ++i)
                (*static_cast<Line*>(record))[i] = LineOf(effect).line.at(i);
            return BASS_OK;
        },
        .process =
            [](void* effect, float* samples, std::size_t frames) {
                const float factor = LineOf(effect).line[0];
                const float added = LineOf(effect).line[1];
                for (std::size_t i = 0; i < frames * 2; ++i)
                    samples[i] = samples[i] * factor + added;
            },
        .reset = [](void*) {},
        .destroy =
            [](void* effect) {
                --lineEffects;
                delete &LineOf(effect);
            }};
    return Table;
}

} // namespace velmo::engine::test
