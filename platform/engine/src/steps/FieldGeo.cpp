#include <charconv>

#include "steps/FieldUpdate.h"
#include "steps/SettingWords.h"

namespace EmbeddedHV {
namespace {

/// A positive whole number, from a setting that is a text.
int countIn(const Settings& settings, const std::string& key, int otherwise)
{
    const auto text = settings.text(key);
    if (!text)
        return otherwise;
    int value = 0;
    const char* end = text->data() + text->size();
    const auto [last, error] = std::from_chars(text->data(), end, value);
    if (error != std::errc() || last != end || value <= 0)
        settings.refuse(key, "is \"" + *text + "\", not a whole number above 0");
    return value;
}

double neededCorner(const Settings& envelope, const char* key)
{
    const auto corner = envelope.number(key);
    if (!corner)
        envelope.refuse(key, "is missing");
    return corner->IsReal() ? corner->GetReal() : static_cast<double>(corner->GetInteger());
}

CFGeo::Envelope envelopeOf(const Settings& settings, const MessageSink& message)
{
    const CFGeo::Envelope envelope = {
        neededCorner(settings, "leftUpperX"), neededCorner(settings, "leftUpperY"),
        neededCorner(settings, "rightLowerX"), neededCorner(settings, "rightLowerY")};
    settings.reportOthers(message);
    return envelope;
}

} // namespace

CFGeo geoOf(const Settings& settings, const MessageSink& message)
{
    settings.neededText("type");
    CFGeo geo(*wordSetting(settings, "type", CFGeo::Point), countIn(settings, "coordinates", 0));
    geo.SetCoordinateSystem(countIn(settings, "wkid", -1), settings.text("csname").value_or(""),
                            settings.flag("isProjected").value_or(false),
                            settings.text("wkt").value_or(""));
    if (settings.has("GeoEnvelope"))
        geo.SetEnvelope(envelopeOf(settings.neededObject("GeoEnvelope"), message));
    settings.reportOthers(message);
    return geo;
}

} // namespace EmbeddedHV
