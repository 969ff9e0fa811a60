#include "tip.h"

#include <zogbl/gdi_data.h>

#include "ground/bounded_text.h"

void ControlTip::Offer(CWnd& owner, int part, const CRect& area, LPCSTR text)
{
    Hide(owner);
    if (m_tip.m_hWnd == nullptr && !m_tip.Create(&owner, TTS_ALWAYSTIP | TTS_NOPREFIX))
        return;
    char shown[kLongest + 1];
    CopyBounded(shown, sizeof shown, text);
    m_tip.SetMaxTipWidth(CZoGlobalGDIData::Scale(kWidest));
    if (m_tip.AddTool(&owner, shown, &area, static_cast<UINT_PTR>(part)))
        m_part = part;
}

void ControlTip::Hide(CWnd& owner)
{
    if (m_part == 0)
        return;
    m_tip.DelTool(&owner, static_cast<UINT_PTR>(m_part));
    m_part = 0;
}

void ControlTip::Relay(CWnd& owner, UINT message, WPARAM wParam, LPARAM lParam)
{
    MSG relayed = {owner.m_hWnd, message, wParam, lParam, 0, {0, 0}};
    if (m_part != 0)
        m_tip.RelayEvent(&relayed);
}

void ControlTip::Destroy()
{
    m_tip.DestroyWindow();
    m_part = 0;
}
