#pragma once

#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/formats/ModelFormat.h>

#include <string_view>

namespace oV::detail
{

/// Whether a keyword that was read is the end of a block: the one character ModelFormat::END_OF_BLOCK.
[[nodiscard]] inline bool isEndOfBlock(Bv_1_1::String const& keyword)
{
    constexpr auto end = static_cast<char16_t>(ModelFormat::END_OF_BLOCK);
    return keyword.text() == std::u16string_view(&end, 1);
}

} // namespace oV::detail
