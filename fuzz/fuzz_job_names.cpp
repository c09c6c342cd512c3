#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "JNIException.h"
#include "JobError.h"
#include "bridge/JNIObjectManager.h"
#include "bridge/LocalRef.h"
#include "support/JobTextRoundTrip.h"

/// Any text as a name, a literal, a key and a value of JSON, a tag and a path, and any two numbers:
/// the engine's parser must read back from a composed job what was put in.
namespace {

void require(const std::string& fault)
{
    if (fault.empty())
        return;
    std::fprintf(stderr, "not read back: %s\n", fault.c_str());
    std::abort();
}

/// The text with each byte that is not part of a UTF-8 character replaced, as Java does it.
std::string asUtf8(JNIHvlProgram& program, const std::string& text)
{
    const LocalRef<jstring> java(program.getEnv(),
                                 static_cast<jstring>(program.newObject(text, false, false)));
    return program.getString(java.get());
}

template <class Number>
Number takeNumber(std::string& data)
{
    Number number{};
    const std::size_t size = std::min(sizeof number, data.size());
    std::memcpy(&number, data.data(), size);
    data.erase(0, size);
    return number;
}

void check(std::string data)
{
    JNIHvlProgram program;
    const auto integer = takeNumber<std::int64_t>(data);
    const auto real = takeNumber<double>(data);
    // A number that is not finite has no text, and the renderer refuses it.
    require(JobTextRoundTrip::ofNumbers(program, integer, std::isfinite(real) ? real : 0.5));
    const std::string text = asUtf8(program, data);
    if (text.empty())
        return;
    require(JobTextRoundTrip::ofText(program, text));
    require(JobTextRoundTrip::ofPath(text));
    require(JobTextRoundTrip::ofJob(text));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    JNIObjectManager& manager = *JNIObjectManager::getManager();
    try {
        check({reinterpret_cast<const char*>(data), size});
    } catch (const JNIException& error) {
        require("Java refuses it: " + error.message());
    } catch (const EmbeddedHV::JobError& error) {
        require(error.text());
    }
    manager.cleanJRef();
    return 0;
}
