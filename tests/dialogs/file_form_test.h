/// \file
/// The form for files over a folder with a few files.
#pragma once

#include "dialog_faults.h"

#include "support/product_test.h"

#include <zogbl/file_open.h>
#include <zogbl/file_open_page.h>
#include <zogbl/resource_ids.h>

namespace zo_test {

inline constexpr int kName = ZO_IDC_FILE_NAME;
inline constexpr int kFiles = ZO_IDC_FILE_LIST;
inline constexpr int kFolders = ZO_IDC_FILE_FOLDERS;
inline constexpr int kDrives = ZO_IDC_FILE_DRIVES;
inline constexpr int kRecent = ZO_IDC_FILE_RECENT;
inline constexpr int kLabel = ZO_IDC_FILE_FOLDER;
inline constexpr int kUp = ZO_IDC_FILE_UP;
inline constexpr int kNewFolder = ZO_IDC_FILE_NEW_FOLDER;
inline constexpr char kFilter[] = "Texts\0*.txt\0All files\0*.*\0";

class FileForm : public ProductTest {
protected:
    FileForm()
    {
        ::CreateDirectoryA(Path("sub").c_str(), nullptr);
        for (const char* name : {"alpha.txt", "beta.bin", "sub\\inner.txt"})
            m_folder.Write(name, name);
    }
    static std::string Label(HWND dialog) { return TextOf(dialog, kLabel); }
    static void Enter(HWND dialog, const std::string& name)
    {
        Type(dialog, kName, name);
        Key(dialog, VK_RETURN);
    }
    INT_PTR Show(BOOL open, const DialogDriver::Act& act, DWORD flags = OFN_HIDEREADONLY, const std::string& start = {})
    {
        CZoFileOpen dialog(open, 0, "txt", (start.empty() ? Path("") : start).c_str(), flags, kFilter);
        const DialogDriver driver({act});
        const INT_PTR result = dialog.DoModal();
        m_chosen = dialog.GetPathName();
        return result;
    }
    std::string m_chosen;
};

struct FileSheet : CZoPropertySheet {
    explicit FileSheet(const std::string& start, DWORD flags = OFN_HIDEREADONLY | OFN_FILEMUSTEXIST)
        : CZoPropertySheet("Files"), page(TRUE, 0, "txt", start.c_str(), flags, kFilter)
    {
        AddPage(&page);
    }
    CZoFileOpenPage page;
};

} // namespace zo_test
