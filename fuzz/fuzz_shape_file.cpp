#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <string>

#include "InputParts.h"
#include "ScratchFolder.h"
#include "maps/Geography.h"

/// Any bytes as the files of a shape file: it is refused, or its fields are listed and its records
/// can be read. The parts of the input are shapes, index, attributes, coordinate system and code
/// page.
namespace {

using namespace EmbeddedHV::maps;

constexpr const char* kExtensions[] = {".shp", ".shx", ".dbf", ".prj", ".cpg"};

void readAll(Layer& layer)
{
    std::vector<std::size_t> all(layer.fields().size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    require(!all.empty() && layer.fields().back().GetGeo() != nullptr);
    layer.rewind(all);
    LayerValue value;
    Shape shape;
    constexpr int kMost = 1000; // a header may claim more records than there are
    for (int record = 0; record < kMost && layer.next(); ++record) {
        for (const std::size_t field : all)
            layer.read(field, value);
        // The last field has the shape.
        require(layer.readShape(shape) != value.isMissing);
    }
}

} // namespace

extern "C" Geography* hvGeography();

/// The libraries behind it keep what they read of a coordinate system until the process ends.
extern "C" const char* __asan_default_options()
{
    return "detect_leaks=0";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFolder folder;
    std::vector<std::string> parts = partsOf(textOf(data, size), std::size(kExtensions));
    parts.resize(std::size(kExtensions));
    for (std::size_t i = 0; i < parts.size(); ++i)
        folder.put(std::string("map") + kExtensions[i], parts[i]);
    try {
        readAll(*hvGeography()->openShapeFile(folder.native("map.shp")));
    } catch (const GeographyError&) { // what most files come to
    }
    return 0;
}
