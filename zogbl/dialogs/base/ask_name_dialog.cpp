#include <zogbl/ask_name_dialog.h>

#include <common/double_byte.h>
#include <common/without_throwing.h>
#include <zogbl/resource_ids.h>

#include "dialog_resource.h"

#include <cstring>

namespace {

using Fault = CZoAskNameDialog::Fault;

constexpr UINT_PTR kPauseTimer = 1;
constexpr UINT kPause = 700; // milliseconds without a key
constexpr BYTE kFirstPrintable = 0x20;
constexpr char kNotInFiles[] = "\\/:*?\"<>|";

/// Whether the system keeps a file's name for a device: what follows a dot, and blanks before it, do not matter.
bool IsReserved(const CString& name)
{
    CString base = name.SpanExcluding(".");
    base.TrimRight(' ');
    for (const LPCSTR device : {"con", "prn", "aux", "nul", "clock$", "conin$", "conout$"}) {
        if (base.CompareNoCase(device) == 0)
            return true;
    }
    constexpr int kPortLength = 4; // "com1"
    const CString port = base.Left(kPortLength - 1);
    if (base.GetLength() != kPortLength || (port.CompareNoCase("com") != 0 && port.CompareNoCase("lpt") != 0))
        return false;
    WCHAR digit = 0;
    ::MultiByteToWideChar(CP_ACP, 0, base.GetString() + kPortLength - 1, 1, &digit, 1);
    return (digit >= '1' && digit <= '9') || digit == 0xB9 || digit == 0xB2 || digit == 0xB3; // also raised 1, 2, 3
}

/// Whether a name with this fault may become right if more is typed at its end.
bool CanBecomeRight(Fault fault, const CString& name)
{
    return fault == Fault::kEmpty || fault == Fault::kEnd || fault == Fault::kTaken ||
           (fault == Fault::kReserved && name.Find('.') < 0);
}

UINT ReasonOf(Fault fault)
{
    switch (fault) {
    case Fault::kEmpty:
        return ZO_IDS_NAME_EMPTY;
    case Fault::kTooLong:
        return ZO_IDS_NAME_TOO_LONG;
    case Fault::kCharacter:
        return ZO_IDS_NAME_CHARACTER;
    case Fault::kReserved:
        return ZO_IDS_NAME_RESERVED;
    case Fault::kEnd:
        return ZO_IDS_NAME_END;
    case Fault::kTaken:
        return ZO_IDS_NAME_TAKEN;
    default:
        return 0;
    }
}

} // namespace

BEGIN_MESSAGE_MAP(CZoAskNameDialog, CZoDialog)
    ON_EN_CHANGE(ZO_IDC_NAME_FIELD, OnTyped)
    ON_WM_TIMER()
END_MESSAGE_MAP()

CZoAskNameDialog::CZoAskNameDialog(LPCSTR title, LPCSTR prompt, CWnd* parent) : CZoDialog(ZO_IDD_ASK_NAME, parent)
{
    WithoutThrowing([&] {
        m_csTitle = title;
        m_csPrompt = prompt;
    });
}

CZoAskNameDialog::~CZoAskNameDialog() = default;

BOOL CZoAskNameDialog::SetName(LPCSTR name)
{
    return WithoutThrowing([&] { m_csFirstName = m_csName = name; });
}

BOOL CZoAskNameDialog::SetTakenNames(const CStringArray& names)
{
    return WithoutThrowing([&] { m_csaTaken.Copy(names); });
}

BOOL CZoAskNameDialog::SetForbidden(LPCSTR characters)
{
    return WithoutThrowing([&] { m_csForbidden = CString(characters) + (m_bFileName ? kNotInFiles : ""); });
}

BOOL CZoAskNameDialog::SetFileName()
{
    m_bFileName = WithoutThrowing([this] { m_csForbidden += kNotInFiles; });
    return m_bFileName;
}

BOOL CZoAskNameDialog::SetLongest(int bytes)
{
    if (bytes < 1 || bytes > LONGEST)
        return FALSE;
    m_nLongest = bytes;
    return TRUE;
}

INT_PTR CZoAskNameDialog::DoModal()
{
    return ResultOr(-1, [this] { return CZoDialog::DoModal(); });
}

// The rules -----------------------------------------------------------------------------------------------------------

Fault CZoAskNameDialog::FindFault(LPCSTR text, CString& culprit) const
{
    CString name = text;
    name.TrimLeft();
    name.TrimRight();
    culprit = name;
    for (LPCSTR at = name; *at != '\0'; at = NextCharacter(at)) {
        const UINT character = CharacterAt(at);
        if (character > 0xFF || (character >= kFirstPrintable && m_csForbidden.Find(*at) < 0))
            continue;
        culprit = *at;
        return Fault::kCharacter;
    }
    if (name.GetLength() > m_nLongest) {
        culprit.Format("%d", m_nLongest);
        return Fault::kTooLong;
    }
    if (name.IsEmpty())
        return Fault::kEmpty;
    if (m_bFileName && IsReserved(name))
        return Fault::kReserved;
    if (m_bFileName && *PreviousCharacter(name, static_cast<LPCSTR>(name) + name.GetLength()) == '.')
        return Fault::kEnd;
    if (CompareCharactersNoCase(name, m_csFirstName) == 0)
        return Fault::kNone;
    for (INT_PTR i = 0; i < m_csaTaken.GetSize(); ++i) {
        if (CompareCharactersNoCase(name, m_csaTaken[i]) == 0)
            return Fault::kTaken;
    }
    return Fault::kNone;
}

// The dialog ----------------------------------------------------------------------------------------------------------

BOOL CZoAskNameDialog::OnInitDialog()
{
    CZoDialog::OnInitDialog();
    SetWindowText(m_csTitle);
    SetDlgItemText(ZO_IDC_NAME_PROMPT, m_csPrompt);
    SendDlgItemMessage(ZO_IDC_NAME_FIELD, EM_LIMITTEXT, LONGEST);
    SetDlgItemText(ZO_IDC_NAME_FIELD, m_csName);
    SendDlgItemMessage(ZO_IDC_NAME_FIELD, EM_SETSEL, 0, -1);
    ShowFault(Fault::kNone, "");
    CenterWindow();
    ::SetFocus(::GetDlgItem(m_hWnd, ZO_IDC_NAME_FIELD));
    return FALSE;
}

CString CZoAskNameDialog::FieldText() const
{
    CString text;
    GetDlgItemText(ZO_IDC_NAME_FIELD, text);
    return text;
}

void CZoAskNameDialog::OnTyped()
{
    SetTimer(kPauseTimer, kPause, nullptr); // anew with each key
    if (m_shown == Fault::kNone)
        return;
    WithoutThrowing([this] { // what is no longer true goes at once
        CString culprit;
        const Fault fault = FindFault(FieldText(), culprit);
        if (fault != m_shown || culprit != m_csCulprit)
            ShowFault(CanBecomeRight(fault, FieldText()) ? Fault::kNone : fault, culprit);
    });
}

void CZoAskNameDialog::OnTimer(UINT_PTR)
{
    KillTimer(kPauseTimer);
    WithoutThrowing([this] {
        CString culprit;
        const CString name = FieldText();
        const Fault fault = FindFault(name, culprit);
        if (fault != Fault::kNone && !CanBecomeRight(fault, name))
            ShowFault(fault, culprit);
    });
}

void CZoAskNameDialog::ShowFault(Fault fault, const CString& culprit)
{
    m_shown = fault;
    m_csCulprit = culprit;
    const UINT reason = ReasonOf(fault);
    SetDlgItemText(ZO_IDC_NAME_REASON, reason != 0 ? LoadText(reason, culprit) : CString());
}

void CZoAskNameDialog::ReloadTexts()
{
    CZoDialog::ReloadTexts();
    ShowFault(m_shown, m_csCulprit);
}

void CZoAskNameDialog::OnOK()
{
    WithoutThrowing([this] {
        KillTimer(kPauseTimer);
        CString name = FieldText(), culprit;
        const Fault fault = FindFault(name, culprit);
        if (fault == Fault::kNone) {
            name.TrimLeft();
            name.TrimRight();
            m_csName = name;
            EndDialog(IDOK);
            return;
        }
        ShowFault(fault, culprit);
        ::MessageBeep(MB_ICONEXCLAMATION);
        ::SetFocus(::GetDlgItem(m_hWnd, ZO_IDC_NAME_FIELD));
        SendDlgItemMessage(ZO_IDC_NAME_FIELD, EM_SETSEL, 0, -1);
    });
}
