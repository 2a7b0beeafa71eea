#include <sceneprep/report/ReportPage.h>

#include <sceneprep/report/Base64.h>
#include <sceneprep/report/JsonFigures.h>
#include <sceneprep/report/PageText.h>

#include <bit>
#include <string>

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

template <typename T>
void WriteArrayElement(std::ostream& out, const std::string& name, const std::vector<T>& array)
{
    static_assert(std::endian::native == std::endian::little, "arrays are written as they are in memory");
    out << "<script type=\"text/plain\" id=\"" << name << "\">";
    WriteBase64(out, array.data(), array.size() * sizeof(T));
    out << "</script>\n";
}

void WritePicture(std::ostream& out, const std::string& name, const Picture& picture)
{
    const Json json = {{"min", picture.min},
                       {"max", picture.max},
                       {"triangles", picture.triangles},
                       {"nodeNames", picture.nodeNames},
                       {"materialNames", picture.materialNames},
                       {"materialColors", picture.materialColors}};
    WriteJsonElement(out, name, JsonText(json));
    WriteArrayElement(out, name + "-corners", picture.corners);
    WriteArrayElement(out, name + "-parts", picture.parts);
}

}  // namespace

void WritePage(std::ostream& out, const PrepareReport& report, const Picture& before, const Picture& after)
{
    for (const std::string_view piece : GetPageText().beforeData)
        out << piece;
    WriteJsonElement(out, "report", ReportJson(report));
    WritePicture(out, "before", before);
    WritePicture(out, "after", after);
    for (const std::string_view piece : GetPageText().afterData)
        out << piece;
}

}  // namespace Sceneprep::Report
