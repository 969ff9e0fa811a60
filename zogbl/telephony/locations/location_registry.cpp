#include <zogbl/location_registry.h>

#include <common/without_throwing.h>
#include <zogbl/module.h>
#include <zogbl/version_resource.h>

#include "location_record.h"

#include <cstring>

namespace {

constexpr size_t kSubkeySize = 16;
constexpr int kSectionNameSize = 256;

/// The name of a record's subkey.
struct Subkey {
    explicit Subkey(DWORD index) { wsprintfA(name, "%08lu", index); }
    char name[kSubkeySize];
};

DWORD KnownKind(DWORD kind) { return kind < ZO_PHONE_KINDS ? kind : ZO_PHONE_HOME2; }

} // namespace

CZoLocationRegistry::CZoLocationRegistry()
    : CZoGblRegBase(ZO_MODE_CURRENT_USER), m_dwDataIndex(0), m_bLocationValid(FALSE)
{
    SetAccessMode(ZO_MODE_LOCAL_MACHINE);
    CZoLocationRegistry::LoadIndex(0);
}

CZoLocationRegistry::~CZoLocationRegistry() = default;

// Section -------------------------------------------------------------------------------------------------------------

BOOL CZoLocationRegistry::IsClassDataValid()
{
    m_bValid = CZoGblRegBase::IsClassDataValid() && m_bLocationValid;
    return m_bValid;
}

BOOL CZoLocationRegistry::LoadSection()
{
    m_bLocationValid = TRUE; // else the base would find the object invalid for what failed the last time
    if (CZoGblRegBase::LoadSection()) {
        CZoVersionResource product;
        char name[kSectionNameSize];
        m_bLocationValid = product.ExtractVersionInfo() &&
                           LoadStringA(ZoGblGetInstanceHandle(), ZO_IDS_REG_LOCATION, name, sizeof name) > 0;
        if (m_bLocationValid) {
            m_szSection[0] = '\0';
            m_bLocationValid =
                AppendToSection(product.GetCurrentUserKey()) && AppendToSection("\\") && AppendToSection(name);
        }
    }
    return IsClassDataValid();
}

BOOL CZoLocationRegistry::LoadIndex(DWORD index)
{
    if (!LoadSection())
        return FALSE;
    m_bLocationValid = AppendToSection("\\") && AppendToSection(Subkey(index).name);
    return IsClassDataValid();
}

/// \return false, the section unchanged, when there is no room: a key cut short would be another key.
bool CZoLocationRegistry::AppendToSection(LPCSTR text)
{
    const size_t used = std::strlen(m_szSection);
    const size_t length = std::strlen(text);
    if (used + length >= kSectionSize)
        return false;
    std::memcpy(m_szSection + used, text, length + 1);
    return true;
}

// Records -------------------------------------------------------------------------------------------------------------

DWORD CZoLocationRegistry::SetDataIndex(DWORD index)
{
    m_dwDataIndex = index;
    return LoadIndex(m_dwDataIndex) ? ERROR_SUCCESS : ZoErrObjectInvalid;
}

BOOL CZoLocationRegistry::DoesIndexExist(DWORD index)
{
    BOOL exists = FALSE;
    if (LoadIndex(index))
        DoesValueExist(ZO_IDS_REG_COUNTRY_CODE, exists);
    LoadIndex(m_dwDataIndex);
    return exists;
}

DWORD CZoLocationRegistry::DeleteIndex(DWORD index)
{
    const DWORD status = LoadSection() ? DeleteSection(Subkey(index).name) : ZoErrObjectInvalid;
    LoadIndex(m_dwDataIndex);
    return status;
}

DWORD CZoLocationRegistry::GetCurrentIndex(DWORD& index)
{
    LoadSection();
    const DWORD status = GetValue(ZO_IDS_REG_CURRENT_INDEX, index, ZO_NO_LOCATION);
    LoadIndex(m_dwDataIndex);
    return status;
}

DWORD CZoLocationRegistry::SetCurrentIndex(DWORD index)
{
    LoadSection();
    const DWORD status = SetValue(ZO_IDS_REG_CURRENT_INDEX, index);
    LoadIndex(m_dwDataIndex);
    return status;
}

// Values --------------------------------------------------------------------------------------------------------------

DWORD CZoLocationRegistry::GetIndex(UINT id, UINT& index)
{
    DWORD value = 0;
    const DWORD status = GetValue(id, value, 0);
    index = value;
    return status;
}

DWORD CZoLocationRegistry::GetString(UINT id, CString& text)
{
    text.Empty();
    char buffer[kLocationTextSize];
    const DWORD status = GetString(id, buffer, sizeof buffer, nullptr);
    if (status != ERROR_SUCCESS)
        return status;
    return WithoutThrowing([&] { text = buffer; }) ? ERROR_SUCCESS : ZoErrMemoryException;
}

UINT CZoLocationRegistry::GetAreaStringId(DWORD kind) { return ZO_IDS_REG_AREA_HOME1 + KnownKind(kind); }
UINT CZoLocationRegistry::GetNumberStringId(DWORD kind) { return ZO_IDS_REG_PHONE_HOME1 + KnownKind(kind); }
