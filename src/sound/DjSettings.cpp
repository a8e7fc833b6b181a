#include "DjSettings.h"

#include "core/NumberText.h"
#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

double DjMethod(modINI& settings)
{
    return ParseNumber(settings.ReadSetting(sections::DJ, keys::Method, "5"));
}

bool IsCrossFadeOn(modINI& settings)
{
    return IsTrue(settings.ReadSetting(sections::DJ, keys::CrossFade, "False"));
}

std::int32_t CrossFadeDelay(modINI& settings)
{
    return RoundHalfEven(
        ParseNumber(settings.ReadSetting(sections::DJ, keys::CrossFadeDelay, "0")));
}

bool AssuresNotTheSame(modINI& settings)
{
    return IsTrue(settings.ReadSetting(sections::DJ, keys::AssureNotTheSame, "True"));
}

} // namespace velmo
