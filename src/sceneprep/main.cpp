#include <sceneprep/Commands.h>
#include <sceneprep/Isolation.h>
#include <sceneprep/ParseCommandLine.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/StandardStreams.h>
#include <unistd.h>

#include <iostream>

int main(int argc, char** argv)
{
    using namespace Sceneprep;

    OccupyClosedStreams();
    const ParsedCommandLine parsed = ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    if (!parsed.options)
    {
        std::cout << parsed.output;
        if (!parsed.error.empty())
            std::cerr << parsed.error << '\n';
        if (HasArrived(std::cout))
            return parsed.exitStatus;
        std::cerr << ErrorLine(kNoStdout);
        return kUnusable;
    }
    WorkState state;
    const RunContext context{
        .out = std::cout, .errors = std::cerr, .state = state, .errorsGoToTerminal = isatty(STDERR_FILENO) != 0};
    return parsed.options->isIsolated ? RunIsolated(*parsed.options, context, RunCommand)
                                      : RunCommand(*parsed.options, context);
}
