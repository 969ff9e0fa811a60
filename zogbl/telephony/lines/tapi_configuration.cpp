// Devices and their configuration.
#include <zogbl/tapi_interface.h>

#include <common/without_throwing.h>

#include "tapi_records.h"

#include <cstdio>

namespace {

constexpr char kUnnamed[] = "Line Unnamed";
constexpr DWORD kRegKeyPosition = 8; // within what is specific to modems; two numbers stand before it

/// A text of the capabilities; empty when there is none, or it is in another format.
CString CapsText(const LINEDEVCAPS& caps, DWORD size, DWORD offset, DWORD position)
{
    if (caps.dwStringFormat != STRINGFORMAT_ASCII)
        return CString();
    RecordPart part = GetRecordPart(caps, offsetof(LINEDEVCAPS, dwLineFeatures), size, offset);
    if (part.size <= position)
        return CString();
    part = {part.bytes + position, part.size - position};
    return CString(part.bytes, static_cast<int>(part.TextLength()));
}

void TellDebugger(DWORD device, const char* what, const CString& text)
{
    char line[1024];
    std::snprintf(line, sizeof line, "TAPI Device #%ld %s: %s\n", static_cast<long>(device), what,
                  static_cast<LPCSTR>(text));
    OutputDebugStringA(line);
}

} // namespace

void CZoTAPIInterface::PreConfigureDevice(HWND hOwner, DWORD dwDeviceID, BOOL bNoDialog)
{
    if (m_lpDevConfig == nullptr) {
        const LocalPointer<VARSTRING> config(GetDeviceConfig(dwDeviceID));
        if (config == nullptr || !StoreDeviceConfig(*config, "PreConfigureDevice - Allocate device config: "))
            return;
    }
    if (bNoDialog)
        return;
    const LocalPointer<VARSTRING> edited(EditDeviceConfig(hOwner, dwDeviceID));
    if (edited != nullptr)
        StoreDeviceConfig(*edited, "PreConfigureDevice - Reallocate device config: ");
}

/// Keeps a configuration in place of the one before, which stays when there is none to keep, or no memory for it.
BOOL CZoTAPIInterface::StoreDeviceConfig(const VARSTRING& config, const char* label)
{
    const RecordPart part = GetString(config);
    if (part.bytes == nullptr)
        return FALSE;
    BYTE* present = m_lpDevConfig;
    const UINT size = part.size + 1;
    const bool fits = present != nullptr && LocalSize(present) >= size;
    if (present != nullptr && !fits) {
        OutputDebugStringA(label);
        OutputDebugStringA("Reallocating structure\n");
    }
    auto* block = static_cast<BYTE*>(ZoCheckAndReAllocBuffer(fits ? present : nullptr, size, label));
    if (block == nullptr)
        return FALSE;
    if (!fits)
        LocalFree(present);
    std::memcpy(block, part.bytes, part.size);
    m_lpDevConfig = block;
    m_dwDevConfigSize = part.size;
    return TRUE;
}

DWORD CZoTAPIInterface::EnumerateTAPIDeviceLines(CStringArray* pNames, DWORD& dwError, CStringArray* pRegKeys)
{
    dwError = 0;
    if (m_hLineApp == 0 && !InitializeTAPI(nullptr)) {
        dwError = ZOTAPI_ENUM_FAILED;
        return 0;
    }
    DWORD count = 0;
    const INT_PTR keysBefore = pRegKeys != nullptr ? pRegKeys->GetSize() : 0;
    const BOOL complete = WithoutThrowing<CMemoryException>([&] {
        for (DWORD device = 0; device < m_dwNumDevs; ++device) { // which may change while boxes are up
            const DWORD version = ZolineNegotiateAPIVersion(device);
            const LocalPointer<LINEDEVCAPS> caps(version != 0 ? ZolineGetDevCaps(nullptr, device, version) : nullptr);
            if (caps == nullptr)
                continue;
            CString name = CapsText(*caps, caps->dwLineNameSize, caps->dwLineNameOffset, 0);
            if (name.IsEmpty())
                name = kUnnamed;
            else
                TellDebugger(device, "is", name);
            if (pRegKeys != nullptr) {
                const CString key =
                    CapsText(*caps, caps->dwDevSpecificSize, caps->dwDevSpecificOffset, kRegKeyPosition);
                if (!key.IsEmpty())
                    TellDebugger(device, "reg key is", key);
                pRegKeys->Add(key);
            }
            if (pNames != nullptr)
                pNames->Add(name);
            ++count;
        }
    });
    if (!complete) {
        if (pRegKeys != nullptr)
            pRegKeys->SetSize(keysBefore + static_cast<INT_PTR>(count)); // without one whose name found no room
        HandleNoMem();
        dwError = ZOTAPI_ENUM_FAILED;
    }
    return count;
}
