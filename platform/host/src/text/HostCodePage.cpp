#include <cstdlib>
#include <mutex>

#include "text/CodePage.h"

namespace {

/// The present code page. It may change while other threads convert; they keep the previous one.
class Current
{
public:
    Current()
    {
        const char* name = std::getenv("VEXA_CODEPAGE");
        if (!name || !set(name))
            set("UTF-8");
    }

    std::shared_ptr<CodePage> get()
    {
        const std::lock_guard lock(_mutex);
        return _page;
    }

    bool set(const std::string& name)
    {
        // Paths and keys require ASCII.
        std::shared_ptr<CodePage> page = CodePage::open(name);
        if (!page || !page->holdsAscii())
            return false;
        const std::lock_guard lock(_mutex);
        _page = std::move(page);
        return true;
    }

private:
    std::mutex _mutex;
    std::shared_ptr<CodePage> _page;
};

Current& current()
{
    static Current instance;
    return instance;
}

} // namespace

std::shared_ptr<CodePage> hostCodePage()
{
    return current().get();
}

bool setHostCodePage(const std::string& name)
{
    return current().set(name);
}

std::string hostToUtf8(std::string_view text)
{
    std::string result;
    hostCodePage()->toUtf8(text, result);
    return result;
}

std::string utf8ToHost(std::string_view text)
{
    std::string result;
    hostCodePage()->fromUtf8(text, result);
    return result;
}
