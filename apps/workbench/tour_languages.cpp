// The tour's steps from language to language, with a second Workbench.
#include "tour_steps.h"

#include "tour_windows.h"
#include "workbench_ids.h"

#include <common/picture.h>
#include <zogbl/resource_ids.h>

/// The language that not every system can show, or the one that is left.
bool Tour::FifthLanguage()
{
    const bool isJapanese = ::GetACP() == 932;
    const LPCSTR name = isJapanese ? "ja" : "es";
    return SwitchLanguage(isJapanese ? kJapanese : kSpanish, name) && Pictures(name) && PictureAll(name);
}

/// A second Workbench, with a dialog open, hears of the changes of language that follow.
bool Tour::OpenSecondWorkbench()
{
    const bool started = m_second.Start("ZoWorkbench.exe", "/quiet") &&
                         WaitUntil([this] { return m_second.FindMainWindow() != nullptr; }) &&
                         ::PostMessage(m_second.FindMainWindow(), WM_COMMAND, ZO_ID_APP_ABOUT, 0) &&
                         WaitUntil([this] { return m_second.FindDialog() != nullptr; });
    return m_report.Step("second process", started, TextOf(m_second.FindDialog()));
}

bool Tour::CloseSecondWorkbench()
{
    ::PostMessage(m_second.FindDialog(), WM_COMMAND, IDOK, 0);
    WaitUntil([this] { return m_second.FindDialog() == nullptr; });
    m_second.AskToClose();
    CString result;
    const int code = m_second.WaitForEnd();
    result.Format("ended with %d", code);
    return m_report.Step("second process", code == 0, result);
}

/// Chooses a language in the dialog, as a person would: both processes must follow, with all that they show.
bool Tour::SwitchLanguage(DWORD language, LPCSTR name)
{
    const CString before = Text(ZO_IDS_PAGE_LANGUAGE);
    const CString titleBefore = TextOf(m_second.FindDialog());
    m_frame->GetCountryPage().GetPicker().SelectCountryIndex(kGermany);
    const CString picture = PicturePath(name, "choice");
    const WhenOpen driver(ZO_IDC_LANGUAGE_INSTALLED,
                          [&](HWND dialog) { return ChooseLanguage(dialog, language, picture); });
    m_frame->SendMessage(WM_COMMAND, ZO_ID_FILE_LANGUAGE);
    const bool chosen = driver.IsDone() && ZoGblGetLanguageLCID() == language;
    const bool here = WaitUntil([&] { return PageListText(m_frame->m_hWnd) == Text(ZO_IDS_PAGE_LANGUAGE); });
    const bool there = WaitUntil([&] {
        return PageListText(m_second.FindMainWindow()) == Text(ZO_IDS_PAGE_LANGUAGE) &&
               m_second.FindDialog() != nullptr && TextOf(m_second.FindDialog()) != titleBefore;
    });
    const bool kept = m_frame->GetCountryPage().GetPicker().GetCountryIndex() == kGermany;
    CString result = before + " -> " + PageListText(m_frame->m_hWnd) + "; " + PageListText(m_second.FindMainWindow()) +
                     ", " + TextOf(m_second.FindDialog());
    if (!m_report.Step("switch", chosen && here && there && kept && Text(ZO_IDS_PAGE_LANGUAGE) != before, result))
        return false;
    const CString path = PicturePath(name, "second");
    return m_report.Step("picture", SavePictureOfSecond(path), path);
}

/// The windows of the other process, in front of all others and painted; afterwards this one's are in front again.
bool Tour::SavePictureOfSecond(const CString& path)
{
    BringToFront(m_second.FindMainWindow());
    BringToFront(m_second.FindDialog());
    const bool saved = SavePicture(m_second.FindMainWindow(), path);
    for (HWND window : {m_second.FindDialog(), m_second.FindMainWindow()})
        ::SetWindowPos(window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    BringToFront(m_frame->m_hWnd);
    return saved;
}

void Tour::BringToFront(HWND window)
{
    ::SetForegroundWindow(window);
    for (int i = 0; i < 20; ++i) { // other processes paint in their own time
        ::Sleep(10);
        Settle();
    }
}

CString Tour::TextOf(HWND window)
{
    char text[256] = "";
    ::SendMessage(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

/// What the list of pages calls the page of the language, in whichever process.
CString Tour::PageListText(HWND frame)
{
    // Wide, for narrow texts of another process's list box do not arrive under Wine.
    wchar_t text[256] = L"";
    ::SendMessageW(::FindWindowEx(frame, nullptr, "ListBox", nullptr), LB_GETTEXT, 1, reinterpret_cast<LPARAM>(text));
    char narrow[256] = "";
    ::WideCharToMultiByte(CP_ACP, 0, text, -1, narrow, sizeof narrow, nullptr, nullptr);
    return narrow;
}
