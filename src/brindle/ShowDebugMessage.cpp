#include <brindle/ShowDebugMessage.h>

#include <utility>

DebugMessage ShowDebugMessage;

void DebugMessage::operator()(const char* text, int value) const
{
    if (sink_)
        sink_(text, value);
}

void DebugMessage::SetSink(Sink sink) { sink_ = std::move(sink); }
