#include <sceneprep/run/Progress.h>

#include <fmt/format.h>
#include <sceneprep/run/Error.h>

#include <algorithm>
#include <utility>

namespace Sceneprep
{

namespace
{

constexpr const char* kBackToEmptyLine = "\r\033[K";

/// Returns seconds up to a minute, and whole minutes above.
std::string TextOf(std::chrono::seconds left)
{
    if (left <= std::chrono::minutes(1))
        return fmt::format("{} s", left.count());
    return fmt::format("{} min", std::chrono::ceil<std::chrono::minutes>(left).count());
}

}  // namespace

Progress::Progress(std::ostream& out, bool movingLine, Clock clock)
    : out_(out), movingLine_(movingLine), clock_(std::move(clock))
{}

Progress::~Progress() { Clear(); }

void Progress::Begin(const std::string& step)
{
    step_ = step;
    if (movingLine_)
    {
        timeLeft_.Begin(clock_());
        ShowLine(step_ + " ...");
    }
    else
        out_ << step_ << " ..." << std::endl;
}

void Progress::Update(double part)
{
    if (!movingLine_)
        return;
    const double done = std::clamp(part, 0.0, 1.0);
    std::string text = fmt::format("{} ... {:.0f} %", step_, done * 100);
    if (const auto left = timeLeft_.Estimate(done, clock_()))
        text += fmt::format(", {} left", TextOf(*left));
    ShowLine(text);
}

void Progress::Finish(double milliseconds)
{
    if (movingLine_)
        ShowLine(fmt::format("{}: {:.1f} ms", step_, milliseconds));
}

void Progress::Show(const Notes& notes)
{
    const std::string shown = shown_;
    Clear();
    for (const Note& note : notes.All())
        out_ << "note: " << OneLine(note.text) << std::endl;
    if (!shown.empty())
        ShowLine(shown);
}

void Progress::Clear()
{
    if (shown_.empty())
        return;
    out_ << kBackToEmptyLine << std::flush;
    shown_.clear();
}

void Progress::ShowLine(const std::string& text)
{
    if (text == shown_)
        return;
    out_ << kBackToEmptyLine << text << std::flush;
    shown_ = text;
}

}  // namespace Sceneprep
