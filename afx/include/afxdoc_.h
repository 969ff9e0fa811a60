/// \file
/// Application framework: documents, views, their templates and frames. Included by afxwin.h.
///
/// A document lives as long as it has views: when the last one goes, with its frame, the document closes. Frames and
/// views delete themselves with their windows, a document when it is closed.
#pragma once

#include <afxfrm_.h>

class CDocTemplate;
class CDocument;
class CMDIChildWnd;
class CView;

/// What a new frame is to show; it travels in the creation parameter of its windows.
struct CCreateContext {
    CRuntimeClass* m_pNewViewClass = nullptr;
    CDocument* m_pCurrentDoc = nullptr;
};

/// What a program works on. Derive from it and override OnNewDocument, OnOpenDocument, OnSaveDocument and
/// DeleteContents.
class AFX_API CDocument : public CCmdTarget {
    DECLARE_DYNAMIC(CDocument)
public:
    CDocument() = default;
    ~CDocument() override;

    const CString& GetTitle() const { return m_strTitle; }
    virtual void SetTitle(LPCSTR lpszTitle); ///< shown by all its frames
    const CString& GetPathName() const { return m_strPathName; }
    /// Also sets the title, to the file's name. \param bAddToMRU has no effect here.
    virtual void SetPathName(LPCSTR lpszPathName, BOOL bAddToMRU = TRUE);
    CDocTemplate* GetDocTemplate() const { return m_pDocTemplate; }

    void AddView(CView* pView);
    void RemoveView(CView* pView);
    POSITION GetFirstViewPosition() const;
    /// \param rPosition is set to null behind the last one.
    CView* GetNextView(POSITION& rPosition) const;
    /// Tells all views but \p pSender that the document has changed.
    void UpdateAllViews(CView* pSender, LPARAM lHint = 0, CObject* pHint = nullptr);

    virtual BOOL IsModified() { return m_bModified; } ///< since it was last saved
    virtual void SetModifiedFlag(BOOL bModified = TRUE) { m_bModified = bModified; }

    virtual BOOL OnNewDocument();
    virtual BOOL OnOpenDocument(LPCSTR lpszPathName);
    /// Writes the file. Here it only marks the document as saved.
    virtual BOOL OnSaveDocument(LPCSTR lpszPathName);
    /// Before a document that is modified closes: asks whether to save it (string AFX_IDP_ASK_TO_SAVE), and does so.
    /// \return FALSE when it must stay open.
    virtual BOOL SaveModified();
    /// Asked before a frame closes. \return whether it may: the last frame of a document that need not be saved.
    virtual BOOL CanCloseFrame(CFrameWnd* pFrame);
    /// Saves under the document's name; asks for one when it has none, or its file is read-only.
    virtual BOOL DoFileSave();
    /// Saves under a name, which becomes the document's if \p bReplace. With null a name is to be asked for: override
    /// it, for this framework has no dialog of its own for files, and saves nothing then.
    virtual BOOL DoSave(LPCSTR lpszPathName, BOOL bReplace = TRUE);
    virtual void DeleteContents() {}
    /// Destroys the frames of all views, and deletes the document if m_bAutoDelete.
    virtual void OnCloseDocument();
    virtual void OnChangedViewList(); ///< closes a document that has no view any more

    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;

    BOOL m_bAutoDelete = TRUE;

protected:
    afx_msg void OnFileClose();
    afx_msg void OnFileSave();
    afx_msg void OnFileSaveAs();
    afx_msg void OnFileSaveCopyAs();
    DECLARE_MESSAGE_MAP()

private:
    friend class CDocTemplate;

    CString m_strTitle;
    CString m_strPathName;
    BOOL m_bModified = FALSE;
    CDocTemplate* m_pDocTemplate = nullptr;
    CPtrArray m_views;
};

/// A window that shows a document.
class AFX_API CView : public CWnd {
    DECLARE_DYNAMIC(CView)
public:
    ~CView() override;

    CDocument* GetDocument() const { return m_pDocument; }
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;

    virtual void OnInitialUpdate() { OnUpdate(nullptr, 0, nullptr); }
    /// Before each OnDraw, with null, and before each page: sets the context up. The override calls this function first
    /// and then says by pInfo->m_bContinuePrinting whether there is such a page: this one ends a document whose length
    /// is not known after a page.
    virtual void OnPrepareDC(CDC* pDC, CPrintInfo* pInfo = nullptr);
    /// To be called by OnPreparePrinting: lets the user choose a printer; for a preview and direct printing takes the
    /// default one. \return FALSE if nothing can be or is to be printed; the user knows why
    BOOL DoPreparePrinting(CPrintInfo* pInfo);

protected:
    friend class CDocument;
    friend class CFrameWnd;
    friend class CMDIChildWnd;

    virtual void OnUpdate(CView* pSender, LPARAM lHint, CObject* pHint);
    virtual void OnDraw(CDC* pDC) = 0;
    virtual void OnActivateView(BOOL bActivate, CView* pActivateView, CView* pDeactiveView);
    /// To print, override it: set what is known of the pages and call DoPreparePrinting. \return FALSE: nothing is
    virtual BOOL OnPreparePrinting(CPrintInfo* pInfo);
    virtual void OnBeginPrinting(CDC* pDC, CPrintInfo* pInfo); ///< makes what all pages want
    virtual void OnPrint(CDC* pDC, CPrintInfo* pInfo);         ///< one page; here by OnDraw
    virtual void OnEndPrinting(CDC* pDC, CPrintInfo* pInfo);   ///< once OnBeginPrinting has returned, in any case
    void PostNcDestroy() override;
    afx_msg int OnCreate(CREATESTRUCT* lpCreateStruct);
    afx_msg void OnDestroy();
    afx_msg void OnPaint();
    /// For ID_FILE_PRINT and ID_FILE_PRINT_DIRECT, in the map of a view that prints. Meanwhile the user is kept from
    /// the window, and messages are dispatched; the view must live. A job can be stopped by an abort procedure that
    /// OnBeginPrinting sets, and ends with the thread. If it fails it is abandoned, and the user is told.
    afx_msg void OnFilePrint();
    DECLARE_MESSAGE_MAP()

    CDocument* m_pDocument = nullptr;

private:
    // Each returns ERROR_SUCCESS or why it failed.
    DWORD PrintJob(CDC& dc, CPrintInfo& info);
    DWORD PrintDocument(CDC& dc, CPrintInfo& info);
    DWORD PrintPage(CDC& dc, CPrintInfo& info);
};

/// Which classes make up a type of documents, and what it is called. Its resource number names a string of up to seven
/// parts, separated by line feeds, an icon and what else belongs to the type.
class AFX_API CDocTemplate : public CCmdTarget {
    DECLARE_DYNAMIC(CDocTemplate)
public:
    enum DocStringIndex {
        windowTitle,
        docName,
        fileNewName,
        filterName,
        filterExt,
        regFileTypeId,
        regFileTypeName,
    };

    /// \return FALSE, with \p rString empty, when the string has no such part.
    virtual BOOL GetDocString(CString& rString, DocStringIndex index) const;

    virtual void AddDocument(CDocument* pDoc);
    virtual void RemoveDocument(CDocument* pDoc);
    virtual POSITION GetFirstDocPosition() const = 0;
    virtual CDocument* GetNextDoc(POSITION& rPos) const = 0;
    /// \return the new document, without frame or view; null on failure.
    virtual CDocument* CreateNewDocument();
    /// \return a new frame with a view of the document in it; null on failure.
    virtual CFrameWnd* CreateNewFrame(CDocument* pDoc, CFrameWnd* pOther);
    virtual void InitialUpdateFrame(CFrameWnd* pFrame, CDocument* pDoc, BOOL bMakeVisible = TRUE);
    virtual void CloseAllDocuments(BOOL bEndSession);
    /// Lets each document ask whether to save it. \return FALSE as soon as one must stay open.
    virtual BOOL SaveAllModified();
    /// Opens a file, or with null a new document, in a frame of its own. \return null on failure.
    virtual CDocument* OpenDocumentFile(LPCSTR lpszPathName, BOOL bMakeVisible = TRUE) = 0;
    virtual void SetDefaultTitle(CDocument* pDocument) = 0;

protected:
    CDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass, CRuntimeClass* pViewClass);

    UINT m_nIDResource;
    CRuntimeClass* m_pDocClass;
    CRuntimeClass* m_pFrameClass;
    CRuntimeClass* m_pViewClass;
};

/// A type of which several documents can be open at once.
class AFX_API CMultiDocTemplate : public CDocTemplate {
    DECLARE_DYNAMIC(CMultiDocTemplate)
public:
    CMultiDocTemplate(UINT nIDResource, CRuntimeClass* pDocClass, CRuntimeClass* pFrameClass,
                      CRuntimeClass* pViewClass);
    ~CMultiDocTemplate() override; ///< documents still open are no longer of this type

    void AddDocument(CDocument* pDoc) override;
    void RemoveDocument(CDocument* pDoc) override;
    POSITION GetFirstDocPosition() const override;
    CDocument* GetNextDoc(POSITION& rPos) const override;
    CDocument* OpenDocumentFile(LPCSTR lpszPathName, BOOL bMakeVisible = TRUE) override;
    /// The type's document name and a number that counts the new documents.
    void SetDefaultTitle(CDocument* pDocument) override;

private:
    CPtrArray m_documents;
    int m_nUntitledCount = 0;
};

/// A main window with windows of documents in it: the MDI client fills its client area. Commands go to the active one
/// of these first.
class AFX_API CMDIFrameWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CMDIFrameWnd)
public:
    /// Called by OnCreateClient. \param hWindowMenu the menu that the system lists the windows in, or null.
    virtual BOOL CreateClient(CREATESTRUCT* lpCreateStruct, HMENU hWindowMenu);
    /// The active window of a document, null when there is none.
    CMDIChildWnd* MDIGetActive(BOOL* pbMaximized = nullptr) const;

    CFrameWnd* GetActiveFrame() override;
    BOOL OnCreateClient(CREATESTRUCT* lpcs, CCreateContext* pContext) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

    HWND m_hWndMDIClient = nullptr;

protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};

/// The window of a document within a CMDIFrameWnd.
class AFX_API CMDIChildWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CMDIChildWnd)
public:
    BOOL Create(LPCSTR lpszClassName, LPCSTR lpszWindowName, DWORD dwStyle, const RECT& rect,
                CMDIFrameWnd* pParentWnd = nullptr, CCreateContext* pContext = nullptr);
    BOOL LoadFrame(UINT nIDResource, DWORD dwDefaultStyle = WS_OVERLAPPEDWINDOW | FWS_ADDTOTITLE,
                   CWnd* pParentWnd = nullptr, CCreateContext* pContext = nullptr) override;
    CMDIFrameWnd* GetMDIFrame() const;
    void MDIActivate();

    BOOL DestroyWindow() override;
    void OnUpdateFrameTitle(BOOL bAddToTitle) override;

protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnMDIActivate(WPARAM wParam, LPARAM lParam);
    DECLARE_MESSAGE_MAP()
};
