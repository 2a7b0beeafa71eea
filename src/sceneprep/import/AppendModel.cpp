#include <sceneprep/import/AppendModel.h>

#include <fmt/format.h>
#include <importing/base/CheckedAccess.h>
#include <sceneprep/model/TextureReferences.h>

#include <map>

namespace Sceneprep
{

namespace
{

/// @return the reference in a form that means the same beside other models' pictures: those in the file by number,
///         `before` pictures counted first, and no file in the form of a number.
std::string Distinct(const Textures& textures, const std::string& reference, std::size_t before)
{
    if (const EmbeddedTexture* picture = FindEmbedded(textures, reference))
        return fmt::format("*{}", before + static_cast<std::size_t>(picture - textures.embedded.data()));
    return reference.starts_with('*') ? "./" + reference : reference;
}

void MakeReferencesDistinct(Model& model)
{
    for (std::string& entry : model.scene->TextureLibrary)
    {
        const std::string before = SpellingOf(model.textures, entry);
        const std::string spelling = Distinct(model.textures, before, 0);
        if (spelling == before)
            continue;
        entry = spelling.starts_with('*') ? spelling : "./" + entry;
        model.textures.spelling.emplace(entry, spelling);
    }
}

/// Takes the names of pictures away that a file outside or another picture has too: a name would lead to the wrong one.
/// Every reference to a picture is a number by now.
void DropSharedNames(Model& model)
{
    std::map<std::string, int> uses;
    for (const std::string& entry : model.scene->TextureLibrary)
        ++uses[FileNameOf(SpellingOf(model.textures, entry))];
    for (const EmbeddedTexture& picture : model.textures.embedded)
        ++uses[FileNameOf(picture.fileName)];
    for (EmbeddedTexture& picture : model.textures.embedded)
    {
        if (uses[FileNameOf(picture.fileName)] > 1)
            picture.fileName.clear();
    }
}

}  // namespace

void AppendModel(Model& first, Model other)
{
    MakeReferencesDistinct(first);
    const std::size_t pictures = first.textures.embedded.size();
    for (std::string& entry : other.scene->TextureLibrary)
    {
        const std::string reference = Distinct(other.textures, SpellingOf(other.textures, entry), pictures);
        const std::string spelling =
            reference.starts_with('*') ? reference : RebasedReference(reference, other.file, first.file);
        const int index = first.scene->AddTextureToLibrary(spelling, true);
        entry = Importing::At(first.scene->TextureLibrary, index);
        first.textures.spelling.emplace(entry, spelling);
    }
    for (EmbeddedTexture& picture : other.textures.embedded)
        first.textures.embedded.push_back(std::move(picture));
    first.notes.Append(std::move(other.notes));
    first.scene->AppendSC(other.scene.get());
    DropSharedNames(first);
}

}  // namespace Sceneprep
