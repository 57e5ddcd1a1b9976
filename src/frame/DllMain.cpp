// Library entry: TesvorUtil is a framework extension module. It joins the
// application's module chain on load, so that the framework finds its resources,
// and leaves it on unload.
#include <afxdllx.h>
#include "frame/FaultGuard.h"

namespace {
AFX_EXTENSION_MODULE theModule = {FALSE, NULL, NULL, NULL, NULL};
}

extern "C" BOOL WINAPI DllMain(HINSTANCE hInstance, DWORD dwReason, LPVOID)
{
    switch (dwReason) {
    case DLL_PROCESS_ATTACH:
        if (!AfxInitExtensionModule(theModule, hInstance))
            return FALSE;
        // The framework owns this object for the life of the process (it is
        // removed from the chain by AfxTermExtensionModule).
        new CDynLinkLibrary(theModule);
        return TRUE;
    case DLL_PROCESS_DETACH:
        AfxTermExtensionModule(theModule);
        TesvorFaultGuard::Uninstall();
        return TRUE;
    default:
        return TRUE;
    }
}
