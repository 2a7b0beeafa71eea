#pragma once

#include <pipeline/steps/Changes.h>
#include <pipeline/steps/StepListener.h>

#include <functional>
#include <string>
#include <vector>

namespace Pipeline
{

/// The messages of the plug-in with one text during a step.
struct MessageTotal
{
    std::string text;
    int count = 0;      ///< number of messages
    long long sum = 0;  ///< of their numbers; the plug-in's timing messages carry milliseconds
};

/// The time, messages and changes of a step.
struct StepResult
{
    std::string name;
    double milliseconds = 0;
    std::vector<MessageTotal> messages;  ///< in the order in which each text appeared first
    Changes changes;
};

/// Runs one step: reports its begin and end, measures its time and collects the host's debug messages. Messages after
/// the step are dropped. Exceptions of the step are passed on.
StepResult RunStep(const std::string& name, StepListener& progress, const std::function<void()>& step);

}  // namespace Pipeline
