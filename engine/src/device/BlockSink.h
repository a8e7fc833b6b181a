#pragma once

#include <cstddef>

namespace velmo::engine {

/// Takes the blocks that an output has rendered. All calls on the output's thread, but the
/// destructor.
class BlockSink
{
public:
    BlockSink() = default;
    virtual ~BlockSink() = default;
    BlockSink(const BlockSink&) = delete;
    BlockSink& operator=(const BlockSink&) = delete;

    /// Takes `frames` interleaved frames. A failure ends the taking, not the playing.
    virtual void Write(const float* samples, std::size_t frames) noexcept = 0;

    /// What was taken goes to the file now: no block follows for a while, or others look at it.
    virtual void Flush() noexcept = 0;

    /// A `Write` or `Flush` that the system holds up gives up within half a second. Any thread.
    virtual void Abandon() noexcept = 0;
};

} // namespace velmo::engine
