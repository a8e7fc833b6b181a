#include "StickyWindows.h"

#include "BringOntoScreens.h"

#include "skin/Skin.h"

namespace velmo {

void ShapeWindow(controls::Form& form, controls::PictureRef picture, cDIBSectionRegion& region)
{
    constexpr controls::Colour Black = 0;
    const skin::Bitmap bitmap = skin::Decode(picture, 1);
    cDIBSection dib;
    if (dib.CreateFromPicture(bitmap.width, bitmap.height, bitmap.Pixels())
        && region.Create(dib, Black))
        region.Applied(form, true);
    form.Picture = picture;
}

StickyWindows::StickyWindows(ports::Screens& screens)
    : m_screens(screens)
    , m_magnet(screens)
{}

void StickyWindows::Load(controls::Form& form)
{
    ShapeWindow(form, form.Picture, m_regions[&form]);
    m_magnet.AddWindow(&form, form.Owner);
}

void StickyWindows::RemoveAll()
{
    for (const controls::Form* form : m_magnet.Windows())
        m_magnet.RemoveWindow(form);
}

void StickyWindows::ReleaseRegions()
{
    for (auto& entry : m_regions)
        entry.second.Destroy();
}

void StickyWindows::BringBack()
{
    BringOntoScreens(m_magnet, m_screens);
}

} // namespace velmo
