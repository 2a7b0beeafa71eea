#pragma once

#include <pipeline/steps/StepListener.h>
#include <sceneprep/run/Notes.h>
#include <sceneprep/run/TimeLeft.h>

#include <functional>
#include <ostream>
#include <string>

namespace Sceneprep
{

/// Prints progress: on a terminal one line that is overwritten, with the percentage done and the time left; otherwise
/// one line for each step.
class Progress : public Pipeline::StepListener
{
public:
    using Clock = std::function<TimeLeft::Clock::time_point()>;

    /// @param movingLine  whether `out` is a terminal
    /// @param clock       returns the time; called on a terminal only
    Progress(std::ostream& out, bool movingLine, Clock clock = TimeLeft::Clock::now);
    /// Clears the moving line.
    ~Progress() override;

    void Begin(const std::string& step) override;
    /// Shows the fraction done of the step, clamped to 0 to 1; on a terminal only.
    void Update(double part) override;
    /// Shows the time of the step that began last; on a terminal only.
    void Finish(double milliseconds) override;
    /// Prints notes, each on a line that stays.
    void Show(const Notes& notes);
    /// Clears the moving line, before something else is printed.
    void Clear();

private:
    void ShowLine(const std::string& text);

    std::ostream& out_;
    bool movingLine_;
    Clock clock_;
    TimeLeft timeLeft_;
    std::string step_;
    std::string shown_;
};

}  // namespace Sceneprep
