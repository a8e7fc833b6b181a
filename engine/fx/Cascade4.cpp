#include "CascadeKernel.h"

namespace velmo::fx {

namespace {

struct Vector4
{
    using Float = float __attribute__((vector_size(16)));
    using Int = int __attribute__((vector_size(16)));

    static Float Fma(Float a, Float b, Float c) { return a * b + c; }
    static Float Shift(Float before, Float own)
    {
        return __builtin_shufflevector(before, own, 2, 3, 4, 5);
    }
    static Float Pair(const float* samples) { return Float{0, 0, samples[0], samples[1]}; }
};

} // namespace

void RunCascade4(Cascade& cascade, float* samples, std::size_t frames, const float* weights)
{
    RunGroups<Vector4, Cascade::Lanes / 4>(cascade, samples, frames, weights);
}

} // namespace velmo::fx
