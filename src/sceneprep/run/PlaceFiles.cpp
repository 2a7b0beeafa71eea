#include <sceneprep/run/PlaceFiles.h>

#include <fcntl.h>
#include <fmt/format.h>
#include <sceneprep/run/ChildProcess.h>
#include <sceneprep/run/Error.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace Sceneprep
{

namespace fs = std::filesystem;

namespace
{

/// Flushes a file, or the names in a folder, to the disk.
/// Returns 0 or an error number.
int Sync(const fs::path& path)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return errno;
    const int problem = fsync(descriptor) == 0 ? 0 : errno;
    close(descriptor);
    return problem;
}

/// Flushes the contents of files to the disk, before their names appear.
void SyncAll(const std::vector<fs::path>& files)
{
    for (const fs::path& file : files)
    {
        if (const int problem = Sync(file))
            throw ToolError(fmt::format("cannot write {}: {}; choose another folder", file.filename().string(),
                                        std::strerror(problem)));
    }
}

std::vector<fs::path> ListFiles(const fs::path& folder)
{
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

/// Returns the path without links, or with them if the system cannot follow them.
fs::path CanonicalOrPlain(const fs::path& path)
{
    std::error_code error;
    const fs::path absolute = fs::absolute(path, error);
    const fs::path canonical = fs::weakly_canonical(absolute, error);
    return error ? absolute.lexically_normal() : canonical;
}

bool Exists(const fs::path& path)
{
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

bool HaveEqualContents(const fs::path& a, const fs::path& b)
{
    std::ifstream first(a, std::ios::binary);
    std::ifstream second(b, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return first && second && std::equal(Bytes(first), Bytes(), Bytes(second), Bytes());
}

/// @param written  the companion in its temporary place
void CheckCompanion(const fs::path& written, const fs::path& file, const std::vector<fs::path>& others)
{
    const fs::path companion = file.parent_path() / written.filename();
    const std::string cannot =
        fmt::format("cannot write {}: its companion {} ", file.string(), companion.filename().string());
    if (std::any_of(others.begin(), others.end(), [&](const fs::path& other) { return NameOneFile(companion, other); }))
        throw ToolError(cannot + "is also named as another output; choose another name for one of them");
    std::error_code ignored;
    if (fs::is_directory(companion, ignored))
        throw ToolError(cannot + "has the name of an existing folder; choose another name");
    if (Exists(companion) && !Exists(file) && !HaveEqualContents(written, companion))
        throw ToolError(cannot + "would replace another file; choose another name, or remove that file");
}

/// Blocks stop signals during its lifetime.
class Uninterrupted
{
public:
    Uninterrupted()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : kStopSignals)
            sigaddset(&signals, signal);
        sigprocmask(SIG_BLOCK, &signals, &before_);
    }
    ~Uninterrupted() { sigprocmask(SIG_SETMASK, &before_, nullptr); }
    Uninterrupted(const Uninterrupted&) = delete;
    Uninterrupted& operator=(const Uninterrupted&) = delete;

private:
    sigset_t before_ = {};
};

/// Returns false for pipes, devices and links, which are written to instead.
bool MayBeReplaced(const fs::path& file)
{
    const fs::file_type type = fs::symlink_status(file).type();
    return type == fs::file_type::not_found || type == fs::file_type::regular;
}

void WriteInto(const fs::path& target, const fs::path& file, const std::function<void(std::ostream&)>& write)
{
    std::ofstream stream(target, std::ios::binary | std::ios::trunc);
    write(stream);
    stream.close();
    if (!stream)
        throw ToolError(fmt::format("cannot write {}; choose another name", file.string()));
}

}  // namespace

TemporaryFolder::TemporaryFolder(const fs::path& parent, WorkState& state) : state_(state)
{
    std::string name = (parent / ".sceneprep-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        throw ToolError(fmt::format("cannot write into {}: {}; choose another folder", parent.string(),
                                    OneLine(std::strerror(errno))));
    path_ = name;
    state_.SetTemporaryFolder(path_);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    state_.SetTemporaryFolder({});
}

bool NameOneFile(const fs::path& a, const fs::path& b)
{
    std::error_code ignored;
    return CanonicalOrPlain(a) == CanonicalOrPlain(b) || fs::equivalent(a, b, ignored);
}

void MoveIntoPlace(const fs::path& from, const fs::path& file, WorkState& state, const std::vector<fs::path>& others)
{
    const fs::path folder = file.parent_path();
    std::vector<fs::path> companions = ListFiles(from);
    SyncAll(companions);
    std::erase(companions, from / file.filename());
    for (const fs::path& companion : companions)
        CheckCompanion(companion, file, others);
    const Uninterrupted uninterrupted;
    try
    {
        for (const fs::path& companion : companions)
            fs::rename(companion, folder / companion.filename());
        fs::rename(from / file.filename(), file);
        state.Enter(WorkState::Phase::Written, file);
    }
    catch (const fs::filesystem_error& error)
    {
        throw ToolError(fmt::format("cannot write {}: {}; choose another name", file.string(), error.code().message()));
    }
    Sync(folder);  // not every file system can; the files themselves are on the disk
}

void WriteWhole(const fs::path& file, WorkState& state, const std::function<void(std::ostream&)>& write)
{
    if (!MayBeReplaced(file))
    {
        WriteInto(file, file, write);
        return;
    }
    const fs::path absolute = fs::absolute(file);
    const TemporaryFolder temporary(absolute.parent_path(), state);
    WriteInto(temporary.Path() / absolute.filename(), file, write);
    MoveIntoPlace(temporary.Path(), absolute, state);
}

}  // namespace Sceneprep
