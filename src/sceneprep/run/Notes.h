#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace Sceneprep
{

/// One line for the user about a run.
struct Note
{
    std::string text;
    /// The name of the loss, such as "morph-targets": `--strict` fails on it and `--allow-loss` accepts it. Empty if
    /// nothing was lost.
    std::string loss = {};

    friend bool operator==(const Note&, const Note&) = default;
};

/// Collects notes in order.
class Notes
{
public:
    /// Adds a note without a loss.
    void Add(std::string text) { notes_.push_back({std::move(text), {}}); }
    /// As Add(), with the count in brackets after the text; adds nothing if the count is 0.
    void Add(const std::string& text, std::size_t count)
    {
        if (count > 0)
            Add(text + " (" + std::to_string(count) + ")");
    }
    /// Adds a note about content of the input that the output does not have.
    void AddLoss(std::string loss, std::string text) { notes_.push_back({std::move(text), std::move(loss)}); }
    /// As AddLoss(), with the count in brackets after the text; adds nothing if the count is 0.
    void AddLoss(std::string loss, const std::string& text, std::size_t count)
    {
        if (count > 0)
            AddLoss(std::move(loss), text + " (" + std::to_string(count) + ")");
    }
    /// Moves another collector's notes to the end of this one.
    void Append(Notes&& other)
    {
        for (Note& note : other.notes_)
            notes_.push_back(std::move(note));
        other.notes_.clear();
    }

    /// Returns the names of the losses, without those that are allowed, each once and in order.
    std::vector<std::string> LossesExcept(const std::vector<std::string>& allowed) const
    {
        std::vector<std::string> losses;
        for (const Note& note : notes_)
        {
            const auto holds = [&note](const std::vector<std::string>& names) {
                return std::find(names.begin(), names.end(), note.loss) != names.end();
            };
            if (!note.loss.empty() && !holds(allowed) && !holds(losses))
                losses.push_back(note.loss);
        }
        return losses;
    }

    const std::vector<Note>& All() const { return notes_; }
    bool Empty() const { return notes_.empty(); }

private:
    std::vector<Note> notes_;
};

}  // namespace Sceneprep
