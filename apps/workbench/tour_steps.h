/// \file
/// The tour's steps. Each writes what it has seen into the report. \return whether all went well
#pragma once

#include "main_frame.h"
#include "program.h"
#include "report.h"

#include <common/wait.h>

#include <zogbl/location_item.h>
#include <zogbl/module.h>
#include <zogbl/module_language.h>

class Tour {
public:
    explicit Tour(const CString& folder) : m_folder(folder), m_report(folder + "\\tour.txt") {}

    bool Run();
    void Close(bool succeeded);

private:
    static constexpr DWORD kEnglish = 0x0409;
    static constexpr DWORD kGerman = 0x0407;
    static constexpr DWORD kFrench = 0x040C;
    static constexpr DWORD kSpanish = 0x040A;
    static constexpr DWORD kJapanese = 0x0411;
    static constexpr UINT kGermany = 276; // a country

    // The library, without a window.
    bool Register();
    bool Library();
    bool LoadLanguage(DWORD expected);
    bool UnloadLanguage();
    bool Countries();
    bool Lookups();
    bool NoviceMode();
    bool ProfileFile();
    bool MeasureFolder();
    bool AddLocation();
    bool RemoveLocation();
    bool AddMailBox();
    bool RemoveMailBox();

    // The window.
    bool OpenWindow();
    bool Pictures(LPCSTR language);
    bool PictureAll(LPCSTR language);
    bool CloseWindow();

    // The trace.
    CZoTrace& Trace() { return m_frame->GetTracePage().GetTrace(); }
    bool OpenTrace();
    bool WriteTrace();
    bool SecondProcess();
    bool CloseTrace();
    CString ReadTrace();

    // Lines.
    LinePage& Lines() { return m_frame->GetLinePage(); }
    bool TalkToModem() { return Command("ATZ", "OK") && Command("ATI3", "OK") && Command("ATD5550123", "CONNECT"); }
    bool TakeLine();
    bool RefusedLine();
    bool Command(LPCSTR command, LPCSTR answer);
    bool Echo();
    bool HangUpLine();
    bool RemoteHangUp();
    bool IsLogged(LPCSTR text);
    bool WatchForCalls();

    // Translation and tools.
    bool TranslateText();
    bool PictureTables(LPCSTR language);
    bool StartTool();
    static CString ProgramPath(LPCSTR name);
    static CString ReadText(const CString& path);
    bool PictureTools(LPCSTR language);

    // Documents.
    bool ChooseDocument(LPCSTR language);
    bool OpenDocuments();
    static CDocument* FirstDocument();
    static HWND EditorOf(const CDocument* document);
    bool SaveDocument();
    bool PickFolder();
    bool Print();
    bool PictureDocuments(LPCSTR language);

    // Languages, in two processes.
    bool FifthLanguage();
    bool OpenSecondWorkbench();
    bool CloseSecondWorkbench();
    bool SwitchLanguage(DWORD language, LPCSTR name);
    bool SavePictureOfSecond(const CString& path);
    static void BringToFront(HWND window);
    static CString TextOf(HWND window);
    static CString PageListText(HWND frame);

    CString PicturePath(LPCSTR language, LPCSTR what) const { return m_folder + "\\" + language + "-" + what + ".png"; }

    CString m_folder;
    Report m_report;
    CZoModuleLanguage m_language;
    CString m_tracePath;
    DWORD m_location = 0; // the record that the tour made
    DWORD m_locationBefore = ZO_NO_LOCATION;
    DWORD m_mailBox = 1; // this too
    DWORD m_mailBoxBefore = 0;
    MainFrame* m_frame = nullptr;
    Program m_second;
};
