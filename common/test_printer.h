/// \file
/// A printer that writes PostScript. Systems before Windows NT cannot have it: their drivers are of 16 bits.
#pragma once

#include <windows.h>

#include <winspool.h>

#include <fstream>
#include <string>

/// The default printer, as long as the object lives. Without it a prefix has none. Wine's own driver lies where the
/// system has drivers.
class TestPrinter {
public:
    TestPrinter()
    {
        char folder[MAX_PATH] = "", port[] = "FILE:", processor[] = "winprint", type[] = "RAW";
        DWORD size = 0;
        GetPrinterDriverDirectoryA(nullptr, nullptr, 1, reinterpret_cast<BYTE*>(folder), sizeof folder, &size);
        std::string driver = std::string(folder) + "\\3\\wineps.drv";
        m_description = std::string(folder) + "\\3\\zotest.ppd";
        std::ofstream(m_description, std::ios::binary) << kDescription;
        DRIVER_INFO_3A information = {3,       m_name,  nullptr, driver.data(), m_description.data(), driver.data(),
                                      nullptr, nullptr, nullptr, nullptr};
        AddPrinterDriverA(nullptr, 3, reinterpret_cast<BYTE*>(&information));
        PRINTER_INFO_2A printer = {};
        printer.pPrinterName = printer.pDriverName = m_name;
        printer.pPortName = port;
        printer.pPrintProcessor = processor;
        printer.pDatatype = type;
        m_printer = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
        GetProfileStringA("windows", "device", "", m_defaultBefore, sizeof m_defaultBefore);
        WriteProfileStringA("windows", "device", (std::string(m_name) + ",winspool,FILE:").c_str());
    }
    ~TestPrinter()
    {
        WriteProfileStringA("windows", "device", m_defaultBefore[0] != '\0' ? m_defaultBefore : nullptr);
        DeletePrinter(m_printer);
        ClosePrinter(m_printer);
        DeletePrinterDriverA(nullptr, nullptr, m_name);
        DeleteFileA(m_description.c_str());
    }
    TestPrinter(const TestPrinter&) = delete;
    TestPrinter& operator=(const TestPrinter&) = delete;
    bool IsThere() const { return m_printer != nullptr; }

private:
    /// Our own description of a printer.
    static constexpr char kDescription[] =
        "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n*LanguageVersion: English\n"
        "*LanguageEncoding: ISOLatin1\n*PCFileName: \"ZOTEST.PPD\"\n*Product: \"(Zo)\"\n*PSVersion: \"(3010) 0\"\n"
        "*ModelName: \"Zo\"\n*NickName: \"Zo\"\n*LanguageLevel: \"2\"\n*ColorDevice: True\n"
        "*DefaultResolution: 300dpi\n"
        "*OpenUI *PageSize: PickOne\n*DefaultPageSize: A4\n"
        "*PageSize A4/A4: \"<</PageSize[595 842]>>setpagedevice\"\n*CloseUI: *PageSize\n*DefaultImageableArea: A4\n"
        "*ImageableArea A4/A4: \"18 18 577 824\"\n*DefaultPaperDimension: A4\n*PaperDimension A4/A4: \"595 842\"\n"
        "*DefaultFont: Courier\n*Font Courier: Standard \"(001.001S)\" Standard ROM\n";

    char m_name[16] = "Zo test printer";
    char m_defaultBefore[MAX_PATH] = "";
    std::string m_description;
    HANDLE m_printer;
};
