#pragma once

#include <pipeline/steps/Changes.h>
#include <pipeline/steps/StepListener.h>

#include <functional>
#include <string>
#include <vector>

namespace Pipeline
{

/// What the plug-in said under one text while a step ran.
struct MessageTotal
{
    std::string text;
    int count = 0;      ///< how many messages
    long long sum = 0;  ///< of their numbers; the plug-in's timing messages carry milliseconds
};

/// How a step went.
struct StepResult
{
    std::string name;
    double milliseconds = 0;
    std::vector<MessageTotal> messages;  ///< in the order in which the texts came up first
    Changes changes;
};

/// Runs one step: announces it, times it and listens to the host's debug messages meanwhile. Afterwards messages are
/// dropped. Exceptions of the step pass through.
StepResult RunStep(const std::string& name, StepListener& progress, const std::function<void()>& step);

}  // namespace Pipeline
