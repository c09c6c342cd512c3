#include "JNIException.h"
#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/JsonImage.h"
#include "bridge/LocalRef.h"
#include "runner/HVRunner.h"
#include "support/Conversions.h"

// Converts the JSON answers of the engine's metadata service to plain structures.

namespace {

/// Throws the parser's message as the exception that Java would throw.
[[noreturn]] void refuseText(const std::string& problem)
{
    throw JNIException("com.zor.json.java.JSONException", problem, {});
}

JNIJSONObject parsedObject(const std::string& json)
{
    JNIJSONObject object(json.c_str());
    if (!object.isGood())
        refuseText(object.getParserError());
    return object;
}

JNIJSONArray parsedArray(const std::string& json)
{
    JNIJSONArray array(json.c_str());
    if (!array.isGood())
        refuseText(array.getErrorMessage());
    return array;
}

/// Calls `visit` with each element of an array. The reference is valid during the call.
template <class Visit>
void forEach(JNIJSONArray& reader, jobject array, Visit visit)
{
    const int size = reader.size(array);
    for (int i = 0; i < size; ++i)
        visit(LocalRef<>(reader.getEnv(), reader.get(array, i)).get(), i);
}

HVRunner::LayerInfo layerOf(JNIJSONObject& reader, JNIJSONArray& arrays, jobject element)
{
    HVRunner::LayerInfo layer;
    layer.id = String2Integer(reader.getChildAsString(element, "value"));
    layer.name = reader.getChildAsString(element, "name");
    layer.keys = reader.getChildAsString(element, "keys");
    layer.description = reader.getChildAsString(element, "description");
    layer.features = reader.getChildAsString(element, "features");
    const LocalRef<> subLayers(reader.getEnv(), reader.get(element, "subLayers"));
    if (subLayers)
        forEach(arrays, subLayers.get(), [&](jobject id, int) {
            layer.subLayers.push_back(String2Integer(reader.toString(id)));
        });
    return layer;
}

HVRunner::RecommendPCS recommendationOf(JNIJSONObject& reader, JNIJSONArray& arrays,
                                        jobject element)
{
    HVRunner::RecommendPCS system;
    system.wkid = String2Integer(reader.getChildAsString(element, "wkid"));
    system.name = reader.getChildAsString(element, "name");
    system.wkt = reader.getChildAsString(element, "wkt");
    const LocalRef<> methods(reader.getEnv(), reader.get(element, "trans_methods"));
    if (!methods)
        return system;
    forEach(arrays, methods.get(), [&](jobject method, int) {
        for (const std::string& name : reader.keySet(method)) {
            system.transMethods.push_back(name);
            system.transForward.push_back(reader.getChildAsString(method, name.c_str()) ==
                                          "forward");
        }
    });
    return system;
}

} // namespace

bool HVRunner::ParseCoordinatesSystemInfo(const std::string& json, int& wkid, std::string& name,
                                          std::string& wkt, CSTYPE& type)
{
    if (json.empty()) {
        type = CSTYPE_None;
        return false;
    }
    JNIJSONObject object = parsedObject(json);
    const JsonImage image = JsonImage::of(object, object.getTop());
    const JsonValue info = image.root();
    wkid = info["wkid"].integer();
    name = info["name"].text();
    wkt = info["wkt"].text();
    type = info["isProjection"].flag(false) ? CSTYPE_Projected : CSTYPE_Geographic;
    return true;
}

bool HVRunner::ParseMapServiceLayers(const std::string& json, std::vector<int>& ids,
                                     std::vector<std::string>& names)
{
    if (json.empty())
        return false;
    JNIJSONArray array = parsedArray(json);
    JNIJSONObject reader(nullptr);
    ids.clear();
    names.clear();
    forEach(array, array.getObject(), [&](jobject layer, int) {
        ids.push_back(String2Integer(reader.getChildAsString(layer, "value")));
        names.push_back(reader.getChildAsString(layer, "name"));
    });
    return true;
}

bool HVRunner::ParseMapServiceLayers(const std::string& json, std::vector<LayerInfo>& layers)
{
    if (json.empty())
        return false;
    JNIJSONArray array = parsedArray(json);
    JNIJSONArray subLayers(static_cast<const char*>(nullptr));
    JNIJSONObject reader(nullptr);
    layers.clear();
    forEach(array, array.getObject(),
            [&](jobject layer, int) { layers.push_back(layerOf(reader, subLayers, layer)); });
    return true;
}

bool HVRunner::ParseRecommendPCS(const std::string& json, int& id,
                                 std::vector<RecommendPCS>& result)
{
    if (json.empty())
        return false;
    JNIJSONObject areas = parsedObject(json);
    const std::set<std::string> keys = areas.keySet();
    // With several areas, a caller could not know which one `id` is.
    if (keys.size() != 1)
        return false;
    id = String2Integer(*keys.begin());
    const LocalRef<> systems(areas.getEnv(), areas.get(areas.getTop(), keys.begin()->c_str()));
    JNIJSONArray array(static_cast<const char*>(nullptr));
    JNIJSONArray methods(static_cast<const char*>(nullptr));
    JNIJSONObject reader(nullptr);
    result.assign(static_cast<std::size_t>(array.size(systems.get())), {});
    forEach(array, systems.get(), [&](jobject system, int index) {
        result[static_cast<std::size_t>(index)] = recommendationOf(reader, methods, system);
    });
    return true;
}

HVRunner::RecommendPCSInputMaker::RecommendPCSInputMaker() : _top(std::make_unique<JNIJSONObject>())
{
}

HVRunner::RecommendPCSInputMaker::~RecommendPCSInputMaker() = default;

void HVRunner::RecommendPCSInputMaker::addInput(int id, double leftUpperX, double leftUpperY,
                                                double rightLowerX, double rightLowerY)
{
    JNIJSONObject area;
    area.put("leftUpperX", leftUpperX);
    area.put("leftUpperY", leftUpperY);
    area.put("rightLowerX", rightLowerX);
    area.put("rightLowerY", rightLowerY);
    _top->put(Integer2String(id), &area);
}

std::string HVRunner::RecommendPCSInputMaker::toString()
{
    return _top->serialize();
}
