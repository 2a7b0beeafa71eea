#include <sceneprep/Inspect.h>

#include <pipeline/scene/WorldMeasure.h>
#include <sceneprep/import/InputFiles.h>
#include <sceneprep/import/LoadInputs.h>
#include <sceneprep/import/ModelSource.h>
#include <sceneprep/report/Budget.h>
#include <sceneprep/report/Inspection.h>
#include <sceneprep/report/SceneTree.h>
#include <sceneprep/run/Error.h>

namespace Sceneprep
{

int Inspect(const InspectOptions& options, const PluginLibrary& plugin, const RunContext& context, Progress& progress)
{
    CheckReadable(options.input);
    Inputs inputs =
        LoadInputs({options.input}, {.keepGoing = false, .scene = options.scene}, plugin, progress, context.state);
    Model& model = inputs.model;
    const Inspection inspection = InspectModel(model, inputs.files, BytesOf(inputs.files));
    const std::vector<BudgetResult> budget = CheckBudget(options.budget, SizeOf(inspection.figures));
    for (const std::string& note : Pipeline::NotesOnTriangles(inspection.figures.world))
        model.notes.Add(note);
    progress.Show(model.notes);
    progress.Clear();

    if (options.json)
    {
        context.out << InspectionJson(options.input, *model.scene, inspection, budget, options.tree);
    }
    else
    {
        context.out << InspectionText(inspection) << (budget.empty() ? "" : "\n") << BudgetTable(budget);
        if (options.tree)
            context.out << '\n' << TreeText(*model.scene);
    }
    return IsExceeded(budget) ? kOverBudget : kDone;
}

}  // namespace Sceneprep
