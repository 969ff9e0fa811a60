/// \file
/// Raw data resources.
#pragma once

#include <zogbl/export.h>

#include <afx.h>

/// Codes of CZoCustomResource; 0 is success.
constexpr DWORD ZO_RESOURCE_NO_MODULE = 2;
constexpr DWORD ZO_RESOURCE_NO_NAME = 3; ///< neither a name nor a number
constexpr DWORD ZO_RESOURCE_NOT_FOUND = 4;
constexpr DWORD ZO_RESOURCE_LOAD_FAILED = 5;
constexpr DWORD ZO_RESOURCE_LOCK_FAILED = 6;
constexpr DWORD ZO_RESOURCE_NULL_NAME = 7;
constexpr DWORD ZO_RESOURCE_NAME_TOO_LONG = 8; ///< 31 characters or more
constexpr DWORD ZO_RESOURCE_ZERO_ID = 9;
constexpr DWORD ZO_RESOURCE_NULL_BUFFER = 10;
constexpr DWORD ZO_RESOURCE_BUFFER_TOO_SMALL = 11;

/// An RCDATA resource of a module. The data belongs to the module and stays valid while the module is loaded.
class ZOGBL_API CZoCustomResource : public CObject {
public:
    CZoCustomResource();
    ~CZoCustomResource() override;

    /// Loads a resource in place of the one loaded before. After a failure the object has no data; it keeps a valid
    /// name or number, except after ZO_RESOURCE_LOCK_FAILED. \return 0 or a ZO_RESOURCE_ code
    /// \param id 1 to 65535; above that it is not found. A literal 0 does not compile: it could also be a null name
    virtual DWORD LoadCustomResource(HINSTANCE module, UINT id);
    /// \param name at most 30 characters
    virtual DWORD LoadCustomResource(HINSTANCE module, const char* name);
    /// Forgets the resource, its name and its number. \return 0
    virtual DWORD FreeCustomResource();
    /// \param size of \p buffer, at least 31. \return 0, ZO_RESOURCE_NULL_BUFFER or ZO_RESOURCE_BUFFER_TOO_SMALL
    virtual DWORD GetResourceName(char* buffer, DWORD size);
    virtual UINT GetResourceID();    ///< 0 if loaded by name
    virtual void* GetResourceData(); ///< null if nothing is loaded
    virtual DWORD GetResourceSize(); ///< in bytes

private:
    DWORD Load(HINSTANCE module);

    static constexpr size_t kMaxNameLength = 30;

    char m_szName[32];
    UINT m_nID;
    HINSTANCE m_hModule;
    void* m_lpData;
    DWORD m_dwSize;
    HRSRC m_hResource;
    HGLOBAL m_hLoaded;
};
