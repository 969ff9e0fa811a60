// Records that the service fills.
#include "tapi_records.h"

#include "tapi_binding.h"

#include <algorithm>

namespace {

// No record of the service comes near either; they end what a service asks for without end.
constexpr DWORD kLargestRecord = 0x100000; // bytes
constexpr int kMostGrowths = 16;

constexpr DWORD kHighestVersion = 0x10000000; // any: services have come to know this value
constexpr char kDeviceClass[] = "comm";

/// Clears what lies behind the used part of a record, so that fields that a short one lacks are zero, as are texts. A
/// record that claims to use more than there is tells nothing.
template <class RECORD> void ClearUnused(RECORD* record, DWORD totalSize)
{
    constexpr DWORD kSizeFields = offsetof(RECORD, dwUsedSize) + sizeof(DWORD);
    record->dwTotalSize = totalSize;
    if (record->dwUsedSize < kSizeFields || record->dwUsedSize > totalSize)
        record->dwUsedSize = kSizeFields;
    std::memset(reinterpret_cast<char*>(record) + record->dwUsedSize, 0, totalSize - record->dwUsedSize);
}

} // namespace

void* CZoTAPIInterface::ZoCheckAndReAllocBuffer(void* p, UINT size, const char* label)
{
    if (p != nullptr) {
        const size_t present = LocalSize(p);
        if (present == 0) {
            OutputDebugStringA(label);
            return nullptr;
        }
        if (present >= size) {
            std::memset(p, 0, present);
            const auto total = static_cast<DWORD>(present);
            if (present >= sizeof total)
                std::memcpy(p, &total, sizeof total);
            return p;
        }
        OutputDebugStringA(label);
        OutputDebugStringA("Reallocating structure\n");
        LocalFree(p);
    }
    void* block = LocalAlloc(LPTR, size);
    if (block == nullptr) {
        OutputDebugStringA(label);
        HandleNoMem();
        return nullptr;
    }
    if (size >= sizeof size)
        std::memcpy(block, &size, sizeof size);
    return block;
}

/// \param call asks the service to fill the record, and returns its result.
template <class RECORD, class CALL>
RECORD* CZoTAPIInterface::FillRecord(RECORD* p, UINT firstSize, const char* label, CALL call)
{
    UINT size = firstSize;
    for (int growths = 0; growths <= kMostGrowths && size <= kLargestRecord; ++growths) {
        LocalPointer<RECORD> record(static_cast<RECORD*>(ZoCheckAndReAllocBuffer(p, size, label)));
        if (record == nullptr)
            return nullptr;
        const DWORD total = record->dwTotalSize;
        LONG result;
        do {
            record->dwTotalSize = total;
            result = call(record.get());
            if (!HandleLineErr(result))
                return nullptr;
        } while (result != 0);
        if (record->dwNeededSize <= total) {
            ClearUnused(record.get(), total);
            return record.release();
        }
        size = record->dwNeededSize;
        p = record.release();
    }
    LocalFree(p);
    HandleNoMem();
    return nullptr;
}

DWORD CZoTAPIInterface::ZolineNegotiateAPIVersion(DWORD dwDeviceID)
{
    for (;;) {
        DWORD version = 0;
        LINEEXTENSIONID extension = {};
        const LONG result = tapi::lineNegotiateAPIVersion(m_hLineApp, dwDeviceID, tapi::kVersion, kHighestVersion,
                                                          &version, &extension);
        if (result == static_cast<LONG>(LINEERR_INCOMPATIBLEAPIVERSION)) {
            OutputDebugStringA("lineNegotiateAPIVersion, INCOMPATIBLEAPIVERSION.\n");
            return 0;
        }
        if (!HandleLineErr(result))
            return 0;
        if (result == 0)
            return version;
    }
}

LINEDEVCAPS* CZoTAPIInterface::ZolineGetDevCaps(LINEDEVCAPS* p, DWORD dwDeviceID, DWORD dwAPIVersion)
{
    return FillRecord(p, 1264, "lineGetDevCaps", [=, this](LINEDEVCAPS* record) {
        return tapi::lineGetDevCaps(m_hLineApp, dwDeviceID, dwAPIVersion, 0, record);
    });
}

LINEADDRESSSTATUS* CZoTAPIInterface::ZolineGetAddressStatus(LINEADDRESSSTATUS* p, HLINE hLine, DWORD dwAddressID)
{
    return FillRecord(p, 1088, "lineGetAddressStatus", [=](LINEADDRESSSTATUS* record) {
        return tapi::lineGetAddressStatus(hLine, dwAddressID, record);
    });
}

LINECALLSTATUS* CZoTAPIInterface::ZolineGetCallStatus(LINECALLSTATUS* p, HCALL hCall)
{
    return FillRecord(p, 1060, "lineGetCallStatus",
                      [=](LINECALLSTATUS* record) { return tapi::lineGetCallStatus(hCall, record); });
}

LINECALLINFO* CZoTAPIInterface::ZolineGetCallInfo(LINECALLINFO* p, HCALL hCall)
{
    return FillRecord(p, 1320, "lineGetCallInfo",
                      [=](LINECALLINFO* record) { return tapi::lineGetCallInfo(hCall, record); });
}

LINETRANSLATEOUTPUT* CZoTAPIInterface::ZolineTranslateAddress(LINETRANSLATEOUTPUT* p, DWORD dwDeviceID,
                                                              DWORD dwAPIVersion, DWORD dwTranslateOptions,
                                                              const char* pszAddress)
{
    return FillRecord(p, 1064, "lineTranslateOutput", [=, this](LINETRANSLATEOUTPUT* record) {
        const LONG result =
            tapi::lineTranslateAddress(m_hLineApp, dwDeviceID, dwAPIVersion, pszAddress, 0,
                                       dwTranslateOptions | LINETRANSLATEOPTION_CANCELCALLWAITING, record);
        // For the user to see. The caller finds the code of an unhandled error, which it becomes next.
        if (result == static_cast<LONG>(LINEERR_INVALADDRESS))
            RecordError(ZOTAPI_ERROR_INVALADDRESS);
        return result;
    });
}

LINEADDRESSCAPS* CZoTAPIInterface::ZolineGetAddressCaps(LINEADDRESSCAPS* p, DWORD dwDeviceID, DWORD dwAddressID,
                                                        DWORD dwAPIVersion, DWORD dwExtVersion)
{
    return FillRecord(p, 1204, "lineGetAddressCaps", [=, this](LINEADDRESSCAPS* record) {
        return tapi::lineGetAddressCaps(m_hLineApp, dwDeviceID, dwAddressID, dwAPIVersion, dwExtVersion, record);
    });
}

VARSTRING* CZoTAPIInterface::GetPortHandle()
{
    return FillRecord<VARSTRING>(nullptr, 1048, "lineGetID: ", [this](VARSTRING* record) {
        return tapi::lineGetID(0, 0, m_hCall, LINECALLSELECT_CALL, record, "comm/datamodem");
    });
}

VARSTRING* CZoTAPIInterface::GetDeviceConfig(DWORD dwDeviceID)
{
    return FillRecord<VARSTRING>(nullptr, sizeof(VARSTRING),
                                 "PreConfigureDevice - lineGetDevConfig: ", [=](VARSTRING* record) {
                                     return tapi::lineGetDevConfig(dwDeviceID, record, kDeviceClass);
                                 });
}

VARSTRING* CZoTAPIInterface::EditDeviceConfig(HWND hOwner, DWORD dwDeviceID)
{
    const UINT firstSize = (m_dwDevConfigSize + 1000) * 5;
    return FillRecord<VARSTRING>(
        nullptr, firstSize, "PreConfigureDevice - lineConfigDialogEdit: ", [=, this](VARSTRING* record) {
            const DWORD total = record->dwTotalSize;
            const LONG result =
                tapi::lineConfigDialogEdit(dwDeviceID, hOwner, kDeviceClass, m_lpDevConfig, m_dwDevConfigSize, record);
            if (result == 0 && record->dwNeededSize > total) {
                OutputDebugStringA("Internal Error: Unable to set line configuration.\n");
                // Ample, for each attempt shows the user the dialog again.
                record->dwNeededSize = (std::min)(record->dwNeededSize, kLargestRecord) * 2;
            }
            return result;
        });
}
