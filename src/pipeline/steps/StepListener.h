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

    /// A step begins.
    virtual void Begin(const std::string& step) = 0;
    /// The step that began last is done to this part, 0 to 1.
    virtual void Update(double part) = 0;
    /// The step that began last is done.
    virtual void Finish(double milliseconds) = 0;
};

}  // namespace Pipeline
