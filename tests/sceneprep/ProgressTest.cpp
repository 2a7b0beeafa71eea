#include <sceneprep/Progress.h>

#include <gtest/gtest.h>

#include <sstream>

namespace
{

using Sceneprep::Progress;

TEST(Progress, ElsewhereThanOnATerminalStepsAndNotesArePlainLines)
{
    std::ostringstream out;
    {
        Progress progress(out, false);
        progress.Begin("Import");
        progress.Update(0.5);
        progress.Finish(12);
        progress.Note("something");
        progress.Clear();
    }
    EXPECT_EQ(out.str(), "Import ...\nnote: something\n");
}

TEST(Progress, OnATerminalOneLineMoves)
{
    std::ostringstream out;
    {
        Progress progress(out, true);
        progress.Begin("Import");
        progress.Update(0.25);
        progress.Finish(12.34);
    }
    EXPECT_EQ(out.str(),
              "\r\033[KImport ..."
              "\r\033[KImport ... 25 %"
              "\r\033[KImport: 12.3 ms"
              "\r\033[K");
}

TEST(Progress, WritesNothingWhileTheTextStaysTheSame)
{
    std::ostringstream out;
    Progress progress(out, true);
    progress.Update(0.251);
    const std::string before = out.str();
    progress.Update(0.249);
    EXPECT_EQ(out.str(), before);
}

TEST(Progress, PartsOutsideAreTheNearest)
{
    std::ostringstream out;
    Progress progress(out, true);
    progress.Begin("S");
    progress.Update(7);
    progress.Update(-1);
    EXPECT_EQ(out.str(), "\r\033[KS ...\r\033[KS ... 100 %\r\033[KS ... 0 %");
}

TEST(Progress, ANoteStaysAboveTheMovingLine)
{
    std::ostringstream out;
    Progress progress(out, true);
    progress.Begin("S");
    progress.Note("n");
    EXPECT_EQ(out.str(), "\r\033[KS ...\r\033[Knote: n\n\r\033[KS ...");
}

}  // namespace
