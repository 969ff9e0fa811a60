#include <zogbl/tool_bar.h>

#include <common/without_throwing.h>
#include <zogbl/language_support.h>
#include <zogbl/resource_ids.h>
#include <zogbl/tool_bar_setup.h>

#include "dialogs/base/dialog_resource.h"
#include "dialogs/base/tell_user.h"
#include "ground/language_followers.h"
#include "resources/user_settings.h"
#include "tool_bar_strip.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CZoToolBar, CControlBar)

namespace {

constexpr LPCSTR kSection = "ToolBars";
enum MenuCommand { kMenuLock = 1, kMenuTop, kMenuBottom, kMenuSetUp };

} // namespace

CZoToolBar::CZoToolBar() = default;

CZoToolBar::~CZoToolBar()
{
    m_bAutoDelete = FALSE; // the end has begun
    DestroyWindow();
}

BOOL CZoToolBar::Create(CWnd* parent, DWORD style, UINT id)
{
    if (m_hWnd != nullptr)
        return FALSE;
    const DWORD others = style & ~static_cast<DWORD>(CBRS_ALIGN_ANY);
    const bool isAtBottom = (style & CBRS_ALIGN_BOTTOM) != 0;
    const BOOL isMade = WithoutThrowing([&]() -> BOOL {
        auto content = std::make_unique<ToolBarContent>(nullptr, 0, isAtBottom);
        auto pictures = std::make_unique<ToolBarPictures>();
        auto strip = std::make_unique<ToolBarStrip>(*this, *content, *pictures);
        auto follower = std::make_unique<LanguageFollower>(LanguageFollower::Occasion::kWindows, &FollowLanguage, this);
        if (!CZoControl::RegisterControlClass() ||
            !CreateBar(ZO_CONTROL_CLASS, others | (isAtBottom ? CBRS_ALIGN_BOTTOM : CBRS_ALIGN_TOP), 0, parent, id))
            return FALSE;
        m_strip = std::move(strip);
        m_pictures = std::move(pictures);
        m_content = std::move(content);
        m_follower = std::move(follower);
        return m_strip->Create(WS_VISIBLE, CRect(), this, 1);
    });
    if (!isMade)
        DestroyWindow();
    return isMade;
}

BOOL CZoToolBar::SetButtons(const ZoToolButton* buttons, int count, UINT picturesId, int pictureWidth, LPCSTR name)
{
    if (m_hWnd == nullptr || m_strip == nullptr || !ToolBarContent::IsValid(buttons, count))
        return FALSE;
    return WithoutThrowing([&]() -> BOOL {
        ToolBarPictures pictures;
        ToolBarContent content(buttons, count, (GetBarStyle() & CBRS_ALIGN_BOTTOM) != 0);
        CString record;
        if (!pictures.Load(picturesId, pictureWidth) ||
            std::any_of(buttons, buttons + count,
                        [&](const ZoToolButton& button) { return button.picture >= pictures.GetCount(); }))
            return FALSE;
        if (name != nullptr && ReadSetting(kSection, name, record))
            content.Read(record); // a damaged one leaves what was shipped
        *m_pictures = std::move(pictures);
        *m_content = std::move(content);
        m_lpszName = name;
        Apply();
        return TRUE;
    });
}

INT_PTR CZoToolBar::SetUp() { return CZoToolBarSetup(*this, GetFrame()).DoModal(); }

// What the user wants -------------------------------------------------------------------------------------------------

BOOL CZoToolBar::IsLocked() const { return m_content == nullptr || m_content->isLocked; }
BOOL CZoToolBar::IsAtBottom() const { return m_content != nullptr && m_content->isAtBottom; }

void CZoToolBar::SetLocked(BOOL isLocked)
{
    if (m_content == nullptr)
        return;
    m_content->isLocked = isLocked != FALSE;
    Apply();
}

void CZoToolBar::SetAtBottom(BOOL isAtBottom)
{
    if (m_content == nullptr)
        return;
    m_content->isAtBottom = isAtBottom != FALSE;
    Apply();
}

/// Throws CMemoryException*, changing nothing.
void CZoToolBar::Take(const ToolBarContent& content)
{
    ToolBarContent copy(content);
    *m_content = std::move(copy);
    Apply();
}

/// Shows the content at its edge, at the bottom above bars that were there before.
void CZoToolBar::Apply()
{
    if (m_hWnd == nullptr)
        return;
    const DWORD edge = m_content->isAtBottom ? CBRS_ALIGN_BOTTOM : CBRS_ALIGN_TOP;
    if ((GetBarStyle() & CBRS_ALIGN_ANY) != edge) {
        SetBarStyle((GetBarStyle() & ~static_cast<DWORD>(CBRS_ALIGN_ANY)) | edge);
        ::SetWindowPos(m_hWnd, m_content->isAtBottom ? HWND_BOTTOM : HWND_TOP, 0, 0, 0, 0,
                       SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    m_strip->OnContentChanged();
    if (CFrameWnd* frame = GetFrame())
        frame->RecalcLayout();
}

DWORD CZoToolBar::Keep() const
{
    if (m_content == nullptr || m_lpszName == nullptr)
        return ERROR_SUCCESS;
    return ResultOr(DWORD{ERROR_NOT_ENOUGH_MEMORY},
                    [this] { return KeepSetting(kSection, m_lpszName, m_content->Write()); });
}

void CZoToolBar::KeepOrTell()
{
    if (Keep() != ERROR_SUCCESS)
        TellUser(GetFrame(), 0, ZO_IDS_TOOL_BAR_NOT_KEPT);
}

// The context menu ----------------------------------------------------------------------------------------------------

/// \return what is chosen; the bar may be gone then
int CZoToolBar::AskMenu(CPoint point) const
{
    const struct {
        UINT text;
        MenuCommand command;
        UINT flags;
    } rows[] = {
        {ZO_IDS_TOOL_BAR_LOCK, kMenuLock, IsLocked() ? MF_CHECKED : 0U},
        {ZO_IDS_TOOL_BAR_TOP, kMenuTop, (IsAtBottom() ? 0U : MF_CHECKED) | (IsLocked() ? MF_GRAYED : 0U)},
        {ZO_IDS_TOOL_BAR_BOTTOM, kMenuBottom, (IsAtBottom() ? MF_CHECKED : 0U) | (IsLocked() ? MF_GRAYED : 0U)},
        {ZO_IDS_TOOL_BAR_SET_UP, kMenuSetUp, 0},
    };
    const HMENU menu = ::CreatePopupMenu();
    const BOOL isFilled = WithoutThrowing([&] {
        for (const auto& row : rows)
            ::AppendMenuA(menu, row.flags, row.command, LoadText(row.text));
    });
    const HWND strip = *m_strip;
    const UINT flags = TPM_RETURNCMD | TPM_NONOTIFY | m_strip->GetMenuFlags();
    const int chosen = isFilled ? ::TrackPopupMenu(menu, flags, point.x, point.y, 0, strip, nullptr) : 0;
    ::DestroyMenu(menu);
    return chosen;
}

void CZoToolBar::OnMenu(int command)
{
    switch (command) {
    case kMenuLock:
        SetLocked(!IsLocked());
        KeepOrTell();
        break;
    case kMenuTop:
    case kMenuBottom:
        SetAtBottom(command == kMenuBottom);
        KeepOrTell();
        break;
    case kMenuSetUp:
        SetUp();
        break;
    default:
        break;
    }
}

// The bar in its frame ------------------------------------------------------------------------------------------------

CFrameWnd* CZoToolBar::GetFrame() const
{
    CFrameWnd* frame = DYNAMIC_DOWNCAST(CFrameWnd, GetOwner());
    return frame != nullptr ? frame : GetParentFrame();
}

BOOL CZoToolBar::TakeKeyboard() { return m_hWnd != nullptr && m_strip != nullptr && m_strip->TakeKeyboard(); }
BOOL CZoToolBar::HasKeyboard() const { return m_strip != nullptr && m_hWnd != nullptr && ::GetFocus() == *m_strip; }

void CZoToolBar::LeaveKeyboard()
{
    if (HasKeyboard())
        m_strip->LeaveKeyboard();
}

CZoControl* CZoToolBar::GetControl() const { return m_strip.get(); }

CSize CZoToolBar::CalcFixedLayout(BOOL bStretch, BOOL)
{
    constexpr int kAllTheRoom = 32767;
    const int width = bStretch ? kAllTheRoom : ResultOr(0, [this] { return m_strip->GetBestWidth(); });
    return {width, m_strip->GetBestHeight()};
}

void CZoToolBar::OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler)
{
    if (m_strip != nullptr)
        WithoutThrowing<CMemoryException>([&] { m_strip->UpdateStates(*pTarget, bDisableIfNoHndler); });
}

void CZoToolBar::FollowLanguage(void* what)
{
    const auto* bar = static_cast<CZoToolBar*>(what);
    if (bar->m_hWnd != nullptr)
        bar->m_strip->SendMessage(CZoLanguageSupport::GetUpdateMessage());
}

LRESULT CZoToolBar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = CControlBar::WindowProc(message, wParam, lParam);
    if (message == WM_SIZE && m_strip != nullptr && m_strip->m_hWnd != nullptr)
        m_strip->MoveWindow(0, 0, LOWORD(lParam), HIWORD(lParam));
    return result;
}
