#include "Effect.h"

#include "MixLoops.h"

#include <algorithm>
#include <new>

namespace velmo::engine {

namespace {

constexpr std::uint32_t BlendMs = 10;

} // namespace

Effect::Effect(const BASS_EFFECT& table, std::uint32_t sampleRate, DWORD handle, int priority)
    : m_table(table)
    , m_effect(table.create(sampleRate))
    , m_handle(handle)
    , m_priority(priority)
    , m_wet(sampleRate * BlendMs / 1000, Fade::Start::Silent)
{
    if (m_effect == nullptr)
        throw std::bad_alloc();
}

Effect::~Effect()
{
    m_table.destroy(m_effect);
}

void Effect::Leave() noexcept
{
    m_leaving.store(true, std::memory_order_release);
    // One that was never run needs no blend, and the mixer shall not begin with it now.
    Stage expected = Stage::Added;
    m_stage.compare_exchange_strong(expected, Stage::Gone, std::memory_order_acq_rel);
}

/// False if it has gone.
bool Effect::Enter() noexcept
{
    if (m_stage.load(std::memory_order_relaxed) == Stage::Run)
        return true;
    Stage expected = Stage::Added;
    return m_stage.compare_exchange_strong(expected, Stage::Run, std::memory_order_acq_rel);
}

void Effect::Begin() noexcept
{
    if (!Enter())
        return;
    m_table.reset(m_effect);
    const bool leaving = m_leaving.load(std::memory_order_acquire);
    m_wet.Finish(leaving ? Fade::Way::Down : Fade::Way::Up);
    if (leaving)
        m_stage.store(Stage::Gone, std::memory_order_release);
}

void Effect::Process(float* samples, std::size_t frames, std::span<float> dry) noexcept
{
    if (!Enter())
        return;
    const bool leaving = m_leaving.load(std::memory_order_acquire);
    const Fade::Way way = leaving ? Fade::Way::Down : Fade::Way::Up;
    while (frames > 0 && m_wet.Left(way) > 0) {
        const std::size_t blended = std::min({frames, m_wet.Left(way), dry.size() / 2});
        std::copy_n(samples, blended * 2, dry.begin());
        m_table.process(m_effect, samples, blended);
        Blend(samples, dry.data(), blended, m_wet, way);
        samples += blended * 2;
        frames -= blended;
    }
    if (leaving && m_wet.Left(way) == 0)
        m_stage.store(Stage::Gone, std::memory_order_release);
    else if (frames > 0)
        m_table.process(m_effect, samples, frames);
}

} // namespace velmo::engine
