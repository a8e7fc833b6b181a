#include "ReverbDesign.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace velmo::engine {

namespace {

struct Room
{
    double sizeMs;    ///< longest line: the way across and back
    double beforeMs;  ///< until the first reflection
    double diffusion; ///< 0: single echoes; 0.75: dense from the start
};

// A room of 1 m takes sound about 3 ms.
constexpr std::array Rooms = {
    Room{.sizeMs = 40,  .beforeMs = 7,   .diffusion = 0.65}, // generic
    Room{.sizeMs = 10,  .beforeMs = 1,   .diffusion = 0.70}, // padded cell
    Room{.sizeMs = 24,  .beforeMs = 2,   .diffusion = 0.68}, // room
    Room{.sizeMs = 18,  .beforeMs = 4,   .diffusion = 0.72}, // bathroom
    Room{.sizeMs = 26,  .beforeMs = 3,   .diffusion = 0.70}, // living room
    Room{.sizeMs = 38,  .beforeMs = 8,   .diffusion = 0.66}, // stone room
    Room{.sizeMs = 80,  .beforeMs = 20,  .diffusion = 0.65}, // auditorium
    Room{.sizeMs = 95,  .beforeMs = 20,  .diffusion = 0.70}, // concert hall
    Room{.sizeMs = 85,  .beforeMs = 15,  .diffusion = 0.72}, // cave
    Room{.sizeMs = 115, .beforeMs = 20,  .diffusion = 0.65}, // arena
    Room{.sizeMs = 130, .beforeMs = 20,  .diffusion = 0.68}, // hangar
    Room{.sizeMs = 32,  .beforeMs = 2,   .diffusion = 0.65}, // carpeted hallway
    Room{.sizeMs = 42,  .beforeMs = 7,   .diffusion = 0.62}, // hallway
    Room{.sizeMs = 60,  .beforeMs = 13,  .diffusion = 0.60}, // stone corridor
    Room{.sizeMs = 65,  .beforeMs = 7,   .diffusion = 0.45}, // alley
    Room{.sizeMs = 120, .beforeMs = 60,  .diffusion = 0.50}, // forest
    Room{.sizeMs = 100, .beforeMs = 25,  .diffusion = 0.45}, // city
    Room{.sizeMs = 190, .beforeMs = 100, .diffusion = 0.35}, // mountains
    Room{.sizeMs = 140, .beforeMs = 60,  .diffusion = 0.40}, // quarry
    Room{.sizeMs = 150, .beforeMs = 80,  .diffusion = 0.35}, // plain
    Room{.sizeMs = 85,  .beforeMs = 8,   .diffusion = 0.60}, // parking lot
    Room{.sizeMs = 50,  .beforeMs = 14,  .diffusion = 0.75}, // sewer pipe
    Room{.sizeMs = 60,  .beforeMs = 7,   .diffusion = 0.75}, // underwater
    Room{.sizeMs = 90,  .beforeMs = 2,   .diffusion = 0.72}, // drugged
    Room{.sizeMs = 110, .beforeMs = 20,  .diffusion = 0.55}, // dizzy
    Room{.sizeMs = 125, .beforeMs = 20,  .diffusion = 0.75}, // psychotic
};

constexpr double HighHertz = 5000; ///< where the damping is told

bool IsPrime(std::uint32_t number)
{
    for (std::uint32_t divisor = 2; divisor * divisor <= number; ++divisor)
        if (number % divisor == 0)
            return false;
    return number > 1;
}

/// The first prime above both: lines of lengths without common divisors repeat in no pattern.
std::uint32_t PrimeAbove(double frames, std::uint32_t last)
{
    auto prime = std::max(static_cast<std::uint32_t>(frames), last) + 1;
    while (!IsPrime(prime))
        ++prime;
    return prime;
}

ReverbDesign::Delays DesignDelays(const Room& room, double decay, double rate)
{
    const double longestMs = std::min(room.sizeMs, decay * 1000 / 4);
    const double perMs = rate / 1000;
    ReverbDesign::Delays delays;
    delays.before = static_cast<std::uint32_t>(room.beforeMs * perMs) + 1;
    delays.diffusion = static_cast<float>(room.diffusion);
    std::uint32_t last = 0;
    for (std::size_t i = 0; i < ReverbDesign::Lines; ++i) {
        // From half the longest to it, each as many times longer than the one before.
        const double share = std::exp2(static_cast<double>(i) / (ReverbDesign::Lines - 1) - 1);
        last = PrimeAbove(longestMs * share * perMs, last);
        delays.lines[i] = last;
    }
    constexpr std::array<std::array<double, ReverbDesign::Diffusers>, 2> DiffuserMs = {
        {{1.3, 2.3, 3.9, 5.9}, {1.5, 2.1, 4.3, 5.5}}
    };
    for (std::size_t side = 0; side < 2; ++side)
        for (std::size_t i = 0; i < ReverbDesign::Diffusers; ++i)
            delays.diffusers[side][i] =
                PrimeAbove(DiffuserMs[side][i] * std::min(longestMs / 40, 1.0) * perMs, 0);
    return delays;
}

/// Pole of a low-pass that is 1 for low tones and `ratio` at `angle` (a turn a frame is 2 pi).
double LowPassPole(double ratio, double angle)
{
    const double a = 1 - ratio * ratio;
    const double b = 1 - ratio * ratio * std::cos(angle);
    return a > 1e-12 ? (b - std::sqrt(b * b - a * a)) / a : 0.0;
}

ReverbDesign::Tuning DesignTuning(const ReverbDesign::Delays& delays,
                                  double decay,
                                  double damping,
                                  double rate)
{
    const double angle = 2 * std::numbers::pi * std::min(HighHertz / rate, 0.45);
    ReverbDesign::Tuning tuning;
    double energy = 0;
    for (std::size_t i = 0; i < ReverbDesign::Lines; ++i) {
        const double low = std::pow(10.0, -3.0 * delays.lines[i] / (decay * rate));
        const double pole = LowPassPole(std::pow(low, 2 * damping), angle);
        tuning.gain[i] = static_cast<float>(low * (1 - pole));
        tuning.damp[i] = static_cast<float>(pole);
        energy += low * low / ReverbDesign::Lines;
    }
    tuning.scale = static_cast<float>(std::sqrt((1 - energy) / ReverbDesign::Lines));
    return tuning;
}

/// `otherwise` for what is no number.
double Within(float value, double low, double high, float otherwise)
{
    return std::clamp(static_cast<double>(std::isnan(value) ? otherwise : value), low, high);
}

} // namespace

std::size_t ReverbDesign::Delays::Total() const noexcept
{
    std::size_t total = std::size_t{2} * before;
    for (const auto& side : diffusers)
        total += std::accumulate(side.begin(), side.end(), std::size_t{0});
    return std::accumulate(lines.begin(), lines.end(), total);
}

std::size_t ReverbDesign::Delays::Longest() const noexcept
{
    std::size_t longest = 0;
    for (const auto& side : diffusers)
        longest = std::max(longest, std::accumulate(side.begin(), side.end(), std::size_t{0}));
    return before + longest + *std::max_element(lines.begin(), lines.end());
}

ReverbDesign DesignReverb(const ReverbParameters& parameters, std::uint32_t sampleRate)
{
    constexpr ReverbParameters Default;
    const double decay = Within(parameters.decaySeconds, 0.1, 20, Default.decaySeconds);
    const double damping = Within(parameters.damping, 0, 2, Default.damping);
    const int room = std::clamp(parameters.room, 0, static_cast<int>(Rooms.size()) - 1);
    ReverbDesign design;
    design.delays = DesignDelays(Rooms[static_cast<std::size_t>(room)], decay, sampleRate);
    design.tuning = DesignTuning(design.delays, decay, damping, sampleRate);
    design.level = static_cast<float>(Within(parameters.level, 0, 1, Default.level));
    return design;
}

std::size_t MostReverbFrames(std::uint32_t sampleRate)
{
    std::size_t most = 0;
    for (const Room& room : Rooms)
        most = std::max(most, DesignDelays(room, 20, sampleRate).Total());
    return most;
}

} // namespace velmo::engine
