#pragma once

#include "dialect/Dialect.h"

namespace EmbeddedHV {

/// The SQL of the embedded database.
class DuckDialect final : public Dialect
{
public:
    std::string name(const std::string& name) const override;
    std::string literal(const std::string& text) const override;
    std::string literal(std::int64_t value) const override;
    std::string literal(double value) const override;
    const char* typeName(ValueType type) const override;

    std::string_view function(const Function& form) const override;
    std::string pattern(const DateTimePattern& pattern) const override;

    std::string remainder(const std::string& left, const std::string& right) const override;
    std::string power(const std::string& base, const std::string& exponent) const override;
    std::string list(const std::string& elements) const override;
    std::string finiteReal(const std::string& value) const override;
};

/// The only instance.
const DuckDialect& duckDialect();

} // namespace EmbeddedHV
