// Documents, their views and frames in a main window.

#include "support/test.h"

namespace {

constexpr UINT kType = 40; // of host.rc
enum Command { kToView = 301, kToDocument, kToChild, kToMain, kToNobody, kToAll };

std::string g_log; // who was called
std::string TakeLog() { return std::exchange(g_log, {}); }

int g_documents = 0; // alive
enum class Fails { kNothing, kOpening, kOpeningThrows, kView, kFrame, kSaving };
Fails g_fails = Fails::kNothing;

class TestDocument : public CDocument {
    DECLARE_DYNCREATE(TestDocument)
public:
    TestDocument() { ++g_documents; }
    ~TestDocument() override { --g_documents; }

    BOOL OnNewDocument() override { return Fill() && CDocument::OnNewDocument(); }
    BOOL OnOpenDocument(LPCSTR path) override { return Fill() && CDocument::OnOpenDocument(path); }
    BOOL OnSaveDocument(LPCSTR path) override
    {
        g_log += "save " + std::string(path) + " ";
        return g_fails != Fails::kSaving && CDocument::OnSaveDocument(path);
    }
    void DeleteContents() override { g_log += "empty "; }

protected:
    static BOOL Fill()
    {
        if (g_fails == Fails::kOpeningThrows)
            AfxThrowMemoryException();
        return g_fails != Fails::kOpening;
    }
    void OnCommand() { g_log += "document "; }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNCREATE(TestDocument, CDocument)
BEGIN_MESSAGE_MAP(TestDocument, CDocument)
    ON_COMMAND(kToDocument, OnCommand)
    ON_COMMAND(kToAll, OnCommand)
END_MESSAGE_MAP()

class TestView : public CView {
    DECLARE_DYNCREATE(TestView)
public:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override { return g_fails != Fails::kView && CView::PreCreateWindow(cs); }
    void OnInitialUpdate() override
    {
        g_log += "initial ";
        CView::OnInitialUpdate();
    }
    void OnUpdate(CView* sender, LPARAM hint, CObject*) override
    {
        g_log += "update" + std::to_string(hint) + (sender == this ? "-own " : " ");
        Invalidate();
    }
    void OnDraw(CDC*) override { g_log += "draw "; }
    void OnActivateView(BOOL activate, CView* activated, CView* deactivated) override
    {
        g_log += activate ? "activate " : "deactivate ";
        CView::OnActivateView(activate, activated, deactivated);
    }

protected:
    void OnCommand() { g_log += "view "; }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNCREATE(TestView, CView)
BEGIN_MESSAGE_MAP(TestView, CView)
    ON_COMMAND(kToView, OnCommand)
END_MESSAGE_MAP()

class TestChild : public CMDIChildWnd {
    DECLARE_DYNCREATE(TestChild)
public:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override
    {
        return g_fails != Fails::kFrame && CMDIChildWnd::PreCreateWindow(cs);
    }

protected:
    void OnCommand() { g_log += "child "; }
    DECLARE_MESSAGE_MAP()
};
IMPLEMENT_DYNCREATE(TestChild, CMDIChildWnd)
BEGIN_MESSAGE_MAP(TestChild, CMDIChildWnd)
    ON_COMMAND(kToChild, OnCommand)
    ON_COMMAND(kToAll, OnCommand)
END_MESSAGE_MAP()

class TestMain : public CMDIFrameWnd {
protected:
    void OnCommand() { g_log += "main "; }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(TestMain, CMDIFrameWnd)
    ON_COMMAND(kToMain, OnCommand)
    ON_COMMAND(kToAll, OnCommand)
END_MESSAGE_MAP()

int WINAPI NoMessageBox(HWND, LPCSTR, LPCSTR, UINT) { return IDOK; }

int g_answer = IDCANCEL;
int WINAPI Answer(HWND, LPCSTR text, LPCSTR, UINT)
{
    g_log += std::string(text) + " ";
    return g_answer;
}

CString TitleOf(const CWnd* window)
{
    CString title;
    window->GetWindowText(title);
    return title;
}

} // namespace

class Documents : public testing::Test {
protected:
    void SetUp() override
    {
        m_main = new TestMain;
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

    TestMain* m_main = nullptr;
    CMultiDocTemplate m_type{kType, RUNTIME_CLASS(TestDocument), RUNTIME_CLASS(TestChild), RUNTIME_CLASS(TestView)};
};

TEST_F(Documents, OpenWithFrameAndViewAndCloseWithThem)
{
    EXPECT_EQ(m_main, m_main->GetActiveFrame());
    CDocument* first = m_type.OpenDocumentFile(nullptr);
    ASSERT_NE(nullptr, first);
    EXPECT_EQ("empty initial update0 ", TakeLog().substr(0, 22));
    EXPECT_EQ(&m_type, first->GetDocTemplate());
    EXPECT_STREQ("Sheet1", first->GetTitle());
    CFrameWnd* frame = m_main->GetActiveFrame();
    EXPECT_TRUE(frame->IsKindOf(RUNTIME_CLASS(TestChild)));
    EXPECT_EQ(first, frame->GetActiveDocument());
    EXPECT_STREQ("Sheet1", TitleOf(frame));
    EXPECT_EQ(frame, frame->GetActiveView()->GetParentFrame());
    CRect inside;
    frame->GetClientRect(&inside);
    CRect view;
    frame->GetActiveView()->GetWindowRect(&view);
    EXPECT_EQ(inside.Width(), view.Width());
    EXPECT_EQ(inside.Height(), view.Height());

    CDocument* second = m_type.OpenDocumentFile("C:\\folder\\file.txt");
    ASSERT_NE(nullptr, second);
    EXPECT_STREQ("C:\\folder\\file.txt", second->GetPathName());
    EXPECT_STREQ("file.txt", TitleOf(m_main->MDIGetActive()));
    second->SetTitle("other");
    EXPECT_STREQ("other", TitleOf(m_main->MDIGetActive()));
    POSITION position = m_type.GetFirstDocPosition();
    EXPECT_EQ(first, m_type.GetNextDoc(position));
    EXPECT_EQ(second, m_type.GetNextDoc(position));
    EXPECT_EQ(nullptr, position);
    EXPECT_EQ(2, g_documents);

    static_cast<CMDIChildWnd*>(frame)->MDIActivate();
    EXPECT_EQ(frame, m_main->MDIGetActive());
    frame->SendMessage(WM_CLOSE);
    EXPECT_EQ(1, g_documents);
    EXPECT_STREQ("other", TitleOf(m_main->MDIGetActive()));
    second->OnCloseDocument();
    EXPECT_EQ(0, g_documents);
    EXPECT_EQ(nullptr, m_main->MDIGetActive());

    m_type.OpenDocumentFile(nullptr);
    EXPECT_STREQ("Sheet2", TitleOf(m_main->MDIGetActive())) << "the count goes on";
    m_type.OpenDocumentFile(nullptr);
    m_type.CloseAllDocuments(FALSE);
    EXPECT_EQ(0, g_documents);
    m_type.OpenDocumentFile(nullptr);
    CloseMain();
    EXPECT_EQ(0, g_documents) << "documents go with the main window";
}

TEST_F(Documents, GetCommandsOnTheirWayFromTheViewToTheApplication)
{
    EXPECT_EQ("main ", Command(kToAll)) << "there is no document yet";
    m_type.OpenDocumentFile(nullptr);
    static constexpr std::pair<UINT, const char*> commands[] = {
        {kToView, "view "}, {kToDocument, "document "}, {kToChild, "child "},
        {kToMain, "main "}, {kToAll, "document "},      {kToNobody, ""},
    };
    for (const auto& [id, expected] : commands)
        EXPECT_EQ(expected, Command(id)) << id;
}

TEST_F(Documents, AskBeforeTheyCloseWhetherToBeSaved)
{
    const ImportPatch box("ZOAFX.DLL", "MessageBoxA", &Answer);
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
        {kMain, nullptr, IDCANCEL, Fails::kNothing, "Save name? ", false},
        {kMain, "C:\\x\\a.t", IDCANCEL, Fails::kNothing, "Save C:\\x\\a.t? ", false},
    };
    auto* type =
        new CMultiDocTemplate(kType, RUNTIME_CLASS(TestDocument), RUNTIME_CLASS(TestChild), RUNTIME_CLASS(TestView));
    AfxGetApp()->AddDocTemplate(type); // the application's from here on
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.way << ", answer " << row.answer << ": " << row.log);
        CDocument* document = type->OpenDocumentFile(row.path);
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
    CDocument* document = type->OpenDocumentFile("C:\\x\\a.t");
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
    CDocument* document = m_type.OpenDocumentFile(nullptr);
    CView* view = m_main->MDIGetActive()->GetActiveView();
    view->UpdateWindow();
    TakeLog();
    document->UpdateAllViews(nullptr, 7);
    document->UpdateAllViews(view, 8);
    view->UpdateWindow();
    EXPECT_EQ("update7 draw ", TakeLog());
    // A second view of the document keeps it open when the first one goes.
    CFrameWnd* frame = m_main->MDIGetActive();
    m_type.InitialUpdateFrame(m_type.CreateNewFrame(document, frame), document);
    EXPECT_EQ(1, g_documents);
    const ImportPatch box("ZOAFX.DLL", "MessageBoxA", &Answer);
    document->SetModifiedFlag();
    TakeLog();
    frame->SendMessage(WM_CLOSE);
    EXPECT_EQ(1, g_documents);
    EXPECT_EQ(std::string::npos, TakeLog().find("Save")) << "nothing is lost yet";
    document->SetModifiedFlag(FALSE);
    m_main->MDIGetActive()->SendMessage(WM_CLOSE);
    EXPECT_EQ(0, g_documents);
}

TEST_F(Documents, ThatCannotBeOpenedLeaveNothing)
{
    m_type.OpenDocumentFile(nullptr); // for what is made once and kept
    m_type.CloseAllDocuments(FALSE);
    TakeLog();
    static constexpr Fails failures[] = {Fails::kOpening, Fails::kOpeningThrows, Fails::kView, Fails::kFrame};
    for (const Fails fails : failures) {
        for (const LPCSTR path : {LPCSTR{nullptr}, "C:\\file"}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(fails) << (path != nullptr ? path : " new"));
            const ProcessCounts before = ProcessCounts::Take();
            g_fails = fails;
            try {
                EXPECT_EQ(nullptr, m_type.OpenDocumentFile(path));
                EXPECT_NE(Fails::kOpeningThrows, fails);
            } catch (CMemoryException* e) {
                e->Delete();
                EXPECT_EQ(Fails::kOpeningThrows, fails);
            }
            EXPECT_EQ(0, g_documents);
            EXPECT_EQ(nullptr, m_main->MDIGetActive());
            EXPECT_EQ(nullptr, m_type.GetFirstDocPosition());
            TakeLog();
            EXPECT_EQ(before, ProcessCounts::Take());
        }
    }
}

TEST_F(Documents, NeedMemory)
{
    // What a handler lacks memory for is told to the user.
    const ImportPatch noBox("ZOAFX.DLL", "MessageBoxA", &NoMessageBox);
    AllocationFaults faults;
    RunFaultLoop(faults, [&](const FaultRun& run) {
        CDocument* document = nullptr;
        try {
            document = m_type.OpenDocumentFile("C:\\file");
        } catch (CMemoryException* e) {
            e->Delete();
        }
        run.Stop();
        EXPECT_EQ(document != nullptr ? 1 : 0, g_documents);
        m_type.CloseAllDocuments(FALSE);
        EXPECT_EQ(0, g_documents);
        EXPECT_EQ(nullptr, m_main->MDIGetActive());
        m_main->UpdateWindow();
        TakeLog();
    });
}

TEST(DocumentTypes, AreListedByTheApplicationInTheirOrder)
{
    CWinApp* tests = AfxGetApp();
    CWinApp own;
    AfxGetModuleState()->m_pCurrentWinApp = tests;
    CWinApp* application = &own;
    EXPECT_EQ(nullptr, application->GetFirstDocTemplatePosition());
    auto* first =
        new CMultiDocTemplate(kType, RUNTIME_CLASS(TestDocument), RUNTIME_CLASS(TestChild), RUNTIME_CLASS(TestView));
    auto* second = new CMultiDocTemplate(1, nullptr, nullptr, nullptr);
    application->AddDocTemplate(first);
    application->AddDocTemplate(second); // both are the application's now
    POSITION position = application->GetFirstDocTemplatePosition();
    EXPECT_EQ(first, application->GetNextDocTemplate(position));
    EXPECT_EQ(second, application->GetNextDocTemplate(position));
    EXPECT_EQ(nullptr, position);
    EXPECT_EQ(nullptr, second->OpenDocumentFile(nullptr)) << "it has no classes";
    application->CloseAllDocuments(FALSE);

    static constexpr struct {
        CDocTemplate::DocStringIndex index;
        BOOL found;
        LPCSTR text;
    } parts[] = {
        {CDocTemplate::windowTitle, TRUE, ""},
        {CDocTemplate::docName, TRUE, "Sheet"},
        {CDocTemplate::fileNewName, TRUE, "Sheets of tests"},
        {CDocTemplate::regFileTypeId, TRUE, ""},
        {CDocTemplate::regFileTypeName, FALSE, ""},
    };
    for (const auto& part : parts) {
        CString text = "before";
        EXPECT_EQ(part.found, first->GetDocString(text, part.index)) << part.index;
        EXPECT_STREQ(part.text, text) << part.index;
        EXPECT_EQ(part.index == CDocTemplate::windowTitle, second->GetDocString(text, part.index) != FALSE);
    }
}
