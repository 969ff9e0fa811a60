#include "user_settings.h"

#include <common/without_throwing.h>
#include <zogbl/global_config.h>
#include <zogbl/version_resource.h>

#include <cstring>

namespace {

constexpr DWORD kMode = ZO_MODE_LOCAL_MACHINE; // the users' keys are there

/// Calls \p operation with a key below the user's.
template <class OPERATION> DWORD WithKey(LPCSTR section, OPERATION operation)
{
    return ResultOr(DWORD{ERROR_NOT_ENOUGH_MEMORY}, [&]() -> DWORD {
        CZoVersionResource product;
        if (!product.ExtractVersionInfo())
            return ERROR_FILE_NOT_FOUND;
        return operation(product.GetCurrentUserKey() + "\\" + section);
    });
}

} // namespace

BOOL ReadSetting(LPCSTR section, LPCSTR name, CString& text)
{
    return WithKey(section, [&](const CString& key) {
               CString read;
               const DWORD status = CZoGlobalConfig().GetValue(kMode, key, name, read.GetBuffer(kMostSetting),
                                                               kMostSetting + 1, nullptr);
               read.ReleaseBuffer();
               if (status == ERROR_SUCCESS)
                   text = read;
               return status;
           }) == ERROR_SUCCESS;
}

DWORD KeepSetting(LPCSTR section, LPCSTR name, LPCSTR text)
{
    if (std::strlen(text) > kMostSetting)
        return ERROR_INVALID_PARAMETER;
    return WithKey(section, [&](const CString& key) { return CZoGlobalConfig().SetValue(kMode, key, name, text); });
}

DWORD ForgetSetting(LPCSTR section, LPCSTR name)
{
    return WithKey(section, [&](const CString& key) {
        const DWORD status = CZoGlobalConfig().DeleteEntry(kMode, key, name);
        return status == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_SUCCESS} : status;
    });
}

DWORD ListSettings(LPCSTR section, CStringArray& names)
{
    const auto add = [](void* context, LPCSTR name, const void*, DWORD) -> DWORD {
        return ResultOr(DWORD{ERROR_NOT_ENOUGH_MEMORY}, [&]() -> DWORD {
            static_cast<CStringArray*>(context)->Add(name);
            return ERROR_SUCCESS;
        });
    };
    const DWORD status =
        WithKey(section, [&](const CString& key) { return CZoGlobalConfig().EnumValues(kMode, key, add, &names); });
    return status == ERROR_FILE_NOT_FOUND ? DWORD{ERROR_SUCCESS} : status;
}
