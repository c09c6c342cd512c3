#include "render/Notifications.h"

#include <string_view>

#include "JNIException.h"
#include "TnOutput.h"
#include "bridge/JsonImage.h"
#include "render/TextItems.h"

namespace {

/// A severity that the host has no level for is a warning.
TnErrorLevel levelOf(std::string_view severity)
{
    static constexpr struct
    {
        std::string_view word;
        TnErrorLevel level;
    } kLevels[] = {
        {"NoScreen", 0}, {"Comment", 1}, {"Error", kLevelError}, {"Fatal", 4}, {"Catastrophic", 5}};
    for (const auto& entry : kLevels)
        if (severity == entry.word)
            return entry.level;
    return kLevelWarning;
}

void show(ResultContext& context, jobject notifications)
{
    const JsonImage image = JsonImage::of(context.document, notifications);
    const TextItems texts(context.source, context.dictionary);
    const JsonValue list = image.root();
    for (const JsonValue notification : list)
        if (const auto text = texts.cellTextOf(notification, false))
            TnError(*text, kShowInOutput, levelOf(notification["severity"].text()));
}

} // namespace

void showNotificationsOf(ResultContext& context, jobject result)
{
    try {
        show(context, context.reader.get(result, "notifications").get());
    } catch (const JNIException&) {
        // A message that does not come across must not cost the result.
    }
}
