#include "PlayerApplication.h"

#include <utility>

namespace velmo {

PlayerApplication::PlayerApplication(const Process& process)
    : m_process(process)
{}

std::string PlayerApplication::CommandLine()
{
    return m_process.commandLine;
}

std::string PlayerApplication::ProgramDirectory()
{
    return m_process.directories.program;
}

std::string PlayerApplication::ApplicationDirectory()
{
    return m_process.directories.application;
}

void PlayerApplication::Post(std::function<void()> handler)
{
    m_eventLoop.Post(std::move(handler));
}

void PlayerApplication::Quit(int status)
{
    m_isQuitting = true;
    m_eventLoop.Quit(status);
}

bool PlayerApplication::IsQuitting()
{
    return m_isQuitting;
}

} // namespace velmo
