// A greedy scan: after a `*`, the rest of the pattern is tried at one position of the name after the other. Only the
// last `*` has to be tried again, because a later one can take over whatever an earlier one would have matched.

#include <pipeline/scene/MatchesGlob.h>

#include <cstddef>

namespace Pipeline
{

namespace
{

/// Returns the position after the character at a position: continuation bytes belong to it.
std::size_t AfterCharacter(std::string_view text, std::size_t position)
{
    ++position;
    while (position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0U) == 0x80U)
        ++position;
    return position;
}

}  // namespace

bool MatchesGlob(std::string_view name, std::string_view pattern)
{
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t star = std::string_view::npos;  // the last one in the pattern
    std::size_t afterStar = 0;                  // position in the name from which the rest is tried
    while (n < name.size())
    {
        if (p < pattern.size() && pattern[p] == '*')
        {
            star = p++;
            afterStar = n;
        }
        else if (p < pattern.size() && pattern[p] == '?')
        {
            ++p;
            n = AfterCharacter(name, n);
        }
        else if (p < pattern.size() && pattern[p] == name[n])
        {
            ++p;
            ++n;
        }
        else if (star != std::string_view::npos)
        {
            p = star + 1;
            n = ++afterStar;
        }
        else
        {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

}  // namespace Pipeline
