// Printing by views: the course of a job, and its failures.
#include "kit.h"

#include <common/test_printer.h>

#include <afxdlgs.h>

#include <fstream>

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

int WINAPI NoteAbortProc(HDC dc, ABORTPROC goesOn) { return Step(goesOn(dc, 0) ? "job" : "?"); }

/// Stands for the system's dialog: there the screen is the printer.
BOOL WINAPI NotePrintDlg(PRINTDLGA* asked)
{
    struct Names {
        DEVNAMES offsets = {offsetof(Names, driver), offsetof(Names, driver), offsetof(Names, driver), 0};
        char driver[8] = "DISPLAY";
    };
    if (!Step((asked->Flags & PD_RETURNDEFAULT) != 0 ? "default" : "dialog"))
        return FALSE;
    g_log += std::to_string(asked->nToPage) + " ";
    new (asked->hDevNames = GlobalAlloc(GMEM_FIXED, sizeof(Names))) Names;
    return TRUE;
}

FARPROC WINAPI FindFunction(HMODULE module, LPCSTR name)
{
    const auto ours = reinterpret_cast<void*>(&NotePrintDlg);
    return std::string(name) == "PrintDlgA" ? reinterpret_cast<FARPROC>(ours) : GetProcAddress(module, name);
}

class PrintView : public CView {
public:
    std::function<BOOL(CPrintInfo&)> prepare;
    std::function<void(CDC&, CPrintInfo&)> print;
    UINT lastPage = 0; ///< said page by page; 0: not at all
    UINT page = 0;     ///< printed last

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
    using CView::DoPreparePrinting;

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
        page = info->m_nCurPage;
        if (print)
            print(*dc, *info);
        CView::OnPrint(dc, info);
    }
    void OnDraw(CDC*) override { g_log += std::to_string(page) + " "; }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(PrintView, CView)
    ON_COMMAND(ID_FILE_PRINT, OnFilePrint)
    ON_COMMAND(ID_FILE_PRINT_DIRECT, OnFilePrint)
END_MESSAGE_MAP()

/// A program with a document and a view that prints it.
class Printing : public testing::Test {
protected:
    Printing()
    {
        m_document.m_bAutoDelete = FALSE;
        m_document.SetTitle("Title");
        EXPECT_TRUE(m_view->CreateEx(0, nullptr, "view", WS_OVERLAPPEDWINDOW, 0, 0, 200, 100, nullptr, nullptr));
        m_document.AddView(m_view);
    }
    ~Printing() override
    {
        m_view->DestroyWindow();
        AfxGetModuleState()->m_pCurrentWinApp = m_tests;
    }
    /// Lets the view print. Answers what was called, and what the user was told.
    std::string Print(UINT command = ID_FILE_PRINT)
    {
        g_log.clear();
        m_app.told.clear();
        m_view->SendMessage(WM_COMMAND, command);
        return g_log + m_app.told;
    }

    CWinApp* const m_tests = AfxGetApp();
    TellingApp m_app;
    CDocument m_document;
    PrintView* const m_view = new PrintView;
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
        info.m_bDirect = TRUE;
        return info.SetMaxPage(2), m_view->DoPreparePrinting(&info);
    };
    m_view->print = [](CDC& dc, CPrintInfo&) { dc.TextOut(5, 5, "P", 1); };
    EXPECT_EQ("not printed | 48 | 61702", Print()) << "there is no printer";
    const TestPrinter printer;
    g_output = ProgramFolder() + "print_test.ps";
    {
        const ImportPatch patch("ZOAFX.DLL", "StartDocA", &StartInFile);
        EXPECT_EQ("begin 1 2 end", Print());
    }
    std::ostringstream text;
    text << std::ifstream(g_output, std::ios::binary).rdbuf();
    for (const char* part : {"%!PS-Adobe", "%%Title: Title", "%%Pages: 2", "/P glyphshow"})
        EXPECT_NE(std::string::npos, text.str().find(part)) << part;
    DeleteFileA(g_output.c_str());
}

TEST_F(Printing, GoesPageByPage)
{
    PrintView* const view = m_view;
    const ImportPatch patches[] = {
        {"ZOAFX.DLL", "GetProcAddress", &FindFunction}, {"ZOAFX.DLL", "SetAbortProc", &NoteAbortProc},
        {"ZOAFX.DLL", "StartDocA", &NoteStartDoc},      {"ZOAFX.DLL", "StartPage", &NoteStartPage},
        {"ZOAFX.DLL", "EndPage", &NoteEndPage},         {"ZOAFX.DLL", "EndDoc", &NoteEndDoc},
        {"ZOAFX.DLL", "AbortDoc", &NoteAbortDoc}};
    const auto pages = [](UINT first, UINT last, UINT from = 0, UINT to = 0, DWORD flags = 0) {
        return [=](CPrintInfo& info) {
            info.SetMinPage(first);
            info.SetMaxPage(last);
            PRINTDLG& chosen = info.m_pPD->m_pd;
            chosen.hDC = CreateCompatibleDC(nullptr);
            chosen.Flags |= flags | (to != 0 ? PD_PAGENUMS : 0);
            chosen.nFromPage = static_cast<WORD>(from);
            chosen.nToPage = static_cast<WORD>(to);
            return TRUE;
        };
    };
    const auto asks = [view](CPrintInfo& info) { return info.SetMaxPage(1), view->DoPreparePrinting(&info); };
    const auto asksNobody = [view](CPrintInfo& info) {
        info.m_bDirect = TRUE;
        return info.SetMaxPage(1), view->DoPreparePrinting(&info);
    };
    const std::string kDocument = "job begin [Title] startdoc ", kTold = "not printed | 48 | 61702";
    const auto throws = [](auto act) { return [act](CDC&, CPrintInfo&) { act(); }; };
    struct Case {
        const char* name;
        std::function<BOOL(CPrintInfo&)> prepare;
        std::string log;
        std::string fails = "";
        int failure = 0;
        DWORD error = ERROR_WRITE_FAULT;
        UINT lastPage = 0;
        std::function<void(CDC&, CPrintInfo&)> print = nullptr;
    };
    const std::string kFirst = kDocument + "startpage 1 endpage ", kFailed = "abortdoc end";
    const Case cases[] = {
        {"two", pages(1, 2), kFirst + "startpage 2 endpage enddoc end"},
        {"none wanted", [](CPrintInfo&) { return FALSE; }, ""},
        {"without context", [](CPrintInfo&) { return TRUE; }, kTold},
        {"unknown length", pages(1, 99999), kFirst + "enddoc end"},
        {"known later", pages(1, 99999), kFirst + "startpage 2 endpage enddoc end", "", 0, 0, 2},
        {"a range", pages(1, 9, 2, 3), kDocument + "startpage 2 endpage startpage 3 endpage enddoc end"},
        {"too wide a range", pages(3, 4, 1, 9), kDocument + "startpage 3 endpage startpage 4 endpage enddoc end"},
        {"stopped by a page", pages(1, 9), kFirst + "enddoc end", "", 0, 0, 0,
         [](CDC&, CPrintInfo& info) { info.m_bContinuePrinting = FALSE; }},
        {"to a file", pages(1, 1, 0, 0, PD_PRINTTOFILE), "job begin [Title] FILE: startpage 1 endpage enddoc end"},
        {"no document", pages(1, 1), kDocument + "end" + kTold, "startdoc", SP_ERROR},
        {"no file chosen", pages(1, 1), kDocument + "end", "startdoc", SP_ERROR, ERROR_CANCELLED},
        {"no reason", pages(1, 1), kDocument + "end" + kTold, "startdoc", 0, ERROR_SUCCESS},
        {"no page", pages(1, 2), kDocument + "startpage " + kFailed + kTold, "startpage", 0},
        {"page lost", pages(1, 2), kFirst + kFailed + kTold, "endpage", SP_OUTOFDISK},
        {"deleted in the queue", pages(1, 2), kFirst + kFailed, "endpage", SP_USERABORT},
        {"canceled", pages(1, 2), kFirst + kFailed, "endpage", 0, ERROR_PRINT_CANCELLED},
        {"end lost", pages(1, 1), kFirst + "enddoc " + kFailed + kTold, "enddoc", SP_ERROR},
        {"page throws", pages(1, 2), kDocument + "startpage " + kFailed, "", 0, 0, 0,
         throws([] { AfxThrowUserException(); })},
        {"by the dialog", asks, "dialog 1 " + kFirst + "enddoc end"},
        {"by the default", asksNobody, "default 0 " + kFirst + "enddoc end"},
        {"canceled dialog", asks, "dialog ", "dialog"},
        {"no default", asksNobody, "default " + kTold, "default"},
        {"thread ends", pages(1, 2), kFirst + kFailed, "", 0, 0, 0, throws([] { ::PostQuitMessage(5); })},
    };
    view->prepare = asks;
    Print(); // the system makes something once
    AfxGetThread()->m_pMainWnd = view;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        g_fails = c.fails;
        g_failure = c.failure;
        g_error = c.error;
        view->prepare = c.prepare;
        view->lastPage = c.lastPage;
        view->print = [&c, view](CDC& dc, CPrintInfo& info) {
            EXPECT_FALSE(::IsWindowEnabled(view->m_hWnd));
            EXPECT_EQ(CRect(0, 0, dc.GetDeviceCaps(HORZRES) / 2, dc.GetDeviceCaps(VERTRES) / 2), info.m_rectDraw);
            if (c.print)
                c.print(dc, info);
        };
        ZO_EXPECT_NO_LEAK(EXPECT_EQ(c.log, Print()));
        EXPECT_TRUE(::IsWindowEnabled(view->m_hWnd));
        MSG message;
        EXPECT_EQ(std::string("thread ends") == c.name, PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    }
    AfxGetThread()->m_pMainWnd = nullptr;

    view->print = nullptr;
    view->prepare = pages(1, 1);
    const std::string half = IsDoubleByte() ? "\x88\xEA" : "ab"; // one character of two bytes, or two
    m_document.SetTitle((std::string(30, 'x') + half + "y").c_str());
    EXPECT_EQ("direct job begin [" + std::string(30, 'x') + (IsDoubleByte() ? "" : "a") +
                  "] startdoc startpage 1 endpage enddoc end",
              Print(ID_FILE_PRINT_DIRECT));
    RunFaultActs<AllocationFaults>(
        [&](const FaultRun& run) { run.Act([&] { view->SendMessage(WM_COMMAND, ID_FILE_PRINT); }); });
}
