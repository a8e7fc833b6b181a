#pragma once

// Sections and keys of the settings file, each literal once. Several are misspelt; files depend on
// them. Defaults stand where a key is read, since they differ from place to place.

/// Sections of the settings file.
namespace velmo::sections {

constexpr const char* Options = "Options";
constexpr const char* Display = "Display";
constexpr const char* DJ = "DJ";
constexpr const char* Sound = "Sound";
constexpr const char* Setup = "Setup";
constexpr const char* Files = "Files";
constexpr const char* Plugins = "Plugins";
constexpr const char* Visualisation = "Visualisation";
constexpr const char* DspEffects = "DSP\\Effects";
constexpr const char* ShutDownSystem = "ShutDownSystem";
constexpr const char* ZVLive = "ZVLive";
constexpr const char* YahooStatus = "YahooStatus";
constexpr const char* RTM = "RTM";

} // namespace velmo::sections

/// Keys of the settings file, by section. The keys of section "Plugins" are file names.
namespace velmo::keys {

// Section "Options"
constexpr const char* AllowMultipleInstances = "AllowMultipleInstances";
constexpr const char* AllwaysOnTop = "AllwaysOnTop"; // of the splash window only
constexpr const char* AlwaysOnTop = "AlwaysOnTop";
constexpr const char* AvoidStandBy = "AvoidStandBy";
constexpr const char* ConvertPercent20 = "Convert%20%";
constexpr const char* ConvertUnderscore = "ConvertUnderscore";
constexpr const char* HotTracking = "HotTracking";
constexpr const char* HoverSelection = "HoverSelection";
constexpr const char* PlayOnSingleClick = "PlayOnSingleClick";
constexpr const char* ReadTitlesOn = "ReadTitlesOn";
constexpr const char* RecureLocation = "RecureLocation";
constexpr const char* ShowLengthInPL = "ShowLengthInPL";
constexpr const char* ShowSplashScreen = "ShowSplashScreen";
constexpr const char* SortListOnLoad = "SortListOnLoad";
constexpr const char* MwStep = "mwStep";

// Section "Display"
constexpr const char* ShowIn = "ShowIn";
constexpr const char* ScrollTitle = "ScrollTitle";
constexpr const char* ShowNumbersInPL = "ShowNumbersInPL";
constexpr const char* ShowTooltips = "ShowTooltips";
constexpr const char* StickyWindows = "StickyWindows";
constexpr const char* FontName = "Font.Name";
constexpr const char* FontSize = "Font.Size";
constexpr const char* FontWeight = "Font.Weight";
constexpr const char* FontCharset = "Font.Charset";
constexpr const char* FontBold = "Font.Bold";
constexpr const char* FontItalic = "Font.Italic";
constexpr const char* FontUnderline = "Font.Underline";
constexpr const char* FontStrikethrough = "Font.Strikethrough";
constexpr const char* FontStriketrough =
    "Font.Striketrough"; // a key of its own, written and never read
constexpr const char* FontColor = "Font.Color";

// Section "DJ"
constexpr const char* Method = "Method";
constexpr const char* CrossFade = "CrossFade";
constexpr const char* CrossFadeDelay = "CrossFadeDelay";
constexpr const char* AssureNotTheSame = "AssureNotTheSame";

// Section "Sound"
constexpr const char* Frequency = "Frequency";
constexpr const char* Bits = "Bits";
constexpr const char* Channel = "Channel";
constexpr const char* Sound3D = "Sound3D";
constexpr const char* SpeakerAssign = "SpeakerAssign";
constexpr const char* SA_MonoMode = "SA_MonoMode";
constexpr const char* SA_StereoMode = "SA_StereoMode";
constexpr const char* LogarithmicVolume = "LogarithmicVolume";
constexpr const char* FloatDSP = "FloatDSP";
constexpr const char* Algorithm3D = "3DAlgorithm";
constexpr const char* PlaybackBuffer = "PlaybackBuffer";
constexpr const char* DownloadBuffer = "DownloadBuffer";
constexpr const char* InternetConnectionTimeout = "InternetConnectionTimeout";
constexpr const char* EAX_Preset = "EAX_Preset";
constexpr const char* EAX_RVolume = "EAX_RVolume";
constexpr const char* EAX_RDecay = "EAX_RDecay";
constexpr const char* EAX_RDamping = "EAX_RDamping";

// Section "Setup"
constexpr const char* UseDefaultNetSettings = "UseDefaultNetSettings";
constexpr const char* Proxy = "Proxy";
constexpr const char* Port = "Port";
constexpr const char* Username = "Username";
constexpr const char* Password = "Password";
constexpr const char* InternetConnection = "InternetConnection";
constexpr const char* CheckForNewVersion = "CheckForNewVersion";
constexpr const char* Language = "Language";

// Section "Files"
constexpr const char* CheckAssociationOnStart = "CheckAssociationOnStart";
constexpr const char* Extensions = "Extensions";
constexpr const char* ManageAudioCDs = "ManageAudioCDs";
constexpr const char* ManageAudioCds = "ManageAudioCds"; // the same key, as its page writes it
constexpr const char* EnqueueAsDefaultAction = "EnqueueAsDefaultAction";

// Section "Visualisation"
constexpr const char* Mode = "Mode";
constexpr const char* SpectrumStyle = "SpectrumStyle";
constexpr const char* SpectrumColor = "SpectrumColor";
constexpr const char* RefreshRateFPS = "RefreshRateFPS";
constexpr const char* DisableVisOnMin = "DisableVisOnMin";

// Section "DSP\Effects"
constexpr const char* EQEnabled = "EQEnabled";

// Section "ShutDownSystem"
constexpr const char* Status = "Status";
constexpr const char* Settings = "Settings";
constexpr const char* Date = "Date";
constexpr const char* Time = "Time";
constexpr const char* DayCheck = "DayCheck";

// Section "ZVLive"
constexpr const char* RunOnStartup = "RunOnStartup";
constexpr const char* ShowOnTry = "ShowOnTry";
constexpr const char* MentainAssociations = "MentainAssociations";
constexpr const char* AssociacionsCheckRate = "AssociacionsCheckRate";

// Section "YahooStatus"
constexpr const char* Enabled = "Enabled";
constexpr const char* BusyIcon = "BusyIcon";
constexpr const char* ShowURL = "ShowURL";
constexpr const char* URLOption = "URLOption";
constexpr const char* URLText = "URLText";
constexpr const char* PlayStop = "PlayStop";
constexpr const char* StopMessage = "StopMessage";
constexpr const char* ExitStatus = "ExitStatus";
constexpr const char* OPTExit = "OPTExit";
constexpr const char* CustomStatus = "CustomStatus";
constexpr const char* OriginalStatus = "OriginalStatus";

// Section "RTM"
constexpr const char* Volume = "Volume";
constexpr const char* X = "X";
constexpr const char* Y = "Y";
constexpr const char* State = "State";
constexpr const char* TimeMode = "TimeMode";
constexpr const char* ShowPL = "ShowPL";
constexpr const char* ShowFX = "ShowFX";
constexpr const char* ShowPLMGR = "ShowPLMGR";
constexpr const char* FirstRun = "FirstRun";
constexpr const char* TempDir1 = "TempDir1";
constexpr const char* TempDir2 = "TempDir2";
constexpr const char* TempDir3 = "TempDir3";
constexpr const char* TempDir5 = "TempDir5";
constexpr const char* TempDir6 = "TempDir6";

} // namespace velmo::keys
