#pragma once

#include <importing/base/Export.h>

class Vyk_Channel;
struct ChannelType;

/// @file
/// The two entry points with plain names through which the host uses the library.

extern "C"
{
    /// Creates an empty SceneContainer. The caller destroys it through its virtual destructor.
    /// @return the container, or null when memory runs out. Nothing is thrown.
    IMPORTING_API Vyk_Channel* InitDLL();

    /// Fills the library's static record of its channel type. Not safe for concurrent calls.
    /// @return the record, which belongs to the library.
    IMPORTING_API ChannelType* GetType();
}
