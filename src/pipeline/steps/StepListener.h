#pragma once

#include <string>

namespace Pipeline
{

/// Receives the progress of steps while they run.
class StepListener
{
public:
    StepListener() = default;
    virtual ~StepListener() = default;
    StepListener(const StepListener&) = delete;
    StepListener& operator=(const StepListener&) = delete;

    /// Called when a step begins.
    virtual void Begin(const std::string& step) = 0;
    /// Called with the part of the current step that is done, 0 to 1.
    virtual void Update(double part) = 0;
    /// Called when the current step has ended.
    virtual void Finish(double milliseconds) = 0;
};

}  // namespace Pipeline
