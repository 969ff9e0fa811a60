/// \file
/// Files translated through a table: what a line would have made of them.
#pragma once

#include "page.h"

#include "../text_box.h"

#include <zogbl/translate.h>

#include <functional>

/// The types that dialogs for files offer: all files. Texts that end in NULs, as the form for files wants them.
CString FileFilter();

class TranslationPage : public Page {
public:
    using Progress = std::function<bool(ULONGLONG done, ULONGLONG size)>;

    TranslationPage();

    UINT GetTitleId() const override;
    UINT GetCommandId() const override;
    void Reload() override;
    void Refresh() override;

    /// The folder of the sample tables, with a backslash.
    static CString TablesFolder();

    CGblTranslate& GetTable() { return m_table; }
    /// Uses another table. \return 0 or a ZO_TRANSLATE_ code; then the table is the one before.
    DWORD LoadTable(LPCSTR path);
    /// Translates file \p from, of any size, into \p to, as if its bytes were received or sent by a line; then shows
    /// their beginnings. \return FALSE, with the reason shown and \p to removed, on failure.
    /// \param progress is told how many bytes are translated, and of how many; FALSE from it ends the translation, as a
    /// failure without a reason. Null: nobody is told
    BOOL TranslateFile(LPCSTR from, LPCSTR to, bool received, const Progress& progress = nullptr);
    CString GetTranslatedText() const;
    CString GetState() const;

protected:
    void CreateControls() override;
    void Layout(int width, int height) override;

    afx_msg void OnChoose();
    afx_msg void OnEdit();
    afx_msg void OnTranslate();
    DECLARE_MESSAGE_MAP()

private:
    bool Translate(CFile& source, CFile& target, bool received, const Progress& progress, ULONGLONG& done);
    void TellStatus(DWORD status, UINT message);
    void ShowState(UINT text, LPCSTR file = "", LPCSTR detail = "");

    CGblTranslate m_table;
    UINT m_nStateText; // with file and detail in it
    CString m_csStateFile;
    CString m_csStateDetail;
    CStatic m_tableLabel;
    CStatic m_tableName;
    CButton m_choose;
    CButton m_edit;
    CButton m_received;
    CButton m_sent;
    CButton m_translate;
    CStatic m_beforeLabel;
    CStatic m_afterLabel;
    TextBox m_before;
    TextBox m_after;
    CStatic m_stateLine;
};
