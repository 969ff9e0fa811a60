/// \file
/// Files translated through a table: what a line would have made of them.
#pragma once

#include "page.h"

#include <zogbl/translate.h>

class TranslationPage : public Page {
public:
    UINT GetTitleId() const override;
    UINT GetCommandId() const override;
    void Reload() override;
    void Refresh() override;

    /// The folder of the sample tables, with a backslash.
    static CString TablesFolder();

    CGblTranslate& GetTable() { return m_table; }
    /// Uses another table, or tells why not. \return FALSE then
    BOOL LoadTable(LPCSTR path);
    /// Translates file \p from, of any size, into \p to, as if its bytes were received or sent by a line; then shows
    /// their beginnings. \return FALSE, with the reason shown and \p to removed, on failure.
    BOOL TranslateFile(LPCSTR from, LPCSTR to, bool received);
    CString GetTranslatedText() const;

protected:
    void CreateControls() override;
    void Layout(int width, int height) override;

    afx_msg void OnChoose();
    afx_msg void OnEdit();
    afx_msg void OnTranslate();
    DECLARE_MESSAGE_MAP()

private:
    ULONGLONG Translate(CFile& source, CFile& target, bool received);
    void TellStatus(DWORD status);
    void ShowState(const CString& state);

    CGblTranslate m_table;
    CString m_state; // empty: nothing has been translated yet
    CStatic m_tableLabel;
    CStatic m_tableName;
    CButton m_choose;
    CButton m_edit;
    CButton m_received;
    CButton m_sent;
    CButton m_translate;
    CStatic m_beforeLabel;
    CStatic m_afterLabel;
    CEdit m_before;
    CEdit m_after;
    CStatic m_stateLine;
};
