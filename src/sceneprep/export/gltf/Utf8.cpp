#include <sceneprep/export/gltf/Utf8.h>

#include <algorithm>
#include <cstddef>

namespace Sceneprep::Gltf
{

namespace
{

/// What the first byte of a character says about the others; by the table of well-formed sequences in the Unicode
/// standard, chapter 3.9.
struct Sequence
{
    std::size_t length = 0;           ///< 0: no character begins so
    unsigned char secondFrom = 0x80;  ///< the range of the second byte
    unsigned char secondUpTo = 0xBF;
};

Sequence SequenceOf(unsigned char first)
{
    if (first < 0x80)
        return {1};
    if (first >= 0xC2 && first <= 0xDF)
        return {2};
    if (first == 0xE0)
        return {3, 0xA0, 0xBF};
    if (first == 0xED)
        return {3, 0x80, 0x9F};
    if (first >= 0xE1 && first <= 0xEF)
        return {3};
    if (first == 0xF0)
        return {4, 0x90, 0xBF};
    if (first >= 0xF1 && first <= 0xF3)
        return {4};
    if (first == 0xF4)
        return {4, 0x80, 0x8F};
    return {};
}

/// @return the length of the character at a place; 0 when there is none.
std::size_t CharacterAt(const std::string& text, std::size_t place)
{
    const auto byteAt = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const Sequence sequence = SequenceOf(byteAt(place));
    if (sequence.length <= 1)
        return sequence.length;
    if (place + sequence.length > text.size())
        return 0;
    if (byteAt(place + 1) < sequence.secondFrom || byteAt(place + 1) > sequence.secondUpTo)
        return 0;
    const bool areContinued = std::all_of(text.begin() + static_cast<std::ptrdiff_t>(place + 2),
                                          text.begin() + static_cast<std::ptrdiff_t>(place + sequence.length),
                                          [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; });
    return areContinued ? sequence.length : 0;
}

}  // namespace

std::string ToUtf8(const std::string& text)
{
    std::string result;
    for (std::size_t place = 0; place < text.size();)
    {
        const std::size_t length = CharacterAt(text, place);
        result += length > 0 ? text.substr(place, length) : "\xEF\xBF\xBD";
        place += std::max<std::size_t>(length, 1);
    }
    return result;
}

}  // namespace Sceneprep::Gltf
