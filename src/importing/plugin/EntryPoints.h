#pragma once

#include <importing/base/Export.h>

class Vyk_Channel;
struct ChannelType;

/// @file
/// The two plain entry points through which the host uses the library.

extern "C"
{
    /// @return a new, empty SceneContainer that the caller destroys through its virtual destructor; null when there is
    ///         no memory.
    IMPORTING_API Vyk_Channel* InitDLL();

    /// Fills the library's one record of its channel type.
    /// @return the record; it stays the library's. Not safe for concurrent calls.
    IMPORTING_API ChannelType* GetType();
}
