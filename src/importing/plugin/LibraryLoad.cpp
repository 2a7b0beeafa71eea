#include <windows.h>

/// The library's load entry. Notices of threads are of no use to it. The request is refused, harmlessly, where the
/// library holds thread-local storage, as it does when it was built with mingw.
extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID /*reserved*/)
{
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(library);
    return TRUE;
}
