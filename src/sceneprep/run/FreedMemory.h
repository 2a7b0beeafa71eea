#pragma once

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace Sceneprep
{

/// Gives freed memory back to the system: what one part of the work leaves scattered over the heap is too small for
/// the large arrays of the next one, which would come on top of it.
inline void ReturnFreedMemory()
{
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

}  // namespace Sceneprep
