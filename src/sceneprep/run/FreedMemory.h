#pragma once

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace Sceneprep
{

/// Returns freed memory to the system. Fragments that one phase leaves in the heap are too small for the large arrays
/// of the next phase, which would be added to the peak.
inline void ReturnFreedMemory()
{
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

}  // namespace Sceneprep
