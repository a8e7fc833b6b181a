#include "CheckAssociations.h"

#include "core/SettingsKeys.h"
#include "core/TextRules.h"

namespace velmo {

namespace {

void AssociateChosen(const std::string& masks, ports::Associations& associations)
{
    for (const std::string_view mask : Split(masks, ';')) {
        constexpr std::size_t StarAndDot = 2;
        if (CountCharacters(mask) < StarAndDot)
            return;
        const std::size_t cut = FirstCharacters(mask, StarAndDot).size();
        associations.AssociateExtension(std::string(mask.substr(cut)), true);
    }
}

} // namespace

void CheckAssociations(modINI& settings, ports::Associations& associations)
{
    const auto read = [&](const char* key, const char* fallback) {
        return settings.ReadSetting(sections::Files, key, fallback);
    };
    if (!IsTrue(read(keys::CheckAssociationOnStart, "False")))
        return;
    AssociateChosen(FoldCase(read(keys::Extensions, "")), associations);
    associations.RegisterProgId();
    // Kept: a text in lower case never equals this one, so a start leaves audio CDs alone.
    if (FoldCase(read(keys::ManageAudioCDs, "True")) == "True")
        associations.AssociateAudioCD(true);
}

} // namespace velmo
