// The viewer: shows a text file.
#include "entry_points.h"
#include "text_document.h"

#include <zogbl/resource_ids.h>

namespace {

class ViewerDocument : public TextDocument {
    DECLARE_DYNCREATE(ViewerDocument)
public:
    BOOL OnOpenDocument(LPCSTR path) override
    {
        constexpr int kMaximum = 60000; // bytes
        return CDocument::OnOpenDocument(path) && ReadFile(path, m_text, kMaximum);
    }
    void DeleteContents() override { m_text.Empty(); }
    CString GetText() const override
    {
        CString lines = m_text; // the control wants both characters at the end of each line
        lines.Replace("\r\n", "\n");
        lines.Replace("\n", "\r\n");
        return lines;
    }

private:
    CString m_text;
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
