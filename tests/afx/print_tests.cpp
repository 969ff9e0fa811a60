// Printing by views: the course of a job, its failures, and a page on paper.

#include "support/test.h"

#include <afxdlgs.h>

#include <winspool.h>

#include <fstream>
#include <sstream>

namespace {

std::string g_log;   // what was called
std::string g_fails; // the step of the system that fails
int g_failure;       // and how
DWORD g_error;

int Step(const char* name)
{
    g_log += std::string(name) + " ";
    if (g_fails != name)
        return 1;
    SetLastError(g_error);
    return g_failure;
}

int WINAPI NoteStartDoc(HDC, const DOCINFOA* document)
{
    g_log += "[" + std::string(document->lpszDocName) + "] ";
    return Step(document->lpszOutput != nullptr ? document->lpszOutput : "startdoc");
}
int WINAPI NoteStartPage(HDC) { return Step("startpage"); }
int WINAPI NoteEndPage(HDC) { return Step("endpage"); }
int WINAPI NoteEndDoc(HDC) { return Step("enddoc"); }
int WINAPI NoteAbortDoc(HDC) { return Step("abortdoc"); }

HDC Memory() { return CreateCompatibleDC(nullptr); }

class PrintView : public CView {
public:
    std::function<BOOL(CPrintInfo&)> prepare;
    std::function<void(CDC&, CPrintInfo&)> print;
    UINT lastPage = 0; ///< said page by page; 0: not at all

    void OnPrepareDC(CDC* dc, CPrintInfo* info) override
    {
        CView::OnPrepareDC(dc, info);
        if (info == nullptr)
            return;
        dc->SetMapMode(MM_ANISOTROPIC);
        dc->SetViewportExt(2, 2);
        if (lastPage != 0)
            info->m_bContinuePrinting = info->m_nCurPage <= lastPage;
    }
    BOOL DoPrepare(CPrintInfo* info) { return DoPreparePrinting(info); }

protected:
    BOOL OnPreparePrinting(CPrintInfo* info) override
    {
        g_log += info->m_bDirect ? "direct " : "";
        return prepare(*info);
    }
    void OnBeginPrinting(CDC* dc, CPrintInfo*) override { g_log += dc->IsPrinting() ? "begin " : "begin-unknown "; }
    void OnEndPrinting(CDC*, CPrintInfo*) override { g_log += "end"; }
    void OnPrint(CDC* dc, CPrintInfo* info) override
    {
        g_log += std::to_string(info->m_nCurPage) + " ";
        if (print)
            print(*dc, *info);
        CView::OnPrint(dc, info);
    }
    void OnDraw(CDC* dc) override { dc->TextOut(100, 100, CString("Page")); }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(PrintView, CView)
    ON_COMMAND(ID_FILE_PRINT, OnFilePrint)
    ON_COMMAND(ID_FILE_PRINT_DIRECT, OnFilePrint)
END_MESSAGE_MAP()

class TitledDocument : public CDocument {
public:
    TitledDocument() { m_bAutoDelete = FALSE; }
};

} // namespace

class Printing : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_view->CreateEx(0, nullptr, "view", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr));
        m_document.AddView(m_view);
        m_document.SetTitle("Title");
    }
    void TearDown() override
    {
        m_view->DestroyWindow();
        AfxGetModuleState()->m_pCurrentWinApp = m_tests;
    }
    /// Lets the view print. \return what was called
    std::string Print(UINT command = ID_FILE_PRINT)
    {
        g_log.clear();
        m_app.told.clear();
        m_view->SendMessage(WM_COMMAND, command);
        return g_log;
    }

    CWinApp* m_tests = AfxGetApp();
    TellingApp m_app;
    TitledDocument m_document;
    PrintView* m_view = new PrintView;
};

TEST_F(Printing, GoesPageByPage)
{
    const ImportPatch patches[] = {{"ZOAFX.DLL", "StartDocA", &NoteStartDoc},
                                   {"ZOAFX.DLL", "StartPage", &NoteStartPage},
                                   {"ZOAFX.DLL", "EndPage", &NoteEndPage},
                                   {"ZOAFX.DLL", "EndDoc", &NoteEndDoc},
                                   {"ZOAFX.DLL", "AbortDoc", &NoteAbortDoc}};
    const auto pages = [](UINT first, UINT last, UINT from = 0, UINT to = 0, DWORD flags = 0) {
        return [=](CPrintInfo& info) {
            info.SetMinPage(first);
            info.SetMaxPage(last);
            PRINTDLG& chosen = info.m_pPD->m_pd;
            chosen.hDC = Memory();
            chosen.Flags |= flags | (to != 0 ? PD_PAGENUMS : 0);
            chosen.nFromPage = static_cast<WORD>(from);
            chosen.nToPage = static_cast<WORD>(to);
            return TRUE;
        };
    };
    const std::string kDocument = "begin [Title] startdoc ", kTold = "not printed | 48 | 61702";
    const auto throws = [](auto act) { return [act](CDC&, CPrintInfo&) { act(); }; };
    struct Case {
        const char* name;
        std::function<BOOL(CPrintInfo&)> prepare;
        std::string log, told;
        std::string fails = "";
        int failure = 0;
        DWORD error = ERROR_WRITE_FAULT;
        UINT lastPage = 0;
        std::function<void(CDC&, CPrintInfo&)> print = nullptr;
    };
    const std::string kFirst = kDocument + "startpage 1 endpage ", kFailed = "abortdoc end";
    const Case cases[] = {
        {"two", pages(1, 2), kFirst + "startpage 2 endpage enddoc end", ""},
        {"none wanted", [](CPrintInfo&) { return FALSE; }, "", ""},
        {"without context", [](CPrintInfo&) { return TRUE; }, "", kTold},
        {"unknown length", pages(1, 99999), kFirst + "enddoc end", ""},
        {"known later", pages(1, 99999), kFirst + "startpage 2 endpage enddoc end", "", "", 0, 0, 2},
        {"a range", pages(1, 9, 2, 3), kDocument + "startpage 2 endpage startpage 3 endpage enddoc end", ""},
        {"too wide a range", pages(3, 4, 1, 9), kDocument + "startpage 3 endpage startpage 4 endpage enddoc end", ""},
        {"stopped by a page", pages(1, 9), kFirst + "enddoc end", "", "", 0, 0, 0,
         [](CDC&, CPrintInfo& info) { info.m_bContinuePrinting = FALSE; }},
        {"to a file", pages(1, 1, 0, 0, PD_PRINTTOFILE), "begin [Title] FILE: startpage 1 endpage enddoc end", ""},
        {"no document", pages(1, 1), kDocument + "end", kTold, "startdoc", SP_ERROR},
        {"no file chosen", pages(1, 1), kDocument + "end", "", "startdoc", SP_ERROR, ERROR_CANCELLED},
        {"no reason", pages(1, 1), kDocument + "end", kTold, "startdoc", 0, ERROR_SUCCESS},
        {"no page", pages(1, 2), kDocument + "startpage " + kFailed, kTold, "startpage", 0},
        {"page lost", pages(1, 2), kFirst + kFailed, kTold, "endpage", SP_OUTOFDISK},
        {"deleted in the queue", pages(1, 2), kFirst + kFailed, "", "endpage", SP_USERABORT},
        {"canceled", pages(1, 2), kFirst + kFailed, "", "endpage", 0, ERROR_PRINT_CANCELLED},
        {"end lost", pages(1, 1), kFirst + "enddoc " + kFailed, kTold, "enddoc", SP_ERROR},
        {"page throws", pages(1, 2), kDocument + "startpage 1 " + kFailed, "", "", 0, 0, 0,
         throws([] { AfxThrowUserException(); })},
        {"thread ends", pages(1, 2), kFirst + kFailed, "", "", 0, 0, 0, throws([] { ::PostQuitMessage(5); })},
    };
    AfxGetThread()->m_pMainWnd = m_view;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        g_fails = c.fails;
        g_failure = c.failure;
        g_error = c.error;
        m_view->prepare = c.prepare;
        m_view->lastPage = c.lastPage;
        m_view->print = [&c, this](CDC& dc, CPrintInfo& info) {
            EXPECT_FALSE(::IsWindowEnabled(m_view->m_hWnd));
            EXPECT_EQ(CRect(0, 0, dc.GetDeviceCaps(HORZRES) / 2, dc.GetDeviceCaps(VERTRES) / 2), info.m_rectDraw);
            if (c.print)
                c.print(dc, info);
        };
        ZO_EXPECT_NO_LEAK(EXPECT_EQ(c.log, Print()));
        EXPECT_EQ(c.told, m_app.told);
        EXPECT_TRUE(::IsWindowEnabled(m_view->m_hWnd));
        MSG message;
        EXPECT_EQ(std::string("thread ends") == c.name, PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    }
    AfxGetThread()->m_pMainWnd = nullptr;

    m_view->print = nullptr;
    m_view->prepare = pages(1, 1);
    const std::string half = IsDoubleByte() ? "\x88\xEA" : "ab"; // one character of two bytes, or two
    m_document.SetTitle((std::string(30, 'x') + half + "y").c_str());
    EXPECT_EQ("direct begin [" + std::string(30, 'x') + (IsDoubleByte() ? "" : "a") +
                  "] startdoc startpage 1 endpage enddoc end",
              Print(ID_FILE_PRINT_DIRECT));
    AllocationFaults faults;
    RunFaultActs(faults,
                 [&](const FaultRun& run) { run.Act([&] { m_view->SendMessage(WM_COMMAND, ID_FILE_PRINT); }); });
}

namespace {

/// Our own description of a printer.
constexpr char kPrinterDescription[] =
    "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
    "*LanguageEncoding: ISOLatin1\n*PCFileName: \"ZOTEST.PPD\"\n*Product: \"(Zo)\"\n*PSVersion: \"(3010) 0\"\n"
    "*ModelName: \"Zo\"\n*NickName: \"Zo\"\n*LanguageLevel: \"2\"\n*ColorDevice: True\n*DefaultResolution: 300dpi\n"
    "*OpenUI *PageSize: PickOne\n*DefaultPageSize: A4\n"
    "*PageSize A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n*CloseUI: *PageSize\n*DefaultImageableArea: A4\n"
    "*ImageableArea A4/A4: \"18 18 577 824\"\n*DefaultPaperDimension: A4\n*PaperDimension A4/A4: \"595 842\"\n"
    "*DefaultFont: Courier\n*Font Courier: Standard \"(001.001S)\" Standard ROM\n";

/// A printer, the default one, that writes PostScript.
class Printer {
public:
    Printer()
    {
        char folder[MAX_PATH] = "", port[] = "FILE:", processor[] = "winprint", type[] = "RAW";
        DWORD size = 0;
        GetPrinterDriverDirectoryA(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(folder), sizeof folder, &size);
        std::string driver = std::string(folder) + "\\3\\wineps.drv";
        m_description = std::string(folder) + "\\3\\zotest.ppd";
        std::ofstream(m_description, std::ios::binary) << kPrinterDescription;
        DRIVER_INFO_3A information = {3,       m_name,  nullptr, driver.data(), m_description.data(), driver.data(),
                                      nullptr, nullptr, nullptr, nullptr};
        AddPrinterDriverExA(nullptr, 3, reinterpret_cast<BYTE*>(&information), APD_COPY_NEW_FILES);
        PRINTER_INFO_2A printer = {};
        printer.pPrinterName = printer.pDriverName = m_name;
        printer.pPortName = port;
        printer.pPrintProcessor = processor;
        printer.pDatatype = type;
        m_printer = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
        SetDefaultPrinterA(m_name);
    }
    ~Printer()
    {
        DeletePrinter(m_printer);
        DeletePrinterDriverExA(nullptr, nullptr, m_name, 0, 0);
        DeleteFileA(m_description.c_str());
    }

private:
    char m_name[16] = "Zo test printer";
    std::string m_description;
    HANDLE m_printer;
};

std::string g_output; // a file

int WINAPI StartInFile(HDC dc, const DOCINFOA* document)
{
    DOCINFOA intoFile = *document;
    intoFile.lpszOutput = g_output.c_str();
    return StartDocA(dc, &intoFile);
}

} // namespace

TEST_F(Printing, WritesAPage)
{
    ZO_ONLY_IN(IsNt(), "the systems before have printer drivers of 16 bits");
    m_view->prepare = [this](CPrintInfo& info) {
        info.SetMaxPage(2);
        return m_view->DoPrepare(&info);
    };
    EXPECT_EQ("direct ", Print(ID_FILE_PRINT_DIRECT)) << "there is no printer";
    EXPECT_EQ("not printed | 48 | 61702", m_app.told);

    const Printer printer;
    g_output = ProgramFolder() + "print_test.ps";
    {
        const ImportPatch patch("ZOAFX.DLL", "StartDocA", &StartInFile);
        EXPECT_EQ("direct begin 1 2 end", Print(ID_FILE_PRINT_DIRECT));
    }
    EXPECT_EQ("", m_app.told);
    std::ostringstream text;
    text << std::ifstream(g_output, std::ios::binary).rdbuf();
    for (const char* part : {"%!PS-Adobe", "%%Title: Title", "%%Pages: 2", "/P glyphshow"})
        EXPECT_NE(std::string::npos, text.str().find(part)) << part;
    DeleteFileA(g_output.c_str());
}
