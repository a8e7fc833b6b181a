#include "Session.h"

#include <utility>

#include <system_error>

namespace velmo::engine {

Session::Session(MixFormat format)
    : m_mixer(format, m_decoderWake)
    , m_device(m_mixer)
{}

Session::~Session()
{
    if (m_decoder != nullptr)
        m_decoder->Stop();
    // Nothing renders after this, so the voices may go with the decoding thread.
    m_device.Close();
}

std::unique_ptr<Session> Session::Open(const DeviceSettings& settings,
                                       MixFormat format,
                                       std::function<void()> onHeardOut)
{
    std::unique_ptr<Session> session(new Session(format));
    try {
        if (session->m_device.Open(settings) != DeviceError::None)
            return nullptr;
        session->m_sampleRate = session->m_device.SampleRate();
        session->m_reverb.emplace(session->m_sampleRate);
        session->m_mixer.Prepare(session->m_sampleRate, &*session->m_reverb);
        if (settings.allSpeakers) {
            session->m_speakers = session->m_device.Description().channels;
            session->m_mixer.PrepareSpeakers(session->m_speakers);
        }
        session->m_decoder = std::make_unique<DecodeThread>(
            session->m_mixer, session->m_device, session->m_decoderWake, std::move(onHeardOut));
    } catch (const std::system_error&) {
        return nullptr; // there is no thread to have
    }
    return session;
}

void Session::SetReverb(int room, float level, float decaySeconds, float damping)
{
    ReverbParameters parameters = m_reverbParameters;
    if (room >= 0)
        parameters.room = room;
    // What is no number leaves what there is, too.
    if (level >= 0)
        parameters.level = level;
    if (decaySeconds >= 0)
        parameters.decaySeconds = decaySeconds;
    if (damping >= 0)
        parameters.damping = damping;
    m_reverb->Set(parameters);
    m_reverbParameters = parameters;
}

} // namespace velmo::engine
