#include "product.h"

#include "../../zogbl/resources/version_block.h"

#include <memory>
#include <new>

// The class library derives the same keys, but only for products that have a user already; the first one is made here.
bool Product::Read(LPCSTR path)
{
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeA(path, &ignored);
    const std::unique_ptr<char[]> data(
        size != 0 && size <= kMostVersionData ? new (std::nothrow) char[VersionBlockSize(size)]() : nullptr);
    if (!data || !GetFileVersionInfoA(path, 0, size, data.get()) || !MendVersionBlock(data.get(), size))
        return false;

    const void* found = nullptr;
    UINT length = 0;
    if (!QueryVersionBlock(data.get(), size, "\\", found, length) || length < sizeof(VS_FIXEDFILEINFO))
        return false;
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    version.Format("%d.%d", HIWORD(fixed->dwProductVersionMS), LOWORD(fixed->dwProductVersionMS));

    if (!QueryVersionBlock(data.get(), size, "\\VarFileInfo\\Translation", found, length) || length < sizeof(DWORD))
        return false;
    const DWORD translation = *static_cast<const DWORD*>(found);
    const auto text = [&](LPCSTR what) -> CString {
        CString query;
        query.Format("\\StringFileInfo\\%04X%04X\\%s", LOWORD(translation), HIWORD(translation), what);
        if (!QueryVersionBlock(data.get(), size, query, found, length))
            return {};
        const auto* value = static_cast<const char*>(found);
        return {value, static_cast<int>(strnlen(value, length))};
    };
    const CString company = text("CompanyName");
    const CString product = text("ProductName");
    const CString productVersion = text("ProductVersion");
    if (company.IsEmpty() || product.IsEmpty() || productVersion.IsEmpty())
        return false;
    root = "Software\\" + company + "\\" + product + "\\" + productVersion;
    name = product + " " + productVersion;
    internalName = text("InternalName");
    folder = CString(path);
    folder = folder.Left(folder.ReverseFind('\\'));
    return true;
}
