#include "hvhost/input/TextReasonFault.h"

#include <functional>
#include <string_view>

#include "base/Utf8.h"
#include "datafile/Duck.h"
#include "datafile/Fault.h"
#include "hvhost/input/InputFile.h"

namespace {

using datafile::TextReason;

constexpr std::size_t kMostShown = 60; ///< bytes of a value in a sentence

std::string shownValue(const TextReason& reason)
{
    if (reason.text.size() <= kMostShown)
        return '"' + reason.text + '"';
    return '"' + reason.text.substr(0, base::wholeCharacters(reason.text, kMostShown)) + "…\"";
}

/// Adds the reason of the first field that `isMeant` accepts.
CommandFault explained(const CommandFault& fault, const InputFile& input,
                       const std::function<bool(const std::string&)>& isMeant)
try {
    for (const TextReason& reason : input.textReasons())
        if (isMeant(reason.name)) {
            const std::string hint = reasonHint(reason, input);
            return {fault.status(), std::string(fault.what()) + ": " + reasonText(reason),
                    hint.empty() ? fault.hint() : hint, fault.detail()};
        }
    return fault;
} catch (const datafile::Fault&) {
    return fault; // the file cannot be read a second time
} catch (const datafile::duck::QueryError&) {
    return fault;
}

} // namespace

std::string reasonText(const TextReason& reason, Wording wording)
{
    const std::string place =
        reason.line > 0 ? filled(wording("on line ^1"), {std::to_string(reason.line)})
                        : filled(wording("in record ^1"), {std::to_string(reason.record)});
    const auto text = [&](const char* key) {
        return filled(wording(key), {reason.name, shownValue(reason), place});
    };
    switch (reason.cause) {
    case TextReason::Cause::Sign:
        return text("^1 is text because of the sign in ^2 ^3");
    case TextReason::Cause::Words:
        return text("^1 is text, and all its values are words such as ^2 ^3");
    default:
        return text("^1 is text because of ^2 ^3");
    }
}

std::string reasonHint(const TextReason& reason, const InputFile& input, Wording wording)
{
    if (!input.hasFormOptions())
        return {};
    switch (reason.cause) {
    case TextReason::Cause::Sign:
        return filled(wording("--type ^1=real reads numbers with such signs"), {reason.name});
    case TextReason::Cause::Words:
        return filled(wording("--type ^1=boolean reads them as 1 and 0"), {reason.name});
    default:
        return filled(wording("if that is a missing value, ^1 names it"), {input.missingOption()});
    }
}

CommandFault withTextReason(const CommandFault& fault, const InputFile& input)
{
    const std::string text = fault.what();
    if (!text.ends_with(" needs a number"))
        return fault;
    return explained(fault, input, [&](const std::string& name) {
        return text.find('"' + name + '"') != std::string::npos;
    });
}

CommandFault withTextReason(const TextFieldFault& fault, const InputFile& input)
{
    return explained(fault, input, [&](const std::string& name) { return name == fault.field(); });
}
