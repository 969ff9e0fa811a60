#include "printer_settings.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>

namespace {

/// Global memory, kept in its place.
class LockedMemory {
public:
    explicit LockedMemory(HGLOBAL memory)
        : m_memory(memory), m_bytes(memory != nullptr ? static_cast<BYTE*>(::GlobalLock(memory)) : nullptr)
    {
    }
    ~LockedMemory()
    {
        if (m_bytes != nullptr)
            ::GlobalUnlock(m_memory);
    }
    LockedMemory(const LockedMemory&) = delete;
    LockedMemory& operator=(const LockedMemory&) = delete;
    BYTE* Get() const { return m_bytes; }
    size_t Size() const { return m_bytes != nullptr ? ::GlobalSize(m_memory) : 0; }

private:
    HGLOBAL m_memory;
    BYTE* m_bytes;
};

#define ZO_END_OF(field) (offsetof(DEVMODEA, field) + sizeof(DEVMODEA::field))

} // namespace

// Settings ------------------------------------------------------------------------------------------------------------

BOOL PrinterSettings::Take(const void* bytes, size_t size)
{
    const auto* mode = static_cast<const DEVMODEA*>(bytes);
    if (mode == nullptr || size < ZO_END_OF(dmFields) || mode->dmSize < ZO_END_OF(dmFields))
        return FALSE;
    const size_t whole = static_cast<size_t>(mode->dmSize) + mode->dmDriverExtra;
    if (whole > size)
        return FALSE;
    const auto* first = static_cast<const BYTE*>(bytes);
    m_bytes = std::vector<BYTE>(first, first + whole);
    return TRUE;
}

BOOL PrinterSettings::TakeMemory(HGLOBAL memory)
{
    const LockedMemory locked(memory);
    return Take(locked.Get(), locked.Size());
}

CString PrinterSettings::Device() const
{
    const auto* name = reinterpret_cast<const char*>(m_bytes.data());
    return m_bytes.empty() ? CString() : CString(name, static_cast<int>(strnlen(name, CCHDEVICENAME)));
}

bool PrinterSettings::IsLike(const PrinterSettings& other) const
{
    const DEVMODEA *mode = Get(), *others = other.Get();
    return mode != nullptr && others != nullptr && mode->dmSpecVersion == others->dmSpecVersion &&
           mode->dmDriverVersion == others->dmDriverVersion && mode->dmSize == others->dmSize &&
           mode->dmDriverExtra == others->dmDriverExtra;
}

/// Whether a field is told. The settings of older drivers end before the later ones.
bool PrinterSettings::Has(size_t end, DWORD field) const
{
    return !m_bytes.empty() && Get()->dmSize >= end && (field == 0 || (Get()->dmFields & field) != 0);
}

int PrinterSettings::GetCopies() const
{
    return Has(ZO_END_OF(dmCopies), DM_COPIES) ? (std::max)(1, static_cast<int>(Get()->dmCopies)) : 1;
}

bool PrinterSettings::IsCollated() const
{
    return Has(ZO_END_OF(dmCollate), DM_COLLATE) && Get()->dmCollate == DMCOLLATE_TRUE;
}

BOOL PrinterSettings::SetCopies(int copies, bool isCollated)
{
    if (!Has(ZO_END_OF(dmCopies), 0) || (isCollated && !Has(ZO_END_OF(dmCollate), 0)))
        return FALSE;
    Mode()->dmFields |= DM_COPIES;
    Mode()->dmCopies = static_cast<short>(copies);
    if (Has(ZO_END_OF(dmCollate), 0)) {
        Mode()->dmFields |= DM_COLLATE;
        Mode()->dmCollate = isCollated ? DMCOLLATE_TRUE : DMCOLLATE_FALSE;
    }
    return TRUE;
}

HGLOBAL CopyToMemory(const PrinterSettings& settings)
{
    const HGLOBAL memory = settings.Size() != 0 ? ::GlobalAlloc(GHND, settings.Size()) : nullptr;
    const LockedMemory locked(memory);
    if (locked.Get() != nullptr)
        std::memcpy(locked.Get(), settings.Get(), settings.Size());
    return memory;
}

// Names ---------------------------------------------------------------------------------------------------------------

BOOL TakeNames(HGLOBAL memory, PrinterNames& names)
{
    const LockedMemory locked(memory);
    if (locked.Size() < sizeof(DEVNAMES))
        return FALSE;
    DEVNAMES offsets;
    std::memcpy(&offsets, locked.Get(), sizeof offsets);
    PrinterNames taken;
    const std::pair<size_t, CString&> kTexts[] = {{offsets.wDriverOffset, taken.driver},
                                                  {offsets.wDeviceOffset, taken.device},
                                                  {offsets.wOutputOffset, taken.port}};
    for (const auto& [offset, text] : kTexts) {
        if (offset < sizeof offsets || offset >= locked.Size())
            return FALSE;
        const size_t most = locked.Size() - offset;
        const char* const first = reinterpret_cast<const char*>(locked.Get()) + offset;
        const size_t length = strnlen(first, most);
        if (length == most)
            return FALSE;
        text = CString(first, static_cast<int>(length));
    }
    if (taken.device.IsEmpty())
        return FALSE;
    names = taken;
    return TRUE;
}

HGLOBAL CopyToMemory(const PrinterNames& names, bool isDefault)
{
    constexpr size_t kMost = 0xFFFF; // an offset has 16 bits
    const size_t driver = sizeof(DEVNAMES);
    const size_t device = driver + static_cast<size_t>(names.driver.GetLength()) + 1;
    const size_t port = device + static_cast<size_t>(names.device.GetLength()) + 1;
    const size_t end = port + static_cast<size_t>(names.port.GetLength()) + 1;
    const HGLOBAL memory = end <= kMost ? ::GlobalAlloc(GHND, end) : nullptr;
    const LockedMemory locked(memory);
    if (locked.Get() == nullptr)
        return nullptr;
    const DEVNAMES offsets = {static_cast<WORD>(driver), static_cast<WORD>(device), static_cast<WORD>(port),
                              static_cast<WORD>(isDefault ? DN_DEFAULTPRN : 0)};
    std::memcpy(locked.Get(), &offsets, sizeof offsets);
    std::memcpy(locked.Get() + driver, names.driver, device - driver);
    std::memcpy(locked.Get() + device, names.device, port - device);
    std::memcpy(locked.Get() + port, names.port, end - port);
    return memory;
}
