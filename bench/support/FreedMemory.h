#pragma once

#if defined(__GLIBC__)
#include <malloc.h>
#endif

/// Gives freed memory back to the system. A scene is processed once in a process, so the pages of the result are
/// touched for the first time; without this, small scenes would reuse the pages of the run before and large ones not.
inline void ForgetFreedMemory()
{
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}
