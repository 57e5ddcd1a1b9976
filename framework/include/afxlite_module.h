// afxlite: the application object, message boxes, resource handles and the
// module chain through which extension DLLs share their resources.
#pragma once
#include "afxlite_cmdtarget.h"

// The application: at most one per process. A program without one still gets
// message boxes and resources from its executable.
class AFXLITE_API CWinApp : public CCmdTarget {
    DECLARE_DYNAMIC(CWinApp)
public:
    explicit CWinApp(LPCTSTR lpszAppName = NULL);
    ~CWinApp() override;

    // Every framework message box goes through here; an application may override it.
    virtual int DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT nIDPrompt);

    LPCTSTR m_pszAppName;
    HINSTANCE m_hInstance;
};

AFXLITE_API CWinApp* AFXAPI AfxGetApp();
AFXLITE_API int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType = MB_OK, UINT nIDHelp = 0);
AFXLITE_API int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType = MB_OK, UINT nIDHelp = (UINT)-1);

AFXLITE_API HINSTANCE AFXAPI AfxGetInstanceHandle();
AFXLITE_API HINSTANCE AFXAPI AfxGetResourceHandle();
AFXLITE_API void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource);
// The module that holds a resource: the current resource module first, then every
// extension DLL on the chain (newest first); the current one if none has it.
AFXLITE_API HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType);
AFXLITE_API HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID);
// Loads string nID from the module chain; 0 (and an empty buffer) when no module has it.
AFXLITE_API int AFXAPI AfxLoadString(UINT nID, LPTSTR lpszBuf, UINT nMaxBuf = 256);

struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
    CRuntimeClass* pFirstSharedClass;
    void* pFirstSharedFactory;
};

class AFXLITE_API CDynLinkLibrary : public CCmdTarget {
    DECLARE_DYNAMIC(CDynLinkLibrary)
public:
    // Joins the module chain (at its head) for the life of the object.
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem = FALSE);
    CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource);
    ~CDynLinkLibrary() override;

    HMODULE m_hModule;
    HMODULE m_hResource;
    CRuntimeClass* m_pFirstSharedClass;
    BOOL m_bSystem;
    CDynLinkLibrary* m_pNextDLL;
};

AFXLITE_API BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule);
// Removes the module's CDynLinkLibrary objects from the chain (every one with bAll).
AFXLITE_API void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll = FALSE);
// The head of the module chain (for diagnostics and tests).
AFXLITE_API CDynLinkLibrary* AFXAPI AfxGetFirstDynLinkLibrary();
