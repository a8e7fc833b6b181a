/// Handover of a value between two threads that never wait for each other.
#pragma once

#include <array>
#include <atomic>

namespace velmo::engine {

/// Passes the latest of the values that one thread writes to one other thread. Three copies: the
/// writer's, the reader's, and one between them that both exchange for their own.
/// `Value` is copied; it must be default-constructible, and to be taken on a thread that may not
/// allocate its copy must not allocate.
template<class Value>
class TripleBuffer
{
public:
    /// Writing thread.
    void Write(const Value& value)
    {
        m_slots[m_written] = value;
        m_written = m_between.exchange(m_written | Fresh, std::memory_order_acq_rel) & Slot;
    }

    /// The latest value, valid until the next call; null if none was written since the last one.
    /// Reading thread.
    const Value* Take() noexcept
    {
        if ((m_between.load(std::memory_order_relaxed) & Fresh) == 0)
            return nullptr;
        m_read = m_between.exchange(m_read, std::memory_order_acq_rel) & Slot;
        return &m_slots[m_read];
    }

private:
    static constexpr unsigned Slot = 3;
    static constexpr unsigned Fresh = 4; ///< the one between is newer than the reader's

    std::array<Value, 3> m_slots = {};
    unsigned m_written = 0; ///< the writer's
    unsigned m_read = 1;    ///< the reader's
    std::atomic<unsigned> m_between{2};
};

} // namespace velmo::engine
