#include "render/Notifications.h"

#include <string_view>

#include "TnOutput.h"
#include "bridge/JsonImage.h"
#include "bridge/LocalRef.h"
#include "render/TextItems.h"

namespace {

/// An unknown severity counts as a warning.
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

} // namespace

void showNotificationsOf(ResultContext& context, jobject result)
{
    const LocalRef<> notifications = context.reader.get(result, "notifications");
    const JsonImage image = JsonImage::of(context.document, notifications.get());
    const TextItems texts(context.source, context.dictionary);
    const JsonValue list = image.root();
    for (const JsonValue notification : list)
        if (const auto text = texts.cellTextOf(notification, false))
            TnError(*text, kShowInOutput, levelOf(notification["severity"].text()));
    context.hasLostText = context.hasLostText || texts.hasLostText();
}
