// A shared library that is no plugin, though it may look like one. VELMO_TABLE says how.
extern "C" {

#if VELMO_TABLE == 0 // nothing of the name
__attribute__((visibility("default"))) int VelmoSomethingElse()
{
    return 1;
}
#elif VELMO_TABLE == 1 // too small, of another version
__attribute__((visibility("default"))) extern const unsigned BASS_PluginTable;
const unsigned BASS_PluginTable = 1;
#else                  // no object
__attribute__((visibility("default"))) int BASS_PluginTable()
{
    return 1;
}
#endif

} // extern "C"
