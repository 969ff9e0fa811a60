#include "tour.h"

#include "main_frame.h"
#include "program.h"
#include "registration.h"
#include "report.h"
#include "tour_controls.h"
#include "tour_dialogs.h"
#include "tour_windows.h"
#include "workbench_ids.h"

#include "../templates/template_ids.h"

#include <common/picture.h>
#include <common/wait.h>

#include <zogbl/about_dialog.h>
#include <zogbl/country_code.h>
#include <zogbl/directory_functions.h>
#include <zogbl/flag_lcid.h>
#include <zogbl/location_item.h>
#include <zogbl/mailboxes.h>
#include <zogbl/mem_ini_file.h>
#include <zogbl/module.h>
#include <zogbl/module_language.h>
#include <zogbl/new_document_dialog.h>
#include <zogbl/operating_system.h>
#include <zogbl/resource_ids.h>
#include <zogbl/select_directory.h>
#include <zogbl/tool_file.h>
#include <zogbl/version_resource.h>

#include <algorithm>
#include <functional>
#include <utility>

namespace {

constexpr DWORD kEnglish = 0x0409;
constexpr DWORD kGerman = 0x0407;
constexpr DWORD kFrench = 0x040C;
constexpr DWORD kSpanish = 0x040A;
constexpr DWORD kJapanese = 0x0411;
constexpr UINT kJapaneseCodePage = 932;
constexpr UINT kGermany = 276;

CString ModulePath(HINSTANCE module)
{
    char path[MAX_PATH] = {};
    ::GetModuleFileName(module, path, sizeof path - 1);
    return path;
}

unsigned long __stdcall CountFile(void* context, const char*) { return ++*static_cast<DWORD*>(context); }

class Tour {
public:
    explicit Tour(const CString& folder) : m_folder(folder), m_report(folder + "\\tour.txt") {}

    bool Run()
    {
        return Register() && Library() && LoadLanguage(kEnglish) && Countries() && Lookups() && NoviceMode() &&
               ProfileFile() && AddLocation() && AddMailBox() && OpenWindow() && OpenTrace() && WriteTrace() &&
               TranslateText() && StartTool() && PictureTools("en") && SecondProcess() && TakeLine() && TalkToModem() &&
               Pictures("en") && Echo() && HangUpLine() && PictureTables("en") && RemoteHangUp() && RefusedLine() &&
               WatchForCalls() && ChooseDocument("en") && OpenDocuments() && SaveDocument() && PickFolder() &&
               PictureDocuments("en") && PictureAll("en") && Print() && OpenSecondWorkbench() &&
               SwitchLanguage(kGerman, "de") && Countries() && Pictures("de") && ChooseDocument("de") &&
               PictureTables("de") && PictureTools("de") && PictureDocuments("de") && PictureAll("de") &&
               SwitchLanguage(kFrench, "fr") && Pictures("fr") && PictureTables("fr") && PictureTools("fr") &&
               PictureAll("fr") && FifthLanguage() && SwitchLanguage(kEnglish, "en") && CloseSecondWorkbench() &&
               CloseTrace() && CloseWindow() && RemoveMailBox() && RemoveLocation() && MeasureFolder() &&
               UnloadLanguage();
    }
    void Close(bool succeeded)
    {
        if (m_frame != nullptr)
            CloseWindow();
        m_report.Line(succeeded ? "The tour is complete." : "The tour stopped at the step above.");
    }

private:
    bool Register()
    {
        const int code = RunProvision("--languages 0409,0407,040c,040a,0411 --current 0409");
        CZoVersionResource product;
        const BOOL found = product.ExtractVersionInfo();
        CString result;
        result.Format("exit code %d, %s", code, (LPCSTR)product.GetCurrentUserKey());
        return m_report.Step("register", code == 0 && found, result);
    }

    bool Library()
    {
        static constexpr LPCSTR families[] = {"", "Win32s", "Windows NT", "Windows 95"};
        CString result;
        result.Format("%s on %s %lu.%lu", (LPCSTR)ModulePath(ZoGblGetInstanceHandle()),
                      families[CZoGlobalOperatingSystem::GetType()], CZoGlobalOperatingSystem::GetMajorVersion(),
                      CZoGlobalOperatingSystem::GetMinorVersion());
        return m_report.Step("library", ZoGblGetInstanceHandle() != nullptr, result);
    }

    bool LoadLanguage(DWORD expected)
    {
        const BOOL loaded = ZoGblLoadLanguageDLL() && m_language.Load(AfxGetInstanceHandle());
        CString result;
        result.Format("%04lX from %s", ZoGblGetLanguageLCID(),
                      loaded ? (LPCSTR)ModulePath(ZoGblGetLanguageDLL()) : "nowhere");
        return m_report.Step("language", loaded && ZoGblGetLanguageLCID() == expected, result);
    }

    bool Countries()
    {
        const CZoCountryCodeList* list = GetGlobalCountryList();
        const int count = list != nullptr ? list->GetCount() : 0;
        CString result;
        if (count > 0)
            result.Format("%d, from %s to %s", count, (LPCSTR)list->GetAt(0)->GetName(),
                          (LPCSTR)list->GetAt(count - 1)->GetName());
        return m_report.Step("countries", count >= 250, result);
    }

    bool Lookups()
    {
        constexpr WORD kKosovo = 983;
        constexpr WORD kBahamas = 44;
        CString name;
        CString code;
        UINT prefix = 0;
        const BOOL found = GetCountryNameFromCode(kKosovo, name) && GetCountryPrefix(kBahamas, prefix);
        GetCountryPhoneCode(kKosovo, code);
        CString result;
        result.Format("%s has code %s; the prefix of the Bahamas is %u", (LPCSTR)name, (LPCSTR)code, prefix);
        return m_report.Step("lookups", found && code == "383" && prefix == 1, result);
    }

    bool NoviceMode()
    {
        const int before = ZoGblGetRegNoviceMode();
        ZoGblSetRegNoviceMode(!before);
        const int after = ZoGblGetRegNoviceMode();
        ZoGblSetRegNoviceMode(before);
        CString result;
        result.Format("%d before, %d after, %d again", before, after, ZoGblGetRegNoviceMode());
        return m_report.Step("novice mode", after == !before && ZoGblGetRegNoviceMode() == before, result);
    }

    /// Writes a profile file entry by entry, and reads it as a whole.
    bool ProfileFile()
    {
        const CString path = m_folder + "\\tour.ini";
        CZoIniFile file;
        const RECT written = {1, 2, 3, 4};
        RECT read = {};
        DWORD mask = 0;
        const bool stored = file.SetFileName(path) == ZO_INI_SUCCESS && file.SetSection("Tour") == ZO_INI_SUCCESS &&
                            file.DoHexadecimal("Mask", FALSE, 0x2A, nullptr) == ZO_INI_SUCCESS &&
                            file.ZoIniFileRectangle("Place", FALSE, &written, nullptr) == ZO_INI_SUCCESS;
        const bool found = stored && file.DoHexadecimal("Mask", TRUE, 0, &mask) == ZO_INI_SUCCESS && mask == 0x2A &&
                           file.ZoIniFileRectangle("Place", TRUE, &written, &read) == ZO_INI_SUCCESS &&
                           ::EqualRect(&written, &read);
        CZoMemIniFile whole;
        CString text;
        CString place;
        const bool loaded = found && whole.LoadIniFile(path, nullptr) == ZO_INI_SUCCESS &&
                            whole.GetIniValue("Tour", "Mask", text) == ZO_INI_SUCCESS &&
                            whole.GetIniValue("Tour", "Place", place) == ZO_INI_SUCCESS;
        return m_report.Step("profile file", loaded, "Mask=" + text + ", Place=" + place);
    }

    /// Measures the folder that the tour has filled.
    bool MeasureFolder()
    {
        DWORD count = 0;
        DWORD bytes = 0;
        DWORD enumerated = 0;
        const bool measured =
            CZoGlobalDirectoryFunctions::GetFileCount(m_folder, count) == ERROR_SUCCESS &&
            CZoGlobalDirectoryFunctions::GetSpace(m_folder, bytes) == ERROR_SUCCESS &&
            CZoGlobalDirectoryFunctions::EnumerateFiles(&enumerated, m_folder, &CountFile) == ERROR_SUCCESS;
        CString result;
        result.Format("%lu files of %lu bytes in %s", count, bytes, (LPCSTR)m_folder);
        return m_report.Step("folder", measured && count > 0 && count == enumerated, result);
    }

    /// Adds a location, makes it the current one and reads that back.
    bool AddLocation()
    {
        CZoLocationItemList list;
        DWORD status = list.LoadAllItems();
        m_locationBefore = list.GetCurrentIndex();
        CZoLocationItem* location = list.GetNewLocation();
        CString result;
        if (status == ERROR_SUCCESS && location != nullptr) {
            m_location = location->m_dwIndex;
            location->m_csLocationName = "Main office";
            location->m_dwCountryIndex = location->m_dwAddressCountryIndex = kGermany;
            GetCountryPhoneCode(kGermany, location->m_csCountryCode);
            location->m_csAreaCityCode = "30";
            location->m_csInternationalAccess = "00";
            location->m_csLongDistancePrefix = "0";
            location->m_csLocalPrefix = "0,";
            location->m_csBlockCallerID = "*31#";
            location->m_csUserName = "Anna Muster";
            location->m_csCity = "Berlin";
            location->m_csaPhoneAreas.SetSize(ZO_PHONE_KINDS);
            location->m_csaPhoneNumbers.SetSize(ZO_PHONE_KINDS);
            location->m_csaPhoneAreas[ZO_PHONE_FAX] = "30";
            location->m_csaPhoneNumbers[ZO_PHONE_FAX] = "5550123";
            status = location->SaveByIndex();
            if (status == ERROR_SUCCESS)
                status = list.SetCurrentIndex(m_location);
            CZoLocationItem current(0);
            if (status == ERROR_SUCCESS)
                status = current.LoadCurrentLocation();
            result.Format("%08lu is %s, +%s %s; fax %s", current.m_dwIndex, (LPCSTR)current.m_csLocationName,
                          (LPCSTR)current.m_csCountryCode, (LPCSTR)current.m_csAreaCityCode,
                          status == ERROR_SUCCESS ? (LPCSTR)current.m_csaPhoneNumbers[ZO_PHONE_FAX] : "");
        }
        return m_report.Step("location", status == ERROR_SUCCESS && location != nullptr, result);
    }

    bool RemoveLocation()
    {
        CZoLocationRegistry registry;
        registry.SetCurrentIndex(m_locationBefore);
        const DWORD status = registry.DeleteIndex(m_location);
        return m_report.Step("location", status == ERROR_SUCCESS && !registry.DoesIndexExist(m_location),
                             "the record is gone");
    }

    /// Adds a mailbox and has the folder of its inbox made.
    bool AddMailBox()
    {
        CZoRegMailBoxes mailBoxes;
        BOOL done = mailBoxes.Load();
        while (mailBoxes.DoesNumberExist(m_mailBox))
            ++m_mailBox;
        m_mailBoxBefore = mailBoxes.GetUserDefault();
        mailBoxes.Add(m_mailBox, "Reception");
        done = done && mailBoxes.Write();
        CZoRegMailBoxes::SetUserDefault(m_mailBox);
        CString path;
        unsigned long exists = 0;
        if (done && CZoRegMailBoxes::GetMailBoxPath(m_mailBox, path, MAILBOXFOLDER_INBOX))
            CZoGlobalDirectoryFunctions::Exists(path, exists);
        return m_report.Step("mailbox", exists != 0, path);
    }

    bool RemoveMailBox()
    {
        CString path;
        CZoRegMailBoxes::GetMailBoxPath(m_mailBox, path, MAILBOXFOLDER_ROOT);
        CZoGlobalDirectoryFunctions::DeleteDirChain(path);
        CZoGlobalDirectoryFunctions::Delete(path.Left(path.ReverseFind('\\'))); // unless others have folders there
        CZoRegMailBoxes mailBoxes;
        const BOOL removed = mailBoxes.Load() && mailBoxes.Remove(m_mailBox) && mailBoxes.Write();
        if (mailBoxes.GetCount() > 0)
            CZoRegMailBoxes::SetUserDefault(m_mailBoxBefore);
        unsigned long exists = 1;
        CZoGlobalDirectoryFunctions::Exists(path, exists);
        return m_report.Step("mailbox", removed && exists == 0, "the record and its folders are gone");
    }

    bool OpenWindow()
    {
        m_frame = new MainFrame(true);
        AfxGetApp()->m_pMainWnd = m_frame;
        const BOOL created = m_frame->CreateFrame();
        CString title;
        if (created) {
            m_frame->ShowWindow(SW_SHOW);
            m_frame->UpdateWindow();
            m_frame->GetWindowText(title);
        } else {
            m_frame = nullptr; // a window that could not be completed took its object along
        }
        return m_report.Step("window", created, title);
    }

    bool OpenTrace()
    {
        CZoTrace::SetRegTraceLevel(CZoTrace::kImmediateLevel); // told to all windows, ours among them
        const bool opened = WaitUntil([this] { return !Trace().GetFileName().IsEmpty(); });
        return m_report.Step("trace", opened, Trace().GetFileName());
    }

    bool WriteTrace()
    {
        Trace().Output("%s has %d pages\r\n", "the Workbench", MainFrame::GetPageCount());
        Trace().OutputBlock("ATZ\r\nOK\r\n", 9);
        const CString text = ReadTrace();
        const int at = text.Find("the Workbench has");
        CString line = at < 0 ? CString("(nothing)") : text.Mid(at);
        line.Replace("\r\n", " | ");
        return m_report.Step("trace", line.Find("A  T  Z  0D 0A O  K  0D 0A") > 0, line);
    }

    /// Starts another Workbench and changes the level here: it must arrive there, and be told in the file that both
    /// share.
    bool SecondProcess()
    {
        Program second;
        if (!second.Start("ZoWorkbench.exe", "/quiet") || !WaitUntil([this] { return Trace().GetOpenCount() == 2; }))
            return m_report.Step("second process", false, "it did not join the trace");
        constexpr WORD kOtherLevel = CZoTrace::kImmediateLevel + 2;
        CZoTrace::SetRegTraceLevel(kOtherLevel);
        CString told;
        told.Format("process %lu: level %d -> %d", second.GetId(), CZoTrace::kImmediateLevel, kOtherLevel);
        const bool arrived = WaitUntil([&] { return ReadTrace().Find(told) >= 0; });
        if (!m_report.Step("second process", arrived, told))
            return false;
        second.AskToClose();
        const int code = second.WaitForEnd();
        CString result;
        result.Format("ended with %d, the trace is open %lu time", code, Trace().GetOpenCount());
        return m_report.Step("second process", code == 0 && Trace().GetOpenCount() == 1, result);
    }

    LinePage& Lines() { return m_frame->GetLinePage(); }

    /// Lists the line devices and takes the port of the first one.
    bool TakeLine()
    {
        Lines().GetLine().m_bSilent = TRUE; // nobody is there to answer a box
        Lines().Refresh();
        const DWORD devices = Lines().GetLine().m_dwNumDevs;
        const auto getText = Simulated<DWORD WINAPI(DWORD, char*, DWORD)>("TelsimGetText");
        CString calls;
        if (getText != nullptr) {
            constexpr DWORD kCalls = 1; // the list of calls
            const DWORD size = getText(kCalls, nullptr, 0);
            getText(kCalls, calls.GetBuffer(static_cast<int>(size)), size);
            calls.ReleaseBuffer();
        }
        const auto asked = static_cast<DWORD>(calls.Replace("lineGetDevCaps(", ""));
        const BOOL taken = Lines().TakePort();
        CString result;
        result.Format("%lu devices, asked %lu times, port %s, error %lu", devices, asked, taken ? "taken" : "not taken",
                      Lines().GetLine().GetLastTAPIError());
        return m_report.Step("line", taken && (getText == nullptr || asked == devices), result);
    }

    /// A line that is refused, and one that the service closes, leave the next attempt alone.
    bool RefusedLine()
    {
        const auto configure = Simulated<BOOL WINAPI(DWORD, LPCSTR, LPCSTR)>("TelsimConfigureLine");
        const auto close = Simulated<BOOL WINAPI(DWORD)>("TelsimCloseLine");
        if (configure == nullptr || close == nullptr)
            return m_report.Step("refused", true, "not the simulated service: nobody refuses a line");
        const CZoTAPIInterface& line = Lines().GetLine();
        configure(line.m_dwDeviceID, "allocated", "1");
        const BOOL refused = !Lines().TakePort() && Lines().GetLine().GetLastTAPIError() == ZOTAPI_ERROR_ALLOCATED;
        configure(line.m_dwDeviceID, "allocated", "0");
        const bool closed = Lines().TakePort() && close(line.m_hLine) &&
                            WaitUntil([&] { return line.m_hComm == INVALID_HANDLE_VALUE; });
        const BOOL taken = Lines().TakePort();
        Lines().HangUp();
        CString result;
        result.Format("%s, %s, then %s", refused ? "refused" : "not refused", closed ? "closed" : "not closed",
                      taken ? "taken" : "not taken");
        return m_report.Step("refused", refused && closed && taken, result);
    }

    /// Sends a command to the modem and waits for its answer.
    bool Command(LPCSTR command, LPCSTR answer)
    {
        Lines().ForgetReceived();
        const bool answered =
            Lines().Send(CString(command) + "\r") && WaitUntil([&] { return Lines().GetReceived().Find(answer) >= 0; });
        CString text = Lines().GetReceived();
        text.Replace("\r", "");
        text.Replace("\n", " ");
        return m_report.Step("modem", answered, text);
    }

    bool TalkToModem() { return Command("ATZ", "OK") && Command("ATI3", "OK") && Command("ATD5550123", "CONNECT"); }

    /// The other side echoes: 64 KB must come back unchanged.
    bool Echo()
    {
        constexpr int kSize = 64 * 1024;
        CString sent;
        char* bytes = sent.GetBufferSetLength(kSize);
        for (int i = 0; i < kSize; ++i)
            bytes[i] = static_cast<char>('A' + (i + i / 26) % 26);
        Settle();
        Lines().ForgetReceived();
        bool whole = true;
        for (int at = 0; whole && at < kSize; at += 4096) {
            whole = Lines().Send(sent.Mid(at, 4096)) &&
                    WaitUntil([&] { return Lines().Receive() == 0 && Lines().GetReceived().GetLength() >= at + 4096; });
        }
        CString result;
        result.Format("%d bytes sent, %d came back%s", kSize, Lines().GetReceived().GetLength(),
                      Lines().GetReceived() == sent ? ", the same" : "");
        return m_report.Step("echo", whole && Lines().GetReceived() == sent, result);
    }

    bool HangUpLine()
    {
        Lines().HangUp();
        const bool released = Lines().GetLine().m_hComm == INVALID_HANDLE_VALUE && Lines().GetLine().m_hCall == 0;
        return m_report.Step("hang up", released, "the port is free again");
    }

    /// A control function of the simulated service; null when it is another.
    template <class FUNCTION> static FUNCTION* Simulated(LPCSTR name)
    {
        return reinterpret_cast<FUNCTION*>(
            reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandle("TAPI32.DLL"), name)));
    }

    /// The other side hangs up while the port is taken: the port goes by itself.
    bool RemoteHangUp()
    {
        const auto hangUp = Simulated<BOOL WINAPI(DWORD)>("TelsimHangUp");
        if (hangUp == nullptr)
            return m_report.Step("remote", true, "not the simulated service: nobody hangs up");
        const CZoTAPIInterface& line = Lines().GetLine();
        const bool gone = Lines().TakePort() && hangUp(line.m_hCall) &&
                          WaitUntil([&] { return line.m_hComm == INVALID_HANDLE_VALUE; });
        return m_report.Step("remote", gone && IsLogged("Remote Party Disconnected"),
                             gone ? "the other side hung up, the port is free again" : "the port is still taken");
    }

    bool IsLogged(LPCSTR text)
    {
        return WaitUntil([&] { return Lines().GetLog().Find(text) >= 0; });
    }

    /// Somebody calls, then somebody who withholds the number; both hang up.
    bool WatchForCalls()
    {
        const auto offer = Simulated<DWORD WINAPI(DWORD, LPCSTR, LPCSTR, DWORD)>("TelsimOfferCall");
        const auto hangUp = Simulated<BOOL WINAPI(DWORD)>("TelsimHangUp");
        if (offer == nullptr || hangUp == nullptr)
            return m_report.Step("answer", true, "not the simulated service: nobody calls");
        if (!Lines().Answer(TRUE))
            return m_report.Step("answer", false, "the line cannot be opened");
        const CZoTAPIInterface& line = Lines().GetLine();
        CString callers;
        bool told = true;
        for (const DWORD flags : {LINECALLPARTYID_ADDRESS | LINECALLPARTYID_NAME, LINECALLPARTYID_BLOCKED}) {
            const DWORD call = offer(line.m_dwDeviceID, "5550199", "Jane Doe", flags);
            told = told && WaitUntil([&] { return !line.m_strCallerID.IsEmpty(); });
            callers += line.m_strCallerID + ", " + line.m_strCallerName + "; ";
            hangUp(call);
            told = told && WaitUntil([&] { return line.m_dwCallState == LINECALLSTATE_IDLE; });
            Lines().GetLine().m_strCallerID.Empty();
        }
        told = told && IsLogged("Line Ringing.") && IsLogged("CallerID info changed!");
        Lines().Answer(FALSE);
        return m_report.Step("answer", told && callers == "5550199, Jane Doe; **BLOCKED**, **BLOCKED**; ", callers);
    }

    bool CloseTrace()
    {
        m_tracePath = Trace().GetFileName();
        CZoTrace::SetRegTraceLevel(0);
        const bool closed = WaitUntil([this] { return Trace().GetFileName().IsEmpty(); });
        const CString text = ReadTrace();
        const int at = text.Find(" - Stopped ");
        return m_report.Step("trace", closed && at > 0,
                             at > 0 ? text.Mid(at + 3, text.Find("\r\n", at) - at - 3) : CString("still open"));
    }

    CZoTrace& Trace() { return m_frame->GetTracePage().GetTrace(); }
    /// What the trace file holds of this start, as another program would read it.
    CString ReadTrace()
    {
        if (!Trace().GetFileName().IsEmpty())
            m_tracePath = Trace().GetFileName();
        CFile file(m_tracePath, CFile::modeRead | CFile::shareDenyNone);
        const int length = static_cast<int>(file.GetLength());
        CString text;
        file.Read(text.GetBuffer(length), static_cast<UINT>(length));
        text.ReleaseBuffer(length);
        int start = 0;
        for (int next = 0; (next = text.Find(" - Started ", next)) >= 0; ++next)
            start = next;
        return text.Mid(start);
    }

    bool Pictures(LPCSTR language)
    {
        static constexpr LPCSTR pages[MainFrame::GetPageCount()] = {"countries", "language", "trace",       "locations",
                                                                    "mailboxes", "lines",    "translation", "controls"};
        for (int page = 0; page < MainFrame::GetPageCount(); ++page) {
            m_frame->ShowPage(page);
            m_frame->UpdateWindow();
            Settle();
            const CString path = PicturePath(language, pages[page]);
            if (!m_report.Step("picture", SavePicture(m_frame->m_hWnd, path), path))
                return false;
        }
        const CString failed = PictureControls(*m_frame, PicturePath(language, "controls"));
        if (!m_report.Step("pictures of the controls", failed.IsEmpty(), failed))
            return false;
        const CString path = PicturePath(language, "about");
        PicturedDialog<CZoAboutDialog> about(path, ZO_IDI_WORKBENCH, m_frame);
        return m_report.Step("picture", about.DoModal() == IDOK && about.IsSaved(), path);
    }

    /// Translates what a line with code page 437 would send.
    bool TranslateText()
    {
        static constexpr char received[] = "Gr\x94\xE1"
                                           "e 20 \xF8"
                                           "C, \x9A"
                                           "bung\r\nsecond line\r\n";
        static constexpr char expected[] = "Gr\xF6\xDF"
                                           "e 20 \xB0"
                                           "C, \xDC"
                                           "bung";
        const CString from = m_folder + "\\cp437.txt";
        CFile file(from, CFile::modeCreate | CFile::modeWrite);
        file.Write(received, sizeof received - 1);
        file.Close();
        TranslationPage& page = m_frame->GetTranslationPage();
        const BOOL done = page.LoadTable(TranslationPage::TablesFolder() + "CP437.IOT") == ZO_TRANSLATE_SUCCESS &&
                          page.TranslateFile(from, m_folder + "\\cp1252.txt", true);
        CString line;
        AfxExtractSubString(line, page.GetTranslatedText(), 0, '\r');
        return m_report.Step("translation", done && line == expected, line);
    }

    /// Takes pictures of the chooser and of the editor's pages.
    bool PictureTables(LPCSTR language)
    {
        CGblTranslate& table = m_frame->GetTranslationPage().GetTable();
        table.SetLastInput(0x84); // among characters that the table changes
        const ModalPictures pictures(PicturePath(language, "table"));
        const bool done = table.Load(m_frame, TranslationPage::TablesFolder() + "*.IOT") == 0 &&
                          table.Edit(m_frame) == 0 && pictures.GetSaved() == 4;
        return m_report.Step("tables", done, PicturePath(language, "table"));
    }

    /// Makes a tools file, and starts the first tool from the menu: it reports what it was started with.
    bool StartTool()
    {
        CObArray items;
        CTlmItem report;
        report.SetDataMenuText("&Start report");
        report.SetDataProgramPath(ProgramPath("ZoStartReport.exe"));
        report.SetDataWorkingDirectory(m_folder);
        report.SetDataArguments("\"as the tour\" wants it");
        report.GetRecord().dwCreationFlags |= CREATE_NO_WINDOW;
        CTlmItem workbench;
        workbench.SetDataMenuText("Another &Workbench");
        workbench.SetDataProgramPath(ProgramPath("ZoWorkbench.exe"));
        const CString path = m_folder + "\\tour.tlm";
        items.Add(&report);
        items.Add(&workbench);
        if (CTlmFile().SaveFileData(path, ZO_TLM_FILE_VERSION, ZO_TLM_HEADER_SIZE, &items) != 0)
            return m_report.Step("tools", false, path + " could not be written");
        m_frame->GetTools().SetFile(path);
        const CString told = m_folder + "\\start.txt";
        ::DeleteFile(told);
        ::SetEnvironmentVariable("ZO_START_REPORT", told);
        m_frame->SendMessage(WM_COMMAND, ZO_TLM_FIRST_COMMAND);
        CString text;
        const bool reported = WaitUntil([&] { return !(text = ReadText(told)).IsEmpty(); });
        ::SetEnvironmentVariable("ZO_START_REPORT", nullptr);
        text = text.Mid((std::max)(0, text.Find("argument 1")));
        text.Replace("\r\n", ", ");
        return m_report.Step("tools", reported && text.Find("argument 1=as the tour, argument 2=wants") == 0, text);
    }

    static CString ProgramPath(LPCSTR name)
    {
        const CString own = ModulePath(nullptr);
        return own.Left(own.ReverseFind('\\') + 1) + name;
    }

    /// What a file holds; empty when it cannot be read yet.
    static CString ReadText(const CString& path)
    {
        CString text;
        CFile file;
        if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone))
            return text;
        const int length = static_cast<int>(file.GetLength());
        file.Read(text.GetBuffer(length), static_cast<UINT>(length));
        text.ReleaseBuffer(length);
        return text;
    }

    /// Takes pictures of the tools menu and of the editor's pages.
    bool PictureTools(LPCSTR language)
    {
        constexpr int kToolsMenu = 2;
        const MenuPicture menu(m_frame->m_hWnd, kToolsMenu, PicturePath(language, "tools-menu"));
        const ModalPictures pages(PicturePath(language, "tools"));
        m_frame->SendMessage(WM_COMMAND, ZO_ID_TOOLS_EDIT);
        return m_report.Step("tools", menu.IsSaved() && pages.GetSaved() == 4, PicturePath(language, "tools"));
    }

    /// Takes a picture of the choice of a new document's type, and gives the choice up.
    bool ChooseDocument(LPCSTR language)
    {
        const BOOL loaded = m_frame->GetDocuments().LoadTypes();
        const CString path = PicturePath(language, "new-document");
        PicturedDialog<CZoNewBrixelDocType> choice(path, AfxGetApp(), m_frame);
        const bool pictured = loaded && choice.DoModal() == IDOK && choice.IsSaved();
        return m_report.Step("document types", pictured, path);
    }

    /// Opens a document of each type, and tells the telephone's of two calls.
    bool OpenDocuments()
    {
        Documents& documents = m_frame->GetDocuments();
        const CString file = m_folder + "\\tour.ini"; // which the tour wrote before
        CString titles;
        CDocTemplate* telephone = nullptr; // the last type
        CDocument* calls = nullptr;
        POSITION position = AfxGetApp()->GetFirstDocTemplatePosition();
        for (INT_PTR i = 0; i < documents.GetTypeCount() && position != nullptr; ++i) {
            CDocTemplate* type = AfxGetApp()->GetNextDocTemplate(position);
            CString extension;
            type->GetDocString(extension, CDocTemplate::filterExt);
            CDocument* document = documents.Open(type, extension.IsEmpty() ? nullptr : (LPCSTR)file);
            if (document == nullptr)
                return m_report.Step("documents", false, "none of type " + titles);
            telephone = type;
            calls = document;
            titles += (titles.IsEmpty() ? "" : ", ") + document->GetTitle();
            for (int call = 0; call < 2; ++call)
                documents.GetModule(i)->ProcessNoviceCommand(ZO_ID_NOTE_CALL, document);
        }
        if (telephone == nullptr || documents.Open(telephone, nullptr) != calls) // of which there is one
            return m_report.Step("documents", false, "a second document of calls");
        return m_report.Step("documents", documents.GetTypeCount() == 3, titles);
    }

    /// The first document of the first type; null when there is none.
    static CDocument* FirstDocument()
    {
        POSITION position = AfxGetApp()->GetFirstDocTemplatePosition();
        const CDocTemplate* type = position != nullptr ? AfxGetApp()->GetNextDocTemplate(position) : nullptr;
        position = type != nullptr ? type->GetFirstDocPosition() : nullptr;
        return position != nullptr ? type->GetNextDoc(position) : nullptr;
    }
    /// The edit control in which a document is shown.
    static HWND EditorOf(const CDocument* document)
    {
        POSITION position = document != nullptr ? document->GetFirstViewPosition() : nullptr;
        return position != nullptr ? ::GetWindow(document->GetNextView(position)->m_hWnd, GW_CHILD) : nullptr;
    }

    /// Changes a document, saves it under another name, closes it and opens it again, all in the dialogs for files.
    bool SaveDocument()
    {
        static constexpr char kLine[] = "; Changed by the tour.\r\n";
        char path[MAX_PATH] = "";
        ::GetFullPathName(m_folder + "\\tour-document.txt", sizeof path, path, nullptr);
        ::DeleteFile(path); // of a tour before
        const CString picture = PicturePath("en", "file-dialog");
        const auto enter = [&](HWND dialog) {
            ::SetDlgItemText(dialog, ZO_IDC_FILE_NAME, path);
            Settle();
            const bool saved = SavePicture(dialog, picture);
            Press(dialog, IDOK);
            return saved;
        };
        CDocument* document = FirstDocument();
        ::SendMessage(EditorOf(document), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(kLine));
        bool done = document != nullptr && document->IsModified();
        if (done) {
            const WhenOpen save(ZO_IDC_FILE_NAME, enter);
            document->OnCmdMsg(ZO_ID_DOCUMENT_SAVE_AS, CN_COMMAND, nullptr, nullptr);
            done = save.IsDone() && !document->IsModified() && document->GetPathName() == path;
            document->OnCmdMsg(ZO_ID_DOCUMENT_CLOSE, CN_COMMAND, nullptr, nullptr);
        }
        if (done) {
            const WhenOpen open(ZO_IDC_FILE_NAME, enter);
            m_frame->GetDocuments().AskAndOpen();
            done = open.IsDone() && TextOf(EditorOf(FirstDocument())).Find(kLine) == 0;
        }
        return m_report.Step("save and open", done, path);
    }

    /// The language that not every system can show, or the one that is left.
    bool FifthLanguage()
    {
        const bool isJapanese = ::GetACP() == kJapaneseCodePage;
        const LPCSTR name = isJapanese ? "ja" : "es";
        return SwitchLanguage(isJapanese ? kJapanese : kSpanish, name) && Pictures(name) && PictureAll(name);
    }

    bool PictureAll(LPCSTR language)
    {
        const CString path = PicturePath(language, "dialog");
        const CString failed = PictureDialogs(*m_frame, path, m_folder);
        return m_report.Step("dialogs", failed.IsEmpty(), failed.IsEmpty() ? path : failed);
    }

    bool Print()
    {
        char path[MAX_PATH] = "";
        ::GetFullPathName(m_folder + "\\tour.prn", sizeof path, path, nullptr);
        const int pages = PrintDocument(m_frame->GetDocuments().GetShell(), path);
        CString result;
        result.Format("%d pages in %s", pages, path);
        return m_report.Step("print", pages > 0, result);
    }

    bool PickFolder()
    {
        char folder[MAX_PATH] = "";
        ::GetFullPathName(m_folder, sizeof folder, folder, nullptr);
        const CString picture = PicturePath("en", "folder-picker");
        const WhenOpen pick(ZO_IDC_FOLDER_TREE, [&](HWND dialog) {
            Settle();
            const bool saved = SavePicture(dialog, picture);
            Press(dialog, IDOK);
            return saved;
        });
        char chosen[MAX_PATH] = "";
        const int result =
            ZoSelectDirectory(chosen, sizeof chosen, m_frame->m_hWnd, folder, ZO_SELECT_KEEP_CASE, 0, nullptr, nullptr);
        return m_report.Step("pick a folder", result == IDOK && pick.IsDone() && ::lstrcmpi(folder, chosen) == 0,
                             chosen);
    }

    bool PictureDocuments(LPCSTR language)
    {
        const HWND shell = m_frame->GetDocuments().GetShell();
        ::SendMessage(::GetDlgItem(shell, AFX_IDW_PANE_FIRST), WM_MDITILE, MDITILE_HORIZONTAL, 0);
        ::ShowWindow(shell, SW_SHOW);
        ::SetForegroundWindow(shell);
        ::RedrawWindow(shell, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        Settle();
        const CString path = PicturePath(language, "documents");
        const bool saved = shell != nullptr && SavePicture(shell, path);
        ::ShowWindow(shell, SW_HIDE); // not in the other pictures
        return m_report.Step("picture", saved, path);
    }

    /// A second Workbench, with a dialog open, hears of the changes of language that follow.
    bool OpenSecondWorkbench()
    {
        const bool started = m_second.Start("ZoWorkbench.exe", "/quiet") &&
                             WaitUntil([this] { return m_second.FindMainWindow() != nullptr; }) &&
                             ::PostMessage(m_second.FindMainWindow(), WM_COMMAND, ZO_ID_APP_ABOUT, 0) &&
                             WaitUntil([this] { return m_second.FindDialog() != nullptr; });
        return m_report.Step("second process", started, TextOf(m_second.FindDialog()));
    }

    bool CloseSecondWorkbench()
    {
        ::PostMessage(m_second.FindDialog(), WM_COMMAND, IDOK, 0);
        WaitUntil([this] { return m_second.FindDialog() == nullptr; });
        m_second.AskToClose();
        CString result;
        const int code = m_second.WaitForEnd();
        result.Format("ended with %d", code);
        return m_report.Step("second process", code == 0, result);
    }

    /// Chooses a language in the dialog, as a person would: both processes must follow, with all that they show.
    bool SwitchLanguage(DWORD language, LPCSTR name)
    {
        const CString before = Text(ZO_IDS_PAGE_LANGUAGE);
        const CString titleBefore = TextOf(m_second.FindDialog());
        m_frame->GetCountryPage().GetPicker().SelectCountryIndex(kGermany);
        const CString picture = PicturePath(name, "choice");
        const WhenOpen driver(ZO_IDC_LANGUAGE_INSTALLED,
                              [&](HWND dialog) { return ChooseLanguage(dialog, language, picture); });
        m_frame->SendMessage(WM_COMMAND, ZO_ID_FILE_LANGUAGE);
        const bool chosen = driver.IsDone() && ZoGblGetLanguageLCID() == language;
        const bool here = WaitUntil([&] { return PageListText(m_frame->m_hWnd) == Text(ZO_IDS_PAGE_LANGUAGE); });
        const bool there = WaitUntil([&] {
            return PageListText(m_second.FindMainWindow()) == Text(ZO_IDS_PAGE_LANGUAGE) &&
                   m_second.FindDialog() != nullptr && TextOf(m_second.FindDialog()) != titleBefore;
        });
        const bool kept = m_frame->GetCountryPage().GetPicker().GetCountryIndex() == kGermany;
        CString result = before + " -> " + PageListText(m_frame->m_hWnd) + "; " +
                         PageListText(m_second.FindMainWindow()) + ", " + TextOf(m_second.FindDialog());
        if (!m_report.Step("switch", chosen && here && there && kept && Text(ZO_IDS_PAGE_LANGUAGE) != before, result))
            return false;
        const CString path = PicturePath(name, "second");
        return m_report.Step("picture", SavePictureOfSecond(path), path);
    }

    /// The windows of the other process, in front of all others and painted; afterwards this one's are in front again.
    bool SavePictureOfSecond(const CString& path)
    {
        BringToFront(m_second.FindMainWindow());
        BringToFront(m_second.FindDialog());
        const bool saved = SavePicture(m_second.FindMainWindow(), path);
        for (HWND window : {m_second.FindDialog(), m_second.FindMainWindow()})
            ::SetWindowPos(window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        BringToFront(m_frame->m_hWnd);
        return saved;
    }

    static void BringToFront(HWND window)
    {
        ::SetForegroundWindow(window);
        for (int i = 0; i < 20; ++i) { // other processes paint in their own time
            ::Sleep(10);
            Settle();
        }
    }

    static CString TextOf(HWND window)
    {
        char text[256] = "";
        ::SendMessage(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
        return text;
    }

    /// What the list of pages calls the page of the language, in whichever process.
    static CString PageListText(HWND frame)
    {
        // Wide, for narrow texts of another process's list box do not arrive under Wine.
        wchar_t text[256] = L"";
        ::SendMessageW(::FindWindowEx(frame, nullptr, "ListBox", nullptr), LB_GETTEXT, 1,
                       reinterpret_cast<LPARAM>(text));
        char narrow[256] = "";
        ::WideCharToMultiByte(CP_ACP, 0, text, -1, narrow, sizeof narrow, nullptr, nullptr);
        return narrow;
    }

    bool CloseWindow()
    {
        const HWND window = m_frame->m_hWnd;
        m_frame->DestroyWindow(); // deletes itself
        m_frame = nullptr;
        Settle();
        return m_report.Step("close", !::IsWindow(window), "the window is gone");
    }

    bool UnloadLanguage()
    {
        m_language.Unload();
        const BOOL dumped = ZoGblDumpLanguageDLL();
        return m_report.Step("unload", dumped && ZoGblGetLanguageDLL() == nullptr, "no language library is loaded");
    }

    CString PicturePath(LPCSTR language, LPCSTR what) const { return m_folder + "\\" + language + "-" + what + ".png"; }

    CString m_folder;
    Report m_report;
    CZoModuleLanguage m_language;
    CString m_tracePath;
    DWORD m_location = 0; // the record that the tour made
    DWORD m_locationBefore = ZO_NO_LOCATION;
    DWORD m_mailBox = 1; // this too
    DWORD m_mailBoxBefore = 0;
    MainFrame* m_frame = nullptr;
    Program m_second;
};

} // namespace

int RunTour(LPCSTR folder)
{
    try {
        Tour tour(folder);
        const bool succeeded = tour.Run();
        tour.Close(succeeded);
        return succeeded ? 0 : 1;
    } catch (CException* e) { // nobody sits in front of a tour to read a message box
        char reason[256] = "no memory";
        e->GetErrorMessage(reason, sizeof reason);
        e->Delete();
        CString line;
        line.Format("the tour cannot write to %s: %s\r\n", folder, reason);
        DWORD written = 0;
        ::WriteFile(::GetStdHandle(STD_ERROR_HANDLE), (LPCSTR)line, static_cast<DWORD>(line.GetLength()), &written,
                    nullptr);
        return 1;
    }
}
