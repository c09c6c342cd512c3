#include "components/descriptives/settings/FieldRule.h"

#include "steps/SettingWords.h"

namespace EmbeddedHV {
namespace {

enum Handling : int
{
    Keep,
    Detect
};

const char* WordOf(Handling handling)
{
    switch (handling) {
    case Keep:
        return "none";
    case Detect:
        return "detect";
    default:
        return nullptr;
    }
}

} // namespace

FieldRule fieldRuleOf(const Settings& settings)
{
    const auto detects = [&](const char* key) {
        return wordSetting(settings, key, Keep).value_or(Keep) == Detect;
    };
    FieldRule rule;
    rule.storage = detects("storageTypeHandling");
    rule.measure = detects("measureHandling");
    rule.role = detects("fieldRoleHandling");
    rule.target = settings.text("targetField").value_or("");
    return rule;
}

} // namespace EmbeddedHV
