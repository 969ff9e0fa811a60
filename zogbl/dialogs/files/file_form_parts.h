/// \file
/// The form for files at work: its controls, and the question that a drive has not answered yet.
#pragma once

#include <zogbl/file_form.h>

#include "file_controls.h"

/// Everything here throws CMemoryException*.
class FileFormParts {
public:
    explicit FileFormParts(CZoFileForm& form) : m_form(form), m_window(form.m_window) {}

    void Begin();
    BOOL TakeName();
    BOOL IsUnchanged() const;
    BOOL HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    void ReloadTexts();

private:
    static constexpr UINT_PTR kLookTimer = 0x5A46; // among those of any window

    /// What is done with an answer.
    enum class Purpose {
        kStart,  ///< shown, whatever it is
        kShow,   ///< shown; the user is told of a folder that cannot be read
        kRenew,  ///< shown, if it can be read: the folder that stood there, with other files
        kCreate, ///< a new folder is shown
        kName    ///< what was typed is a folder or the name
    };

    // Controls
    HWND Item(int id) const { return ::GetDlgItem(m_window.m_hWnd, id); }
    void Attach(CWnd& control, int id);
    void PrepareButtons();
    void AlignRows();
    void EnableUp();
    void OnCommand(int control, int code);
    void OnTypeSelected();
    void OnDriveClosed();
    void OnRecentClosed();
    void OnFileSelected();
    void OnNameTyped();
    void AskNewFolder(const CString& proposal);

    // Questions
    void StartInFirst();
    void GoTo(const CString& folder, Purpose purpose = Purpose::kShow);
    void Ask(Purpose purpose, const CString& target, PlaceQuestion question);
    void GiveUp();
    void Look();
    void TakeAnswer();
    void Show(const PlaceAnswer& answer);
    void ShowStart(const PlaceAnswer& answer);
    void ShowCreated(const PlaceAnswer& answer);
    CString PatternsInForce() const;

    // The name
    void LookUp(const CString& typed);
    void TakePattern(const CString& typed);
    void TakeLookedUp(const PlaceAnswer& answer);
    bool WantsExtension(const CString& typed) const;
    bool IsAcceptable(const CString& path, DWORD attributes, bool hasFolder);
    void Finish(const CString& path);
    const CWnd& Owner() const;
    int Tell(UINT message, LPCSTR path, UINT type) const;
    bool Refuse(UINT message, LPCSTR path);

    CZoFileForm& m_form;
    CWnd& m_window;
    NameBox m_name;
    FileBox m_files;
    TypeBox m_types;
    FolderBox m_folders;
    DriveBox m_drives;
    RecentBox m_recents;
    FolderLabel m_label;

    CString m_csFolder;                     // shown
    std::vector<CString> m_inside;          // its folders and files, as listed
    CString m_csPattern;                    // typed; empty: that of the type
    BackgroundPtr<PlaceWork> m_work;        // null: nothing is being opened
    Purpose m_purpose = Purpose::kStart;    // of it
    CString m_csTarget;                     // of it: the folder or the path
    PlaceQuestion m_question;               // of it, if it is asked again
    CString m_csTyped;                      // the name that was looked up last
    CString m_csSettled, m_csSettledFolder; // the name at the beginning, or that was taken
    bool m_bTaken = false;                  // the name looked up last is taken
    bool m_bWaits = false;                  // it was taken later, and nobody has asked again
};
