#pragma once

#include <array>
#include <memory>
#include <vector>

namespace bench
{

/// Poses in a transform buffer of tf2 that discards none of them. The headers of tf2 do not compile as
/// C++20, so this header compiles as C++17 too.
class Tf2Buffer
{
public:
    /// Translation x, y, z, then rotation w, x, y, z.
    using FlatPose = std::array<double, 7>;

    /// @param times  seconds, ascending, above 0
    /// @param poses  one for each time
    Tf2Buffer(std::vector<double> const& times, std::vector<FlatPose> const& poses);
    ~Tf2Buffer();

    /// The pose at a time in seconds, rounded to whole nanoseconds.
    /// @throws tf2::TransformException outside the times
    [[nodiscard]] FlatPose sample(double seconds) const;

private:
    struct Implementation;
    std::unique_ptr<Implementation> implementation_;
};

} // namespace bench
