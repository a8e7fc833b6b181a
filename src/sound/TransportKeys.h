#pragma once

#include "Transport.h"

#include "ports/MixerProgram.h"

#include <functional>

namespace velmo {

/// What keys, pictures and menus reach beyond the transport. Bound by the object graph, before the
/// first event; what is not bound does nothing, as long as its window or dialog isn't there.
struct KeyCalls
{
    std::function<void()> ShowFinder;
    std::function<void()> ShowShutDown;
    std::function<void()> ShowAbout;
    std::function<void()> ShowDj;
    std::function<void()> ShowSinfo;
    std::function<void()> ShowOptions;
    std::function<void()> ShowEntryInfo;
    std::function<void()> AddFilesDialog;
    std::function<void()> OpenListDialog;
    std::function<void()> SaveListDialog;
    std::function<void()> RestartCore;
    std::function<void()> ExitProgram;
    std::function<void()> STClose; ///< the short close
};

/// The keyboard commands that every window of the player has. User-interface thread only.
class TransportKeys
{
public:
    /// What the key "r" does.
    enum class Window
    {
        Main, ///< restarts the sound core
        Other ///< plays a random entry
    };

    TransportKeys(Transport& transport, ports::MixerProgram& mixerProgram, KeyCalls& calls);

    /// The command of a character, whatever its case; nothing for a character without one.
    void KeyPress(Window window, char32_t character);

private:
    Transport& m_transport;
    ports::MixerProgram& m_mixerProgram;
    KeyCalls& m_calls;
};

} // namespace velmo
