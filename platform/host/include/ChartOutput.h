#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

class TnHeading;

/// A text for a chart.
class HOST_API ChartString
{
public:
    /// Text in the host's encoding; UTF-8 text.
    void assign(const char* text);
    void assignUTF8(const std::string& text);
    const std::string& utf8() const { return _text; }

private:
    std::string _text;
};

/// What charts and interactive views have in common. Nothing stands in the output before it is
/// sent; the heading must live until then. One thread at a time.
class HOST_API XDocument
{
public:
    virtual ~XDocument();
    XDocument(const XDocument&) = delete;
    XDocument& operator=(const XDocument&) = delete;

    /// The title that outlines and lists show.
    void SetDescription(const ChartString& text);
    void setOptions(const std::string& options);
    /// Hands over a GeoJSON text by its name.
    void addGeoJSON(const std::string& name, const std::string& text);

protected:
    struct Impl;
    explicit XDocument(TnHeading& heading);
    std::unique_ptr<Impl> _impl;
};

/// A chart: a JSON object whose member "0" is the data model, if there is one, and "1" the chart's
/// specification.
class HOST_API xGlyph : public XDocument
{
public:
    explicit xGlyph(TnHeading& heading);
    ~xGlyph() override;
    /// The JSON object, as above.
    void setViZJSONTemplate(const std::string& json);
    /// Puts the chart into the output, once.
    void sendChart();
};

/// An interactive view: a JSON object with the data model as member "0" and what it shows as
/// members "1", "2" and so on.
class HOST_API xInteractive : public XDocument
{
public:
    explicit xInteractive(TnHeading& heading);
    ~xInteractive() override;
    /// The result object that the view belongs to.
    void setProcedureName(const std::string& name);
    /// Where in the result document the view's object lies.
    void setJSONPath(const std::string& path);
    void setInteractiveJSON(const std::string& json);
    /// Puts the view into the output, once.
    void sendInteractive();
};
