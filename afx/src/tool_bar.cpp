#include <afxext.h>

#include <commctrl.h>

#include <utility>

IMPLEMENT_DYNAMIC(CToolBar, CControlBar)

BEGIN_MESSAGE_MAP(CToolBar, CControlBar)
    ON_WM_SYSCOLORCHANGE()
END_MESSAGE_MAP()

CToolBar::~CToolBar()
{
    DestroyWindow(); // it draws the pictures
    if (m_hbmImageWell != nullptr)
        ::DeleteObject(m_hbmImageWell);
}

BOOL CToolBar::Create(CWnd* pParentWnd, DWORD dwStyle, UINT nID) { return CreateEx(pParentWnd, 0, dwStyle, nID); }

BOOL CToolBar::CreateEx(CWnd* pParentWnd, DWORD dwCtrlStyle, DWORD dwStyle, UINT nID)
{
    DWORD control = dwCtrlStyle | CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER;
    if ((dwStyle & CBRS_TOOLTIPS) != 0)
        control |= TBSTYLE_TOOLTIPS;
    if (!CreateBar(TOOLBARCLASSNAME, dwStyle, control, pParentWnd, nID))
        return FALSE;
    if (m_hbmImageWell != nullptr) // of a window that is no more
        ::DeleteObject(std::exchange(m_hbmImageWell, nullptr));
    SendMessage(TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
    SetSizes(m_sizeButton, m_sizeImage);
    return TRUE;
}

// Pictures and buttons ------------------------------------------------------------------------------------------------

namespace {

/// What the resource compiler makes of a TOOLBAR.
struct ToolBarResource {
    WORD version; ///< 1
    WORD width;   ///< of a picture, in pixels
    WORD height;
    WORD count;
    WORD commands[1];
};
constexpr UINT kToolBarType = 241; // RT_TOOLBAR

HBITMAP LoadPictures(HINSTANCE module, LPCSTR name)
{
    return static_cast<HBITMAP>(::LoadImage(module, name, IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS));
}

} // namespace

BOOL CToolBar::LoadToolBar(LPCSTR lpszResourceName)
{
    const LPCSTR type = MAKEINTRESOURCE(kToolBarType);
    const HINSTANCE module = AfxFindResourceHandle(lpszResourceName, type);
    const HRSRC found = ::FindResource(module, lpszResourceName, type);
    const HGLOBAL loaded = found != nullptr ? ::LoadResource(module, found) : nullptr;
    const auto* bar = loaded != nullptr ? static_cast<const ToolBarResource*>(::LockResource(loaded)) : nullptr;
    const DWORD size = found != nullptr ? ::SizeofResource(module, found) : 0;
    if (bar == nullptr || size < offsetof(ToolBarResource, commands) || bar->version != 1 ||
        size < offsetof(ToolBarResource, commands) + bar->count * sizeof(WORD))
        return FALSE;
    CArray<UINT, UINT> commands;
    for (int i = 0; i < bar->count; ++i)
        commands.Add(bar->commands[i]);
    constexpr int kAroundX = 7; // from picture to button
    constexpr int kAroundY = 6;
    SetSizes(CSize(bar->width + kAroundX, bar->height + kAroundY), CSize(bar->width, bar->height));
    return LoadBitmap(lpszResourceName) && SetButtons(commands.GetData(), static_cast<int>(commands.GetSize()));
}

BOOL CToolBar::LoadBitmap(LPCSTR lpszResourceName)
{
    const HBITMAP pictures = LoadPictures(AfxFindResourceHandle(lpszResourceName, RT_BITMAP), lpszResourceName);
    if (!SetBitmap(pictures)) {
        if (pictures != nullptr)
            ::DeleteObject(pictures);
        return FALSE;
    }
    m_lpszBitmap = lpszResourceName;
    return TRUE;
}

BOOL CToolBar::SetBitmap(HBITMAP hbmImageWell)
{
    BITMAP description;
    if (hbmImageWell == nullptr || ::GetObject(hbmImageWell, sizeof description, &description) == 0)
        return FALSE;
    const auto count = static_cast<WPARAM>(description.bmWidth / (std::max)(m_sizeImage.cx, 1L));
    if (m_hbmImageWell == nullptr) {
        TBADDBITMAP add = {nullptr, reinterpret_cast<UINT_PTR>(hbmImageWell)};
        if (SendMessage(TB_ADDBITMAP, count, reinterpret_cast<LPARAM>(&add)) == -1)
            return FALSE;
    } else {
        TBREPLACEBITMAP replace = {nullptr, reinterpret_cast<UINT_PTR>(m_hbmImageWell), nullptr,
                                   reinterpret_cast<UINT_PTR>(hbmImageWell), static_cast<int>(count)};
        if (!SendMessage(TB_REPLACEBITMAP, 0, reinterpret_cast<LPARAM>(&replace)))
            return FALSE;
        ::DeleteObject(m_hbmImageWell);
    }
    m_hbmImageWell = hbmImageWell;
    m_lpszBitmap = nullptr;
    Invalidate();
    return TRUE;
}

void CToolBar::OnSysColorChange()
{
    CControlBar::OnSysColorChange();
    if (m_lpszBitmap != nullptr)
        LoadBitmap(m_lpszBitmap);
}

void CToolBar::SetSizes(SIZE sizeButton, SIZE sizeImage)
{
    m_sizeButton = sizeButton;
    m_sizeImage = sizeImage;
    SendMessage(TB_SETBITMAPSIZE, 0, MAKELPARAM(sizeImage.cx, sizeImage.cy));
    SendMessage(TB_SETBUTTONSIZE, 0, MAKELPARAM(sizeButton.cx, sizeButton.cy));
    Invalidate();
}

BOOL CToolBar::SetButtons(const UINT* lpIDArray, int nIDCount)
{
    while (SendMessage(TB_DELETEBUTTON, 0)) {
    }
    int picture = 0;
    for (int i = 0; i < nIDCount; ++i) {
        TBBUTTON button = {};
        button.fsState = TBSTATE_ENABLED;
        button.idCommand = lpIDArray != nullptr ? static_cast<int>(lpIDArray[i]) : 0;
        const bool gap = lpIDArray != nullptr && lpIDArray[i] == ID_SEPARATOR;
        button.fsStyle = gap ? TBSTYLE_SEP : TBSTYLE_BUTTON;
        constexpr int kGapWidth = 8;
        button.iBitmap = gap ? kGapWidth : picture++;
        if (!SendMessage(TB_ADDBUTTONS, 1, reinterpret_cast<LPARAM>(&button)))
            return FALSE;
    }
    return TRUE;
}

bool CToolBar::GetButton(int index, TBBUTTON& button) const
{
    button = {};
    return SendMessage(TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button)) != 0;
}

void CToolBar::SetButton(int index, const TBBUTTON& button)
{
    TBBUTTON present;
    if (!GetButton(index, present) || (present.iBitmap == button.iBitmap && present.idCommand == button.idCommand &&
                                       present.fsState == button.fsState && present.fsStyle == button.fsStyle))
        return;
    SendMessage(TB_DELETEBUTTON, static_cast<WPARAM>(index));
    SendMessage(TB_INSERTBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
}

int CToolBar::CommandToIndex(UINT nIDFind) const { return static_cast<int>(SendMessage(TB_COMMANDTOINDEX, nIDFind)); }

UINT CToolBar::GetItemID(int nIndex) const
{
    TBBUTTON button;
    return GetButton(nIndex, button) ? static_cast<UINT>(button.idCommand) : ID_SEPARATOR;
}

void CToolBar::GetItemRect(int nIndex, LPRECT lpRect) const
{
    if (!SendMessage(TB_GETITEMRECT, static_cast<WPARAM>(nIndex), reinterpret_cast<LPARAM>(lpRect)))
        ::SetRectEmpty(lpRect);
}

UINT CToolBar::GetButtonStyle(int nIndex) const
{
    TBBUTTON button;
    GetButton(nIndex, button);
    return MAKELONG(button.fsStyle, button.fsState);
}

void CToolBar::SetButtonStyle(int nIndex, UINT nStyle)
{
    TBBUTTON button;
    if (!GetButton(nIndex, button))
        return;
    button.fsStyle = static_cast<BYTE>(LOWORD(nStyle));
    button.fsState = static_cast<BYTE>(HIWORD(nStyle));
    SetButton(nIndex, button);
}

void CToolBar::GetButtonInfo(int nIndex, UINT& nID, UINT& nStyle, int& iImage) const
{
    TBBUTTON button;
    GetButton(nIndex, button);
    nID = static_cast<UINT>(button.idCommand);
    nStyle = MAKELONG(button.fsStyle, button.fsState);
    iImage = button.iBitmap;
}

void CToolBar::SetButtonInfo(int nIndex, UINT nID, UINT nStyle, int iImage)
{
    TBBUTTON button;
    if (!GetButton(nIndex, button))
        return;
    button.idCommand = static_cast<int>(nID);
    button.fsStyle = static_cast<BYTE>(LOWORD(nStyle));
    button.fsState = static_cast<BYTE>(HIWORD(nStyle));
    button.iBitmap = iImage;
    SetButton(nIndex, button);
}

// Layout and state ----------------------------------------------------------------------------------------------------

CSize CToolBar::CalcFixedLayout(BOOL bStretch, BOOL)
{
    constexpr int kAllTheRoom = 32767;
    constexpr int kAround = 3; // above and below the buttons
    CRect last;
    GetItemRect(GetCount() - 1, &last);
    const int height = (std::max<int>)(last.Height(), m_sizeButton.cy) + 2 * kAround;
    return {bStretch ? kAllTheRoom : static_cast<int>(last.right), height};
}

namespace {

/// A button of a tool bar, as the handler of its command sees it.
class ToolUpdate : public CCmdUI {
public:
    void Enable(BOOL bOn) override { Set(TB_ENABLEBUTTON, bOn); }
    void SetCheck(int nCheck) override
    {
        Set(TB_INDETERMINATE, nCheck == 2);
        Set(TB_CHECKBUTTON, nCheck == 1);
    }
    void SetText(LPCSTR) override {} // a button has none

private:
    void Set(UINT message, BOOL on) { m_pOther->SendMessage(message, m_nID, MAKELPARAM(on, 0)); }
};

} // namespace

void CToolBar::OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler)
{
    ToolUpdate update;
    update.m_pOther = this;
    update.m_nIndexMax = static_cast<UINT>(GetCount());
    for (; update.m_nIndex < update.m_nIndexMax; ++update.m_nIndex) {
        update.m_nID = GetItemID(static_cast<int>(update.m_nIndex));
        update.DoUpdate(pTarget, bDisableIfNoHndler);
    }
}
