#include <sceneprep/Commands.h>

#include <sceneprep/CompareModels.h>
#include <sceneprep/Inspect.h>
#include <sceneprep/Manual.h>
#include <sceneprep/Prepare.h>
#include <sceneprep/assimp/Formats.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/PluginLibrary.h>
#include <sceneprep/run/StandardStreams.h>

#include <exception>

namespace Sceneprep
{

namespace
{

std::filesystem::path PluginPath(const Options& options)
{
    return options.plugin.empty() ? PluginLibrary::FindDefault() : options.plugin;
}

PluginLibrary LoadPlugin(const Options& options) { return PluginLibrary(PluginPath(options)); }

/// Returns the arguments of `batch` with the program and the plug-in, on which every output depends.
Batch::BatchCommand CompletedBatch(const Options& options)
{
    Batch::BatchCommand batch = options.batch;
    batch.program = std::filesystem::read_symlink("/proc/self/exe");
    batch.plugin = std::filesystem::absolute(PluginPath(options));
    if (!options.plugin.empty())
        batch.arguments.push_back("--plugin=" + batch.plugin.string());
    return batch;
}

int Dispatch(const Options& options, const RunContext& context, Progress& progress)
{
    switch (options.command)
    {
        case Command::Prepare:
            return Prepare(options.prepare, LoadPlugin(options), context, progress);
        case Command::Inspect:
            return Inspect(options.inspect, LoadPlugin(options), context, progress);
        case Command::Compare:
            return CompareModels(options.compare, LoadPlugin(options), context, progress);
        case Command::Batch:
            return Batch::RunBatch(CompletedBatch(options), context);
        case Command::Formats:
            context.out << FormatsText();
            break;
        case Command::PrintDocs:
            context.out << ManualText(options.docs);
            break;
    }
    return kDone;
}

}  // namespace

int RunCommand(const Options& options, const RunContext& context)
{
    context.state.Enter(WorkState::Phase::Starting, SubjectOf(options));
    std::ostream silence(nullptr);
    std::string problem;
    try
    {
        Progress progress(options.quiet ? silence : context.errors, !options.quiet && context.errorsGoToTerminal);
        const int status = Dispatch(options, context, progress);
        if (HasArrived(context.out))
            return status;
        problem = kNoStdout;
    }
    catch (const std::exception& error)
    {
        problem = context.state.DescribeError(error);
    }
    context.errors << ErrorLine(problem);
    return kUnusable;
}

std::string SubjectOf(const Options& options)
{
    switch (options.command)
    {
        case Command::Prepare:
            return options.prepare.inputs.empty() ? "" : options.prepare.inputs.front().string();
        case Command::Inspect:
            return options.inspect.input.string();
        case Command::Compare:
            return options.compare.files.empty() ? "" : options.compare.files.front().string();
        case Command::Batch:
            return options.batch.folder.string();
        case Command::Formats:
        case Command::PrintDocs:
            break;
    }
    return "the list of formats";
}

}  // namespace Sceneprep
