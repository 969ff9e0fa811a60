#include "text_document.h"

IMPLEMENT_DYNAMIC(TextDocument, CDocument)
IMPLEMENT_DYNAMIC(TextView, CView)

BEGIN_MESSAGE_MAP(TextView, CView)
    ON_WM_CREATE()
    ON_WM_SIZE()
    ON_WM_SETFOCUS()
END_MESSAGE_MAP()

namespace {

constexpr UINT kTextId = 1;

}

BOOL TextDocument::ReadFile(LPCSTR path, CString& bytes, int maximum)
{
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone))
        return FALSE;
    const UINT read = file.Read(bytes.GetBuffer(maximum), static_cast<UINT>(maximum));
    bytes.ReleaseBuffer(static_cast<int>(read));
    return TRUE;
}

TextView::~TextView()
{
    if (m_font != nullptr)
        ::DeleteObject(m_font);
}

int TextView::OnCreate(CREATESTRUCT* create)
{
    constexpr DWORD kStyle =
        WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL;
    if (CView::OnCreate(create) == -1 || !m_text.Create(kStyle, CRect(), this, kTextId))
        return -1;
    m_font = ::CreateFont(-13, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                          CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, FIXED_PITCH | FF_MODERN, nullptr);
    if (m_font != nullptr)
        m_text.SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(m_font));
    return 0;
}

void TextView::OnSize(UINT type, int width, int height)
{
    CView::OnSize(type, width, height);
    m_text.MoveWindow(0, 0, width, height);
}

void TextView::OnSetFocus(CWnd*) { m_text.SetFocus(); }

void TextView::OnUpdate(CView*, LPARAM, CObject*)
{
    const auto* document = DYNAMIC_DOWNCAST(TextDocument, GetDocument());
    if (document != nullptr)
        m_text.SetWindowText(document->GetText());
}
