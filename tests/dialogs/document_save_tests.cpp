// The names of documents, and saving them.
#include "dialog_faults.h"
#include "document_test.h"
#include "support/test.h"

#include <zogbl/document_save.h>
#include <zogbl/file_open.h>
#include <zogbl/resource_ids.h>

namespace {

constexpr int kName = ZO_IDC_FILE_NAME;

class Document : public CDocument {
public:
    BOOL OnSaveDocument(LPCSTR path) override
    {
        if (m_instead)
            return m_instead(path);
        CFile file(path, CFile::modeCreate | CFile::modeWrite); // throws
        file.Write("saved", 5);
        return CDocument::OnSaveDocument(path);
    }
    std::function<BOOL(LPCSTR path)> m_instead; // of saving
};

/// The filter list of an open dialog, with '|' for each NUL.
std::string FilterOf(HWND dialog)
{
    const auto* open = static_cast<const CZoFileOpen*>(CWnd::FromHandlePermanent(dialog));
    std::string list;
    for (LPCSTR p = open->m_ofn.lpstrFilter; p[0] != '\0' || p[-1] != '\0'; ++p)
        list += *p != '\0' ? *p : '|';
    return list;
}

constexpr char kNotSaved[] = "The document could not be saved.";
constexpr char kExists[] = "This file already exists. Do you want to replace it?";

DialogDriver::Act Told(const std::string& path, const char* text, int button = IDOK)
{
    return AnswerBox(path + "\n\n" + text, button);
}

class DocumentSave : public DocumentTest {
protected:
    DocumentSave()
    {
        m_type.AddDocument(&m_document);
        m_document.SetTitle("before");
    }

    NamedType m_type{"Letters", ".let"};
    Document m_document;
};

} // namespace

TEST_F(DocumentSave, OffersTypesByTheByte)
{
    NamedType nameless("", ".x");
    Add(new NamedType("Letters", ".Let"));
    const std::string one = "Letters|*.Let|All files (*.*)|*.*|";
    const auto prompt = [&](CDocTemplate* type, CWinApp* application, const std::string& filter, const char* title,
                            UINT titleId, BOOL open) {
        CString name = "kept";
        const DialogDriver driver({[&](HWND dialog) {
            EXPECT_EQ(filter, FilterOf(dialog));
            EXPECT_EQ(title, TextOf(dialog));
            EXPECT_EQ("kept", TextOf(dialog, kName));
            Key(dialog, VK_ESCAPE);
        }});
        EXPECT_EQ(0, ZoDoPromptFileName(name, titleId, 0, open, type, application));
        EXPECT_STREQ("kept", name);
    };
    prompt(nullptr, m_application.get(), one, "Select a File", 0, TRUE);
    prompt(&m_type, m_application.get(), "Letters|*.let|All files (*.*)|*.*|", "Save As", ZO_IDS_SAVE_AS_TITLE, FALSE);
    prompt(&nameless, nullptr, "All files (*.*)|*.*|", "Select a File", 0, TRUE);
    prompt(nullptr, nullptr, "All files (*.*)|*.*|", "Save Copy As", ZO_IDS_SAVE_COPY_TITLE, FALSE);
    Add(new NamedType("Plain", ""));
    prompt(nullptr, m_application.get(), one, "Select a File", 0, TRUE);
    Add(new NamedType("", ".ONE"));
    Add(new NamedType("Sheets", ".tab"));
    prompt(nullptr, m_application.get(),
           "All documents (*.let;*.one;*.tab)|*.let;*.one;*.tab|Letters|*.Let|Sheets|*.tab|All files (*.*)|*.*|",
           "Select a File", 0, TRUE);

    CString name = Path("").c_str();
    const DialogDriver driver({[](HWND dialog) {
        Type(dialog, kName, "mine");
        Press(dialog, IDOK);
    }});
    EXPECT_EQ(1, ZoDoPromptFileName(name, 0, 0, FALSE, &m_type, nullptr));
    EXPECT_STREQ(Path("mine.let").c_str(), name);
}

TEST_F(DocumentSave, MakesUpNamesFromTitles)
{
    const std::string current = Path("current.let");
    const struct {
        const char *current, *title;
        int replace;
        std::string offered, dialogTitle;
    } rows[] = {
        {"", "My #1 fax", 1, "My.let", "Save As"},
        {nullptr, "Document12", 1, "Document.let", "Save As"},
        {"", "a%b", 1, "a.let", "Save As"},
        {"", "12345678", 1, "12345678.let", "Save As"},
        {"", "1234567\x83\x5C", 1, IsDoubleByte() ? "1234567.let" : "1234567\x83.let", "Save As"}, // no half of one
        {"", "one\\two", 1, "one.let", "Save As"},
        {"", "x;y", 1, "x.let", "Save As"},
        {"", "#", 1, ".let", "Save As"},
        {"", nullptr, 1, ".let", "Save As"},
        {"", "My #1 fax", 0, "", "Save Copy As"},
        {current.c_str(), "My", 1, "current.let", "Save As"},
        {current.c_str(), "My", 0, "current.let", "Save Copy As"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.title != nullptr ? row.title : "(none)");
        const DialogDriver driver({[&](HWND dialog) {
            EXPECT_EQ(row.offered, TextOf(dialog, kName));
            EXPECT_EQ(row.dialogTitle, TextOf(dialog));
            Press(dialog, IDCANCEL);
        }});
        EXPECT_EQ(0, ZoDoSave(&m_document, nullptr, row.current, row.title, row.replace));
        EXPECT_STREQ("", m_document.GetPathName());
    }
}

TEST_F(DocumentSave, DeletesOnlyWhatItsFailedSaveMadeOrEmptied)
{
    const auto make = [](LPCSTR path, LPCSTR text) {
        CFile file(path, CFile::modeCreate | CFile::modeWrite);
        file.Write(text, static_cast<UINT>(strlen(text)));
    };
    const auto put = [&](LPCSTR path) { // another file in its place
        m_folder.Write("other", "half");
        ::DeleteFileA(path);
        ::MoveFileA(Path("other").c_str(), path);
    };
    const auto refuse = [](LPCSTR) { return FALSE; };
    const auto fail = [](LPCSTR) -> BOOL { AfxThrowFileException(CFileException::diskFull, ERROR_DISK_FULL); };
    const std::string path = Path("file.let");
    const struct {
        std::function<BOOL(LPCSTR)> save;
        bool tells;
        LPCSTR pathName, before, after;
    } rows[] = {
        {refuse, false, nullptr, "old", "old"},
        {fail, true, nullptr, "old", "old"},
        {fail, true, nullptr, "", ""},
        {[](LPCSTR) -> BOOL { AfxThrowUserException(); }, false, nullptr, "old", "old"},
        {[&](LPCSTR path) { return make(path, "half"), FALSE; }, false, nullptr, nullptr, "(none)"},
        {[&](LPCSTR path) { return make(path, "half"), FALSE; }, false, "", nullptr, "half"},
        {[&](LPCSTR path) { return make(path, ""), fail(path); }, true, nullptr, "old", "(none)"},
        {[&](LPCSTR path) { return make(path, ""), fail(path); }, true, "", "old", ""},
        {[&](LPCSTR path) { return make(path, ""), fail(path); }, true, path.c_str(), "old", ""},
        {[&](LPCSTR path) { return make(path, "old and new"), fail(path); }, true, nullptr, "old", "old and new"},
        {[&](LPCSTR path) { return ::DeleteFileA(path), fail(path); }, true, nullptr, "old", "(none)"},
        {[&](LPCSTR path) { return put(path), FALSE; }, false, nullptr, "old", "(none)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        ::DeleteFileA(path.c_str());
        if (row.before != nullptr)
            m_folder.Write("file.let", row.before);
        m_document.m_instead = row.save;
        const bool asks = row.pathName == nullptr || *row.pathName == '\0';
        const DialogDriver driver({asks ? Pressing(IDOK) : nullptr,
                                   asks && row.before != nullptr ? Told(path, kExists, IDYES) : nullptr,
                                   row.tells ? Told(path, kNotSaved) : nullptr});
        EXPECT_EQ(0, ZoDoSave(&m_document, row.pathName, path.c_str(), "x", 1));
        EXPECT_STREQ("", m_document.GetPathName());
        EXPECT_EQ(row.after, m_folder.Read("file.let"));
    }
}

TEST_F(DocumentSave, KnowsAFileByEveryPath)
{
    m_folder.Write("a long name.let", "text");
    m_folder.Write("other.let", "text");
    const std::string file = Path("a long name.let");
    const std::string link = Path("link.let");
    ASSERT_TRUE(::CreateHardLinkA(link.c_str(), file.c_str(), nullptr));
    EXPECT_TRUE(ZoIsSameFile(file.c_str(), link.c_str()));
    EXPECT_TRUE(ZoIsSameFile(file.c_str(), Path(".\\A Long Name.LET").c_str()));
    EXPECT_FALSE(ZoIsSameFile(file.c_str(), Path("other.let").c_str()));
    EXPECT_FALSE(ZoIsSameFile(file.c_str(), Path("gone.let").c_str()));
    EXPECT_FALSE(ZoIsSameFile(Path("gone.let").c_str(), Path("gone.let").c_str()));

    // A system that does not tell files apart: texts must do, and nothing is deleted.
    const ImportPatch unknown(
        "ZOGBLBRX.DLL", "GetFileInformationByHandle",
        +[](HANDLE, LPBY_HANDLE_FILE_INFORMATION) WINAPI -> BOOL { return FALSE; });
    EXPECT_TRUE(ZoIsSameFile(file.c_str(), file.c_str()));
    EXPECT_FALSE(ZoIsSameFile(file.c_str(), link.c_str()));
    m_document.m_instead = [](LPCSTR) { return FALSE; };
    const DialogDriver driver({Pressing(IDOK), Told(file, kExists, IDYES)});
    EXPECT_EQ(0, ZoDoSave(&m_document, nullptr, file.c_str(), "x", 1));
    EXPECT_EQ("text", m_folder.Read("a long name.let"));
}

TEST_F(DocumentSave, SavesUnderTheNameGivenOrAskedFor)
{
    const std::string given = Path("given.let");
    m_document.SetModifiedFlag();
    EXPECT_EQ(1, ZoDoSave(&m_document, given.c_str(), "", "x", 0)) << "a copy";
    EXPECT_EQ("saved", m_folder.Read("given.let"));
    EXPECT_STREQ("", m_document.GetPathName());
    EXPECT_EQ(1, ZoDoSave(&m_document, given.c_str(), "", "x", 1));
    EXPECT_STREQ(given.c_str(), m_document.GetPathName());
    EXPECT_STREQ("given.let", m_document.GetTitle());
    EXPECT_FALSE(m_document.IsModified());
    EXPECT_EQ(0, ZoDoSave(nullptr, given.c_str(), "", "x", 1));

    const std::string missing = Path("gone\\x.let");
    for (const char* empty : {static_cast<const char*>(nullptr), ""}) {
        m_folder.Write("taken.let", "before");
        const DialogDriver driver({[&](HWND dialog) {
                                       Type(dialog, kName, missing);
                                       Press(dialog, IDOK); // the folder must exist
                                       Type(dialog, kName, "taken");
                                       Press(dialog, IDOK);
                                       EXPECT_EQ("taken", TextOf(dialog, kName));
                                       Press(dialog, IDOK);
                                   },
                                   Told(missing, "The folder does not exist. Please check the path."),
                                   Told(Path("taken.let"), kExists, IDNO), Told(Path("taken.let"), kExists, IDYES)});
        EXPECT_EQ(1, ZoDoSave(&m_document, empty, given.c_str(), "x", 1));
        EXPECT_EQ("saved", m_folder.Read("taken.let"));
        EXPECT_STREQ(Path("taken.let").c_str(), m_document.GetPathName());
    }
}

TEST_F(DocumentSave, SurvivesMissingMemory)
{
    const std::string given = Path("given.let");
    m_document.SetPathName(given.c_str());
    const auto person = [](HWND dialog) { Command(dialog, IDCANCEL); };
    const auto save = [&](const FaultRun& run) {
        const int result = ZoDoSave(&m_document, given.c_str(), "", "x", 1);
        run.Stop();
        EXPECT_TRUE(run.Fired() || result == 1);
        EXPECT_EQ(result == 1, m_folder.Read("given.let") == "saved");
        ::DeleteFileA(given.c_str());
    };
    RunDialogFaults(person, save, {.system = 0});
    Add(new NamedType("One", ".1"));
    Add(new NamedType("Two", ".2"));
    const CString kept = "kept";
    const auto ask = [&](const FaultRun& run) {
        CString name = kept;
        EXPECT_EQ(0, ZoDoPromptFileName(name, 0, 0, TRUE, nullptr, m_application.get()));
        run.Stop();
        EXPECT_STREQ("kept", name);
    };
    RunDialogFaults(person, ask, {.memory = 7, .system = 0});
}
