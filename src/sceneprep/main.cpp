#include <sceneprep/Commands.h>
#include <sceneprep/Isolation.h>
#include <sceneprep/Options.h>
#include <sceneprep/run/Error.h>
#include <sceneprep/run/StandardStreams.h>

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
    return RunIsolated(*parsed.options, std::cerr,
                       [](const Options& options) { return RunCommand(options, std::cout, std::cerr); });
}
