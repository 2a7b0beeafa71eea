#include <pipeline/steps/StepSequence.h>

#include <brindle/ShowDebugMessage.h>

#include <algorithm>
#include <chrono>

namespace Pipeline
{

namespace
{

/// Adds up debug messages while it lives.
class MessageListener
{
public:
    explicit MessageListener(std::vector<MessageTotal>& totals)
    {
        ShowDebugMessage.SetSink([&totals](const char* text, int value) {
            auto total = std::find_if(totals.begin(), totals.end(),
                                      [text](const MessageTotal& candidate) { return candidate.text == text; });
            if (total == totals.end())
                total = totals.insert(totals.end(), MessageTotal{text, 0, 0});
            ++total->count;
            total->sum += value;
        });
    }
    ~MessageListener() { ShowDebugMessage.SetSink({}); }
    MessageListener(const MessageListener&) = delete;
    MessageListener& operator=(const MessageListener&) = delete;
};

}  // namespace

StepResult RunStep(const std::string& name, StepListener& progress, const std::function<void()>& step)
{
    StepResult result;
    result.name = name;
    progress.Begin(name);

    const MessageListener listener(result.messages);
    const auto start = std::chrono::steady_clock::now();
    step();
    result.milliseconds = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();

    progress.Finish(result.milliseconds);
    return result;
}

void StepSequence::Add(std::string name, Step step)
{
    AddCounting(std::move(name), [step = std::move(step)](Importing::SceneContainer& scene) {
        step(scene);
        return Changes();
    });
}

void StepSequence::AddCounting(std::string name, CountingStep step)
{
    AddGradual(std::move(name),
               [step = std::move(step)](Importing::SceneContainer& scene, const PartListener&) { return step(scene); });
}

void StepSequence::AddGradual(std::string name, GradualStep step)
{
    steps_.push_back({std::move(name), std::move(step)});
}

std::vector<std::string> StepSequence::StepNames() const
{
    std::vector<std::string> names;
    for (const NamedStep& step : steps_)
        names.push_back(step.name);
    return names;
}

std::vector<StepResult> StepSequence::Run(Importing::SceneContainer& scene, StepListener& progress) const
{
    const PartListener listener = [&progress](double part) { progress.Update(part); };
    std::vector<StepResult> results;
    for (const NamedStep& step : steps_)
    {
        Changes changes;
        results.push_back(RunStep(step.name, progress, [&] { changes = step.step(scene, listener); }));
        results.back().changes = std::move(changes);
    }
    return results;
}

}  // namespace Pipeline
