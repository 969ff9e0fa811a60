// Telephone calls: a list of those that the host tells of, by the novice command ZO_ID_NOTE_CALL.
#include "entry_points.h"
#include "template_ids.h"
#include "text_document.h"

#include <zogbl/resource_lookup.h>

namespace {

class CallDocument : public TextDocument {
    DECLARE_DYNCREATE(CallDocument)
public:
    void DeleteContents() override { m_times.RemoveAll(); }
    CString GetText() const override
    {
        CString format;
        ZoGblLoadString(ZO_IDS_CALL_NOTED, format);
        CString text;
        for (INT_PTR i = 0; i < m_times.GetSize(); ++i) {
            CString line;
            line.Format(format, static_cast<int>(i) + 1, (LPCSTR)m_times[i]);
            text += line + "\r\n";
        }
        return text;
    }
    void NoteCall()
    {
        char time[40] = "";
        ::GetTimeFormatA(LOCALE_USER_DEFAULT, 0, nullptr, nullptr, time, sizeof time);
        m_times.Add(time);
        UpdateAllViews(nullptr);
    }

private:
    CStringArray m_times; // when each call came, as the user writes times
};

class CallView : public TextView {
    DECLARE_DYNCREATE(CallView)
};

class CallFrame : public CMDIChildWnd {
    DECLARE_DYNCREATE(CallFrame)
};

IMPLEMENT_DYNCREATE(CallDocument, TextDocument)
IMPLEMENT_DYNCREATE(CallView, TextView)
IMPLEMENT_DYNCREATE(CallFrame, CMDIChildWnd)

void OnNoviceCommand(UINT command, CDocument* document)
{
    if (command == ZO_ID_NOTE_CALL)
        static_cast<CallDocument*>(document)->NoteCall();
}

} // namespace

const TemplateLibrary& GetTemplateLibrary()
{
    static const TemplateLibrary library = {
        3, ZO_IDS_TELEPHONE_TYPE, RUNTIME_CLASS(CallDocument), RUNTIME_CLASS(CallFrame), RUNTIME_CLASS(CallView),
        1, &OnNoviceCommand};
    return library;
}
