#include <sceneprep/report/PrintableName.h>

#include <fmt/format.h>

namespace Sceneprep
{

std::string PrintableName(std::string_view name)
{
    std::string printable;
    for (const char c : name)
    {
        if (c == '\n')
            printable += "\\n";
        else if (c == '\r')
            printable += "\\r";
        else if (c == '\t')
            printable += "\\t";
        else if (c == '\\')
            printable += "\\\\";
        else if (static_cast<unsigned char>(c) < ' ' || c == '\x7F')
            printable += fmt::format("\\x{:02x}", static_cast<unsigned>(static_cast<unsigned char>(c)));
        else
            printable += c;
    }
    return printable;
}

}  // namespace Sceneprep
