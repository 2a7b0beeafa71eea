#pragma once

#include <sceneprep/export/gltf/Buffers.h>
#include <sceneprep/export/gltf/WriteOptions.h>
#include <sceneprep/model/CompanionFiles.h>
#include <sceneprep/model/ImageKind.h>
#include <sceneprep/model/Textures.h>
#include <sceneprep/run/Notes.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace Sceneprep::Gltf
{

/// A file that is copied next to the model file.
struct ImageCopy
{
    std::string name;
    std::filesystem::path source;
};

/// An image in the document.
struct WrittenImage
{
    int index = -1;                   ///< -1 for an image that is omitted or of a kind that the format has no place for
    const ImageKind* kind = nullptr;  ///< null where it is unknown
};

/// Writes images as the bytes that they came as.
///
/// A binary file holds its images. A text file refers to files next to it: images that the input held are written
/// there, and image files are copied there unless they are in or below that folder already. Image files that are
/// missing, that are no known kind of image, or that are on the net stay references.
class ImageWriter
{
public:
    ImageWriter(const WriteOptions& options, Buffers& buffers, Document& document)
        : options_(options), buffers_(buffers), document_(document)
    {}

    /// Writes an image that the input held, once.
    /// @param image  has to outlive the writer
    /// @param object   name, extras and extensions of the image
    WrittenImage AddEmbedded(const EmbeddedTexture& image, Json object);

    /// Writes an image file, once.
    /// @param reference  the file relative to the folder of the output, or absolute
    /// @param original   the reference as the input had it, which is kept if the file is missing and images are copied:
    ///                   the file may be added to the output as it may be to the input. Empty: as `reference`
    WrittenImage AddFile(const std::string& reference, Json object, const std::string& original = {});

    const WriteOptions& Options() const { return options_; }
    const std::vector<CompanionFile>& Companions() const { return companions_; }
    const std::vector<ImageCopy>& Copies() const { return copies_; }
    /// Adds notes about missing files and dropped images.
    void AddNotes(Notes& notes) const;

private:
    WrittenImage WriteEmbedded(const EmbeddedTexture& image, Json object);
    WrittenImage WriteFile(const std::string& reference, Json object, const std::string& original);
    WrittenImage Embed(const std::filesystem::path& file, const ImageKind* kind, Json object);
    std::string CopyNameFor(const std::filesystem::path& file);

    const WriteOptions& options_;
    Buffers& buffers_;
    Document& document_;
    std::map<std::string, WrittenImage> written_;
    std::vector<CompanionFile> companions_;
    std::vector<ImageCopy> copies_;
    std::set<std::string> fileNames_;  // of companions and copies, in lower case
    std::set<std::string> missing_, unknown_, dropped_;
};

}  // namespace Sceneprep::Gltf
