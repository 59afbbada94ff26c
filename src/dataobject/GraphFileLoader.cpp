#include "dataobject/GraphFileLoader.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <new>

#include "com/FileStream.h"
#include "com/StreamError.h"
#include "com/StreamReader.h"
#include "dataobject/GraphStreamFormat.h"
#include "dataobject/NpyReader.h"
#include "dataobject/TextGridReader.h"

namespace vexplot {

namespace {

std::string LowerExtension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return extension;
}

GraphContents ReadText(StreamReader& reader, bool commaSeparated) {
    if (reader.Remaining() > GraphFileLoader::kMaxTextBytes)
        reader.Fail(STG_E_DOCFILECORRUPT, "a text file of " + std::to_string(reader.Remaining()) +
                                              " bytes exceeds the limit of " +
                                              std::to_string(GraphFileLoader::kMaxTextBytes));
    std::string text(reader.Remaining(), '\0');
    reader.ReadBytes({reinterpret_cast<uint8_t*>(text.data()), text.size()}, "text");
    return TextGridReader::Read(text, commaSeparated);
}

GraphContents ReadByExtension(StreamReader& reader, const std::string& extension) {
    // Read as text, a plot file's bytes would give a confusing fault about
    // some "cell" deep inside it.
    if (extension == ".vxg")
        reader.Fail(STG_E_DOCFILECORRUPT, "this is a plot file (.vxg), not a data file: open it as a plot");
    if (extension == ".3do" || extension == ".npy") {
        GraphContents contents = extension == ".3do" ? GraphStreamFormat::Read(reader) : NpyReader::Read(reader);
        if (reader.Remaining() > 0)
            reader.Fail(STG_E_DOCFILECORRUPT, std::to_string(reader.Remaining()) + " unexpected bytes follow the data");
        return contents;
    }
    return ReadText(reader, extension == ".csv");
}

}  // namespace

GraphContents GraphFileLoader::Load(const std::string& path) {
    try {
        HRESULT hr = S_OK;
        std::string reason;
        ComPtr<FileStream> file = FileStream::Open(path, FileStream::Mode::Read, &hr, &reason);
        if (!file) throw StreamError(hr, "cannot open the file: " + reason);
        StreamReader reader(file.Get());
        GraphContents contents = ReadByExtension(reader, LowerExtension(path));
        contents.name = std::filesystem::path(path).stem().string();
        return contents;
    } catch (const StreamError& e) {
        throw StreamError(e.Code(), path + ": " + e.Description());
    } catch (const std::bad_alloc&) {
        throw StreamError(E_OUTOFMEMORY, path + ": not enough memory to load the data");
    } catch (const std::length_error&) {
        throw StreamError(E_OUTOFMEMORY, path + ": not enough memory to load the data");
    }
}

}  // namespace vexplot
