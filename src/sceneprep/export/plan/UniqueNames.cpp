#include <sceneprep/export/plan/UniqueNames.h>

namespace Sceneprep
{

std::size_t UniqueNames::Uses(const std::string& name) const
{
    const auto found = uses_.find(name);
    return found == uses_.end() ? 0 : found->second;
}

std::string UniqueNames::Make(const std::string& wanted, const std::string& otherwise)
{
    const std::string& plain = wanted.empty() ? otherwise : wanted;
    std::string name = plain;
    for (std::size_t& number = lastNumber_.emplace(plain, 1).first->second; Uses(name) > 0;)
        name = plain + "_" + std::to_string(++number);
    Count(name);
    return name;
}

}  // namespace Sceneprep
