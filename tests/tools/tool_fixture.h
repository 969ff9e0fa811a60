/// \file
/// Tools files made by hand.
#pragma once

#include <zogbl/tool_file.h>

#include "product/registered_product.h"
#include "support/test.h"

#include <afxcoll.h>

namespace zo_test {

constexpr char kLibrary[] = "ZOGBLBRX.DLL";
constexpr char kFramework[] = "ZOAFX.DLL";

/// The bytes of a number, lowest first.
inline std::string Bytes(DWORD number) { return std::string(reinterpret_cast<const char*>(&number), sizeof number); }

/// \p text, and zeros up to \p size bytes.
inline std::string Field(const std::string& text, size_t size) { return text + std::string(size - text.size(), '\0'); }

inline std::string HeaderBytes(const std::string& description = {}, DWORD size = 144, DWORD magic = 0x19950527,
                               DWORD version = 0x00010000)
{
    return Bytes(size) + Bytes(magic) + Bytes(version) + Bytes(0) + Field(description, 128);
}

/// A record as the default constructor's object saves it, but for its texts and flags.
inline std::string RecordBytes(const std::string& menuText, DWORD flags = 4, const std::string& description = {},
                               const std::string& program = {}, const std::string& folder = {},
                               const std::string& arguments = {})
{
    std::string bytes = Bytes(1536) + Bytes(flags) + Bytes(0) + Bytes(0) + Bytes(0x04000020) + Bytes(1) + Bytes(16) +
                        Bytes(16) + Bytes(static_cast<DWORD>(GetSystemMetrics(SM_CXSCREEN)) / 2) +
                        Bytes(static_cast<DWORD>(GetSystemMetrics(SM_CYSCREEN)) / 2) + Bytes(80) + Bytes(25) +
                        Bytes(15) + Bytes(10);
    bytes += Field(menuText, 32) + Field(description, 128) + Field(program, 264) + Field(folder, 264) +
             Field(arguments, 264) + std::string(528, '\0');
    return bytes;
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

inline std::string ProgramFolder()
{
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    return std::string(path).substr(0, std::string(path).rfind('\\'));
}

/// The sample tool: see apps/start_report.
inline std::string ReportTool() { return ProgramFolder() + "\\ZoStartReport.exe"; }

} // namespace zo_test
