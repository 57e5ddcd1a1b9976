#include <afxwin.h>

IMPLEMENT_DYNAMIC(CWinApp, CCmdTarget)
IMPLEMENT_DYNAMIC(CDynLinkLibrary, CCmdTarget)

namespace {

// The process-wide framework state: one per process because afxlite is one DLL
// that the application and every extension module share.
struct ModuleState {
    CRITICAL_SECTION lock;
    CWinApp* pApp = NULL;
    HINSTANCE hCurrentResource = NULL;  // null: the executable
    CDynLinkLibrary* pFirstDLL = NULL;
    ModuleState() { ::InitializeCriticalSection(&lock); }
    ~ModuleState() { ::DeleteCriticalSection(&lock); }
};

ModuleState& State()
{
    static ModuleState state;
    return state;
}

class ChainLock {
public:
    ChainLock() { ::EnterCriticalSection(&State().lock); }
    ~ChainLock() { ::LeaveCriticalSection(&State().lock); }
    ChainLock(const ChainLock&) = delete;
    ChainLock& operator=(const ChainLock&) = delete;
};

// A string lives in block (id / 16) + 1 of the string table.
LPCWSTR StringBlockName(UINT nID) { return MAKEINTRESOURCEW((nID >> 4) + 1); }

}  // namespace

CWinApp::CWinApp(LPCTSTR lpszAppName) : m_pszAppName(lpszAppName), m_hInstance(::GetModuleHandleW(NULL))
{
    State().pApp = this;
}

CWinApp::~CWinApp()
{
    if (State().pApp == this)
        State().pApp = NULL;
}

int CWinApp::DoMessageBox(LPCTSTR lpszPrompt, UINT nType, UINT)
{
    return ::MessageBoxW(NULL, lpszPrompt, m_pszAppName, nType);
}

CWinApp* AFXAPI AfxGetApp() { return State().pApp; }

int AFXAPI AfxMessageBox(LPCTSTR lpszText, UINT nType, UINT nIDHelp)
{
    if (CWinApp* pApp = AfxGetApp())
        return pApp->DoMessageBox(lpszText, nType, nIDHelp);
    return ::MessageBoxW(NULL, lpszText, NULL, nType);
}

int AFXAPI AfxMessageBox(UINT nIDPrompt, UINT nType, UINT nIDHelp)
{
    CString text;
    text.LoadString(nIDPrompt);
    if (nIDHelp == static_cast<UINT>(-1))
        nIDHelp = nIDPrompt;
    return AfxMessageBox(text, nType, nIDHelp);
}

HINSTANCE AFXAPI AfxGetInstanceHandle()
{
    CWinApp* pApp = AfxGetApp();
    return pApp != NULL ? pApp->m_hInstance : ::GetModuleHandleW(NULL);
}

HINSTANCE AFXAPI AfxGetResourceHandle()
{
    HINSTANCE h = State().hCurrentResource;
    return h != NULL ? h : AfxGetInstanceHandle();
}

void AFXAPI AfxSetResourceHandle(HINSTANCE hInstResource) { State().hCurrentResource = hInstResource; }

HINSTANCE AFXAPI AfxFindResourceHandle(LPCTSTR lpszName, LPCTSTR lpszType)
{
    HINSTANCE hInst = AfxGetResourceHandle();
    if (::FindResourceW(hInst, lpszName, lpszType) != NULL)
        return hInst;
    ChainLock lock;
    for (int pass = 0; pass < 2; pass++) {  // ordinary extension DLLs before system ones
        for (CDynLinkLibrary* pDLL = State().pFirstDLL; pDLL != NULL; pDLL = pDLL->m_pNextDLL) {
            if ((pDLL->m_bSystem != 0) == (pass == 1) && pDLL->m_hResource != NULL &&
                ::FindResourceW(pDLL->m_hResource, lpszName, lpszType) != NULL)
                return pDLL->m_hResource;
        }
    }
    return hInst;
}

HINSTANCE AFXAPI AfxFindStringResourceHandle(UINT nID)
{
    return AfxFindResourceHandle(StringBlockName(nID), RT_STRING);
}

int AFXAPI AfxLoadString(UINT nID, LPTSTR lpszBuf, UINT nMaxBuf)
{
    if (lpszBuf == NULL || nMaxBuf == 0)
        return 0;
    int nLength = ::LoadStringW(AfxFindStringResourceHandle(nID), nID, lpszBuf, static_cast<int>(nMaxBuf));
    if (nLength <= 0) {
        *lpszBuf = L'\0';
        return 0;
    }
    return nLength;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem)
    : m_hModule(state.hModule), m_hResource(state.hResource),
      m_pFirstSharedClass(state.pFirstSharedClass), m_bSystem(bSystem), m_pNextDLL(NULL)
{
    ChainLock lock;
    m_pNextDLL = State().pFirstDLL;
    State().pFirstDLL = this;
}

CDynLinkLibrary::CDynLinkLibrary(HINSTANCE hModule, HINSTANCE hResource)
    : m_hModule(hModule), m_hResource(hResource), m_pFirstSharedClass(NULL), m_bSystem(FALSE),
      m_pNextDLL(NULL)
{
    ChainLock lock;
    m_pNextDLL = State().pFirstDLL;
    State().pFirstDLL = this;
}

CDynLinkLibrary::~CDynLinkLibrary()
{
    ChainLock lock;
    for (CDynLinkLibrary** pp = &State().pFirstDLL; *pp != NULL; pp = &(*pp)->m_pNextDLL) {
        if (*pp == this) {
            *pp = m_pNextDLL;
            break;
        }
    }
}

CDynLinkLibrary* AFXAPI AfxGetFirstDynLinkLibrary() { return State().pFirstDLL; }

BOOL AFXAPI AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE hModule)
{
    if (state.bInitialized)
        return TRUE;
    state.hModule = hModule;
    state.hResource = hModule;
    state.pFirstSharedClass = NULL;
    state.pFirstSharedFactory = NULL;
    state.bInitialized = TRUE;
    return TRUE;
}

void AFXAPI AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL bAll)
{
    if (!state.bInitialized)
        return;
    ChainLock lock;
    CDynLinkLibrary* pDLL = State().pFirstDLL;
    while (pDLL != NULL) {
        CDynLinkLibrary* pNext = pDLL->m_pNextDLL;
        if (bAll || pDLL->m_hModule == state.hModule)
            delete pDLL;  // unlinks itself
        pDLL = pNext;
    }
}
