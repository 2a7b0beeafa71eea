#pragma once

#include <string_view>

namespace Pipeline
{

/// Returns whether the whole name matches the pattern, in which `*` stands for any characters, none included, and `?`
/// for one character. All other characters stand for themselves; case matters. Names are UTF-8.
/// Takes linear time for patterns with one `*`, and at most the product of the lengths.
bool MatchesGlob(std::string_view name, std::string_view pattern);

}  // namespace Pipeline
