#include "invocation.h"

namespace telsim {

void Invocation::Begin(const std::string& arguments)
{
    m_rule = m_service.rules.Take(m_function);
    m_entry = m_service.AddCall(std::string(m_function) + "(" + arguments + ")");
    if (m_service.observer != nullptr)
        m_service.observer(m_function, m_service.observerContext);
}

LineConfiguration& Invocation::RequireDevice(DWORD device)
{
    Require(device < m_service.configuration.lines.size(), LINEERR_BADDEVICEID,
            Format("there is no device %lu", device));
    return m_service.configuration.lines[device];
}

void Invocation::RequireVersion(const App& app, DWORD device, DWORD version, DWORD extensionVersion)
{
    const auto negotiated = app.versions.find(device);
    Require(negotiated != app.versions.end(), LINEERR_INCOMPATIBLEAPIVERSION,
            Format("no version was negotiated for device %lu", device));
    Require(version == negotiated->second, LINEERR_INCOMPATIBLEAPIVERSION,
            Format("version %#lx is not the negotiated %#lx", version, negotiated->second));
    Require(extensionVersion == 0, LINEERR_INCOMPATIBLEEXTVERSION, "no extension was negotiated");
}

void Invocation::RequireWritable(void* memory, size_t size, const char* what)
{
    Require(!IsBadWritePtr(memory, size), LINEERR_INVALPOINTER, Format("%s cannot be written", what));
}

void Invocation::RequireReadable(const void* memory, size_t size, const char* what)
{
    Require(!IsBadReadPtr(memory, size), LINEERR_INVALPOINTER, Format("%s cannot be read", what));
}

void Invocation::RequireText(const char* text, const char* what)
{
    Require(text != nullptr && !IsBadStringPtrA(text, ~UINT_PTR{0}), LINEERR_INVALPOINTER,
            Format("%s is not a text", what));
}

void Invocation::Require(bool condition, DWORD code, const std::string& what)
{
    if (!condition)
        throw Refusal(code, what);
}

std::optional<LONG> Invocation::Overruled() const
{
    if (m_rule && m_rule->action == TELSIM_FAIL)
        return static_cast<LONG>(m_rule->value);
    if (m_rule && m_rule->action == TELSIM_PRETEND)
        return 0;
    return std::nullopt;
}

LONG Invocation::Request(HLINE line, std::function<LONG()> complete)
{
    if (m_rule && m_rule->action == TELSIM_FAIL)
        return static_cast<LONG>(m_rule->value);
    return m_service.StartRequest(line, m_rule ? &*m_rule : nullptr, std::move(complete));
}

void Invocation::End(LONG result)
{
    *m_entry += result < 0 ? Format(" = %#lx", static_cast<DWORD>(result)) : Format(" = %ld", result);
}

} // namespace telsim
