/// \file
/// Application framework: the state of modules, and by its parts all classes of windows, threads and documents.
#pragma once

#include <afx.h>
#include <afxcoll.h>
#include <afxres.h>

class CBitmap;
class CDataExchange;
class CDC;
class CDocTemplate;
class CDocument;
class CDynLinkLibrary;
class CFrameWnd;
class CView;
class CWinApp;
class CWinThread;
class CWnd;
struct CCreateContext;
struct CPrintInfo;

// ---------------------------------------------------------------------------------------------------------------------
// Module state

/// The state that all modules of the process share. Until AfxWinInit the instance is the program: a host without an
/// application object never calls it.
struct AFX_MODULE_STATE {
    CWinApp* m_pCurrentWinApp = nullptr;
    HINSTANCE m_hCurrentInstanceHandle = ::GetModuleHandleA(nullptr);
    HINSTANCE m_hCurrentResourceHandle = m_hCurrentInstanceHandle;
    LPCSTR m_lpszCurrentAppName = nullptr;
    CRuntimeClass* m_pClassList = nullptr;     ///< classes of the application, or of the module being loaded
    CDynLinkLibrary* m_pLibraryList = nullptr; ///< extension libraries, the newest first
    int (*m_pfnMessageBox)(HWND, LPCSTR, LPCSTR, UINT) = nullptr;
};

AFX_API AFX_MODULE_STATE* AFXAPI AfxGetModuleState();

/// Starts the framework in a program with its own main function. \return FALSE on failure.
AFX_API BOOL AFXAPI AfxWinInit(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nCmdShow);
/// The body of WinMain: starts the framework, then runs the application object. \return the process's exit code.
AFX_API int AFXAPI AfxWinMain(HINSTANCE hInstance, HINSTANCE hPrevInstance, LPSTR lpCmdLine, int nCmdShow);

inline CWinApp* AFXAPI AfxGetApp() { return AfxGetModuleState()->m_pCurrentWinApp; }
inline HINSTANCE AFXAPI AfxGetInstanceHandle() { return AfxGetModuleState()->m_hCurrentInstanceHandle; }
inline HINSTANCE AFXAPI AfxGetResourceHandle() { return AfxGetModuleState()->m_hCurrentResourceHandle; }
inline void AFXAPI AfxSetResourceHandle(HINSTANCE h) { AfxGetModuleState()->m_hCurrentResourceHandle = h; }
inline LPCSTR AFXAPI AfxGetAppName() { return AfxGetModuleState()->m_lpszCurrentAppName; }
AFX_API CWinThread* AFXAPI AfxGetThread();
AFX_API CWnd* AFXAPI AfxGetMainWnd();

/// The module that holds a resource: the resource handle's module, then the extension libraries of the chain, the
/// framework's own last. \return the resource handle when none has it.
AFX_API HINSTANCE AFXAPI AfxFindResourceHandle(LPCSTR lpszName, LPCSTR lpszType);
/// The module that holds a string, in the same order: the string itself, not only its block of 16. Null if none has it.
AFX_API HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID);

/// Part \p iSubString, counted from 0, of a text whose parts \p chSep separates.
/// \return FALSE, with \p rString empty, when there are fewer.
AFX_API BOOL AFXAPI AfxExtractSubString(CString& rString, LPCSTR lpszFullString, int iSubString, char chSep = '\n');

/// Puts a string resource into \p rString, with \p lpsz1 and \p lpsz2 in the places of its "%1" and "%2".
AFX_API void AFXAPI AfxFormatString1(CString& rString, UINT nIDS, LPCSTR lpsz1);
AFX_API void AFXAPI AfxFormatString2(CString& rString, UINT nIDS, LPCSTR lpsz1, LPCSTR lpsz2);

/// Shows a message box over the main window, titled with the application's name, by the application's DoMessageBox.
/// \param nIDHelp help context; 0 for none in particular
AFX_API int AFXAPI AfxMessageBox(LPCSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
/// \param nIDHelp help context; -1 for the number of the text
AFX_API int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = static_cast<UINT>(-1));

/// Lets all boxes of AfxMessageBox be shown by \p pfnMessageBox, which does what the system's MessageBox does; null: by
/// the system. An application that overrides DoMessageBox comes first.
typedef int (*AFX_MESSAGE_BOX)(HWND hWnd, LPCSTR lpszText, LPCSTR lpszCaption, UINT nType);
AFX_API void AFXAPI AfxSetMessageBox(AFX_MESSAGE_BOX pfnMessageBox);

/// Registers (once) a window class with the given style, cursor, brush and icon. \return its name; throws
/// CResourceException* on failure.
AFX_API LPCSTR AFXAPI AfxRegisterWndClass(UINT nClassStyle, HCURSOR hCursor = nullptr, HBRUSH hbrBackground = nullptr,
                                          HICON hIcon = nullptr);
AFX_API BOOL AFXAPI AfxRegisterClass(WNDCLASS* lpWndClass);
/// The window procedure of every window that belongs to a CWnd.
AFX_API LRESULT CALLBACK AfxWndProc(HWND hWnd, UINT nMsg, WPARAM wParam, LPARAM lParam);

// ---------------------------------------------------------------------------------------------------------------------
// Classes, by family

#include <afxapp_.h>  // threads, the application
#include <afxcmd_.h>  // command targets
#include <afxctl_.h>  // controls
#include <afxdc_.h>   // device contexts
#include <afxdd_.h>   // the exchange of a dialog's data
#include <afxdlg_.h>  // dialogs
#include <afxdoc_.h>  // documents, views
#include <afxfrm_.h>  // frames
#include <afxgdi_.h>  // drawing objects, geometry
#include <afxmenu_.h> // menus
#include <afxprn_.h>  // printing
#include <afxwnd_.h>  // windows
