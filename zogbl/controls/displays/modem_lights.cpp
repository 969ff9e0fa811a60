#include <zogbl/modem_lights.h>

#include <zogbl/effects.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>
#include <zogbl/trans_bmp.h>

#include "common/without_throwing.h"
#include "controls/base/tip.h"
#include "modem_lights_port.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include <oleacc.h>

IMPLEMENT_DYNAMIC(CZoModemLights, CZoControl)

namespace {

constexpr UINT_PTR kTimer = 1;
constexpr DWORD kTellEach = 500;
constexpr DWORD kEarly = 10; // milliseconds by which a timer may come before its time

constexpr LPCSTR kCaptions[] = {"OH", "CD", "TR", "RD", "SD", "CTS", "RTS", "HS"}; // the same in all languages
constexpr UINT kNames[] = {ZO_IDS_LIGHT_OH, ZO_IDS_LIGHT_CD,  ZO_IDS_LIGHT_TR,  ZO_IDS_LIGHT_RD,
                           ZO_IDS_LIGHT_SD, ZO_IDS_LIGHT_CTS, ZO_IDS_LIGHT_RTS, ZO_IDS_LIGHT_HS};

constexpr DWORD BitOf(int light) { return 1U << light; }
constexpr DWORD kTraffic = BitOf(CZoModemLights::kRD) | BitOf(CZoModemLights::kSD);

} // namespace

CZoModemLights::CZoModemLights() : m_nShown(kFree)
{
    for (int i = 0; i < kFree; ++i)
        m_shown[i] = static_cast<Light>(i);
}

CZoModemLights::~CZoModemLights()
{
    DestroyWindow();
    Detach();
    delete m_pTip;
    delete m_pOwnPictures;
}

// What it shows -------------------------------------------------------------------------------------------------------

BOOL CZoModemLights::ShowLights(const Light* lights, int count)
{
    DWORD seen = 0;
    if (lights == nullptr || count < 0 || count > kLightCount)
        return FALSE;
    for (int i = 0; i < count; ++i) {
        if (!IsLight(lights[i]) || (seen & BitOf(lights[i])) != 0)
            return FALSE;
        seen |= BitOf(lights[i]);
    }
    std::copy(lights, lights + count, m_shown);
    m_nShown = count;
    if (m_hWnd != nullptr) {
        Relayout();
        RaiseEvent(EVENT_OBJECT_REORDER);
    }
    return TRUE;
}

BOOL CZoModemLights::SetLightTexts(Light light, LPCSTR caption, LPCSTR name)
{
    if (!IsLight(light) || caption == nullptr || name == nullptr || lstrlenA(caption) > kMostCaption)
        return FALSE;
    const BOOL done = WithoutThrowing([&] {
        const CString newCaption(caption), newName(name); // both or none
        m_captions[light] = newCaption;
        m_names[light] = newName;
    });
    if (done && m_hWnd != nullptr) {
        Relayout();
        const Light* at = std::find(m_shown, m_shown + m_nShown, light);
        if (at != m_shown + m_nShown)
            RaiseEvent(EVENT_OBJECT_NAMECHANGE, static_cast<int>(at - m_shown) + 1);
    }
    return done;
}

LPCSTR CZoModemLights::CaptionOf(Light light) const
{
    return m_captions[light].IsEmpty() && light < kFree ? kCaptions[light] : static_cast<LPCSTR>(m_captions[light]);
}

CString CZoModemLights::NameOf(Light light) const
{
    CString name = m_names[light];
    if (name.IsEmpty() && light < kFree)
        ZoGblLoadString(kNames[light], name);
    const CString caption = CaptionOf(light);
    return name.IsEmpty() ? caption : caption.IsEmpty() ? name : caption + ", " + name;
}

BOOL CZoModemLights::SetLight(Light light, BOOL isOn)
{
    if (!IsLight(light) || (IsAttached() && (light == kCD || light == kCTS)))
        return FALSE;
    Change(light, isOn != FALSE);
    return TRUE;
}

BOOL CZoModemLights::IsLit(Light light) const
{
    return IsLight(light) && ((m_dwOn | m_dwFlashing) & BitOf(light)) != 0;
}

void CZoModemLights::Change(Light light, bool isOn)
{
    if (((m_dwOn & BitOf(light)) != 0) == isOn)
        return;
    m_dwOn ^= BitOf(light);
    Refresh(light);
}

void CZoModemLights::ReportReceived() { Flash(kRD, m_dwReceivedAt); }
void CZoModemLights::ReportSent() { Flash(kSD, m_dwSentAt); }

void CZoModemLights::Flash(Light light, DWORD& since)
{
    since = ::GetTickCount();
    if (m_hWnd == nullptr || (m_dwFlashing & BitOf(light)) != 0)
        return;
    m_dwFlashing |= BitOf(light);
    Refresh(light);
}

void CZoModemLights::EndFlash(Light light, DWORD since, DWORD now)
{
    if ((m_dwFlashing & BitOf(light)) == 0 || now - since < kLeastFlash)
        return;
    m_dwFlashing &= ~BitOf(light);
    Refresh(light);
}

/// After a change: draws the light, tells screen readers, and sees to the timer.
void CZoModemLights::Refresh(Light light)
{
    if (m_hWnd == nullptr) {
        m_dwTold = m_dwOn; // nobody looks yet
        return;
    }
    for (int i = 0; i < m_nShown; ++i) {
        if (m_shown[i] == light)
            InvalidateRect(GetPicturePlace(GetCell(i + 1)), FALSE);
    }
    TellReaders(::GetTickCount());
    RunTimer();
}

// The port ------------------------------------------------------------------------------------------------------------

DWORD CZoModemLights::Attach(HANDLE port)
{
    Detach();
    DWORD status = 0;
    m_pWatch = PortWatch::Begin(port, status);
    m_dwAskedAt = ::GetTickCount();
    m_nUnanswered = 0;
    RunTimer();
    return status;
}

void CZoModemLights::Detach()
{
    LetGo(0);
    RunTimer();
}

void CZoModemLights::LetGo(DWORD status)
{
    m_dwDetachStatus = status;
    if (m_pWatch == nullptr)
        return;
    std::exchange(m_pWatch, nullptr)->End();
    Change(kCD, false);
    Change(kCTS, false);
}

/// \return false if the control is gone
bool CZoModemLights::LookAtPort()
{
    DWORD value = 0;
    DWORD status = 0;
    switch (m_pWatch->Take(value)) {
    case PortWatch::Answer::kPending:
        if (++m_nUnanswered < kPatience)
            return true;
        status = ERROR_TIMEOUT;
        break;
    case PortWatch::Answer::kError:
        status = value != 0 ? value : ERROR_GEN_FAILURE;
        break;
    case PortWatch::Answer::kLines:
        Change(kCD, (value & MS_RLSD_ON) != 0);
        Change(kCTS, (value & MS_CTS_ON) != 0);
        [[fallthrough]];
    default:
        m_nUnanswered = 0;
        m_pWatch->Ask();
        return true;
    }
    LetGo(status);
    ZoLightsDetached told = {{}, status};
    return Notify(ZON_LIGHTS_DETACHED, &told.header) != FALSE;
}

// The timer -----------------------------------------------------------------------------------------------------------

/// The lights that are not as screen readers know them.
DWORD CZoModemLights::GetUntold() const
{
    const DWORD shown = std::accumulate(m_shown, m_shown + m_nShown, DWORD{0},
                                        [](DWORD bits, Light light) { return bits | BitOf(light); });
    return (m_dwOn ^ m_dwTold) & shown & ~kTraffic;
}

void CZoModemLights::TellReaders(DWORD now)
{
    const DWORD untold = GetUntold();
    if (untold == 0 || now - m_dwToldAt < kTellEach)
        return;
    const Light* light =
        std::find_if(m_shown, m_shown + m_nShown, [=](Light shown) { return (untold & BitOf(shown)) != 0; });
    m_dwTold ^= BitOf(*light);
    m_dwToldAt = now;
    RaiseEvent(EVENT_OBJECT_STATECHANGE, static_cast<int>(light - m_shown) + 1);
}

void CZoModemLights::RunTimer()
{
    if (m_hWnd == nullptr)
        return;
    const bool isPolled = IsAttached() && ::IsWindowVisible(m_hWnd);
    const UINT period = m_dwFlashing != 0 ? kLeastFlash : isPolled || GetUntold() != 0 ? kAskEach : 0;
    if (period == m_nPeriod)
        return;
    if (period == 0)
        KillTimer(kTimer);
    m_nPeriod = period != 0 && SetTimer(kTimer, period) != 0 ? period : 0;
}

void CZoModemLights::OnTick()
{
    const DWORD now = ::GetTickCount();
    EndFlash(kRD, m_dwReceivedAt, now);
    EndFlash(kSD, m_dwSentAt, now);
    if (IsAttached() && ::IsWindowVisible(m_hWnd) && now - m_dwAskedAt + kEarly >= kAskEach) {
        m_dwAskedAt = now;
        if (!LookAtPort())
            return;
    }
    TellReaders(now);
    RunTimer(); // of a window that is hidden it stops; the next drawing starts it again
}

LRESULT CZoModemLights::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_TIMER && wParam == kTimer) {
        OnTick();
        return 0;
    }
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
        const int part = FindPart(CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))));
        ControlTip::Follow(m_pTip, *this, part != 0 ? part : ControlTip::kNone, message, wParam, lParam);
    }
    if (message == WM_DESTROY) {
        if (m_pTip != nullptr)
            m_pTip->Destroy();
        KillTimer(kTimer);
        m_nPeriod = 0;
        m_dwFlashing = 0;
    }
    return CZoControl::WindowProc(message, wParam, lParam);
}
