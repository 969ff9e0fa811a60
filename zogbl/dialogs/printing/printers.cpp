#include "printers.h"

#include <algorithm>
#include <utility>

namespace {

constexpr char kDevices[] = "devices"; // section of the profile: a line for each printer
constexpr DWORD kMostProfile = 0xFFFF;

/// An entry of the user's profile; all names of a section if \p key is null, each with a NUL.
CString ReadProfile(LPCSTR section, LPCSTR key)
{
    CString text;
    for (DWORD size = 1024; size <= kMostProfile; size = size * 2 - 1) {
        const LPSTR buffer = text.GetBuffer(static_cast<int>(size));
        const DWORD length = ::GetProfileString(section, key, "", buffer, size);
        text.ReleaseBuffer(static_cast<int>((std::min)(length, size - 1)));
        if (length + 2 < size)
            break;
    }
    return text;
}

/// Takes the first of several texts with commas between them.
CString TakeFirst(CString& list)
{
    const int comma = list.Find(',');
    const CString first = comma >= 0 ? list.Left(comma) : list;
    list = comma >= 0 ? list.Mid(comma + 1) : CString();
    return first;
}

/// The name that fits in settings.
CString ShortName(const Printer& printer) { return printer.names.device.Left(CCHDEVICENAME - 1); }

LPSTR Writable(const CString& text) { return const_cast<LPSTR>(static_cast<LPCSTR>(text)); } // it is only read

} // namespace

// The list ------------------------------------------------------------------------------------------------------------

void Printers::Find()
{
    std::vector<Printer> found;
    const CString devices = ReadProfile(kDevices, nullptr);
    for (int at = 0; at < devices.GetLength();) {
        const CString device = static_cast<LPCSTR>(devices) + at;
        at += device.GetLength() + 1;
        CString rest = ReadProfile(kDevices, device);
        if (device.IsEmpty() || rest.IsEmpty())
            continue;
        const int known = IndexOf(device);
        Printer& printer = found.emplace_back(known >= 0 ? (*this)[known] : Printer());
        printer.names.device = device;
        printer.names.driver = TakeFirst(rest);
        printer.names.port = TakeFirst(rest);
    }
    m_list.swap(found);
}

int Printers::IndexOf(LPCSTR device) const
{
    const auto found = std::find_if(m_list.begin(), m_list.end(),
                                    [=](const Printer& printer) { return printer.names.device == device; });
    return found != m_list.end() ? static_cast<int>(found - m_list.begin()) : -1;
}

int Printers::IndexOfDefault() const
{
    CString device = ReadProfile("windows", "device");
    return IndexOf(TakeFirst(device));
}

int Printers::IndexOf(const PrinterSettings& settings) const
{
    const CString name = settings.Device();
    int index = -1;
    for (size_t i = 0; i < m_list.size() && !name.IsEmpty(); ++i) {
        if (ShortName(m_list[i]) != name)
            continue;
        if (index >= 0)
            return -1;
        index = static_cast<int>(i);
    }
    return index;
}

// The spooler ---------------------------------------------------------------------------------------------------------

Printers::~Printers()
{
    if (m_library != nullptr)
        ::FreeLibrary(m_library);
}

template <class FUNCTION> FUNCTION* Printers::Bind(LPCSTR name)
{
    if (m_library == nullptr)
        m_library = ::LoadLibrary("winspool.drv");
    const FARPROC function = m_library != nullptr ? ::GetProcAddress(m_library, name) : nullptr;
    return reinterpret_cast<FUNCTION*>(reinterpret_cast<void*>(function));
}

/// A printer that is open to the spooler.
class Printers::Opened {
public:
    Opened(Printers& printers, const Printer& printer) : m_close(printers.Bind<decltype(ClosePrinter)>("ClosePrinter"))
    {
        const auto open = printers.Bind<decltype(OpenPrinterA)>("OpenPrinterA");
        if (open != nullptr && m_close != nullptr && !open(Writable(printer.names.device), &m_handle, nullptr))
            m_handle = nullptr;
    }
    ~Opened()
    {
        if (m_handle != nullptr)
            m_close(m_handle);
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    HANDLE Get() const { return m_handle; }

private:
    decltype(ClosePrinter)* const m_close;
    HANDLE m_handle = nullptr;
};

/// Hands settings to the driver and takes those that it answers with.
/// \param mode DM_ flags beside the buffers' \param from null: none are handed in
/// \param answer IDOK, IDCANCEL of the driver's dialog \return FALSE: it does not answer
BOOL Printers::Exchange(Printer& printer, HWND owner, DWORD mode, const PrinterSettings* from, PrinterSettings& to,
                        LONG& answer)
{
    const auto exchange = Bind<decltype(DocumentPropertiesA)>("DocumentPropertiesA");
    const Opened opened(*this, printer);
    if (exchange == nullptr || opened.Get() == nullptr)
        return FALSE;
    const LPSTR name = Writable(printer.names.device);
    const LONG size = exchange(owner, opened.Get(), name, nullptr, nullptr, 0);
    if (size <= 0)
        return FALSE;
    std::vector<BYTE> bytes(static_cast<size_t>(size));
    PrinterSettings given; // which the driver may write to
    if (from != nullptr)
        given = *from;
    const bool isGiven = given.Size() != 0;
    answer = exchange(owner, opened.Get(), name, reinterpret_cast<DEVMODEA*>(bytes.data()),
                      const_cast<DEVMODEA*>(given.Get()), mode | DM_OUT_BUFFER | (isGiven ? DM_IN_BUFFER : 0));
    return answer == IDCANCEL || (answer == IDOK && to.Take(bytes.data(), bytes.size()));
}

void Printers::Ask(Printer& printer)
{
    if (printer.isAsked)
        return;
    LONG answer = IDCANCEL;
    PrinterSettings own;
    printer.answers = Exchange(printer, nullptr, 0, nullptr, own, answer) && answer == IDOK;
    const CString name = printer.settings.Device();
    const bool isIts = !name.IsEmpty() && (name == own.Device() || name == ShortName(printer));
    if (!isIts)
        printer.settings = own;                                  // there are no others, or they are another printer's
    else if (printer.answers && !printer.settings.IsLike(own) && // of another version of the driver, which adapts it
             (!Exchange(printer, nullptr, 0, &printer.settings, printer.settings, answer) || answer != IDOK))
        printer.settings = own;
    const auto ask = printer.answers ? Bind<decltype(DeviceCapabilitiesA)>("DeviceCapabilitiesA") : nullptr;
    if (ask != nullptr) {
        const LPCSTR device = printer.names.device, port = printer.names.port;
        printer.mostCopies = (std::max)(1, static_cast<int>(ask(device, port, DC_COPIES, nullptr, nullptr)));
        printer.collates = ask(device, port, DC_COLLATE, nullptr, nullptr) == 1;
    }
    printer.isAsked = true;
}

INT_PTR Printers::ShowSetUp(Printer& printer, const PrinterSettings& settings, HWND owner)
{
    LONG answer = IDCANCEL;
    return Exchange(printer, owner, DM_IN_PROMPT, &settings, printer.settings, answer) ? answer : -1;
}
