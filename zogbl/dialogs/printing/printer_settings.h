/// \file
/// What a printer is told (DEVMODE) and called (DEVNAMES), in the forms in which programs hand it around.
#pragma once

#include <afx.h>
#include <windows.h>

#include <vector>

/// A printer's settings: the system's part with the driver's own behind it, as long as the first one says.
class PrinterSettings {
public:
    /// \return FALSE, changing nothing: there is less than the lengths say, or the first part is too short to be one.
    /// Throws CMemoryException*.
    BOOL Take(const void* bytes, size_t size);
    BOOL TakeMemory(HGLOBAL memory); ///< the same with a block of global memory

    const DEVMODEA* Get() const
    {
        return m_bytes.empty() ? nullptr : reinterpret_cast<const DEVMODEA*>(m_bytes.data());
    }
    size_t Size() const { return m_bytes.size(); } ///< of both parts; 0: there are none

    /// The name in it, which is cut at 31 bytes. Throws CMemoryException*.
    CString Device() const;
    /// Whether both are of the same version of the same driver, so that the driver's parts are alike.
    bool IsLike(const PrinterSettings& other) const;

    int GetCopies() const; ///< at least 1
    bool IsCollated() const;
    /// \return FALSE: these settings have no place for it
    BOOL SetCopies(int copies, bool isCollated);

private:
    DEVMODEA* Mode() { return reinterpret_cast<DEVMODEA*>(m_bytes.data()); }
    bool Has(size_t end, DWORD field) const;

    std::vector<BYTE> m_bytes;
};

struct PrinterNames {
    CString driver;
    CString device; ///< the printer's name, whole
    CString port;
};

/// \return FALSE, changing nothing: an offset leads out of the block, a name does not end in it, or the device's is
/// empty. Throws CMemoryException*.
BOOL TakeNames(HGLOBAL memory, PrinterNames& names);

/// Blocks of global memory, the caller's from now on. \return null: no memory, or names too long for it
HGLOBAL CopyToMemory(const PrinterSettings& settings);
HGLOBAL CopyToMemory(const PrinterNames& names, bool isDefault);
