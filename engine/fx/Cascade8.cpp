#include "CascadeKernel.h"

#include <immintrin.h>

namespace velmo::fx {

namespace {

struct Vector8
{
    using Float = float __attribute__((vector_size(32)));
    using Int = int __attribute__((vector_size(32)));

    static Float Fma(Float a, Float b, Float c) { return _mm256_fmadd_ps(a, b, c); }
    static Float Shift(Float before, Float own)
    {
        return __builtin_shufflevector(before, own, 6, 7, 8, 9, 10, 11, 12, 13);
    }
    static Float Pair(const float* samples)
    {
        double both = 0;
        __builtin_memcpy(&both, samples, sizeof both);
        return _mm256_castpd_ps(_mm256_set1_pd(both));
    }
};

} // namespace

void RunCascade8(Cascade& cascade, float* samples, std::size_t frames, const float* weights)
{
    RunGroups<Vector8, Cascade::Lanes / 8>(cascade, samples, frames, weights);
}

} // namespace velmo::fx
