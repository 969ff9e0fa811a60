// Documents, their views and frames in a main window.

#include "support/test.h"

namespace {

constexpr UINT kType = 40; // of host.rc
enum Command { kToView = 301, kToDocument, kToMost, kToChild, kToMain, kToNobody };

std::string g_log; // who was called
std::string TakeLog() { return std::exchange(g_log, {}); }

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
        TakeLog();
        EXPECT_EQ(0, g_documents);
        AfxGetModuleState()->m_pCurrentWinApp = m_tests;
    }
    void CloseMain()
    {
        AfxGetThread()->m_pMainWnd = nullptr; // the thread goes on
        std::exchange(m_main, nullptr)->SendMessage(WM_CLOSE);
    }
    std::string Command(UINT id)
    {
        TakeLog();
        m_main->SendMessage(WM_COMMAND, id);
        return TakeLog();
    }

    std::string ActiveTitle() const { return TextOf(m_main->MDIGetActive()->m_hWnd); }

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
    CDocument* first = m_type->OpenDocumentFile(nullptr);
    ASSERT_NE(nullptr, first);
    EXPECT_EQ("empty update0 draw activate ", TakeLog());
    EXPECT_EQ(m_type, first->GetDocTemplate());
    EXPECT_STREQ("Sheet1", first->GetTitle());
    CFrameWnd* frame = m_main->GetActiveFrame();
    EXPECT_TRUE(frame->IsKindOf(RUNTIME_CLASS(TestChild)));
    EXPECT_EQ(first, frame->GetActiveDocument());
    EXPECT_EQ("Sheet1", TextOf(frame->m_hWnd));
    EXPECT_EQ(frame, frame->GetActiveView()->GetParentFrame());
    CRect inside;
    frame->GetClientRect(&inside);
    const CRect view = AreaOf(frame->GetActiveView()->m_hWnd);
    EXPECT_TRUE(inside.Width() == view.Width() && inside.Height() == view.Height());

    CDocument* second = m_type->OpenDocumentFile("C:\\folder\\file.txt");
    ASSERT_NE(nullptr, second);
    EXPECT_STREQ("C:\\folder\\file.txt", second->GetPathName());
    EXPECT_EQ("file.txt", ActiveTitle());
    second->SetTitle("other");
    EXPECT_EQ("other", ActiveTitle());
    POSITION position = m_type->GetFirstDocPosition();
    EXPECT_EQ(first, m_type->GetNextDoc(position));
    EXPECT_EQ(second, m_type->GetNextDoc(position));
    EXPECT_EQ(nullptr, position);
    EXPECT_EQ(2, g_documents);

    TakeLog();
    static_cast<CMDIChildWnd*>(frame)->MDIActivate();
    EXPECT_EQ("deactivate activate ", TakeLog());
    EXPECT_EQ(frame, m_main->MDIGetActive());
    frame->SendMessage(WM_CLOSE);
    EXPECT_EQ("deactivate activate deactivate empty ", TakeLog());
    EXPECT_EQ(1, g_documents);
    EXPECT_EQ("other", ActiveTitle());
    second->OnCloseDocument();
    EXPECT_EQ(0, g_documents);
    EXPECT_EQ(nullptr, m_main->MDIGetActive());

    m_type->OpenDocumentFile(nullptr);
    EXPECT_EQ("Sheet2", ActiveTitle()) << "the count goes on";
    m_type->OpenDocumentFile(nullptr);
    m_type->CloseAllDocuments(FALSE);
    EXPECT_EQ(0, g_documents);
    m_type->OpenDocumentFile(nullptr);
    CloseMain();
    EXPECT_EQ(0, g_documents) << "documents go with the main window";
}

TEST_F(Documents, GetCommandsOnTheirWayFromTheViewToTheApplication)
{
    EXPECT_EQ("main ", Command(kToMost)) << "there is no document yet";
    m_type->OpenDocumentFile(nullptr);
    static constexpr std::pair<UINT, const char*> commands[] = {
        {kToView, "view "}, {kToDocument, "document "}, {kToChild, "child "},
        {kToMain, "main "}, {kToMost, "document "},     {kToNobody, ""},
    };
    for (const auto& [id, expected] : commands)
        EXPECT_EQ(expected, Command(id)) << id;
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
    const struct {
        Way way;
        const char* path; // of the document; null: it has none
        int answer;
        Fails fails;
        const char* log; // its beginning
        bool closes;
    } rows[] = {
        {kFrame, "C:\\x\\a.t", IDCANCEL, Fails::kNothing, "Save C:\\x\\a.t? ", false},
        {kFrame, "C:\\x\\a.t", IDYES, Fails::kNothing, "Save C:\\x\\a.t? save C:\\x\\a.t ", true},
        {kFrame, "C:\\x\\a.t", IDYES, Fails::kSaving, "Save C:\\x\\a.t? save C:\\x\\a.t ", false},
        {kFrame, nullptr, IDYES, Fails::kNothing, "Save name? ", false}, // nobody gives it one
        {kFrame, nullptr, IDNO, Fails::kNothing, "Save name? ", true},
        {kCommand, nullptr, IDCANCEL, Fails::kNothing, "Save name? ", false},
        {kCommand, nullptr, IDNO, Fails::kNothing, "Save name? ", true},
        {kMain, "C:\\x\\a.t", IDCANCEL, Fails::kNothing, "Save C:\\x\\a.t? ", false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.way << ", answer " << row.answer << ": " << row.log);
        CDocument* document = m_type->OpenDocumentFile(row.path);
        ASSERT_NE(nullptr, document);
        if (row.path == nullptr)
            document->SetTitle("name");
        document->SetModifiedFlag();
        g_answer = row.answer;
        g_fails = row.fails;
        TakeLog();
        if (row.way == kCommand)
            m_main->SendMessage(WM_COMMAND, ID_FILE_CLOSE);
        else
            (row.way == kMain ? static_cast<CFrameWnd*>(m_main) : m_main->MDIGetActive())->SendMessage(WM_CLOSE);
        const std::string log = TakeLog();
        EXPECT_EQ(row.log, log.substr(0, std::strlen(row.log)));
        EXPECT_EQ(row.closes ? 0 : 1, g_documents);
        g_fails = Fails::kNothing;
        if (!row.closes)
            document->OnCloseDocument();
    }
    CDocument* document = m_type->OpenDocumentFile("C:\\x\\a.t");
    document->SetModifiedFlag();
    TakeLog();
    EXPECT_TRUE(document->DoSave("C:\\b.t", FALSE));
    EXPECT_STREQ("C:\\x\\a.t", document->GetPathName()) << "a copy";
    EXPECT_FALSE(document->IsModified());
    EXPECT_TRUE(document->DoSave("C:\\b.t"));
    EXPECT_STREQ("C:\\b.t", document->GetPathName());
    EXPECT_EQ("save C:\\b.t ", Command(ID_FILE_SAVE));
    EXPECT_EQ("", Command(ID_FILE_SAVE_AS)) << "this framework asks for no name";
    const TestFolder folder;
    folder.Write("file", "");
    document->SetPathName(folder.Path("file").c_str());
    SetFileAttributesA(document->GetPathName(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ("", Command(ID_FILE_SAVE)) << "over a file that may not be written";
    SetFileAttributesA(document->GetPathName(), FILE_ATTRIBUTE_NORMAL);
    document->SetModifiedFlag();
    EXPECT_TRUE(document->OnOpenDocument("C:\\c.t"));
    EXPECT_FALSE(document->IsModified());
    document->SetModifiedFlag();
    EXPECT_TRUE(document->OnNewDocument());
    EXPECT_FALSE(document->IsModified());
    EXPECT_STREQ("", document->GetPathName());
    document->OnCloseDocument();
}

TEST_F(Documents, TellTheirViewsOfChanges)
{
    CDocument* document = m_type->OpenDocumentFile(nullptr);
    CView* view = m_main->MDIGetActive()->GetActiveView();
    view->UpdateWindow();
    TakeLog();
    document->UpdateAllViews(nullptr, 7);
    document->UpdateAllViews(view, 8);
    view->UpdateWindow();
    EXPECT_EQ("update7 draw ", TakeLog());
    // A second view of the document keeps it open when the first one goes.
    CFrameWnd* frame = m_main->MDIGetActive();
    m_type->InitialUpdateFrame(m_type->CreateNewFrame(document, frame), document);
    EXPECT_EQ(1, g_documents);
    document->SetModifiedFlag();
    TakeLog();
    frame->SendMessage(WM_CLOSE);
    EXPECT_EQ(1, g_documents);
    EXPECT_EQ(std::string::npos, TakeLog().find("Save")) << "nothing is lost yet";
    document->SetModifiedFlag(FALSE);
    CFrameWnd* second = m_main->MDIGetActive();
    m_type->InitialUpdateFrame(m_type->CreateNewFrame(document, second), document);
    second->GetActiveView()->DestroyWindow();
    EXPECT_EQ(nullptr, second->GetActiveView());
    m_main->MDIGetActive()->SendMessage(WM_CLOSE);
    EXPECT_EQ(0, g_documents);
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
