#include <sceneprep/run/WorkState.h>

#include <fmt/format.h>
#include <sceneprep/run/Error.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <system_error>

namespace Sceneprep
{

namespace
{

using Text = std::array<char, 4001>;

void Store(Text& target, const std::string& text)
{
    const std::size_t length = std::min(text.size(), target.size() - 1);
    std::memcpy(target.data(), text.data(), length);
    target[length] = '\0';
}

const char* Verb(WorkState::Phase phase)
{
    switch (phase)
    {
        case WorkState::Phase::Reading:
            return "reading";
        case WorkState::Phase::Writing:
            return "writing";
        case WorkState::Phase::Written:
            return "reporting on";
        case WorkState::Phase::Starting:
        case WorkState::Phase::Preparing:
            break;
    }
    return "preparing";
}

}  // namespace

struct WorkState::Record
{
    Phase phase = Phase::Starting;
    bool ranOutOfMemory = false;
    std::uint64_t memoryLimit = 0;  // 0: not known
    Text file = {};
    Text temporaryFolder = {};
};

WorkState::Record* WorkState::watched_ = nullptr;

WorkState::WorkState()
{
    void* memory = mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    record_ = new (memory) Record;
}

WorkState::~WorkState()
{
    if (watched_ == record_)
    {
        std::set_new_handler(nullptr);
        watched_ = nullptr;
    }
    munmap(record_, sizeof(Record));
}

void WorkState::Reset() { *record_ = {}; }

void WorkState::Enter(Phase phase, const std::filesystem::path& file)
{
    record_->phase = phase;
    record_->ranOutOfMemory = false;
    Store(record_->file, file.string());
}

WorkState::Phase WorkState::CurrentPhase() const { return record_->phase; }

std::filesystem::path WorkState::CurrentFile() const { return record_->file.data(); }

std::string WorkState::Describe() const { return fmt::format("{} {}", Verb(CurrentPhase()), CurrentFile().string()); }

std::string WorkState::DescribeError(const std::exception& error) const
{
    if (dynamic_cast<const ToolError*>(&error) != nullptr)
        return error.what();
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
        return DescribeShortage();
    return fmt::format("{} failed: {}; check the model", Describe(), OneLine(error.what()));
}

void WorkState::WatchMemory(std::uint64_t limit)
{
    record_->memoryLimit = limit;
    watched_ = record_;
    std::set_new_handler([] {
        watched_->ranOutOfMemory = true;
        throw std::bad_alloc();
    });
}

bool WorkState::RanOutOfMemory() const { return record_->ranOutOfMemory; }

std::string WorkState::DescribeShortage() const
{
    const auto limit = static_cast<double>(record_->memoryLimit) / kBytesPerGiB;
    const std::string amount = limit > 0 ? fmt::format("than {:.3g} GiB", limit) : "memory than there is";
    if (CurrentPhase() == Phase::Starting)
        return fmt::format("starting sceneprep needs more {}; raise --memory-limit", amount);
    return fmt::format("{} needs more {}; raise --memory-limit or use a smaller model", Describe(), amount);
}

void WorkState::SetTemporaryFolder(const std::filesystem::path& folder)
{
    Store(record_->temporaryFolder, folder.string());
}

void WorkState::RemoveTemporaryFolder()
{
    const std::filesystem::path folder = record_->temporaryFolder.data();
    if (folder.empty())
        return;
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    SetTemporaryFolder({});
}

}  // namespace Sceneprep
