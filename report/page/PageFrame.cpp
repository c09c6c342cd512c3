#include "report/page/PageFrame.h"

#include <algorithm>
#include <ostream>

#include <nlohmann/json.hpp>

#include "CFAppHost.h"
#include "Translation.h"
#include "report/document/PageText.h"

namespace {

/// For example "en-US".
std::string language()
{
    std::string locale = CFAppHost::getInstance()->getLocale();
    locale.erase(std::min(locale.find_first_of(".@"), locale.size()));
    std::replace(locale.begin(), locale.end(), '_', '-');
    return locale;
}

/// The hashes of the page's scripts and styles, for its policy.
std::string sources(const std::vector<PageAsset>& assets)
{
    std::string list;
    for (const PageAsset& asset : assets)
        list += " " + asset.source;
    return list;
}

/// The texts that scripts show, in the host's language.
std::string words()
{
    nlohmann::json table;
    for (const char* key : {"Copy", "Copied", "Sort", "Strongest arrows", "Find in the contents",
                            "No entry has these words.", "This chart cannot be drawn.",
                            "The library that draws charts is missing from the installation."})
        table[key] = translate(key);
    return scriptText(table.dump(-1, ' ', true));
}

} // namespace

PageFrame::PageFrame(bool withCharts, const std::string& rules)
{
    _styles.push_back(installedAsset("page.css"));
    if (!rules.empty())
        _styles.push_back(pageAsset(rules));
    for (const char* script : {"grid.js", "outline.js", "layers.js", "blocks.js", "sorting.js",
                               "copying.js", "networks.js"})
        _scripts.push_back(installedAsset(script));
    if (!withCharts)
        return;
    _library = chartLibrary();
    _scripts.push_back(installedAsset("charts.js"));
}

std::string PageFrame::policy() const
{
    return "default-src 'none'; style-src" + sources(_styles) + "; script-src" + sources(_scripts) +
           (_library ? " " + _library->script.source : "") +
           "; img-src data:; base-uri 'none'; form-action 'none'";
}

void PageFrame::writeHead(std::ostream& out, const std::string& title) const
{
    out << "<!DOCTYPE html>\n<html lang=\"" << escaped(language())
        << "\">\n<head>\n<meta charset=\"utf-8\">\n"
        << "<meta http-equiv=\"Content-Security-Policy\" content=\"" << policy() << "\">\n"
        << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
        << "<meta name=\"color-scheme\" content=\"light dark\">\n"
        << "<title>" << escaped(shortened(title)) << "</title>\n";
    for (const PageAsset& style : _styles)
        out << "<style>" << style.text << "</style>\n";
    out << "</head>\n";
}

void PageFrame::writeFoot(std::ostream& out) const
{
    out << "<script type=\"application/json\" id=\"words\">" << words() << "</script>\n";
    if (_library)
        out << "<script type=\"text/plain\" id=\"licenses\">" << _library->licenses
            << "</script>\n<script type=\"text/plain\" id=\"library\">"
            << packed(_library->script.text) << "</script>\n";
    for (const PageAsset& script : _scripts)
        out << "<script>" << script.text << "</script>\n";
    out << "</body>\n</html>\n";
}
