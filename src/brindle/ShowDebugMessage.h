#pragma once

#include <brindle/Export.h>

#include <functional>

/// The type of the host's debug message functor.
class BRINDLE_API DebugMessage
{
public:
    using Sink = std::function<void(const char* text, int value)>;

    /// Passes a text and a number to the sink. Without a sink the message is dropped.
    void operator()(const char* text, int value) const;

    /// Sets the sink for messages. An empty sink drops them.
    void SetSink(Sink sink);

private:
    Sink sink_;
};

/// Sends debug messages from plug-ins to the host: ShowDebugMessage("Loaded textures :", 12).
extern BRINDLE_API DebugMessage ShowDebugMessage;
