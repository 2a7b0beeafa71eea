#include <sceneprep/Progress.h>

#include <fmt/format.h>

#include <algorithm>

namespace Sceneprep
{

namespace
{

constexpr const char* kBackToEmptyLine = "\r\033[K";

}  // namespace

Progress::Progress(std::ostream& out, bool movingLine) : out_(out), movingLine_(movingLine) {}

Progress::~Progress() { Clear(); }

void Progress::Begin(const std::string& step)
{
    step_ = step;
    if (movingLine_)
        Show(step_ + " ...");
    else
        out_ << step_ << " ..." << std::endl;
}

void Progress::Update(double part)
{
    if (movingLine_)
        Show(fmt::format("{} ... {:.0f} %", step_, std::clamp(part, 0.0, 1.0) * 100));
}

void Progress::Finish(double milliseconds)
{
    if (movingLine_)
        Show(fmt::format("{}: {:.1f} ms", step_, milliseconds));
}

void Progress::Note(const std::string& text)
{
    const std::string shown = shown_;
    Clear();
    out_ << "note: " << text << std::endl;
    if (!shown.empty())
        Show(shown);
}

void Progress::Clear()
{
    if (shown_.empty())
        return;
    out_ << kBackToEmptyLine << std::flush;
    shown_.clear();
}

void Progress::Show(const std::string& text)
{
    if (text == shown_)
        return;
    out_ << kBackToEmptyLine << text << std::flush;
    shown_ = text;
}

}  // namespace Sceneprep
