#pragma once

namespace oV::detail
{

/// The token that asks Attribute::getLocation() for the container under any token.
constexpr unsigned int anyToken = 0xFFFFFFFF;

} // namespace oV::detail
