#include <sceneprep/model/PictureKind.h>

#include <algorithm>
#include <iterator>

namespace Sceneprep
{

namespace
{

constexpr PictureKind kKinds[] = {{"image/png", "png", "\x89PNG"}, {"image/jpeg", "jpg", "\xFF\xD8\xFF"}};

}  // namespace

const PictureKind* KindOf(const std::vector<unsigned char>& file)
{
    const auto* found = std::find_if(std::begin(kKinds), std::end(kKinds), [&](const PictureKind& kind) {
        return file.size() > kind.start.size() &&
               std::equal(kind.start.begin(), kind.start.end(), file.begin(),
                          [](char a, unsigned char b) { return static_cast<unsigned char>(a) == b; });
    });
    return found == std::end(kKinds) ? nullptr : found;
}

}  // namespace Sceneprep
