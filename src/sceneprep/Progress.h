#pragma once

#include <ostream>
#include <string>

namespace Sceneprep
{

/// Tells what is going on: on a terminal one line that is written over and over, elsewhere plain lines.
class Progress
{
public:
    /// @param movingLine  whether `out` is a terminal
    Progress(std::ostream& out, bool movingLine);
    /// Clears the moving line.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// A step begins.
    void Begin(const std::string& step);
    /// The step is done to this part, 0 to 1; values outside are taken as the nearest. Shown on a terminal only.
    void Update(double part);
    /// The step that began last is done. Shown on a terminal only.
    void Finish(double milliseconds);
    /// Says something that stays on the screen.
    void Note(const std::string& text);
    /// Takes the moving line away, before something else is printed.
    void Clear();

private:
    void Show(const std::string& text);

    std::ostream& out_;
    bool movingLine_;
    std::string step_;
    std::string shown_;
};

}  // namespace Sceneprep
