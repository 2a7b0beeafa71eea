#include <sceneprep/run/OtherProgram.h>

#include <fmt/format.h>
#include <sceneprep/run/Error.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

namespace Sceneprep
{

namespace
{

/// As shells do: the program was not found.
constexpr int kNotFound = 127;
constexpr int kSignalBase = 128;

[[noreturn]] void BecomeProgram(std::vector<char*>& words)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    execvp(words.front(), words.data());
    _exit(kNotFound);
}

}  // namespace

std::optional<int> RunOtherProgram(const std::vector<std::string>& arguments)
{
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        words.push_back(const_cast<char*>(argument.c_str()));  // execvp() does not change them
    words.push_back(nullptr);

    const pid_t child = fork();
    if (child < 0)
        throw ToolError(fmt::format("cannot run {}: {}; end other programs and try again", arguments.front(),
                                    OneLine(std::strerror(errno))));
    if (child == 0)
        BecomeProgram(words);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    if (WIFSIGNALED(status))
        return kSignalBase + WTERMSIG(status);
    return WEXITSTATUS(status) == kNotFound ? std::nullopt : std::optional(WEXITSTATUS(status));
}

}  // namespace Sceneprep
