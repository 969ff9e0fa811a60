// The tour's steps without a window.
#include "tour_steps.h"

#include "registration.h"

#include <zogbl/country_code.h>
#include <zogbl/directory_functions.h>
#include <zogbl/location_item.h>
#include <zogbl/mailboxes.h>
#include <zogbl/mem_ini_file.h>
#include <zogbl/operating_system.h>
#include <zogbl/version_resource.h>

namespace {

CString ModulePath(HINSTANCE module)
{
    char path[MAX_PATH] = {};
    ::GetModuleFileName(module, path, sizeof path - 1);
    return path;
}

unsigned long __stdcall CountFile(void* context, const char*) { return ++*static_cast<DWORD*>(context); }

} // namespace

bool Tour::Register()
{
    const int code = RunProvision("--languages 0409,0407,040c,040a,0411 --current 0409");
    CZoVersionResource product;
    const BOOL found = product.ExtractVersionInfo();
    CString result;
    result.Format("exit code %d, %s", code, (LPCSTR)product.GetCurrentUserKey());
    return m_report.Step("register", code == 0 && found, result);
}

bool Tour::Library()
{
    static constexpr LPCSTR families[] = {"", "Win32s", "Windows NT", "Windows 95"};
    CString result;
    result.Format("%s on %s %lu.%lu", (LPCSTR)ModulePath(ZoGblGetInstanceHandle()),
                  families[CZoGlobalOperatingSystem::GetType()], CZoGlobalOperatingSystem::GetMajorVersion(),
                  CZoGlobalOperatingSystem::GetMinorVersion());
    return m_report.Step("library", ZoGblGetInstanceHandle() != nullptr, result);
}

bool Tour::LoadLanguage(DWORD expected)
{
    const BOOL loaded = ZoGblLoadLanguageDLL() && m_language.Load(AfxGetInstanceHandle());
    CString result;
    result.Format("%04lX from %s", ZoGblGetLanguageLCID(),
                  loaded ? (LPCSTR)ModulePath(ZoGblGetLanguageDLL()) : "nowhere");
    return m_report.Step("language", loaded && ZoGblGetLanguageLCID() == expected, result);
}

bool Tour::UnloadLanguage()
{
    m_language.Unload();
    const BOOL dumped = ZoGblDumpLanguageDLL();
    return m_report.Step("unload", dumped && ZoGblGetLanguageDLL() == nullptr, "no language library is loaded");
}

bool Tour::Countries()
{
    const CZoCountryCodeList* list = GetGlobalCountryList();
    const int count = list != nullptr ? list->GetCount() : 0;
    CString result;
    if (count > 0)
        result.Format("%d, from %s to %s", count, (LPCSTR)list->GetAt(0)->GetName(),
                      (LPCSTR)list->GetAt(count - 1)->GetName());
    return m_report.Step("countries", count >= 250, result);
}

bool Tour::Lookups()
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

bool Tour::NoviceMode()
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
bool Tour::ProfileFile()
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
bool Tour::MeasureFolder()
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
bool Tour::AddLocation()
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

bool Tour::RemoveLocation()
{
    CZoLocationRegistry registry;
    registry.SetCurrentIndex(m_locationBefore);
    const DWORD status = registry.DeleteIndex(m_location);
    return m_report.Step("location", status == ERROR_SUCCESS && !registry.DoesIndexExist(m_location),
                         "the record is gone");
}

/// Adds a mailbox and has the folder of its inbox made.
bool Tour::AddMailBox()
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

bool Tour::RemoveMailBox()
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
