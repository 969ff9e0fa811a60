// Main windows and the application's help file.

#include "support/test.h"

#include <zomfx/frame_window.h>

namespace {

constexpr DWORD kEnglish = 0x0409;
constexpr DWORD kJapanese = 0x0411;

/// What a frame window says of the help file, behind the program's folder.
template <class FRAME> std::string HelpFileOf(const FRAME& frame)
{
    const std::string path(frame.GetHelpFile()), folder = ProgramFolder();
    return path.compare(0, folder.size(), folder) == 0 ? path.substr(folder.size()) : "(elsewhere) " + path;
}

} // namespace

template <class FRAME> class HelpFile : public testing::Test {
protected:
    void SetUp() override { m_before = m_frame.GetHelpFile(); }
    void TearDown() override { m_frame.RestoreHelpFile(m_before); }

    FRAME m_frame;
    CString m_before;
};

using Frames = testing::Types<CZoFrameWnd, CZoMDIFrameWnd>;
TYPED_TEST_SUITE(HelpFile, Frames);

TYPED_TEST(HelpFile, IsThatOfAModuleInALanguage)
{
    EXPECT_EQ(0, this->m_before.Right(4).CompareNoCase(".HLP")) << "at first the program's own";
    const std::tuple<LPCSTR, DWORD, LPCSTR> cases[] = {{"ZOGBLBRX.DLL", kEnglish, "ZOGBLENU.HLP"},
                                                       {"C:\\suite\\ZOGBLBRX.DLL", kJapanese, "ZOGBLJPN.HLP"},
                                                       {"C:shell.exe", kEnglish, "shellENU.HLP"},
                                                       {"ab", kEnglish, "abENU.HLP"}};
    for (const auto& [module, language, name] : cases) {
        EXPECT_TRUE(this->m_frame.SetHelpFile(module, language)) << module;
        EXPECT_EQ(name, HelpFileOf(this->m_frame));
    }
    if (IsDoubleByte()) { // a trail byte is a backslash, and no character is cut
        EXPECT_TRUE(this->m_frame.SetHelpFile("C:\\\x95\x5c\\abcd\x95\x5cxy.exe", kEnglish));
        EXPECT_EQ("abcd\x95\x5c"
                  "ENU.HLP",
                  HelpFileOf(this->m_frame));
    }
    const CString last = this->m_frame.GetHelpFile();
    for (const LPCSTR module : {LPCSTR{nullptr}, ""})
        EXPECT_FALSE(this->m_frame.SetHelpFile(module, kEnglish));
    EXPECT_FALSE(this->m_frame.SetHelpFile("ZOGBLBRX.DLL", 0xFFFF)) << "no such language";
    EXPECT_STREQ(last, this->m_frame.GetHelpFile());
    this->m_frame.RestoreHelpFile(CString());
    EXPECT_EQ(nullptr, AfxGetApp()->m_pszHelpFilePath);
    EXPECT_STREQ("", this->m_frame.GetHelpFile());
}

static FaultSource* g_copyFaults = nullptr;

static char* FaultyCopy(const char* text) { return g_copyFaults->Next() ? nullptr : _strdup(text); }

/// Every way in which a help file can be refused leaves the one before in force.
static void SetUnderFaults(const FaultRun& run)
{
    CZoFrameWnd frame;
    frame.RestoreHelpFile("before");
    const BOOL set = run.Act([&] { return frame.SetHelpFile("ZOGBLBRX.DLL", kEnglish); });
    EXPECT_EQ(!run.Fired(), set != FALSE);
    EXPECT_EQ(run.Fired() ? "(elsewhere) before" : "ZOGBLENU.HLP", HelpFileOf(frame));
    frame.RestoreHelpFile("before");
}

TEST(HelpFileFaults, LeaveTheOneBefore)
{
    CZoFrameWnd frame;
    const CString before = frame.GetHelpFile();
    RunFaultActs<AllocationFaults>(&SetUnderFaults);
    FaultSource faults("system");
    ZO_FAULTY_CALL(GetModuleFileNameA) program(faults, "ZOMFXBRX.DLL", DWORD{MAX_PATH}, ERROR_INSUFFICIENT_BUFFER);
    ZO_FAULTY_CALL(GetLocaleInfoA) locale(faults, "ZOMFXBRX.DLL", 0, ERROR_INVALID_PARAMETER);
    g_copyFaults = &faults;
    const ImportPatch copy("ZOMFXBRX.DLL", "_strdup", &FaultyCopy);
    RunFaultActs(faults, &SetUnderFaults);
    faults.Arm(1, true);
    frame.RestoreHelpFile("other");
    faults.Disarm();
    EXPECT_STREQ("before", frame.GetHelpFile());
    frame.RestoreHelpFile(before);
}

TEST(FrameClasses, AreToldApartAndMadeByName)
{
    ZO_EXPECT_NO_LEAK({
        for (const LPCSTR name : {"CZoFrameWnd", "CZoMDIFrameWnd"}) {
            const std::unique_ptr<CObject> frame(CRuntimeClass::FromName(name)->CreateObject());
            EXPECT_STREQ(name, frame->GetRuntimeClass()->m_lpszClassName);
            EXPECT_EQ(CString("CZoMDIFrameWnd") == name, frame->IsKindOf(RUNTIME_CLASS(CMDIFrameWnd)) != FALSE);
        }
    });
}

TEST(MDIFrame, HasAClientThatFillsIt)
{
    auto* frame = new CZoMDIFrameWnd;
    ASSERT_TRUE(frame->Create(nullptr, "shell", WS_OVERLAPPEDWINDOW, CRect(0, 0, 300, 200), nullptr, nullptr));
    ASSERT_NE(nullptr, frame->m_hWndMDIClient);
    frame->ShowWindow(SW_SHOW);
    CRect inside;
    frame->GetClientRect(&inside);
    const CRect client = AreaOf(frame->m_hWndMDIClient);
    EXPECT_EQ(inside.Width(), client.Width());
    EXPECT_EQ(inside.Height(), client.Height());
    frame->DestroyWindow(); // the object deletes itself
}
