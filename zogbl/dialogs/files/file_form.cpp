#include <zogbl/file_form.h>

#include <common/without_throwing.h>

#include "file_form_parts.h"
#include "ground/bounded_text.h"

CZoFileForm::CZoFileForm(CWnd& window, BOOL open, LPCSTR defaultExtension, LPCSTR fileName, DWORD flags, LPCSTR filter)
    : m_ofn{}, m_window(window), m_bOpen(open)
{
    if (fileName != nullptr && std::strlen(fileName) < sizeof m_szFile)
        CopyBounded(m_szFile, sizeof m_szFile, fileName);
    m_ofn.lStructSize = sizeof m_ofn;
    m_ofn.lpstrFilter = filter;
    m_ofn.nFilterIndex = 1;
    m_ofn.lpstrFile = m_szFile;
    m_ofn.nMaxFile = sizeof m_szFile;
    m_ofn.lpstrDefExt = defaultExtension;
    m_ofn.Flags = flags;
}

CZoFileForm::~CZoFileForm() = default;

CString CZoFileForm::GetPathName() const
{
    CString path;
    WithoutThrowing([&] { path = m_ofn.lpstrFile; });
    return path;
}

CString CZoFileForm::GetFileName() const
{
    CString name;
    WithoutThrowing([&] { name = NameOf(GetPathName()); });
    return name;
}

CString CZoFileForm::GetFileExt() const
{
    CString extension;
    WithoutThrowing([&] {
        const CString name = GetFileName();
        const int dot = name.ReverseFind('.');
        extension = dot >= 0 ? name.Mid(dot + 1) : CString();
    });
    return extension;
}

BOOL CZoFileForm::OnFileNameOK() { return FALSE; }

BOOL CZoFileForm::BeginForm()
{
    return WithoutThrowing([this] {
        m_parts = std::make_unique<FileFormParts>(*this);
        m_parts->Begin();
    });
}

BOOL CZoFileForm::TakeName()
{
    return m_parts != nullptr && WithoutThrowing([this] { return m_parts->TakeName(); });
}

BOOL CZoFileForm::IsNameUnchanged() const
{
    return m_parts == nullptr || ResultOr(FALSE, [this] { return m_parts->IsUnchanged(); });
}

BOOL CZoFileForm::HandleFormMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    return m_parts != nullptr &&
           WithoutThrowing([&] { return m_parts->HandleMessage(message, wParam, lParam, result); });
}

void CZoFileForm::ReloadFormTexts()
{
    if (m_parts != nullptr)
        WithoutThrowing([this] { m_parts->ReloadTexts(); });
}
