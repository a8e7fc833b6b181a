#include "dsp/Reverb.h"

#include "Signals.h"

#include <gtest/gtest.h>

#include <limits>

namespace velmo::test {
namespace {

constexpr std::size_t Rate = 44100;
constexpr int RoomCount = 26;

/// The reverb's sound alone: `send`, and then silence up to `frames`.
std::vector<float> Wet(engine::Reverb& reverb, std::vector<float> send, std::size_t frames)
{
    send.resize(2 * frames);
    std::vector<float> out(2 * frames);
    constexpr std::size_t Block = 441;
    for (std::size_t done = 0; done < frames; done += Block)
        reverb.Process(
            send.data() + 2 * done, out.data() + 2 * done, std::min(Block, frames - done));
    return out;
}

/// Seconds in which the left side fades by 60 dB: by Schroeder's backward integration, from the
/// slope between -5 and -35 dB.
double DecaySeconds(const std::vector<float>& sound)
{
    double sum = 0;
    std::vector<double> energy(sound.size() / 2);
    for (std::size_t i = energy.size(); i-- > 0;) {
        sum += static_cast<double>(sound[2 * i]) * static_cast<double>(sound[2 * i]);
        energy[i] = sum;
    }
    const auto framesTo = [&](double decibels) {
        const auto below = std::find_if(energy.begin(), energy.end(), [&](double e) {
            return e < sum * std::pow(10.0, decibels / 10);
        });
        return static_cast<double>(below - energy.begin());
    };
    return 2 * (framesTo(-35) - framesTo(-5)) / Rate;
}

/// What a resonance at `hertz` passes, left side.
std::vector<float> Band(const std::vector<float>& sound, double hertz)
{
    constexpr double Radius = 0.99;
    const double feedback = 2 * Radius * std::cos(2 * Pi * hertz / Rate);
    std::vector<float> band(sound.size());
    double y1 = 0;
    double y2 = 0;
    for (std::size_t i = 4; i < sound.size(); i += 2) {
        const double y = static_cast<double>(sound[i]) - static_cast<double>(sound[i - 4])
                         + feedback * y1 - Radius * Radius * y2;
        y2 = y1;
        y1 = y;
        band[i] = static_cast<float>(y);
    }
    return band;
}

TEST(ReverbTest, FadesInTheTimeOfItsDecay)
{
    const auto expectDecay = [](int room, float decay) {
        engine::Reverb reverb(Rate);
        reverb.Set({.room = room, .level = 1, .decaySeconds = decay, .damping = 0});
        const auto frames = static_cast<std::size_t>((decay + 0.3f) * Rate);
        const double got = DecaySeconds(Wet(reverb, Noise(200), frames));
        EXPECT_NEAR(got / static_cast<double>(decay), 1, 0.15) << room << ", " << decay;
    };
    for (int room = 0; room < RoomCount; ++room)
        expectDecay(room, 0.7f);
    expectDecay(0, 0.1f);
    expectDecay(17, 0.1f);
    expectDecay(10, 20.0f);
}

TEST(ReverbTest, DampsHighTonesAsToldAndLowOnesNot)
{
    for (const float damping : {0.0f, 0.5f, 2.0f}) {
        engine::Reverb reverb(Rate);
        reverb.Set({.room = 7, .level = 1, .decaySeconds = 2, .damping = damping});
        const std::vector<float> sound = Wet(reverb, Noise(200), 3 * Rate);
        EXPECT_NEAR(DecaySeconds(Band(sound, 150)) / 2, 1, 0.15) << damping;
        const double high = 2 / (1 + 2 * static_cast<double>(damping));
        EXPECT_NEAR(DecaySeconds(Band(sound, 5000)) / high, 1, 0.15) << damping;
    }
}

double Power(const std::vector<float>& samples)
{
    double sum = 0;
    for (const float s : samples)
        sum += static_cast<double>(s) * static_cast<double>(s);
    return sum / static_cast<double>(samples.size());
}

TEST(ReverbTest, IsAsLoudAsWhatIsSentAndDifferentOnBothSides)
{
    for (int room = 0; room < RoomCount; ++room) {
        engine::Reverb reverb(Rate);
        reverb.Set({.room = room, .level = 1, .decaySeconds = 0.4f, .damping = 0});
        const std::vector<float> sound = Noise(Rate);
        std::vector<float> out = Wet(reverb, sound, Rate);
        out.erase(out.begin(), out.begin() + Rate); // while it builds up
        EXPECT_NEAR(10 * std::log10(Power(out) / Power(sound)), 0, 2) << room;
        double common = 0;
        for (std::size_t i = 0; i < out.size(); i += 2)
            common += static_cast<double>(out[i]) * static_cast<double>(out[i + 1]);
        EXPECT_LT(std::abs(common) * 2 / static_cast<double>(out.size()) / Power(out), 0.3) << room;
    }
}

TEST(ReverbTest, ChangesNoBitWhileOffAndStartsEmpty)
{
    engine::Reverb reverb(Rate);
    const auto staysSame = [&] {
        std::vector<float> out = Noise(2000);
        reverb.Process(Noise(2000).data(), out.data(), 2000);
        return out == Noise(2000);
    };
    reverb.Set({.room = 3, .level = 0});
    EXPECT_FALSE(reverb.Active());
    EXPECT_TRUE(staysSame());

    reverb.Set({.room = 3, .level = 1});
    EXPECT_FALSE(staysSame());
    EXPECT_TRUE(reverb.Active() && reverb.Sounding());
    reverb.Set({.room = 3, .level = 1, .decaySeconds = 9}); // under way when it's switched off
    reverb.Set({.room = 3, .level = 0});
    EXPECT_TRUE(reverb.Active()) << "cut off instead of faded";
    EXPECT_FALSE(staysSame());
    EXPECT_FALSE(reverb.Active() || reverb.Sounding());
    EXPECT_TRUE(staysSame());

    reverb.Set({.room = 3, .level = 1});
    engine::Reverb fresh(Rate);
    fresh.Set({.room = 3, .level = 1});
    EXPECT_EQ(Wet(reverb, Noise(500), 4000), Wet(fresh, Noise(500), 4000)) << "sound of before";
}

TEST(ReverbTest, TellsWhenItsTailHasDiedAway)
{
    for (const float decay : {0.1f, 20.0f}) {
        engine::Reverb reverb(Rate);
        reverb.Set({.room = 9, .level = 1, .decaySeconds = decay, .damping = 0});
        Wet(reverb, Noise(Rate), Rate);
        double seconds = 0;
        std::vector<float> out;
        for (; reverb.Sounding() && seconds < 50; seconds += 0.1) {
            out.assign(2 * Rate / 10, 0);
            reverb.Process(nullptr, out.data(), Rate / 10);
        }
        EXPECT_LT(*std::max_element(out.begin(), out.end()), 1e-4f) << decay;
        EXPECT_GT(seconds, static_cast<double>(decay)) << "cut off";
        EXPECT_LT(seconds, 0.7 + 2 * static_cast<double>(decay));
        EXPECT_LT(seconds, engine::Reverb::MaxTailSeconds);
    }
}

TEST(ReverbTest, IsChangedWithoutAClick)
{
    engine::Reverb reverb(Rate);
    engine::ReverbParameters parameters = {
        .room = 7, .level = 0.5f, .decaySeconds = 1, .damping = 0.5f};
    reverb.Set(parameters);
    std::vector<float> send = Sine(4 * Rate, 0.5, 300, Rate);
    for (std::size_t i = 0; i < Rate; ++i) {
        const double share = 0.5 - 0.5 * std::cos(Pi * static_cast<double>(i) / Rate);
        send[2 * i] *= static_cast<float>(share);
        send[2 * i + 1] *= static_cast<float>(share);
    }
    std::vector<float> out(send.size());
    const std::size_t block = Rate / 10;
    for (std::size_t i = 0; i < 40; ++i) {
        switch (i) {
        case 12: parameters.level = 1; break;
        case 15: parameters.decaySeconds = 20; break;
        case 18: parameters.room = 1; break;
        case 21: parameters.damping = 2; break;
        case 24: parameters.decaySeconds = 0.1f; break; // shorter lines
        case 27: parameters.room = 17; break;
        case 30: parameters.level = 0; break;
        case 33: parameters.level = 1; break;
        default: break;
        }
        reverb.Set(parameters);
        reverb.Process(send.data() + 2 * i * block, out.data() + 2 * i * block, block);
    }
    EXPECT_GT(*std::max_element(out.begin(), out.end()), 0.1f);
    EXPECT_LT(Roughness(out, Rate), 1e-4f);
}

TEST(ReverbTest, TakesWhatItIsGivenToItsRanges)
{
    constexpr float None = std::numeric_limits<float>::quiet_NaN();
    for (const engine::ReverbParameters& wild : {
             engine::ReverbParameters{-5,  9,    1e9f,  -1  },
             engine::ReverbParameters{999, 2,    -1e9f, 1e9f},
             engine::ReverbParameters{0,   0.5f, None,  None}
    }) {
        for (const std::uint32_t rate : {8000u, 192000u}) {
            engine::Reverb reverb(rate);
            reverb.Set(wild);
            std::vector<float> send = Noise(5000);
            send[100] = None;
            send[201] = std::numeric_limits<float>::infinity();
            send[300] = std::numeric_limits<float>::max();
            const std::vector<float> out = Wet(reverb, send, 40000);
            const double power = Power(out);
            EXPECT_GT(power, 1e-6);
            EXPECT_LT(power, 10);
        }
    }
    engine::Reverb off(Rate);
    off.Set({.room = 0, .level = None});
    EXPECT_FALSE(off.Active());
}

} // namespace
} // namespace velmo::test
