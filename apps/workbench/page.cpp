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
    return CreateEx(WS_EX_CONTROLPARENT, windowClass, nullptr, WS_CHILD | WS_CLIPCHILDREN, CRect(0, 0, 0, 0), frame,
                    id);
}

int Page::OnCreate(CREATESTRUCT* create)
{
    if (CWnd::OnCreate(create) != 0)
        return -1;
    CreateControls();
    SendMessageToDescendants(WM_SETFONT, reinterpret_cast<WPARAM>(ControlFont()->m_hObject), FALSE, FALSE);
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

CFont* ControlFont()
{
    static CFont font; // to the end of the process, since controls hold it
    if (font.m_hObject == nullptr && !CreateDialogFont(font))
        font.CreateStockObject(DEFAULT_GUI_FONT);
    return &font;
}

int TextWidth(const CString& text)
{
    return WithFont(nullptr, ControlFont(), [&](CDC& dc) { return dc.GetTextExtent(text).cx; });
}

int LineHeight()
{
    return WithFont(nullptr, ControlFont(), [](CDC& dc) {
        TEXTMETRIC metrics = {};
        dc.GetTextMetrics(&metrics);
        return metrics.tmHeight + metrics.tmExternalLeading;
    });
}
