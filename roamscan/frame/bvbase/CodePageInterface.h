#pragma once

#include <cstdint>

namespace Bv_1_1
{

/// A narrow text and the number of its code page, such as 65001 for UTF-8.
struct CodePageInterface
{
    /// The number of the code page.
    std::uint32_t codePage = 0;
    /// The narrow text.
    char const* text = nullptr;
};

} // namespace Bv_1_1
