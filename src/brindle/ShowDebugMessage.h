#pragma once

#include <brindle/Export.h>

#include <functional>

/// The type of the host's debug message functor.
class BRINDLE_API DebugMessage
{
public:
    using Sink = std::function<void(const char* text, int value)>;

    /// Hands a text and a number to the sink; without a sink the message is dropped.
    void operator()(const char* text, int value) const;

    /// Says where messages go from now on. An empty sink drops them.
    void SetSink(Sink sink);

private:
    Sink sink_;
};

/// Through it plug-ins talk to the host: ShowDebugMessage("Loaded textures :", 12).
extern BRINDLE_API DebugMessage ShowDebugMessage;
