#include <sceneprep/run/StandardStreams.h>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sceneprep/run/ChildProcess.h>
#include <unistd.h>

#include <array>
#include <fstream>
#include <sstream>

namespace
{

using namespace Sceneprep;

TEST(StandardStreams, FailedWritesAreDetected)
{
    std::ostringstream out;
    out << "text";
    EXPECT_TRUE(HasArrived(out));
    std::ofstream full("/dev/full");
    full << "text";
    EXPECT_TRUE(full.good()) << "it is buffered";
    EXPECT_FALSE(HasArrived(full));
}

TEST(StandardStreams, ClosedStreamsAreOccupiedAndFail)
{
    const ChildResult result = RunInChildProcess(0, [] {
        close(STDIN_FILENO);
        close(STDOUT_FILENO);
        OccupyClosedStreams();
        std::array<char, 1> letter = {'a'};
        const bool canRead = read(STDIN_FILENO, letter.data(), 1) >= 0;
        const bool canWrite = write(STDOUT_FILENO, letter.data(), 1) >= 0;
        const bool isFree = open("/dev/null", O_RDONLY) <= STDERR_FILENO;
        return canRead || canWrite || isFree ? 1 : 5;
    });
    EXPECT_EQ(result.status, 5);
}

TEST(StandardStreams, OpenStreamsStay)
{
    const ChildResult result = RunInChildProcess(0, [] {
        std::array<int, 2> pipe = {};
        if (::pipe(pipe.data()) != 0 || dup2(pipe[1], STDOUT_FILENO) < 0)
            return 1;
        OccupyClosedStreams();
        std::array<char, 1> letter = {'a'};
        return write(STDOUT_FILENO, "b", 1) == 1 && read(pipe[0], letter.data(), 1) == 1 ? letter[0] : 1;
    });
    EXPECT_EQ(result.status, 'b');
}

}  // namespace
