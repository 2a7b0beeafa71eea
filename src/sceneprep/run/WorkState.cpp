#include <sceneprep/run/WorkState.h>

#include <fmt/format.h>
#include <sceneprep/run/Error.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <system_error>

namespace Sceneprep::WorkState
{

namespace
{

using Text = std::array<char, 4001>;

struct Record
{
    Phase phase = Phase::Starting;
    bool ranOutOfMemory = false;
    std::uint64_t memoryLimit = 0;  // 0: not known
    Text file = {};
    Text temporaryFolder = {};
};

Record* MapRecord()
{
    void* memory = mmap(nullptr, sizeof(Record), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED)
        throw std::bad_alloc();
    return new (memory) Record;
}

Record& Shared()
{
    static Record* const record = MapRecord();
    return *record;
}

void Store(Text& target, const std::string& text)
{
    const std::size_t length = std::min(text.size(), target.size() - 1);
    std::memcpy(target.data(), text.data(), length);
    target[length] = '\0';
}

const char* Verb(Phase phase)
{
    switch (phase)
    {
        case Phase::Reading:
            return "reading";
        case Phase::Writing:
            return "writing";
        case Phase::Written:
            return "reporting on";
        case Phase::Starting:
        case Phase::Preparing:
            break;
    }
    return "preparing";
}

}  // namespace

void Reset() { Shared() = {}; }

void Enter(Phase phase, const std::filesystem::path& file)
{
    Shared().phase = phase;
    Shared().ranOutOfMemory = false;
    Store(Shared().file, file.string());
}

Phase CurrentPhase() { return Shared().phase; }

std::filesystem::path CurrentFile() { return Shared().file.data(); }

std::string Describe() { return fmt::format("{} {}", Verb(CurrentPhase()), CurrentFile().string()); }

std::string DescribeFailure(const std::exception& error)
{
    return fmt::format("{} went wrong ({}); check the model", Describe(), OneLine(error.what()));
}

void WatchMemory(std::uint64_t limit)
{
    Shared().memoryLimit = limit;
    std::set_new_handler([] {
        Shared().ranOutOfMemory = true;
        throw std::bad_alloc();
    });
}

bool RanOutOfMemory() { return Shared().ranOutOfMemory; }

std::string DescribeShortage()
{
    const auto limit = static_cast<double>(Shared().memoryLimit) / kBytesPerGiB;
    const std::string amount = limit > 0 ? fmt::format("than {:.3g} GiB", limit) : "memory than it may have";
    return fmt::format("{} needs more {}; raise --memory-limit or use a smaller model", Describe(), amount);
}

void SetTemporaryFolder(const std::filesystem::path& folder) { Store(Shared().temporaryFolder, folder.string()); }

void RemoveTemporaryFolder()
{
    const std::filesystem::path folder = Shared().temporaryFolder.data();
    if (folder.empty())
        return;
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    SetTemporaryFolder({});
}

}  // namespace Sceneprep::WorkState
