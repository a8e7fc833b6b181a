#pragma once

#include "Feed.h"

#include "device/DeviceControl.h"
#include "mixer/Mixer.h"
#include "mixer/Voice.h"
#include "mixer/Wake.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace velmo::engine {

/// The one thread that decodes for all voices, and keeps the house: it decides when the output
/// runs, and tells when a voice was heard to its end.
///
/// It fills the voice with the least sound first, and all of them before it sleeps; the mixer wakes
/// it when one is down to the half. A voice goes to the mixer with its first chunk of sound, as
/// much as a device asks for at once, so that the first block it's in has no gap. The thread sleeps
/// without an end while nothing plays and everything has been heard.
///
/// Owners: a voice belongs to its channel and to this thread, which keeps it until the mixer has
/// let go; a feed belongs to its channel and to the jobs of that channel's voices.
class DecodeThread
{
public:
    /// `wake` is what the mixer signals. `onHeardOut` is called on the thread when a voice has been
    /// heard to its end.
    DecodeThread(Mixer& mixer, DeviceControl& device, Wake& wake, std::function<void()> onHeardOut);
    ~DecodeThread();
    DecodeThread(const DecodeThread&) = delete;
    DecodeThread& operator=(const DecodeThread&) = delete;

    /// Ends the thread after the chunk that it is at. Any thread but its own, one at a time.
    void Stop();

    /// Decodes `feed` from its frame `start` on into `voice`, and starts the output unless it is
    /// held. Any thread; does not wait for decoding.
    void Add(std::shared_ptr<Voice> voice, std::shared_ptr<Feed> feed, std::uint64_t start);

    /// Looks again at what the voices wish. Any thread.
    void WishesChanged() noexcept { m_wake.Signal(); }

    /// Holds the output, or lets it run when there is something to play. Any thread.
    void HoldOutput(bool hold) noexcept;

private:
    struct Job
    {
        std::shared_ptr<Voice> voice;
        std::shared_ptr<Feed> feed;
        std::uint64_t start = 0;
        bool sought = false;
    };

    /// What the mixer's voices are about.
    struct Survey
    {
        bool playing = false;
        bool dropped = false; ///< the mixer has not let go of one yet
        bool unseen = false;  ///< the mixer has not acted on a wish yet, or still fades
        /// Output frame behind the last sound of all voices, past ones too.
        std::uint64_t soundEnd = 0;
        /// Output frame behind the next end of a voice that has been mixed and not yet heard.
        std::optional<std::uint64_t> nextEnd;
    };

    void Loop();
    void TakeInbox();
    void RemoveDone();
    bool FillMostStarved();
    Job* MostStarved();
    void Fill(Job& job);
    std::size_t Decode(Job& job);
    Survey SurveyVoices();
    void WatchOutput();
    bool StandsStill() const;
    void UpdateOutput(const Survey& survey);
    void SetRunning(bool running);
    bool TellHeardOut();
    void SettleUnheard(const Survey& survey);
    std::optional<std::chrono::milliseconds> SleepTime(const Survey& survey) const;

    Mixer& m_mixer;
    DeviceControl& m_device;
    Wake& m_wake;
    std::function<void()> m_onHeardOut;
    std::atomic<bool> m_quit{false};
    std::atomic<bool> m_held{false};
    std::mutex m_inboxMutex; ///< guards m_inbox; never held while another lock is taken
    std::vector<Job> m_inbox;
    // Of the thread:
    std::vector<Job> m_jobs;
    bool m_running = false;
    bool m_peeked = false;    ///< somebody looked at a voice that was to be filled
    bool m_endUntold = false; ///< a voice was heard out and `onHeardOut` has not been called since
    /// Output frame behind the last sound of the voices that are gone.
    std::uint64_t m_soundEnd = 0;
    std::uint64_t m_rendered = 0;                      ///< frames, when last looked
    std::chrono::steady_clock::time_point m_lastBlock; ///< or start or stop of the output
    const std::size_t m_firstFrames;                   ///< decoded before the mixer gets a voice
    std::thread m_thread;
};

} // namespace velmo::engine
