#pragma once

#include "Process.h"

#include "ports/Application.h"
#include "qt/QtEventLoop.h"

namespace velmo {

/// The process, as the logic sees it.
class PlayerApplication final : public ports::Application
{
public:
    explicit PlayerApplication(const Process& process);

    std::string CommandLine() override;
    std::string ProgramDirectory() override;
    std::string ApplicationDirectory() override;
    void Post(std::function<void()> handler) override;
    void Quit(int status) override;
    bool IsQuitting() override;

private:
    const Process& m_process;
    qt::QtEventLoop m_eventLoop;
    bool m_isQuitting = false;
};

} // namespace velmo
