#include <zogbl/tool_item.h>

#include <common/without_throwing.h>
#include <zogbl/argument_prompt.h>
#include <zogbl/resource_ids.h>
#include <zogbl/resource_lookup.h>

#include "field.h"

IMPLEMENT_DYNAMIC(CTlmItem, CObject)

namespace {

constexpr size_t kLongestPath = ZO_TLM_PATH_SIZE - 2;     // in a command line
constexpr int kLongestAnswer = int{ZO_TLM_PATH_SIZE} - 1; // to the question for arguments

/// The icon of that number in the language library; null when there is none.
HICON FindIcon(DWORD number)
{
    if (number == 0 || number > 0xFFFF)
        return nullptr;
    const LPCSTR name = MAKEINTRESOURCEA(number);
    return LoadIconA(ZoGblFindResourceModule(name, RT_GROUP_ICON), name);
}

/// Program and arguments, the program in quotes if it would be taken apart otherwise.
class CommandLine {
public:
    CommandLine(LPCSTR program, LPCSTR arguments)
    {
        char path[kLongestPath + 1];
        CopyBounded(path, sizeof path, program);
        const LPCSTR quote = std::strchr(path, ' ') != nullptr && path[0] != '"' ? "\"" : "";
        wsprintfA(m_text, "%s%s%s %s", quote, path, quote, arguments);
    }
    LPSTR Get() { return m_text; }

private:
    char m_text[2 * ZO_TLM_PATH_SIZE + 4];
};

} // namespace

CTlmItem::CTlmItem() { DefaultItemData(); }

void CTlmItem::DefaultItemData()
{
    m_record = {};
    m_record.dwFlags = ZO_TLM_IN_MENU;
    m_record.dwCreationFlags = CREATE_DEFAULT_ERROR_MODE | NORMAL_PRIORITY_CLASS;
    m_record.dwStartupFlags = STARTF_USESHOWWINDOW;
    m_record.dwX = 16;
    m_record.dwY = 16;
    m_record.dwWidth = static_cast<DWORD>(GetSystemMetrics(SM_CXSCREEN)) / 2;
    m_record.dwHeight = static_cast<DWORD>(GetSystemMetrics(SM_CYSCREEN)) / 2;
    m_record.dwColumns = 80;
    m_record.dwRows = 25;
    m_record.dwFillAttribute = FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_BLUE | FOREGROUND_INTENSITY;
    m_record.dwShowCommand = SW_SHOWDEFAULT;
    CString description;
    ZoGblLoadString(ZO_IDS_TOOL_DESCRIPTION, description);
    SetDataDescription(description);
}

// Texts ---------------------------------------------------------------------------------------------------------------

void CTlmItem::GetDataMenuText(CString& text) const { GetField(m_record.szMenuText, text); }
DWORD CTlmItem::SetDataMenuText(const char* text) { return SetField(m_record.szMenuText, text); }
void CTlmItem::GetDataDescription(CString& text) const { GetField(m_record.szDescription, text); }
DWORD CTlmItem::SetDataDescription(const char* text) { return SetField(m_record.szDescription, text); }
void CTlmItem::GetDataProgramPath(CString& path) const { GetField(m_record.szProgramPath, path); }
DWORD CTlmItem::SetDataProgramPath(const char* path) { return SetField(m_record.szProgramPath, path); }
void CTlmItem::GetDataWorkingDirectory(CString& path) const { GetField(m_record.szWorkingDirectory, path); }
DWORD CTlmItem::SetDataWorkingDirectory(const char* path) { return SetField(m_record.szWorkingDirectory, path); }
void CTlmItem::GetDataArguments(CString& arguments) const { GetField(m_record.szArguments, arguments); }
DWORD CTlmItem::SetDataArguments(const char* arguments) { return SetField(m_record.szArguments, arguments); }

// Files ---------------------------------------------------------------------------------------------------------------

DWORD CTlmItem::LoadItemData(CFile& file, DWORD version, DWORD size)
{
    if (version != m_dwRecordVersion || size != m_dwRecordSize)
        return ZO_TLM_WRONG_VERSION;
    return ResultOr(ZO_TLM_READ_FAILED, [&]() -> DWORD {
        ZoToolItemRecord record; // a file that ends in the middle must not leave half of one
        if (file.Read(&record, sizeof record) != sizeof record)
            return ZO_TLM_READ_FAILED;
        m_record = record;
        return 0;
    });
}

DWORD CTlmItem::SaveItemData(CFile& file, DWORD version, DWORD size)
{
    if (version != m_dwRecordVersion || size != m_dwRecordSize)
        return ZO_TLM_WRONG_VERSION;
    m_record.dwSize = m_dwRecordSize;
    return WithoutThrowing([&] { file.Write(&m_record, sizeof m_record); }) ? 0 : ZO_TLM_WRITE_FAILED;
}

// Starting ------------------------------------------------------------------------------------------------------------

DWORD CTlmItem::ActivateItem(CWnd* parent)
{
    if (m_record.szProgramPath[0] == '\0')
        return ZO_TLM_NO_PROGRAM;
    FieldText arguments(m_record.szArguments);
    if ((m_record.dwFlags & ZO_TLM_ASK_ARGUMENTS) != 0) {
        CString answer;
        if (const DWORD status = Ask(parent, answer))
            return status;
        CopyBounded(arguments.Get(), ZO_TLM_PATH_SIZE, answer);
    }

    // Creation flags of a file may announce the longer form of it, whose last member the system then looks for.
    struct {
        STARTUPINFOA startup;
        void* attributeList;
    } extended = {};
    STARTUPINFOA& startup = extended.startup;
    startup.cb = sizeof startup;
    startup.dwX = m_record.dwX;
    startup.dwY = m_record.dwY;
    startup.dwXSize = m_record.dwWidth;
    startup.dwYSize = m_record.dwHeight;
    startup.dwXCountChars = m_record.dwColumns;
    startup.dwYCountChars = m_record.dwRows;
    startup.dwFillAttribute = m_record.dwFillAttribute;
    startup.dwFlags = m_record.dwStartupFlags;
    startup.wShowWindow =
        static_cast<WORD>((m_record.dwFlags & ZO_TLM_START_MINIMIZED) != 0 ? SW_SHOWMINIMIZED : m_record.dwShowCommand);
    const FieldText program(m_record.szProgramPath);
    const FieldText folder(m_record.szWorkingDirectory);
    CommandLine command(program, arguments);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(program, command.Get(), nullptr, nullptr, FALSE, m_record.dwCreationFlags, nullptr, folder,
                        &startup, &process))
        return ZO_TLM_START_FAILED;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return 0;
}

DWORD CTlmItem::PromptForArgument(CWnd* parent, CString& args)
{
    const DWORD status = Ask(parent, args);
    if (status == 0 && (m_record.dwFlags & ZO_TLM_KEEP_ARGUMENTS) != 0)
        SetDataArguments(args);
    return status;
}

/// Shows the question for arguments, with the item's own as the answer at first.
DWORD CTlmItem::Ask(CWnd* parent, CString& arguments) const
{
    return ResultOr(ZO_TLM_PROMPT_FAILED, [&]() -> DWORD {
        CZoArgumentPromptDlg dialog(parent);
        dialog.SetIcon(FindIcon(m_record.dwIcon));
        dialog.SetProgram(CString(FieldText(m_record.szProgramPath)));
        dialog.SetPrompt(CString(FieldText(m_record.szDescription)));
        dialog.SetAnswer(CString(FieldText(m_record.szArguments)));
        dialog.SetAnswerLength(kLongestAnswer);
        const INT_PTR result = dialog.DoModal();
        if (result == IDOK)
            arguments = dialog.GetAnswer();
        return result == IDOK ? 0 : result == -1 ? ZO_TLM_PROMPT_FAILED : ZO_TLM_CANCELLED;
    });
}
