/// \file
/// Tools files made by hand.
#pragma once

#include <zogbl/tool_file.h>

#include "support/product_test.h"

#include <afxcoll.h>

namespace zo_test {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";
constexpr char kFramework[] = "ZOAFX.DLL";

/// \p text, and zeros up to \p size bytes.
inline std::string Field(const std::string& text, size_t size) { return text + std::string(size - text.size(), '\0'); }

inline std::string HeaderBytes(const std::string& description = {}, DWORD size = 144, DWORD magic = 0x19950527,
                               DWORD version = 0x00010000)
{
    return BytesOf(size) + BytesOf(magic) + BytesOf(version) + BytesOf(0) + Field(description, 128);
}

/// A record as the default constructor's object saves it, but for its texts and flags.
inline std::string RecordBytes(const std::string& menuText, DWORD flags = 4, const std::string& description = {},
                               const std::string& program = {}, const std::string& folder = {},
                               const std::string& arguments = {})
{
    const DWORD halfWidth = static_cast<DWORD>(GetSystemMetrics(SM_CXSCREEN)) / 2;
    const DWORD halfHeight = static_cast<DWORD>(GetSystemMetrics(SM_CYSCREEN)) / 2;
    std::string bytes;
    for (const DWORD number : {DWORD{1536}, flags, DWORD{0}, DWORD{0}, DWORD{0x04000020}, DWORD{1}, DWORD{16},
                               DWORD{16}, halfWidth, halfHeight, DWORD{80}, DWORD{25}, DWORD{15}, DWORD{10}})
        bytes += BytesOf(number);
    bytes += Field(menuText, 32) + Field(description, 128) + Field(program, 264) + Field(folder, 264) +
             Field(arguments, 264) + std::string(528, '\0');
    return bytes;
}

/// The texts of an item, and where their fields stand in a record.
struct ToolText {
    size_t at, size;
    void (CTlmItem::*get)(CString&) const;
    DWORD (CTlmItem::*set)(const char*);
};
constexpr ToolText kToolTexts[] = {
    {56, 32, &CTlmItem::GetDataMenuText, &CTlmItem::SetDataMenuText},
    {88, 128, &CTlmItem::GetDataDescription, &CTlmItem::SetDataDescription},
    {216, 264, &CTlmItem::GetDataProgramPath, &CTlmItem::SetDataProgramPath},
    {480, 264, &CTlmItem::GetDataWorkingDirectory, &CTlmItem::SetDataWorkingDirectory},
    {744, 264, &CTlmItem::GetDataArguments, &CTlmItem::SetDataArguments},
};
inline std::string GetText(const CTlmItem& item, const ToolText& text)
{
    CString got;
    (item.*text.get)(got);
    return std::string(got);
}

/// Items that a file was loaded into.
class ToolItems : public CObArray {
public:
    ~ToolItems() override { Clear(); }
    void Clear()
    {
        for (INT_PTR i = 0; i < GetSize(); ++i)
            delete GetAt(i);
        RemoveAll();
    }
    CTlmItem& Item(INT_PTR index) { return *static_cast<CTlmItem*>(GetAt(index)); }
    /// Menu texts with their commands: "calc=24553 edit=0 ".
    std::string Summary()
    {
        std::string summary;
        for (INT_PTR i = 0; i < GetSize(); ++i) {
            CString text;
            Item(i).GetDataMenuText(text);
            summary += std::string(text) + "=" + std::to_string(Item(i).GetCommand()) + " ";
        }
        return summary;
    }
};

/// The sample tool (see apps/start_report), and its folder.
inline std::string ReportTool() { return ProgramFolder() + "ZoStartReport.exe"; }
inline std::string ReportFolder() { return ProgramFolder().substr(0, ProgramFolder().size() - 1); }

} // namespace zo_test
