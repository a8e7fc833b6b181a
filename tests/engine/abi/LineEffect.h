#pragma once

#include "bass_effect.h"

#include <array>
#include <atomic>
#include <cmath>

namespace velmo::engine::test {

/// Record of the effect of type `LineType`: a factor, and what is added after it.
using Line = std::array<float, 2>;

constexpr DWORD LineType = 0x7001;

/// How many such effects there are.
inline std::atomic<int> lineEffects = 0;

/// It refuses a factor that is no number.
inline const BASS_EFFECT LineTable = {.abi = BASS_EFFECT_ABI,
                                      .size = sizeof(BASS_EFFECT),
                                      .type = LineType,
                                      .create = [](uint32_t) -> void* {
                                          ++lineEffects;
                                          return new std::atomic<Line>(Line{1, 0});
                                      },
                                      .set = [](void* effect, const void* record) -> int {
                                          const Line& line = *static_cast<const Line*>(record);
                                          if (std::isnan(line[0]))
                                              return BASS_ERROR_ILLPARAM;
                                          *static_cast<std::atomic<Line>*>(effect) = line;
                                          return BASS_OK;
                                      },
                                      .get = [](void* effect, void* record) -> int {
                                          *static_cast<Line*>(record) =
                                              *static_cast<std::atomic<Line>*>(effect);
                                          return BASS_OK;
                                      },
                                      .process =
                                          [](void* effect, float* samples, std::size_t frames) {
                                              const Line line =
                                                  *static_cast<std::atomic<Line>*>(effect);
                                              for (std::size_t i = 0; i < frames * 2; ++i)
                                                  samples[i] = samples[i] * line[0] + line[1];
                                          },
                                      .reset = [](void*) {},
                                      .destroy =
                                          [](void* effect) {
                                              --lineEffects;
                                              delete static_cast<std::atomic<Line>*>(effect);
                                          }};

} // namespace velmo::engine::test
