#include <utility>

#include "ErrorText.h"
#include "VexaDataViews.h"
#include "data/CaseText.h"
#include "text/CodePage.h"

namespace {

/// A byte of any code page becomes at most this many bytes of UTF-8.
constexpr int kMostBytesPerByte = 3;

/// Converts the texts of a dictionary to UTF-8.
class Dictionary
{
public:
    Dictionary(const CodePage& page) : _page(page) {}

    /// The variable of the view: wider, with all texts converted.
    VEXA_Variable converted(const VEXA_Variable& variable) const
    {
        const int width = variable.GetType() * kMostBytesPerByte;
        VEXA_Variable result(width);
        result.SetName(text(variable.GetName()));
        if (const char* label = variable.GetLabel())
            result.SetLabel(text(label));
        VEXA_Format format = variable.GetFormat();
        if (width > 0)
            format.width = static_cast<std::uint16_t>(std::min(width, 0xFFFF));
        result.SetFormat(format);
        result.SetMeasurementLevel(variable.GetMeasurementLevel());
        result.SetRole(variable.GetRole());
        result.SetValueLabels(labels(variable, width));
        copyMissing(variable, result);
        return result;
    }

private:
    std::string text(std::string_view original) const
    {
        std::string result;
        _page.toUtf8(original, result);
        return result;
    }

    /// Without the padding blanks.
    std::string text(const OBS* units, std::size_t bytes) const
    {
        const std::string_view original(units->text, bytes);
        return text(original.substr(0, trimmedLength(original)));
    }

    VEXA_ValueLabelMap labels(const VEXA_Variable& variable, int width) const
    {
        VEXA_ValueLabelMap result(width);
        VEXA_ValueLabelMap original = variable.GetValueLabels();
        original.Reset();
        const OBS* value = nullptr;
        const char* label = nullptr;
        while (original.GetNextPair(value, label)) {
            if (width > 0)
                result.SetLabel(text(value, static_cast<std::size_t>(variable.GetType())),
                                text(label));
            else
                result.SetLabel(value->number, text(label));
        }
        return result;
    }

    /// By the host's code: single values, a range, or a range and one value.
    void copyMissing(const VEXA_Variable& from, VEXA_Variable& to) const
    {
        const OBS* values[3] = {};
        const int code = from.GetMissingValues(values[0], values[1], values[2]);
        if (code == -2)
            return to.SetMissingRange(values[0]->number, values[1]->number);
        if (code == -3)
            return to.SetMissingRange(values[0]->number, values[1]->number, values[2]->number);
        std::vector<double> numbers;
        std::vector<std::string> texts;
        for (int i = 0; i < code; ++i) {
            if (from.GetType() > 0)
                texts.push_back(text(values[i], from.MissingTextWidth()));
            else
                numbers.push_back(values[i]->number);
        }
        from.GetType() > 0 ? to.SetMissingValues(texts) : to.SetMissingValues(numbers);
    }

    const CodePage& _page;
};

/// Converts the texts of cases.
class Utf8Cases : public VEXA_InputCaseIterator
{
public:
    /// `variables` are those of the view.
    Utf8Cases(std::unique_ptr<VEXA_InputCaseIterator> cases,
              const std::vector<VEXA_Variable>& variables, std::shared_ptr<CodePage> page,
              ErrorMonitor* monitor)
        : _cases(std::move(cases)), _variables(variables), _page(std::move(page)), _monitor(monitor)
    {
        for (const VEXA_Variable& variable : variables)
            _texts.push_back(unitsOfText("", variable.GetType()));
    }

    int NextCase() override
    {
        if (_cases->NextCase() == 0)
            return 0;
        for (std::size_t i = 0; i < _texts.size(); ++i)
            if (_variables[i].GetType() > 0)
                convert(i);
        return 1;
    }
    double GetNumericValue(int column) const override { return _cases->GetNumericValue(column); }
    const char* GetStringValue(int column) const override
    {
        return _texts[static_cast<std::size_t>(column)].front().text;
    }
    const OBS* GetObsPointer(int column) const override
    {
        const auto place = static_cast<std::size_t>(column);
        return _variables[place].GetType() > 0 ? _texts[place].data()
                                               : _cases->GetObsPointer(column);
    }
    long long GetCaseCount() const override { return _cases->GetCaseCount(); }

private:
    void convert(std::size_t place)
    {
        std::vector<OBS>& units = _texts[place];
        const std::string_view text(
            _cases->GetStringValue(static_cast<int>(place)),
            static_cast<std::size_t>(_variables[place].GetType() / kMostBytesPerByte));
        if (!_page->toUtf8(text.substr(0, trimmedLength(text)), _converted) && _monitor)
            _monitor->Report("variable \"" + _variables[place].GetName() + "\", case " +
                             std::to_string(GetCaseCount()) + ": the value is not text in " +
                             _page->name());
        putText(units.data(), units.size(), _converted);
    }

    std::unique_ptr<VEXA_InputCaseIterator> _cases;
    const std::vector<VEXA_Variable>& _variables;
    std::shared_ptr<CodePage> _page;
    ErrorMonitor* _monitor;
    std::vector<std::vector<OBS>> _texts;
    std::string _converted;
};

} // namespace

struct UTF8DataSource::Impl
{
    std::shared_ptr<CodePage> page;
    ErrorMonitor* monitor;
    std::vector<VEXA_Variable> variables;
};

UTF8DataSource::UTF8DataSource(const VEXA_DataSource& source, const std::string& codePage,
                               ErrorMonitor* monitor)
    : VEXA_DataView(source),
      _impl(std::make_unique<Impl>(Impl{CodePage::open(codePage), monitor, {}}))
{
    if (!_impl->page)
        throw ErrorText("the code page " + codePage + " is not known");
    const Dictionary dictionary(*_impl->page);
    for (int column = 0; column < source.ColumnCount(); ++column)
        _impl->variables.push_back(dictionary.converted(source.GetVariable(column)));
}

UTF8DataSource::~UTF8DataSource() = default;

const VEXA_Variable& UTF8DataSource::GetVariable(int column) const
{
    if (column < 0 || static_cast<std::size_t>(column) >= _impl->variables.size())
        return source().GetVariable(column); // throws ErrorText
    return _impl->variables[static_cast<std::size_t>(column)];
}

VEXA_InputCaseIterator* UTF8DataSource::MakeIterator(ErrorMonitor* monitor) const
{
    ErrorMonitor* listener = monitor ? monitor : _impl->monitor;
    std::unique_ptr<VEXA_InputCaseIterator> cases(source().MakeIterator(listener));
    return std::make_unique<Utf8Cases>(std::move(cases), _impl->variables, _impl->page, listener)
        .release();
}
