#include "page.h"

#include <zogbl/resource_lookup.h>

#include "../text_box.h"

BEGIN_MESSAGE_MAP(Page, CWnd)
    ON_WM_CREATE()
    ON_WM_SIZE()
END_MESSAGE_MAP()

BOOL Page::CreatePage(CWnd* frame, UINT id)
{
    const LPCSTR windowClass =
        AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW), reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
    return CreateEx(WS_EX_CONTROLPARENT, windowClass, nullptr, WS_CHILD | WS_CLIPCHILDREN, 0, 0, 0, 0, frame->m_hWnd,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)));
}

int Page::OnCreate(CREATESTRUCT* create)
{
    if (CWnd::OnCreate(create) != 0)
        return -1;
    CreateControls();
    for (HWND control = ::GetWindow(m_hWnd, GW_CHILD); control != nullptr; control = ::GetWindow(control, GW_HWNDNEXT))
        ::SendMessage(control, WM_SETFONT, reinterpret_cast<WPARAM>(ControlFont()), FALSE);
    return 0;
}

void Page::OnSize(UINT type, int width, int height)
{
    CWnd::OnSize(type, width, height);
    Layout(width, height);
}

void Page::LayOutAgain()
{
    CRect client;
    GetClientRect(&client);
    Layout(client.Width(), client.Height());
}

CString Text(UINT id)
{
    CString text;
    ZoGblLoadString(id, text);
    return text;
}

void LoadMenuOf(HWND window, UINT id)
{
    const void* resource = ZoGblLockResource(MAKEINTRESOURCE(id), RT_MENU);
    const HMENU previous = ::GetMenu(window);
    if (resource != nullptr && ::SetMenu(window, ::LoadMenuIndirect(resource)) && previous != nullptr)
        ::DestroyMenu(previous);
}

HFONT ControlFont()
{
    static const HFONT font = CreateDialogFont(); // to the end of the process, since controls hold it
    return font != nullptr ? font : static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT));
}

int TextWidth(const CString& text)
{
    return WithFont(nullptr, ControlFont(), [&](HDC dc) {
        SIZE size = {};
        ::GetTextExtentPoint32(dc, text, text.GetLength(), &size);
        return size.cx;
    });
}

int LineHeight()
{
    return WithFont(nullptr, ControlFont(), [](HDC dc) {
        TEXTMETRIC metrics = {};
        ::GetTextMetrics(dc, &metrics);
        return metrics.tmHeight + metrics.tmExternalLeading;
    });
}
