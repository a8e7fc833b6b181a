#pragma once

#include <functional>
#include <string>

namespace velmo::ports {

/// The process itself. User-interface thread.
class Application
{
public:
    virtual ~Application() = default;

    /// All arguments joined by one blank, as the process was started with; made absolute where it
    /// names something below the directory the process was started in.
    virtual std::string CommandLine() = 0;

    /// Where the executable and its libraries lie, with a separator at the end.
    virtual std::string ProgramDirectory() = 0;

    /// Where all files are read and written, with a separator at the end.
    virtual std::string ApplicationDirectory() = 0;

    /// Runs `handler` on the user-interface thread, once the present event has been handled.
    virtual void Post(std::function<void()> handler) = 0;

    /// Ends the process with that exit status once the present event has been handled.
    virtual void Quit(int status) = 0;

    /// Whether the process is ending: `Quit` has been called.
    virtual bool IsQuitting() = 0;
};

} // namespace velmo::ports
