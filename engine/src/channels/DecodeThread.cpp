#include "DecodeThread.h"

#include "device/OutputThread.h"
#include "mixer/MixLoops.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmo::engine {

namespace {

using std::chrono::milliseconds;

/// The longest block of any output: with less the first block would have a gap.
constexpr std::size_t FirstChunkMs = 200;
constexpr std::size_t MaxChunkFrames = 4096; ///< stays in the processor's cache on its way
constexpr milliseconds WishCheck{10};        ///< until the mixer has acted on a wish
constexpr milliseconds PeekCheck{1};         ///< until a look at a voice is over
constexpr milliseconds MaxTailCheck{50};
/// Until an output without a new block is taken to stand still; longer than any output's block.
constexpr milliseconds StandstillLimit{500};

std::size_t ChunkFrames(const Voice& voice, std::size_t firstFrames)
{
    const bool begun = voice.stage.load(std::memory_order_relaxed) != VoiceStage::Decoding;
    const std::size_t most = std::max<std::size_t>(voice.ring.Capacity() / (begun ? 4 : 2), 1);
    return std::min(begun ? MaxChunkFrames : firstFrames, most);
}

bool Wants(const Voice& voice, std::size_t firstFrames)
{
    return voice.wish.load(std::memory_order_acquire) != Wish::Drop
           && !voice.ended.load(std::memory_order_relaxed)
           && voice.ring.Capacity() - voice.ring.Fill() >= ChunkFrames(voice, firstFrames);
}

/// How much a voice has against how much it may have; a paused one counts as full, but for what is
/// left when all others are.
double Supply(const Voice& voice)
{
    const double fill =
        static_cast<double>(voice.ring.Fill()) / static_cast<double>(voice.ring.Capacity());
    return voice.wish.load(std::memory_order_relaxed) == Wish::Pause ? fill + 1 : fill;
}

} // namespace

DecodeThread::DecodeThread(Mixer& mixer,
                           DeviceControl& device,
                           Wake& wake,
                           std::function<void()> onHeardOut)
    : m_mixer(mixer)
    , m_device(device)
    , m_wake(wake)
    , m_onHeardOut(std::move(onHeardOut))
    , m_firstFrames(std::max<std::size_t>(device.SampleRate() * FirstChunkMs / 1000, 1))
    , m_thread(StartEngineThread("velmo-decode", [this] { Loop(); }))
{}

DecodeThread::~DecodeThread()
{
    Stop();
}

void DecodeThread::Stop()
{
    m_quit.store(true, std::memory_order_release);
    m_wake.Signal();
    if (m_thread.joinable())
        m_thread.join();
}

void DecodeThread::Add(std::shared_ptr<Voice> voice,
                       std::shared_ptr<Feed> feed,
                       std::uint64_t start)
{
    {
        const std::lock_guard lock(m_inboxMutex);
        m_inbox.push_back({.voice = std::move(voice), .feed = std::move(feed), .start = start});
    }
    m_wake.Signal();
}

void DecodeThread::HoldOutput(bool hold) noexcept
{
    m_held.store(hold, std::memory_order_release);
    m_wake.Signal();
}

void DecodeThread::Loop()
{
    AskForPriority();
    m_device.MeterDecoder();
    while (!m_quit.load(std::memory_order_acquire)) {
        TakeInbox();
        RemoveDone();
        const bool filled = FillMostStarved();
        const Survey survey = SurveyVoices();
        WatchOutput();
        UpdateOutput(survey);
        const bool told = TellHeardOut();
        if (filled || told)
            continue;
        SettleUnheard(survey);
        // All that can be had is there: whoever waits for more may look again.
        m_mixer.WakeWaiting();
        m_wake.Wait(SleepTime(survey));
    }
}

void DecodeThread::TakeInbox()
{
    const std::lock_guard lock(m_inboxMutex);
    std::move(m_inbox.begin(), m_inbox.end(), std::back_inserter(m_jobs));
    m_inbox.clear();
}

void DecodeThread::RemoveDone()
{
    const std::uint64_t heard = m_device.HeardFrames();
    std::erase_if(m_jobs, [this, heard](const Job& job) {
        const Voice& voice = *job.voice;
        const VoiceStage stage = voice.stage.load(std::memory_order_acquire);
        const bool dropped = voice.wish.load(std::memory_order_acquire) == Wish::Drop;
        if (stage == VoiceStage::Mixed || (!dropped && !voice.FinishedAsHeard(heard)))
            return false;
        m_soundEnd = std::max(m_soundEnd, voice.heard.OutEnd());
        m_endUntold = m_endUntold || !dropped;
        return true;
    });
}

bool DecodeThread::FillMostStarved()
{
    m_peeked = false;
    Job* const job = MostStarved();
    if (job != nullptr)
        Fill(*job);
    return job != nullptr && !m_peeked;
}

/// Null if every voice has what it may have.
DecodeThread::Job* DecodeThread::MostStarved()
{
    Job* starved = nullptr;
    for (Job& job : m_jobs) {
        if (Wants(*job.voice, m_firstFrames)
            && (starved == nullptr || Supply(*job.voice) < Supply(*starved->voice)))
            starved = &job;
    }
    return starved;
}

void DecodeThread::Fill(Job& job)
{
    Voice& voice = *job.voice;
    std::size_t frames = 0;
    try {
        frames = Decode(job);
    } catch (...) {
        voice.ended.store(true, std::memory_order_release); // no memory: its sound ends here
    }
    if (m_peeked)
        return;
    const bool ended = voice.ended.load(std::memory_order_relaxed);
    if (voice.stage.load(std::memory_order_relaxed) == VoiceStage::Decoding) {
        if (frames > 0)
            m_mixer.Add(voice);
        else
            voice.finished.store(true, std::memory_order_release); // there was no sound at all
    }
    // An output that waits is woken for a good deal of sound, not for every chunk.
    if (ended || voice.ring.Fill() >= voice.ring.Capacity() / 2)
        m_mixer.WakeWaiting();
}

std::size_t DecodeThread::Decode(Job& job)
{
    Voice& voice = *job.voice;
    if (!job.sought) {
        job.sought = true;
        if (!job.feed->Seek(job.start)) {
            voice.ended.store(true, std::memory_order_release);
            return 0;
        }
    }
    const std::span<float> place = voice.ring.WriteSpan(ChunkFrames(voice, m_firstFrames));
    m_peeked = place.empty(); // for there is room
    if (m_peeked)
        return 0;
    const std::size_t frames = job.feed->Read(place.data(), place.size() / 2);
    if (job.feed->MayExceed() && CountBeyond(place.data(), frames * 2) > 0)
        voice.loud.store(true, std::memory_order_relaxed); // goes over with the frames
    voice.ring.Commit(frames);
    if (frames < place.size() / 2)
        voice.ended.store(true, std::memory_order_release);
    return frames;
}

DecodeThread::Survey DecodeThread::SurveyVoices()
{
    if (m_mixer.Reverberating())
        m_soundEnd = std::max(m_soundEnd, m_mixer.FramesRendered() + 1);
    Survey survey;
    survey.soundEnd = m_soundEnd;
    for (const Job& job : m_jobs) {
        const Voice& voice = *job.voice;
        const VoiceStage stage = voice.stage.load(std::memory_order_acquire);
        if (stage == VoiceStage::Decoding)
            continue;
        const Wish wish = voice.wish.load(std::memory_order_acquire);
        if (stage == VoiceStage::Released) {
            survey.soundEnd = std::max(survey.soundEnd, voice.heard.OutEnd());
            if (wish != Wish::Drop)
                survey.nextEnd =
                    std::min(survey.nextEnd.value_or(voice.heard.OutEnd()), voice.heard.OutEnd());
            continue;
        }
        survey.playing = survey.playing || wish == Wish::Play;
        survey.dropped = survey.dropped || wish == Wish::Drop;
        survey.unseen = survey.unseen || voice.seenWish.load(std::memory_order_acquire) != wish;
        survey.soundEnd = std::max(survey.soundEnd, voice.heard.OutEnd());
    }
    return survey;
}

/// Notes when the mixer's last block came, to tell an output that has lost its device.
void DecodeThread::WatchOutput()
{
    const std::uint64_t rendered = m_mixer.FramesRendered();
    if (std::exchange(m_rendered, rendered) != rendered)
        m_lastBlock = std::chrono::steady_clock::now();
}

bool DecodeThread::StandsStill() const
{
    return std::chrono::steady_clock::now() - m_lastBlock >= StandstillLimit;
}

/// The output runs while a voice plays or has an end that wasn't heard yet, and on until the last
/// sound and its reverberation have been heard. What the mixer has not yet made silent for a pause
/// or an early end may still be sounding: the output isn't stopped for it, nor started. Where no
/// block comes any more, nothing sounds either.
void DecodeThread::UpdateOutput(const Survey& survey)
{
    const bool held = m_held.load(std::memory_order_acquire);
    const bool soundLeft = survey.soundEnd > m_device.HeardFrames();
    const bool ringing = m_running && (survey.unseen || soundLeft) && !StandsStill();
    SetRunning(!held && (survey.playing || survey.nextEnd || ringing));
}

void DecodeThread::SetRunning(bool running)
{
    if (running == m_running)
        return;
    m_running = running;
    m_lastBlock = std::chrono::steady_clock::now();
    m_device.SetRunning(running);
}

/// Calls `onHeardOut` if a voice has been heard to its end.
bool DecodeThread::TellHeardOut()
{
    if (!std::exchange(m_endUntold, false))
        return false;
    m_onHeardOut();
    return true;
}

/// How long there is nothing to do unless the thread is woken; nothing is for ever.
std::optional<milliseconds> DecodeThread::SleepTime(const Survey& survey) const
{
    if (m_peeked)
        return PeekCheck;
    if (!m_running)
        return survey.unseen ? std::optional(WishCheck) : std::nullopt;
    const bool still = StandsStill();
    if (survey.unseen || survey.dropped)
        return WishCheck;
    if (survey.playing && !survey.nextEnd)
        return std::nullopt;
    if (still)
        return StandstillLimit;
    const std::uint64_t end = survey.nextEnd.value_or(survey.soundEnd);
    const std::uint64_t heard = m_device.HeardFrames();
    const std::uint64_t left = end > heard ? end - heard : 0;
    const milliseconds time(left * 1000 / std::max(m_device.SampleRate(), 1U) + 1);
    return std::min(time, MaxTailCheck);
}

/// The mixer acts on the wishes in its next blocks. Where no block comes, the output stands still.
void DecodeThread::SettleUnheard(const Survey& survey)
{
    if ((survey.unseen || survey.dropped) && (!m_running || StandsStill()))
        m_mixer.SettleUnheard();
}

} // namespace velmo::engine
