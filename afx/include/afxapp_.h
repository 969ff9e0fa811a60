/// \file
/// Application framework: threads and the application. Included by afxwin.h.
#pragma once

#include <afxwnd_.h>

/// A thread with a message loop. The suite runs on the main thread alone.
class AFX_API CWinThread : public CCmdTarget {
    DECLARE_DYNAMIC(CWinThread)
public:
    CWinThread() = default;

    virtual BOOL InitInstance();
    virtual int Run();
    virtual int ExitInstance();
    /// Called when the main loop has no message left, after one for which IsIdleMessage is TRUE. The first call lets
    /// the thread's windows show the state of their commands, and deletes temporary objects of handles. \param lCount
    /// number of calls since the last message. \return TRUE to be called again.
    virtual BOOL OnIdle(LONG lCount);
    /// \return FALSE for messages after which nothing can have changed: paint requests, and a mouse that has not moved
    virtual BOOL IsIdleMessage(MSG* pMsg);
    virtual BOOL PreTranslateMessage(MSG* pMsg);
    /// Fetches and dispatches one message. \return FALSE for WM_QUIT.
    virtual BOOL PumpMessage();
    /// Called with an exception that a message handler let go; the message then counts as answered with the result.
    virtual LRESULT ProcessWndProcException(CException* e, const MSG* pMsg);

    CWnd* m_pMainWnd = nullptr;
    MSG m_msgCur = {};

private:
    POINT m_ptCursorLast = {}; // of the last message of the mouse's place
    UINT m_nMsgLast = WM_NULL;
};

/// The application object: a program defines exactly one, at file scope.
class AFX_API CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)
public:
    explicit CWinApp(LPCSTR lpszAppName = nullptr);
    ~CWinApp() override;

    int ExitInstance() override;
    HICON LoadIcon(UINT nIDResource) const;
    /// Shows what AfxMessageBox was asked for. \param nIDPrompt help context, 0 for none in particular
    virtual int DoMessageBox(LPCSTR lpszPrompt, UINT nType, UINT nIDPrompt);

    /// Enters a type of documents in the list; the application owns it from here on.
    void AddDocTemplate(CDocTemplate* pTemplate);
    POSITION GetFirstDocTemplatePosition() const;
    /// \param pos is set to null behind the last one.
    CDocTemplate* GetNextDocTemplate(POSITION& pos) const;
    void CloseAllDocuments(BOOL bEndSession);
    /// Lets each document ask whether to save it. \return FALSE as soon as one must stay open.
    virtual BOOL SaveAllModified();

    LPCSTR m_pszAppName;
    /// The help file in force, at first the program's path with ".HLP". From malloc: whoever puts another in its place
    /// frees the one before.
    LPCSTR m_pszHelpFilePath = nullptr;
    HINSTANCE m_hInstance = nullptr;
    LPSTR m_lpCmdLine = nullptr;
    int m_nCmdShow = SW_SHOWNORMAL;

private:
    CPtrArray m_docTemplates;
};
