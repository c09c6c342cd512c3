#include "hvhost/input/TextReasonFault.h"

#include <string>
#include <string_view>

#include "datafile/Fault.h"
#include "hvhost/input/DataFile.h"

namespace {

constexpr std::size_t kLongestValue = 60;

} // namespace

CommandFault withTextReason(const CommandFault& fault, const InputFile& input)
try {
    const std::string text = fault.what();
    if (!text.ends_with(" needs a number"))
        return fault;
    for (const datafile::TextReason& reason : input.textReasons())
        if (text.find('"' + reason.name + '"') != std::string::npos &&
            reason.text.size() <= kLongestValue)
            return {fault.status(),
                    text + ": " + reason.name + " is text because of \"" + reason.text +
                        "\" on line " + std::to_string(reason.line),
                    "if that is a missing value, --missing names it", fault.detail()};
    return fault;
} catch (const datafile::Fault&) {
    return fault; // the file cannot be read a second time
}
