#include <sceneprep/ChildProcess.h>

#include <fmt/format.h>
#include <sceneprep/Error.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>

namespace Sceneprep
{

namespace
{

/// Asking for more memory than the machine has then fails at once. The address sanitizer reserves far more than it
/// uses, so there is no limit in its builds.
void LimitMemory()
{
#if !defined(__SANITIZE_ADDRESS__)
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long pageSize = sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0)
        return;
    const rlim_t bytes = static_cast<rlim_t>(pages) * static_cast<rlim_t>(pageSize);
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_AS, &limit);
#endif
}

[[noreturn]] void RunAndExit(const std::function<int()>& command)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    LimitMemory();
    const int status = command();
    std::cout.flush();
    std::cerr.flush();
    std::exit(status);
}

int WaitFor(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    return status;
}

}  // namespace

int RunInChildProcess(const std::string& subject, std::ostream& errors, const std::function<int()>& command)
{
    std::cout.flush();
    std::fflush(nullptr);  // or both processes would print what is buffered
    const pid_t child = fork();
    if (child < 0)
        return command();
    if (child == 0)
        RunAndExit(command);

    const int status = WaitFor(child);
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    errors << fmt::format(
        "sceneprep: the model library crashed on {} ({}); repair the file or convert it to another "
        "format\n",
        subject, strsignal(WTERMSIG(status)));
    return kUnusable;
}

}  // namespace Sceneprep
