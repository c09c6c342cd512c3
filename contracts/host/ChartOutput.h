#pragma once

#include <memory>
#include <string>

#include "HostExport.h"

class TnHeading;

/// A text of a chart.
class HOST_API ChartString
{
public:
    /// Sets a text in the host's encoding; null gives an empty text.
    void assign(const char* text);
    /// Sets a UTF-8 text.
    void assignUTF8(const std::string& text);
    /// The text in UTF-8.
    const std::string& utf8() const { return _text; }

private:
    std::string _text;
};

/// Base of charts and interactive views. Nothing appears in the output before it is sent. Texts are
/// UTF-8. One thread at a time.
class HOST_API XDocument
{
public:
    virtual ~XDocument();
    XDocument(const XDocument&) = delete;
    XDocument& operator=(const XDocument&) = delete;

    /// Sets the title for outlines and lists.
    void SetDescription(const ChartString& text);
    /// Sets the options of the template or front end.
    void setOptions(const std::string& options);
    /// Adds a GeoJSON text under a name.
    void addGeoJSON(const std::string& name, const std::string& text);

protected:
    struct Impl;
    /// Appends to the heading, which must live until show.
    explicit XDocument(TnHeading& heading);
    std::unique_ptr<Impl> _impl; ///< what has been set so far
};

/// A chart. Its JSON object has the data model as member "0", if there is one, and the chart's
/// specification as member "1".
class HOST_API xGlyph : public XDocument
{
public:
    /// The chart will appear under `heading`.
    explicit xGlyph(TnHeading& heading);
    ~xGlyph() override;
    /// Sets the JSON object.
    void setViZJSONTemplate(const std::string& json);
    /// Writes the chart to the output. Later calls have no effect.
    void sendChart();
};

/// An interactive view. Its JSON object has the data model as member "0" and the shown objects as
/// members "1", "2" and so on.
class HOST_API xInteractive : public XDocument
{
public:
    /// The view will appear under `heading`.
    explicit xInteractive(TnHeading& heading);
    ~xInteractive() override;
    /// Sets the name of the result object that the view belongs to.
    void setProcedureName(const std::string& name);
    /// Sets the path of the view's object in the result document.
    void setJSONPath(const std::string& path);
    /// Sets the JSON object.
    void setInteractiveJSON(const std::string& json);
    /// Writes the view to the output. Later calls have no effect.
    void sendInteractive();
};
