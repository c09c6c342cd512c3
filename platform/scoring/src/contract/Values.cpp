#include <cmath>
#include <limits>

#include "MCMV.h"
#include "MCMathFun.h"
#include "Value.h"

double MCMV::Missing()
{
    return std::numeric_limits<double>::lowest();
}

bool MCMathFun::IsValidDouble(double value)
{
    return std::isfinite(value) && value != MCMV::Missing();
}

Value& Value::operator=(int number)
{
    return *this = static_cast<double>(number);
}

Value& Value::operator=(double number)
{
    _isText = false;
    _number = number;
    return *this;
}

Value& Value::operator=(const std::string& text)
{
    _isText = true;
    _text = text;
    return *this;
}
