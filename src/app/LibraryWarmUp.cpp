#include "LibraryWarmUp.h"

#include <csignal>

#include <dlfcn.h>

namespace velmo {

LibraryWarmUp::LibraryWarmUp(const std::string& path)
{
    // Signals are for the main thread alone.
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    m_thread = std::jthread([path] {
        if (void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL))
            dlclose(library); // it stays mapped: it asks for that itself
    });
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

} // namespace velmo
