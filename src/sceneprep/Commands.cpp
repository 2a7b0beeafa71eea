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

PluginLibrary LoadPlugin(const Options& options)
{
    return PluginLibrary(options.plugin.empty() ? PluginLibrary::FindDefault() : options.plugin);
}

int Dispatch(const Options& options, const RunContext& context, Progress& progress)
{
    switch (options.command)
    {
        case Command::Prepare:
            return Prepare(options.prepare, LoadPlugin(options), context, progress);
        case Command::Inspect:
            Inspect(options.inspect, LoadPlugin(options), context, progress);
            break;
        case Command::Compare:
            return CompareModels(options.compare, LoadPlugin(options), context, progress);
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
        case Command::Formats:
        case Command::PrintDocs:
            break;
    }
    return "the list of formats";
}

}  // namespace Sceneprep
