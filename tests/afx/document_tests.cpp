// Documents, their views and frames in a main window.

#include "test_window.h"

namespace {

constexpr UINT kType = 40; // of host.rc
enum Command { kToView = 301, kToDocument, kToMost, kToChild, kToMain, kToNobody };

int g_documents = 0; // alive
enum class Fails { kNothing, kOpening, kView, kFrame, kSaving };
Fails g_fails = Fails::kNothing;

class TestDocument : public CDocument {
    DECLARE_DYNCREATE(TestDocument)
public:
    TestDocument() { ++g_documents; }
    ~TestDocument() override { --g_documents; }

    BOOL OnNewDocument() override { return g_fails != Fails::kOpening && CDocument::OnNewDocument(); }
    BOOL OnOpenDocument(LPCSTR path) override { return g_fails != Fails::kOpening && CDocument::OnOpenDocument(path); }
    BOOL OnSaveDocument(LPCSTR path) override
    {
        g_log += "save " + std::string(path) + " ";
        return g_fails != Fails::kSaving && CDocument::OnSaveDocument(path);
    }
    void DeleteContents() override { g_log += "empty "; }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNCREATE(TestDocument, CDocument)
BEGIN_MESSAGE_MAP(TestDocument, CDocument)
    AFX_ENTRY(WM_COMMAND, CN_COMMAND, kToDocument, kToMost, nullptr, g_log += "document ")
END_MESSAGE_MAP()

class TestView : public CView {
    DECLARE_DYNCREATE(TestView)
public:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override { return g_fails != Fails::kView && CView::PreCreateWindow(cs); }
    void OnUpdate(CView*, LPARAM hint, CObject*) override
    {
        g_log += "update" + std::to_string(hint) + " ";
        Invalidate();
    }
    void OnDraw(CDC*) override { g_log += "draw "; }
    void OnActivateView(BOOL activate, CView* activated, CView* deactivated) override
    {
        g_log += activate ? "activate " : "deactivate ";
        CView::OnActivateView(activate, activated, deactivated);
    }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNCREATE(TestView, CView)
BEGIN_MESSAGE_MAP(TestView, CView)
    AFX_ENTRY(WM_COMMAND, CN_COMMAND, kToView, kToView, nullptr, g_log += "view ")
END_MESSAGE_MAP()

class TestChild : public CMDIChildWnd {
    DECLARE_DYNCREATE(TestChild)
protected:
    BOOL OnCreateClient(CREATESTRUCT* cs, CCreateContext* context) override // when this fails there is a view already
    {
        return CMDIChildWnd::OnCreateClient(cs, context) && g_fails != Fails::kFrame;
    }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNCREATE(TestChild, CMDIChildWnd)
BEGIN_MESSAGE_MAP(TestChild, CMDIChildWnd)
    AFX_ENTRY(WM_COMMAND, CN_COMMAND, kToMost, kToChild, nullptr, g_log += "child ")
END_MESSAGE_MAP()

class TestMain : public CMDIFrameWnd {
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(TestMain, CMDIFrameWnd)
    AFX_ENTRY(WM_COMMAND, CN_COMMAND, kToMost, kToMain, nullptr, g_log += "main ")
    AFX_ENTRY(WM_COMMAND, CN_COMMAND, 101, 101, nullptr, g_log += "key ") // an accelerator of host.rc
END_MESSAGE_MAP()

int g_answer = IDCANCEL;
int WINAPI Answer(HWND, LPCSTR text, LPCSTR, UINT)
{
    g_log += std::string(text) + " ";
    return g_answer;
}

} // namespace

class Documents : public testing::Test {
protected:
    void SetUp() override
    {
        m_application.AddDocTemplate(m_type); // the application's from here on
        ASSERT_TRUE(m_main->Create(nullptr, "main", WS_OVERLAPPEDWINDOW, CRect(0, 0, 500, 400), nullptr, nullptr));
        m_main->ShowWindow(SW_SHOW);
        AfxGetThread()->m_pMainWnd = m_main;
        g_fails = Fails::kNothing;
    }
    void TearDown() override
    {
        if (m_main != nullptr)
            CloseMain();
        EXPECT_EQ(0, g_documents);
        AfxGetModuleState()->m_pCurrentWinApp = m_tests;
    }
    void CloseMain()
    {
        AfxGetThread()->m_pMainWnd = nullptr; // the thread goes on
        std::exchange(m_main, nullptr)->SendMessage(WM_CLOSE);
    }
    /// The title of the active frame, the number of documents, and who has been called since the last time.
    std::string State() const
    {
        const CWnd* active = m_main != nullptr ? m_main->MDIGetActive() : nullptr;
        return (active != nullptr ? TextOf(active->m_hWnd) : "") + ' ' + std::to_string(g_documents) + ": " + TakeLog();
    }
    void Walk(const Steps& steps) const
    {
        TakeLog();
        zo_test::Walk(steps, [this] { return State(); });
    }
    void Command(UINT id) const { m_main->SendMessage(WM_COMMAND, id); }

    const ImportPatch m_box{"ZOAFX.DLL", "MessageBoxA", &Answer};
    CWinApp* m_tests = AfxGetApp();
    CWinApp m_application;
    CMultiDocTemplate* m_type =
        new CMultiDocTemplate(kType, RUNTIME_CLASS(TestDocument), RUNTIME_CLASS(TestChild), RUNTIME_CLASS(TestView));
    TestMain* m_main = new TestMain;
};

TEST_F(Documents, OpenWithFrameAndViewAndCloseWithThem)
{
    EXPECT_EQ(m_main, m_main->GetActiveFrame());
    CDocument *first = nullptr, *second = nullptr;
    Walk({{[&] { first = m_type->OpenDocumentFile(nullptr); }, "Sheet1 1: empty update0 draw activate "}});
    EXPECT_EQ(m_type, first->GetDocTemplate());
    CFrameWnd* frame = m_main->GetActiveFrame();
    EXPECT_TRUE(frame->IsKindOf(RUNTIME_CLASS(TestChild)));
    EXPECT_EQ(first, frame->GetActiveDocument());
    EXPECT_EQ(frame, frame->GetActiveView()->GetParentFrame());
    CRect inside;
    frame->GetClientRect(&inside);
    EXPECT_EQ(inside.Size(), AreaOf(frame->GetActiveView()->m_hWnd).Size());
    Walk({{[&] { second = m_type->OpenDocumentFile("C:\\folder\\file.txt"); },
           "file.txt 2: deactivate empty update0 draw activate "}});
    EXPECT_STREQ("C:\\folder\\file.txt", second->GetPathName());
    POSITION position = m_type->GetFirstDocPosition();
    EXPECT_EQ(first, m_type->GetNextDoc(position));
    EXPECT_EQ(second, m_type->GetNextDoc(position));
    EXPECT_EQ(nullptr, position);
    Walk({{[&] { second->SetTitle("other"); }, "other 2: "},
          {[&] { static_cast<CMDIChildWnd*>(frame)->MDIActivate(); }, "Sheet1 2: deactivate activate "},
          {[&] { frame->SendMessage(WM_CLOSE); }, "other 1: deactivate activate deactivate empty "},
          {[&] { second->OnCloseDocument(); }, " 0: deactivate deactivate empty "},
          {[&] { m_type->OpenDocumentFile(nullptr); }, "Sheet2 1: empty update0 draw activate "}, // the count goes on
          {[&] { m_type->OpenDocumentFile(nullptr); }, "Sheet3 2: deactivate empty update0 draw activate "},
          {[&] { m_type->CloseAllDocuments(FALSE); }, " 0: deactivate empty deactivate deactivate empty "},
          {[&] { m_type->OpenDocumentFile(nullptr); }, "Sheet4 1: empty update0 draw activate "},
          {[&] { CloseMain(); }, " 0: deactivate empty "}});
}

TEST_F(Documents, GetCommandsOnTheirWayFromTheViewToTheApplication)
{
    Walk({{[&] { Command(kToMost); }, " 0: main "},
          {[&] { m_type->OpenDocumentFile(nullptr); }, "Sheet1 1: empty update0 draw activate "},
          {[&] { Command(kToView); }, "Sheet1 1: view "},
          {[&] { Command(kToDocument); }, "Sheet1 1: document "},
          {[&] { Command(kToChild); }, "Sheet1 1: child "},
          {[&] { Command(kToMain); }, "Sheet1 1: main "},
          {[&] { Command(kToMost); }, "Sheet1 1: document "},
          {[&] { Command(kToNobody); }, "Sheet1 1: "}});
}

TEST_F(Documents, HaveKeysOfTheirOwn)
{
    m_type->OpenDocumentFile(nullptr);
    CMDIChildWnd* child = m_main->MDIGetActive();
    ASSERT_TRUE(child->LoadAccelTable(MAKEINTRESOURCEA(41))); // of host.rc
    TakeLog();
    MSG key = {child->m_hWnd, WM_KEYDOWN, VK_F5, 1, 0, {}};
    EXPECT_TRUE(child->PreTranslateMessage(&key));
    EXPECT_EQ("key ", TakeLog()) << "on the way of all commands, which begins with the main window";
}

TEST_F(Documents, AskBeforeTheyCloseWhetherToBeSaved)
{
    enum Way { kFrame, kCommand, kMain };
    // The document's path, null without one; the answer, what fails, the beginning of the log, and whether it closes.
    const std::tuple<Way, const char*, int, Fails, std::string, bool> rows[] = {
        {kFrame, "C:\\x\\a.t", IDCANCEL, Fails::kNothing, "Save C:\\x\\a.t? ", false},
        {kFrame, "C:\\x\\a.t", IDYES, Fails::kNothing, "Save C:\\x\\a.t? save C:\\x\\a.t ", true},
        {kFrame, "C:\\x\\a.t", IDYES, Fails::kSaving, "Save C:\\x\\a.t? save C:\\x\\a.t ", false},
        {kFrame, nullptr, IDYES, Fails::kNothing, "Save name? ", false}, // nobody gives it one
        {kFrame, nullptr, IDNO, Fails::kNothing, "Save name? ", true},
        {kCommand, nullptr, IDCANCEL, Fails::kNothing, "Save name? ", false},
        {kCommand, nullptr, IDNO, Fails::kNothing, "Save name? ", true},
        {kMain, "C:\\x\\a.t", IDCANCEL, Fails::kNothing, "Save C:\\x\\a.t? ", false},
    };
    for (const auto& [way, path, answer, fails, expected, closes] : rows) {
        SCOPED_TRACE(testing::Message() << way << ", answer " << answer << ": " << expected);
        CDocument* document = m_type->OpenDocumentFile(path);
        ASSERT_NE(nullptr, document);
        if (path == nullptr)
            document->SetTitle("name");
        document->SetModifiedFlag();
        g_answer = answer;
        g_fails = fails;
        TakeLog();
        if (way == kCommand)
            Command(ID_FILE_CLOSE);
        else
            (way == kMain ? static_cast<CFrameWnd*>(m_main) : m_main->MDIGetActive())->SendMessage(WM_CLOSE);
        const std::string log = TakeLog();
        EXPECT_EQ(expected, log.substr(0, expected.size()));
        EXPECT_EQ(closes ? 0 : 1, g_documents);
        g_fails = Fails::kNothing;
        if (!closes)
            document->OnCloseDocument();
    }
}

TEST_F(Documents, AreSavedUnderTheirNameOrAnother)
{
    CDocument* document = m_type->OpenDocumentFile("C:\\x\\a.t");
    const TestFolder folder;
    folder.Write("file", "");
    const std::string locked = folder.Path("file");
    SetFileAttributesA(locked.c_str(), FILE_ATTRIBUTE_READONLY);
    const std::tuple<std::function<void()>, std::string, std::string> steps[] = {
        // the path and the log after it
        {[&] { document->DoSave("C:\\b.t", FALSE); }, "C:\\x\\a.t", "save C:\\b.t "}, // a copy
        {[&] { document->DoSave("C:\\b.t"); }, "C:\\b.t", "save C:\\b.t "},
        {[&] { Command(ID_FILE_SAVE); }, "C:\\b.t", "save C:\\b.t "},
        {[&] { document->OnOpenDocument("C:\\c.t"); }, "C:\\b.t", "empty "},
        {[&] { document->OnNewDocument(); }, "", "empty "},
    };
    for (const auto& [step, path, log] : steps) {
        document->SetModifiedFlag();
        TakeLog();
        step();
        EXPECT_EQ(log, TakeLog()) << path;
        EXPECT_EQ(path, static_cast<LPCSTR>(document->GetPathName()));
        EXPECT_FALSE(document->IsModified());
    }
    document->SetPathName(locked.c_str());
    TakeLog();
    Command(ID_FILE_SAVE);
    EXPECT_EQ("", TakeLog()) << "over a file that may not be written";
    Command(ID_FILE_SAVE_AS);
    EXPECT_EQ("", TakeLog()) << "this framework asks for no name";
    SetFileAttributesA(locked.c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(Documents, TellTheirViewsOfChanges)
{
    CDocument* document = m_type->OpenDocumentFile(nullptr);
    CFrameWnd* frame = m_main->MDIGetActive();
    CView* view = frame->GetActiveView();
    const auto showAgain = [&] { m_type->InitialUpdateFrame(m_type->CreateNewFrame(document, frame), document); };
    view->UpdateWindow();
    Walk({{[&] { document->UpdateAllViews(view, 8); }, "Sheet1 1: "},
          {[&] { document->UpdateAllViews(nullptr, 7); }, "Sheet1 1: update7 "},
          {[&] { view->UpdateWindow(); }, "Sheet1 1: draw "},
          {showAgain, "Sheet1 1: deactivate update0 draw activate "},
          {[&] { document->SetModifiedFlag(); }, "Sheet1 1: "},
          {[&] { frame->SendMessage(WM_CLOSE); }, "Sheet1 1: deactivate "}, // nothing is lost yet
          {[&] { document->SetModifiedFlag(FALSE); }, "Sheet1 1: "},
          {showAgain, "Sheet1 1: deactivate update0 draw activate "}});
    CFrameWnd* second = m_main->MDIGetActive();
    second->GetActiveView()->DestroyWindow();
    EXPECT_EQ(nullptr, second->GetActiveView());
    EXPECT_EQ(1, g_documents);
    Walk({{[&] { second->SendMessage(WM_CLOSE); }, "Sheet1 1: activate "}, //
          {[&] { m_main->MDIGetActive()->SendMessage(WM_CLOSE); }, " 0: deactivate deactivate empty "}});
}

TEST_F(Documents, ThatCannotBeOpenedLeaveNothing)
{
    m_type->OpenDocumentFile(nullptr); // for what is made once and kept
    m_type->CloseAllDocuments(FALSE);
    TakeLog();
    for (const Fails fails : {Fails::kOpening, Fails::kView, Fails::kFrame}) {
        for (const LPCSTR path : {LPCSTR{nullptr}, "C:\\file"}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(fails) << (path != nullptr ? path : " new"));
            g_fails = fails;
            ZO_EXPECT_NO_LEAK(EXPECT_EQ(nullptr, m_type->OpenDocumentFile(path)));
            EXPECT_EQ(0, g_documents);
            EXPECT_EQ(nullptr, m_main->MDIGetActive());
            EXPECT_EQ(nullptr, m_type->GetFirstDocPosition());
        }
    }
}

TEST_F(Documents, NeedMemory)
{
    AllocationFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        CDocument* document = nullptr;
        try {
            document = m_type->OpenDocumentFile("C:\\file");
        } catch (CMemoryException*) {
        }
        run.Stop();
        EXPECT_EQ(document != nullptr ? 1 : 0, g_documents);
        m_type->CloseAllDocuments(FALSE);
        EXPECT_EQ(0, g_documents);
        EXPECT_EQ(nullptr, m_main->MDIGetActive());
        m_main->UpdateWindow();
        TakeLog();
    });
}

TEST_F(Documents, AreOfTypesThatTheApplicationListsInTheirOrder)
{
    auto* second = new CMultiDocTemplate(1, nullptr, nullptr, nullptr);
    m_application.AddDocTemplate(second);
    POSITION position = m_application.GetFirstDocTemplatePosition();
    EXPECT_EQ(m_type, m_application.GetNextDocTemplate(position));
    EXPECT_EQ(second, m_application.GetNextDocTemplate(position));
    EXPECT_EQ(nullptr, position);
    EXPECT_EQ(nullptr, second->OpenDocumentFile(nullptr)) << "it has no classes";
    m_application.CloseAllDocuments(FALSE);
    ZO_EXPECT_NO_LEAK({
        CWinApp other;
        EXPECT_EQ(nullptr, other.GetFirstDocTemplatePosition());
        other.AddDocTemplate(new CMultiDocTemplate(1, nullptr, nullptr, nullptr));
    });

    std::string parts;
    for (const auto part : {CDocTemplate::windowTitle, CDocTemplate::docName, CDocTemplate::fileNewName,
                            CDocTemplate::regFileTypeId, CDocTemplate::regFileTypeName}) {
        CString text = "before";
        const BOOL found = m_type->GetDocString(text, part);
        parts += std::string(text) + (found ? "|" : "(none)");
        EXPECT_EQ(part == CDocTemplate::windowTitle, second->GetDocString(text, part) != FALSE) << part;
    }
    EXPECT_EQ("|Sheet|Sheets of tests||(none)", parts);
}
