#include <sceneprep/Inspect.h>

#include <pipeline/scene/SceneStats.h>
#include <pipeline/scene/WorldMeasure.h>
#include <sceneprep/import/LoadInputs.h>
#include <sceneprep/import/ModelSource.h>
#include <sceneprep/report/Report.h>
#include <sceneprep/report/SceneTree.h>

namespace Sceneprep
{

void Inspect(const InspectOptions& options, const PluginLibrary& plugin, const RunContext& context, Progress& progress)
{
    CheckReadable(options.input);
    Model model = std::move(
        LoadInputs({options.input}, {.keepGoing = false, .scene = options.scene}, plugin, progress, context.state)
            .model);
    const Pipeline::WorldMeasure world = Pipeline::Measure(*model.scene);
    for (const std::string& note : Pipeline::NotesOnTriangles(world))
        model.notes.Add(note);
    progress.Show(model.notes);
    progress.Clear();

    const std::vector<Finding> findings = FindImprovements(model);
    if (options.json)
    {
        context.out << InspectionJson(options.input, *model.scene, world, options.tree, findings);
        return;
    }
    context.out << StatsTable(Pipeline::CountScene(*model.scene)) << WorldTable({world})
                << FindingsText(findings, findings.size());
    if (options.tree)
        context.out << '\n' << TreeText(*model.scene);
}

}  // namespace Sceneprep
