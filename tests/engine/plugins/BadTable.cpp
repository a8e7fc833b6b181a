// A shared library that is no plugin, though it may look like one. VELMO_TABLE says how.
extern "C" {

#if VELMO_TABLE == 1 // too small, of another version
// NOLINTNEXTLINE(readability-identifier-naming): the name that the engine asks for
__attribute__((visibility("default"))) extern const unsigned BASS_PluginTable;
const unsigned BASS_PluginTable = 1;
#elif VELMO_TABLE == 2 // no object
__attribute__((visibility("default"))) int BASS_PluginTable()
{
    return 1;
}
#elif VELMO_TABLE == 3 // a library that can't be mapped: it needs what nobody has
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): nobody has it
extern int velmoNobodyHasThis;
__attribute__((visibility("default"))) int* BASS_PluginTable()
{
    return &velmoNobodyHasThis;
}
#else                  // nothing of the name
__attribute__((visibility("default"))) int VelmoSomethingElse()
{
    return 1;
}
#endif

} // extern "C"
