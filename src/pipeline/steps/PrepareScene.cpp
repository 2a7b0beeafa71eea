#include <pipeline/steps/PrepareScene.h>

#include <pipeline/scene/CheckScene.h>
#include <pipeline/steps/FreezeNodes.h>
#include <pipeline/steps/Steps.h>

#include <string>
#include <utility>

namespace Pipeline
{

namespace
{

/// For callers that do not follow the progress.
class NoListener : public StepListener
{
public:
    void Begin(const std::string& /*step*/) override {}
    void Update(double /*part*/) override {}
    void Finish(double /*milliseconds*/) override {}
};

}  // namespace

PrepareOptions RecommendedSteps()
{
    PrepareOptions options;
    for (const Step& step : Steps())
    {
        if (step.isRecommended)
            options.*step.flag = true;
    }
    return options;
}

PrepareResult PrepareScene(Importing::SceneContainer& scene, const PrepareOptions& options)
{
    SceneSupplement supplement;
    NoListener listener;
    return PrepareScene(scene, options, supplement, listener);
}

PrepareResult PrepareScene(Importing::SceneContainer& scene, const PrepareOptions& options, SceneSupplement& supplement,
                           StepListener& listener)
{
    CheckScene(scene);
    const WorkScene work{scene, supplement};
    const PartListener parts = [&listener](double part) { listener.Update(part); };
    PrepareResult result;
    result.unusedKeeps = FreezeNodes(work, options.keep);
    for (const Step& step : Steps())
    {
        if (!step.isChosen(options))
            continue;
        Changes changes;
        result.steps.push_back(RunStep(step.title, listener, [&] { changes = step.run(work, options, parts); }));
        result.steps.back().changes = std::move(changes);
    }
    return result;
}

}  // namespace Pipeline
