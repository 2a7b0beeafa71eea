#include <sceneprep/report/ReportPage.h>

#include <sceneprep/report/Base64.h>
#include <sceneprep/report/JsonFigures.h>
#include <sceneprep/report/PageText.h>

#include <algorithm>
#include <string>
#include <vector>

namespace Sceneprep::Report
{

namespace
{

/// Escapes "<" in JSON, the only character by which data could end its element or begin a comment.
std::string WithoutMarkup(const std::string& json)
{
    std::string text;
    text.reserve(json.size());
    for (const char c : json)
    {
        if (c == '<')
            text += "\\u003c";
        else
            text += c;
    }
    return text;
}

void WriteJsonElement(std::ostream& out, const std::string& name, const std::string& json)
{
    out << "<script type=\"application/json\" id=\"" << name << "\">" << WithoutMarkup(json) << "</script>\n";
}

/// Sets the failbit of `out` if fewer bytes can be read than the view has.
void WriteFileElement(std::ostream& out, const std::string& name, PageView& view)
{
    constexpr std::size_t kPiece = 49152;  // whole groups of three
    out << "<script type=\"text/plain\" id=\"" << name << "\">";
    std::vector<char> piece(kPiece);
    std::uintmax_t left = view.bytes;
    while (left > 0)
    {
        const auto size = static_cast<std::size_t>(std::min<std::uintmax_t>(left, kPiece));
        if (!view.file.read(piece.data(), static_cast<std::streamsize>(size)))
        {
            out.setstate(std::ios::failbit);
            return;
        }
        WriteBase64(out, piece.data(), size);
        left -= size;
    }
    out << "</script>\n";
}

void WriteView(std::ostream& out, const std::string& name, PageView& view)
{
    WriteJsonElement(out, name, JsonText({{"bytes", view.bytes}, {"remark", view.remark}}));
    WriteFileElement(out, name + "-file", view);
}

}  // namespace

void WritePage(std::ostream& out, const PrepareReport& report, PageView& before, PageView& after)
{
    for (const std::string_view piece : GetPageText().beforeData)
        out << piece;
    WriteJsonElement(out, "report", ReportJson(report));
    WriteView(out, "before", before);
    WriteView(out, "after", after);
    for (const std::string_view piece : GetPageText().afterData)
        out << piece;
}

}  // namespace Sceneprep::Report
