#include <importing/processing/TickTimer.h>

#if defined(_WIN32)
#include <windows.h>
#else
#include <chrono>
#endif

namespace Importing
{
namespace
{

std::uint32_t Ticks()
{
#if defined(_WIN32)
    return GetTickCount();
#else
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
#endif
}

}  // namespace

TickTimer::TickTimer() : start_(Ticks()) {}

int TickTimer::ElapsedMilliseconds() const { return static_cast<int>(Ticks() - start_); }

}  // namespace Importing
