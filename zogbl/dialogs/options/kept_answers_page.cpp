#include <zogbl/kept_answers_page.h>

#include <common/without_throwing.h>
#include <zogbl/dialog.h>
#include <zogbl/message_box.h>
#include <zogbl/resource_ids.h>

#include "dialogs/base/kept_answers.h"
#include "dialogs/base/tell_user.h"

#include "ground/box_filling.h"

#include <algorithm>

struct CZoKeptAnswersPage::Answers {
    std::vector<KeptAnswer> kept;
    std::vector<KeptAnswer> undone; // with OK or Apply
};

namespace {

UINT WordOf(int answer)
{
    switch (answer) {
    case IDOK:
        return ZO_IDS_ANSWER_OK;
    case IDIGNORE:
        return ZO_IDS_ANSWER_IGNORE;
    case IDYES:
        return ZO_IDS_ANSWER_YES;
    case IDNO:
        return ZO_IDS_ANSWER_NO;
    default:
        return ZO_IDS_ANSWER_CONTINUE;
    }
}

/// A button's text without its access key: "Yes" of "&Yes", and of one with the key behind the word. Throws
/// CMemoryException*.
CString AnswerText(int answer)
{
    CString text = LoadText(WordOf(answer));
    const int behind = text.Find("(&");
    if (behind > 0)
        text = text.Left(behind);
    text.Remove('&');
    return text;
}

} // namespace

BEGIN_MESSAGE_MAP(CZoKeptAnswersPage, CZoPropertyPage)
    ON_LBN_SELCHANGE(ZO_IDC_ANSWERS_LIST, OnSelected)
    ON_BN_CLICKED(ZO_IDC_ANSWERS_UNDO, OnUndo)
    ON_BN_CLICKED(ZO_IDC_ANSWERS_UNDO_ALL, OnUndoAll)
END_MESSAGE_MAP()

CZoKeptAnswersPage::CZoKeptAnswersPage() : CZoPropertyPage(ZO_IDD_KEPT_ANSWERS) {}

CZoKeptAnswersPage::~CZoKeptAnswersPage() = default;

void CZoKeptAnswersPage::Describe(LPCSTR, CString&) const {}

BOOL CZoKeptAnswersPage::OnInitDialog()
{
    CZoPropertyPage::OnInitDialog();
    static constexpr ZoFollowing kFollowing[] = {{ZO_IDC_ANSWERS_LIST, ZoFollowing::kWiden | ZoFollowing::kHeighten},
                                                 {ZO_IDC_ANSWERS_WORDS, ZoFollowing::kWiden | ZoFollowing::kMoveDown},
                                                 {ZO_IDC_ANSWERS_UNDO, ZoFollowing::kMoveDown},
                                                 {ZO_IDC_ANSWERS_UNDO_ALL, ZoFollowing::kMoveDown}};
    MakeSizable(kFollowing, static_cast<int>(std::size(kFollowing)));
    m_answers.reset();
    WithoutThrowing([this] {
        auto answers = std::make_unique<Answers>();
        ListKeptAnswers(answers->kept); // what cannot be read is not listed
        m_answers = std::move(answers);
    });
    Fill(0);
    return TRUE;
}

/// "Yes: Do you want to leave?". Throws CMemoryException*.
CString CZoKeptAnswersPage::RowText(int row) const
{
    const KeptAnswer& kept = m_answers->kept[static_cast<size_t>(row)];
    CString words = kept.question;
    Describe(kept.name, words);
    if (words.IsEmpty())
        words = kept.name;
    for (const char blank : {'\r', '\n', '\t'})
        words.Replace(blank, ' ');
    return AnswerText(kept.answer) + ": " + words;
}

void CZoKeptAnswersPage::Fill(int chosen)
{
    const HWND list = ::GetDlgItem(m_hWnd, ZO_IDC_ANSWERS_LIST);
    const int count = m_answers != nullptr ? static_cast<int>(m_answers->kept.size()) : 0;
    {
        const DrawingPause pause(list);
        ::SendMessageA(list, LB_RESETCONTENT, 0, 0);
        WithoutThrowing([&] {
            for (int row = 0; row < count; ++row)
                ::SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(static_cast<LPCSTR>(RowText(row))));
        });
        ::SendMessageA(list, LB_SETCURSEL, static_cast<WPARAM>((std::min)(chosen, count - 1)), 0);
    }
    for (const int button : {ZO_IDC_ANSWERS_UNDO, ZO_IDC_ANSWERS_UNDO_ALL}) {
        const HWND window = ::GetDlgItem(m_hWnd, button);
        if (count == 0 && ::GetFocus() == window)
            ::SendMessageA(::GetParent(m_hWnd), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(list), TRUE);
        ::EnableWindow(window, count > 0);
    }
    OnSelected();
}

/// The whole question stands below the list, where it may take several lines.
void CZoKeptAnswersPage::OnSelected()
{
    WithoutThrowing([this] {
        const auto row = static_cast<int>(SendDlgItemMessage(ZO_IDC_ANSWERS_LIST, LB_GETCURSEL));
        SetDlgItemText(ZO_IDC_ANSWERS_WORDS, row >= 0 ? RowText(row) : LoadText(ZO_IDS_ANSWERS_NONE));
    });
}

void CZoKeptAnswersPage::OnUndo()
{
    const auto row = static_cast<int>(SendDlgItemMessage(ZO_IDC_ANSWERS_LIST, LB_GETCURSEL));
    if (row < 0 || !WithoutThrowing([&] {
            const auto at = m_answers->kept.begin() + row;
            m_answers->undone.push_back(*at);
            m_answers->kept.erase(at);
        }))
        return;
    Fill(row);
    SetModified();
}

void CZoKeptAnswersPage::OnUndoAll()
{
    if (m_answers == nullptr || !WithoutThrowing([this] {
            m_answers->undone.insert(m_answers->undone.end(), m_answers->kept.begin(), m_answers->kept.end());
            m_answers->kept.clear();
        }))
        return;
    Fill(0);
    SetModified();
}

BOOL CZoKeptAnswersPage::OnApply()
{
    if (m_answers != nullptr) {
        auto& undone = m_answers->undone;
        while (!undone.empty() && ZoForgetAnswer(undone.back().name) == ERROR_SUCCESS)
            undone.pop_back();
        if (!undone.empty()) {
            WithoutThrowing(
                [this] { AskUser(*GetParent(), ZO_IDS_ANSWERS_NOT_UNDONE, "", MB_OK | MB_ICONEXCLAMATION); });
            return FALSE;
        }
    }
    return CZoPropertyPage::OnApply();
}

void CZoKeptAnswersPage::ReloadTexts()
{
    CZoPropertyPage::ReloadTexts();
    Fill(static_cast<int>(SendDlgItemMessage(ZO_IDC_ANSWERS_LIST, LB_GETCURSEL)));
}
