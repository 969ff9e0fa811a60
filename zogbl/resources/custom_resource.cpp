#include <zogbl/custom_resource.h>

#include <cstring>

CZoCustomResource::CZoCustomResource()
    : m_szName{}, m_nID(0), m_hModule(nullptr), m_lpData(nullptr), m_dwSize(0), m_hResource(nullptr), m_hLoaded(nullptr)
{
}

CZoCustomResource::~CZoCustomResource() { CZoCustomResource::FreeCustomResource(); }

DWORD CZoCustomResource::FreeCustomResource()
{
    std::memset(m_szName, 0, sizeof m_szName);
    m_nID = 0;
    m_hModule = nullptr;
    m_lpData = nullptr;
    m_dwSize = 0;
    m_hResource = nullptr;
    m_hLoaded = nullptr;
    return ERROR_SUCCESS;
}

DWORD CZoCustomResource::LoadCustomResource(HINSTANCE module, UINT id)
{
    FreeCustomResource();
    if (id == 0)
        return ZO_RESOURCE_ZERO_ID;
    m_nID = id;
    return id <= 0xFFFF ? Load(module) : ZO_RESOURCE_NOT_FOUND; // numbers of resources have 16 bits
}

DWORD CZoCustomResource::LoadCustomResource(HINSTANCE module, const char* name)
{
    FreeCustomResource();
    if (name == nullptr)
        return ZO_RESOURCE_NULL_NAME;
    const size_t length = strnlen(name, kMaxNameLength + 1);
    if (length > kMaxNameLength)
        return ZO_RESOURCE_NAME_TOO_LONG;
    std::memcpy(m_szName, name, length);
    return Load(module);
}

DWORD CZoCustomResource::Load(HINSTANCE module)
{
    if (module == nullptr)
        return ZO_RESOURCE_NO_MODULE;
    if (m_nID == 0 && m_szName[0] == '\0')
        return ZO_RESOURCE_NO_NAME;
    m_hResource = FindResourceA(module, m_nID != 0 ? MAKEINTRESOURCEA(m_nID) : m_szName, RT_RCDATA);
    if (m_hResource == nullptr)
        return ZO_RESOURCE_NOT_FOUND;
    m_dwSize = SizeofResource(module, m_hResource);
    m_hLoaded = LoadResource(module, m_hResource);
    if (m_hLoaded == nullptr) {
        m_dwSize = 0;
        m_hResource = nullptr;
        return ZO_RESOURCE_LOAD_FAILED;
    }
    m_lpData = LockResource(m_hLoaded);
    if (m_lpData == nullptr) {
        FreeCustomResource();
        return ZO_RESOURCE_LOCK_FAILED;
    }
    m_hModule = module;
    return ERROR_SUCCESS;
}

DWORD CZoCustomResource::GetResourceName(char* buffer, DWORD size)
{
    if (buffer == nullptr)
        return ZO_RESOURCE_NULL_BUFFER;
    if (size < kMaxNameLength + 1)
        return ZO_RESOURCE_BUFFER_TOO_SMALL;
    std::memcpy(buffer, m_szName, std::strlen(m_szName) + 1);
    return ERROR_SUCCESS;
}

UINT CZoCustomResource::GetResourceID() { return m_nID; }
void* CZoCustomResource::GetResourceData() { return m_lpData; }
DWORD CZoCustomResource::GetResourceSize() { return m_dwSize; }
