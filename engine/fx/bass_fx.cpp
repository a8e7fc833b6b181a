#include "bass_fx.h"

#include "Equalizer.h"
#include "bass_effect.h"

#include <new>

namespace velmo::fx {

namespace {

constexpr DWORD Version = 0x02040000;

Equalizer& Of(void* effect)
{
    return *static_cast<Equalizer*>(effect);
}

void* Create(std::uint32_t sampleRate)
{
    return new (std::nothrow) Equalizer(sampleRate);
}

int Set(void* effect, const void* record)
{
    return record != nullptr ? Of(effect).Set(*static_cast<const BASS_BFX_PEAKEQ*>(record))
                             : BASS_ERROR_ILLPARAM;
}

int Get(void* effect, void* record)
{
    return record != nullptr ? Of(effect).Get(*static_cast<BASS_BFX_PEAKEQ*>(record))
                             : BASS_ERROR_ILLPARAM;
}

void Process(void* effect, float* samples, std::size_t frames)
{
    Of(effect).Process(samples, frames);
}

void Reset(void* effect)
{
    Of(effect).Reset();
}

void Destroy(void* effect)
{
    delete &Of(effect);
}

constexpr BASS_EFFECT EqualizerEffect = {
    .abi = BASS_EFFECT_ABI,
    .size = sizeof(BASS_EFFECT),
    .type = BASS_FX_BFX_PEAKEQ,
    .create = Create,
    .set = Set,
    .get = Get,
    .process = Process,
    .reset = Reset,
    .destroy = Destroy,
};

/// Runs when the library is opened. It stays mapped from then on, and so does the table.
[[gnu::constructor]] void BringIn()
{
    BASS_RegisterEffect(&EqualizerEffect);
}

} // namespace

} // namespace velmo::fx

DWORD BASS_FX_GetVersion() noexcept
{
    return velmo::fx::Version;
}
