#include <sceneprep/run/StandardStreams.h>

#include <fcntl.h>
#include <unistd.h>

namespace Sceneprep
{

void OccupyClosedStreams()
{
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
    {
        if (fcntl(stream, F_GETFD) >= 0)
            continue;
        const int wrongWay = stream == STDIN_FILENO ? O_WRONLY : O_RDONLY;
        static_cast<void>(open("/dev/null", wrongWay));  // takes the lowest free number, which is this one
    }
}

bool HasArrived(std::ostream& out)
{
    out.flush();
    return out.good();
}

}  // namespace Sceneprep
