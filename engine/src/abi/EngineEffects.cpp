#include "Engine.h"

#include <algorithm>

namespace velmo::engine {

namespace {

/// Of an effect's handle, beside `SourceKind`.
constexpr DWORD EffectKind = 3;

} // namespace

int Engine::RegisterEffect(const BASS_EFFECT* effect)
{
    if (effect == nullptr || effect->abi != BASS_EFFECT_ABI || effect->size != sizeof(BASS_EFFECT))
        return BASS_ERROR_ILLPARAM;
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_effectTypes, [=](const auto* each) { return each->type == effect->type; });
    m_effectTypes.push_back(effect);
    return BASS_OK;
}

Result<DWORD> Engine::AddEffect(DWORD channel, DWORD type, int priority)
{
    DWORD handle = 0;
    const int code = WithChannel(channel, [&](const Channel& on, const Session&) -> int {
        const auto found = std::find_if(m_effectTypes.begin(),
                                        m_effectTypes.end(),
                                        [type](const auto* each) { return each->type == type; });
        if (found == m_effectTypes.end())
            return BASS_ERROR_ILLPARAM;
        const DWORD next = NextHandle(EffectKind);
        if (next == 0)
            return BASS_ERROR_UNKNOWN;
        on.Effects().Add(**found, next, priority);
        handle = next;
        return BASS_OK;
    });
    return {.value = handle, .error = code};
}

/// Handle of the channel that an effect is on; 0 if it's on none.
DWORD Engine::ChannelOfEffect(DWORD effect) const
{
    const auto found = std::find_if(m_channels.begin(), m_channels.end(), [=](const auto& each) {
        return each.second->Effects().Find(effect) != nullptr;
    });
    return found == m_channels.end() ? 0 : found->first;
}

} // namespace velmo::engine
