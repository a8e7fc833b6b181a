// What the sanitizers of a test program with a sound server shall leave out: the server's client
// library, which isn't built with them. Its locks are invisible to the thread sanitizer, and one
// small record of the library is lost whenever a connection ends while the server has lost its last
// sink.

// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming):
// the sanitizers look for these names
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_options();
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();

const char* __tsan_default_options()
{
    return "ignore_noninstrumented_modules=1";
}

const char* __lsan_default_suppressions()
{
    return "leak:libpulse.so";
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,readability-identifier-naming)
