#pragma once

#include "FileHandle.h"
#include "InstanceProtocol.h"

#include "ports/FdWatcher.h"

#include <chrono>
#include <deque>
#include <memory>
#include <string>

namespace velmo {

/// The listening side of the running player, on the user-interface thread.
///
/// Nothing here waits. The listening socket and all connections hang on one poll descriptor, which
/// is all that the event loop watches; each notice takes what has come in. Connections are kept in
/// the order of their arrival, and requests are answered in it, an incomplete one holding up no
/// other. A handler may run the event loop: requests that come in meanwhile are answered when it
/// returns. A client can cost no more than its share: bytes a notice, bytes a request and
/// connections at a time are limited, and what stays incomplete for long is dropped when others
/// come.
class InstanceServer final
{
public:
    /// Listens at `path`. Where that is impossible the server never answers.
    InstanceServer(std::string path, ports::InstanceEvents events, ports::FdWatcher& watcher);
    ~InstanceServer();

    InstanceServer(const InstanceServer&) = delete;
    InstanceServer& operator=(const InstanceServer&) = delete;

    /// Closes everything and removes the socket. May be called by a handler of the events.
    void Stop();

private:
    struct Client
    {
        FileHandle handle;
        std::chrono::steady_clock::time_point since;
        std::string received;
        InstanceRequest request;
        RequestState state = RequestState::Incomplete;
    };

    void Service();
    void AcceptWaiting();
    void DropStale();
    void ReadFrom(Client& client);
    void AnswerComplete();
    void Answer(const Client& client) const;

    std::string m_path;
    ports::InstanceEvents m_events;
    FileHandle m_listener;
    FileHandle m_poll;
    std::deque<Client> m_clients;
    std::unique_ptr<ports::FdWatcher::Watch> m_watch;
    bool m_answering = false;
};

} // namespace velmo
