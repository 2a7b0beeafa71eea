#pragma once

#include <sceneprep/run/Error.h>
#include <sceneprep/run/WorkState.h>

#include <new>

namespace Sceneprep
{

/// Runs a task that other libraries take part in, and returns its result.
/// @throws std::bad_alloc if the task threw a ToolError after an allocation failed, regardless of the reason that it
///         gives.
template <typename Task>
auto NameShortage(const WorkState& state, const Task& task)
{
    try
    {
        return task();
    }
    catch (const ToolError&)
    {
        if (state.RanOutOfMemory())
            throw std::bad_alloc();
        throw;
    }
}

}  // namespace Sceneprep
