// The viewer: shows a text file, to be changed unless it is shown in part only.
#include "entry_points.h"
#include "template_ids.h"
#include "text_document.h"

#include <cstring>

namespace {

class ViewerDocument : public TextDocument {
    DECLARE_DYNCREATE(ViewerDocument)
public:
    BOOL OnOpenDocument(LPCSTR path) override
    {
        constexpr int kMaximum = 60000; // bytes
        if (!CDocument::OnOpenDocument(path) || !ReadFile(path, m_text, kMaximum, m_isWhole))
            return FALSE;
        // The control shows nothing behind a NUL.
        m_isWhole = m_isWhole && std::strlen(m_text) == static_cast<size_t>(m_text.GetLength());
        return TRUE;
    }
    BOOL OnSaveDocument(LPCSTR path) override { return m_isWhole ? TextDocument::OnSaveDocument(path) : CopyTo(path); }
    void DeleteContents() override
    {
        m_text.Empty();
        m_isWhole = TRUE;
    }
    BOOL IsEditable() const override { return m_isWhole; }
    void SetText(const CString& text) override { m_text = text; }
    CString GetText() const override
    {
        CString lines = m_text; // the control wants both characters at the end of each line
        lines.Replace("\r\n", "\n");
        lines.Replace("\n", "\r\n");
        return lines;
    }

protected:
    CString GetBytes() const override { return m_text; } // the file's line ends, as long as nobody changes it

private:
    CString m_text;
    BOOL m_isWhole = TRUE;
};

class ViewerView : public TextView {
    DECLARE_DYNCREATE(ViewerView)
};

class ViewerFrame : public CMDIChildWnd {
    DECLARE_DYNCREATE(ViewerFrame)
};

IMPLEMENT_DYNCREATE(ViewerDocument, TextDocument)
IMPLEMENT_DYNCREATE(ViewerView, TextView)
IMPLEMENT_DYNCREATE(ViewerFrame, CMDIChildWnd)

} // namespace

const TemplateLibrary& GetTemplateLibrary()
{
    static const TemplateLibrary library = {1,
                                            ZO_IDS_VIEWER_TYPE,
                                            RUNTIME_CLASS(ViewerDocument),
                                            RUNTIME_CLASS(ViewerFrame),
                                            RUNTIME_CLASS(ViewerView),
                                            16,
                                            nullptr};
    return library;
}
