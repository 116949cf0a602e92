#pragma once

#include "tools/console/Text.h"
#include "tools/io/NumberText.h"

#include <CLI/CLI.hpp>

#include <limits>
#include <string>

namespace oV::Roamscan::tool
{

/// Checks that an option is a number above 0, and at most `highest`. Unlike CLI::Range, refuses NaN.
[[nodiscard]] inline CLI::Validator positiveNumber(double highest = std::numeric_limits<double>::max())
{
    std::string message = "must be a number above 0";
    if (highest < std::numeric_limits<double>::max()) {
        message += " and at most " + fixed(highest, 0);
    }
    return {[highest, message](std::string& text) {
                auto const value = parseNumber(text);
                return value && *value > 0.0 && *value <= highest ? std::string() : message;
            },
            "POSITIVE"};
}

} // namespace oV::Roamscan::tool
