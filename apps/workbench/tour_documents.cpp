// The tour's steps of documents.
#include "tour_steps.h"

#include "tour_dialogs.h"
#include "tour_windows.h"
#include "workbench_ids.h"

#include "../templates/template_ids.h"

#include <zogbl/new_document_dialog.h>
#include <zogbl/resource_ids.h>
#include <zogbl/select_directory.h>

/// Takes a picture of the choice of a new document's type, and gives the choice up.
bool Tour::ChooseDocument(LPCSTR language)
{
    const BOOL loaded = m_frame->GetDocuments().LoadTypes();
    const CString path = PicturePath(language, "new-document");
    PicturedDialog<CZoNewBrixelDocType> choice(path, AfxGetApp(), m_frame);
    const bool pictured = loaded && choice.DoModal() == IDOK && choice.IsSaved();
    return m_report.Step("document types", pictured, path);
}

/// Opens a document of each type, and tells the telephone's of two calls.
bool Tour::OpenDocuments()
{
    Documents& documents = m_frame->GetDocuments();
    const CString file = m_folder + "\\tour.ini"; // which the tour wrote before
    CString titles;
    CDocTemplate* telephone = nullptr; // the last type
    CDocument* calls = nullptr;
    POSITION position = AfxGetApp()->GetFirstDocTemplatePosition();
    for (INT_PTR i = 0; i < documents.GetTypeCount() && position != nullptr; ++i) {
        CDocTemplate* type = AfxGetApp()->GetNextDocTemplate(position);
        CString extension;
        type->GetDocString(extension, CDocTemplate::filterExt);
        CDocument* document = documents.Open(type, extension.IsEmpty() ? nullptr : (LPCSTR)file);
        if (document == nullptr)
            return m_report.Step("documents", false, "none of type " + titles);
        telephone = type;
        calls = document;
        titles += (titles.IsEmpty() ? "" : ", ") + document->GetTitle();
        for (int call = 0; call < 2; ++call)
            documents.GetModule(i)->ProcessNoviceCommand(ZO_ID_NOTE_CALL, document);
    }
    if (telephone == nullptr || documents.Open(telephone, nullptr) != calls) // of which there is one
        return m_report.Step("documents", false, "a second document of calls");
    return m_report.Step("documents", documents.GetTypeCount() == 3, titles);
}

/// The first document of the first type; null when there is none.
CDocument* Tour::FirstDocument()
{
    POSITION position = AfxGetApp()->GetFirstDocTemplatePosition();
    const CDocTemplate* type = position != nullptr ? AfxGetApp()->GetNextDocTemplate(position) : nullptr;
    position = type != nullptr ? type->GetFirstDocPosition() : nullptr;
    return position != nullptr ? type->GetNextDoc(position) : nullptr;
}

/// The edit control in which a document is shown.
HWND Tour::EditorOf(const CDocument* document)
{
    POSITION position = document != nullptr ? document->GetFirstViewPosition() : nullptr;
    return position != nullptr ? ::GetWindow(document->GetNextView(position)->m_hWnd, GW_CHILD) : nullptr;
}

/// Changes a document, saves it under another name, closes it and opens it again, all in the dialogs for files.
bool Tour::SaveDocument()
{
    static constexpr char kLine[] = "; Changed by the tour.\r\n";
    char path[MAX_PATH] = "";
    ::GetFullPathName(m_folder + "\\tour-document.txt", sizeof path, path, nullptr);
    ::DeleteFile(path); // of a tour before
    const CString picture = PicturePath("en", "file-dialog");
    const auto enter = [&](HWND dialog) {
        ::SetDlgItemText(dialog, ZO_IDC_FILE_NAME, path);
        Settle();
        const bool saved = SavePicture(dialog, picture);
        Press(dialog, IDOK);
        return saved;
    };
    CDocument* document = FirstDocument();
    ::SendMessage(EditorOf(document), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(kLine));
    bool done = document != nullptr && document->IsModified();
    if (done) {
        const WhenOpen save(ZO_IDC_FILE_NAME, enter);
        document->OnCmdMsg(ZO_ID_DOCUMENT_SAVE_AS, CN_COMMAND, nullptr, nullptr);
        done = save.IsDone() && !document->IsModified() && document->GetPathName() == path;
        document->OnCmdMsg(ZO_ID_DOCUMENT_CLOSE, CN_COMMAND, nullptr, nullptr);
    }
    if (done) {
        const WhenOpen open(ZO_IDC_FILE_NAME, enter);
        m_frame->GetDocuments().AskAndOpen();
        done = open.IsDone() && TextOf(EditorOf(FirstDocument())).Find(kLine) == 0;
    }
    return m_report.Step("save and open", done, path);
}

bool Tour::PickFolder()
{
    char folder[MAX_PATH] = "";
    ::GetFullPathName(m_folder, sizeof folder, folder, nullptr);
    const CString picture = PicturePath("en", "folder-picker");
    const WhenOpen pick(ZO_IDC_FOLDER_TREE, [&](HWND dialog) {
        Settle();
        const bool saved = SavePicture(dialog, picture);
        Press(dialog, IDOK);
        return saved;
    });
    char chosen[MAX_PATH] = "";
    const int result =
        ZoSelectDirectory(chosen, sizeof chosen, m_frame->m_hWnd, folder, ZO_SELECT_KEEP_CASE, 0, nullptr, nullptr);
    return m_report.Step("pick a folder", result == IDOK && pick.IsDone() && ::lstrcmpi(folder, chosen) == 0, chosen);
}

bool Tour::Print()
{
    char path[MAX_PATH] = "";
    ::GetFullPathName(m_folder + "\\tour.prn", sizeof path, path, nullptr);
    const int pages = PrintDocument(m_frame->GetDocuments().GetShell(), path);
    CString result;
    result.Format("%d pages in %s", pages, path);
    return m_report.Step("print", pages > 0, result);
}

bool Tour::PictureDocuments(LPCSTR language)
{
    const HWND shell = m_frame->GetDocuments().GetShell();
    ::SendMessage(::GetDlgItem(shell, AFX_IDW_PANE_FIRST), WM_MDITILE, MDITILE_HORIZONTAL, 0);
    ::ShowWindow(shell, SW_SHOW);
    ::SetForegroundWindow(shell);
    ::RedrawWindow(shell, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    Settle();
    const CString path = PicturePath(language, "documents");
    const bool saved = shell != nullptr && SavePicture(shell, path);
    ::ShowWindow(shell, SW_HIDE); // not in the other pictures
    return m_report.Step("picture", saved, path);
}
