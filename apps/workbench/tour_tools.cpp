// The tour's steps of translation and tools.
#include "tour_steps.h"

#include "tour_windows.h"
#include "workbench_ids.h"

#include <zogbl/tool_file.h>

#include <algorithm>

/// Translates what a line with code page 437 would send.
bool Tour::TranslateText()
{
    static constexpr char received[] = "Gr\x94\xE1"
                                       "e 20 \xF8"
                                       "C, \x9A"
                                       "bung\r\nsecond line\r\n";
    static constexpr char expected[] = "Gr\xF6\xDF"
                                       "e 20 \xB0"
                                       "C, \xDC"
                                       "bung";
    const CString from = m_folder + "\\cp437.txt";
    CFile file(from, CFile::modeCreate | CFile::modeWrite);
    file.Write(received, sizeof received - 1);
    file.Close();
    TranslationPage& page = m_frame->GetTranslationPage();
    const BOOL done = page.LoadTable(TranslationPage::TablesFolder() + "CP437.IOT") == ZO_TRANSLATE_SUCCESS &&
                      page.TranslateFile(from, m_folder + "\\cp1252.txt", true);
    CString line;
    AfxExtractSubString(line, page.GetTranslatedText(), 0, '\r');
    return m_report.Step("translation", done && line == expected, line);
}

/// Takes pictures of the chooser and of the editor's pages.
bool Tour::PictureTables(LPCSTR language)
{
    CGblTranslate& table = m_frame->GetTranslationPage().GetTable();
    table.SetLastInput(0x84); // among characters that the table changes
    const ModalPictures pictures(PicturePath(language, "table"));
    const bool done = table.Load(m_frame, TranslationPage::TablesFolder() + "*.IOT") == 0 && table.Edit(m_frame) == 0 &&
                      pictures.GetSaved() == 4;
    return m_report.Step("tables", done, PicturePath(language, "table"));
}

/// Makes a tools file, and starts the first tool from the menu: it reports what it was started with.
bool Tour::StartTool()
{
    CObArray items;
    CTlmItem report;
    report.SetDataMenuText("&Start report");
    report.SetDataProgramPath(ProgramPath("ZoStartReport.exe"));
    report.SetDataWorkingDirectory(m_folder);
    report.SetDataArguments("\"as the tour\" wants it");
    report.GetRecord().dwCreationFlags |= CREATE_NO_WINDOW;
    CTlmItem workbench;
    workbench.SetDataMenuText("Another &Workbench");
    workbench.SetDataProgramPath(ProgramPath("ZoWorkbench.exe"));
    const CString path = m_folder + "\\tour.tlm";
    items.Add(&report);
    items.Add(&workbench);
    if (CTlmFile().SaveFileData(path, ZO_TLM_FILE_VERSION, ZO_TLM_HEADER_SIZE, &items) != 0)
        return m_report.Step("tools", false, path + " could not be written");
    m_frame->GetTools().SetFile(path);
    const CString told = m_folder + "\\start.txt";
    ::DeleteFile(told);
    ::SetEnvironmentVariable("ZO_START_REPORT", told);
    m_frame->SendMessage(WM_COMMAND, ZO_TLM_FIRST_COMMAND);
    CString text;
    const bool reported = WaitUntil([&] { return !(text = ReadText(told)).IsEmpty(); });
    ::SetEnvironmentVariable("ZO_START_REPORT", nullptr);
    text = text.Mid((std::max)(0, text.Find("argument 1")));
    text.Replace("\r\n", ", ");
    return m_report.Step("tools", reported && text.Find("argument 1=as the tour, argument 2=wants") == 0, text);
}

CString Tour::ProgramPath(LPCSTR name)
{
    char path[MAX_PATH] = {};
    ::GetModuleFileName(nullptr, path, sizeof path - 1);
    const CString own(path);
    return own.Left(own.ReverseFind('\\') + 1) + name;
}

/// What a file holds; empty when it cannot be read yet.
CString Tour::ReadText(const CString& path)
{
    CString text;
    CFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone))
        return text;
    const int length = static_cast<int>(file.GetLength());
    file.Read(text.GetBuffer(length), static_cast<UINT>(length));
    text.ReleaseBuffer(length);
    return text;
}

/// Takes pictures of the tools menu and of the editor's pages.
bool Tour::PictureTools(LPCSTR language)
{
    constexpr int kToolsMenu = 2;
    const MenuPicture menu(m_frame->m_hWnd, kToolsMenu, PicturePath(language, "tools-menu"));
    const ModalPictures pages(PicturePath(language, "tools"));
    m_frame->SendMessage(WM_COMMAND, ZO_ID_TOOLS_EDIT);
    return m_report.Step("tools", menu.IsSaved() && pages.GetSaved() == 4, PicturePath(language, "tools"));
}
