#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "CoordinateSystems.h"
#include "InputParts.h"
#include "MapService.h"
#include "ScratchFolder.h"
#include "ServiceLayer.h"

/// Any texts as the answers of a map service: they are refused, or its layers are listed and the
/// records of one of them are read. The parts of the input are the answers: the service, its
/// layers, the layer, and pages of records.
namespace {

using namespace EmbeddedHV::maps;

constexpr std::size_t kMostAnswers = 8;
constexpr const char* kAddress = "http://service";
/// Answers as the service would. Behind the last page there is nothing.
MapService::Fetch serviceOf(const std::vector<std::string>& answers)
{
    constexpr std::size_t kFirstPage = 3;
    return [&answers, page = kFirstPage](const std::string& address, std::size_t,
                                         const StopWish&) mutable {
        const std::string path = address.substr(std::string(kAddress).size());
        std::size_t wanted = 0;
        if (path.starts_with("/layers"))
            wanted = 1;
        else if (path.starts_with("/0/query"))
            wanted = page++;
        else if (path.starts_with("/0"))
            wanted = 2;
        return wanted < answers.size() ? answers[wanted] : std::string();
    };
}

void listLayers(const std::vector<std::string>& answers)
{
    try {
        MapService service(kAddress, nullptr, serviceOf(answers));
        layersOf(service);
    } catch (const GeographyError&) { // what most texts come to
    }
}

void readRecords(const std::vector<std::string>& answers)
{
    static CoordinateSystems systems;
    try {
        const auto layer = openServiceLayer(MapService(kAddress, nullptr, serviceOf(answers)), 0,
                                            {.records = 1000}, systems);
        std::vector<std::size_t> all(layer->fields().size());
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = i;
        layer->rewind(all);
        LayerValue value;
        while (layer->next())
            for (const std::size_t field : all)
                layer->read(field, value);
    } catch (const GeographyError&) { // the same
    }
}

} // namespace

/// The libraries behind it keep what they read of a coordinate system until the process ends.
extern "C" const char* __asan_default_options()
{
    return "detect_leaks=0";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::string> answers =
        partsOf({reinterpret_cast<const char*>(data), size}, kMostAnswers);
    listLayers(answers);
    readRecords(answers);
    return 0;
}
