#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/PartCounter.h>
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

/// A list of named steps that work on a scene. A new step is one more Add...().
class StepSequence
{
public:
    using Step = std::function<void(Importing::SceneContainer& scene)>;
    using CountingStep = std::function<Changes(Importing::SceneContainer& scene)>;
    using GradualStep = std::function<Changes(Importing::SceneContainer& scene, const PartListener& listener)>;

    /// Appends a step.
    void Add(std::string name, Step step);
    /// Appends a step that tells what it changed.
    void AddCounting(std::string name, CountingStep step);
    /// Appends a step that tells what it changed and, on the way, how far it has come.
    void AddGradual(std::string name, GradualStep step);

    /// @return the names of the steps, in order.
    std::vector<std::string> StepNames() const;

    /// Runs the steps in order.
    std::vector<StepResult> Run(Importing::SceneContainer& scene, StepListener& progress) const;

private:
    struct NamedStep
    {
        std::string name;
        GradualStep step;
    };

    std::vector<NamedStep> steps_;
};

}  // namespace Pipeline
