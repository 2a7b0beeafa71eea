#pragma once

#include <importing/plugin/SceneContainer.h>
#include <sceneprep/PartCounter.h>
#include <sceneprep/Progress.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Sceneprep
{

/// What the plug-in said under one text while a step ran.
struct MessageTotal
{
    std::string text;
    int count = 0;      ///< how many messages
    long long sum = 0;  ///< of their numbers; the plug-in's timing messages carry milliseconds
};

/// How much of one kind a step changed.
struct Change
{
    std::string what;  ///< plural, as "nodes renamed"
    std::size_t count = 0;

    friend bool operator==(const Change&, const Change&) = default;
};
using Changes = std::vector<Change>;

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
StepResult RunStep(const std::string& name, Progress& progress, const std::function<void()>& step);

/// A list of named steps that work on a scene. A new step is one more Add...().
class Pipeline
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
    std::vector<StepResult> Run(Importing::SceneContainer& scene, Progress& progress) const;

private:
    struct NamedStep
    {
        std::string name;
        GradualStep step;
    };

    std::vector<NamedStep> steps_;
};

}  // namespace Sceneprep
