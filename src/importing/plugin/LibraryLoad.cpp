#include <windows.h>

/// The load entry of the library. It disables notifications about threads, which the library does not use. The request
/// fails without harm where the library has thread-local storage, as it does when it is built with mingw.
extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID /*reserved*/)
{
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(library);
    return TRUE;
}
