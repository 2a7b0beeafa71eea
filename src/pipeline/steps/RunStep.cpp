#include <pipeline/steps/RunStep.h>

#include <brindle/ShowDebugMessage.h>

#include <algorithm>
#include <chrono>

namespace Pipeline
{

namespace
{

/// Adds up debug messages while it lives.
class MessageListener
{
public:
    explicit MessageListener(std::vector<MessageTotal>& totals)
    {
        ShowDebugMessage.SetSink([&totals](const char* text, int value) {
            auto total = std::find_if(totals.begin(), totals.end(),
                                      [text](const MessageTotal& candidate) { return candidate.text == text; });
            if (total == totals.end())
                total = totals.insert(totals.end(), MessageTotal{text, 0, 0});
            ++total->count;
            total->sum += value;
        });
    }
    ~MessageListener() { ShowDebugMessage.SetSink({}); }
    MessageListener(const MessageListener&) = delete;
    MessageListener& operator=(const MessageListener&) = delete;
};

}  // namespace

StepResult RunStep(const std::string& name, StepListener& progress, const std::function<void()>& step)
{
    StepResult result;
    result.name = name;
    progress.Begin(name);

    const MessageListener listener(result.messages);
    const auto start = std::chrono::steady_clock::now();
    step();
    result.milliseconds = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();

    progress.Finish(result.milliseconds);
    return result;
}

}  // namespace Pipeline
