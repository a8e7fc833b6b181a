/// What an operation of the engine gives that can fail: a value, or the reason why there is none.
#pragma once

namespace velmo::engine {

/// A value of type `T`, or an error. `error` is 0 and `value` holds the result, or `error` is one
/// of the numbers of `BASS_ErrorGetCode` and `value` is empty.
template<typename T>
struct [[nodiscard]] Result
{
    T value{};
    int error = 0;

    /// The result that carries no value. `code` is not 0.
    static Result Failure(int code) { return {.value = T{}, .error = code}; }

    explicit operator bool() const noexcept { return error == 0; }
};

} // namespace velmo::engine
