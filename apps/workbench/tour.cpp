#include "tour.h"

#include "tour_steps.h"

#include "tour_controls.h"
#include "tour_dialogs.h"
#include "tour_windows.h"
#include "workbench_ids.h"

#include <common/picture.h>
#include <zogbl/about_dialog.h>

#include <utility>

bool Tour::Run()
{
    return Register() && Library() && LoadLanguage(kEnglish) && Countries() && Lookups() && NoviceMode() &&
           ProfileFile() && AddLocation() && AddMailBox() && OpenWindow() && OpenTrace() && WriteTrace() &&
           TranslateText() && StartTool() && PictureTools("en") && SecondProcess() && TakeLine() && TalkToModem() &&
           Pictures("en") && Echo() && HangUpLine() && PictureTables("en") && RemoteHangUp() && RefusedLine() &&
           WatchForCalls() && ChooseDocument("en") && OpenDocuments() && SaveDocument() && PickFolder() &&
           PictureDocuments("en") && PictureAll("en") && Print() && OpenSecondWorkbench() &&
           SwitchLanguage(kGerman, "de") && Countries() && Pictures("de") && ChooseDocument("de") &&
           PictureTables("de") && PictureTools("de") && PictureDocuments("de") && PictureAll("de") &&
           SwitchLanguage(kFrench, "fr") && Pictures("fr") && PictureTables("fr") && PictureTools("fr") &&
           PictureAll("fr") && FifthLanguage() && SwitchLanguage(kEnglish, "en") && CloseSecondWorkbench() &&
           CloseTrace() && CloseWindow() && RemoveMailBox() && RemoveLocation() && MeasureFolder() && UnloadLanguage();
}

void Tour::Close(bool succeeded)
{
    if (m_frame != nullptr)
        CloseWindow();
    m_report.Line(succeeded ? "The tour is complete." : "The tour stopped at the step above.");
}

bool Tour::OpenWindow()
{
    m_frame = new MainFrame(true);
    AfxGetApp()->m_pMainWnd = m_frame;
    const BOOL created = m_frame->CreateFrame();
    CString title;
    if (created) {
        m_frame->ShowWindow(SW_SHOW);
        m_frame->UpdateWindow();
        m_frame->GetWindowText(title);
    } else {
        m_frame = nullptr; // a window that could not be completed took its object along
    }
    return m_report.Step("window", created, title);
}

bool Tour::Pictures(LPCSTR language)
{
    static constexpr LPCSTR pages[MainFrame::GetPageCount()] = {"countries", "language", "trace",       "locations",
                                                                "mailboxes", "lines",    "translation", "controls"};
    for (int page = 0; page < MainFrame::GetPageCount(); ++page) {
        m_frame->ShowPage(page);
        m_frame->UpdateWindow();
        Settle();
        const CString path = PicturePath(language, pages[page]);
        if (!m_report.Step("picture", SavePicture(m_frame->m_hWnd, path), path))
            return false;
    }
    const CString failed = PictureControls(*m_frame, PicturePath(language, "controls"));
    if (!m_report.Step("pictures of the controls", failed.IsEmpty(), failed))
        return false;
    const CString path = PicturePath(language, "about");
    PicturedDialog<CZoAboutDialog> about(path, ZO_IDI_WORKBENCH, m_frame);
    return m_report.Step("picture", about.DoModal() == IDOK && about.IsSaved(), path);
}

bool Tour::PictureAll(LPCSTR language)
{
    const CString path = PicturePath(language, "dialog");
    const CString failed = PictureDialogs(*m_frame, path);
    return m_report.Step("dialogs", failed.IsEmpty(), failed.IsEmpty() ? path : failed);
}

bool Tour::CloseWindow()
{
    const HWND window = m_frame->m_hWnd;
    m_frame->DestroyWindow(); // deletes itself
    m_frame = nullptr;
    Settle();
    return m_report.Step("close", !::IsWindow(window), "the window is gone");
}

int RunTour(LPCSTR folder)
{
    try {
        Tour tour(folder);
        const bool succeeded = tour.Run();
        tour.Close(succeeded);
        return succeeded ? 0 : 1;
    } catch (CException* e) { // nobody sits in front of a tour to read a message box
        char reason[256] = "no memory";
        e->GetErrorMessage(reason, sizeof reason);
        e->Delete();
        CString line;
        line.Format("the tour cannot write to %s: %s\r\n", folder, reason);
        DWORD written = 0;
        ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), (LPCSTR)line, static_cast<DWORD>(line.GetLength()), &written,
                    nullptr);
        return 1;
    }
}
