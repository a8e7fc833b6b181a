#include "EndingSteps.h"

#include "core/Ignoring.h"
#include "core/NumberText.h"
#include "core/SettingsKeys.h"

#include <utility>

namespace velmo {

EndingSteps::EndingSteps(EndingModules modules, EndingCalls calls)
    : m_modules(modules)
    , m_calls(std::move(calls))
{}

void EndingSteps::WriteVolume(VolumeText text)
{
    if (!IsLoaded())
        return;
    const forms::wmain& window = m_modules.wmain;
    const double offset =
        window.imgVolumeTicker.Width / 2 + window.imgVolumeTicker.Left - window.imgVolumeBar.Left;
    m_modules.settings.WriteSetting(sections::RTM,
                                    keys::Volume,
                                    text == VolumeText::Rounded ? PlainNumber(RoundHalfEven(offset))
                                                                : PlainNumber(offset));
}

void EndingSteps::StopMonitor()
{
    m_modules.wmain.tmrBASS.Enabled = false;
}

void EndingSteps::FreeLibrary() const
{
    if (HasLibrary())
        m_modules.bass.BASS_Free();
}

void EndingSteps::WritePlace()
{
    if (!IsLoaded())
        return;
    m_modules.settings.WriteSetting(sections::RTM, keys::X, PlainNumber(m_modules.wmain.Left));
    m_modules.settings.WriteSetting(sections::RTM, keys::Y, PlainNumber(m_modules.wmain.Top));
}

void EndingSteps::SaveList()
{
    const bool isListOpen = !m_calls.IsListOpen || m_calls.IsListOpen();
    // Lost on failure: the changes since the list was saved last. The way out goes on.
    if (IsLoaded() && isListOpen)
        Ignoring([&] { static_cast<void>(m_modules.list.SaveInternalList()); });
}

void EndingSteps::SaveListAndEqualizer()
{
    SaveList();
    // Lost on failure: the curve.
    if (IsLoaded())
        Ignoring([&] { m_modules.curves.SaveDefaultEqualizer(); });
}

bool EndingSteps::IsLoaded() const
{
    return m_modules.wmain.Loaded;
}

bool EndingSteps::HasLibrary() const
{
    return m_modules.bass.BASS_Free != nullptr;
}

} // namespace velmo
