#include "tip.h"

#include <zogbl/gdi_data.h>

#include "common/without_throwing.h"
#include "ground/bounded_text.h"

#include <new>

void ControlTip::Follow(ControlTip*& tip, CZoControl& owner, int part, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (part != kNone && tip == nullptr)
        tip = new (std::nothrow) ControlTip;
    if (tip == nullptr)
        return;
    if (tip->m_part != part) {
        tip->Hide(owner);
        WithoutThrowing([&] { tip->Offer(owner, part); });
    }
    MSG relayed = {owner.m_hWnd, message, wParam, lParam, 0, {0, 0}};
    if (tip->m_part != kNone)
        tip->m_tip.RelayEvent(&relayed);
}

void ControlTip::Offer(CZoControl& owner, int part)
{
    ZoPart description;
    if (part == kNone || !owner.DescribePart(part, description) ||
        (m_tip.m_hWnd == nullptr && !m_tip.Create(&owner, TTS_ALWAYSTIP | TTS_NOPREFIX)))
        return;
    char shown[kLongest + 1];
    CopyBounded(shown, sizeof shown, description.name);
    m_tip.SetMaxTipWidth(CZoGlobalGDIData::Scale(kWidest));
    if (m_tip.AddTool(&owner, shown, &description.area, static_cast<UINT_PTR>(part)))
        m_part = part;
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
