#include "TransportKeys.h"

#include "core/CallIfSet.h"

namespace velmo {

namespace {

constexpr controls::MouseEvent LeftRelease{.button = controls::MouseButton::Left};

constexpr char32_t LowerCase(char32_t character)
{
    return character >= U'A' && character <= U'Z' ? character - U'A' + U'a' : character;
}

} // namespace

TransportKeys::TransportKeys(Transport& transport,
                             ports::MixerProgram& mixerProgram,
                             KeyCalls& calls)
    : m_transport(transport)
    , m_mixerProgram(mixerProgram)
    , m_calls(calls)
{}

void TransportKeys::KeyPress(Window window, char32_t character)
{
    switch (LowerCase(character)) {
    case U'\r': m_transport.PlaySelected(); break;
    case U'n': m_transport.imgNext_MouseUp(LeftRelease); break;
    case U'b': m_transport.imgBack_MouseUp(LeftRelease); break;
    case U'p': m_transport.imgPause_MouseUp(LeftRelease); break;
    case U'o': m_transport.OpenAndPlayDialog(); break;
    case U'm': m_transport.Mute(); break;
    case U'e': m_transport.Stop(); break;
    case U'v': m_mixerProgram.Start(); break;
    case U'r':
        if (window == Window::Main)
            CallIfSet(m_calls.RestartCore);
        else
            m_transport.PlayRandomEntry();
        break;
    case U'f': CallIfSet(m_calls.ShowFinder); break;
    case U'h': CallIfSet(m_calls.ShowShutDown); break;
    case U'k': CallIfSet(m_calls.ShowAbout); break;
    case U'd': CallIfSet(m_calls.ShowDj); break;
    case U'i': CallIfSet(m_calls.ShowSinfo); break;
    case U'a': CallIfSet(m_calls.AddFilesDialog); break;
    case U'l': CallIfSet(m_calls.OpenListDialog); break;
    case U's': CallIfSet(m_calls.SaveListDialog); break;
    case U'x': CallIfSet(m_calls.ExitProgram); break;
    default: break;
    }
}

} // namespace velmo
