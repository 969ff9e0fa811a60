#include "tip.h"

#include <zogbl/gdi_data.h>

#include "common/without_throwing.h"
#include "ground/bounded_text.h"

#include <new>

void ControlTip::Follow(ControlTip*& tip, CZoControl& owner, const Place& place, UINT message, WPARAM wParam,
                        LPARAM lParam)
{
    if (place.part != kNone && tip == nullptr)
        tip = new (std::nothrow) ControlTip;
    if (tip == nullptr)
        return;
    if (tip->m_part != place.part) {
        tip->Hide(owner);
        WithoutThrowing([&] { tip->Offer(owner, place); });
    }
    MSG relayed = {owner.m_hWnd, message, wParam, lParam, 0, {0, 0}};
    if (tip->m_part != kNone)
        tip->m_tip.RelayEvent(&relayed);
}

void ControlTip::Follow(ControlTip*& tip, CZoControl& owner, int part, UINT message, WPARAM wParam, LPARAM lParam)
{
    Place place;
    WithoutThrowing([&] {
        ZoPart description;
        const bool isShown = tip != nullptr && tip->m_part == part;
        if (part != kNone && (isShown || owner.DescribePart(part, description)))
            place = {part, description.area, description.name};
    });
    Follow(tip, owner, place, message, wParam, lParam);
}

void ControlTip::Offer(CZoControl& owner, const Place& place)
{
    if (place.part == kNone || (m_tip.m_hWnd == nullptr && !m_tip.Create(&owner, TTS_ALWAYSTIP | TTS_NOPREFIX)))
        return;
    char shown[kLongest + 1];
    CopyBounded(shown, sizeof shown, place.text);
    m_tip.SetMaxTipWidth(CZoGlobalGDIData::Scale(kWidest));
    if (m_tip.AddTool(&owner, shown, &place.area, static_cast<UINT_PTR>(place.part)))
        m_part = place.part;
}

void ControlTip::Hide(CWnd& owner)
{
    if (m_part == kNone)
        return;
    m_tip.DelTool(&owner, static_cast<UINT_PTR>(m_part));
    m_part = kNone;
}

void ControlTip::Destroy()
{
    m_tip.DestroyWindow();
    m_part = kNone;
}
