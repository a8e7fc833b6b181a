#include "EffectChain.h"

#include <algorithm>
#include <new>

namespace velmo::engine {

namespace {

constexpr std::size_t DryFrames = 512;

} // namespace

EffectChain::EffectChain(std::uint32_t sampleRate) noexcept
    : m_sampleRate(sampleRate)
{}

EffectChain::~EffectChain()
{
    FreeRetired();
    const std::unique_ptr<Layout> incoming(m_incoming.load(std::memory_order_acquire));
    const std::unique_ptr<Layout> current(m_current);
}

void EffectChain::Add(const BASS_EFFECT& table, DWORD handle, int priority)
{
    auto effects = m_effects;
    const auto place = std::find_if(effects.begin(), effects.end(), [priority](const auto& each) {
        return each->Priority() < priority;
    });
    effects.insert(place, std::make_shared<Effect>(table, m_sampleRate, handle, priority));
    Publish(std::move(effects));
}

bool EffectChain::Remove(DWORD handle)
{
    Effect* const effect = Find(handle);
    if (effect == nullptr)
        return false;
    effect->Leave();
    Tidy();
    return true;
}

Effect* EffectChain::Find(DWORD handle) const noexcept
{
    for (const auto& effect : m_effects) {
        if (effect->Handle() == handle && !effect->Leaving())
            return effect.get();
    }
    return nullptr;
}

void EffectChain::Tidy() noexcept
{
    const auto gone = [](const auto& each) { return each->Gone(); };
    try {
        if (std::any_of(m_effects.begin(), m_effects.end(), gone))
            Publish(m_effects);
    } catch (const std::bad_alloc&) { // the next call has another try
    }
    FreeRetired();
}

/// Sends the mixer those of `effects` that it hasn't run for the last time.
void EffectChain::Publish(Effects effects)
{
    std::erase_if(effects, [](const auto& each) { return each->Gone(); });
    auto layout = std::make_unique<Layout>();
    layout->effects = effects;
    layout->dry.resize(effects.empty() ? 0 : DryFrames * 2);
    m_effects.swap(effects); // throws no more
    // One that the mixer hasn't taken is still this thread's.
    const std::unique_ptr<Layout> untaken(
        m_incoming.exchange(layout.release(), std::memory_order_acq_rel));
    FreeRetired();
}

void EffectChain::FreeRetired() noexcept
{
    if (m_retired.load(std::memory_order_relaxed) == nullptr)
        return;
    Layout* layout = m_retired.exchange(nullptr, std::memory_order_acq_rel);
    while (layout != nullptr) {
        const std::unique_ptr<Layout> freed(layout);
        layout = layout->next;
    }
}

void EffectChain::Begin() noexcept
{
    if (!Update())
        return;
    for (const auto& effect : m_current->effects)
        effect->Begin();
}

bool EffectChain::Update() noexcept
{
    // Looked at first, since an exchange costs as much when there is nothing.
    if (m_incoming.load(std::memory_order_relaxed) != nullptr) {
        Layout* const former = m_current;
        m_current = m_incoming.exchange(nullptr, std::memory_order_acq_rel);
        if (former != nullptr) {
            former->next = m_retired.load(std::memory_order_relaxed);
            while (
                !m_retired.compare_exchange_weak(former->next, former, std::memory_order_acq_rel)) {
            }
        }
    }
    return m_current != nullptr && !m_current->effects.empty();
}

void EffectChain::Process(float* samples, std::size_t frames) noexcept
{
    for (const auto& effect : m_current->effects)
        effect->Process(samples, frames, m_current->dry);
}

} // namespace velmo::engine
