#include <sceneprep/run/Progress.h>

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

namespace
{

using namespace std::chrono_literals;
using Sceneprep::Progress;
using Sceneprep::TimeLeft;

Sceneprep::Notes NoteOn(const std::string& text)
{
    Sceneprep::Notes notes;
    notes.Add(text);
    return notes;
}

TEST(Progress, WithoutATerminalStepsAndNotesArePlainLines)
{
    std::ostringstream out;
    {
        Progress progress(out, false);
        progress.Begin("Import");
        progress.Update(0.5);
        progress.Finish(12);
        progress.Show(NoteOn("something"));
        progress.Clear();
    }
    EXPECT_EQ(out.str(), "Import ...\nnote: something\n");
}

TEST(Progress, ANoteIsOneLine)
{
    std::ostringstream out;
    Progress progress(out, false);
    progress.Show(NoteOn("the clip of 'two\nlines'"));
    EXPECT_EQ(out.str(), "note: the clip of 'two lines'\n");
}

TEST(Progress, OnATerminalOneLineIsOverwritten)
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

TEST(Progress, PartsAreClampedToTheRange)
{
    std::ostringstream out;
    Progress progress(out, true);
    progress.Begin("S");
    progress.Update(7);
    progress.Update(-1);
    EXPECT_EQ(out.str(), "\r\033[KS ...\r\033[KS ... 100 %\r\033[KS ... 0 %");
}

TEST(Progress, ANoteIsPrintedAboveTheProgressLine)
{
    std::ostringstream out;
    Progress progress(out, true);
    progress.Begin("S");
    progress.Show(NoteOn("n"));
    EXPECT_EQ(out.str(), "\r\033[KS ...\r\033[Knote: n\n\r\033[KS ...");
}

/// A clock that advances only when the test sets it.
class ProgressAndTime : public testing::Test
{
protected:
    std::string LineAt(TimeLeft::Clock::duration time, double part)
    {
        now_ = TimeLeft::Clock::time_point(time);
        progress_.Update(part);
        const std::string all = out_.str();
        return all.substr(all.rfind("\033[K") + 3);
    }

    std::ostringstream out_;
    TimeLeft::Clock::time_point now_;
    Progress progress_{out_, true, [this] { return now_; }};
};

TEST_F(ProgressAndTime, TheTimeLeftIsPrintedAfterThePercentage)
{
    progress_.Begin("S");
    EXPECT_EQ(LineAt(999ms, 0.2), "S ... 20 %");
    EXPECT_EQ(LineAt(2s, 0.25), "S ... 25 %, 6 s left");
    EXPECT_EQ(LineAt(2s + 300ms, 0.26), "S ... 26 %, 6 s left");
    EXPECT_EQ(LineAt(8s, 1), "S ... 100 %");
}

TEST_F(ProgressAndTime, LongTimesAreInMinutes)
{
    progress_.Begin("S");
    EXPECT_EQ(LineAt(0s, 0.01), "S ... 1 %");
    EXPECT_EQ(LineAt(60s, 0.5), "S ... 50 %, 60 s left");
    progress_.Begin("T");
    EXPECT_EQ(LineAt(60s, 0.01), "T ... 1 %");
    EXPECT_EQ(LineAt(121s, 0.5), "T ... 50 %, 2 min left");
}

TEST_F(ProgressAndTime, EachStepIsTimedSeparately)
{
    progress_.Begin("S");
    EXPECT_EQ(LineAt(1s, 0.1), "S ... 10 %");
    EXPECT_EQ(LineAt(10s, 0.5), "S ... 50 %, 10 s left");
    progress_.Begin("T");
    EXPECT_EQ(LineAt(10s + 500ms, 0.5), "T ... 50 %");
    EXPECT_EQ(LineAt(12s, 0.5), "T ... 50 %, 2 s left");
}

TEST(Progress, WithoutATerminalTheClockIsNotRead)
{
    std::ostringstream out;
    Progress progress(out, false, []() -> TimeLeft::Clock::time_point { throw std::logic_error("asked"); });
    progress.Begin("S");
    EXPECT_NO_THROW(progress.Update(0.5));
    EXPECT_EQ(out.str(), "S ...\n");
}

}  // namespace
