// Which speakers a channel is heard on.

#include "EngineTest.h"

#include <array>

namespace velmo::engine::test {

namespace {

class Speakers : public EngineTest
{};

constexpr std::int16_t L = 8000;
constexpr std::int16_t R = -4000;
constexpr std::int16_t M = 2000; ///< their mean

struct Case
{
    const char* device; ///< how many speakers it has
    DWORD init;
    DWORD flags;
    std::vector<std::int16_t> frame;
};

} // namespace

TEST_F(Speakers, ChannelIsHeardOnThoseItAsksForAndElseInFront)
{
    constexpr DWORD All = BASS_DEVICE_SPEAKERS;
    constexpr DWORD Left = BASS_SPEAKER_LEFT;
    constexpr DWORD Right = BASS_SPEAKER_RIGHT;
    const std::array cases = {
        Case{"8", All,                    0,                                         {L, R, 0, 0, 0, 0, 0, 0}},
        Case{"8", All,                    BASS_SPEAKER_FRONT,                        {L, R, 0, 0, 0, 0, 0, 0}},
        Case{"8", All,                    BASS_SPEAKER_CENLFE,                       {0, 0, L, R, 0, 0, 0, 0}},
        Case{"8", All,                    BASS_SPEAKER_REAR,                         {0, 0, 0, 0, L, R, 0, 0}},
        Case{"8", All,                    BASS_SPEAKER_SIDE,                         {0, 0, 0, 0, 0, 0, L, R}},
        Case{"8", All,                    BASS_SPEAKER_SIDE | Right,                 {0, 0, 0, 0, 0, 0, 0, M}},
        Case{"8", All,                    BASS_SPEAKER_REAR | Left | BASS_SAMPLE_3D, {0, 0, 0, 0, M, 0, 0, 0}},
        Case{"8", All,                    BASS_SPEAKER_REAR | Left | Right,          {0, 0, 0, 0, L, R, 0, 0}},
        Case{"8", All,                    0x5000000,                                 {L, R, 0, 0, 0, 0, 0, 0}},
        Case{"7", All,                    BASS_SPEAKER_CENLFE | Right,               {0, 0, 0, M, 0, 0}      },
        Case{"6", All,                    BASS_SPEAKER_SIDE | Left,                  {L, R, 0, 0, 0, 0}      },
        Case{"6", All | BASS_DEVICE_MONO, BASS_SPEAKER_REAR,                         {0, 0, 0, 0, M, M}      },
        Case{"6", All | BASS_DEVICE_MONO, BASS_SPEAKER_CENLFE,                       {0, 0, L, R, 0, 0}      },
        Case{"2", All,                    BASS_SPEAKER_FRONT | Left,                 {M, 0}                  },
        Case{"2", All,                    BASS_SPEAKER_REAR | Left,                  {L, R}                  },
        Case{"8", 0,                      BASS_SPEAKER_FRONT | Left,                 {L, R}                  },
    };
    std::vector<std::int16_t> sound(20000);
    for (std::size_t i = 0; i < sound.size(); ++i)
        sound[i] = i % 2 == 0 ? L : R;
    const std::string file = WriteWav("a.wav", sound);
    for (const Case& c : cases) {
        SetVariable("VELMO_WAV_CHANNELS", c.device);
        InitFast(44100, c.init);
        PlayToEnd(OpenStream(file, c.flags));
        const std::vector<std::int16_t> out = Rendered();
        ASSERT_GE(out.size(), 10000 * c.frame.size());
        for (std::size_t i = 0; i < 10000 * c.frame.size(); ++i)
            ASSERT_EQ(out[i], c.frame[i % c.frame.size()])
                << c.device << " speakers, flags " << std::hex << c.flags << ", sample " << i;
    }
    SetVariable("VELMO_WAV_CHANNELS", "");
}

} // namespace velmo::engine::test
