#pragma once

#include <pipeline/steps/StepListener.h>
#include <sceneprep/run/TimeLeft.h>

#include <functional>
#include <ostream>
#include <string>

namespace Sceneprep
{

/// Tells what is going on: on a terminal one line that is written over and over, with the share that is done and the
/// time left; elsewhere plain lines.
class Progress : public Pipeline::StepListener
{
public:
    using Clock = std::function<TimeLeft::Clock::time_point()>;

    /// @param movingLine  whether `out` is a terminal
    /// @param clock       what time it is; asked on a terminal only
    Progress(std::ostream& out, bool movingLine, Clock clock = TimeLeft::Clock::now);
    /// Clears the moving line.
    ~Progress() override;

    void Begin(const std::string& step) override;
    /// The step is done to this part, 0 to 1; values outside are taken as the nearest. Shown on a terminal only.
    void Update(double part) override;
    /// The step that began last is done. Shown on a terminal only.
    void Finish(double milliseconds) override;
    /// Says something that stays on the screen.
    void Note(const std::string& text);
    /// Takes the moving line away, before something else is printed.
    void Clear();

private:
    void Show(const std::string& text);

    std::ostream& out_;
    bool movingLine_;
    Clock clock_;
    TimeLeft timeLeft_;
    std::string step_;
    std::string shown_;
};

}  // namespace Sceneprep
