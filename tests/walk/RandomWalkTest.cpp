// A user without a plan: many thousand actions in any order over a recorded sound library, while
// files come and go and settings change. After each of them all that must always hold is looked at.
// A walk is repeated by its seed, which a failure prints: VELMO_WALK_SEED=7.

#include "core/NumberText.h"
#include "core/RunError.h"
#include "sound/TransportKeys.h"
#include "support/FakeMainWindow.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <deque>
#include <random>
#include <stdexcept>

namespace velmo {
namespace {

constexpr int Actions = 15000;
constexpr int Files = 12;

class Walk
{
public:
    explicit Walk(unsigned seed)
        : m_engine(seed)
    {
        std::vector<double> shares;
        for (const Action& action : m_actions)
            shares.push_back(action.share);
        m_anyAction = std::discrete_distribution<std::size_t>(shares.begin(), shares.end());
        for (int file = 0; file < Files; ++file)
            Appear(file);
        m_player.playlist.Show();
        m_window.Load({});
    }

    /// One action; what it was.
    std::string Step()
    {
        m_player.bass.calls.clear();
        m_player.errMGR.Hide();
        m_mustBeSaved = false;
        for (int draw = 0; draw < 8; ++draw)
            m_player.random.numbers.push_back(m_number(m_engine));
        const Action& action = m_actions.at(m_anyAction(m_engine));
        try {
            action.act();
        } catch (const std::out_of_range&) {
            m_mustBeSaved = false; // the index error that a handler may end with
        } catch (const RunError&) {
            m_mustBeSaved = false; // a path that is gone
        }
        m_player.random.numbers.clear();
        return action.name;
    }

    void Check()
    {
        CheckRows();
        CheckChannels();
        CheckWindow();
        if (m_mustBeSaved)
            CheckSaved();
    }

private:
    struct Action
    {
        const char* name;
        double share; ///< how often it is chosen
        std::function<void()> act;
    };

    std::size_t Below(std::size_t end)
    {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(m_engine);
    }

    bool Chance(int percent) { return static_cast<int>(Below(100)) < percent; }

    static std::string Path(int file)
    {
        return "/m/" + std::to_string(file) + (file % 4 == 3 ? ".xm" : ".mp3");
    }

    void Appear(int file)
    {
        m_player.AddSound(
            Path(file),
            {.seconds = 1.0 + static_cast<double>(Below(20)) / 2, .isModule = file % 4 == 3});
    }

    void VanishAny()
    {
        const std::string path = AnyPath();
        m_player.files.files.erase(path);
        m_player.bass.sounds.erase(path);
    }

    int AnyFile() { return static_cast<int>(Below(Files)); }
    std::string AnyPath() { return Path(AnyFile()); }

    controls::MouseEvent Press()
    {
        return {.button = Chance(67) ? controls::MouseButton::Left : controls::MouseButton::Right,
                .shift = 0,
                .x = static_cast<double>(Below(4000)) - 200,
                .y = 30};
    }

    void Tick()
    {
        m_player.bass.Advance(static_cast<double>(Below(1500)) / 1000);
        if (m_player.wmain.tmrBASS.Enabled)
            m_player.monitor.MonitorTick();
    }

    void ReaderTicks()
    {
        for (int tick = 0; tick < 40 && m_player.playlist.tmrInfo.Enabled; ++tick)
            m_reader.tmrInfo_Timer();
    }

    void ChangeSetting()
    {
        struct Setting
        {
            const char* section;
            std::string key;
            std::string values; ///< parted by blanks
        };
        const std::vector<Setting> settings = {
            {"DJ",      "Method",           "1 2 3 4 5 6 7 x "       },
            {"DJ",      "CrossFade",        "True False"             },
            {"DJ",      "CrossFadeDelay",   "-3 -1 0 1 3 -1e99 seven"},
            {"DJ",      "AssureNotTheSame", "True False"             },
            {"Options", "ReadTitlesOn",     "display load play"      },
            {"Options", "ShowLengthInPL",   "True False"             },
            {"Options", "SortListOnLoad",   "True False"             },
            {"Display", "ShowNumbersInPL",  "True False"             },
            {"Sound",   "Sound3D",          "True False"             },
        };
        const Setting& setting = settings.at(Below(settings.size()));
        const std::vector<std::string_view> values = Split(setting.values, ' ');
        m_player.Set(setting.section, setting.key, std::string(values.at(Below(values.size()))));
    }

    void Add()
    {
        if (m_player.playlist.pl.Count() > 40)
            m_player.playlist.pl.Clear();
        m_player.adding.AddPath(AnyPath());
        m_mustBeSaved = true;
    }

    void MarkAnyRow()
    {
        controls::ListRows& rows = m_player.playlist.pl;
        if (rows.Count() == 0)
            return;
        if (Chance(50))
            m_player.list.DeselectAllEntries();
        rows.Mark(1 + Below(rows.Count()));
    }

    void Delete()
    {
        if (Chance(80))
            return MarkAnyRow();
        m_player.list.DeleteSelectedEntries();
        m_mustBeSaved = true;
    }

    void Order()
    {
        Chance(50) ? m_player.ordering.SortListAscending() : m_player.ordering.ShuffleList();
        m_mustBeSaved = true;
    }

    void Key()
    {
        constexpr std::u32string_view Keys = U"\rNbpeEmorvfhkdiq";
        m_keys.KeyPress(Chance(50) ? TransportKeys::Window::Main : TransportKeys::Window::Other,
                        Keys.at(Below(Keys.size())));
    }

    void DragTicker()
    {
        m_window.Position().imgPositionTicker_MouseDown(Press());
        m_window.Position().imgPositionTicker_MouseMove(Press());
        m_window.Position().imgPositionTicker_MouseUp(Press());
    }

    void Minimise()
    {
        m_window.imgMinimize_MouseUp(
            {.button = controls::MouseButton::Left, .shift = 0, .x = 9, .y = 9});
        if (Chance(80)) {
            m_player.wmain.State = controls::WindowState::Normal;
            m_window.Form_Resize();
        }
    }

    void AnswerDialogs()
    {
        m_player.dialogs.choice.paths.clear();
        if (Chance(50))
            m_player.dialogs.choice.paths.push_back(AnyPath());
    }

    void CheckRows() const
    {
        const controls::ListRows& rows = m_player.playlist.pl;
        ASSERT_LE(rows.SelectedEntry(), rows.Count());
        ASSERT_EQ(rows.SelectedEntry() == 0, rows.Count() == 0);
        ASSERT_LE(rows.FirstVisibleEntry(), rows.Count());
    }

    /// A channel that nobody knows any more is a module, or was paused when it was left: the
    /// transport stops what plays, and frees only streams.
    void CheckChannels()
    {
        for (const auto& [handle, channel] : m_player.bass.channels) {
            if (handle == m_player.state.CurrentChannel || handle == m_player.state.NextChannel)
                continue;
            ASSERT_TRUE(channel.isModule || channel.state == BASS_ACTIVE_PAUSED)
                << channel.path << " is lost";
        }
        // What was paused and left stays for good: it would only slow the walk down.
        if (m_player.bass.channels.size() > 200)
            std::erase_if(m_player.bass.channels, [&](const auto& open) {
                return open.first != m_player.state.CurrentChannel
                       && open.first != m_player.state.NextChannel;
            });
    }

    void CheckWindow()
    {
        const forms::wmain& window = m_player.wmain;
        ASSERT_GE(window.imgPositionTicker.Left, window.imgPositionBar.Left);
        ASSERT_LE(window.imgPositionTicker.Left + window.imgPositionTicker.Width,
                  window.imgPositionBar.Left + window.imgPositionBar.Width);
        ASSERT_FALSE(window.lblTime.Caption.Get().empty());
        ASSERT_FALSE(window.lblSongName.Caption.Get().empty());
        const bool plays = m_player.state.PlayStartedFlag;
        ASSERT_TRUE(!plays || !m_player.errMGR.Visible) << "only before anything has played";
        ASSERT_TRUE(plays || !m_hasPlayed) << "never cleared";
        m_hasPlayed = plays;
    }

    /// What was written to the disk, read again, is the list in memory.
    void CheckSaved()
    {
        forms::Playlist read;
        modPlaylist list(read, m_player.settings, m_player.files, "/app/");
        list.LoadInternalList();
        ASSERT_EQ(read.pl.Count(), m_player.playlist.pl.Count());
        for (std::size_t row = 1; row <= read.pl.Count(); ++row)
            ASSERT_EQ(read.pl.Row(row).Path, m_player.playlist.pl.Row(row).Path);
    }

    std::mt19937 m_engine;
    test::FakePlayer m_player;
    test::FakeMainWindow m_fakes{m_player};
    wmain& m_window = m_fakes.window;
    TitleReader m_reader = m_player.MakeReader();
    TransportKeys m_keys{m_player.transport, m_fakes.mixerProgram, m_fakes.calls};
    bool m_mustBeSaved = false;
    bool m_hasPlayed = false;

    const std::vector<Action> m_actions = {
        {"tick",           6, [this] { Tick(); }                                               },
        {"play",           2, [this] { m_player.transport.imgPlay_MouseUp(Press()); }          },
        {"key",            6, [this] { Key(); }                                                },
        {"reader",         1, [this] { ReaderTicks(); }                                        },
        {"setting",        2, [this] { ChangeSetting(); }                                      },
        {"file vanishes",  1, [this] { VanishAny(); }                                          },
        {"file appears",   2, [this] { Appear(AnyFile()); }                                    },
        {"add",            2, [this] { Add(); }                                                },
        {"mark",           1, [this] { MarkAnyRow(); }                                         },
        {"delete",         1, [this] { Delete(); }                                             },
        {"order",          1, [this] { Order(); }                                              },
        {"seek",           1, [this] { m_window.Position().imgPositionBar_MouseDown(Press()); }},
        {"drag",           1, [this] { DragTicker(); }                                         },
        {"time mode",      1, [this] { m_window.lblTime_MouseDown(Press()); }                  },
        {"show playlist",  1, [this] { m_player.playlist.Show(); }                             },
        {"minimise",       1, [this] { Minimise(); }                                           },
        {"answer dialogs", 1, [this] { AnswerDialogs(); }                                      },
    };
    std::discrete_distribution<std::size_t> m_anyAction;
    std::uniform_real_distribution<float> m_number{0, 1};
};

TEST(RandomWalk, NothingThatMustHoldEverBreaks)
{
    std::vector<unsigned> seeds = {1, 2, 3, 4};
    if (const char* const wanted = std::getenv("VELMO_WALK_SEED"))
        seeds = {static_cast<unsigned>(ParseNumber(wanted))};
    for (const unsigned seed : seeds) {
        Walk walk(seed);
        std::deque<std::string> last;
        for (int step = 0; step < Actions; ++step) {
            last.push_back(walk.Step());
            if (last.size() > 12)
                last.pop_front();
            walk.Check();
            if (::testing::Test::HasFatalFailure())
                FAIL() << "VELMO_WALK_SEED=" << seed << ", step " << step
                       << ", after: " << ::testing::PrintToString(last);
        }
    }
}

} // namespace
} // namespace velmo
