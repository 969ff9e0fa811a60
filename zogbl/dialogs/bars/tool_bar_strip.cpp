// A tool bar's buttons: layout, states, looks, screen readers.
#include "tool_bar_strip.h"

#include <zogbl/effects.h>
#include <zogbl/gdi_data.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "controls/base/tip.h"
#include "controls/drawing/arrow.h"

#include <algorithm>
#include <utility>

#include <oleacc.h>

namespace {

// Pixels at 96 dots an inch.
constexpr int kAroundX = 7; // from picture to button
constexpr int kAroundY = 6;
constexpr int kMargin = 2; // around the buttons
constexpr int kGapWidth = 8;
constexpr int kMoreWidth = 13;
constexpr int kGripWidth = 9;
constexpr int kLine = ZO_EDGE_WIDTH; // above the buttons

int Margin() { return CZoGlobalGDIData::Scale(kMargin); }

} // namespace

/// A button, as the handler of its command sees it. Handlers may change the bar: then it is no button any more.
class ToolUpdate : public CCmdUI {
public:
    explicit ToolUpdate(ToolBarStrip& strip) : m_strip(strip), m_nChanges(strip.m_nChanges) {}
    bool IsOver() const { return m_nChanges != m_strip.m_nChanges; }
    void Enable(BOOL bOn) override
    {
        if (!IsOver())
            m_strip.SetState(button, {bOn != FALSE, m_strip.m_states[button].check});
    }
    void SetCheck(int nCheck) override
    {
        if (!IsOver())
            m_strip.SetState(button, {m_strip.m_states[button].isEnabled, nCheck});
    }
    void SetText(LPCSTR) override {} // a button has none

    int button = 0;

private:
    ToolBarStrip& m_strip;
    const int m_nChanges;
};

ToolBarStrip::ToolBarStrip(CZoToolBar& bar, const ToolBarContent& content, const ToolBarPictures& pictures)
    : m_bar(bar), m_content(content), m_pictures(pictures)
{
}

ToolBarStrip::~ToolBarStrip()
{
    DestroyWindow();
    delete m_pTip;
}

// Layout --------------------------------------------------------------------------------------------------------------

CSize ToolBarStrip::ButtonSize() const
{
    return m_pictures.GetSize() + CSize(CZoGlobalGDIData::Scale(kAroundX), CZoGlobalGDIData::Scale(kAroundY));
}

int ToolBarStrip::GripWidth() const { return m_content.isLocked ? 0 : CZoGlobalGDIData::Scale(kGripWidth); }

int ToolBarStrip::GetBestHeight() const { return ButtonSize().cy + 2 * Margin() + kLine; }

int ToolBarStrip::GetBestWidth() const
{
    int width = 2 * Margin() + GripWidth();
    for (const int button : m_content.GetVisible())
        width += button >= 0 ? static_cast<int>(ButtonSize().cx) : CZoGlobalGDIData::Scale(kGapWidth);
    return width;
}

void ToolBarStrip::OnLayout()
{
    const int focused = IsPart(m_nFocused) ? At(m_nFocused).button : 0;
    m_isOutOfDate = true; // if there is no memory: then nothing is shown
    m_parts.clear();
    m_gaps.clear();
    m_hidden.clear();
    const CRect client = GetClientArea();
    const CSize size = ButtonSize();
    const int top = kLine + Margin();
    const bool hasRoom = GetBestWidth() <= client.Width();
    const int more = client.right - Margin() - CZoGlobalGDIData::Scale(kMoreWidth);
    const int limit = hasRoom ? client.right : more;
    const std::vector<int> visible = m_content.GetVisible();
    std::vector<Part> parts;
    std::vector<int> gaps;
    auto next = visible.begin();
    for (int x = Margin() + GripWidth(); next != visible.end(); ++next) {
        const int width = *next >= 0 ? static_cast<int>(size.cx) : CZoGlobalGDIData::Scale(kGapWidth);
        if (x + width > limit)
            break;
        if (*next >= 0)
            parts.push_back({*next, CRect(CPoint(x, top), size)});
        else
            gaps.push_back(x + width / 2);
        x += width;
    }
    if (next != visible.end() && *next < 0)
        ++next;
    else if (next != visible.begin() && next != visible.end() && next[-1] < 0)
        gaps.pop_back(); // nothing comes behind it
    std::vector<int> hidden(next, visible.end());
    if (!hidden.empty())
        parts.push_back({kMore, CRect(more, top, client.right - Margin(), top + size.cy)});
    m_states.resize(static_cast<size_t>(m_content.GetCount()));
    m_parts.swap(parts);
    m_gaps.swap(gaps);
    m_hidden.swap(hidden);
    m_nFocused = (std::max)(PartOf(focused), m_parts.empty() ? 0 : 1);
    m_nHot = 0;
    m_isOutOfDate = false;
    m_nPressed = (std::min)(m_nPressed, 0);
}

void ToolBarStrip::OnContentChanged()
{
    ++m_nChanges;
    if (m_pTip != nullptr)
        m_pTip->Hide(*this);
    Relayout();
    RaiseEvent(EVENT_OBJECT_REORDER);
    if (HasFocus() && m_parts.empty())
        LeaveKeyboard();
}

int ToolBarStrip::PartOf(int button) const
{
    const auto found =
        std::find_if(m_parts.begin(), m_parts.end(), [=](const Part& part) { return part.button == button; });
    return found != m_parts.end() ? static_cast<int>(found - m_parts.begin()) + 1 : 0;
}

UINT ToolBarStrip::GetCommand(int part) const
{
    return IsPart(part) && At(part).button >= 0 ? m_content.GetButton(At(part).button).command : 0;
}

// States --------------------------------------------------------------------------------------------------------------

const ToolBarStrip::State& ToolBarStrip::StateOf(int part) const
{
    static const State more;
    return At(part).button >= 0 ? m_states[At(part).button] : more;
}

void ToolBarStrip::SetState(int button, const State& state)
{
    State& present = m_states[button];
    if (present.isEnabled == state.isEnabled && present.check == state.check)
        return;
    present = state;
    InvalidatePart(PartOf(button));
    if (PartOf(button) != 0)
        RaiseEvent(EVENT_OBJECT_STATECHANGE, PartOf(button));
}

void ToolBarStrip::UpdateStates(CFrameWnd& target, BOOL isDisabledWithoutHandler)
{
    const Life life(this);
    if (m_isOutOfDate)
        Relayout();
    if (life.IsOver() || m_isOutOfDate)
        return;
    ToolUpdate update(*this);
    update.m_pOther = &m_bar;
    const std::vector<int> visible = m_content.GetVisible();
    update.m_nIndexMax = static_cast<UINT>(visible.size());
    for (const int button : visible) {
        update.button = button;
        update.m_nID = button >= 0 ? m_content.GetButton(button).command : 0;
        update.DoUpdate(&target, isDisabledWithoutHandler);
        if (life.IsOver() || update.IsOver())
            return;
        ++update.m_nIndex;
    }
}

// Looks ---------------------------------------------------------------------------------------------------------------

void ToolBarStrip::InvalidatePart(int part)
{
    if (IsPart(part) && m_hWnd != nullptr)
        InvalidateRect(At(part).area, FALSE);
}

void ToolBarStrip::DrawPart(CDC* dc, int part) const
{
    CRect area = At(part).area;
    const State& state = StateOf(part);
    const bool isDown = m_bDown && part == m_nPressed;
    const bool isFocused = part == m_nFocused && IsFocusShown();
    CRect inside = area;
    inside.DeflateRect(ZO_EDGE_WIDTH, ZO_EDGE_WIDTH);
    if (state.check != 0 && !isDown && !CZoGlobalGDIData::IsHighContrast())
        ZoDrawHatch(*dc, inside, ::GetSysColor(COLOR_3DHILIGHT), ::GetSysColor(COLOR_3DFACE));
    const bool isRaised = state.isEnabled && (part == m_nHot || isFocused);
    if (isDown || state.check == 1)
        ZoDrawEdge(*dc, area, ZoEdge::kThinSunken);
    else if (isRaised)
        ZoDrawEdge(*dc, area, ZoEdge::kThinRaised);
    if (isDown)
        area.OffsetRect(1, 1);
    if (At(part).button >= 0)
        m_pictures.Draw(dc, area, m_content.GetButton(At(part).button).picture, state.isEnabled && state.check != 2,
                        COLOR_BTNTEXT);
    else
        DrawArrow(dc, area, ArrowTo::kDown, ::GetSysColor(COLOR_BTNTEXT));
    if (isFocused) {
        dc->SetTextColor(::GetSysColor(COLOR_BTNTEXT));
        dc->SetBkColor(::GetSysColor(COLOR_3DFACE));
        ZoDrawFocus(*dc, inside);
    }
}

void ToolBarStrip::OnDraw(CDC* dc, const CRect& dirty)
{
    const CRect client = GetClientArea();
    dc->FillSolidRect(dirty, ::GetSysColor(COLOR_3DFACE));
    ZoDrawEdge(*dc, CRect(client.left - kLine, client.top, client.right + kLine, client.top + kLine), ZoEdge::kEtched);
    const int top = client.top + kLine + Margin();
    const int bottom = client.bottom - Margin();
    if (!m_content.isLocked) {
        for (const int x : {Margin() + 1, Margin() + 4})
            ZoDrawEdge(*dc, CRect(x, top, x + 3, bottom), ZoEdge::kThinRaised);
    }
    for (const int x : m_gaps)
        ZoDrawEdge(*dc, CRect(x - 1, top, x + 1, bottom), ZoEdge::kEtched);
    for (int part = 1; part <= GetPartCount(); ++part) {
        CRect common;
        if (common.IntersectRect(At(part).area, dirty))
            DrawPart(dc, part);
    }
}

// Screen readers ------------------------------------------------------------------------------------------------------

int ToolBarStrip::FindPart(CPoint point) const
{
    const auto found =
        std::find_if(m_parts.begin(), m_parts.end(), [=](const Part& part) { return part.area.PtInRect(point); });
    return found != m_parts.end() ? static_cast<int>(found - m_parts.begin()) + 1 : 0;
}

BOOL ToolBarStrip::DescribePart(int part, ZoPart& description) const
{
    if (!CZoControl::DescribePart(0, description) || part < 0 || part > GetPartCount())
        return FALSE;
    if (part == 0) {
        ZoGblLoadString(ZO_IDS_TOOL_BAR, description.name);
        description.role = ROLE_SYSTEM_TOOLBAR;
        return TRUE;
    }
    const State& state = StateOf(part);
    const bool isMore = At(part).button < 0;
    if (isMore) {
        ZoGblLoadString(ZO_IDS_TOOL_BAR_MORE, description.name);
    } else {
        description.name = ToolName(GetCommand(part));
        description.description = ToolMessage(GetCommand(part));
    }
    ZoGblLoadString(ZO_IDS_ACTION_PRESS, description.action);
    description.role = isMore ? ROLE_SYSTEM_BUTTONMENU : ROLE_SYSTEM_PUSHBUTTON;
    description.area = At(part).area;
    description.state |= STATE_SYSTEM_FOCUSABLE | (HasFocus() && part == m_nFocused ? STATE_SYSTEM_FOCUSED : 0) |
                         (part == m_nHot ? STATE_SYSTEM_HOTTRACKED : 0) |
                         (m_bDown && part == m_nPressed ? STATE_SYSTEM_PRESSED : 0) |
                         (state.isEnabled ? 0 : STATE_SYSTEM_UNAVAILABLE) |
                         (state.check == 1 ? STATE_SYSTEM_CHECKED : 0) | (state.check == 2 ? STATE_SYSTEM_MIXED : 0);
    return TRUE;
}

BOOL ToolBarStrip::DoPartAction(int part) { return Press(part); }

void ToolBarStrip::OnReloadTexts()
{
    if (m_pTip != nullptr)
        m_pTip->Hide(*this);
}
