#include "render/jsonToTarn.h"

#include <algorithm>
#include <utility>

#include "JNIException.h"
#include "TnOutput.h"
#include "render/DictionaryReader.h"
#include "render/HostString.h"
#include "render/Notifications.h"
#include "render/OrderRenderer.h"
#include "render/ResultContext.h"
#include "render/StopRequest.h"
#include "support/DottedPath.h"

namespace {
constexpr const char* kNoMemory = "there is not enough memory for a text";
constexpr const char* kUnreadable = "Unknown error. ^1";
constexpr const char* kFeatures = "source.value.features";

void tellUnreadable(const std::string& reason)
{
    TnComposite text(kUnreadable, true);
    text.Add(hostString(reason, false));
    text.Finish();
    TnError(text, kShowInOutput, kLevelWarning);
}
} // namespace

struct HVINTEG_HIDDEN jsonToTarn::Impl
{
    Impl(TnProcedure* procedure, const ProcedureDataSource* source, FacSTDictionary& strings)
        : context{procedure, source, strings, false, JNIJSONObject()}
    {
    }
    Impl(TnProcedure* procedure, const ProcedureDataSource* source, FacSTDictionary& strings,
         const std::string& json)
        : context{procedure, source, strings, true, JNIJSONObject(json.c_str())}
    {
    }
    void readDictionary();
    bool render(jobject result);
    bool renderOne(OrderRenderer& renderer, std::size_t object);
    void noteLosses(std::size_t object, std::vector<Failure>& to);

    ResultContext context;
    bool showsNotifications = true;
    std::vector<OutputOrder> outputs;
    std::vector<Failure> unread; ///< failures of the constructor
    std::vector<Failure> failures;
};

void jsonToTarn::Impl::readDictionary()
{
    const LocalRef<> model = context.reader.get(context.document.getTop(), "dataModel");
    noteLosses(kDocument, unread);
    if (model)
        DictionaryReader(context.dictionary, model.get()).read();
}

void jsonToTarn::Impl::noteLosses(std::size_t object, std::vector<Failure>& to)
{
    const std::string reason = context.reader.takeFailure();
    if (!reason.empty())
        to.push_back({object, reason, {}});
    if (std::exchange(context.hasLostText, false))
        to.push_back({object, kNoMemory, {}});
}

bool jsonToTarn::Impl::render(jobject result)
{
    OrderRenderer renderer(context, result);
    bool hasOutput = false;
    for (std::size_t i = 0; i < outputs.size() && !isStopRequested(); ++i)
        hasOutput = renderOne(renderer, i) || hasOutput;
    return hasOutput;
}

/// A Java exception ends only this order.
bool jsonToTarn::Impl::renderOne(OrderRenderer& renderer, std::size_t object)
{
    try {
        const bool hasOutput = renderer.render(outputs[object]);
        noteLosses(object, failures);
        return hasOutput;
    } catch (const JNIException& error) {
        context.reader.takeFailure();
        failures.push_back({object, error.message(), error.trace()});
        return false;
    }
}

jsonToTarn::jsonToTarn(TnProcedure* procedure, const ProcedureDataSource* source,
                       FacSTDictionary& strings)
    : _impl(std::make_unique<Impl>(procedure, source, strings))
{
}

jsonToTarn::jsonToTarn(TnProcedure* procedure, const ProcedureDataSource* source,
                       FacSTDictionary& strings, const std::string& json)
    : _impl(std::make_unique<Impl>(procedure, source, strings, json))
{
    _impl->readDictionary();
}

jsonToTarn::~jsonToTarn() = default;

void jsonToTarn::addObjectToOutput(const OutputOrder& order)
{
    _impl->outputs.push_back(order);
}

void jsonToTarn::addObjectToOutput(const std::string& title, const std::string& location,
                                   const std::string& outlineTitle, const std::string& OMSSubType,
                                   OutputOrder::Type type)
{
    addObjectToOutput(OutputOrder(title, segmentsOf(location), type, outlineTitle, OMSSubType));
}

void jsonToTarn::removeObjects()
{
    _impl->outputs.clear();
}

void jsonToTarn::showNotifications(bool show)
{
    _impl->showsNotifications = show;
}

void jsonToTarn::setGeoJSONMap(const std::map<std::string, std::string>& texts)
{
    _impl->context.geoJSON = texts;
}

const std::map<std::string, std::string>& jsonToTarn::getGeoJSONMap() const
{
    return _impl->context.geoJSON;
}

bool jsonToTarn::generateOutput(const std::string& path)
{
    ResultContext& context = _impl->context;
    context.path = path;
    _impl->failures = _impl->unread;
    context.reader.takeFailure(); // of earlier questions
    if (!context.hasDocument)
        return _impl->render(nullptr);
    if (!context.isReadable()) {
        tellUnreadable(context.document.getParserError());
        return false;
    }
    const LocalRef<> result = context.reader.get(context.document.getTop(), path);
    _impl->noteLosses(kDocument, _impl->failures);
    if (!result)
        return false;
    if (_impl->showsNotifications)
        showNotificationsOf(context, result.get());
    _impl->noteLosses(kDocument, _impl->failures);
    // An order without output does not count as a failure.
    _impl->render(result.get());
    return true;
}

const std::vector<jsonToTarn::Failure>& jsonToTarn::getFailures() const
{
    return _impl->failures;
}

dataDictionary& jsonToTarn::getDataDictionary()
{
    return _impl->context.dictionary;
}

FacSTDictionary& jsonToTarn::getDictionary()
{
    return _impl->context.strings;
}

JNIJSONObject& jsonToTarn::getTop()
{
    return _impl->context.document;
}

bool jsonToTarn::hasItem(const std::string& path)
{
    ResultContext& context = _impl->context;
    return context.reader.followPath(context.document.getTop(), path).object != nullptr;
}

bool jsonToTarn::hasItemContent(const std::string& path)
{
    ResultContext& context = _impl->context;
    const auto item = context.reader.followPath(context.document.getTop(), path);
    return context.reader.hasContent(item.object);
}

bool jsonToTarn::hasGeoJSONFeatures(const std::string& text)
{
    DocumentPath& reader = _impl->context.reader;
    const JNIJSONObject document(text.c_str());
    const auto features = reader.followPath(document.getTop(), kFeatures);
    return reader.reader().isJSONArray(features.object) && reader.hasContent(features.object);
}

bool jsonToTarn::hasGeoJSONMapFeatures(const std::string& name)
{
    const auto& texts = _impl->context.geoJSON;
    if (name.empty())
        return !texts.empty() && std::all_of(texts.begin(), texts.end(), [&](const auto& entry) {
            return hasGeoJSONFeatures(entry.second);
        });
    const auto found = texts.find(name);
    return found != texts.end() && hasGeoJSONFeatures(found->second);
}
